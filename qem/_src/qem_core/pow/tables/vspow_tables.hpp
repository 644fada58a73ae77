// Made by: tools/make_tables.py vspow_tables.hpp
// clang-format off
#pragma once

#include "../../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

// (2^x - 1)/x = vspow_ha_exp[0] + vspow_ha_exp[1] x^1 + vspow_ha_exp[2] x^2,
// x from -0x1.01p-8 to 0x1.01p-8: absolute error 2^-32.7
inline constexpr double vspow_ha_exp[] = {
    0x1.62e42fefa3729p-1,
    0x1.ebfbeedbc7e63p-3,
    0x1.c6b09b332c8efp-5,
};

inline constexpr float vspow_slope_hi = 0x1.7160000000000p+1f;  // 2 log2(e), of 12 bits
inline constexpr float vspow_slope_lo = -0x1.7135a80000000p-12f;

// Of the quarters of 2/3 to 4/3, by bit patterns.
inline constexpr float vspow_la_centers[4] = {
    0x1.7400000000000p-1f,
    0x1.b400000000000p-1f,
    0x1.0000000000000p+0f,
    0x1.3400000000000p+0f,
};

// Their base-2 logarithms: 12 bits behind the point,
inline constexpr float vspow_la_log_hi[4] = {
    -0x1.d800000000000p-2f,
    -0x1.db00000000000p-3f,
    0x0p+0f,
    0x1.1140000000000p-2f,
};

// and the rest.
inline constexpr float vspow_la_log_lo[4] = {
    0x1.93f5440000000p-14f,
    0x1.ee960e0000000p-14f,
    0x0p+0f,
    -0x1.f04a5a0000000p-15f,
};

// log2((1 + x)/(1 - x)) = 2*x/log(2) + vspow_la_log[0] x^3 + vspow_la_log[1] x^5,
// x from 1b-10 to 0.055: relative error 2^-32.6
inline constexpr float vspow_la_log[] = {
    0x1.ec70680000000p-1f,
    0x1.2859860000000p-1f,
};

// (2^x - 1)/x = vspow_la_exp[0] + vspow_la_exp[1] x^1 + vspow_la_exp[2] x^2 + vspow_la_exp[3] x^3 + vspow_la_exp[4] x^4 + vspow_la_exp[5] x^5,
// x from -0.5 to 0.5: relative error 2^-26.2
inline constexpr float vspow_la_exp[] = {
    0x1.62e4300000000p-1f,
    0x1.ebfbde0000000p-3f,
    0x1.c6af9e0000000p-5f,
    0x1.3b2c580000000p-7f,
    0x1.5ef4a20000000p-10f,
    0x1.4279180000000p-13f,
};

// log2(1 + x)/x = vspow_ep_log[0] + vspow_ep_log[1] x^1 + vspow_ep_log[2] x^2 + vspow_ep_log[3] x^3 + vspow_ep_log[4] x^4 + vspow_ep_log[5] x^5 + vspow_ep_log[6] x^6,
// x from -0x1.555556p-2 to 0x1.555556p-2: relative error 2^-19.8
inline constexpr float vspow_ep_log[] = {
    0x1.7154720000000p+0f,
    -0x1.7158b40000000p-1f,
    0x1.ec81f60000000p-2f,
    -0x1.6efd980000000p-2f,
    0x1.247b800000000p-2f,
    -0x1.1eb6e20000000p-2f,
    0x1.f8e76e0000000p-3f,
};

// (2^x - 1)/x = vspow_ep_exp[0] + vspow_ep_exp[1] x^1 + vspow_ep_exp[2] x^2,
// x from -0.5 to 0.5: relative error 2^-11.2
inline constexpr float vspow_ep_exp[] = {
    0x1.62e8440000000p-1f,
    0x1.efacd40000000p-3f,
    0x1.c6b0560000000p-5f,
};

}  // namespace ORV_TAG
}  // namespace orv
