// Made by: tools/make_tables.py vssincos_polynomials.hpp
// clang-format off
#pragma once

#include "../../../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

// sin(x) = x + vssincos_sine[0] x^3 + vssincos_sine[1] x^5 + vssincos_sine[2] x^7 + vssincos_sine[3] x^9,
// x from 1b-20 to 0.7854: relative error 2^-37.5
inline constexpr double vssincos_sine[] = {
    -0x1.5555554c71c66p-3,
    0x1.1111086a596c2p-7,
    -0x1.a00f7f224d58bp-13,
    0x1.6cd1f12302d85p-19,
};

// cos(x) = 1 + vssincos_cosine[0] x^2 + vssincos_cosine[1] x^4 + vssincos_cosine[2] x^6 + vssincos_cosine[3] x^8,
// x from 1b-20 to 0.7854: absolute error 2^-34.1
inline constexpr double vssincos_cosine[] = {
    -0x1.ffffffd0c5e86p-2,
    0x1.55553e1053ad1p-5,
    -0x1.6c087e80f3337p-10,
    0x1.99342e0efd14ep-16,
};

}  // namespace ORV_TAG
}  // namespace orv
