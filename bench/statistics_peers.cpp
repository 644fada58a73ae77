// SPDX-License-Identifier: MIT
// ORV_HAVE_ARMADILLO and ORV_HAVE_GSL are 1 or 0.
#include "statistics_peers.hpp"

#include <orv/scalar.h>
#include <string.h>

#include <algorithm>
#include <cmath>
#include <memory>

#if ORV_HAVE_ARMADILLO
#define ARMA_DONT_USE_WRAPPER
#include <armadillo>
#endif
#if ORV_HAVE_GSL
#include <gsl/gsl_statistics.h>
#endif

extern "C" {
void dsyrk_(const char*, const char*, const int32_t* n, const int32_t* k, const double* alpha,
            const double* a, const int32_t* lda, const double* beta, double* c, const int32_t* ldc,
            size_t, size_t);
void ssyrk_(const char*, const char*, const int32_t* n, const int32_t* k, const float* alpha,
            const float* a, const int32_t* lda, const float* beta, float* c, const int32_t* ldc,
            size_t, size_t);
void dsyev_(const char*, const char*, const int32_t* n, double* a, const int32_t* lda, double* w,
            double* work, const int32_t* lwork, int32_t* info, size_t, size_t);
void openblas_set_num_threads(int);
}

namespace orv_bench {
namespace {

using Peers = std::vector<Contender>;

/// The sum of the whole table, which a mean of columns is measured against. Checked by the mean of
/// all means.
template <class T>
void add_sum(const Table<T>& t, const LazyTruth& truth, Peers* peers) {
  typedef T Vector __attribute__((vector_size(32)));
  constexpr int lanes = 32 / sizeof(T), sums = 4;
  const auto result = std::make_shared<T>();
  const int64_t elements = int64_t{t.n} * t.p;
  const auto run = [=] {
    Vector s[sums] = {};
    int64_t i = 0;
    for (; i + sums * lanes <= elements; i += sums * lanes) {
      for (int k = 0; k < sums; ++k) {
        Vector x;
        memcpy(&x, t.x + i + k * lanes, sizeof x);
        s[k] += x;
      }
    }
    *result = 0;
    for (; i < elements; ++i) *result += t.x[i];
    for (int k = 0; k < sums * lanes; ++k) *result += s[k / lanes][k % lanes];
  };
  peers->push_back({"plain/mean", run, [=] {
                      double sum = 0;
                      for (const double mean : truth().mean) sum += mean;
                      const T mean = *result / static_cast<T>(t.n) / static_cast<T>(t.p);
                      return near(&mean, {sum / t.p});
                    }});
}

void syrk(char trans, int32_t n, int32_t k, const double* a, int32_t lda, double* c) {
  const double one = 1, zero = 0;
  dsyrk_("u", &trans, &n, &k, &one, a, &lda, &zero, c, &n, 1, 1);
}
void syrk(char trans, int32_t n, int32_t k, const float* a, int32_t lda, float* c) {
  const float one = 1, zero = 0;
  ssyrk_("u", &trans, &n, &k, &one, a, &lda, &zero, c, &n, 1, 1);
}

/// The product alone; means are taken away for the check only.
template <class T>
void add_syrk(const Table<T>& t, const LazyTruth& truth, Peers* peers) {
  const auto c = std::make_shared<std::vector<T>>(t.p * t.p);
  const auto run = [=] { syrk(t.rows ? 't' : 'n', t.p, t.n, t.x, t.rows ? t.n : t.p, c->data()); };
  peers->push_back({"blas/covariance", run, [=] {
                      std::vector<double> found(t.p * t.p);
                      const auto& mean = truth().mean;
                      for (int64_t i = 0; i < t.p; ++i) {
                        for (int64_t j = i; j < t.p; ++j) {
                          const double product = (*c)[i + j * t.p] / (t.n - 1.0);
                          found[i * t.p + j] = found[j * t.p + i] =
                              product - mean[i] * mean[j] * t.n / (t.n - 1.0);
                        }
                      }
                      const std::vector<T> rounded(found.begin(), found.end());
                      return near(rounded.data(), truth().covariance);
                    }});
}

/// Works on a copy, which is part of the time.
template <class T, class Work>
void add_sorting(const std::string& name, const Table<T>& t, Work work,
                 std::function<bool(const std::vector<T>&)> verified, Peers* peers) {
  const auto copy = std::make_shared<std::vector<T>>(t.n);
  const auto run = [=] {
    memcpy(copy->data(), t.x, t.n * sizeof(T));
    work(copy.get());
  };
  peers->push_back({name, run, [=] { return verified(*copy); }});
}

template <class T>
void add_standard(const Table<T>& t, const LazyTruth& truth, Peers* peers) {
  add_sorting<T>(
      "std/order_statistics", t, [](std::vector<T>* x) { std::sort(x->begin(), x->end()); },
      [truth](const std::vector<T>& x) { return near(x.data(), truth().sorted); }, peers);
  const auto rank = [t](double order) { return static_cast<int64_t>((t.n - 1) * order); };
  add_sorting<T>(
      "std/quantiles", t,
      [=](std::vector<T>* x) {
        auto begin = x->begin();
        for (const double order : orders) {
          const auto nth = x->begin() + rank(order);
          std::nth_element(begin, nth, x->end());
          begin = nth + 1;
        }
      },
      [=](const std::vector<T>& x) {
        return std::all_of(std::begin(orders), std::end(orders), [&](double order) {
          return near(&x[rank(order)], {truth().sorted[rank(order)]});
        });
      },
      peers);
}

#if ORV_HAVE_ARMADILLO
/// Its matrices stand by columns: a table of rows is one.
template <class T>
void add_armadillo(const Table<T>& t, const LazyTruth& truth, Peers* peers) {
  if (!t.rows) return;
  const auto data = std::make_shared<arma::Mat<T>>(const_cast<T*>(t.x), t.n, t.p, false, true);
  const auto result = std::make_shared<arma::Mat<T>>();
  const auto verified = [=](Truth::Values Truth::*expected) {
    return [=] { return near(result->memptr(), truth().*expected); };
  };
  peers->push_back(
      {"armadillo/mean", [=] { *result = arma::mean(*data); }, verified(&Truth::mean)});
  peers->push_back(
      {"armadillo/variance", [=] { *result = arma::var(*data); }, verified(&Truth::variance)});
  peers->push_back(
      {"armadillo/covariance", [=] { *result = arma::cov(*data); }, verified(&Truth::covariance)});
}
#endif

#if ORV_HAVE_GSL
double gsl_mean(const double* x, size_t s, size_t n) { return gsl_stats_mean(x, s, n); }
double gsl_mean(const float* x, size_t s, size_t n) { return gsl_stats_float_mean(x, s, n); }
double gsl_variance(const double* x, size_t s, size_t n) { return gsl_stats_variance(x, s, n); }
double gsl_variance(const float* x, size_t s, size_t n) {
  return gsl_stats_float_variance(x, s, n);
}
double gsl_covariance(const double* x, const double* y, size_t s, size_t n) {
  return gsl_stats_covariance(x, s, y, s, n);
}
double gsl_covariance(const float* x, const float* y, size_t s, size_t n) {
  return gsl_stats_float_covariance(x, s, y, s, n);
}

/// A call for each variable, or pair of them, which takes long for many.
template <class T>
void add_gsl(const Table<T>& t, const LazyTruth& truth, Peers* peers) {
  if (t.p > 10) return;
  const auto result = std::make_shared<std::vector<T>>(t.p * t.p);
  const size_t step = t.rows ? 1 : t.p, n = t.n;
  const auto variable = [=](int64_t j) { return t.x + (t.rows ? j * t.n : j); };
  const auto each = [=](auto f) {
    return [=] {
      for (int64_t j = 0; j < t.p; ++j) (*result)[j] = static_cast<T>(f(variable(j), step, n));
    };
  };
  const auto verified = [=](Truth::Values Truth::*expected) {
    return [=] { return near(result->data(), truth().*expected); };
  };
  peers->push_back(
      {"gsl/mean", each([](auto... a) { return gsl_mean(a...); }), verified(&Truth::mean)});
  peers->push_back({"gsl/variance", each([](auto... a) { return gsl_variance(a...); }),
                    verified(&Truth::variance)});
  const auto all_pairs = [=] {
    for (int64_t i = 0; i < t.p; ++i) {
      for (int64_t j = 0; j <= i; ++j) {
        (*result)[i * t.p + j] = (*result)[j * t.p + i] =
            static_cast<T>(gsl_covariance(variable(i), variable(j), step, n));
      }
    }
  };
  peers->push_back({"gsl/covariance", all_pairs, verified(&Truth::covariance)});
}
#endif

// ---- Robust covariance --------------------------------------------------------------------------

double median(std::vector<double> x) {
  const auto middle = x.begin() + static_cast<std::ptrdiff_t>(x.size() / 2);
  std::nth_element(x.begin(), middle, x.end());
  return x.size() % 2 != 0 ? *middle : (*middle + *std::max_element(x.begin(), middle)) / 2;
}

struct LocationScale {
  double location, scale;
};

LocationScale robust_scale(const std::vector<double>& x) {
  const double m = median(x);
  std::vector<double> away(x.size());
  std::transform(x.begin(), x.end(), away.begin(), [=](double v) { return std::fabs(v - m); });
  const double s = median(away);
  double top = 0, bottom = 0, sum = 0;
  for (const double v : x) {
    const double u = (v - m) / s / 4.5, w = u * u > 1 ? 0 : (1 - u * u) * (1 - u * u);
    top += w * v, bottom += w;
  }
  for (const double v : x) {
    const double t = (v - top / bottom) / s;
    sum += std::min(t * t, 9.0);
  }
  return {top / bottom, s * std::sqrt(sum / static_cast<double>(x.size()))};
}

template <class T>
Peers all(const Table<T>& table, const LazyTruth& truth) {
  openblas_set_num_threads(1);
  Peers peers;
  if (table.p == 1) {
    add_standard(table, truth, &peers);
    return peers;
  }
  add_sum(table, truth, &peers);
  add_syrk(table, truth, &peers);
#if ORV_HAVE_ARMADILLO
  add_armadillo(table, truth, &peers);
#endif
#if ORV_HAVE_GSL
  add_gsl(table, truth, &peers);
#endif
  return peers;
}

}  // namespace

std::vector<Contender> statistics_peers(const Table<double>& table, const LazyTruth& truth) {
  return all(table, truth);
}
std::vector<Contender> statistics_peers(const Table<float>& table, const LazyTruth& truth) {
  return all(table, truth);
}

void plain_ogk(const Table<double>& t, Truth::Values* mean, Truth::Values* cov) {
  const int32_t p = t.p, n = t.n, work_size = 4 * p;
  std::vector<std::vector<double>> z(p, std::vector<double>(n));
  for (int32_t j = 0; j < p; ++j) {
    for (int32_t i = 0; i < n; ++i) z[j][i] = t(i, j);
    const LocationScale s = robust_scale(z[j]);
    for (double& v : z[j]) v /= s.scale;
  }
  std::vector<double> U(p * p), values(p), work(work_size), sum(n), difference(n), d(n);
  for (int32_t j = 0; j < p; ++j) {
    U[j * (p + 1)] = 1;
    for (int32_t k = j + 1; k < p; ++k) {
      for (int32_t i = 0; i < n; ++i) sum[i] = z[j][i] + z[k][i], difference[i] = z[j][i] - z[k][i];
      const double a = robust_scale(sum).scale, b = robust_scale(difference).scale;
      U[j * p + k] = U[k * p + j] = (a * a - b * b) / 4;
    }
  }
  int32_t info = 0;
  dsyev_("v", "u", &p, U.data(), &p, values.data(), work.data(), &work_size, &info, 1, 1);
  for (int32_t l = 0; l < p; ++l) {
    std::fill(sum.begin(), sum.end(), 0);
    for (int32_t j = 0; j < p; ++j) {
      for (int32_t i = 0; i < n; ++i) sum[i] += U[l * p + j] * z[j][i];
    }
    const LocationScale s = robust_scale(sum);
    for (int32_t i = 0; i < n; ++i) d[i] += std::pow((sum[i] - s.location) / s.scale, 2);
  }
  const double limit = __zokdChi2ICDF(p, 0.9) / __zokdChi2ICDF(p, 0.5) * median(d);
  const auto kept =
      static_cast<double>(std::count_if(d.begin(), d.end(), [=](double v) { return v < limit; }));
  mean->assign(p, 0), cov->assign(p * p, 0);
  std::vector<double> u(p);
  for (const bool means : {true, false}) {
    for (int32_t i = 0; i < n; ++i) {
      if (!(d[i] < limit)) continue;
      for (int32_t j = 0; j < p; ++j)
        means ? (*mean)[j] += t(i, j) / kept : u[j] = t(i, j) - (*mean)[j];
      for (int32_t k = 0; !means && k < p * p; ++k) (*cov)[k] += u[k / p] * u[k % p] / kept;
    }
  }
}

Contender plain_ogk_peer(const Table<double>& table, const LazyTruth& truth) {
  const auto results = std::make_shared<Truth>();
  return {"plain/robust_ogk",
          [=] { plain_ogk(table, &results->robust_mean, &results->robust_cov); },
          [=] { return near(results->robust_cov.data(), truth().robust_cov); }};
}

std::vector<std::string> missing_statistics_peers() {
  std::vector<std::string> missing;
  if (!ORV_HAVE_ARMADILLO) missing.push_back("Armadillo (libarmadillo-dev)");
  if (!ORV_HAVE_GSL) missing.push_back("GSL (libgsl-dev)");
  return missing;
}

}  // namespace orv_bench
