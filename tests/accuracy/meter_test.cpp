// SPDX-License-Identifier: MIT
// The meter against results whose error is known, and the double references against MPFR.
#include <gtest/gtest.h>

#include "inputs.hpp"

namespace orv_test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// 2^power * (1 + tail 2^-100) as a true value.
template <class R>
Reference<R> truth(int power, double tail, int sign = 1) {
  MPFR_DECL_INIT(f, 200);
  MPFR_DECL_INIT(t, 53);
  mpfr_set_d(t, tail, MPFR_RNDN);
  mpfr_div_2ui(t, t, 100, MPFR_RNDN);
  mpfr_add_ui(f, t, 1, MPFR_RNDN);
  mpfr_mul_2si(f, f, power, MPFR_RNDN);
  if (sign < 0) mpfr_neg(f, f, MPFR_RNDN);
  return reference<R>(f);
}

template <class R>
class Meter : public testing::Test {};
using Formats = testing::Types<float, double>;
TYPED_TEST_SUITE(Meter, Formats);

TYPED_TEST(Meter, KnownErrors) {
  using R = TypeParam;
  using L = std::numeric_limits<R>;
  const R one = 1, ulp = L::epsilon(), tiny = L::denorm_min(), nan = L::quiet_NaN();
  const double tail = std::ldexp(1.0, 100 - L::digits);  // half an ulp of the true value
  const struct {
    const char* what;
    R y;
    Reference<R> f;
    double error;
  } cases[] = {
      {"exact", one, truth<R>(0, 0), 0},
      {"half an ulp up", one, truth<R>(0, tail), 0.5},
      {"half an ulp, from above", one + ulp, truth<R>(0, tail), 0.5},
      {"a quarter", one, truth<R>(0, tail / 2), 0.25},
      {"one ulp above a power of two", one + ulp, truth<R>(0, 0), 1},
      {"the spacing below it is half of the truth's", one - ulp / 2, truth<R>(0, 0), 0.5},
      {"below the power, in its own spacing", one, truth<R>(0, -tail / 2), 0.5},
      {"negative", -one, truth<R>(0, 3 * tail, -1), 1.5},
      {"wrong sign", -one, truth<R>(0, 0), 2 / static_cast<double>(ulp)},
      {"smallest normal", L::min() - tiny, truth<R>(L::min_exponent - 1, 0), 1},
      {"denormal", 3 * tiny, truth<R>(L::min_exponent - L::digits, 0), 2},
      {"denormal, half", tiny, truth<R>(L::min_exponent - L::digits - 1, 0), 0.5},
      {"zero for half the smallest", 0, truth<R>(L::min_exponent - L::digits - 1, 0), 0.5},
      {"minus zero for a positive value", -R{0}, truth<R>(L::min_exponent - 100, 0), infinity},
      {"minus zero for a negative value", -R{0}, truth<R>(-5000, 0, -1), 0},
      {"largest", L::max(), truth<R>(L::max_exponent, -tail), 0},
      {"infinity just below its power of two", L::infinity(), truth<R>(L::max_exponent, -tail / 2),
       0.5},
      {"infinity for the largest number", L::infinity(), truth<R>(L::max_exponent, -tail), 1},
      {"infinity for a value in range", L::infinity(), truth<R>(L::max_exponent - 2, 0),
       3 * std::ldexp(1.0, L::digits - 1)},
      {"overflow", L::infinity(), truth<R>(L::max_exponent, 0), 0},
      {"overflow missed", L::max(), truth<R>(L::max_exponent, 0), infinity},
      {"overflow of the wrong sign", -L::infinity(), truth<R>(5000, 0), infinity},
      {"far past overflow", -L::infinity(), truth<R>(5000, 0, -1), 0},
      {"NaN for a number", nan, truth<R>(0, 0), infinity},
      {"number for NaN", one, {nan, 0}, infinity},
      {"NaN", nan, {nan, 0}, 0},
      {"zero", 0, {0, 0}, 0},
      {"wrong zero", -R{0}, {0, 0}, infinity},
  };
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(ulp_error(c.y, c.f), c.error) << c.what;
}

TYPED_TEST(Meter, RelativeErrorAndNearest) {
  using R = TypeParam;
  using L = std::numeric_limits<R>;
  const R one = 1, ulp = L::epsilon();
  EXPECT_EQ(relative_error<R>(1, truth<R>(0, 0)), ulp);
  EXPECT_EQ(relative_error<R>(3, truth<R>(-7, 0, -1)), 3 * ulp);
  EXPECT_EQ(relative_error<R>(1, truth<R>(L::min_exponent - 3, 0)), ulp);
  EXPECT_EQ(relative_error<R>(0, {0, 0}), 0);

  const double half = std::ldexp(1.0, 100 - L::digits);
  EXPECT_EQ(nearest(truth<R>(0, half)), one);
  EXPECT_EQ(nearest(truth<R>(0, half * 1.25)), one + ulp);
  EXPECT_EQ(nearest(truth<R>(0, half * 3)), one + 2 * ulp);
  EXPECT_EQ(nearest(truth<R>(0, half * 0.75, -1)), -one);
  EXPECT_EQ(nearest(truth<R>(L::max_exponent, -half / 2)), L::infinity());
  // A tie but for 2^-101 ulp.
  EXPECT_EQ(nearest(truth<R>(L::min_exponent - L::digits - 1, 0)), 0);
  EXPECT_EQ(nearest(truth<R>(L::min_exponent - L::digits - 1, 1)), L::denorm_min());
}

/// The exhaustive runs take the C library's double functions for the truth.
TEST(Meter, DoubleReferencesAreTrueForFloat) {
  MPFR_DECL_INIT(x, 24);
  MPFR_DECL_INIT(y, reference_bits<float>);
  for (const Function& f : functions()) {
    if (!f.in_double) continue;
    Inputs<float> in(1, 20000);
    f.inputs(in);
    for (const float argument : in.values) {
      mpfr_set_d(x, argument, MPFR_RNDN);
      f.exact(&y, &x);
      const auto exact = reference<float>(y), fast = reference(f.in_double(argument));
      // The two may stand on either side of a number: then the rests are near 1 and 0.
      const double error = ulp_error(fast.value, exact);
      const double difference = std::isfinite(fast.value) && std::isfinite(error)
                                    ? std::abs(error - std::abs(fast.rest))
                                    : error;
      ASSERT_LT(difference, 1e-6) << f.name << " at " << argument;
    }
  }
}

}  // namespace
}  // namespace orv_test
