// SPDX-License-Identifier: MIT
// Moments and covariance of data that come in blocks, on one machine or several.
//
//     orv::accumulator a(p);
//     while (read(block)) a.add(orv::table(block, p));
//     a.merge(b);                  // what another one has seen
//     a.save("sums");              // and orv::accumulator::load("sums")
//     a.mean(); a.variance(); a.skewness(); a.covariance();
#pragma once

#include <orv/threads.h>
#include <orv/matrix.hpp>
#include <orv/task.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace orv {

/// How covariances are computed: by updates, or by matrix routines, which are faster for many
/// variables, and whose last bits depend on the processor.
enum class covariance_method : uint32_t {
  updates = SS_METHOD_ONE_PASS,
  matrix_routines = SS_METHOD_FAST
};

/// What an accumulator keeps: moments up to the first (mean), second, third or fourth; covariance.
struct accumulator_parts {
  uint32_t moments = 4;
  bool covariance = true;
  covariance_method method = covariance_method::updates;
};

/// Sums of doubles about the mean, whatever the data, joined block by block (Chan, Golub and
/// LeVeque 1979; Pebay 2008). Blocks are best of some hundred observations and more.
///
/// The same blocks merged in the same order give the same bits with any number of threads.
class accumulator {
 public:
  explicit accumulator(size_t variables, accumulator_parts parts = {})
      : parts_(parts), p_(variables) {
    if (p_ == 0) fail(SS_BAD_DIMENSION, "the number of variables is 0; it has to be 1 or more");
    if (parts.moments < 1 || parts.moments > 4) {
      fail(SS_BAD_PARAMETER,
           "moments up to number " + std::to_string(parts.moments) + "; allowed is 1 to 4");
    }
    minimum_.assign(p_, std::numeric_limits<double>::infinity());
    maximum_.assign(p_, -std::numeric_limits<double>::infinity());
    for (uint32_t k = 0; k < parts.moments; ++k) sums_[k].assign(p_, 0);
    if (parts.covariance) scatter_.assign(p_ * p_, 0);
  }

  /// Takes a block of observations, with weights or without.
  template <class T>
  accumulator& add(table<T> block, std::span<const std::type_identity_t<T>> weights = {},
                   const SSThreadServices* threads = orv_threads_reproducible()) {
    const size_t n = block.observations();
    if (block.variables() != p_) {
      fail(SS_BAD_DIMENSION, "a block of " + std::to_string(block.variables()) +
                                 " variables; it needs " + std::to_string(p_));
    }
    if (!weights.empty() && weights.size() != n) {
      fail(SS_BAD_OBSERVATION_COUNT,
           std::to_string(weights.size()) + " weights for " + std::to_string(n) + " observations");
    }
    const size_t most = std::max(piece_elements / p_, least_piece);
    for (size_t first = 0; first < n; first += most) {
      const size_t count = std::min(n - first, most);
      merge(of_piece(block, weights.empty() ? nullptr : weights.data() + first, first, count,
                     threads));
    }
    return *this;
  }

  /// Takes what another one of the same kind has seen.
  accumulator& merge(const accumulator& other) {
    if (other.p_ != p_ || other.parts_.moments != parts_.moments ||
        other.parts_.covariance != parts_.covariance) {
      fail(SS_BAD_DIMENSION, "the other has other variables, moments or no covariance");
    }
    count_ += other.count_;
    for (size_t j = 0; j < p_; ++j) {
      minimum_[j] = std::min(minimum_[j], other.minimum_[j]);
      maximum_[j] = std::max(maximum_[j], other.maximum_[j]);
    }
    if (other.weight_ == 0) return *this;
    const double f = weight_ * other.weight_ / (weight_ + other.weight_);
    for (size_t i = 0; i < p_ && parts_.covariance; ++i) {
      const double d = other.sums_[0][i] - sums_[0][i];
      for (size_t j = 0; j < p_; ++j) {
        scatter_[i * p_ + j] +=
            other.scatter_[i * p_ + j] + f * d * (other.sums_[0][j] - sums_[0][j]);
      }
    }
    for (size_t j = 0; j < p_; ++j) merge_variable(other, j);
    weight_ += other.weight_;
    weight_squares_ += other.weight_squares_;
    return *this;
  }

  size_t variables() const { return p_; }
  uint64_t count() const { return count_; }  ///< observations
  double weight() const { return weight_; }  ///< the sum of their weights

  // Of each variable; NaN where there are too few observations. ----------------------------------

  std::vector<double> mean() const {
    return each([&](size_t j) { return weight_ > 0 ? sums_[0][j] : nan(); });
  }
  /// Unbiased: over W - W2 / W, W and W2 being the sums of weights and of their squares.
  std::vector<double> variance() const {
    if (parts_.moments < 2 && !parts_.covariance) need(2);
    return each([&](size_t j) { return variance_of(j); });
  }
  std::vector<double> standard_deviation() const {
    auto r = variance();
    for (double& x : r) x = std::sqrt(x);
    return r;
  }
  /// Means of powers of deviations, k from 2 to 4, not corrected for bias.
  std::vector<double> central_moment(uint32_t k) const {
    if (k < 2 || k > 4)
      fail(SS_BAD_PARAMETER, "moment " + std::to_string(k) + "; it has to be 2 to 4");
    need(k);
    return each([&](size_t j) { return sums_[k - 1][j] / weight_; });
  }
  /// Over the power of the unbiased variance, as SS_EST_SKEWNESS and SS_EST_KURTOSIS.
  std::vector<double> skewness() const {
    need(3);
    return each([&](size_t j) {
      const double v = variance_of(j);
      return sums_[2][j] / weight_ / v / std::sqrt(v);
    });
  }
  std::vector<double> kurtosis() const {
    need(4);
    return each([&](size_t j) {
      const double v = variance_of(j);
      return sums_[3][j] / weight_ / v / v - 3;
    });
  }
  /// Infinite where there was no number.
  const std::vector<double>& minimum() const { return minimum_; }
  const std::vector<double>& maximum() const { return maximum_; }

  matrix<double> covariance() const {
    if (!parts_.covariance) fail(SS_NULL_COV, "this accumulator keeps no covariance");
    matrix<double> c(p_, p_);
    for (size_t i = 0; i < p_; ++i) {
      for (size_t j = 0; j < p_; ++j) c(i, j) = scatter_[i * p_ + j] / divisor();
    }
    return c;
  }
  matrix<double> correlation() const {
    matrix<double> c = covariance();
    for (size_t i = 0; i < p_; ++i) {
      const double s = std::sqrt(variance_of(i));
      for (size_t j = 0; j < p_; ++j) {
        c(i, j) = i != j ? c(i, j) / s / std::sqrt(variance_of(j)) : s > 0 ? 1 : nan();
      }
    }
    return c;
  }

  // ---- Written and read
  // --------------------------------------------------------------------------

  /// The state: a mark, sizes, the sums as doubles and a check sum; little-endian words of 64 bits.
  std::vector<std::byte> bytes() const {
    std::vector<uint64_t> words = {mark,
                                   p_,
                                   parts_.moments,
                                   parts_.covariance,
                                   static_cast<uint64_t>(parts_.method),
                                   count_,
                                   word(weight_),
                                   word(weight_squares_)};
    for_each_array([&](const std::vector<double>& array) {
      for (const double x : array) words.push_back(word(x));
    });
    words.push_back(check_sum(words));
    std::vector<std::byte> r(words.size() * sizeof(uint64_t));
    std::memcpy(r.data(), words.data(), r.size());
    return r;
  }

  static accumulator from_bytes(std::span<const std::byte> bytes) {
    std::vector<uint64_t> words(bytes.size() / sizeof(uint64_t));
    if (!words.empty()) std::memcpy(words.data(), bytes.data(), words.size() * sizeof(uint64_t));
    const auto refuse = [] { fail(RNG_BAD_FILE_FORMAT, "these bytes are no accumulator"); };
    if (bytes.size() % sizeof(uint64_t) != 0 || words.size() <= header_words || words[0] != mark) {
      refuse();
    }
    const uint64_t sum = words.back();
    words.pop_back();
    if (sum != check_sum(words)) refuse();
    const uint64_t p = words[1], arrays = 2 + words[2] + (words[3] != 0 ? p : 0);
    if (p == 0 || p > words.size() || words[2] - 1 > 3 || words[3] > 1 ||
        words.size() - header_words != p * arrays) {
      refuse();
    }
    accumulator r(static_cast<size_t>(p), {static_cast<uint32_t>(words[2]), words[3] != 0,
                                           static_cast<covariance_method>(words[4])});
    r.count_ = words[5];
    r.weight_ = number(words[6]);
    r.weight_squares_ = number(words[7]);
    const uint64_t* next = &words[header_words];
    r.for_each_array([&](const std::vector<double>& array) {
      for (double& x : const_cast<std::vector<double>&>(array)) x = number(*next++);
    });
    return r;
  }

  void save(const std::string& path) const {
    const std::vector<std::byte> all = bytes();
    const file f(path, "wb");
    if (std::fwrite(all.data(), 1, all.size(), f.get) != all.size() || std::fflush(f.get) != 0) {
      fail(RNG_FILE_WRITE, "'" + path + "': writing the file failed; is there room?");
    }
  }
  static accumulator load(const std::string& path) {
    const file f(path, "rb");
    std::vector<std::byte> all;
    std::byte part[4096];
    while (const size_t n = std::fread(part, 1, sizeof part, f.get)) {
      all.insert(all.end(), part, part + n);
    }
    return from_bytes(all);
  }

 private:
  static constexpr uint64_t mark = 0x315543434156524F;  // "ORVACCU1", a letter a byte
  static constexpr size_t header_words = 8;
  static constexpr size_t piece_elements = size_t{1} << 17, least_piece = 1024;

  static constexpr double nan() { return std::numeric_limits<double>::quiet_NaN(); }
  [[noreturn]] static void fail(int32_t status, const std::string& sentence) {
    detail::fail(status, "accumulator", sentence);
  }
  void need(uint32_t moments) const {
    if (parts_.moments < moments) {
      fail(SS_BAD_PARAMETER, "this accumulator keeps moments up to number " +
                                 std::to_string(parts_.moments) + " only");
    }
  }
  template <class F>
  std::vector<double> each(F f) const {
    std::vector<double> r(p_);
    for (size_t j = 0; j < p_; ++j) r[j] = f(j);
    return r;
  }

  /// 0 for a single observation, whose variance is then 0 / 0.
  double divisor() const { return weight_ - weight_squares_ / weight_; }
  double variance_of(size_t j) const {
    const double sum = parts_.moments > 1 ? sums_[1][j] : scatter_[j * p_ + j];
    return sum / divisor();
  }

  /// The sums of one variable's powers of deviations.
  void merge_variable(const accumulator& other, size_t j) {
    const double a = weight_, b = other.weight_, w = a + b;
    const double d = other.sums_[0][j] - sums_[0][j], u = d / w;  // the mean moves by b u
    const auto sum = [&](uint32_t k) { return k < parts_.moments ? sums_[k][j] : 0; };
    const auto added = [&](uint32_t k) { return k < parts_.moments ? other.sums_[k][j] : 0; };
    const double m2 = sum(1), m3 = sum(2), n2 = added(1), n3 = added(2);
    if (a == 0) {
      for (uint32_t k = 0; k < parts_.moments; ++k) sums_[k][j] = other.sums_[k][j];
      return;
    }
    sums_[0][j] += b * u;
    if (parts_.moments > 1) sums_[1][j] += n2 + a * b * u * d;
    if (parts_.moments > 2) {
      sums_[2][j] += n3 + a * b * (a - b) * u * u * d + 3 * u * (a * n2 - b * m2);
    }
    if (parts_.moments > 3) {
      sums_[3][j] += added(3) + a * b * (a * a - a * b + b * b) * u * u * u * d +
                     6 * u * u * (a * a * n2 + b * b * m2) + 4 * u * (a * n3 - b * m3);
    }
  }

  /// The sums of some observations: as doubles about their mean, so that moments about 0, which the
  /// library gives, lose no digits.
  template <class T>
  accumulator of_piece(table<T> block, const T* weights, size_t first, size_t n,
                       const SSThreadServices* threads) const {
    accumulator r(p_, parts_);
    r.count_ = n;
    const bool rows = block.layout() == layout::by_variable;
    std::vector<double> x(n * p_), w(weights != nullptr ? n : 0);
    for (size_t i = 0; i < w.size(); ++i) w[i] = weights[i];
    // Values that lie side by side, and how many such lines there are.
    const size_t lines = rows ? p_ : n, length = rows ? n : p_;
    for (size_t k = 0; k < lines; ++k) {
      const T* const from =
          block.data() + (rows ? k * block.observations() + first : (first + k) * p_);
      for (size_t i = 0; i < length; ++i) {
        const double value = x[k * length + i] = from[i];
        const size_t j = rows ? k : i;
        if (value < r.minimum_[j]) r.minimum_[j] = value;
        if (value > r.maximum_[j]) r.maximum_[j] = value;
      }
    }
    task<double> t(static_cast<int64_t>(p_), static_cast<int64_t>(n),
                   static_cast<int64_t>(block.layout()), x.data(), w.empty() ? nullptr : w.data());
    t.set(SS_PARAM_MEAN, r.sums_[0]);
    t.run(entries<double>::basic, SS_EST_MEAN, SS_METHOD_ONE_PASS, threads, "accumulator");
    std::vector<double> origin = r.sums_[0];
    for (double& o : origin) o = o - o == 0 ? o : 0;
    for (size_t k = 0; k < lines; ++k) {
      for (size_t i = 0; i < length; ++i) x[k * length + i] -= origin[rows ? k : i];
    }
    r.take_centred(t, threads);
    for (size_t j = 0; j < p_; ++j) r.sums_[0][j] += origin[j];
    return r;
  }

  void take_centred(task<double>& t, const SSThreadServices* threads) {
    static constexpr int64_t parameters[] = {SS_PARAM_MEAN, SS_PARAM_RAW_MOMENT_2,
                                             SS_PARAM_RAW_MOMENT_3, SS_PARAM_RAW_MOMENT_4};
    double weights[2] = {0, 0};
    t.set(SS_PARAM_ACCUMULATED_WEIGHTS, weights);
    for (uint32_t k = 0; k < parts_.moments; ++k) t.set(parameters[k], sums_[k]);
    uint64_t estimates = (uint64_t{1} << parts_.moments) - 1;  // SS_EST_MEAN and so on
    if (parts_.covariance) {
      estimates |= SS_EST_COV;
      t.set(SS_PARAM_COV, scatter_).set_integer(SS_PARAM_COV_STORAGE, SS_MATRIX_FULL);
    }
    t.run(entries<double>::basic, estimates, static_cast<uint64_t>(parts_.method), threads,
          "accumulator");
    weight_ = weights[0];
    weight_squares_ = weights[1];
    const double scale = weight_ > 0 ? divisor() : 0;
    for (double& c : scatter_) c = scale > 0 ? c * scale : 0;
    for (size_t j = 0; j < p_; ++j) about_the_mean(j);
  }

  /// From means of powers to sums of powers of deviations.
  void about_the_mean(size_t j) {
    const double m = sums_[0][j];
    double raw[4] = {};
    for (uint32_t k = 0; k < parts_.moments; ++k) raw[k] = sums_[k][j];
    const double central[] = {m, raw[1] - m * m, raw[2] + (2 * m * m - 3 * raw[1]) * m,
                              raw[3] + ((6 * raw[1] - 3 * m * m) * m - 4 * raw[2]) * m};
    for (uint32_t k = 1; k < parts_.moments; ++k) sums_[k][j] = central[k] * weight_;
  }

  template <class F>
  void for_each_array(F f) const {
    f(minimum_);
    f(maximum_);
    for (uint32_t k = 0; k < parts_.moments; ++k) f(sums_[k]);
    f(scatter_);
  }
  static uint64_t word(double x) {
    uint64_t r;
    std::memcpy(&r, &x, sizeof r);
    return r;
  }
  static double number(uint64_t w) {
    double r;
    std::memcpy(&r, &w, sizeof r);
    return r;
  }
  /// After Fowler, Noll and Vo (1991), over words.
  static uint64_t check_sum(const std::vector<uint64_t>& words) {
    uint64_t h = 0xCBF29CE484222325;
    for (const uint64_t w : words) h = (h ^ w) * 0x100000001B3;
    return h;
  }

  struct file {
    std::FILE* get;
    file(const std::string& path, const char* how) : get(std::fopen(path.c_str(), how)) {
      if (get == nullptr) fail(RNG_FILE_OPEN, "'" + path + "': the file can't be opened");
    }
    file(const file&) = delete;
    file& operator=(const file&) = delete;
    ~file() { std::fclose(get); }
  };

  accumulator_parts parts_;
  size_t p_;
  uint64_t count_ = 0;
  double weight_ = 0, weight_squares_ = 0;
  std::vector<double> minimum_, maximum_;
  std::vector<double> sums_[4];  // means; sums of second to fourth powers of deviations
  std::vector<double> scatter_;  // p by p, both triangles
};

}  // namespace orv
