// SPDX-License-Identifier: MIT
// Covariance and correlation of the variables of interest (y) with the influence of the
// conditioning ones (z) taken away: Cyy - Cyz inv(Czz) Czy.
#include <math.h>

#include "../../../zok_sub_kernel/_service/blas.hpp"
#include "../../_service/ratios.hpp"
#include "../../_service/ss_task.hpp"

using namespace orv;

namespace {

double root(double x) { return sqrt(x); }
float root(float x) { return sqrtf(x); }

/// Roles of the variables.
constexpr int64_t conditioning = -1, of_interest = 1;

struct All {
  bool operator[](intptr_t) const { return true; }
};

/// Elements of the source as covariances: those of a correlation, with its variances on the
/// diagonal, are scaled.
template <class T>
class Source {
 public:
  explicit Source(const SSTask& task)
      : is_cor_(task.cov == nullptr),
        storage_(integer(task, is_cor_ ? task.cor_storage : task.cov_storage),
                 static_cast<intptr_t>(integer(task, task.dimension))),
        matrix_(static_cast<const T*>(is_cor_ ? task.cor : task.cov)) {}

  T operator()(intptr_t i, intptr_t j) const {
    const T c = i < j ? at(i, j) : at(j, i);
    return is_cor_ && i != j ? c * root(at(i, i)) * root(at(j, j)) : c;
  }

 private:
  T at(intptr_t i, intptr_t j) const { return matrix_[storage_.place(i, j)]; }

  bool is_cor_;
  MatrixStorage storage_;
  const T* matrix_;
};

/// Copies the rows and columns of two roles to a matrix that is stored by columns.
template <class T>
void gather(const Source<T>& source, const Integers& roles, intptr_t p, int64_t row_role,
            int64_t column_role, T* to) {
  for (intptr_t j = 0; j < p; ++j) {
    if (roles[j] != column_role) continue;
    for (intptr_t i = 0; i < p; ++i) {
      if (roles[i] == row_role) *to++ = source(i, j);
    }
  }
}

/// The inverse of a positive definite matrix, in place.
template <class T>
int32_t invert(T* c, int32_t n) {
  if (potrf('u', n, c, n) != 0) return SS_FACTOR_FAILED;
  if (potri('u', n, c, n) != 0) return SS_INVERSE_FAILED;
  for (intptr_t j = 0; j < n; ++j) {
    for (intptr_t i = 0; i < j; ++i) c[j + i * n] = c[i + j * n];
  }
  return SS_OK;
}

template <class T>
void write_results(const SSTask& task, uint64_t estimates, const T* result, intptr_t m) {
  const auto cov = [=](intptr_t i, intptr_t j) { return result[i + j * m]; };
  const auto cor = [=](intptr_t i, intptr_t j) {
    return i == j ? cov(i, i) : static_cast<T>(cov(i, j) / root_of_product(cov(i, i), cov(j, j)));
  };
  if ((estimates & SS_EST_PARTIAL_COV) != 0) {
    const MatrixStorage storage(integer(task, task.partial_cov_storage), m);
    storage.write(static_cast<T*>(task.partial_cov), All(), cov);
  }
  if ((estimates & SS_EST_PARTIAL_COR) != 0) {
    const MatrixStorage storage(integer(task, task.partial_cor_storage), m);
    storage.write(static_cast<T*>(task.partial_cor), All(), cor);
  }
}

template <class T>
int32_t _vSSPrtCov(const SSTask& task, uint64_t estimates) {
  const auto p = static_cast<intptr_t>(integer(task, task.dimension));
  const Integers roles(task, task.partial_index_array);
  int32_t k = 0, m = 0;
  for (intptr_t j = 0; j < p; ++j) {
    k += roles[j] == conditioning ? 1 : 0;
    m += roles[j] == of_interest ? 1 : 0;
  }
  if (k == 0 || m == 0) return SS_BAD_PARTIAL_INDEX;

  const Count zz_size = Count(k) * k, yz_size = Count(m) * k, yy_size = Count(m) * m;
  T* const zz = allocate<T>(zz_size + 2 * yz_size + yy_size);
  if (zz == nullptr) return SS_NO_MEMORY;
  T* const yz = zz + zz_size.value;
  T* const product = yz + yz_size.value;
  T* const yy = product + yz_size.value;

  const Source<T> source(task);
  gather(source, roles, p, conditioning, conditioning, zz);
  gather(source, roles, p, of_interest, conditioning, yz);
  gather(source, roles, p, of_interest, of_interest, yy);
  const int32_t status = invert(zz, k);
  if (status == SS_OK) {
    gemm('n', 'n', m, k, k, T{1}, yz, m, zz, k, T{0}, product, m);
    gemm('n', 't', m, m, k, T{-1}, product, m, yz, m, T{1}, yy, m);
    write_results(task, estimates, yy, m);
  }
  orv_serv_deallocate(zz);
  return status;
}

int32_t check(const SSTask& task, uint64_t estimates, uint64_t method) {
  if (task.cov == nullptr && task.cor == nullptr) return SS_NULL_COV;
  if ((task.cov != nullptr ? task.cov_storage : task.cor_storage) == nullptr) {
    return SS_NULL_STORAGE;
  }
  if (task.partial_index_array == nullptr) return SS_NULL_PARTIAL_INDEX;
  if ((estimates & SS_EST_PARTIAL_COV) != 0) {
    if (task.partial_cov == nullptr) return SS_NULL_PARTIAL_COV;
    if (task.partial_cov_storage == nullptr) return SS_NULL_STORAGE;
  }
  if ((estimates & SS_EST_PARTIAL_COR) != 0) {
    if (task.partial_cor == nullptr) return SS_NULL_PARTIAL_COR;
    if (task.partial_cor_storage == nullptr) return SS_NULL_STORAGE;
  }
  return (method & SS_METHOD_FAST) != 0 ? check_dimension(task, INT32_MAX) : SS_BAD_METHOD;
}

template <class T>
int32_t partial_covariance(const SSTask& task, uint64_t estimates, uint64_t method) {
  const int32_t status = check(task, estimates, method);
  return status < 0 ? status : _vSSPrtCov<T>(task, estimates);
}

}  // namespace

int32_t _zokdSSPartialCovariance(SSTask* task, uint64_t estimates, uint64_t method,
                                 const SSThreadServices*) {
  return partial_covariance<double>(*task, estimates, method);
}

int32_t _zoksSSPartialCovariance(SSTask* task, uint64_t estimates, uint64_t method,
                                 const SSThreadServices*) {
  return partial_covariance<float>(*task, estimates, method);
}
