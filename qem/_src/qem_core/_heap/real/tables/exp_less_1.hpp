// Made by: tools/make_tables.py exp_less_1.hpp
// clang-format off
#pragma once

#include "../../../simd/lookup.hpp"

namespace orv {
inline namespace ORV_TAG {

// expm1(x) = x + vdexp_less_1_la[0] x^2 + vdexp_less_1_la[1] x^3 + vdexp_less_1_la[2] x^4 + vdexp_less_1_la[3] x^5 + vdexp_less_1_la[4] x^6,
// x from -1.0001*log(2)/(2*64) to 1.0001*log(2)/(2*64): relative error 2^-62.2
inline constexpr double vdexp_less_1_la[] = {
    0x1.0000000000000p-1,
    0x1.5555555554afcp-3,
    0x1.55555555553fcp-5,
    0x1.1111227792fdbp-7,
    0x1.6c16ceb1bc877p-10,
};

// expm1(x) = x + vdexp_less_1_ep[0] x^2 + vdexp_less_1_ep[1] x^3,
// x from -1.0001*log(2)/(2*64) to 1.0001*log(2)/(2*64): relative error 2^-29.2
inline constexpr double vdexp_less_1_ep[] = {
    0x1.00001ebf30e76p-1,
    0x1.5555619e68312p-3,
};

// expm1(x) = x + vsexp_less_1_ha[0] x^2 + vsexp_less_1_ha[1] x^3 + vsexp_less_1_ha[2] x^4,
// x from -1.0001*log(2)/(2*64) to 1.0001*log(2)/(2*64): relative error 2^-39.6
inline constexpr double vsexp_less_1_ha[] = {
    0x1.00000000022cbp-1,
    0x1.55557082a2ce8p-3,
    0x1.55554dd8b3f7fp-5,
};

// expm1(x) = x + vsexp_less_1_la[0] x^2 + vsexp_less_1_la[1] x^3 + vsexp_less_1_la[2] x^4 + vsexp_less_1_la[3] x^5 + vsexp_less_1_la[4] x^6,
// x from -1.0001*log(2)/2 to 1.0001*log(2)/2: relative error 2^-26.1
inline constexpr float vsexp_less_1_la[] = {
    0x1.fffffe0000000p-2f,
    0x1.5554b00000000p-3f,
    0x1.5557160000000p-5f,
    0x1.1227920000000p-7f,
    0x1.6b73460000000p-10f,
};

// expm1(x) = x + vsexp_less_1_ep[0] x^2 + vsexp_less_1_ep[1] x^3 + vsexp_less_1_ep[2] x^4,
// x from -1.0001*log(2)/2 to 1.0001*log(2)/2: relative error 2^-15.6
inline constexpr float vsexp_less_1_ep[] = {
    0x1.00022c0000000p-1f,
    0x1.5708600000000p-3f,
    0x1.54ddbc0000000p-5f,
};

}  // namespace ORV_TAG
}  // namespace orv
