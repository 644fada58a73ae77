// Made by: tools/make_tables.py vssincos_polynomials.hpp
// clang-format off
#pragma once

#include "../../../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

// sin(pi/2*x) = vssincos_sine[0] x^1 + vssincos_sine[1] x^3 + vssincos_sine[2] x^5 + vssincos_sine[3] x^7,
// x from 1b-20 to 0.5003: relative error 2^-28.2
inline constexpr double vssincos_sine[] = {
    0x1.921fb52e4ef05p+0,
    -0x1.4abbb8ec5fc9ep-1,
    0x1.465e89c9f9cf1p-4,
    -0x1.2d9165c453a1ep-8,
};

// cos(pi/2*x) = 1 + vssincos_cosine[0] x^2 + vssincos_cosine[1] x^4 + vssincos_cosine[2] x^6 + vssincos_cosine[3] x^8,
// x from 1b-20 to 0.5003: relative error 2^-33.9
inline constexpr double vssincos_cosine[] = {
    -0x1.3bd3cc7b5aca0p+0,
    0x1.03c1dd8445135p-2,
    -0x1.55c5d70be6342p-6,
    0x1.d9d2f7f55569ep-11,
};

// sin(x) = x + vssincos_la_sine[0] x^3 + vssincos_la_sine[1] x^5 + vssincos_la_sine[2] x^7,
// x from 1b-20 to 0.7862: relative error 2^-27.9
inline constexpr float vssincos_la_sine[] = {
    -0x1.5555460000000p-3f,
    0x1.1107760000000p-7f,
    -0x1.9952da0000000p-13f,
};

// cos(x) = 1 + vssincos_la_cosine[0] x^2 + vssincos_la_cosine[1] x^4 + vssincos_la_cosine[2] x^6 + vssincos_la_cosine[3] x^8,
// x from 1b-20 to 0.7862: relative error 2^-33.0
inline constexpr float vssincos_la_cosine[] = {
    -0x1.0000000000000p-1f,
    0x1.55554a0000000p-5f,
    -0x1.6c0c280000000p-10f,
    0x1.99e8160000000p-16f,
};

// sin(x) = x + vssincos_ep_sine[0] x^3 + vssincos_ep_sine[1] x^5,
// x from 1b-20 to 0.7862: relative error 2^-19.0
inline constexpr float vssincos_ep_sine[] = {
    -0x1.5544160000000p-3f,
    0x1.0b7bac0000000p-7f,
};

// cos(x) = 1 + vssincos_ep_cosine[0] x^2 + vssincos_ep_cosine[1] x^4,
// x from 1b-20 to 0.7862: relative error 2^-16.0
inline constexpr float vssincos_ep_cosine[] = {
    -0x1.ffc0f80000000p-2f,
    0x1.4b6a4a0000000p-5f,
};

// tan(x) = x + vstan_la[0] x^3 + vstan_la[1] x^5 + vstan_la[2] x^7 + vstan_la[3] x^9 + vstan_la[4] x^11 + vstan_la[5] x^13,
// x from 1b-20 to 0.7862: relative error 2^-25.7
inline constexpr float vstan_la[] = {
    0x1.5554de0000000p-2f,
    0x1.112df60000000p-3f,
    0x1.b582a80000000p-5f,
    0x1.9088960000000p-6f,
    0x1.9540d40000000p-9f,
    0x1.341c8c0000000p-7f,
};

}  // namespace ORV_TAG
}  // namespace orv
