// SPDX-License-Identifier: MIT
// The inverse of a small covariance matrix, and the repair of one that is not positive definite.
#include <orv/scalar.h>
#include <orv/serv.h>
#include <orv/ss.h>

#include "../_service/blas.hpp"
#include "inverse_covariance.hpp"

namespace orv {
inline namespace ORV_TAG {

// Determinants cancel: those of floats are formed in doubles.

template <class T>
void invert_1(T* c) {
  c[0] = 1 / c[0];
}

template <class T>
void invert_2(T* c) {
  const double c00 = c[0], c01 = c[2], c11 = c[3];
  const double det = c00 * c11 - c01 * c01;
  c[0] = static_cast<T>(c11 / det);
  c[2] = static_cast<T>(-c01 / det);
  c[3] = static_cast<T>(c00 / det);
}

template <class T>
void invert_3(T* c) {
  const double c00 = c[0], c01 = c[3], c11 = c[4], c02 = c[6], c12 = c[7], c22 = c[8];
  const double a00 = c11 * c22 - c12 * c12;
  const double det = c00 * a00 + ((-c01 * c22 + 2 * c02 * c12) * c01 - c11 * c02 * c02);
  c[0] = static_cast<T>(a00 / det);
  c[3] = static_cast<T>((c02 * c12 - c01 * c22) / det);
  c[4] = static_cast<T>((c00 * c22 - c02 * c02) / det);
  c[6] = static_cast<T>((c01 * c12 - c02 * c11) / det);
  c[7] = static_cast<T>((c01 * c02 - c00 * c12) / det);
  c[8] = static_cast<T>((c00 * c11 - c01 * c01) / det);
}

void dInvCov1(double* c) { invert_1(c); }
void dInvCov2(double* c) { invert_2(c); }
void dInvCov3(double* c) { invert_3(c); }
void sInvCov1(float* c) { invert_1(c); }
void sInvCov2(float* c) { invert_2(c); }
void sInvCov3(float* c) { invert_3(c); }

namespace {

template <class T>
struct Precision;

template <>
struct Precision<double> {
  static constexpr double tiny = 4.94e-321;  // a thousand of the smallest steps
  static constexpr double epsilon = 0x1p-52;
  static constexpr void (*MatrInvDispatch[])(double*) = {nullptr, dInvCov1, dInvCov2, dInvCov3};
};
template <>
struct Precision<float> {
  static constexpr float tiny = 1.401e-42f;
  static constexpr float epsilon = 0x1p-23f;
  static constexpr void (*MatrInvDispatch[])(float*) = {nullptr, sInvCov1, sInvCov2, sInvCov3};
};

template <class T>
int32_t invert(int32_t p, T* c) {
  if (p < 1) return SS_OK;
  if (p < 4) {
    Precision<T>::MatrInvDispatch[p](c);
    return SS_OK;
  }
  if (potrf('U', p, c, p) != 0) return SS_NOT_POSITIVE_DEFINITE;
  return potri('U', p, c, p) == 0 ? SS_OK : SS_SINGULAR;
}

/// The same for a caller who hands the matrix over when it has no factor.
template <class T>
int32_t invert_or_release(int32_t p, T* c) {
  const int32_t status = invert(p, c);
  if (status == SS_NOT_POSITIVE_DEFINITE) orv_serv_deallocate(c);
  return status;
}

/// What an eigenvalue beside the largest one may be of rounding alone.
template <class T>
T noise(int32_t p) {
  return static_cast<T>(p) * Precision<T>::epsilon;
}

/// Makes one triangle of a matrix from the other.
template <class T>
void copy_triangle(char from, intptr_t n, T* c) {
  for (intptr_t i = 0; i < n; ++i) {
    for (intptr_t j = 0; j < i; ++j) {
      T &upper = c[i * n + j], &lower = c[j * n + i];
      (from == 'U' ? lower : upper) = from == 'U' ? upper : lower;
    }
  }
}

template <class T>
void set_diagonal(intptr_t n, T* c, const T* diagonal) {
  for (intptr_t i = 0; i < n; ++i) c[i * n + i] = diagonal[i];
}

/// Whether Cholesky's factor, the one by which the matrix will be inverted, has pivots that are
/// more than rounding left of the diagonal: of an eigenvalue this can't be told, where variables
/// are of very different size. The matrix is left as it is.
template <class T>
bool is_positive_definite(int32_t p, T* c, const T* diagonal) {
  const intptr_t n = p;
  const T least = 10 * noise<T>(p);
  intptr_t j = 0;
  if (potrf('U', p, c, p) == 0) {
    while (j < n && c[j * n + j] * c[j * n + j] > least * diagonal[j]) ++j;
  }
  copy_triangle('L', n, c);
  set_diagonal(n, c, diagonal);
  return j == n;
}

/// Adds a hundredth of the first eigenvalue, but the smallest, that is more than rounding.
template <class T>
int32_t lift(int32_t p, T* c, const T* values) {
  const intptr_t n = p;
  const T rounding = noise<T>(p) * values[n - 1], tiny = Precision<T>::tiny;
  const T least = rounding > tiny ? rounding : tiny;
  intptr_t first = 1;
  while (first < n && !(values[first] >= least)) ++first;
  if (first == n) return SS_NO_POSITIVE_EIGENVALUE;
  const T shift = static_cast<T>(0.01) * values[first];
  for (intptr_t i = 0; i < n; ++i) c[i * n + i] += shift;
  return SS_OK;
}

template <class T>
int32_t repair_single(T* c) {
  constexpr T tiny = Precision<T>::tiny;
  if (*c > 0) return SS_OK;
  if (!(*c >= -tiny)) return SS_NO_POSITIVE_EIGENVALUE;
  *c = tiny;
  return SS_OK;
}

template <class T>
int32_t repair(int32_t p, T* c) {
  if (p < 1) return SS_OK;
  if (p == 1) return repair_single(c);
  const auto n = static_cast<size_t>(p);
  auto* const scratch = static_cast<T*>(orv_serv_allocate(5 * n * sizeof(T), 128));
  if (scratch == nullptr) return SS_NO_MEMORY;
  T *const values = scratch, *const diagonal = values + n, *const work = diagonal + n;
  for (size_t i = 0; i < n; ++i) diagonal[i] = c[i * n + i];
  copy_triangle('U', p, c);
  int32_t status = SS_OK;
  if (!is_positive_definite(p, c, diagonal)) {
    const int32_t info = syev('N', 'L', p, c, p, values, work, 3 * p);
    copy_triangle('U', p, c);
    set_diagonal(p, c, diagonal);
    status = info == 0 ? lift(p, c, values) : SS_EIGENVALUES_FAILED;
  }
  orv_serv_deallocate(scratch);
  return status;
}

}  // namespace

int32_t invert_covariance(int32_t p, double* c) { return invert(p, c); }
int32_t invert_covariance(int32_t p, float* c) { return invert(p, c); }

}  // namespace ORV_TAG
}  // namespace orv

using namespace orv;

int32_t __zokdInvCov(int32_t p, double* c) { return invert_or_release(p, c); }
int32_t __zoksInvCov(int32_t p, float* c) { return invert_or_release(p, c); }
int32_t __zokdTestCovRank(int32_t p, double* c) { return repair(p, c); }
int32_t __zoksTestCovRank(int32_t p, float* c) { return repair(p, c); }
