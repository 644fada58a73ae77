// SPDX-License-Identifier: MIT
// The state of one call of the basic statistics: where each thread keeps its sums.
#pragma once

#include <math.h>
#include <stdint.h>
#include <string.h>

#include <initializer_list>

#include "estimates.hpp"
#include "kernel_table.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Sums of one thread: weights, moments (null where not asked for), and the upper triangle of the
/// cross-products, element (j, k) at j + k p (null where not in use).
template <class T>
struct Sums {
  T* acc;
  T* moment[4];
  T* S;
};

template <class T>
struct BasicWork {
  const SSTask& task;
  intptr_t p, n;
  const T* x;
  const T* weights;
  bool columns;
  bool one_pass;
  uint32_t work;  // BasicEstimate bits
  MatrixStorage cov_storage, cor_storage;
  int32_t threads = 1;
  int32_t status = SS_OK;  // a thread's failure

  Sums<T> main = {};
  // Blocks of this call: all null, or to be released.
  T* acc_block = nullptr;
  T* masked_moments = nullptr;
  T* own_S = nullptr;
  T* thread_block = nullptr;

  BasicWork(const SSTask& t, uint32_t w, bool one_pass_method)
      : task(t),
        p(static_cast<intptr_t>(integer(t, t.dimension))),
        n(static_cast<intptr_t>(integer(t, t.observation_count))),
        x(static_cast<const T*>(t.observations)),
        weights(static_cast<const T*>(t.weights)),
        columns(!is_rows(integer(t, t.observation_storage))),
        one_pass(one_pass_method || !fits_matrix_routines()),
        work(w),
        cov_storage((w & est_cov) != 0 ? integer(t, t.cov_storage) : 0, p),
        cor_storage((w & est_cor) != 0 ? integer(t, t.cor_storage) : 0, p) {}
  ~BasicWork() {
    for (T* block : {acc_block, masked_moments, own_S, thread_block}) orv_serv_deallocate(block);
  }
  BasicWork(const BasicWork&) = delete;
  BasicWork& operator=(const BasicWork&) = delete;

  /// They count to 2^31: variables, and in rows the way from one to the next.
  bool fits_matrix_routines() const { return p <= INT32_MAX && (columns || n <= INT32_MAX); }

  bool has_moment(int k) const { return (work >> k & 1) != 0; }
  bool crosses() const { return (work & (est_cov | est_cor)) != 0; }
  T* result(int k) const { return static_cast<T*>(task.*estimate_rows[k].result); }
  intptr_t moment_count() const {
    return __builtin_popcount(work & (est_mean | est_raw_2 | est_raw_3 | est_raw_4));
  }

  /// The sums of a thread; those of thread 0 are the main ones.
  Sums<T> of_thread(int32_t thread) const {
    Sums<T> sums = main;
    if (thread == 0) return sums;
    sums.acc = acc_block + 4 * thread;
    T* at = thread_block + (Count(thread - 1) * thread_size()).value;
    for (T*& moment : sums.moment) {
      if (moment == nullptr) continue;
      moment = at;
      at += p;
    }
    if (crosses()) sums.S = at;
    return sums;
  }
  Count thread_size() const { return (Count(moment_count()) + (crosses() ? p : 0)) * p; }
};

/// The matrix that the call goes on from: the covariance or, where only that is asked for, the
/// correlation.
template <class T>
struct SourceMatrix {
  explicit SourceMatrix(const BasicWork<T>& b)
      : is_cor((b.work & est_cov) == 0),
        matrix(static_cast<T*>(is_cor ? b.task.cor : b.task.cov)),
        storage(is_cor ? b.cor_storage : b.cov_storage) {}
  bool is_cor;
  T* matrix;
  MatrixStorage storage;
};

/// Turns the source matrix back into sums of cross-products. A correlation that can't have been
/// formed, since a variable has not varied so far, stands for none.
template <class T>
void denormalise(BasicWork<T>& b, const SourceMatrix<T>& source) {
  const intptr_t p = b.p;
  T* S = b.main.S;
  const T W = b.main.acc[0], W2 = b.main.acc[1], scale = W - W2 / W;
  if (!(W > 0) || scale == 0) {  // nothing so far, or one observation, which has no covariance
    memset(S, 0, sizeof(T) * static_cast<size_t>(p * p));
    return;
  }
  if (S != source.matrix) {
    for (intptr_t j = 0; j < p; ++j) {
      for (intptr_t k = j; k < p; ++k) {
        S[j + k * p] = S[k + j * p] = source.matrix[source.storage.place(j, k)];
      }
    }
  }
  for (intptr_t k = 0; k < p; ++k) {
    for (intptr_t j = 0; j < k && source.is_cor; ++j) {
      const double root = root_of_product(S[j + j * p], S[k + k * p]);
      S[j + k * p] = root > 0 ? static_cast<T>(S[j + k * p] * root) : 0;
    }
  }
  for (intptr_t k = 0; k < p; ++k) {
    for (intptr_t j = 0; j <= k; ++j) S[j + k * p] *= scale;
  }
}

/// Threads of at least 1000 observations each, and the sums of all.
template <class T>
int32_t _vSSInitBasicCommon(BasicWork<T>& b, const SSThreadServices& services) {
  constexpr intptr_t least_share = 1000;
  b.threads = usable_threads(services);
  if (b.n / b.threads < least_share) {
    b.threads = b.n < least_share ? 1 : static_cast<int32_t>(b.n / least_share);
  }
  b.acc_block = allocate_zeros<T>(4 * Count(b.threads));
  if (b.acc_block == nullptr) return SS_NO_MEMORY;
  b.main.acc = b.acc_block;
  if (const auto* so_far = static_cast<const T*>(b.task.accumulated_weights)) {
    b.main.acc[0] = so_far[0];
    b.main.acc[1] = so_far[1];
  }

  const SourceMatrix<T> source(b);
  if (b.crosses()) {
    b.main.S = source.matrix;
    if (b.task.variable_mask != nullptr || !source.storage.full()) {
      b.own_S = allocate<T>(Count(b.p) * b.p);
      if (b.own_S == nullptr) return SS_NO_MEMORY;
      b.main.S = b.own_S;
    }
  }
  const Count others = Count(b.threads - 1) * b.thread_size();
  if (others.value > 0) {
    b.thread_block = allocate_zeros<T>(others);
    if (b.thread_block == nullptr) return SS_NO_MEMORY;
  }
  if (b.crosses()) denormalise(b, source);
  return SS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
