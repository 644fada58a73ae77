// SPDX-License-Identifier: MIT
// Moments, covariance and correlation: checks, threads, merging, results.
#include "../../../zok_sub_kernel/_service/blas.hpp"
#include "work.hpp"

using namespace orv;

namespace {

/// The kernel for what the work asks of a pass, with or without cross-products.
template <class T>
Kernel<T> kernel_for(const BasicWork<T>& b, bool cross) {
  const unsigned moments = (b.has_moment(0) ? running_mean : 0) | (b.has_moment(1) ? raw_2 : 0) |
                           (b.has_moment(2) ? raw_3 : 0) | (b.has_moment(3) ? raw_4 : 0);
  return kernel_funcs_table(
      T())[moments | (cross ? cross_products : 0) | (b.weights != nullptr ? weighted : 0) |
           (b.columns ? column_layout : 0)];
}

template <class T>
void run(Kernel<T> kernel, const BasicWork<T>& b, intptr_t first, intptr_t end, const Sums<T>& s) {
  kernel(first, end, b.n, 0, b.p, b.p, b.x, b.weights, nullptr, s.acc, s.moment[0], s.moment[1],
         s.moment[2], s.moment[3], s.S);
}

/// Observations that matrix routines take at once: what they read is still in the cache.
template <class T>
intptr_t matrix_block(intptr_t p) {
  constexpr intptr_t bytes = 1 << 18;
  const intptr_t fitting = bytes / static_cast<intptr_t>(sizeof(T)) / p;
  return fitting < 64 ? 64 : fitting;
}

/// S += X X' over observations first to end - 1.
template <class T>
void add_products(const BasicWork<T>& b, intptr_t first, intptr_t end, T* S) {
  const auto p = static_cast<int32_t>(b.p), count = static_cast<int32_t>(end - first);
  if (b.columns) {
    syrk('u', 'n', p, count, T(1), b.x + first * b.p, p, T(1), S, p);
  } else {
    syrk('u', 't', p, count, T(1), b.x + first, static_cast<int32_t>(b.n), T(1), S, p);
  }
}

/// S += X (w X)' over observations first to end - 1. `scaled` has room for them.
template <class T>
void add_weighted_products(const BasicWork<T>& b, intptr_t first, intptr_t end, T* scaled, T* S) {
  const auto p = static_cast<int32_t>(b.p), count = static_cast<int32_t>(end - first);
  const T* w = b.weights + first;
  if (b.columns) {
    const T* x = b.x + first * b.p;
    for (intptr_t i = 0; i < count; ++i) {
      for (intptr_t j = 0; j < p; ++j) scaled[i * p + j] = w[i] * x[i * p + j];
    }
    gemm('n', 't', p, p, count, T(1), x, p, scaled, p, T(1), S, p);
  } else {
    const T* x = b.x + first;
    for (intptr_t j = 0; j < p; ++j) {
      for (intptr_t i = 0; i < count; ++i) scaled[j * count + i] = w[i] * x[j * b.n + i];
    }
    gemm('t', 'n', p, p, count, T(1), x, static_cast<int32_t>(b.n), scaled, count, T(1), S, p);
  }
}

/// Cross-products by matrix routines: S + W m m' is a plain sum of products before and after.
template <class T>
int32_t run_with_matrix_routines(const BasicWork<T>& b, intptr_t first, intptr_t end,
                                 const Sums<T>& s) {
  const Kernel<T> kernel = kernel_for(b, false);
  const auto p = static_cast<int32_t>(b.p);
  const intptr_t block = matrix_block<T>(b.p);
  T* scaled = nullptr;
  if (b.weights != nullptr) {
    scaled = allocate<T>(Count(block) * b.p);
    if (scaled == nullptr) return SS_NO_MEMORY;
    syr('u', p, s.acc[0], s.moment[0], s.S, p);
    run(kernel, b, first, end, s);
  } else {
    syr('u', p, s.acc[0], s.moment[0], s.S, p);
  }
  for (; first < end; first += block) {
    const intptr_t stop = end - first < block ? end : first + block;
    if (b.weights != nullptr) {
      add_weighted_products(b, first, stop, scaled, s.S);
    } else {
      run(kernel, b, first, stop, s);
      add_products(b, first, stop, s.S);
    }
  }
  syr('u', p, -s.acc[0], s.moment[0], s.S, p);
  orv_serv_deallocate(scaled);
  return SS_OK;
}

/// One thread's share of the observations.
template <class T>
void _vSSBasicThreader(int32_t thread, int32_t, int32_t threads, void* args) {
  auto& b = *static_cast<BasicWork<T>*>(args);
  const intptr_t chunk = b.n / threads;
  const intptr_t first = thread * chunk, end = thread + 1 == threads ? b.n : first + chunk;
  const Sums<T> sums = b.of_thread(thread);
  if (b.one_pass || !b.crosses()) {
    run(kernel_for(b, b.crosses()), b, first, end, sums);
  } else if (run_with_matrix_routines(b, first, end, sums) != SS_OK) {
    __atomic_store_n(&b.status, SS_NO_MEMORY, __ATOMIC_RELAXED);
  }
}

/// Adds a thread's sums to the main ones (Chan, Golub and LeVeque 1979).
template <class T>
void merge(const BasicWork<T>& b, int32_t thread) {
  const Sums<T>&main = b.main, other = b.of_thread(thread);
  const T before = main.acc[0], added = other.acc[0], sum = before + added;
  if (added == 0) return;
  if (b.crosses()) {
    const T f = before != 0 ? before * added / sum : 0;
    const T *m = main.moment[0], *m_t = other.moment[0];
    for (intptr_t j = 0; j < b.p; ++j) {
      const T d = m_t[j] - m[j];
      for (intptr_t k = j; k < b.p; ++k) {
        main.S[j + k * b.p] += other.S[j + k * b.p] + f * ((0 - d) * m[k] + d * m_t[k]);
      }
    }
  }
  const T r = 1 / sum;
  for (int k = 0; k < 4; ++k) {
    T* v = main.moment[k];
    for (intptr_t j = 0; v != nullptr && j < b.p; ++j) {
      v[j] = r * (before * v[j] + added * other.moment[k][j]);
    }
  }
  main.acc[0] = sum;
  for (int k = 1; k < 4; ++k) main.acc[k] += other.acc[k];
}

/// The arrays of the main moments: the caller's, or with a mask copies of them, so that variables
/// that are left out keep what they have.
template <class T>
int32_t find_moments(BasicWork<T>& b) {
  const bool masked = b.task.variable_mask != nullptr && b.moment_count() > 0;
  if (masked) {
    b.masked_moments = allocate<T>(Count(b.moment_count()) * b.p);
    if (b.masked_moments == nullptr) return SS_NO_MEMORY;
  }
  T* at = b.masked_moments;
  for (int k = 0; k < 4; ++k) {
    if (!b.has_moment(k)) continue;
    b.main.moment[k] = masked ? at : b.result(k);
    if (!masked) continue;
    memcpy(at, b.result(k), static_cast<size_t>(b.p) * sizeof(T));
    at += b.p;
  }
  return SS_OK;
}

template <class T>
void copy_selected_moments(const BasicWork<T>& b) {
  if (b.masked_moments == nullptr) return;
  const Selection selected(b.task);
  for (int k = 0; k < 4; ++k) {
    for (intptr_t j = 0; b.has_moment(k) && j < b.p; ++j) {
      if (selected[j]) b.result(k)[j] = b.main.moment[k][j];
    }
  }
}

template <class T>
void start_anew(const BasicWork<T>& b) {
  const auto p = static_cast<size_t>(b.p);
  for (T* moment : b.main.moment) {
    if (moment != nullptr) memset(moment, 0, p * sizeof(T));
  }
  if (b.crosses()) memset(b.main.S, 0, p * p * sizeof(T));
}

/// Correlation, with the variances on its diagonal, and covariance. The covariance comes last: its
/// matrix may hold S.
template <class T>
void write_matrices(const BasicWork<T>& b) {
  const T *S = b.main.S, W = b.main.acc[0], W2 = b.main.acc[1];
  const T g = W > 0 ? 1 / (W - W2 / W) : 1;
  const Selection selected(b.task);
  const auto element = [&](intptr_t j, intptr_t k) { return S[j + k * b.p]; };
  if ((b.work & est_cor) != 0) {
    b.cor_storage.write(static_cast<T*>(b.task.cor), selected, [&](intptr_t j, intptr_t k) {
      if (j == k) return g * element(j, j);
      return static_cast<T>(element(j, k) / root_of_product(element(j, j), element(k, k)));
    });
  }
  if ((b.work & est_cov) != 0) {
    b.cov_storage.write(static_cast<T*>(b.task.cov), selected,
                        [&](intptr_t j, intptr_t k) { return g * element(j, k); });
  }
}

template <class T>
int32_t _vSSBasic(BasicWork<T>& b, const SSThreadServices& services) {
  int32_t status = _vSSInitBasicCommon(b, services);
  if (status == SS_OK) status = find_moments(b);
  if (status != SS_OK) return status;
  if (b.main.acc[0] == 0) start_anew(b);

  services.run_threads(b.threads, &b, _vSSBasicThreader<T>);
  if (b.status != SS_OK) return b.status;
  for (int32_t t = 1; t < b.threads; ++t) merge(b, t);

  copy_selected_moments(b);
  _vSSCenMomentDerEstimators<T>(b.task, b.p, b.work, b.main.acc);
  if (b.crosses()) write_matrices(b);
  if (auto* weights = static_cast<T*>(b.task.accumulated_weights)) {
    weights[0] = b.main.acc[0];
    weights[1] = b.main.acc[1];
  }
  return SS_OK;
}

template <class T>
int32_t basic(const SSTask& task, uint64_t estimates, uint64_t method,
              const SSThreadServices& services) {
  if (!is_layout(integer(task, task.observation_storage))) return SS_BAD_STORAGE;
  uint32_t work;
  int32_t status = work_for(task, estimates, work);
  if (status != SS_OK) return status;
  if ((method & (SS_METHOD_FAST | SS_METHOD_ONE_PASS)) == 0) return SS_BAD_METHOD;
  status = check_data(task);
  if (status != SS_OK) return status;
  BasicWork<T> b(task, work, (method & SS_METHOD_ONE_PASS) != 0);
  return _vSSBasic(b, services);
}

}  // namespace

int32_t _zokdSSBasic(SSTask* task, uint64_t estimates, uint64_t method,
                     const SSThreadServices* services) {
  return basic<double>(*task, estimates, method, *services);
}

int32_t _zoksSSBasic(SSTask* task, uint64_t estimates, uint64_t method,
                     const SSThreadServices* services) {
  return basic<float>(*task, estimates, method, *services);
}
