// SPDX-License-Identifier: MIT
// Whether numbers follow a law: how many of them lie below each of its quantiles.
#pragma once

#include <math.h>
#include <stdlib.h>

#include <algorithm>
#include <bit>
#include <boost/math/special_functions/gamma.hpp>
#include <limits>

#include "distributions.hpp"

namespace orv_test {

/// What a distribution should be.
template <class T>
struct Law {
  std::string name;
  Draw<T> draw;
  std::function<double(double)> lower, upper;  // probability up to x, and from x on
  double mean = NAN, deviation = NAN;          // if it has them
  std::vector<T> borders = {};                 // between cells, beside those at the quantiles
  int64_t most_draws = INT64_MAX;              // of a method that is good to so many
};

/// Numbers of each law, 10^9 in the long run.
inline int64_t draws_of_a_law() {
  const char* const draws = getenv("ORV_LAW_DRAWS");
  return draws != nullptr ? static_cast<int64_t>(atof(draws)) : 1'000'000;
}

/// Whether a law is to be looked at: all are, or those whose name has ORV_LAW in it.
inline bool is_chosen(const std::string& name) {
  const char* const part = getenv("ORV_LAW");
  return part == nullptr || name.find(part) != std::string::npos;
}

/// The numbers of a precision in a row; integers stand there as they are.
template <class T>
T from_rank(int64_t rank) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<T>(rank);
  } else {
    using Bits = std::conditional_t<sizeof(T) == 8, int64_t, int32_t>;
    const T x = std::bit_cast<T>(static_cast<Bits>(rank < 0 ? -rank : rank));
    return rank < 0 ? -x : x;
  }
}
template <class T>
int64_t rank_of(T x) {
  if constexpr (std::is_integral_v<T>) {
    return x;
  } else {
    using Bits = std::conditional_t<sizeof(T) == 8, int64_t, int32_t>;
    return x < 0 ? -int64_t{std::bit_cast<Bits>(-x)} : int64_t{std::bit_cast<Bits>(x)};
  }
}

/// A float stands for all that is rounded to it; here it ends. A double's share is too small to
/// count, but see borders_of.
inline double end_of(float x) {
  const float next = std::nextafter(x, HUGE_VALF);
  return isinf(next) ? next : x + (double{next} - x) / 2;
}
inline double end_of(double x) { return x; }
inline double end_of(int32_t x) { return x + 0.5; }

/// A border between cells, with the probabilities on both sides.
template <class T>
struct Border {
  T at;
  double below, above;
};

/// A border near the least that has at least p below, or, for negative p, at most -p above.
template <class T>
Border<T> border_at(const Law<T>& law, double p) {
  const auto reached = [&](T x) {
    const double end = end_of(x);
    return p > 0 ? law.lower(end) >= p : law.upper(end) <= -p;
  };
  int64_t high = rank_of(std::numeric_limits<T>::max()), low = -high;
  constexpr int64_t near = sizeof(T) == 8 ? int64_t{1} << 30 : 1;
  while (low + near < high) {
    const int64_t middle = (low & high) + ((low ^ high) >> 1);  // their difference may overflow
    (reached(from_rank<T>(middle)) ? high : low) = middle;
  }
  const T at = from_rank<T>(high);
  return {at, law.lower(end_of(at)), law.upper(end_of(at))};
}

/// Equal cells, and smaller and smaller ones in the tails, beyond five deviations of a Gaussian in
/// doubles, as far as the steps of the uniform numbers are small against a cell.
template <class T>
std::vector<Border<T>> borders_of(const Law<T>& law) {
  constexpr int cells = 128, tail = sizeof(T) == 8 ? 23 : 16;
  std::vector<Border<T>> borders;
  for (int k = tail; k > 7; --k) borders.push_back(border_at(law, exp2(-k)));
  for (int k = 1; k < cells; ++k) {
    const double p = static_cast<double>(k) / cells;
    borders.push_back(border_at(law, p < 0.5 ? p : p - 1));
  }
  for (int k = 8; k <= tail; ++k) borders.push_back(border_at(law, -exp2(-k)));
  for (const T at : law.borders) {
    const double end = end_of(at);
    if (law.lower(end) > 0 && law.upper(end) > 0) {
      borders.push_back({at, law.lower(end), law.upper(end)});
    }
  }
  std::sort(borders.begin(), borders.end(), [](auto& a, auto& b) { return a.at < b.at; });
  const auto same = [](const auto& a, const auto& b) { return a.at == b.at; };
  std::erase_if(borders, [&](const auto& b) {  // where one double has a share that shows
    const double next = std::nextafter(b.at, std::numeric_limits<T>::infinity());
    return sizeof(T) == 8 && law.lower(next) - b.below > 1e-4 * std::min(b.below, b.above);
  });
  borders.erase(std::unique(borders.begin(), borders.end(), same), borders.end());
  return borders;
}

/// How many of n numbers lie in each cell, and their moments about the law's mean.
struct Sample {
  int64_t n = 0;
  std::vector<int64_t> in_cell;
  double sum = 0, squares = 0, fourth = 0;
};

template <class T>
Sample sample_of(const Law<T>& law, const std::vector<Border<T>>& borders, StreamState* stream) {
  Sample sample;
  sample.in_cell.resize(borders.size() + 1);
  std::vector<T> x(50'000), at;
  for (const Border<T>& border : borders) at.push_back(border.at);
  for (const int64_t n = std::min(draws_of_a_law(), law.most_draws); sample.n < n;
       sample.n += x.size()) {
    if (law.draw(stream, static_cast<int32_t>(x.size()), x.data()) != RNG_OK) return {};
    for (const T number : x) {
      ++sample.in_cell[std::lower_bound(at.begin(), at.end(), number) - at.begin()];
      const double z = (number - law.mean) / law.deviation;
      sample.sum += z;
      sample.squares += z * z;
      sample.fourth += z * z * z * z;
    }
  }
  return sample;
}

/// The chance of a count as far off as this, or farther, on its side.
inline double chance_of(int64_t count, double expected) {
  using boost::math::gamma_p;
  using boost::math::gamma_q;
  const auto k = static_cast<double>(count);
  return count > expected ? gamma_p(k, expected) : gamma_q(k + 1, expected);
}

/// A right generator fails one of these once in a million runs; the seeds are fixed besides.
inline constexpr double least_chance = 1e-8, most_deviations = 5.5, most_kolmogorov = 2.9;

/// Kolmogorov and Smirnov's distance over all borders; each border's count in deviations of its
/// own, which weighs the tails as Anderson and Darling do, or its chance where it is small; all
/// cells by chi-square; mean and deviation.
template <class T>
void expect_law(const Law<T>& law, StreamState* stream) {
  SCOPED_TRACE(law.name);
  const std::vector<Border<T>> borders = borders_of(law);
  const Sample sample = sample_of(law, borders, stream);
  ASSERT_GT(sample.n, 0);
  ASSERT_GT(borders.size(), std::is_integral_v<T> ? 0u : 2u)
      << "too few to tell one law from another";
  const auto n = static_cast<double>(sample.n);
  double largest_distance = 0, chi_square = 0, last_below = 0, last_above = 1;
  int64_t below = 0, pooled = 0;
  double pooled_expected = 0, freedom = -1;
  for (size_t k = 0; k <= borders.size(); ++k) {
    const Border<T> end = k < borders.size() ? borders[k] : Border<T>{0, 1, 0};
    below += sample.in_cell[k];
    pooled += sample.in_cell[k];
    pooled_expected += n * (end.below < 0.5 ? end.below - last_below : last_above - end.above);
    last_below = end.below;
    last_above = end.above;
    if (pooled_expected >= 30) {
      const double off = static_cast<double>(pooled) - pooled_expected;
      chi_square += off * off / pooled_expected;
      freedom += 1;
      pooled = 0;
      pooled_expected = 0;
    }
    if (k == borders.size()) break;
    const bool left = end.below < end.above;
    const int64_t count = left ? below : sample.n - below;
    const double expected = n * (left ? end.below : end.above);
    const double off = static_cast<double>(count) - expected;
    largest_distance = fmax(largest_distance, fabs(off) / sqrt(n));
    if (expected < 100) {
      EXPECT_GT(chance_of(count, expected), least_chance)
          << (left ? "up to " : "from ") << end.at << ": " << count << " for " << expected;
    } else {
      EXPECT_LT(fabs(off) / sqrt(expected * fmax(end.below, end.above)), most_deviations)
          << (left ? "up to " : "from ") << end.at << ": " << count << " for " << expected;
    }
  }
  EXPECT_LT(largest_distance, most_kolmogorov);
  if (freedom > 0) {
    EXPECT_GT(boost::math::gamma_q(freedom / 2, chi_square / 2), least_chance)
        << "chi-square of " << freedom << ": " << chi_square;
  }
  if (isnan(law.mean)) return;
  const double variance_of_squares = fmax(sample.fourth / n - 1, 1e-3);
  EXPECT_LT(fabs(sample.sum / sqrt(n)), most_deviations) << "mean";
  EXPECT_LT(fabs(sample.squares / n - 1) * sqrt(n / variance_of_squares), most_deviations)
      << "deviation " << sqrt(sample.squares / n);
}

}  // namespace orv_test
