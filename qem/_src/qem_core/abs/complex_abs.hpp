// SPDX-License-Identifier: MIT
// Abs of complex numbers: Hypot of the parts, at HA.
#pragma once

#include "../hypot/hypot.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Floats go through double, where all squares are in range.
struct CAbs {
  using In = QemComplexFloat;
  using Out = float;
  using Work = double;
  static constexpr int block = 8;
  static constexpr FunctionName<In> _QEM_THISFUNC_NAME = "Abs";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static V lane(V re, V im) {
    return square_root(re * re + im * im);
  }
  template <class V>
  static int rare(V re, V im) {
    using F = Format<double>;
    return high_word_above(absolute(re) + absolute(im), F::high_word(F::largest));
  }

  static int slow(const In* z, float* r) { return vshypot_cout_rare(&z->re, &z->im, r); }
};

struct ZAbs {
  using In = QemComplexDouble;
  using Out = double;
  static constexpr int block = 4;
  static constexpr FunctionName<In> _QEM_THISFUNC_NAME = "Abs";
  static constexpr Environment environment = environment_x87_extended;
  using Parts = Hypot<double, Level::HA>;

  template <class V>
  static V lane(V re, V im) {
    return Parts::lane(re, im);
  }
  template <class V>
  static int rare(V re, V im) {
    return Parts::rare(re, im);
  }

  static int slow(const In* z, double* r) { return Parts::slow(&z->re, &z->im, r); }
};

}  // namespace ORV_TAG
}  // namespace orv
