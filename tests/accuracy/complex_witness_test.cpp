// SPDX-License-Identifier: MIT
// The references of complex functions against MPC, which has formulas of its own.
#include <gtest/gtest.h>
#include <mpc.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "families.hpp"

namespace orv_test {
namespace {

using Unary = int (*)(mpc_ptr, mpc_srcptr, mpc_rnd_t);
using Binary = int (*)(mpc_ptr, mpc_srcptr, mpc_srcptr, mpc_rnd_t);
struct Witness {
  const char* name;
  Unary unary;
  Binary binary = nullptr;
};
constexpr Witness witnesses[] = {
    {"Acos", mpc_acos},   {"Acosh", mpc_acosh},      {"Asin", mpc_asin},
    {"Asinh", mpc_asinh}, {"Atan", mpc_atan},        {"Atanh", mpc_atanh},
    {"Cos", mpc_cos},     {"Cosh", mpc_cosh},        {"Exp", mpc_exp},
    {"Ln", mpc_log},      {"Log10", mpc_log10},      {"Sin", mpc_sin},
    {"Sinh", mpc_sinh},   {"Sqrt", mpc_sqrt},        {"Tan", mpc_tan},
    {"Tanh", mpc_tanh},   {"Div", nullptr, mpc_div}, {"Pow", nullptr, mpc_pow},
};

constexpr mpfr_prec_t bits = 200;

class Number {
 public:
  Number() { mpc_init2(z_, bits); }
  explicit Number(const double* parts) : Number() {
    mpc_set_d_d(z_, parts[0], parts[1], MPC_RNDNN);
  }
  Number(const Number&) = delete;
  Number& operator=(const Number&) = delete;
  ~Number() { mpc_clear(z_); }

  mpc_t& get() { return z_; }

 private:
  mpc_t z_;
};

/// Whether two numbers are the same to some 30 bits more than a double has.
bool agree(mpfr_srcptr a, mpfr_srcptr b) {
  if (mpfr_zero_p(a) || mpfr_zero_p(b)) {
    return mpfr_zero_p(a) && mpfr_zero_p(b) && mpfr_signbit(a) == mpfr_signbit(b);
  }
  mpfr_t difference;
  mpfr_init2(difference, bits);
  mpfr_sub(difference, a, b, MPFR_RNDN);
  const bool close = mpfr_zero_p(difference) || mpfr_get_exp(difference) < mpfr_get_exp(a) - 83;
  mpfr_clear(difference);
  return close;
}

/// Numbers of usual size: next to branch points MPC takes minutes and gigabytes.
TEST(Meter, ComplexReferencesAgreeWithMpc) {
  constexpr int points = 300;
  for (const Witness& witness : witnesses) {
    const auto all = complex_functions();
    const auto f = std::ranges::find(all, std::string(witness.name), &Function::name);
    ASSERT_NE(f, all.end()) << witness.name;
    Random random(7);
    mpfr_t x[4], y[2];
    for (auto& part : x) mpfr_init2(part, 53);
    for (auto& part : y) mpfr_init2(part, bits);
    for (int i = 0; i < points; ++i) {
      double parts[4];
      for (int k = 0; k < 4; ++k) {
        parts[k] = 8 * random.unit() - 4;
        mpfr_set_d(x[k], parts[k], MPFR_RNDN);
      }
      f->exact(y, x);
      Number z, a(parts), b(parts + 2);
      if (witness.unary != nullptr) {
        witness.unary(z.get(), a.get(), MPC_RNDNN);
      } else {
        witness.binary(z.get(), a.get(), b.get(), MPC_RNDNN);
      }
      const bool same = agree(y[0], mpc_realref(z.get())) && agree(y[1], mpc_imagref(z.get()));
      EXPECT_TRUE(same) << witness.name << " at " << parts[0] << ", " << parts[1];
    }
    for (auto& part : x) mpfr_clear(part);
    for (auto& part : y) mpfr_clear(part);
  }
}

}  // namespace
}  // namespace orv_test
