// Made by: tools/make_tables.py log_gamma_tables.hpp
// clang-format off
#pragma once

namespace orv {
inline namespace ORV_TAG {

inline constexpr long double ln_root_2_pi = 0xEB3F8E4325F5A535p-64L;

// ln gamma(2 + t) / t, coefficients of t^0 and up,
// t from -1/2 to 1/2: relative error 2^-67.8
inline constexpr long double log_gamma_series[22] = {
    0x6C3B981C824F385Bp-64L,
    0xA51A6625307D3231p-65L,
    -0x89F000D2ABB03395p-67L,
    0x151322AC7D84835p-62L,
    -0xF2027E10C7B41617p-71L,
    0xBD6EB756DB65D947p-72L,
    -0x9C562E15F805F6B7p-73L,
    0x859B57C3187AF57Bp-74L,
    -0xE9FEA63FCFD12D37p-76L,
    0x3424F61F3DCD236Fp-75L,
    -0xBC6F2CA50FAEC3C3p-78L,
    0x5603731CD7E55D6Fp-78L,
    -0x4F2F430D3099C573p-79L,
    0x92CC0A64B71DE85p-77L,
    -0x446952F0F3F8F197p-81L,
    0x200AF78B175ECEF9p-81L,
    -0x791899E116102953p-84L,
    0x72564622A14E72Dp-81L,
    -0x3302A5B575E821C7p-85L,
    0xC1B3CB32431A8F3Bp-88L,
    -0x219F9AEF87D8BE9Bp-86L,
    0x40449F6A5E23E3C5p-88L,
};

// Of the logarithm of gamma (Stirling 1730): coefficients of 1/x^3, 1/x^5 and on.
inline constexpr double stirling_series[7] = {
    -0x1.6c16c16c16c17p-9,
    0x1.a01a01a01a01ap-11,
    -0x1.3813813813814p-11,
    0x1.b951e2b18ff23p-11,
    -0x1.f6ab0d9993c7dp-10,
    0x1.a41a41a41a41ap-8,
    -0x1.e4286cb0f5398p-6,
};

}  // namespace ORV_TAG
}  // namespace orv
