// SPDX-License-Identifier: MIT
// Input sets: special values, powers of two and random patterns for every function, and verbs for
// what a function adds of its own. Made with integers and the four operations only, from fixed
// seeds, so that every build has the same inputs to the bit.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "meter.hpp"

namespace orv_test {

/// Sebastiano Vigna's splitmix64.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  uint64_t next() {
    uint64_t z = state_ += 0x9E3779B97F4A7C15;
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9;
    z = (z ^ z >> 27) * 0x94D049BB133111EB;
    return z ^ z >> 31;
  }
  uint64_t below(uint64_t n) { return next() % n; }
  double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }

 private:
  uint64_t state_;
};

/// Zeros, infinities, NaNs, the ends of the denormal and the normal range, huge numbers.
template <class R>
std::vector<R> special_values();

template <class R>
class Inputs {
 public:
  /// `count` random numbers come to a share of 1.
  Inputs(uint64_t seed, int count) : random(seed), count_(count) { everywhere(); }
  int amount(double share) const { return static_cast<int>(share * count_); }

  /// Uniform in value.
  void linear(double share, double lo, double hi);
  /// Uniform in bit patterns, that is about uniform in exponents; 0 <= lo < hi.
  void patterns(double share, double lo, double hi);
  void patterns_of_both_signs(double share, double lo, double hi);
  /// center +- d, d down to what the center still feels.
  void near(double share, double center, double farthest);
  /// One value, with `reach` neighbours on either side.
  void at(double value, int reach = 4);
  /// Where a reduction changes its choice: neighbours, and `count` numbers on either side at random
  /// distances, uniform in exponent from an ulp to an eighth of the value.
  void seam(double value, int count = 4);
  /// Seams at k * step; as many random k as the share allows, or all in between.
  void seams(double share, double step, double lo, double hi);

  std::vector<R> values;
  /// Pairs that are to stay together: two operands, or the parts of a complex one.
  std::vector<std::pair<R, R>> pairs;
  Random random;

 private:
  void everywhere();
  int count_;
};

// ---- Functions ---

/// How a function's kernels are judged.
enum class Grade {
  Rounded,      // exact or rounded once: every result is the number nearest to the true value
  Approximate,  // the level's bound, and the figure recorded for the kernel
};

struct Function {
  std::string types;  // those of s, d, c, z that the row serves
  std::string name;
  Grade grade;
  /// From all parts of the operands (a complex number has two) to all parts of the results. There
  /// are four of each to use.
  void (*exact)(mpfr_t* y, mpfr_t* x);
  /// The same in double for exhaustive runs over float, 0 if there is none.
  double (*in_double)(double x);
  void (*inputs_s)(Inputs<float>&);
  void (*inputs_d)(Inputs<double>&);

  /// EP forms products in its own range and so is held to its bound in the middle half of it.
  bool ep_in_middle = false;
  /// A complex result is judged by its norm at every level.
  bool by_norm = false;
  /// The points that the reference serves, from the parts of all operands; null if it serves all.
  bool (*covers)(const double* parts, int count) = nullptr;

  void inputs(Inputs<float>& in) const { inputs_s(in); }
  void inputs(Inputs<double>& in) const { inputs_d(in); }
};

const std::vector<Function>& functions();

/// The row that serves a function of the library, 0 if there is none.
const Function* find_function(char type, const std::string& name);

}  // namespace orv_test
