// The scalar functions against MPFR.
#include <gtest/gtest.h>
#include <orv/scalar.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/accuracy/big.hpp"

using namespace orv_test;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Equal as numbers and in the sign of a zero, or both NaN.
testing::AssertionResult same(double x, double y) {
  if (std::isnan(x) ? std::isnan(y) : x == y && std::signbit(x) == std::signbit(y)) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << x << " and " << y;
}

/// |y - truth| in units of the last place of a result of T.
template <class T>
double ulps(T y, const Big& truth) {
  if (truth.zero()) return y == 0 ? 0 : infinity;
  const long exponent =
      std::max<long>(mpfr_get_exp(truth.get()), std::numeric_limits<T>::min_exponent);
  Big error = Big(y) - truth;
  mpfr_t unit;
  mpfr_init2(unit, 64);
  mpfr_set_si_2exp(unit, 1, exponent - std::numeric_limits<T>::digits, MPFR_RNDN);
  const double result = std::abs((error / Big(mpfr_srcptr{unit})).get_d());
  mpfr_clear(unit);
  return result;
}

struct Numbers {
  std::mt19937_64 random{1};
  double uniform(double a, double b) {
    return a + (b - a) * static_cast<double>(random() >> 11) * 0x1p-53;
  }
  /// Of any size between two powers of 2.
  double scaled(double least, double most) {
    const double exponent = uniform(least, most), whole = std::floor(exponent);
    return std::ldexp(1 + (exponent - whole), static_cast<int>(whole));
  }
};

double worst_ln(int count, auto argument) {
  double worst = 0;
  for (int i = 0; i < count; ++i) {
    const double x = argument();
    worst = std::max(worst, ulps(__zokdLn(x), Big(x).by<mpfr_log>()));
  }
  return worst;
}

TEST(ScalarLn, WithinItsBound) {
  Numbers numbers;
  // Everywhere, denormals, and the ends of the rows around 1, where the result is small.
  EXPECT_LT(worst_ln(40000, [&] { return numbers.scaled(-1074, 1024); }), 0.51);
  EXPECT_LT(worst_ln(20000, [&] { return numbers.scaled(-1, 1); }), 0.51);
  EXPECT_LT(worst_ln(40000, [&] { return numbers.uniform(0.98, 1.02); }), 0.51);
  EXPECT_LT(worst_ln(20000, [&] { return 1 - numbers.scaled(-53, -8); }), 0.51);
  EXPECT_LT(worst_ln(20000, [&] { return 1 + numbers.scaled(-52, -8); }), 0.51);
  int i = 0;
  const auto around_seams = [&] {
    const int seam = i++;
    const double x = std::ldexp(1 + (2 * (seam / 2 % 128) + 1) / 256.0, seam / 256 - 2);
    return std::nextafter(x, seam % 2 * 8);
  };
  EXPECT_LT(worst_ln(1024, around_seams), 0.51);
  double worst = 0;
  for (i = 0; i < 20000; ++i) {
    const auto x = static_cast<float>(i % 2 ? numbers.scaled(-149, 128) : numbers.uniform(.9, 1.1));
    worst = std::max(worst, ulps(__zoksLn(x), Big(x).by<mpfr_log>()));
  }
  EXPECT_LT(worst, 0.5001);
}

TEST(ScalarLn, SpecialValues) {
  const struct {
    double x, ln;
  } rows[] = {{0, -infinity}, {-0.0, -infinity}, {-1, nan}, {-infinity, nan},
              {nan, nan},     {-5e-324, nan},    {1, 0},    {infinity, infinity}};
  for (const auto& row : rows) {
    EXPECT_TRUE(same(__zokdLn(row.x), row.ln)) << row.x;
    EXPECT_TRUE(same(__zoksLn(static_cast<float>(row.x)), row.x == -5e-324 ? -infinity : row.ln))
        << row.x;
  }
}

TEST(ScalarFloor, AndSquareRootAreExact) {
  const struct {
    double x, floor;
  } rows[] = {{0, 0},
              {-0.0, -0.0},
              {5e-324, 0},
              {-5e-324, -1},
              {0x1.fffffffffffffp-1, 0},
              {-0x1.fffffffffffffp-1, -1},
              {1, 1},
              {-1, -1},
              {-1.5, -2},
              {0x1p51 - 0.25, 0x1p51 - 1},
              {0.5 - 0x1p51, -0x1p51},
              {0x1p51 + 0.5, 0x1p51},
              {-0x1p51 - 0.5, -0x1p51 - 1},
              {0x1p52 - 0.5, 0x1p52 - 1},
              {0.5 - 0x1p52, -0x1p52},
              {0x1p52 + 1, 0x1p52 + 1},
              {-0x1p63, -0x1p63},
              {infinity, infinity},
              {nan, nan}};
  for (const auto& row : rows) EXPECT_TRUE(same(__zokdFloor(row.x), row.floor)) << row.x;

  Numbers numbers;
  for (int i = 0; i < 20000; ++i) {
    const double x = numbers.scaled(-1074, 1024);
    ASSERT_EQ(__zokdSqrt(x), Big(x).by<mpfr_sqrt>().get_d()) << x;
  }
  EXPECT_TRUE(same(__zokdSqrt(-0.0), -0.0));
  EXPECT_TRUE(same(__zokdSqrt(-1), nan));
}

}  // namespace
