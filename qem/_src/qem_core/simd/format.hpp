// SPDX-License-Identifier: MIT
// The formats of double and float as formulas meet them.
#pragma once

#include <stdint.h>

namespace orv {
inline namespace ORV_TAG {

template <class T>
struct Format;
template <>
struct Format<double> {
  using Bits = uint64_t;
  static constexpr int bias = 1023, fraction_bits = 52;
  static constexpr double epsilon = 0x1p-52;
  static constexpr double infinity = __builtin_inf();
  static constexpr double smallest_normal = 0x1p-1022, largest = 0x1.FFFFFFFFFFFFFp1023;
  static constexpr double shifter = 0x1.8p52;  // leaves the nearest integer in a sum's low bits

  /// The word that holds sign and exponent.
  static constexpr uint32_t high_word(double x) { return __builtin_bit_cast(Bits, x) >> 32; }
};
template <>
struct Format<float> {
  using Bits = uint32_t;
  static constexpr int bias = 127, fraction_bits = 23;
  static constexpr float epsilon = 0x1p-23f;
  static constexpr float infinity = __builtin_inff();
  static constexpr float smallest_normal = 0x1p-126f, largest = 0x1.FFFFFEp127f;
  static constexpr float shifter = 0x1.8p23f;

  static constexpr uint32_t high_word(float x) { return __builtin_bit_cast(Bits, x); }
};

}  // namespace ORV_TAG
}  // namespace orv
