// SPDX-License-Identifier: MIT
// Outlier detection by BACON (N. Billor, A. S. Hadi and P. F. Velleman 2000): the 5 p observations
// nearest to a centre are taken for good; then all whose distance from their mean, in the measure
// of their covariance, is below a threshold; and so on till the number of good ones settles.
#include <math.h>
#include <orv/scalar.h>

#include "../../../zok_sub_kernel/_math/inverse_covariance.hpp"
#include "../mah_distance/mah_distance.hpp"
#include "nearest.hpp"
#include "observed.hpp"

using namespace orv;

namespace {

/// Entries and limits that differ with the precision.
template <class T>
struct Precision;

template <>
struct Precision<double> {
  static constexpr auto basic = _zokdSSBasic;
  static constexpr auto quantiles = _zokdSSQuantiles;
  static constexpr auto weighted_quantile = _zokdSSWMedian;
  static constexpr auto repair = __zokdTestCovRank;
  static constexpr intptr_t pool = 5000000;  // bytes of observations less the mean, of all threads
};
template <>
struct Precision<float> {
  static constexpr auto basic = _zoksSSBasic;
  static constexpr auto quantiles = _zoksSSQuantiles;
  static constexpr auto weighted_quantile = _zoksSSWMedian;
  static constexpr auto repair = __zoksTestCovRank;
  static constexpr intptr_t pool = 10000000;
};

constexpr intptr_t first_good = 5;             // of the first set, for each variable
constexpr intptr_t piece_without_pool = 2048;  // observations
constexpr int64_t values_for_one_thread = 10000;
constexpr int most_rounds = 100;  // some ten are usual

enum StartMethod { mahalanobis_start = 1, median_start = 2 };

struct Parameters {
  StartMethod start = median_start;
  double alpha = 0.05;
  double accuracy = 0.005;  // relative change of the number of good observations
};

template <class T>
Parameters parameters_of(const SSTask& task) {
  Parameters p;
  const auto* given = static_cast<const T*>(task.outlier_params);
  if (given == nullptr || integer(task, task.outlier_param_count) != 3) return p;
  if (given[0] == 1) p.start = mahalanobis_start;
  if (given[1] >= 0 && given[1] <= 1) p.alpha = given[1];
  if (given[2] > 0) p.accuracy = given[2];
  return p;
}

/// Threads that a pass over the data is worth.
template <class T>
int32_t threads_for(const Observed<T>& data, const SSThreadServices& services) {
  return data.p * data.n < values_for_one_thread ? 1 : usable_threads(services);
}

template <class T>
struct Work {
  const Observed<T>& data;
  const SSThreadServices& services;
  T* weights;  // the result, and before it distances from the centre
  const intptr_t p, n;
  int32_t threads = 1, status = SS_OK;  // a thread's failure
  intptr_t piece = 0;                   // observations that a thread takes at once
  intptr_t buffer_size = 0;             // of a thread: for them less the mean, twice; or for one
  bool has_pool = true;
  T threshold = 0;

  T* block = nullptr;  // holds all that follow
  T *distances = nullptr, *buffers = nullptr, *mean = nullptr, *cov = nullptr;
  intptr_t *nearest = nullptr, *good = nullptr;  // good ones that each thread found

  Work(const Observed<T>& d, const SSThreadServices& s, T* w)
      : data(d),
        services(s),
        weights(w),
        p(static_cast<intptr_t>(d.p)),
        n(static_cast<intptr_t>(d.n)) {}
  ~Work() { orv_serv_deallocate(block); }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  int32_t allocate_all();

  void fail(int32_t failure) { __atomic_store_n(&status, failure, __ATOMIC_RELAXED); }
  T* buffer(int32_t thread) const { return buffers + thread * buffer_size; }
  MahalanobisDistances<T> mahalanobis(const SSTask& task, int32_t thread) const {
    return {task, mean, cov, has_pool ? buffer(thread) : nullptr, buffer_size};
  }
};

template <class T>
int32_t Work<T>::allocate_all() {
  threads = threads_for(data, services);
  const intptr_t share = n - (threads - 1) * (n / threads);
  piece = Precision<T>::pool / threads / static_cast<intptr_t>(sizeof(T)) / p / 2;
  has_pool = piece > 0;
  if (!has_pool) piece = piece_without_pool;
  if (piece > share) piece = share;
  buffer_size = has_pool ? 2 * piece * p : p;

  const Count numbers = Count(threads) * (Count(piece) + buffer_size) + Count(p) * (Count(p) + 1);
  const Count places = first_good * Count(p) + threads;
  const Count padding = alignof(intptr_t);
  block = reinterpret_cast<T*>(
      allocate<char>(numbers * sizeof(T) + padding + places * sizeof(intptr_t)));
  if (block == nullptr) return SS_NO_MEMORY;
  distances = block;
  buffers = distances + threads * piece;
  mean = buffers + threads * buffer_size;
  cov = mean + p;
  auto end = reinterpret_cast<uintptr_t>(cov + p * p);
  end = (end + alignof(intptr_t) - 1) / alignof(intptr_t) * alignof(intptr_t);
  nearest = reinterpret_cast<intptr_t*>(end);
  good = nearest + first_good * p;
  return SS_OK;
}

/// Calls f(first, end) for the pieces of a thread's share, till it fails.
template <class T, class F>
void for_each_piece(Work<T>& w, int32_t thread, int32_t threads, F f) {
  const intptr_t chunk = w.n / threads;
  intptr_t first = thread * chunk;
  const intptr_t stop = thread + 1 == threads ? w.n : first + chunk;
  int32_t status = SS_OK;
  for (; first < stop && status == SS_OK; first += w.piece) {
    status = f(first, stop - first < w.piece ? stop : first + w.piece);
  }
  if (status != SS_OK) w.fail(status);
}

template <class T>
void distances_from_centre(int32_t thread, int32_t, int32_t threads, void* args) {
  auto& w = *static_cast<Work<T>*>(args);
  const intptr_t most = w.has_pool ? w.piece : 1;
  T* const centered = w.buffer(thread);
  const Observations<T> observations = w.data.observations();
  for_each_piece(w, thread, threads, [&](intptr_t first, intptr_t end) {
    for (intptr_t count; first < end; first += count) {
      count = end - first < most ? end - first : most;
      center(observations, w.mean, first, count, centered);
      for (intptr_t k = 0; k < count; ++k) {
        const T* u = centered + k * w.p;
        w.weights[first + k] = root(dot(u, u, w.p));
      }
    }
    return SS_OK;
  });
}

/// In the measure of the covariance of all. What can't be told is far away.
template <class T>
void distances_from_mean(int32_t thread, int32_t, int32_t threads, void* args) {
  auto& w = *static_cast<Work<T>*>(args);
  const SSTask task = w.data.task();
  MahalanobisDistances<T> find = w.mahalanobis(task, thread);
  for_each_piece(w, thread, threads, [&](intptr_t first, intptr_t end) {
    T* const distances = w.weights + first;
    const int32_t status = find(first, end, distances);
    for (intptr_t i = 0; i < end - first; ++i) {
      if (isnan(distances[i])) distances[i] = static_cast<T>(INFINITY);
    }
    return status;
  });
}

/// The weights of good observations, and 0 for the others.
template <class T>
void _vSSBaconThreader(int32_t thread, int32_t, int32_t threads, void* args) {
  auto& w = *static_cast<Work<T>*>(args);
  const SSTask task = w.data.task();
  MahalanobisDistances<T> find = w.mahalanobis(task, thread);
  T* const distances = w.distances + thread * w.piece;
  const T threshold = w.threshold;
  intptr_t good = 0;
  for_each_piece(w, thread, threads, [&](intptr_t first, intptr_t end) {
    const int32_t status = find(first, end, distances);
    T* const weights = w.weights + first;
    const T* const prior = w.data.prior;
    for (intptr_t k = 0; k < end - first; ++k) {
      const bool near = threshold > distances[k];  // a NaN is not
      weights[k] = !near ? 0 : prior != nullptr ? prior[first + k] : 1;
      good += near ? 1 : 0;
    }
    return status;
  });
  w.good[thread] = good;
}

/// Medians of all variables, for the mean. The data are finite and so are these: a NaN stays only
/// where an entry had no memory and said nothing.
template <class T>
int32_t find_medians(const Work<T>& w) {
  constexpr int64_t one = 1;
  constexpr T middle = T(0.5);
  SSTask task = w.data.task();
  task.quant_order_count = &one;
  task.quant_orders = &middle;
  task.quantiles = w.mean;
  for (intptr_t j = 0; j < w.p; ++j) w.mean[j] = static_cast<T>(NAN);
  int32_t status;
  if (w.data.prior != nullptr) {
    task.weights = w.data.prior;
    status = Precision<T>::weighted_quantile(&task, 0, 0, &w.services);
  } else {
    status = Precision<T>::quantiles(&task, SS_EST_QUANTILES, SS_METHOD_FAST, &w.services);
  }
  return status == SS_OK && isnan(w.mean[0]) ? SS_NO_MEMORY : status;
}

/// Mean and inverse covariance of observations with these weights.
template <class T>
int32_t find_measure(const Work<T>& w, const T* weights) {
  SSTask task = w.data.task();
  task.weights = weights;
  task.mean = w.mean;
  task.cov = w.cov;
  const auto p = static_cast<int32_t>(w.p);
  int32_t status = Precision<T>::basic(&task, SS_EST_COV, SS_METHOD_ONE_PASS, &w.services);
  if (status == SS_OK) status = Precision<T>::repair(p, w.cov);
  return status == SS_OK ? invert_covariance(p, w.cov) : status;
}

/// From the first set on.
template <class T>
int32_t _vSSComputeBACONMethod(Work<T>& w, const Parameters& parameters) {
  const intptr_t p = w.p, n = w.n, h = (n + p + 1) / 2;
  const double chi = __builtin_sqrt(__zokdChi2ICDF(static_cast<double>(p), 1 - parameters.alpha));
  const double c_np = 1 + static_cast<double>(p + 1) / static_cast<double>(n - p) +
                      2 / static_cast<double>(n - 1 - 3 * p);
  intptr_t r = first_good * p;
  bool settled = false;
  for (int round = 0; round < most_rounds && !settled && r > 0; ++round) {
    if (const int32_t status = find_measure(w, w.weights); status != SS_OK) return status;
    const double c_hr = r < h ? static_cast<double>(h - r) / static_cast<double>(h + r) : 0;
    w.threshold = static_cast<T>((c_hr + c_np) * chi);
    w.services.run_threads(w.threads, &w, _vSSBaconThreader<T>);
    if (w.status != SS_OK) return w.status;
    const auto before = static_cast<double>(r);
    r = 0;
    for (int32_t t = 0; t < w.threads; ++t) r += w.good[t];
    const double change = fabs(static_cast<double>(r) - before) / before;
    settled = r == n || change < parameters.accuracy;
  }
  return settled && (r > first_good * p || r == n) ? SS_OK : SS_NOT_CONVERGED;
}

template <class T>
int32_t _vSSBACONMethod(const Observed<T>& data, const SSThreadServices& services,
                        const Parameters& parameters, T* weights) {
  Work<T> w(data, services, weights);
  int32_t status = w.allocate_all();
  if (status != SS_OK) return status;
  const bool medians = parameters.start == median_start;
  status = medians ? find_medians(w) : find_measure(w, data.prior);
  if (status != SS_OK) return status;
  services.run_threads(w.threads, &w, medians ? distances_from_centre<T> : distances_from_mean<T>);
  if (w.status != SS_OK) return w.status;

  const intptr_t m = first_good * w.p;
  find_nearest(weights, w.n, w.nearest, m);
  memset(weights, 0, static_cast<size_t>(w.n) * sizeof(T));
  for (intptr_t k = 0; k < m; ++k) weights[w.nearest[k]] = data.weight(w.nearest[k]);
  return _vSSComputeBACONMethod(w, parameters);
}

/// A pass that finds out whether all data are finite.
template <class T>
struct Scan {
  const T* x;
  intptr_t size;
  bool finite = true;
};

template <class T>
void scan_share(int32_t thread, int32_t, int32_t threads, void* args) {
  auto& scan = *static_cast<Scan<T>*>(args);
  const intptr_t chunk = scan.size / threads, first = thread * chunk;
  const intptr_t count = thread + 1 == threads ? scan.size - first : chunk;
  if (!all_finite(scan.x + first, count)) {
    __atomic_store_n(&scan.finite, false, __ATOMIC_RELAXED);
  }
}

/// An observation that is not finite is an outlier, and would spoil the mean of the others even
/// with weight 0: the method sees a copy of the others.
template <class T>
int32_t detect_among_finite(const Observed<T>& data, const SSThreadServices& services,
                            const Parameters& parameters, T* weights) {
  const auto p = static_cast<intptr_t>(data.p), n = static_cast<intptr_t>(data.n);
  intptr_t count = 0;
  for (intptr_t i = 0; i < n; ++i) count += data.is_finite(i) ? 1 : 0;
  memset(weights, 0, static_cast<size_t>(n) * sizeof(T));
  if (count < first_good * p) return SS_NOT_CONVERGED;

  T* const x = allocate<T>(Count(count) * (Count(p) + 2));
  if (x == nullptr) return SS_NO_MEMORY;
  T *const prior = x + count * p, *const found = prior + count;
  intptr_t k = 0;
  for (intptr_t i = 0; i < n; ++i) {
    if (!data.is_finite(i)) continue;
    for (intptr_t j = 0; j < p; ++j) x[k * p + j] = data(i, j);
    prior[k++] = data.weight(i);
  }
  Observed<T> finite = data;
  finite.n = count;
  finite.layout = SS_COLUMNS;
  finite.x = x;
  if (data.prior != nullptr) finite.prior = prior;
  const int32_t status = _vSSBACONMethod(finite, services, parameters, found);
  k = 0;
  for (intptr_t i = 0; i < n; ++i) weights[i] = data.is_finite(i) ? found[k++] : 0;
  orv_serv_deallocate(x);
  return status;
}

int32_t check(const SSTask& task, uint64_t method) {
  if (const int32_t status = check_dimension(task, INT32_MAX); status != SS_OK) return status;
  const int64_t least = first_good * integer(task, task.dimension);
  if (integer(task, task.observation_count) < least) return SS_BAD_OBSERVATION_COUNT;
  const int64_t layout = integer(task, task.observation_storage);
  if (layout != SS_ROWS && layout != SS_COLUMNS) return SS_BAD_STORAGE;
  if (task.outlier_weights == nullptr) return SS_NULL_OUTLIER_WEIGHTS;
  return (method & SS_METHOD_BACON) != 0 ? check_data(task) : SS_BAD_METHOD;
}

template <class T>
int32_t detect_outliers(const SSTask& task, uint64_t method, const SSThreadServices& services) {
  if (const int32_t status = check(task, method); status != SS_OK) return status;
  const Observed<T> data(task);
  auto* const weights = static_cast<T*>(task.outlier_weights);
  Scan<T> scan = {data.x, static_cast<intptr_t>(data.p * data.n)};
  services.run_threads(threads_for(data, services), &scan, scan_share<T>);
  return (scan.finite ? _vSSBACONMethod<T>
                      : detect_among_finite<T>)(data, services, parameters_of<T>(task), weights);
}

}  // namespace

int32_t _zokdSSOutliersDetection(SSTask* task, uint64_t, uint64_t method,
                                 const SSThreadServices* services) {
  return detect_outliers<double>(*task, method, *services);
}

int32_t _zoksSSOutliersDetection(SSTask* task, uint64_t, uint64_t method,
                                 const SSThreadServices* services) {
  return detect_outliers<float>(*task, method, *services);
}
