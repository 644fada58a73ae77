// SPDX-License-Identifier: MIT
// The scalar functions against MPFR.
#include <gtest/gtest.h>
#include <orv/qem.h>
#include <orv/scalar.h>
#include <orv/ss.h>
#include <xmmintrin.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <vector>

#include "tests/accuracy/big.hpp"
#include "zok/_src/zok_sub_kernel/_math/incomplete_gamma.hpp"

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
  EXPECT_LT(worst_ln(10000, [&] { return numbers.scaled(-1074, 1024); }), 0.51);
  EXPECT_LT(worst_ln(5000, [&] { return numbers.scaled(-1, 1); }), 0.51);
  EXPECT_LT(worst_ln(10000, [&] { return numbers.uniform(0.98, 1.02); }), 0.51);
  EXPECT_LT(worst_ln(5000, [&] { return 1 - numbers.scaled(-53, -8); }), 0.51);
  EXPECT_LT(worst_ln(5000, [&] { return 1 + numbers.scaled(-52, -8); }), 0.51);
  int i = 0;
  const auto around_seams = [&] {
    const int seam = i++;
    const double x = std::ldexp(1 + (2 * (seam / 2 % 128) + 1) / 256.0, seam / 256 - 2);
    return std::nextafter(x, seam % 2 * 8);
  };
  EXPECT_LT(worst_ln(1024, around_seams), 0.51);
  double worst = 0;
  for (i = 0; i < 5000; ++i) {
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

// ---- Log gamma ---------------------------------------------------------------------------------

Big log_gamma(double x, int* sign = nullptr) {
  int ignored;
  mpfr_t y;
  mpfr_init2(y, big_bits);
  mpfr_lgamma(y, sign != nullptr ? sign : &ignored, Big(x).get(), MPFR_RNDN);
  const Big result{mpfr_srcptr{y}};
  mpfr_clear(y);
  return result;
}

TEST(LogGamma, WithinItsBound) {
  Numbers numbers;
  const struct {
    const char* where;
    std::function<double()> argument;
  } rows[] = {
      {"tiny", [&] { return numbers.scaled(-1074, -1); }},
      {"to 20", [&] { return numbers.uniform(0, 20); }},
      {"to 1000", [&] { return numbers.uniform(15, 1000); }},
      {"huge", [&] { return numbers.scaled(4, 1014); }},
      {"above 1", [&] { return 1 + numbers.scaled(-52, -2); }},
      {"below 1", [&] { return 1 - numbers.scaled(-53, -2); }},
      {"above 2", [&] { return 2 + numbers.scaled(-51, -2); }},
      {"below 2", [&] { return 2 - numbers.scaled(-52, -2); }},
      {"-tiny", [&] { return -numbers.scaled(-1074, -1); }},
      {"to -2.4", [&] { return numbers.uniform(-2.4, 0); }},
      {"to -170", [&] { return numbers.uniform(-170, -2.4); }},
      {"to -2^50", [&] { return -numbers.scaled(7, 50); }},
  };
  for (const auto& row : rows) {
    double worst = 0, worst_by_size = 0;
    for (int i = 0; i < 500; ++i) {
      const double x = row.argument();
      int sign;
      int32_t our_sign = 0;
      const double y = _zok_px_lgamma(x, &our_sign);
      const Big truth = log_gamma(x, &sign);
      ASSERT_EQ(our_sign, sign) << x;
      ASSERT_EQ(__zokdLGamma(x), y) << x;
      const double size = std::abs(truth.get_d());
      if (x < -2.4 && size < 0.01) {  // beside a zero
        const double error = std::abs((Big(y) - truth).get_d()) - size * 0x1p-53;
        worst_by_size = std::max(worst_by_size, error / std::abs(x * std::log(-x)));
      } else {
        worst = std::max(worst, ulps(y, truth));
      }
    }
    EXPECT_LT(worst, 0.51) << row.where;
    EXPECT_LT(worst_by_size, 1e-18) << row.where;
  }
}

TEST(LogGamma, SpecialValues) {
  double limit;
  const uint64_t bits = uint64_t{0x7F5754D9} << 32 | 663441831;
  std::memcpy(&limit, &bits, sizeof limit);
  EXPECT_TRUE(std::isfinite(__zokdLGamma(limit))) << limit;
  const struct {
    double x, y;
    int32_t sign;
  } rows[] = {{1, 0, 1},
              {2, 0, 1},
              {0, infinity, 1},
              {-0.0, infinity, -1},
              {-1, infinity, 1},
              {-2, infinity, 1},
              {-0x1p53, infinity, 1},
              {std::nextafter(limit, infinity), infinity, 1},
              {infinity, infinity, 1},
              {-infinity, infinity, 1},
              {nan, nan, 1}};
  for (const auto& row : rows) {
    int32_t sign = 7;
    EXPECT_TRUE(same(_zok_px_lgamma(row.x, &sign), row.y)) << row.x;
    EXPECT_EQ(sign, row.sign) << row.x;
  }
}

// ---- Chi-square and the incomplete gamma functions ---------------------------------------------

struct Tails {
  Big p, q;
};

/// Q by MPFR, P to its digits where it is above 1e-60.
Tails tails(double a, double x) {
  const Big q = Big::with<mpfr_gamma_inc>(a, x) / Big(a).by<mpfr_gamma>();
  return {Big(1) - q, q};
}

TEST(ChiSquare, BothTailsWithinTheirBound) {
  Numbers numbers;
  for (double least = 1e-3; least < 1e5; least *= 10) {
    double worst_p = 0, worst_q = 0;
    for (int i = 0; i < (least < 1e3 ? 100 : 12); ++i) {
      const double a = least * numbers.uniform(1, 10);
      const double deviations = i % 2 ? numbers.uniform(-1, 2) : numbers.uniform(-15, 36);
      double x = a < 1 ? numbers.scaled(-30, 9) : a + deviations * std::sqrt(a);
      if (x < 0) x = numbers.uniform(0, a);
      const auto [p, q] = tails(a, x);
      if (p.get_d() > 1e-60) worst_p = std::max(worst_p, ulps(__zokdChi2CDF(2 * a, 2 * x), p));
      if (q.get_d() > 1e-300) worst_q = std::max(worst_q, ulps(orv::_vdSSQ(a, x), q));
    }
    EXPECT_LT(worst_p, 1) << least;
    EXPECT_LT(worst_q, least < 0.1 ? 2 : 1) << least;
  }
}

TEST(ChiSquare, OneFormulaGoesOnWhereAnotherEnds) {
  // Q(a + 1, x) = Q(a, x) + x^a e^-x / gamma(a + 1), the former by the expansion for large a.
  const double a = 1e8 - 0.5;
  for (double deviations = -8; deviations <= 30; deviations += 0.5) {
    const double x = a + deviations * std::sqrt(a);
    const Big log = Big(a) * Big(x).by<mpfr_log>() - Big(x) - log_gamma(a + 1);
    const double term = log.by<mpfr_exp>().get_d(), q = orv::_vdSSQ(a, x);
    const double p = __zokdChi2CDF(2 * a, 2 * x);
    EXPECT_NEAR((orv::_vdSSQ(a + 1, x) - q) / term, 1, 4e-16 * q / term) << deviations;
    EXPECT_NEAR((p - __zokdChi2CDF(2 * a + 2, 2 * x)) / term, 1, 4e-16 * p / term) << deviations;
  }
  // Far beyond, all is normal, but for (deviations^2 - 1) / (3 sqrt(a)) densities.
  for (const double large : {1e18, 1e24}) {
    for (const double deviations : {-5.0, -1.0, 0.0, 1.0, 5.0}) {
      const double x = large + deviations * std::sqrt(large);
      const double normal = (x - large) / std::sqrt(2 * large);
      EXPECT_NEAR(orv::_vdSSQ(large, x), 0.5 * std::erfc(normal), 1e-9) << large;
    }
  }
}

TEST(ChiSquare, Density) {
  // As it stands in the function.
  const Big ln2(0.6931471805999999);
  for (const double k : {0.1, 1.0, 2.0, 7.0, 100.0, 5000.0}) {
    for (const double x : {1e-6, 0.5, 1.0, 5.0, 90.0, 600.0, 5200.0}) {
      const Big a(0.5 * k);
      const Big log =
          (a - Big(1)) * Big(x).by<mpfr_log>() - Big(0.5 * x) - a * ln2 - log_gamma(0.5 * k);
      const Big truth = log.by<mpfr_exp>();
      if (truth.get_d() < 1e-300) continue;
      EXPECT_LT(ulps(__zokdChi2PDF(k, x), truth), 0.6 + 1e-3 * k) << k << ' ' << x;
    }
  }
}

/// How far x may be from the quantile, as a share of the probability t it is for.
double allowed(double a, double x, double t) {
  const double rounding = 0x1p-53 * std::abs(__zokdChi2PDF(2 * a, 2 * x)) * 2 * x / t;
  return 1.01 * rounding + 5e-16;
}

TEST(ChiSquare, Quantiles) {
  Numbers numbers;
  const auto any_probability = [&](int i) {
    switch (i % 4) {
      case 0:
        return numbers.uniform(0, 1);
      case 1:
        return std::pow(10, numbers.uniform(-300, 0));
      case 2:
        return std::pow(10, numbers.uniform(-20, 0));
      default:
        return 1 - std::pow(10, numbers.uniform(-15.9, 0));
    }
  };
  for (const double a :
       {1e-3, 0.01, 0.05, 0.3, 0.5, 1.0, 1.5, 4.0, 15.0, 16.5, 200.0, 1e4, 1e6, 3e8}) {
    for (int i = 0; i < 200; ++i) {
      const double t = any_probability(i);
      const double x = orv::_dinvQ(a, t);
      if (x > 1e-300) {
        ASSERT_NEAR(orv::_vdSSQ(a, x) / t, 1, allowed(a, x, t)) << a << ' ' << t;
      } else {
        ASSERT_GT(t, 0.5) << a;
      }
      const double y = 0.5 * __zokdChi2ICDF(2 * a, t);
      if (y > 1e-300) {
        ASSERT_NEAR(__zokdChi2CDF(2 * a, 2 * y) / t, 1, allowed(a, y, t)) << a << ' ' << t;
      } else {
        ASSERT_GE(__zokdChi2CDF(2 * a, 2e-300), t) << a;
      }
    }
  }
}

TEST(ChiSquare, SpecialValues) {
  using orv::_dinvQ, orv::_vdSSQ;
  const struct {
    const char* what;
    double got, expected;
  } rows[] = {
      {"Q, x 0", _vdSSQ(2, 0), 1},
      {"Q, x below 0", _vdSSQ(2, -1), 1},
      {"Q, a 0", _vdSSQ(0, 3), 1},
      {"Q, x NaN", _vdSSQ(2, nan), nan},
      {"Q, a NaN", _vdSSQ(nan, 2), nan},
      {"Q, x infinite", _vdSSQ(2, infinity), 0},
      {"Q, a infinite", _vdSSQ(infinity, 2), 1},
      {"Q, both", _vdSSQ(infinity, infinity), nan},
      {"Q, huge x", _vdSSQ(2, 1e300), 0},
      {"Q, huge a", _vdSSQ(1e300, 1e299), 1},
      {"CDF, x 0", __zokdChi2CDF(2, 0), 0},
      {"CDF, k below 0", __zokdChi2CDF(-1, 3), 0},
      {"CDF, x infinite", __zokdChi2CDF(3, infinity), 1},
      {"CDF, tiny k", __zokdChi2CDF(5e-324, 1), 1},
      {"CDF, NaN", __zokdChi2CDF(nan, 1), nan},
      {"density, x 0", __zokdChi2PDF(2, 0), 0},
      {"density, x below 0", __zokdChi2PDF(2, -1), 0},
      {"density, x infinite", __zokdChi2PDF(4, infinity), 0},
      {"density, NaN", __zokdChi2PDF(4, nan), nan},
      {"inverse, q 1", _dinvQ(3, 1), 0},
      {"inverse, q 0", _dinvQ(3, 0), infinity},
      {"inverse, q NaN", _dinvQ(3, nan), nan},
      {"inverse, q above 1", _dinvQ(3, 1.5), nan},
      {"inverse, q below 0", _dinvQ(3, -1e-9), nan},
      {"inverse, a 0", _dinvQ(0, 0.5), nan},
      {"inverse, a infinite", _dinvQ(infinity, 0.5), nan},
      {"inverse, a huge", _dinvQ(1e300, 0.3), 1e300},
      {"inverse, a tiny", _dinvQ(1e-300, 0.3), 0},
      {"quantile, p 0", __zokdChi2ICDF(3, 0), 0},
      {"quantile, p 1", __zokdChi2ICDF(3, 1), infinity},
      {"quantile, p NaN", __zokdChi2ICDF(3, nan), nan},
  };
  for (const auto& row : rows) EXPECT_TRUE(same(row.got, row.expected)) << row.what;
  EXPECT_EQ(__zokdChi2CDF(2, 2), 1 - std::exp(-1));
}

// ---- Bits and surroundings ---------------------------------------------------------------------

struct Digest {
  uint64_t value = 1469598103934665603u;
  void add(auto x) {
    unsigned char bytes[sizeof x];
    std::memcpy(bytes, &x, sizeof x);
    for (const unsigned char byte : bytes) value = (value ^ byte) * 1099511628211u;
  }
};

uint64_t digest_of_gammas() {
  Digest digest;
  Numbers numbers;
  for (int i = 0; i < 500; ++i) {
    digest.add(__zokdLGamma(numbers.uniform(-20, 40)));
    const double k = numbers.scaled(-6, 16);
    digest.add(__zokdChi2CDF(k, k * numbers.uniform(0, 3)));
    digest.add(__zokdChi2PDF(k, k * numbers.uniform(0, 3)));
    digest.add(__zokdChi2ICDF(k, numbers.uniform(0, 1)));
  }
  return digest.value;
}

TEST(ScalarBits, AreTheSameInEveryBuildAndUnderAnyControlWords) {
  Digest logarithms;
  Numbers numbers;
  for (int i = 0; i < 10000; ++i) {
    logarithms.add(__zokdLn(numbers.scaled(-1074, 1024)));
    logarithms.add(__zoksLn(static_cast<float>(numbers.scaled(-149, 128))));
  }
  EXPECT_EQ(logarithms.value, 4503868374694882945u);
  EXPECT_EQ(digest_of_gammas(), 8471406491660629445u);

  const uint32_t sse = _mm_getcsr();
  uint16_t x87;
  asm volatile("fnstcw %0" : "=m"(x87));
  const auto short_x87 = static_cast<uint16_t>((x87 & ~0xF00) | 0xE00);  // 53 bits, to zero
  const auto odd_sse = (sse & ~0xE040u) | 0xC040u;                       // down, flushed
  orv_qem_kernel_SetErrStatus(77);
  const uint32_t mode = orv_qem_kernel_GetMode();
  // The arguments are made first: they, too, depend on the control words.
  const std::vector<double> arguments = {-7.3, 5e-310, 0.7, 1.9, 13, 600};
  const auto all = [&] {
    Digest digest;
    for (const double x : arguments) {
      digest.add(__zokdLGamma(x));
      digest.add(__zokdChi2CDF(3, x));
      digest.add(__zokdChi2ICDF(3, x));
    }
    return digest.value;
  };
  const uint64_t usual = all();
  asm volatile("fldcw %0" : : "m"(short_x87));
  _mm_setcsr(odd_sse);
  const uint64_t odd = all();
  const uint32_t sse_after = _mm_getcsr();
  uint16_t x87_after;
  asm volatile("fnstcw %0" : "=m"(x87_after));
  _mm_setcsr(sse);
  asm volatile("fldcw %0" : : "m"(x87));
  EXPECT_EQ(odd, usual);
  EXPECT_EQ(sse_after & ~0x3Fu, odd_sse & ~0x3Fu);
  EXPECT_EQ(x87_after, short_x87);
  EXPECT_EQ(orv_qem_kernel_SetErrStatus(0), 77);
  EXPECT_EQ(orv_qem_kernel_GetMode(), mode);
}

}  // namespace
