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
  static constexpr double smallest_normal = 0x1p-1022, largest = 0x1.FFFFFFFFFFFFFp1023;
  static constexpr double shifter = 0x1.8p52;  // leaves the nearest integer in a sum's low bits
};
template <>
struct Format<float> {
  using Bits = uint32_t;
  static constexpr int bias = 127, fraction_bits = 23;
  static constexpr float smallest_normal = 0x1p-126f, largest = 0x1.FFFFFEp127f;
  static constexpr float shifter = 0x1.8p23f;
};

}  // namespace ORV_TAG
}  // namespace orv
