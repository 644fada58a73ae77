// SPDX-License-Identifier: MIT
// Moments, covariance and correlation.
#include <gmock/gmock.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <random>

#include "support.hpp"

namespace orv_test {
namespace {

constexpr uint64_t all_raw = SS_EST_MEAN | SS_EST_RAW2 | SS_EST_RAW3 | SS_EST_RAW4;
constexpr uint64_t everything = all_raw | SS_EST_CEN2 | SS_EST_CEN3 | SS_EST_CEN4 |
                                SS_EST_KURTOSIS | SS_EST_SKEWNESS | SS_EST_VARIATION;

/// All results of a task, prefilled with a mark.
template <class T>
struct Results {
  static constexpr T mark = T(-77.25);
  std::array<std::vector<T>, 10> of;  // mean to central 4, kurtosis, skewness, variation
  std::vector<T> cov, cor;
  T accumulated[2] = {0, 0};

  Results(int p, T fill = mark) : cov(p * p, fill), cor(p * p, fill) {
    of.fill(std::vector<T>(p, fill));
  }
};

/// How the data are fed: in calls that begin at the given observations.
struct Way {
  uint64_t estimates, method = SS_METHOD_ONE_PASS;
  int64_t layout = SS_COLUMNS, storage = SS_MATRIX_FULL;
  const SSThreadServices* threads = orv_threads_serial();
  std::vector<int> starts = {0};
  std::vector<int64_t> mask = {};
  bool wide = false;
};

template <class T>
Results<T> fed(const Data<T>& data, const Way& way, Results<T> results) {
  for (size_t k = 0; k < way.starts.size(); ++k) {
    const int first = way.starts[k];
    const int end = k + 1 < way.starts.size() ? way.starts[k + 1] : data.n;
    const std::vector<T> block(&data.x[first * data.p], &data.x[0] + end * data.p);
    const std::vector<T> x = laid_out(way.layout, data.p, block);
    Task<T> task(data.p, end - first, way.layout, x.data(), way.wide);
    for (int j = 0; j < 9; ++j) task.set(SS_PARAM_MEAN + j, results.of[j]);
    task.set(SS_PARAM_VARIATION, results.of[9])
        .set(SS_PARAM_COV, results.cov)
        .set(SS_PARAM_COR, results.cor)
        .set(SS_PARAM_COV_STORAGE, {way.storage})
        .set(SS_PARAM_COR_STORAGE, {way.storage})
        .set(SS_PARAM_ACCUMULATED_WEIGHTS, results.accumulated);
    if (data.kind != unweighted) task.set(SS_PARAM_WEIGHTS, &data.w[first]);
    if (!way.mask.empty()) task.set_integers(SS_PARAM_VARIABLE_MASK, way.mask);
    EXPECT_EQ(Entries<T>::basic(task, way.estimates, way.method, way.threads), SS_OK);
  }
  return results;
}

template <class T>
Results<T> fed(const Data<T>& data, const Way& way) {
  return fed(data, way, Results<T>(data.p));
}

/// The recurrence as it is defined, an element at a time.
template <class T>
struct Recurrence {
  std::vector<T> moments[4], S;
  T acc[2];

  explicit Recurrence(const Data<T>& data, T start = 0) : S(data.p * data.p), acc{start, start} {
    const int p = data.p;
    for (auto& moment : moments) moment.assign(p, 0);
    std::vector<T>& mean = moments[0];
    int i = 0;
    while (i < data.n && !(data.w[i] > 0)) ++i;
    for (; i < data.n; ++i) {
      const T w = data.w[i], W = acc[0], r = 1 / (w + W), f = W * (w * r);
      for (int j = 0; j < p; ++j) {
        const T d = f * (data(i, j) - mean[j]);
        for (int k = j; k < p; ++k) S[j + k * p] += d * (data(i, k) - mean[k]);
        const T x = data(i, j), powers[] = {x, x * x, x * x * x, x * x * (x * x)};
        for (int k = 0; k < 4; ++k) moments[k][j] = r * (W * moments[k][j] + w * powers[k]);
      }
      acc[0] = W + w;
      acc[1] += w * w;
    }
  }
  T cov(size_t j, size_t k) const {
    return 1 / (acc[0] - acc[1] / acc[0]) * S[j + k * moments[0].size()];
  }
};

template <class T>
void one_pass_equals_the_recurrence(int p, int n, WeightKind kind, int64_t layout, T start = 0) {
  SCOPED_TRACE(testing::Message() << "p " << p << ", n " << n << ", weights " << kind << ", layout "
                                  << layout);
  const Data<T> data(p, n, kind);
  const Recurrence<T> expected(data, start);
  for (uint64_t raw = 0; raw < 16; ++raw) {
    for (const uint64_t cov : {0, int(SS_EST_COV)}) {
      SCOPED_TRACE(testing::Message() << "estimates " << (raw | cov));
      if (cov != 0 && p > 40 && raw != 15) continue;  // slow, and no other code
      if (start != 0 && (raw | cov) == 0) continue;   // counted at once
      Results<T> wanted(p, start == 0 ? Results<T>::mark : 0);
      wanted.accumulated[0] = wanted.accumulated[1] = start;
      const auto results = fed(data, {.estimates = raw | cov, .layout = layout}, wanted);
      for (int k = 0; k < 4; ++k) {
        const bool asked = (raw >> k & 1) != 0 || (k == 0 && cov != 0);
        if (asked) wanted.of[k] = expected.moments[k];
        EXPECT_EQ(bits(results.of[k]), bits(wanted.of[k])) << k;
      }
      EXPECT_THAT(results.accumulated, testing::ElementsAreArray(expected.acc));
      for (int jk = 0; jk < p * p && cov != 0; ++jk) {
        wanted.cov[jk] = expected.cov(std::min(jk / p, jk % p), std::max(jk / p, jk % p));
      }
      const bool defined = expected.acc[0] > expected.acc[1] / expected.acc[0];
      if (cov == 0 || defined) {
        EXPECT_EQ(bits(results.cov), bits(wanted.cov));
      }
    }
  }
}

TYPED_TEST(EachPrecision, OnePassUpdatesAreThoseOfThePlainRecurrence) {
  const std::array<int, 2> shapes[] = {{1, 1},   {1, 200},  {2, 5},    {3, 97},  {4, 98},
                                       {5, 301}, {9, 40},   {12, 100}, {13, 33}, {17, 195},
                                       {33, 4},  {50, 130}, {130, 35}};
  for (const auto& [p, n] : shapes) {
    for (const WeightKind kind : {unweighted, positive, with_zeros}) {
      for (const int64_t layout : {SS_ROWS, SS_COLUMNS}) {
        one_pass_equals_the_recurrence<TypeParam>(p, n, kind, layout);
      }
    }
  }
  if (sizeof(TypeParam) == 8) return;
  // More variables than a block holds.
  one_pass_equals_the_recurrence<TypeParam>(4099, 2, positive, SS_ROWS);
  one_pass_equals_the_recurrence<TypeParam>(4099, 2, unweighted, SS_COLUMNS);
  // Floats end counting at 2^24, and a sum that is not whole rounds at each step.
  for (const float start : {0x1p24f - 50, 0x1p23f - 0.5f}) {
    one_pass_equals_the_recurrence<TypeParam>(1, 300, unweighted, SS_ROWS, start);
  }
}

/// Every estimate from its definition, in extended precision.
struct Expected {
  using X = long double;
  std::vector<X> of[10], scatter;
  X W = 0, W2 = 0;
  size_t p;

  template <class T>
  explicit Expected(const Data<T>& data) : p(data.p) {
    for (const T w : data.w) W += w, W2 += X(w) * w;
    const auto average = [&](auto f) {
      X sum = 0;
      for (int i = 0; i < data.n; ++i) sum += data.w[i] / W * f(i);
      return sum;
    };
    const auto moment = [&](size_t j, X about, int order) {
      return average([&](int i) { return std::pow(data(i, j) - about, order); });
    };
    for (size_t j = 0; j < p; ++j) {
      for (int k = 0; k < 4; ++k) of[k].push_back(moment(j, 0, k + 1));
      for (int k = 4; k < 7; ++k) of[k].push_back(moment(j, of[0][j], k - 2));
    }
    for (size_t jk = 0; jk < p * p; ++jk) {
      const size_t j = jk / p, k = jk % p;
      scatter.push_back(
          W * average([&](int i) { return (data(i, j) - of[0][j]) * (data(i, k) - of[0][k]); }));
    }
    for (size_t j = 0; j < p; ++j) {
      const X variance = of[4][j] = cov(j, j);
      of[7].push_back(of[6][j] / (variance * variance) - 3);
      of[8].push_back(of[5][j] / std::sqrt(variance * variance * variance));
      of[9].push_back(std::sqrt(variance) / of[0][j]);
    }
  }
  X cov(size_t i, size_t j) const { return scatter[i * p + j] / (W - W2 / W); }
  X cor(size_t i, size_t j) const {
    return i == j ? cov(i, i) : cov(i, j) / std::sqrt(cov(i, i) * cov(j, j));
  }
};

template <class T>
void check_way(const Way& way, const Data<T>& data, const Expected& expected) {
  const double bound = sizeof(T) == 8 ? 1e-10 : 5e-3;
  const Results<T> results = fed(data, way);
  const auto selected = [&](size_t j) { return way.mask.empty() || way.mask[j] != 0; };
  const auto check = [&](T actual, long double value, bool wanted) {
    if (wanted) {
      EXPECT_NEAR(actual, static_cast<double>(value), bound * (1 + std::fabs(value)));
    } else {
      EXPECT_EQ(actual, Results<T>::mark) << "not to be touched";
    }
  };
  for (int k = 0; k < 10; ++k) {
    SCOPED_TRACE(testing::Message() << "estimate " << k);
    for (int j = 0; j < data.p; ++j) check(results.of[k][j], expected.of[k][j], selected(j));
  }
  size_t at = 0;
  for_each_stored(way.storage, data.p, [&](int64_t i, int64_t j) {
    SCOPED_TRACE(testing::Message() << "element " << i << ' ' << j);
    const bool both = selected(i) && selected(j);
    check(results.cov[at], expected.cov(i, j), both && (way.estimates & SS_EST_COV) != 0);
    check(results.cor[at], expected.cor(i, j), both && (way.estimates & SS_EST_COR) != 0);
    ++at;
  });
  for (; at < results.cov.size(); ++at) {
    EXPECT_TRUE(results.cov[at] == Results<T>::mark && results.cor[at] == Results<T>::mark) << at;
  }
  EXPECT_NEAR(results.accumulated[0], static_cast<double>(expected.W), bound * 3000);
  EXPECT_NEAR(results.accumulated[1], static_cast<double>(expected.W2), bound * 3000);
}

TYPED_TEST(EachPrecision, EveryWayAgreesWithExtendedPrecision) {
  const uint64_t matrices[] = {SS_EST_COV, SS_EST_COR, SS_EST_COV | SS_EST_COR};
  for (const WeightKind weights : {unweighted, positive, with_zeros}) {
    const Data<TypeParam> data(5, 3100, weights);
    const Expected expected(data);
    for (int code = 0; code < 2 * 2 * 3 * 2 * 2 * 2 * 3; ++code) {
      SCOPED_TRACE(testing::Message() << "weights " << weights << " way " << code);
      Choices choose{code};
      Way way{.estimates = everything, .threads = orv_threads_pool()};
      if (choose(2) != 0) way.layout = SS_ROWS;
      if (choose(2) != 0) way.mask = {1, 0, -3, 1, 0};
      way.storage = choose(3);
      if (choose(2) != 0) way.method = SS_METHOD_FAST;
      orv_threads_set_count(choose(2) != 0 ? 3 : 1);
      if (choose(2) != 0) way.starts = {0, 1, 1200};
      way.estimates |= matrices[choose(3)];
      way.wide = code % 5 == 0;
      check_way(way, data, expected);
      if (testing::Test::HasFailure()) return;
    }
  }
}

TEST(Basic, ThreadsAgreeToRounding) {
  const Data<double> data(3, 8500, positive);
  for (const uint64_t method : {SS_METHOD_FAST, SS_METHOD_ONE_PASS}) {
    const auto results = [&](int threads, const SSThreadServices* services) {
      orv_threads_set_count(threads);
      const auto r =
          fed(data, {.estimates = all_raw | SS_EST_COV, .method = method, .threads = services});
      std::vector<double> all = r.cov;
      for (int k = 0; k < 4; ++k) all.insert(all.end(), r.of[k].begin(), r.of[k].end());
      return all;
    };
    const auto alone = results(1, orv_threads_serial());
    const auto reproducible = results(1, orv_threads_reproducible());
    for (int threads = 1; threads <= 8; ++threads) {
      SCOPED_TRACE(threads);
      EXPECT_EQ(results(threads, orv_threads_reproducible()), reproducible);
      const auto shared = results(threads, orv_threads_pool());
      EXPECT_EQ(results(threads, orv_threads_pool()), shared);
      for (size_t k = 0; k < shared.size(); ++k) {
        EXPECT_NEAR(shared[k], alone[k], k < 9 ? 1e-13 : 1e-11) << k;
      }
    }
  }
}

// Products that leave the range on the way to results that don't: data times a scale.
TYPED_TEST(EachPrecision, RatiosStayInRange) {
  using T = TypeParam;
  const double far = sizeof(T) == 8 ? 1e70 : 1e8, bound = sizeof(T) == 8 ? 1e-10 : 1e-2;
  for (const double scale : {1., far, 1 / far}) {
    Data<T> data(2, 50, unweighted);
    const Expected expected(data);
    for (T& x : data.x) x *= static_cast<T>(scale);
    for (const uint64_t method : {SS_METHOD_FAST, SS_METHOD_ONE_PASS}) {
      SCOPED_TRACE(scale);
      const auto results = fed(data, {.estimates = everything | SS_EST_COR, .method = method});
      EXPECT_NEAR(results.cor[1], static_cast<double>(expected.cor(0, 1)), bound);
      EXPECT_NEAR(results.of[8][0], static_cast<double>(expected.of[8][0]), bound);
      EXPECT_NEAR(results.of[7][0], static_cast<double>(expected.of[7][0]), bound);
    }
  }
}

// What has not varied in the first block, or is one observation of hardly any weight, has no
// correlation there; later it has the one of all data.
TEST(Basic, CorrelationGoesOnFromBlocksThatHaveNone) {
  for (const double first_weight : {1., 0.3, 1e-20, 1e-300}) {
    for (const int first_end : {1, 40}) {
      Data<double> data(3, 90, positive);
      for (int i = 0; i < first_end; ++i) data.x[3 * i + 1] = 2.5;
      data.w[0] = first_weight;
      const Expected expected(data);
      for (const uint64_t method : {SS_METHOD_FAST, SS_METHOD_ONE_PASS}) {
        const auto results =
            fed(data, {.estimates = SS_EST_COR, .method = method, .starts = {0, first_end, 60}});
        for (int jk = 0; jk < 9; ++jk) {
          EXPECT_NEAR(results.cor[jk], static_cast<double>(expected.cor(jk / 3, jk % 3)), 1e-12)
              << first_weight << ' ' << first_end << ' ' << jk;
        }
      }
    }
  }
}

// The sums of 17 threads count 2^(bits of an address) elements and more.
TEST(Basic, SizesThatWrapAroundAreRefused) {
  static SSThreadServices seventeen = *orv_threads_serial();
  seventeen.max_threads = [] { return int32_t{17}; };
  float some[1];
  Task<float> task(int64_t{1} << (4 * sizeof(size_t) - 2), 17000, SS_ROWS, some);
  task.set(SS_PARAM_MEAN, some).set(SS_PARAM_COV, some);
  for (const uint64_t method : {SS_METHOD_FAST, SS_METHOD_ONE_PASS}) {
    EXPECT_EQ(_zoksSSBasic(task, SS_EST_COV, method, &seventeen), SS_NO_MEMORY);
  }
}

#ifdef __x86_64__
// Rows further apart than matrix routines count. Pages that nobody wrote to take no memory, but
// their time, for which the test runs where it is asked for.
TEST(Basic, DISABLED_MoreThan31BitsOfObservations) {
  const int64_t n = (int64_t{1} << 31) + 5;
  const size_t bytes = static_cast<size_t>(n) * sizeof(double);
  void* const pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  ASSERT_NE(pages, MAP_FAILED);
  auto* const x = static_cast<double*>(pages);
  x[0] = 2, x[n - 1] = 1;
  double mean = 0, cov = 0;
  Task<double> task(1, n, SS_ROWS, x, true);
  task.set(SS_PARAM_MEAN, &mean).set(SS_PARAM_COV, &cov);
  EXPECT_EQ(_zokdSSBasic(task, SS_EST_COV, SS_METHOD_FAST, orv_threads_serial()), SS_OK);
  EXPECT_NEAR(cov * static_cast<double>(n), 5, 1e-6);
  munmap(pages, bytes);
}
#endif

TEST(Basic, EmptyAndWeightlessDataGoOnAsTheyAre) {
  Data<double> data(2, 4, unweighted);
  data.kind = positive;
  data.w.assign(4, 0);
  const auto results = fed(data, {.estimates = all_raw | SS_EST_CEN2 | SS_EST_COV | SS_EST_COR});
  for (int k = 0; k < 4; ++k) EXPECT_EQ(results.of[k], std::vector<double>(2, 0));
  EXPECT_TRUE(std::isnan(results.of[4][0]));
  EXPECT_EQ(results.cov, std::vector<double>(4, 0));
  EXPECT_EQ(results.cor[0], 0);  // the variance, its scale being 1
  EXPECT_TRUE(std::isnan(results.cor[1]));
}

TEST(Basic, DerivedEstimatesReadWhatStandsThere) {
  // Kurtosis alone needs two central moments, and takes raw moments as they are.
  const Data<double> data(1, 10, unweighted);
  Results<double> results(1, 0);
  results.of[0] = {1}, results.of[1] = {3}, results.of[2] = {5}, results.of[3] = {20};
  results = fed(data, {.estimates = SS_EST_KURTOSIS, .method = SS_METHOD_FAST}, results);
  EXPECT_EQ(results.of[0][0], 1);
  EXPECT_DOUBLE_EQ(results.of[4][0], 10. / 9 * 2);
  EXPECT_EQ(results.of[6][0], 15);
  EXPECT_NEAR(results.of[7][0], 15 / (20. / 9 * 20 / 9) - 3, 1e-14);
  EXPECT_EQ(results.of[5][0], 0);  // not needed
}

// Reference data sets with a certified mean and deviation (Statistical Reference Datasets, National
// Institute of Standards and Technology), here those of the data as they round to double.
TEST(Basic, CertifiedDeviationsToTheDigitsOfTheData) {
  const struct {
    std::string name;
    int n;
    double mean, deviation, digits;
  } sets[] = {{"Lew", 200, -177.435, 277.33216804431613576, 14},
              {"Lottery", 218, 518.95871559633027523, 291.69972747096908424, 14},
              {"Mavro", 50, 2.0018559999999999732, 0.00042912345400308540929, 11.9},
              {"NumAcc3", 1001, 1000000.2000000000116, 0.10000000003492459655, 9},
              {"NumAcc4", 1001, 10000000.200000000185, 0.10000000055879354477, 8}};
  for (const auto& set : sets) {
    std::ifstream file(ORV_TEST_DATA "/" + set.name + ".txt");
    Data<double> data(1, set.n, unweighted);
    data.x.assign(std::istream_iterator<double>(file), {});
    ASSERT_EQ(std::ssize(data.x), set.n);
    const auto results = fed(data, {.estimates = SS_EST_COV});
    EXPECT_NEAR(results.of[0][0] / set.mean, 1, 1e-14) << set.name;
    const double deviation = std::sqrt(results.cov[0]);
    EXPECT_NEAR(deviation / set.deviation, 1, std::pow(10, -set.digits)) << set.name;
  }
}

}  // namespace
}  // namespace orv_test
