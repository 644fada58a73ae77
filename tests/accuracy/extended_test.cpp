// SPDX-License-Identifier: MIT
// The exported functions of extended numbers against MPFR.
#include <gtest/gtest.h>
#include <orv/qem.h>

#include <cmath>

#include "inputs.hpp"

using namespace orv_test;

namespace {

using Extended = long double;

struct Row {
  const char* name;
  Extended (*ours)(Extended);
  int (*exact)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);
  int least, most;  // exponents of the arguments
  bool negative = true;
};

Extended sine(Extended x) {
  Extended s, c;
  orv_qem_kernel_sincosl_scalar(x, &s, &c);
  return s;
}
Extended hyperbolic_cosine(Extended x) {
  Extended s, c;
  orv_qem_kernel_sinhcoshl_scalar(x, &s, &c);
  return c;
}

const Row rows[] = {
    {"expl", orv_qem_kernel_expl_scalar, mpfr_exp, -60, 13},
    {"logl", orv_qem_kernel_logl_scalar, mpfr_log, -16000, 16000, false},
    {"logl near 1", orv_qem_kernel_logl_scalar, mpfr_log, -2, 2, false},
    {"log1pl", orv_qem_kernel_log1pl_scalar, mpfr_log1p, -80, -1},
    {"sincosl", sine, mpfr_sin, -60, 1030},
    {"sinl", orv_qem_kernel_sinl_scalar, mpfr_sin, -60, 11},
    {"cosl", orv_qem_kernel_cosl_scalar, mpfr_cos, -60, 1030},
    {"tanl", orv_qem_kernel_tanl_scalar, mpfr_tan, -60, 20},
    {"atanl", orv_qem_kernel_atanl_scalar, mpfr_atan, -600, 600},
    {"asinl", orv_qem_kernel_asinl_scalar, mpfr_asin, -60, -1},
    {"acosl", orv_qem_kernel_acosl_scalar, mpfr_acos, -60, -1},
    {"sinhl", orv_qem_kernel_sinhl_scalar, mpfr_sinh, -60, 13},
    {"coshl", orv_qem_kernel_coshl_scalar, mpfr_cosh, -60, 13},
    {"sinhcoshl", hyperbolic_cosine, mpfr_cosh, -60, 13},
    {"tanhl", orv_qem_kernel_tanhl_scalar, mpfr_tanh, -60, 6},
    {"asinhl", orv_qem_kernel_asinhl_scalar, mpfr_asinh, -60, 2000},
    {"acoshl", orv_qem_kernel_acoshl_scalar, mpfr_acosh, 0, 2000, false},
    {"atanhl", orv_qem_kernel_atanhl_scalar, mpfr_atanh, -60, -1},
    {"sqrtl", orv_qem_kernel_sqrtl_scalar, mpfr_sqrt, -16000, 16000, false},
};

/// In units of the last of 64 bits.
double error_of(Extended y, mpfr_t truth) {
  mpfr_t d;
  mpfr_init2(d, 200);
  mpfr_set_ld(d, y, MPFR_RNDN);
  mpfr_sub(d, d, truth, MPFR_RNDN);
  mpfr_mul_2si(d, d, 64 - mpfr_get_exp(truth), MPFR_RNDN);
  const double error = std::abs(mpfr_get_d(d, MPFR_RNDN));
  mpfr_clear(d);
  return error;
}

TEST(Extended, WithinFourUnitsOfTheLastPlace) {
  mpfr_t x, y;
  mpfr_init2(x, 64);
  mpfr_init2(y, 200);
  Random random(5);
  for (const Row& row : rows) {
    double worst = 0;
    Extended at = 0;
    for (int i = 0; i < 4000; ++i) {
      const auto significand = static_cast<Extended>(random.next() | uint64_t{1} << 63);
      const int exponent = row.least + static_cast<int>(random.below(row.most - row.least + 1));
      const Extended size = std::ldexp(significand, exponent - 63);
      const Extended value = row.negative && random.below(2) != 0 ? -size : size;
      if (std::abs(value) > 11350 && row.most == 13) continue;
      mpfr_set_ld(x, value, MPFR_RNDN);
      row.exact(y, x, MPFR_RNDN);
      if (!mpfr_regular_p(y)) continue;
      const double error = error_of(row.ours(value), y);
      if (!(error <= worst)) worst = error, at = value;
    }
    EXPECT_LT(worst, 4) << row.name << " at " << at;
  }
  for (int i = 0; i < 4000; ++i) {
    const auto a = static_cast<Extended>(static_cast<int64_t>(random.next()));
    const auto b = static_cast<Extended>(static_cast<int64_t>(random.next()));
    mpfr_t z;
    mpfr_init2(z, 64);
    mpfr_set_ld(x, a, MPFR_RNDN);
    mpfr_set_ld(z, b, MPFR_RNDN);
    mpfr_atan2(y, x, z, MPFR_RNDN);
    EXPECT_LT(error_of(orv_qem_kernel_atan2l_scalar(a, b), y), 4) << a << ' ' << b;
    mpfr_clear(z);
  }
  mpfr_clears(x, y, nullptr);
}

}  // namespace
