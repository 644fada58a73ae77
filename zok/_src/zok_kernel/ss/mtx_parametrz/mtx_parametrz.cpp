// SPDX-License-Identifier: MIT
// A matrix of correlations that is not positive definite becomes one that is (R. Rebonato and P.
// Jaeckel 1999): eigenvalues below a limit are raised to it, and what this does to the diagonal is
// scaled away.
#include "../../../zok_sub_kernel/_service/blas.hpp"
#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../../../zok_sub_kernel/_service/vector_kernels.hpp"
#include "../../_service/ss_task.hpp"

using namespace orv;

namespace {

/// What eigenvalues are raised to.
template <class T>
inline constexpr T least_eigenvalue = T(1e-14);
template <>
inline constexpr float least_eigenvalue<float> = 1e-6f;

/// Elements that the routine for eigenvalues works in, for each variable.
constexpr int32_t work_width = 50;

struct All {
  bool operator[](intptr_t) const { return true; }
};

// Results are written with a unit diagonal, from the upper triangle of c by columns.

template <class T, int64_t code>
void finish(intptr_t p, const T* c, T* result) {
  MatrixStorage(code, p).write(result, All(),
                               [=](intptr_t i, intptr_t j) { return i == j ? 1 : c[i + j * p]; });
}
template <class T>
void _vSSFinishMtxParametrzSDFull(intptr_t p, const T* c, T* result) {
  finish<T, SS_MATRIX_FULL>(p, c, result);
}
template <class T>
void _vSSFinishMtxParametrzSDLPacked(intptr_t p, const T* c, T* result) {
  finish<T, SS_MATRIX_LOWER_PACKED>(p, c, result);
}
template <class T>
void _vSSFinishMtxParametrzSDUPacked(intptr_t p, const T* c, T* result) {
  finish<T, SS_MATRIX_UPPER_PACKED>(p, c, result);
}

/// By the storage code of the result.
template <class T>
constexpr void (*dispatcher[])(intptr_t p, const T* c, T* result) = {
    _vSSFinishMtxParametrzSDFull<T>, _vSSFinishMtxParametrzSDLPacked<T>,
    _vSSFinishMtxParametrzSDUPacked<T>};

/// Copies a symmetric matrix, but for its diagonal, which is 1. Tells whether it is finite.
template <class T>
bool copy_in(const MatrixStorage& storage, intptr_t p, const T* from, T* to) {
  T zero = 0;
  for (intptr_t i = 0; i < p; ++i) {
    to[i * p + i] = 1;
    for (intptr_t j = i + 1; j < p; ++j) {
      const T x = from[storage.place(i, j)];
      to[i * p + j] = to[j * p + i] = x;
      zero += x - x;
    }
  }
  return zero == 0;
}

/// Raises eigenvalues to the limit and returns how many: a NaN, too, is not above it.
template <class T>
intptr_t raise(T* values, intptr_t p) {
  intptr_t raised = 0;
  for (intptr_t i = 0; i < p; ++i) {
    if (values[i] >= least_eigenvalue<T>) continue;
    values[i] = least_eigenvalue<T>;
    ++raised;
  }
  return raised;
}

/// C from eigenvectors, which are the columns of E and are used up, and eigenvalues, which have the
/// room for a diagonal before them.
template <class T>
void compose(intptr_t p, T* E, T* values, T* C) {
  T* const diagonal = values - p;
  for (intptr_t j = 0; j < p; ++j) diagonal[j] = 0;
  for (intptr_t i = 0; i < p; ++i) {
    for (intptr_t j = 0; j < p; ++j) diagonal[j] += E[i * p + j] * E[i * p + j] * values[i];
  }
  const auto n = static_cast<int32_t>(p);
  {
    const QuietKernels quiet;
    kernels::sqrt(2 * n, diagonal, diagonal, Slot::la);
    kernels::inv(n, diagonal, diagonal, Slot::la);
  }
  for (intptr_t i = 0; i < p; ++i) {
    for (intptr_t j = 0; j < p; ++j) E[i * p + j] *= values[i] * diagonal[j];
  }
  syrk('u', 'n', n, n, T{1}, E, n, T{0}, C, n);
}

/// Eigenvalues and C in a block: work, of which the end is the diagonal, values, E, C.
template <class T>
int32_t repair(intptr_t p, const MatrixStorage& storage, const T* cor, T* block) {
  T *const values = block + work_width * p, *const E = values + p, *const C = E + p * p;
  const auto n = static_cast<int32_t>(p);
  if (!copy_in(storage, p, cor, C)) return SS_NOT_POSITIVE;
  memcpy(E, C, sizeof(T) * static_cast<size_t>(p * p));
  if (syev('V', 'U', n, E, n, values, block, work_width * n) != 0) return SS_SPECTRUM_FAILED;
  const intptr_t raised = raise(values, p);
  if (raised == p) return SS_NOT_POSITIVE;
  if (raised > 0) compose(p, E, values, C);
  return SS_OK;
}

bool is_matrix_storage(int64_t code) {
  return code >= SS_MATRIX_FULL && code <= SS_MATRIX_UPPER_PACKED;
}

int32_t check(const SSTask& task, uint64_t method) {
  if (const int32_t status = check_dimension(task, INT32_MAX / work_width); status != SS_OK) {
    return status;
  }
  if (task.cor == nullptr) return SS_NULL_COR;
  if (task.cor_storage == nullptr) return SS_NULL_STORAGE;
  const int64_t from = integer(task, task.cor_storage);
  if (!is_matrix_storage(from)) return SS_BAD_STORAGE;
  if (task.parametrized_cor == nullptr) return SS_NULL_PARAMETRIZED_COR;
  if (task.parametrized_cor_storage == nullptr) return SS_NULL_STORAGE;
  const int64_t to = integer(task, task.parametrized_cor_storage);
  if (!is_matrix_storage(to)) return SS_BAD_STORAGE;
  if (task.cor == task.parametrized_cor && from != SS_MATRIX_FULL && to == SS_MATRIX_FULL) {
    return SS_BAD_STORAGE;  // the result would not fit
  }
  return (method & SS_METHOD_SPECTRAL_DECOMP) != 0 ? SS_OK : SS_BAD_METHOD;
}

template <class T>
int32_t parametrize(const SSTask& task, uint64_t method) {
  if (const int32_t status = check(task, method); status != SS_OK) return status;
  const auto p = static_cast<intptr_t>(integer(task, task.dimension));
  const MatrixStorage storage(integer(task, task.cor_storage), p);
  T* const block = allocate<T>(Count(work_width + 1) * p + 2 * (Count(p) * p));
  if (block == nullptr) return SS_NO_MEMORY;
  const int32_t status = repair(p, storage, static_cast<const T*>(task.cor), block);
  if (status == SS_OK) {
    const T* const C = block + (work_width + 1) * p + p * p;
    dispatcher<T>[integer(task, task.parametrized_cor_storage)](
        p, C, static_cast<T*>(task.parametrized_cor));
  }
  orv_serv_deallocate(block);
  return status;
}

}  // namespace

int32_t _zokdSSCorParametrization(SSTask* task, uint64_t, uint64_t method,
                                  const SSThreadServices*) {
  return parametrize<double>(*task, method);
}

int32_t _zoksSSCorParametrization(SSTask* task, uint64_t, uint64_t method,
                                  const SSThreadServices*) {
  return parametrize<float>(*task, method);
}
