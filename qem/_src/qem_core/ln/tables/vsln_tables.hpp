// Made by: tools/make_tables.py vsln_tables.hpp
// clang-format off
#pragma once

#include "../../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

// log1p(x)/x = 1 - x/2 + vsln_ha_series[0] x^2 + vsln_ha_series[1] x^3 + vsln_ha_series[2] x^4 + vsln_ha_series[3] x^5 + vsln_ha_series[4] x^6 + vsln_ha_series[5] x^7 + vsln_ha_series[6] x^8 + vsln_ha_series[7] x^9,
// x from -1/3 to 1/3: relative error 2^-27.7
inline constexpr float vsln_ha_series[] = {
    0x1.5555060000000p-2f,
    -0x1.fffef00000000p-3f,
    0x1.99d05e0000000p-3f,
    -0x1.559de40000000p-3f,
    0x1.1ed4240000000p-3f,
    -0x1.f30e360000000p-4f,
    0x1.1e73a00000000p-3f,
    -0x1.080c9e0000000p-3f,
};

// log1p(x)/x = 1 + vsln_la_series[0] x^1 + vsln_la_series[1] x^2 + vsln_la_series[2] x^3 + vsln_la_series[3] x^4 + vsln_la_series[4] x^5 + vsln_la_series[5] x^6 + vsln_la_series[6] x^7 + vsln_la_series[7] x^8,
// x from -1/3 to 1/3: relative error 2^-25.2
inline constexpr float vsln_la_series[] = {
    -0x1.ffffd60000000p-2f,
    0x1.5554fc0000000p-2f,
    -0x1.00144e0000000p-2f,
    0x1.99d3980000000p-3f,
    -0x1.5038e40000000p-3f,
    0x1.1eaaca0000000p-3f,
    -0x1.3b0c360000000p-3f,
    0x1.1f1bb80000000p-3f,
};

// log1p(x)/x = 1 + vsln_ep_series[0] x^1 + vsln_ep_series[1] x^2 + vsln_ep_series[2] x^3 + vsln_ep_series[3] x^4,
// x from -1/3 to 1/3: relative error 2^-14.3
inline constexpr float vsln_ep_series[] = {
    -0x1.ff48d40000000p-2f,
    0x1.5468d60000000p-2f,
    -0x1.19ad960000000p-2f,
    0x1.cc56fe0000000p-3f,
};

}  // namespace ORV_TAG
}  // namespace orv
