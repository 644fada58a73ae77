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
  static constexpr void (*MatrInvDispatch[])(double*) = {nullptr, dInvCov1, dInvCov2, dInvCov3};
};
template <>
struct Precision<float> {
  static constexpr float tiny = 1.401e-42f;
  static constexpr void (*MatrInvDispatch[])(float*) = {nullptr, sInvCov1, sInvCov2, sInvCov3};
};

template <class T>
int32_t invert(int32_t p, T* c) {
  if (p < 1) return SS_OK;
  if (p < 4) {
    Precision<T>::MatrInvDispatch[p](c);
    return SS_OK;
  }
  if (potrf('U', p, c, p) != 0) {
    orv_serv_deallocate(c);
    return SS_NOT_POSITIVE_DEFINITE;
  }
  return potri('U', p, c, p) == 0 ? SS_OK : SS_SINGULAR;
}

/// Eigenvalues of a matrix by its lower triangle, which is then made from the upper one.
template <class T>
int32_t eigenvalues(int32_t p, T* c, T* values, T* diagonal, T* work) {
  const intptr_t n = p;
  for (intptr_t i = 0; i < n; ++i) diagonal[i] = c[i * n + i];
  const int32_t info = syev('L', p, c, p, values, work);
  for (intptr_t i = 0; i < n; ++i) {
    for (intptr_t j = 0; j < i; ++j) c[j * n + i] = c[i * n + j];
    c[i * n + i] = diagonal[i];
  }
  return info;
}

/// Adds a hundredth of the first eigenvalue but the smallest that is large enough.
template <class T>
int32_t lift(int32_t p, T* c, const T* values) {
  const intptr_t n = p;
  intptr_t first = 1;
  while (first < n && !(values[first] >= Precision<T>::tiny)) ++first;
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
  int32_t status = SS_OK;
  if (eigenvalues(p, c, values, diagonal, work) != 0) {
    status = SS_EIGENVALUES_FAILED;
  } else if (!(values[0] > 0)) {
    status = lift(p, c, values);
  }
  orv_serv_deallocate(scratch);
  return status;
}

}  // namespace
}  // namespace ORV_TAG
}  // namespace orv

using namespace orv;

int32_t __zokdInvCov(int32_t p, double* c) { return invert(p, c); }
int32_t __zoksInvCov(int32_t p, float* c) { return invert(p, c); }
int32_t __zokdTestCovRank(int32_t p, double* c) { return repair(p, c); }
int32_t __zoksTestCovRank(int32_t p, float* c) { return repair(p, c); }
