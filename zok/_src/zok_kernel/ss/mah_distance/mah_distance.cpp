// SPDX-License-Identifier: MIT
// Mahalanobis distances (P. C. Mahalanobis 1936): the root of u' A u, u an observation less the
// mean and A the inverse of the covariance.
#include "mah_distance.hpp"

#include "../../../zok_sub_kernel/_service/blas.hpp"
#include "centered.hpp"

using namespace orv;

namespace {

template <class T>
struct Arguments {
  intptr_t p, n, first, end;
  const T *observations, *mean, *inverse_cov;
  T* output;
  T* buffer;  // or null
  int64_t buffer_size;
};

/// One variable.
template <class T>
void scaled_deviations(const Arguments<T>& a) {
  for (intptr_t i = a.first; i < a.end; ++i) {
    const T u = a.observations[i] - a.mean[0];
    a.output[i - a.first] = root(u * a.inverse_cov[0] * u);
  }
}

/// By the columns of the upper triangle, with room for a block of observations.
template <class T, int layout>
void by_observation(const Arguments<T>& a, intptr_t block, T* centered) {
  for (intptr_t i = a.first; i < a.end; i += block) {
    const intptr_t count = a.end - i < block ? a.end - i : block;
    center<T>({a.observations, a.p, a.n, layout == SS_ROWS}, a.mean, i, count, centered);
    for (intptr_t k = 0; k < count; ++k) {
      const T *const u = centered + k * a.p, *column = a.inverse_cov;
      T sum = 0;
      for (intptr_t j = 0; j < a.p; ++j, column += a.p) {
        sum += u[j] * (2 * dot(column, u, j) + column[j] * u[j]);
      }
      a.output[i - a.first + k] = root(sum);
    }
  }
}

/// Observations that a matrix routine takes at once: they, and as much again, stay in the cache.
template <class T>
intptr_t block_of(const Arguments<T>& a) {
  constexpr int64_t bytes = 1 << 18;
  constexpr int64_t least = 16;
  if (a.buffer == nullptr || a.p > INT32_MAX) return 0;
  const int64_t held = a.buffer_size / 2 / a.p;
  const int64_t fitting = bytes / 2 / static_cast<int64_t>(sizeof(T)) / a.p;
  const int64_t wanted = fitting < least ? least : fitting;
  return static_cast<intptr_t>(held < wanted ? held : wanted);
}

template <class T, int layout>
void by_blocks(const Arguments<T>& a, intptr_t block) {
  const auto p = static_cast<int32_t>(a.p);
  T *const centered = a.buffer, *const products = centered + block * a.p;
  for (intptr_t i = a.first; i < a.end; i += block) {
    const intptr_t count = a.end - i < block ? a.end - i : block;
    center<T>({a.observations, a.p, a.n, layout == SS_ROWS}, a.mean, i, count, centered);
    symm('l', 'u', p, static_cast<int32_t>(count), T{1}, a.inverse_cov, p, centered, p, T{0},
         products, p);
    for (intptr_t k = 0; k < count; ++k) {
      a.output[i - a.first + k] = root(dot(centered + k * a.p, products + k * a.p, a.p));
    }
  }
}

template <class T, int layout>
int32_t kernel_method(const Arguments<T>& a) {
  constexpr intptr_t on_stack = 1024;
  if (a.p == 1) {
    scaled_deviations(a);
    return SS_OK;
  }
  if (const intptr_t block = block_of(a); block > 0) {
    by_blocks<T, layout>(a, block);
    return SS_OK;
  }
  alignas(32) T scratch[on_stack];
  if (a.p <= on_stack) {
    by_observation<T, layout>(a, on_stack / a.p, scratch);
    return SS_OK;
  }
  T* const allocated = allocate<T>(a.p);
  if (allocated == nullptr) return SS_NO_MEMORY;
  by_observation<T, layout>(a, 1, allocated);
  orv_serv_deallocate(allocated);
  return SS_OK;
}

template <class T>
int32_t _vMahDistanceRowKernelMethod(const Arguments<T>& a) {
  return kernel_method<T, SS_ROWS>(a);
}

template <class T>
int32_t _vMahDistanceColKernelMethod(const Arguments<T>& a) {
  return kernel_method<T, SS_COLUMNS>(a);
}

template <class T>
int32_t distances(const SSTask& task) {
  void* const* const words = task.mahalanobis_block;
  const auto word = [&](int which) { return static_cast<intptr_t>(integer(task, words[which])); };
  const auto numbers = [&](int which) { return static_cast<T*>(words[which]); };
  const Arguments<T> a = {static_cast<intptr_t>(integer(task, task.dimension)),
                          static_cast<intptr_t>(integer(task, task.observation_count)),
                          word(mah_first),
                          word(mah_end),
                          static_cast<const T*>(task.observations),
                          numbers(mah_mean),
                          numbers(mah_inverse_cov),
                          numbers(mah_output),
                          numbers(mah_buffer),
                          integer(task, words[mah_buffer_size])};
  return is_rows(integer(task, task.observation_storage)) ? _vMahDistanceRowKernelMethod(a)
                                                          : _vMahDistanceColKernelMethod(a);
}

}  // namespace

int32_t _zokdSSMahDistance(SSTask* task) { return distances<double>(*task); }
int32_t _zoksSSMahDistance(SSTask* task) { return distances<float>(*task); }
