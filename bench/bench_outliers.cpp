// SPDX-License-Identifier: MIT
// Times outlier detection and Mahalanobis distances beside what they are made of: seconds an
// element of a table of clean normal numbers.
//
//   WHO/WORK/PRECISION/LAYOUT/P/THREADS      n is 10^4 for P = 10, 10^5 for P = 50
//
// "ours/outliers" has the level alpha / n, "ours/outliers_default" the level 0.05 of each
// observation; "covariance/outliers" is one covariance by updates, of which each round takes one.
// Distances stand beside the triangular solve that they come down to with a Cholesky factor. A
// contender whose results are wrong is not timed.
#include <benchmark/benchmark.h>
#include <orv/scalar.h>
#include <orv/ss.h>
#include <orv/threads.h>
#include <stdio.h>
#include <string.h>

#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

extern "C" {
void openblas_set_num_threads(int threads);
#define ORV_TRSM(name, T)                                                                       \
  void name(const char* side, const char* uplo, const char* trans, const char* diag,            \
            const int32_t* m, const int32_t* n, const T* alpha, const T* a, const int32_t* lda, \
            T* b, const int32_t* ldb, size_t, size_t, size_t, size_t)
ORV_TRSM(dtrsm_, double);
ORV_TRSM(strsm_, float);
#undef ORV_TRSM
}

namespace {

template <class T>
struct Entries;
#define ORV_ENTRIES(T, t)                                          \
  template <>                                                      \
  struct Entries<T> {                                              \
    static constexpr auto new_task = __zok##t##SSNewTask;          \
    static constexpr auto edit = __zok##t##SSEditTask;             \
    static constexpr auto basic = _zok##t##SSBasic;                \
    static constexpr auto outliers = _zok##t##SSOutliersDetection; \
    static constexpr auto distances = _zok##t##SSMahDistance;      \
    static constexpr auto solve = t##trsm_;                        \
  };
ORV_ENTRIES(double, d)
ORV_ENTRIES(float, s)
#undef ORV_ENTRIES

/// n observations of p variables, each of which depends on the one before.
template <class T>
std::vector<T> normal_table(int32_t p, int32_t n, bool rows) {
  std::mt19937 random;
  std::normal_distribution<double> normal;
  std::vector<T> x(static_cast<size_t>(p) * n);
  for (int64_t i = 0; i < n; ++i) {
    double before = 0;
    for (int64_t j = 0; j < p; ++j) {
      before = 0.5 * before + normal(random);
      x[rows ? j * n + i : i * p + j] = static_cast<T>(before);
    }
  }
  return x;
}

template <class T>
class Bench {
 public:
  Bench(int32_t p, int32_t n, bool rows)
      : p_(p), n_(n), layout_(rows ? SS_ROWS : SS_COLUMNS), x_(normal_table<T>(p, n, rows)) {
    Entries<T>::new_task(&task_, &p_, &n_, &layout_, x_.data(), nullptr, nullptr, 0);
    mean_.resize(p), cov_.resize(p * p), result_.resize(n);
    Entries<T>::edit(task_, SS_PARAM_MEAN, mean_.data());
    Entries<T>::edit(task_, SS_PARAM_COV, cov_.data());
    Entries<T>::edit(task_, SS_PARAM_OUTLIER_WEIGHTS, result_.data());
    for (int64_t k = 0; k < p * p; ++k) inverse_.push_back(k % (p + 1) == 0 ? T(1.25) : 0);
    for (int64_t k = 0; k + 1 < p; ++k) inverse_[k + (k + 1) * p] = T(-0.5);
    inverse_[p * p - 1] = 1;  // that of this process
    buffer_.resize(1 << 17);
  }
  ~Bench() { __zokSSDeleteTask(&task_); }
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  bool covariance(const SSThreadServices* services) {
    return Entries<T>::basic(task_, SS_EST_COV, SS_METHOD_ONE_PASS, services) == SS_OK;
  }
  bool outliers(double alpha, const SSThreadServices* services) {
    const T parameters[] = {2, static_cast<T>(alpha), T(0.005)};
    const int32_t three = 3;
    __zokiSSEditTask(task_, SS_PARAM_OUTLIER_PARAM_COUNT, &three);
    Entries<T>::edit(task_, SS_PARAM_OUTLIER_PARAMS, parameters);
    return Entries<T>::outliers(task_, 0, SS_METHOD_BACON, services) == SS_OK;
  }
  bool distances() {
    const int32_t first = 0, size = static_cast<int32_t>(buffer_.size());
    const void* const words[] = {&first,         &n_,     mean_.data(),   inverse_.data(),
                                 result_.data(), nullptr, buffer_.data(), &size};
    memcpy(task_->mahalanobis_block, words, sizeof words);
    return Entries<T>::distances(task_) == SS_OK;
  }
  /// In place, again and again: the factor is a unit.
  bool solve() {
    if (factor_.empty()) {
      for (int64_t k = 0; k < p_ * p_; ++k) factor_.push_back(k % (p_ + 1) == 0 ? 1 : T(1e-9));
      solved_ = x_;
    }
    const T one = 1;
    Entries<T>::solve("L", "U", "T", "N", &p_, &n_, &one, factor_.data(), &p_, solved_.data(), &p_,
                      1, 1, 1, 1);
    return true;
  }

  // What comes out for these data: few outliers, distances whose mean square is p.
  bool few_outliers(double most) const {
    double bad = 0;
    for (const T w : result_) bad += w == 0;
    return bad <= most * n_;
  }
  bool right_distances() const {
    double sum = 0;
    for (const T d : result_) sum += static_cast<double>(d) * static_cast<double>(d);
    return std::fabs(sum / n_ / p_ - 1) < 0.1;
  }

 private:
  int32_t p_, n_, layout_;
  std::vector<T> x_, mean_, cov_, inverse_, result_, buffer_, factor_, solved_;
  SSTask* task_ = nullptr;
};

int faults = 0;

void add(const std::string& name, double elements, const std::function<bool()>& run,
         const std::function<bool()>& verified) {
  benchmark::RegisterBenchmark(
      name.c_str(),
      [=](benchmark::State& state) {
        if (!run() || !verified()) {
          fprintf(stderr, "%s is not timed: its results are wrong\n", name.c_str());
          ++faults;
          return state.SkipWithError("wrong results");
        }
        for ([[maybe_unused]] auto _ : state) {
          run();
          benchmark::ClobberMemory();
        }
        using benchmark::Counter;
        state.counters["element"] = Counter(elements * static_cast<double>(state.iterations()),
                                            Counter::kIsRate | Counter::kInvert);
      })
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
}

template <class T>
void add_table(int32_t p, int32_t n, bool rows) {
  const auto made = std::make_shared<std::unique_ptr<Bench<T>>>();
  const auto bench = [=]() -> Bench<T>& {
    if (*made == nullptr) *made = std::make_unique<Bench<T>>(p, n, rows);
    return **made;
  };
  const std::string shape = std::string(sizeof(T) == 8 ? "/d" : "/s") +
                            (rows ? "/rows/" : "/columns/") + std::to_string(p) + "/";
  const double elements = static_cast<double>(n) * p;
  const auto always = [] { return true; };
  add(
      "covariance/outliers" + shape + "1", elements,
      [=] { return bench().covariance(orv_threads_serial()); }, always);
  for (const int32_t threads : {1, 2}) {
    const std::string end = shape + std::to_string(threads);
    const auto detect = [=](double alpha) {
      return [=] {
        orv_threads_set_count(threads);
        return bench().outliers(alpha, threads == 1 ? orv_threads_serial() : orv_threads_pool());
      };
    };
    add("ours/outliers" + end, elements, detect(0.05 / n),
        [=] { return bench().few_outliers(0.001); });
    add("ours/outliers_default" + end, elements, detect(0.05),
        [=] { return bench().few_outliers(0.2); });
  }
  add(
      "ours/distances" + shape + "1", elements, [=] { return bench().distances(); },
      [=] { return bench().right_distances(); });
  if (!rows) {
    add(
        "triangular_solve/distances" + shape + "1", elements, [=] { return bench().solve(); },
        always);
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  openblas_set_num_threads(1);
  for (const bool rows : {false, true}) {
    for (const auto& [p, n] : {std::pair{10, 10000}, {50, 100000}}) {
      add_table<double>(p, n, rows);
      add_table<float>(p, n, rows);
    }
  }
  benchmark::RunSpecifiedBenchmarks();
  return faults == 0 ? 0 : 1;
}
