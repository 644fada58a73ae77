// SPDX-License-Identifier: MIT
// MPFR numbers with operators, for references that take several steps.
#pragma once

#include <mpfr.h>

namespace orv_test {

/// Enough bits that nothing which cancels between doubles of like size is missed.
inline constexpr mpfr_prec_t big_bits = 320;

class Big {
 public:
  Big(double x = 0) {  // NOLINT: a plain number is one, too
    mpfr_init2(value_, big_bits);
    mpfr_set_d(value_, x, MPFR_RNDN);
  }
  explicit Big(mpfr_srcptr x) : Big() { mpfr_set(value_, x, MPFR_RNDN); }
  Big(const Big& x) : Big(x.value_) {}
  Big& operator=(const Big& x) {
    mpfr_set(value_, x.value_, MPFR_RNDN);
    return *this;
  }
  ~Big() { mpfr_clear(value_); }

  mpfr_srcptr get() const { return value_; }
  bool negative() const { return mpfr_signbit(value_) != 0; }
  double get_d() const { return mpfr_get_d(value_, MPFR_RNDN); }
  bool zero() const { return mpfr_zero_p(value_) != 0; }

  Big operator-() const { return by<mpfr_neg>(); }
  friend Big operator+(const Big& a, const Big& b) { return with<mpfr_add>(a, b); }
  friend Big operator-(const Big& a, const Big& b) { return with<mpfr_sub>(a, b); }
  friend Big operator*(const Big& a, const Big& b) { return with<mpfr_mul>(a, b); }
  friend Big operator/(const Big& a, const Big& b) { return with<mpfr_div>(a, b); }

  /// f of this number, f of two of them; f is a function of MPFR.
  template <auto f>
  Big by() const {
    Big y;
    f(y.value_, value_, MPFR_RNDN);
    return y;
  }
  template <auto f>
  static Big with(const Big& a, const Big& b) {
    Big y;
    f(y.value_, a.value_, b.value_, MPFR_RNDN);
    return y;
  }

 private:
  mpfr_t value_;
};

inline Big with_sign(const Big& size, const Big& sign) {
  return size.negative() == sign.negative() ? size : -size;
}

}  // namespace orv_test
