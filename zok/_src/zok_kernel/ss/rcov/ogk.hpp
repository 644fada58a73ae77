// SPDX-License-Identifier: MIT
// The start estimate: robust distances by orthogonalised pairwise scales (R. Gnanadesikan and J. R.
// Kettenring 1972; R. A. Maronna and R. H. Zamar 2002).
//
// Variables are brought to location 0 and scale 1. What stands for their correlation follows from
// scales of sums and differences of pairs. Along its eigenvectors the data are projected, and a
// distance is made of the robust deviations there.
#pragma once

#include "../../../zok_sub_kernel/_service/blas.hpp"
#include "../../_service/ss_task.hpp"
#include "robust_scale.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Bytes of scratch that threads share.
inline constexpr intptr_t pool_bytes = 10000000;

template <class T>
struct OgkWork {
  intptr_t p, n;
  const T* x;
  bool rows;
  int32_t threads;
  intptr_t first = 0;  // variable of the pairs in hand

  // One block: what follows is cut from it.
  T* block = nullptr;
  T* standard = nullptr;    // p variables of n observations, standardised; then projections
  T* scratch = nullptr;     // 3 n for each thread
  T* distances = nullptr;   // n for each thread
  T* U = nullptr;           // packed
  T* E = nullptr;           // eigenvectors, column by column
  T* eigen_work = nullptr;  // eigenvalues, then the routine's own
  int32_t* eigen_integers = nullptr;

  OgkWork(const SSTask& task, const SSThreadServices& services)
      : p(static_cast<intptr_t>(integer(task, task.dimension))),
        n(static_cast<intptr_t>(integer(task, task.observation_count))),
        x(static_cast<const T*>(task.observations)),
        rows(is_rows(integer(task, task.observation_storage))),
        threads(usable_threads(services)) {
    const intptr_t fitting = pool_bytes / static_cast<intptr_t>(sizeof(T)) / 3 / n;
    if (threads > fitting) threads = fitting < 1 ? 1 : static_cast<int32_t>(fitting);
  }
  ~OgkWork() {
    orv_serv_deallocate(block);
    orv_serv_deallocate(eigen_integers);
  }
  OgkWork(const OgkWork&) = delete;
  OgkWork& operator=(const OgkWork&) = delete;

  int32_t allocate_all() {
    const Count data = Count(p) * n, own = Count(threads) * n, square = Count(p) * p;
    block = allocate<T>(data + 4 * own + 3 * square + 7 * Count(p) + 1);
    eigen_integers = allocate<int32_t>(5 * Count(p) + 3);
    if (block == nullptr || eigen_integers == nullptr) return SS_NO_MEMORY;
    standard = block;
    scratch = standard + data.value;
    distances = scratch + 3 * own.value;
    U = distances + own.value;
    E = U + square.value;
    eigen_work = E + square.value;
    return SS_OK;
  }

  T* variable(intptr_t j) const { return standard + j * n; }
  T* scratch_of(int32_t thread) const { return scratch + 3 * n * thread; }
  T& correlation(intptr_t j, intptr_t k) const {
    return U[MatrixStorage(SS_MATRIX_UPPER_PACKED, p).place(j, k)];
  }
};

/// Standardises variable `item`. One whose scale is 0 becomes 0, and has no part in anything.
template <class T>
void _vSSOGKRowThreader(int32_t item, int32_t thread, int32_t, void* args) {
  const auto& w = *static_cast<const OgkWork<T>*>(args);
  T *const y = w.variable(item), *const scratch = w.scratch_of(thread);
  const T* const x = w.rows ? w.x + item * w.n : w.x + item;
  for (intptr_t i = 0, step = w.rows ? 1 : w.p; i < w.n; ++i) y[i] = x[i * step];
  const LocationScale<T> s = robust_scale(w.n, y, scratch, scratch + w.n);
  const T inverse = s.scale > 0 ? 1 / s.scale : 0;
  for (intptr_t i = 0; i < w.n; ++i) y[i] = (y[i] - s.location) * inverse;
}

/// The pair of variables w.first and that many plus 1 plus `item`.
template <class T>
void _vSSOGKCorURowThreader(int32_t item, int32_t thread, int32_t, void* args) {
  const auto& w = *static_cast<const OgkWork<T>*>(args);
  const intptr_t j = w.first, k = j + 1 + item;
  const T *const a = w.variable(j), *const b = w.variable(k);
  T* const y = w.scratch_of(thread);
  for (intptr_t i = 0; i < w.n; ++i) y[i] = a[i] + b[i];
  const T sum = robust_scale(w.n, y, y + w.n, y + 2 * w.n).scale;
  for (intptr_t i = 0; i < w.n; ++i) y[i] = a[i] - b[i];
  const T difference = robust_scale(w.n, y, y + w.n, y + 2 * w.n).scale;
  w.correlation(j, k) = T(0.25) * (sum * sum - difference * difference);
}

/// Observations of a block that is projected at once.
inline constexpr intptr_t projected = 256;

/// Projects block `item` of observations on the eigenvectors, in place.
template <class T>
void project(int32_t item, int32_t thread, int32_t, void* args) {
  const auto& w = *static_cast<const OgkWork<T>*>(args);
  const intptr_t room = 3 * w.n / w.p, size = room < projected ? room : projected;
  const intptr_t first = item * size, left = w.n - first, count = left < size ? left : size;
  T *const x = w.standard + first, *const z = w.scratch_of(thread);
  const auto m = static_cast<int32_t>(count), p = static_cast<int32_t>(w.p);
  gemm('n', 'n', m, p, p, T(1), x, static_cast<int32_t>(w.n), w.E, p, T(0), z, m);
  for (intptr_t l = 0; l < w.p; ++l) {
    memcpy(x + l * w.n, z + l * count, static_cast<size_t>(count) * sizeof(T));
  }
}

/// A thread's share of the projections: adds squares of robust deviations to its distances. A
/// projection that is made of rounding errors has no part.
template <class T>
void _vSSOGKMahRowThreader(int32_t thread, int32_t, int32_t threads, void* args) {
  constexpr T epsilon = sizeof(T) == 8 ? T(0x1p-52) : T(0x1p-23);
  const auto& w = *static_cast<const OgkWork<T>*>(args);
  const intptr_t share = w.p / threads, begin = thread * share;
  const intptr_t end = thread + 1 == threads ? w.p : begin + share;
  T *const d = w.distances + thread * w.n, *const scratch = w.scratch_of(thread);
  memset(d, 0, static_cast<size_t>(w.n) * sizeof(T));
  for (intptr_t l = begin; l < end; ++l) {
    const T* const z = w.variable(l);
    const LocationScale<T> s = robust_scale(w.n, z, scratch, scratch + w.n);
    if (s.scale <= static_cast<T>(w.p) * epsilon) continue;
    for (intptr_t i = 0; i < w.n; ++i) {
      const T t = (z[i] - s.location) / s.scale;
      d[i] += t * t;
    }
  }
}

/// Leaves squares of distances of all observations in w.distances.
template <class T>
int32_t _vSSComputeOGKMethod(OgkWork<T>& w, const SSThreadServices& services) {
  const auto p = static_cast<int32_t>(w.p);
  services.run_items(p, w.threads, &w, _vSSOGKRowThreader<T>);
  for (w.first = 0; w.first < w.p; ++w.first) {
    w.correlation(w.first, w.first) = 1;
    const auto pairs = static_cast<int32_t>(w.p - 1 - w.first);
    if (pairs > 0) services.run_items(pairs, w.threads, &w, _vSSOGKCorURowThreader<T>);
  }
  for (intptr_t i = 0; i < w.p * (w.p + 1) / 2; ++i) {
    if (!(w.U[i] - w.U[i] == 0)) return SS_OGK_FAILED;  // the data are not finite
  }
  // The upper triangle row by row is the lower one column by column.
  T* const values = w.eigen_work;
  if (spevd('L', p, w.U, values, w.E, values + p, w.eigen_integers) != 0) return SS_OGK_FAILED;

  const intptr_t room = 3 * w.n / w.p, size = room < projected ? room : projected;
  services.run_items(static_cast<int32_t>((w.n + size - 1) / size), w.threads, &w, project<T>);
  services.run_threads(w.threads, &w, _vSSOGKMahRowThreader<T>);
  for (int32_t t = 1; t < w.threads; ++t) {
    const T* const d = w.distances + t * w.n;
    for (intptr_t i = 0; i < w.n; ++i) w.distances[i] += d[i];
  }
  return SS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
