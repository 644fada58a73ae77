// SPDX-License-Identifier: MIT
// Multiple imputation of missing values under a multivariate normal law, and its EM estimate alone.
#include "augmentation.hpp"

using namespace orv;

namespace {

constexpr int64_t parameter_count = 5;

/// A count given as a number, cut to what an int64_t holds; NaN counts as 0.
template <class T>
int64_t whole(T x) {
  constexpr double most = 0x1p62;
  const auto value = static_cast<double>(x);
  return value > -most ? static_cast<int64_t>(value < most ? value : most) : 0;
}

template <class T>
Settings settings_of(const SSTask& task) {
  const auto* const given = static_cast<const T*>(task.missing_params);
  Settings settings;
  const auto set_count = [](int32_t* to, int64_t count) {
    if (count >= 1) *to = static_cast<int32_t>(count < INT32_MAX ? count : INT32_MAX);
  };
  set_count(&settings.em_iterations, whole(given[0]));
  set_count(&settings.da_iterations, whole(given[1]));
  if (given[2] > 0) settings.accuracy = static_cast<double>(given[2]);
  return settings;
}

template <class T>
Data<T> data_of(const SSTask& task) {
  return {static_cast<intptr_t>(integer(task, task.observation_count)),
          static_cast<intptr_t>(integer(task, task.dimension)),
          integer(task, task.observation_storage) == SS_ROWS,
          static_cast<const T*>(task.observations)};
}

template <class T>
const T* start_of(const SSTask& task, intptr_t p) {
  const int64_t size = int64_t{p} * (p + 3) / 2;
  const bool given = integer(task, task.init_estimates_count) == size;
  return given ? static_cast<const T*>(task.init_estimates) : nullptr;
}

/// Rows, regressions and the EM estimate among them.
template <class T>
int32_t estimate(const SSTask& task, const Data<T>& data, const Settings& settings, Rows* rows,
                 Regression* regression, int32_t* iterations) {
  int32_t status = rows->fill(data);
  if (status == SS_OK) status = regression->allocate_for(data.p);
  if (status != SS_OK) return status;
  read_parameters(*rows, start_of<T>(task, data.p), regression->G);
  ExpectationMaximization em(*rows, regression);
  status = em._vSSComputeObsSufficentStatistics();
  if (status == SS_OK) *iterations = em._vSSComputeEMMethod(settings);
  return status;
}

/// What is asked for, and its sizes.
template <class T>
struct Request {
  T* simulated;  // or null
  T* estimates;  // or null
  int64_t imputations;
  int64_t missing;
};

template <class T>
Request<T> request_of(const SSTask& task) {
  Request<T> request = {};
  if (integer(task, task.simulated_count) != 0) {
    request.simulated = static_cast<T*>(task.simulated_values);
  }
  if (task.estimates_count != nullptr) request.estimates = static_cast<T*>(task.estimates);
  return request;
}

/// Whether `count` is the product, which may be too large for anyone to count.
bool is_product(int64_t count, int64_t a, int64_t b, int64_t c) {
  int64_t product;
  return !__builtin_mul_overflow(a, b, &product) && !__builtin_mul_overflow(product, c, &product) &&
         count == product;
}

template <class T>
int32_t check_counts(const SSTask& task, const Data<T>& data, const Settings& settings,
                     Request<T>* request) {
  const auto* const given = static_cast<const T*>(task.missing_params);
  data.for_each_missing([&](intptr_t, intptr_t) { ++request->missing; });
  // A float may not hold the number itself.
  const auto rounded = static_cast<T>(request->missing);
  if (whole(given[4]) != request->missing && given[4] != rounded) return SS_BAD_MISSING_COUNT;
  request->imputations = whole(given[3]);
  if (request->imputations < 1 || request->missing < 1) return SS_BAD_MISSING_PARAMS;
  if (request->simulated != nullptr &&
      !is_product(integer(task, task.simulated_count), request->imputations, request->missing, 1)) {
    return SS_BAD_SIMULATED_COUNT;
  }
  const int64_t size = int64_t{data.p} * (data.p + 3) / 2;
  if (request->estimates != nullptr && !is_product(integer(task, task.estimates_count), size,
                                                   request->imputations, settings.da_iterations)) {
    return SS_BAD_ESTIMATES_COUNT;
  }
  return SS_OK;
}

/// Missing values in the order in which the data are stored.
template <class T>
T* deliver(const Data<T>& data, const Rows& rows, T* to) {
  data.for_each_missing([&](intptr_t i, intptr_t j) {
    *to++ = static_cast<T>(rows.row(rows.patterns.place(i))[j + 1] + rows.shift(j));
  });
  return to;
}

template <class T>
int32_t impute(const SSTask& task, const Data<T>& data, const Settings& settings,
               Request<T> request, StreamState* stream) {
  Rows rows;
  Regression regression;
  int32_t iterations;
  int32_t status = estimate(task, data, settings, &rows, &regression, &iterations);
  if (status != SS_OK) return status;
  DataAugmentation<T> augmentation(rows, &regression, Prior<T>::of(task, data.p), stream);
  status = augmentation._vSSInitDAMethod();
  if (status != SS_OK) return status;

  const intptr_t size = data.p * (data.p + 3) / 2;
  for (int64_t i = 0; i < request.imputations; ++i) {
    augmentation.begin();
    for (int32_t k = 0; k < settings.da_iterations; ++k) {
      status = augmentation.iterate();
      if (status != SS_OK) return status;
      if (request.estimates == nullptr) continue;
      write_parameters(rows, regression.G, request.estimates);
      request.estimates += size;
    }
    if (request.simulated != nullptr) request.simulated = deliver(data, rows, request.simulated);
  }
  return SS_OK;
}

/// Draws from the stream, or where there is none from one of its own.
template <class T>
int32_t _vSSMIMethod(const SSTask& task, Request<T> request, StreamState* stream) {
  // An odd first word: from an even one the generator's period is that much shorter.
  static constexpr uint32_t seeds[] = {1, 0x40000};
  const Data<T> data = data_of<T>(task);
  const Settings settings = settings_of<T>(task);
  int32_t status = check_counts(task, data, settings, &request);
  if (status != SS_OK) return status;
  if (stream != nullptr) return impute(task, data, settings, request, stream);
  status = __zokNewStreamEx(&stream, BRNG_MCG59, 2, seeds);
  if (status == RNG_OK) status = impute(task, data, settings, request, stream);
  if (stream != nullptr) __zokDeleteStream(&stream);
  return status;
}

int32_t check_setup(const SSTask& task) {
  if (integer(task, task.dimension) < 1) return SS_BAD_DIMENSION;
  const int64_t layout = integer(task, task.observation_storage);
  if (layout != SS_ROWS && layout != SS_COLUMNS) return SS_BAD_STORAGE;
  if (task.missing_params == nullptr) return SS_NULL_MISSING_PARAMS;
  if (task.missing_param_count == nullptr) return SS_NULL_MISSING_PARAM_COUNT;
  const int64_t count = integer(task, task.missing_param_count);
  return count == parameter_count ? SS_OK : SS_BAD_MISSING_PARAM_COUNT;
}

/// Matrix routines count the columns of a row.
int32_t check_sizes(const SSTask& task) {
  const int32_t status = check_dimension(task, INT32_MAX / 2);
  return status == SS_OK ? check_data(task) : status;
}

template <class T>
int32_t missing_values(const SSTask& task, uint64_t method, StreamState* stream = nullptr) {
  const int32_t status = check_setup(task);
  if (status != SS_OK) return status;
  const bool values = task.simulated_values != nullptr, count = task.simulated_count != nullptr;
  if (values && !count) return SS_NULL_SIMULATED_COUNT;
  if (count && !values) return SS_NULL_SIMULATED_VALUES;
  const Request<T> request = request_of<T>(task);
  if (request.simulated == nullptr && request.estimates == nullptr) return SS_NOTHING_ASKED;
  if ((method & SS_METHOD_MULTIPLE_IMPUTATION) == 0) return SS_BAD_METHOD;
  const int32_t sizes = check_sizes(task);
  return sizes == SS_OK ? _vSSMIMethod(task, request, stream) : sizes;
}

template <class T>
int32_t missing_moments(const SSTask& task, T* moments, int32_t* iterations) {
  int32_t status = check_setup(task);
  if (status == SS_OK) status = check_sizes(task);
  if (status != SS_OK) return status;
  if (moments == nullptr || iterations == nullptr) return SS_NULL_ESTIMATES;
  Rows rows;
  Regression regression;
  status = estimate(task, data_of<T>(task), settings_of<T>(task), &rows, &regression, iterations);
  if (status == SS_OK) write_parameters(rows, regression.G, moments);
  return status;
}

}  // namespace

int32_t _zokdSSMissingValues(SSTask* task, uint64_t, uint64_t method, const SSThreadServices*) {
  return missing_values<double>(*task, method);
}

int32_t _zoksSSMissingValues(SSTask* task, uint64_t, uint64_t method, const SSThreadServices*) {
  return missing_values<float>(*task, method);
}

int32_t _zokdSSMissingValuesFrom(SSTask* task, StreamState* stream) {
  return missing_values<double>(*task, SS_METHOD_MULTIPLE_IMPUTATION, stream);
}

int32_t _zoksSSMissingValuesFrom(SSTask* task, StreamState* stream) {
  return missing_values<float>(*task, SS_METHOD_MULTIPLE_IMPUTATION, stream);
}

int32_t _zokdSSMissingMoments(SSTask* task, double* moments, int32_t* iterations) {
  return missing_moments(*task, moments, iterations);
}

int32_t _zoksSSMissingMoments(SSTask* task, float* moments, int32_t* iterations) {
  return missing_moments(*task, moments, iterations);
}
