// SPDX-License-Identifier: MIT
// Arctangents, of numbers and of quotients.
#include "families.hpp"

namespace orv_test {
namespace {

/// Where the eighth of a turn or the row of a table changes, and the middles of rows.
std::vector<double> seams_of_quotients() {
  std::vector<double> list = {0x1.A827999FCEF32p-2, 0x1.3504F333F9DE6p1};
  for (int exponent = -32; exponent < 56; ++exponent) {
    for (int i = 0; i < 32; ++i) list.push_back(std::ldexp(1 + i / 32.0, exponent));
  }
  return list;
}

template <class R>
void arctangent_inputs(Inputs<R>& in) {
  in.linear(0.2, -10, 10);
  in.linear(0.2, 0.4, 0.5);  // pi/4 cancels most just above tan(pi/8)
  in.patterns_of_both_signs(0.4, 0x1p-12, 0x1p12);
  in.patterns_of_both_signs(0.2, 0, std::numeric_limits<R>::infinity());
  for (const double x : seams_of_quotients()) in.seam(x), in.seam(-x);
}

/// Points by the quotient of their numbers. In braces random numbers are drawn from left to right.
struct Point {
  double x, quotient;
};

template <class R>
class Points {
 public:
  explicit Points(Inputs<R>& in) : in_(in) {}

  /// In any quadrant.
  void add(const Point& p) {
    const R x = static_cast<R>(p.x), y = static_cast<R>(static_cast<double>(x) * p.quotient);
    const uint64_t signs = in_.random.below(4);
    in_.pairs.push_back({signs & 1 ? -y : y, signs & 2 ? -x : x});
  }
  /// 2^k, k between the bounds, times a number from 1 to 2.
  double size(int low, int high) {
    const int exponent = low + static_cast<int>(in_.random.below(high - low));
    return std::ldexp(1 + in_.random.unit(), exponent);
  }

 private:
  Inputs<R>& in_;
};

template <class R>
void angle_of_point_inputs(Inputs<R>& in) {
  constexpr int least = std::numeric_limits<R>::min_exponent - std::numeric_limits<R>::digits;
  constexpr int most = std::numeric_limits<R>::max_exponent - 1;
  arithmetic_inputs(in);
  in.linear(0.2, -10, 10);
  in.patterns_of_both_signs(0.2, 0x1p-12, 0x1p12);
  Points<R> points(in);
  for (int i = 0; i < in.amount(0.3); ++i) {
    points.add({points.size(-20, 20), points.size(-8, 8)});
    points.add({points.size(least, most), points.size(-70, 70)});
    points.add({points.size(-20, 20), 0.4 + 0.1 * in.random.unit()});  // as above
    points.add({points.size(least / 2, most / 2), points.size(least / 2 - 60, least / 2)});
  }
  // The seams of quotients, and of sums of sizes: where lanes end.
  for (const double seam : seams_of_quotients()) {
    for (int i = 0; i < 6; ++i) {
      const double off = std::ldexp(i % 2 ? 1 : -1, -static_cast<int>(in.random.below(53)));
      points.add({points.size(-20, 20), seam * (1 + off / 16)});
      points.add({points.size(least, least + 60), seam * (1 + off / 16)});
    }
  }
  for (const int exponent : is_float<R> ? std::vector{-90, 90} : std::vector{-900, 960}) {
    for (int i = 0; i < 400; ++i) {
      points.add({points.size(exponent - 2, exponent + 1), points.size(-62, 4)});
      const double quotient = points.size(i % 2 ? 58 : -62, i % 2 ? 62 : -58);
      points.add({points.size(exponent - 2, exponent + 1), quotient});
    }
  }
}

/// The same of the points that complex numbers are.
template <class R>
void angle_of_number_inputs(Inputs<R>& in) {
  angle_of_point_inputs(in);
  for (auto& [y, x] : in.pairs) std::swap(y, x);
}
void angle_of_number(mpfr_t* y, mpfr_t* x) { mpfr_atan2(y[0], x[1], x[0], MPFR_RNDN); }

}  // namespace

std::vector<Function> arctangent_functions() {
  return {
      {"sd", "Atan", Approximate, unary<mpfr_atan>, ::atan, ORV_INPUTS(arctangent_inputs)},
      {"sd", "Atan2", Approximate, binary<mpfr_atan2>, nullptr, ORV_INPUTS(angle_of_point_inputs)},
      {"cz", "Arg", Approximate, angle_of_number, nullptr, ORV_INPUTS(angle_of_number_inputs)},
  };
}

}  // namespace orv_test
