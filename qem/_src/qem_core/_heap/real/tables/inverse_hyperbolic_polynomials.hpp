// Made by: tools/make_tables.py inverse_hyperbolic_polynomials.hpp
// clang-format off
#pragma once

#include "../../../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

// 2*atanh(sqrt(x)/2)/sqrt(x) = 1 + vdlog_ratio_la[0] x^1 + vdlog_ratio_la[1] x^2 + vdlog_ratio_la[2] x^3 + vdlog_ratio_la[3] x^4 + vdlog_ratio_la[4] x^5 + vdlog_ratio_la[5] x^6 + vdlog_ratio_la[6] x^7 + vdlog_ratio_la[7] x^8,
// x from 0x1p-60 to 0.2918: relative error 2^-54.7
inline constexpr double vdlog_ratio_la[] = {
    0x1.55555555551e5p-4,
    0x1.9999999a57838p-7,
    0x1.249248b4aeec8p-9,
    0x1.c71cb168f0e7ap-12,
    0x1.74531cf04a2f1p-14,
    0x1.3bfbc54769975p-16,
    0x1.04f96dbaee291p-18,
    0x1.4530f65832759p-20,
};

// 2*atanh(sqrt(x)/2)/sqrt(x) = 1 + vslog_ratio_ha[0] x^1 + vslog_ratio_ha[1] x^2 + vslog_ratio_ha[2] x^3 + vslog_ratio_ha[3] x^4,
// x from 0x1p-60 to 0.2918: relative error 2^-30.9
inline constexpr double vslog_ratio_ha[] = {
    0x1.55554715d8bb3p-4,
    0x1.99a8436f2f78fp-7,
    0x1.223dc1a482dffp-9,
    0x1.084b82488ea3ap-11,
};

// 2*atanh(sqrt(x)/2)/sqrt(x) = 1 + vslog_ratio_la[0] x^1 + vslog_ratio_la[1] x^2 + vslog_ratio_la[2] x^3 + vslog_ratio_la[3] x^4,
// x from 0x1p-60 to 0.2918: relative error 2^-30.9
inline constexpr float vslog_ratio_la[] = {
    0x1.5555480000000p-4f,
    0x1.99a7c20000000p-7f,
    0x1.2248900000000p-9f,
    0x1.0803920000000p-11f,
};

// 2*atanh(sqrt(x)/2)/sqrt(x) = 1 + vslog_ratio_ep[0] x^1,
// x from 0x1p-60 to 0.2918: relative error 2^-12.3
inline constexpr float vslog_ratio_ep[] = {
    0x1.624df60000000p-4f,
};

}  // namespace ORV_TAG
}  // namespace orv
