// SPDX-License-Identifier: MIT
// Robust mean and covariance: a start estimate by pairs of variables (ogk.hpp), then iterations of
// the translated biweight S-estimator (D. M. Rocke 1996).
//
// An iteration: distances from the last estimate, scaled so that the middle one is what it is for
// normal data; weights by the biweight; weighted mean and scatter.
#include <orv/scalar.h>

#include "../../../zok_sub_kernel/_math/inverse_covariance.hpp"
#include "../../_service/serial_services.hpp"
#include "../mah_distance/mah_distance.hpp"
#include "biweight.hpp"
#include "ogk.hpp"

using namespace orv;

namespace {

int32_t test_rank(int32_t p, double* c) { return __zokdTestCovRank(p, c); }
int32_t test_rank(int32_t p, float* c) { return __zoksTestCovRank(p, c); }

int32_t basic(SSTask* task, const SSThreadServices& services, double) {
  return _zokdSSBasic(task, SS_EST_COV, SS_METHOD_ONE_PASS, &services);
}
int32_t basic(SSTask* task, const SSThreadServices& services, float) {
  return _zoksSSBasic(task, SS_EST_COV, SS_METHOD_ONE_PASS, &services);
}

double root(double x) { return __builtin_sqrt(x); }

struct Parameters {
  double breakdown, rejection, accuracy;
  int32_t iterations;
};

/// What is not given, or out of range, is the default.
template <class T>
Parameters parameters_of(const SSTask& task) {
  const auto p = static_cast<double>(integer(task, task.dimension));
  const auto n = static_cast<double>(integer(task, task.observation_count));
  Parameters r = {0.5 * (n - p) / n, 0.001, 0.001, 100};
  const auto* const given = static_cast<const T*>(task.robust_params);
  if (given == nullptr || integer(task, task.robust_param_count) != 4) return r;
  if (given[0] < r.breakdown) r.breakdown = given[0];
  if (given[1] > 0 && given[1] < 1) r.rejection = given[1];
  if (given[2] > 0) r.accuracy = given[2];
  if (given[3] > -1) {
    r.iterations = given[3] < T(1 << 30) ? static_cast<int32_t>(given[3]) : 1 << 30;
  }
  return r;
}

/// The state of one call.
template <class T>
struct TbsWork {
  const SSTask& task;
  intptr_t p, n;
  Parameters parameters;
  Biweight biweight;
  MatrixStorage storage;
  T *mean, *cov;  // results; a packed covariance is formed in full first
  T *weights, *distances, *sorted;
  T *old_mean, *inverse;
  T* pool = nullptr;  // blocks of observations for each thread
  intptr_t pool_share = 0;
  int32_t threads = 1;
  int32_t status = SS_OK;  // a thread's failure
  T* block = nullptr;

  explicit TbsWork(const SSTask& t)
      : task(t),
        p(static_cast<intptr_t>(integer(t, t.dimension))),
        n(static_cast<intptr_t>(integer(t, t.observation_count))),
        parameters(parameters_of<T>(t)),
        storage(integer(t, t.robust_cov_storage), p),
        mean(static_cast<T*>(t.robust_mean)),
        cov(static_cast<T*>(t.robust_cov)) {}
  ~TbsWork() { orv_serv_deallocate(block); }
  TbsWork(const TbsWork&) = delete;
  TbsWork& operator=(const TbsWork&) = delete;

  int32_t allocate_all(const SSThreadServices& services) {
    constexpr intptr_t least_share = 1000, observations = 256;
    threads = usable_threads(services);
    if (n / threads < least_share) {
      threads = n < least_share ? 1 : static_cast<int32_t>(n / least_share);
    }
    const intptr_t fitting = pool_bytes / static_cast<intptr_t>(sizeof(T)) / threads;
    pool_share = fitting < 2 * observations * p ? fitting : 2 * observations * p;
    const Count square = Count(p) * p;
    block = allocate<T>(3 * Count(n) + p + square * 2 + Count(threads) * pool_share);
    if (block == nullptr) return SS_NO_MEMORY;
    weights = block;
    distances = weights + n;
    sorted = distances + n;
    old_mean = sorted + n;
    inverse = old_mean + p;
    T* const own_cov = inverse + square.value;
    pool = own_cov + square.value;
    if (!storage.full()) cov = own_cov;
    return SS_OK;
  }
};

struct WeightSums {
  double W, W2;
};

/// Variables that have one value in all observations with a weight: running means leave rounding
/// errors there, which would pass for a scatter.
template <class T>
void settle_constants(const TbsWork<T>& w) {
  const auto* const x = static_cast<const T*>(w.task.observations);
  const bool rows = is_rows(integer(w.task, w.task.observation_storage));
  const auto at = [&](intptr_t i, intptr_t j) { return x[rows ? j * w.n + i : i * w.p + j]; };
  intptr_t first = 0;
  while (first < w.n && !(w.weights[first] > 0)) ++first;
  for (intptr_t j = 0; first < w.n && j < w.p; ++j) {
    intptr_t i = first + 1;
    while (i < w.n && !(w.weights[i] > 0 && at(i, j) != at(first, j))) ++i;
    if (i < w.n) continue;
    w.mean[j] = at(first, j);
    for (intptr_t k = 0; k < w.p; ++k) w.cov[j * w.p + k] = w.cov[k * w.p + j] = 0;
  }
}

/// Mean and covariance of the observations with their weights.
template <class T>
int32_t weighted_estimates(const TbsWork<T>& w, const SSThreadServices& services,
                           WeightSums* sums) {
  T accumulated[2] = {0, 0};
  SSTask own = {};
  own.int_is_64 = w.task.int_is_64;
  own.dimension = w.task.dimension;
  own.observation_count = w.task.observation_count;
  own.observation_storage = w.task.observation_storage;
  own.observations = w.task.observations;
  own.weights = w.weights;
  own.accumulated_weights = accumulated;
  own.mean = w.mean;
  own.cov = w.cov;
  const int32_t status = basic(&own, services, T());
  if (status < 0) return status;
  settle_constants(w);
  *sums = {static_cast<double>(accumulated[0]), static_cast<double>(accumulated[1])};
  return SS_OK;
}

template <class T>
void scale(const TbsWork<T>& w, double factor) {
  for (intptr_t k = 0; k < w.p * w.p; ++k) w.cov[k] = static_cast<T>(w.cov[k] * factor);
}

/// Mean and covariance of the observations that the start's distances don't set apart. Where half
/// of them have no distance at all, as those of constant variables, these.
template <class T>
int32_t start(const TbsWork<T>& w, const SSThreadServices& services) {
  OgkWork<T> ogk(w.task, services);
  int32_t status = ogk.allocate_all();
  if (status == SS_OK) status = _vSSComputeOGKMethod(ogk, services);
  if (status != SS_OK) return status;
  const auto p = static_cast<double>(w.p);
  const T middle = median(w.n, ogk.distances, ogk.scratch);
  const T limit =
      static_cast<T>(__zokdChi2ICDF(p, 0.9) * static_cast<double>(middle) / __zokdChi2ICDF(p, 0.5));
  for (intptr_t i = 0; i < w.n; ++i) {
    const T d = ogk.distances[i];
    w.weights[i] = d < limit || (d == 0 && limit == 0) ? 1 : 0;
  }
  WeightSums s;
  status = weighted_estimates(w, services, &s);
  if (status < 0) return status;
  scale(w, (s.W - s.W2 / s.W) / s.W);
  for (intptr_t j = 0; j < w.p; ++j) {
    const T variance = w.cov[j * (w.p + 1)];
    if (!(variance - variance == 0)) return SS_OGK_FAILED;  // the data are not finite
  }
  return SS_OK;
}

/// A thread's share of the distances.
template <class T>
void _vSSOGKMahThreader(int32_t thread, int32_t, int32_t threads, void* args) {
  auto& w = *static_cast<TbsWork<T>*>(args);
  const intptr_t chunk = w.n / threads;
  const intptr_t first = thread * chunk, end = thread + 1 == threads ? w.n : first + chunk;
  T* const buffer = w.pool + thread * w.pool_share;
  MahalanobisDistances<T> distances(w.task, w.mean, w.inverse, buffer, w.pool_share);
  const int32_t status = distances(first, end, w.distances + first);
  if (status < 0) __atomic_store_n(&w.status, status, __ATOMIC_RELAXED);
}

/// Scales distances and makes weights of them. Returns the sum of w d^2.
template <class T>
double weigh(const TbsWork<T>& w) {
  const intptr_t H = (w.n + w.p + 1) / 2;
  const auto of_normal = __zokdChi2ICDF(static_cast<double>(w.p),
                                        static_cast<double>(H) / static_cast<double>(w.n + 1));
  const T middle = order_statistics(w.n, w.distances, H - 1, w.sorted).first;
  const T unit = static_cast<T>(root(of_normal) / static_cast<double>(middle));
  const T M = static_cast<T>(w.biweight.M), c = static_cast<T>(w.biweight.c);
  double sum = 0;
  for (intptr_t i = 0; i < w.n; ++i) {
    const T d = w.distances[i] * unit, u = (d - M) / c, rest = 1 - u * u;
    w.weights[i] = d < M ? 1 : c > 0 && !(d > M + c) ? rest * rest : 0;
    if (w.weights[i] != 0) sum += static_cast<double>(w.weights[i] * (d * d));
  }
  return sum;
}

/// One step. Returns a status, or the square of the mean's way in `change`.
template <class T>
int32_t step(TbsWork<T>& w, const SSThreadServices& services, double* change) {
  const auto p = static_cast<int32_t>(w.p);
  memcpy(w.old_mean, w.mean, static_cast<size_t>(w.p) * sizeof(T));
  int32_t status = test_rank(p, w.cov);
  if (status < 0) return status;
  memcpy(w.inverse, w.cov, static_cast<size_t>(w.p * w.p) * sizeof(T));
  status = invert_covariance(p, w.inverse);
  if (status < 0) return status;
  services.run_threads(w.threads, &w, _vSSOGKMahThreader<T>);
  if (w.status < 0) return w.status;
  const double A = weigh(w);
  if (!(A > 0)) return SS_NOT_CONVERGED;
  WeightSums s;
  status = weighted_estimates(w, services, &s);
  if (status < 0) return status;
  scale(w, p * (s.W - s.W2 / s.W) / A);
  *change = 0;
  for (intptr_t j = 0; j < w.p; ++j) {
    const T d = w.mean[j] - w.old_mean[j];
    *change += static_cast<double>(d * d);
  }
  return SS_OK;
}

template <class T>
int32_t _vSSComputeTBSMethod(TbsWork<T>& w, const SSThreadServices& services) {
  double change = w.parameters.accuracy;
  for (int32_t i = 0; i < w.parameters.iterations; ++i) {
    if (i > 0 && !(change > w.parameters.accuracy)) break;
    const int32_t status = step(w, services, &change);
    if (status < 0) return status;
  }
  return SS_OK;
}

template <class T>
int32_t _vSSTBSMethod(const SSTask& task, const SSThreadServices& services) {
  constexpr intptr_t worth_threads = 10000;
  TbsWork<T> w(task);
  const auto& few = w.n < worth_threads && w.p * w.n < worth_threads ? serial_services : services;
  int32_t status = w.allocate_all(few);
  if (status < 0) return status;
  w.biweight = _vSSInitTBSMethod(w.p, w.parameters.breakdown, w.parameters.rejection);
  status = start(w, services);
  if (status == SS_OK) status = _vSSComputeTBSMethod(w, few);
  if (status < 0 || w.storage.full()) return status;
  struct All {
    bool operator[](intptr_t) const { return true; }
  };
  w.storage.write(static_cast<T*>(task.robust_cov), All(),
                  [&](intptr_t i, intptr_t j) { return w.cov[i * w.p + j]; });
  return SS_OK;
}

int32_t check_codes(const SSTask& task) {
  if (task.observation_storage == nullptr) return SS_NULL_STORAGE;
  const int64_t layout = integer(task, task.observation_storage);
  if (layout != SS_ROWS && layout != SS_COLUMNS) return SS_BAD_STORAGE;
  if (task.robust_cov == nullptr) return SS_NULL_ROBUST_COV;
  if (task.robust_mean == nullptr) return SS_NULL_ROBUST_MEAN;
  if (task.robust_cov_storage == nullptr) return SS_NULL_STORAGE;
  const int64_t storage = integer(task, task.robust_cov_storage);
  return storage < SS_MATRIX_FULL || storage > SS_MATRIX_UPPER_PACKED ? SS_BAD_STORAGE : SS_OK;
}

template <class T>
int32_t robust_covariance(const SSTask& task, uint64_t method, const SSThreadServices& services) {
  constexpr int64_t most_variables = 40000;  // whose square LAPACK's integers hold
  int32_t status = check_dimension(task, most_variables);
  if (status != SS_OK) return status;
  const int64_t p = integer(task, task.dimension), n = integer(task, task.observation_count);
  if (n <= 2 * p) return SS_NULL_OBSERVATIONS;
  status = check_codes(task);
  if (status != SS_OK) return status;
  if ((method & SS_METHOD_TBS) == 0) return SS_BAD_METHOD;
  status = check_data(task, INT32_MAX);
  return status != SS_OK ? status : _vSSTBSMethod<T>(task, services);
}

}  // namespace

int32_t _zokdSSRobustCovariance(SSTask* task, uint64_t, uint64_t method,
                                const SSThreadServices* services) {
  return robust_covariance<double>(*task, method, *services);
}

int32_t _zoksSSRobustCovariance(SSTask* task, uint64_t, uint64_t method,
                                const SSThreadServices* services) {
  return robust_covariance<float>(*task, method, *services);
}
