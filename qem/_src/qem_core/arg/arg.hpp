// SPDX-License-Identifier: MIT
// Arg: the angle of a complex number, Atan2 of its parts.
#pragma once

#include "../atan2/atan2.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Complex, Level level>
struct Arg {
  using In = Complex;
  using Out = Part<Complex>;
  static constexpr int block = 8;
  static constexpr FunctionName<In> _QEM_THISFUNC_NAME = "Arg";
  static constexpr Environment environment = level == Level::HA && sizeof(Out) == sizeof(double)
                                                 ? environment_x87_extended
                                                 : environment_mode;

  template <class V>
  static V lane(V re, V im) {
    return angle<level>(im, re);
  }
  template <class V>
  static int rare(V re, V im) {
    return no_upper_angle(im, re);
  }

  static int slow(const In* z, Out* r) {
    *r = vatan2_cout_rare(z->im, z->re);
    return QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
