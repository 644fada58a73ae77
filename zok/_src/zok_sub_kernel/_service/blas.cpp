// SPDX-License-Identifier: MIT
#include "blas.hpp"

#include <pthread.h>

// Weak: which of these there are depends on the BLAS that the process has loaded.
extern "C" {
__attribute__((weak)) int omp_get_max_threads();
__attribute__((weak)) void omp_set_num_threads(int threads);
__attribute__((weak)) int openblas_get_parallel();
}

namespace orv {
inline namespace ORV_TAG {
namespace {

pthread_mutex_t one_at_a_time = PTHREAD_MUTEX_INITIALIZER;

bool is_for_one_thread() {
  return openblas_get_parallel != nullptr && openblas_get_parallel() == 0;
}

}  // namespace

MatrixCall::MatrixCall() {
  if (omp_set_num_threads != nullptr && omp_get_max_threads != nullptr) {
    threads_allowed_ = omp_get_max_threads();
    if (threads_allowed_ != 1) omp_set_num_threads(1);
  }
  if (is_for_one_thread()) pthread_mutex_lock(&one_at_a_time);
}

MatrixCall::~MatrixCall() {
  if (is_for_one_thread()) pthread_mutex_unlock(&one_at_a_time);
  if (threads_allowed_ != 1) omp_set_num_threads(threads_allowed_);
}

}  // namespace ORV_TAG
}  // namespace orv
