// Made by: tools/make_tables.py arcsine_polynomials.hpp
// clang-format off
#pragma once

#include "../../../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

// 2*asin(x/2) = x + x^3/32 + vdarcsine_ha[0] x^3 + vdarcsine_ha[1] x^5 + vdarcsine_ha[2] x^7 + vdarcsine_ha[3] x^9 + vdarcsine_ha[4] x^11 + vdarcsine_ha[5] x^13 + vdarcsine_ha[6] x^15 + vdarcsine_ha[7] x^17 + vdarcsine_ha[8] x^19 + vdarcsine_ha[9] x^21 + vdarcsine_ha[10] x^23 + vdarcsine_ha[11] x^25 + vdarcsine_ha[12] x^27,
// x from 1b-20 to 1: relative error 2^-59.9
inline constexpr double vdarcsine_ha[] = {
    0x1.55555555555dcp-7,
    0x1.333333332e133p-8,
    0x1.6db6db721247bp-11,
    0x1.f1c71a95002f6p-14,
    0x1.6e8bdedebfb72p-16,
    0x1.1c49f077d2818p-18,
    0x1.ca1f8af264013p-21,
    0x1.75859da822552p-23,
    0x1.613c1e9096db8p-25,
    0x1.e5fbe63872ca6p-29,
    0x1.639a8a1bbdd02p-28,
    -0x1.57fad21f83513p-30,
    0x1.0b45ea63b1699p-31,
};

// 2*asin(x/2) = x + vdarcsine_la[0] x^3 + vdarcsine_la[1] x^5 + vdarcsine_la[2] x^7 + vdarcsine_la[3] x^9 + vdarcsine_la[4] x^11 + vdarcsine_la[5] x^13 + vdarcsine_la[6] x^15 + vdarcsine_la[7] x^17 + vdarcsine_la[8] x^19 + vdarcsine_la[9] x^21 + vdarcsine_la[10] x^23 + vdarcsine_la[11] x^25,
// x from 1b-20 to 1: relative error 2^-55.9
inline constexpr double vdarcsine_la[] = {
    0x1.5555555555390p-5,
    0x1.333333336e80fp-8,
    0x1.6db6db427a4f8p-11,
    0x1.f1c72c38fb342p-14,
    0x1.6e89f440197a8p-16,
    0x1.1c6be1a68770cp-18,
    0x1.c6fdc1aaa597cp-21,
    0x1.8ec2fca60060dp-23,
    0x1.abcf5cd7f156ep-26,
    0x1.3ff4a9908c2fbp-26,
    -0x1.09d3283359a11p-28,
    0x1.056d6c811e11dp-29,
};

// 2*asin(x/2) = x + vdarcsine_ep[0] x^3 + vdarcsine_ep[1] x^5 + vdarcsine_ep[2] x^7 + vdarcsine_ep[3] x^9 + vdarcsine_ep[4] x^11,
// x from 1b-20 to 1: relative error 2^-27.6
inline constexpr double vdarcsine_ep[] = {
    0x1.5555c88342cb0p-5,
    0x1.3301e4681bb69p-8,
    0x1.747e4a38c1a72p-11,
    0x1.8c283c049ffc6p-14,
    0x1.596d28a9d13afp-15,
};

// 2*asin(x/2) = x + vsarcsine_ha[0] x^3 + vsarcsine_ha[1] x^5 + vsarcsine_ha[2] x^7 + vsarcsine_ha[3] x^9 + vsarcsine_ha[4] x^11 + vsarcsine_ha[5] x^13,
// x from 1b-20 to 1: relative error 2^-31.8
inline constexpr double vsarcsine_ha[] = {
    0x1.55554c5fb0496p-5,
    0x1.33387c9d34d7cp-8,
    0x1.6caed2156800ap-11,
    0x1.0491a13d1fac7p-13,
    0x1.d91fa335d8045p-17,
    0x1.3355c1d8ad748p-17,
};

// 2*asin(x/2) = x + vsarcsine_la[0] x^3 + vsarcsine_la[1] x^5 + vsarcsine_la[2] x^7 + vsarcsine_la[3] x^9 + vsarcsine_la[4] x^11,
// x from 1b-20 to 1: relative error 2^-27.6
inline constexpr float vsarcsine_la[] = {
    0x1.5555c80000000p-5f,
    0x1.3302060000000p-8f,
    0x1.747b720000000p-11f,
    0x1.8c415a0000000p-14f,
    0x1.5959aa0000000p-15f,
};

// 2*asin(x/2) = x + vsarcsine_ep[0] x^3 + vsarcsine_ep[1] x^5,
// x from 1b-20 to 1: relative error 2^-14.7
inline constexpr float vsarcsine_ep[] = {
    0x1.5209ce0000000p-5f,
    0x1.823f500000000p-8f,
};

}  // namespace ORV_TAG
}  // namespace orv
