// Made by: tools/make_tables.py vdtan_tables.hpp
// clang-format off
#pragma once

#include "../../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

// tan(x) = x + vdtan_tangent[0] x^3 + vdtan_tangent[1] x^5 + vdtan_tangent[2] x^7,
// x from 1b-20 to 0.006135923151542565: relative error 2^-71.0
inline constexpr double vdtan_tangent[] = {
    0x1.5555555555559p-2,
    0x1.1111110fe87f4p-3,
    0x1.ba1eeb3fe1c92p-5,
};

// tan(x) = x + vdtan_ep_tangent[0] x^3,
// x from 1b-20 to 0.006135923151542565: relative error 2^-34.8
inline constexpr double vdtan_ep_tangent[] = {
    0x1.55566c6b659e3p-2,
};

}  // namespace ORV_TAG
}  // namespace orv
