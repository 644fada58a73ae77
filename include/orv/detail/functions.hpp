// Made by tools/make_cpp_functions.py from the lists in qem/_bt_gen_ia32; do not edit.
//
// For each function an object that is called: its form tells how, the table which kernel serves
// elements of a type, the facts what it computes, when it reports, and its error at LA, HA, EP.
// clang-format off
#pragma once

#include <orv/math.hpp>

namespace orv {

/// absolute value
/// size of a complex number, without intermediate overflow or underflow
inline constexpr struct abs_function : detail::one_argument<abs_function> {
  static constexpr std::string_view name = "abs";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sAbs_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dAbs_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cAbs_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zAbs_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"absolute value", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"absolute value", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"size of a complex number, without intermediate overflow or underflow", {{}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"size of a complex number, without intermediate overflow or underflow", {{}}, {{0.501, 0.501, 0.501}}}; }
} abs;

/// arccosine, with relative accuracy up to its zero at 1
/// arc cosine, Re from 0 to pi; cuts from -inf to -1 and from 1 to inf
inline constexpr struct acos_function : detail::one_argument<acos_function> {
  static constexpr std::string_view name = "acos";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sAcos_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dAcos_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cAcos_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zAcos_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"arccosine, with relative accuracy up to its zero at 1", {{{1, "argument outside -1 to 1"}}}, {{1.26, 0.505, 613}}}; }
  static constexpr function_facts facts_of(const double*) { return {"arccosine, with relative accuracy up to its zero at 1", {{{1, "argument outside -1 to 1"}}}, {{1.22, 0.572, 4.37e+07}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"arc cosine, Re from 0 to pi; cuts from -inf to -1 and from 1 to inf", {{}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"arc cosine, Re from 0 to pi; cuts from -inf to -1 and from 1 to inf", {{}}, {{0.503, 0.503, 0.503}}}; }
} acos;

/// inverse hyperbolic cosine
/// inverse hyperbolic cosine, Re not negative; cut from -inf to 1
inline constexpr struct acosh_function : detail::one_argument<acosh_function> {
  static constexpr std::string_view name = "acosh";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sAcosh_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dAcosh_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cAcosh_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zAcosh_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"inverse hyperbolic cosine", {{{1, "argument below 1"}}}, {{1.91, 0.51, 2.47e+03}}}; }
  static constexpr function_facts facts_of(const double*) { return {"inverse hyperbolic cosine", {{{1, "argument below 1"}}}, {{2.15, 0.502, 2.15}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"inverse hyperbolic cosine, Re not negative; cut from -inf to 1", {{}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"inverse hyperbolic cosine, Re not negative; cut from -inf to 1", {{}}, {{0.503, 0.503, 0.503}}}; }
} acosh;

/// sum; under overlap as if element by element, ascending
/// complex sum
inline constexpr struct add_function : detail::two_arguments<add_function> {
  static constexpr std::string_view name = "add";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sAdd_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dAdd_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cAdd_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zAdd_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"sum; under overlap as if element by element, ascending", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"sum; under overlap as if element by element, ascending", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex sum", {{{3, "overflow of finite arguments without a zero part"}}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex sum", {{{3, "overflow of finite arguments without a zero part"}}}, {{0, 0, 0}}}; }
} add;

/// angle of a complex number, from -pi to pi, zeros by their signs
inline constexpr struct arg_function : detail::one_argument<arg_function> {
  static constexpr std::string_view name = "arg";
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cArg_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zArg_ttab; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"angle of a complex number, from -pi to pi, zeros by their signs", {{}}, {{2.14, 0.55, 298}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"angle of a complex number, from -pi to pi, zeros by their signs", {{}}, {{2.27, 0.541, 2.27}}}; }
} arg;

/// arcsine
/// arc sine; cuts from -inf to -1 and from 1 to inf
inline constexpr struct asin_function : detail::one_argument<asin_function> {
  static constexpr std::string_view name = "asin";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sAsin_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dAsin_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cAsin_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zAsin_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"arcsine", {{{1, "argument outside -1 to 1"}}}, {{2.41, 0.505, 664}}}; }
  static constexpr function_facts facts_of(const double*) { return {"arcsine", {{{1, "argument outside -1 to 1"}}}, {{2.32, 0.59, 4.58e+07}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"arc sine; cuts from -inf to -1 and from 1 to inf", {{}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"arc sine; cuts from -inf to -1 and from 1 to inf", {{}}, {{0.503, 0.503, 0.503}}}; }
} asin;

/// inverse hyperbolic sine
/// inverse hyperbolic sine; cuts along the imaginary axis beyond i and -i
inline constexpr struct asinh_function : detail::one_argument<asinh_function> {
  static constexpr std::string_view name = "asinh";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sAsinh_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dAsinh_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cAsinh_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zAsinh_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"inverse hyperbolic sine", {{}}, {{1.95, 0.51, 2.47e+03}}}; }
  static constexpr function_facts facts_of(const double*) { return {"inverse hyperbolic sine", {{}}, {{2.1, 0.502, 2.1}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"inverse hyperbolic sine; cuts along the imaginary axis beyond i and -i", {{}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"inverse hyperbolic sine; cuts along the imaginary axis beyond i and -i", {{}}, {{0.503, 0.503, 0.503}}}; }
} asinh;

/// arctangent
/// arc tangent; cuts along the imaginary axis beyond i and -i
inline constexpr struct atan_function : detail::one_argument<atan_function> {
  static constexpr std::string_view name = "atan";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sAtan_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dAtan_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cAtan_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zAtan_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"arctangent", {{}}, {{2.14, 0.556, 297}}}; }
  static constexpr function_facts facts_of(const double*) { return {"arctangent", {{}}, {{1.46, 0.543, 1.76e+08}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"arc tangent; cuts along the imaginary axis beyond i and -i", {{}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"arc tangent; cuts along the imaginary axis beyond i and -i", {{}}, {{0.502, 0.502, 0.502}}}; }
} atan;

/// angle of the point (b, a), from -pi to pi, by the signs of zeros as well
inline constexpr struct atan2_function : detail::two_arguments<atan2_function> {
  static constexpr std::string_view name = "atan2";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sAtan2_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dAtan2_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"angle of the point (b, a), from -pi to pi, by the signs of zeros as well", {{}}, {{2.14, 0.55, 298}}}; }
  static constexpr function_facts facts_of(const double*) { return {"angle of the point (b, a), from -pi to pi, by the signs of zeros as well", {{}}, {{2.27, 0.541, 1.76e+08}}}; }
} atan2;

/// inverse hyperbolic tangent
/// inverse hyperbolic tangent; cuts from -inf to -1 and from 1 to inf
inline constexpr struct atanh_function : detail::one_argument<atanh_function> {
  static constexpr std::string_view name = "atanh";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sAtanh_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dAtanh_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cAtanh_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zAtanh_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"inverse hyperbolic tangent", {{{1, "argument beyond 1 in magnitude"}, {2, "argument 1 or -1"}}}, {{1.52, 0.51, 2.47e+03}}}; }
  static constexpr function_facts facts_of(const double*) { return {"inverse hyperbolic tangent", {{{1, "argument beyond 1 in magnitude"}, {2, "argument 1 or -1"}}}, {{1.75, 0.502, 1.75}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"inverse hyperbolic tangent; cuts from -inf to -1 and from 1 to inf", {{}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"inverse hyperbolic tangent; cuts from -inf to -1 and from 1 to inf", {{}}, {{0.502, 0.502, 0.502}}}; }
} atanh;

/// cos(x) + i sin(x) of a real x
inline constexpr struct cis_function : detail::one_argument<cis_function> {
  static constexpr std::string_view name = "cis";
  static constexpr auto& table(const float*) { return orv_qem_kernel_cCIS_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_zCIS_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"cos(x) + i sin(x) of a real x", {{{1, "infinite argument"}}}, {{0.555, 0.555, 0.555}}}; }
  static constexpr function_facts facts_of(const double*) { return {"cos(x) + i sin(x) of a real x", {{{1, "infinite argument"}}}, {{0.507, 0.507, 0.507}}}; }
} cis;

/// cube root, with the sign of x
inline constexpr struct cbrt_function : detail::one_argument<cbrt_function> {
  static constexpr std::string_view name = "cbrt";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sCbrt_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dCbrt_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"cube root, with the sign of x", {{}}, {{1.01, 0.517, 355}}}; }
  static constexpr function_facts facts_of(const double*) { return {"cube root, with the sign of x", {{}}, {{1.54, 0.515, 1.54}}}; }
} cbrt;

/// distribution function of the normal law, erfc(-x/sqrt(2))/2
inline constexpr struct cdfnorm_function : detail::one_argument<cdfnorm_function> {
  static constexpr std::string_view name = "cdfnorm";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sCdfNorm_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dCdfNorm_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"distribution function of the normal law, erfc(-x/sqrt(2))/2", {{{4, "zero result of a finite argument"}}}, {{2.83, 0.51, 2.5e+03}}}; }
  static constexpr function_facts facts_of(const double*) { return {"distribution function of the normal law, erfc(-x/sqrt(2))/2", {{{4, "zero result of a finite argument"}}}, {{2, 0.61, 3.6e+05}}}; }
} cdfnorm;

/// quantile of the standard normal distribution, where CdfNorm is x
inline constexpr struct cdfnorminv_function : detail::one_argument<cdfnorminv_function> {
  static constexpr std::string_view name = "cdfnorminv";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sCdfNormInv_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dCdfNormInv_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"quantile of the standard normal distribution, where CdfNorm is x", {{{1, "argument below 0 or above 1"}, {2, "argument 0 or 1"}}}, {{2.4, 0.547, 2.4}}}; }
  static constexpr function_facts facts_of(const double*) { return {"quantile of the standard normal distribution, where CdfNorm is x", {{{1, "argument below 0 or above 1"}, {2, "argument 0 or 1"}}}, {{2.4, 0.549, 4.52e+07}}}; }
} cdfnorminv;

/// least whole number that is not below x
inline constexpr struct ceil_function : detail::one_argument<ceil_function> {
  static constexpr std::string_view name = "ceil";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sCeil_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dCeil_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"least whole number that is not below x", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"least whole number that is not below x", {{}}, {{0, 0, 0}}}; }
} ceil;

/// complex conjugate, an exact bit operation
inline constexpr struct conj_function : detail::one_argument<conj_function> {
  static constexpr std::string_view name = "conj";
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cConj_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zConj_ttab; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex conjugate, an exact bit operation", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex conjugate, an exact bit operation", {{}}, {{0, 0, 0}}}; }
} conj;

/// cosine, of any finite argument
/// complex cosine
inline constexpr struct cos_function : detail::one_argument<cos_function> {
  static constexpr std::string_view name = "cos";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sCos_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dCos_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cCos_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zCos_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"cosine, of any finite argument", {{{1, "infinite argument"}}}, {{1.7, 0.555, 975}}}; }
  static constexpr function_facts facts_of(const double*) { return {"cosine, of any finite argument", {{{1, "infinite argument"}}}, {{2.62, 0.507, 1.3e+05}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex cosine", {{{3, "overflow of a finite argument"}}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex cosine", {{{3, "overflow of a finite argument"}}}, {{0.503, 0.503, 0.503}}}; }
} cos;

/// hyperbolic cosine
/// complex hyperbolic cosine
inline constexpr struct cosh_function : detail::one_argument<cosh_function> {
  static constexpr std::string_view name = "cosh";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sCosh_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dCosh_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cCosh_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zCosh_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"hyperbolic cosine", {{{3, "overflow"}}}, {{1.48, 0.501, 103}}}; }
  static constexpr function_facts facts_of(const double*) { return {"hyperbolic cosine", {{{3, "overflow"}}}, {{1.52, 0.53, 8.1e+04}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex hyperbolic cosine", {{{3, "overflow of a finite argument"}}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex hyperbolic cosine", {{{3, "overflow of a finite argument"}}}, {{0.503, 0.503, 0.503}}}; }
} cosh;

/// quotient
/// complex quotient; of zero divisors and infinities as C99, annex G, tells
inline constexpr struct div_function : detail::two_arguments<div_function> {
  static constexpr std::string_view name = "div";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sDiv_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dDiv_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cDiv_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zDiv_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"quotient", {{{2, "zero divisor"}}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"quotient", {{{2, "zero divisor"}}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex quotient; of zero divisors and infinities as C99, annex G, tells", {{{3, "overflow of finite arguments without a zero part, not at EP"}}}, {{0.501, 0.501, 2.15}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex quotient; of zero divisors and infinities as C99, annex G, tells", {{{3, "overflow of finite arguments without a zero part, not at EP"}}}, {{0.503, 0.503, 2.23}}}; }
} div;

/// error function, odd to the bit
inline constexpr struct erf_function : detail::one_argument<erf_function> {
  static constexpr std::string_view name = "erf";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sErf_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dErf_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"error function, odd to the bit", {{}}, {{2.46, 0.51, 600}}}; }
  static constexpr function_facts facts_of(const double*) { return {"error function, odd to the bit", {{}}, {{2.05, 0.52, 3.7e+07}}}; }
} erf;

/// inverse of the error function
inline constexpr struct erfinv_function : detail::one_argument<erfinv_function> {
  static constexpr std::string_view name = "erfinv";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sErfInv_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dErfInv_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"inverse of the error function", {{{1, "argument below -1 or above 1"}, {2, "argument -1 or 1"}}}, {{2.25, 0.549, 2.25}}}; }
  static constexpr function_facts facts_of(const double*) { return {"inverse of the error function", {{{1, "argument below -1 or above 1"}, {2, "argument -1 or 1"}}}, {{2.1, 0.549, 6.39e+07}}}; }
} erfinv;

/// 1 - erf(x), accurate where it is small
inline constexpr struct erfc_function : detail::one_argument<erfc_function> {
  static constexpr std::string_view name = "erfc";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sErfc_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dErfc_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"1 - erf(x), accurate where it is small", {{{4, "denormal or zero result of a finite argument"}}}, {{2.95, 0.51, 4.1e+03}}}; }
  static constexpr function_facts facts_of(const double*) { return {"1 - erf(x), accurate where it is small", {{{4, "denormal or zero result of a finite argument"}}}, {{2, 0.6, 2}}}; }
} erfc;

/// inverse of the complementary error function
inline constexpr struct erfcinv_function : detail::one_argument<erfcinv_function> {
  static constexpr std::string_view name = "erfcinv";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sErfcInv_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dErfcInv_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"inverse of the complementary error function", {{{1, "argument below 0 or above 2"}, {2, "argument 0 or 2"}}}, {{2.64, 0.549, 2.64}}}; }
  static constexpr function_facts facts_of(const double*) { return {"inverse of the complementary error function", {{{1, "argument below 0 or above 2"}, {2, "argument 0 or 2"}}}, {{2.7, 0.549, 6.39e+07}}}; }
} erfcinv;

/// e^x
/// complex exponential
inline constexpr struct exp_function : detail::one_argument<exp_function> {
  static constexpr std::string_view name = "exp";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sExp_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dExp_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cExp_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zExp_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"e^x", {{{3, "overflow"}, {4, "denormal or zero result"}}}, {{1.97, 0.569, 123}}}; }
  static constexpr function_facts facts_of(const double*) { return {"e^x", {{{3, "overflow"}, {4, "denormal or zero result"}}}, {{3.17, 0.527, 5.97e+07}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex exponential", {{{3, "overflow of a finite argument"}}}, {{2.12, 0.56, 2.12}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex exponential", {{{3, "overflow of a finite argument"}}}, {{0.525, 0.525, 0.525}}}; }
} exp;

/// e^x - 1, accurate near 0
inline constexpr struct expm1_function : detail::one_argument<expm1_function> {
  static constexpr std::string_view name = "expm1";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sExpm1_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dExpm1_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"e^x - 1, accurate near 0", {{{3, "overflow"}, {4, "denormal result"}}}, {{0.559, 0.559, 0.559}}}; }
  static constexpr function_facts facts_of(const double*) { return {"e^x - 1, accurate near 0", {{{3, "overflow"}, {4, "denormal result"}}}, {{1.95, 0.608, 5.19e+06}}}; }
} expm1;

/// greatest whole number that is not above x
inline constexpr struct floor_function : detail::one_argument<floor_function> {
  static constexpr std::string_view name = "floor";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sFloor_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dFloor_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"greatest whole number that is not above x", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"greatest whole number that is not above x", {{}}, {{0, 0, 0}}}; }
} floor;

/// sqrt(a^2 + b^2), infinite beside an infinity even of NaN
inline constexpr struct hypot_function : detail::two_arguments<hypot_function> {
  static constexpr std::string_view name = "hypot";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sHypot_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dHypot_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"sqrt(a^2 + b^2), infinite beside an infinity even of NaN", {{}}, {{1.16, 0.501, 1.16}}}; }
  static constexpr function_facts facts_of(const double*) { return {"sqrt(a^2 + b^2), infinite beside an infinity even of NaN", {{}}, {{1.17, 0.501, 1.17}}}; }
} hypot;

/// reciprocal
inline constexpr struct inv_function : detail::one_argument<inv_function> {
  static constexpr std::string_view name = "inv";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sInv_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dInv_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"reciprocal", {{{2, "zero argument"}}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"reciprocal", {{{2, "zero argument"}}}, {{0, 0, 0}}}; }
} inv;

/// reciprocal of the cube root
inline constexpr struct invcbrt_function : detail::one_argument<invcbrt_function> {
  static constexpr std::string_view name = "invcbrt";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sInvCbrt_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dInvCbrt_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"reciprocal of the cube root", {{{2, "zero argument"}}}, {{1.01, 0.533, 883}}}; }
  static constexpr function_facts facts_of(const double*) { return {"reciprocal of the cube root", {{{2, "zero argument"}}}, {{0.537, 0.537, 0.537}}}; }
} invcbrt;

/// 1/sqrt(x)
inline constexpr struct invsqrt_function : detail::one_argument<invsqrt_function> {
  static constexpr std::string_view name = "invsqrt";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sInvSqrt_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dInvSqrt_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"1/sqrt(x)", {{{1, "negative argument"}, {2, "zero"}}}, {{1.5, 0.503, 1.58e+03}}}; }
  static constexpr function_facts facts_of(const double*) { return {"1/sqrt(x)", {{{1, "negative argument"}, {2, "zero"}}}, {{1.5, 0.501, 1.5}}}; }
} invsqrt;

/// (scalea a + shifta)/(scaleb b + shiftb); with scaleb 0 by way of 1/shiftb, within 1.5 ulp
inline constexpr struct linearfrac_function : detail::linear_fraction<linearfrac_function> {
  static constexpr std::string_view name = "linearfrac";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sLinearFrac_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dLinearFrac_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"(scalea a + shifta)/(scaleb b + shiftb); with scaleb 0 by way of 1/shiftb, within 1.5 ulp", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"(scalea a + shifta)/(scaleb b + shiftb); with scaleb 0 by way of 1/shiftb, within 1.5 ulp", {{}}, {{0, 0, 0}}}; }
} linearfrac;

/// natural logarithm
/// complex natural logarithm; cut from -inf to 0
inline constexpr struct ln_function : detail::one_argument<ln_function> {
  static constexpr std::string_view name = "ln";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sLn_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dLn_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cLn_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zLn_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"natural logarithm", {{{1, "negative argument"}, {2, "zero"}}}, {{1.23, 0.718, 842}}}; }
  static constexpr function_facts facts_of(const double*) { return {"natural logarithm", {{{1, "negative argument"}, {2, "zero"}}}, {{1.59, 0.501, 2.1e+06}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex natural logarithm; cut from -inf to 0", {{}}, {{2.02, 0.55, 620}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex natural logarithm; cut from -inf to 0", {{}}, {{2.27, 0.55, 9.5e+07}}}; }
} ln;

/// decimal logarithm
/// complex decimal logarithm; cut from -inf to 0
inline constexpr struct log10_function : detail::one_argument<log10_function> {
  static constexpr std::string_view name = "log10";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sLog10_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dLog10_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cLog10_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zLog10_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"decimal logarithm", {{{1, "negative argument"}, {2, "zero"}}}, {{2.28, 0.51, 462}}}; }
  static constexpr function_facts facts_of(const double*) { return {"decimal logarithm", {{{1, "negative argument"}, {2, "zero"}}}, {{1.93, 0.503, 1.93}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex decimal logarithm; cut from -inf to 0", {{}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex decimal logarithm; cut from -inf to 0", {{}}, {{0.506, 0.506, 0.506}}}; }
} log10;

/// ln(1 + x), accurate near 0
inline constexpr struct log1p_function : detail::one_argument<log1p_function> {
  static constexpr std::string_view name = "log1p";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sLog1p_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dLog1p_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"ln(1 + x), accurate near 0", {{{1, "argument below -1"}, {2, "argument -1"}}}, {{1.64, 0.576, 340}}}; }
  static constexpr function_facts facts_of(const double*) { return {"ln(1 + x), accurate near 0", {{{1, "argument below -1"}, {2, "argument -1"}}}, {{1.7, 0.501, 2.1e+06}}}; }
} log1p;

/// integral part towards zero and fractional part, both with x's sign
inline constexpr struct modf_function : detail::two_results<modf_function> {
  static constexpr std::string_view name = "modf";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sModf_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dModf_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"integral part towards zero and fractional part, both with x's sign", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"integral part towards zero and fractional part, both with x's sign", {{}}, {{0, 0, 0}}}; }
} modf;

/// product; under overlap as if element by element, ascending
/// complex product
inline constexpr struct mul_function : detail::two_arguments<mul_function> {
  static constexpr std::string_view name = "mul";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sMul_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dMul_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cMul_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zMul_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"product; under overlap as if element by element, ascending", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"product; under overlap as if element by element, ascending", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex product", {{{3, "overflow of finite arguments without a zero part, not at EP"}}}, {{0.501, 0.501, 1.0}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex product", {{{3, "overflow of finite arguments without a zero part, not at EP"}}}, {{0.501, 0.501, 1.0}}}; }
} mul;

/// a times the conjugate of b
inline constexpr struct mulbyconj_function : detail::two_arguments<mulbyconj_function> {
  static constexpr std::string_view name = "mulbyconj";
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cMulByConj_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zMulByConj_ttab; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"a times the conjugate of b", {{{3, "overflow of finite arguments without a zero part, not at EP"}}}, {{0.501, 0.501, 1.0}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"a times the conjugate of b", {{{3, "overflow of finite arguments without a zero part, not at EP"}}}, {{0.501, 0.501, 1.0}}}; }
} mulbyconj;

/// whole number by the caller's rounding mode, inexact flag as before
inline constexpr struct nearbyint_function : detail::one_argument<nearbyint_function> {
  static constexpr std::string_view name = "nearbyint";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sNearbyInt_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dNearbyInt_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"whole number by the caller's rounding mode, inexact flag as before", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"whole number by the caller's rounding mode, inexact flag as before", {{}}, {{0, 0, 0}}}; }
} nearbyint;

/// elements at a distance, which may be 0 or negative, to a dense vector
inline constexpr struct packi_function : detail::strided_pack<packi_function> {
  static constexpr std::string_view name = "packi";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sPackI_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dPackI_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"elements at a distance, which may be 0 or negative, to a dense vector", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"elements at a distance, which may be 0 or negative, to a dense vector", {{}}, {{0, 0, 0}}}; }
} packi;

/// elements whose mask is not 0, to a dense vector
inline constexpr struct packm_function : detail::masked_pack<packm_function> {
  static constexpr std::string_view name = "packm";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sPackM_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dPackM_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"elements whose mask is not 0, to a dense vector", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"elements whose mask is not 0, to a dense vector", {{}}, {{0, 0, 0}}}; }
} packm;

/// elements at places told by indices, to a dense vector
inline constexpr struct packv_function : detail::indexed_pack<packv_function> {
  static constexpr std::string_view name = "packv";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sPackV_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dPackV_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"elements at places told by indices, to a dense vector", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"elements at places told by indices, to a dense vector", {{}}, {{0, 0, 0}}}; }
} packv;

/// a^b
/// a^b as e^(b ln a), 0 and infinities by what these make of them
inline constexpr struct pow_function : detail::two_arguments<pow_function> {
  static constexpr std::string_view name = "pow";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sPow_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dPow_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cPow_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zPow_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"a^b", {{{1, "zero to a negative power, finite negative to a fraction; over- and underflow are silent"}}}, {{1.4, 0.501, 3.37e+03}}}; }
  static constexpr function_facts facts_of(const double*) { return {"a^b", {{{1, "zero to a negative power, finite negative to a fraction; over- and underflow are silent"}}}, {{1.24, 0.56, 1.7e+07}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"a^b as e^(b ln a), 0 and infinities by what these make of them", {{{3, "overflow of finite arguments"}}}, {{0.71, 0.71, 0.71}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"a^b as e^(b ln a), 0 and infinities by what these make of them", {{{3, "overflow of finite arguments"}}}, {{0.71, 0.71, 0.71}}}; }
} pow;

/// x^(2/3), the square of the cube root, of numbers of either sign
inline constexpr struct pow2o3_function : detail::one_argument<pow2o3_function> {
  static constexpr std::string_view name = "pow2o3";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sPow2o3_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dPow2o3_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"x^(2/3), the square of the cube root, of numbers of either sign", {{}}, {{2.2, 0.54, 715}}}; }
  static constexpr function_facts facts_of(const double*) { return {"x^(2/3), the square of the cube root, of numbers of either sign", {{}}, {{0.533, 0.533, 7.11e+06}}}; }
} pow2o3;

/// x^(3/2)
inline constexpr struct pow3o2_function : detail::one_argument<pow3o2_function> {
  static constexpr std::string_view name = "pow3o2";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sPow3o2_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dPow3o2_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"x^(3/2)", {{{1, "negative argument"}}}, {{1.29, 0.502, 1.29}}}; }
  static constexpr function_facts facts_of(const double*) { return {"x^(3/2)", {{{1, "negative argument"}}}, {{1.29, 0.501, 1.29}}}; }
} pow3o2;

/// a^b, by functions of their own for b of -1, 1, 2, the halves and thirds
/// a^b as Pow, one b for all elements
inline constexpr struct powx_function : detail::second_number<powx_function> {
  static constexpr std::string_view name = "powx";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sPowx_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dPowx_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cPowx_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zPowx_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"a^b, by functions of their own for b of -1, 1, 2, the halves and thirds", {{{1, "as Pow; those of Inv, Sqrt and their kin at such b"}}}, {{2.04, 0.531, 3.37e+03}}}; }
  static constexpr function_facts facts_of(const double*) { return {"a^b, by functions of their own for b of -1, 1, 2, the halves and thirds", {{{1, "as Pow; those of Inv, Sqrt and their kin at such b"}}}, {{1.5, 0.56, 1.7e+07}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"a^b as Pow, one b for all elements", {{{3, "overflow of finite arguments"}}}, {{0.71, 0.71, 0.71}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"a^b as Pow, one b for all elements", {{{3, "overflow of finite arguments"}}}, {{0.71, 0.71, 0.71}}}; }
} powx;

/// whole number by the caller's rounding mode, with the inexact flag
inline constexpr struct rint_function : detail::one_argument<rint_function> {
  static constexpr std::string_view name = "rint";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sRint_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dRint_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"whole number by the caller's rounding mode, with the inexact flag", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"whole number by the caller's rounding mode, with the inexact flag", {{}}, {{0, 0, 0}}}; }
} rint;

/// nearest whole number, ties away from zero
inline constexpr struct round_function : detail::one_argument<round_function> {
  static constexpr std::string_view name = "round";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sRound_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dRound_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"nearest whole number, ties away from zero", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"nearest whole number, ties away from zero", {{}}, {{0, 0, 0}}}; }
} round;

/// sine, of any finite argument
/// complex sine
inline constexpr struct sin_function : detail::one_argument<sin_function> {
  static constexpr std::string_view name = "sin";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sSin_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dSin_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cSin_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zSin_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"sine, of any finite argument", {{{1, "infinite argument"}}}, {{1.7, 0.555, 478}}}; }
  static constexpr function_facts facts_of(const double*) { return {"sine, of any finite argument", {{{1, "infinite argument"}}}, {{2.96, 0.506, 1.3e+05}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex sine", {{{3, "overflow of a finite argument"}}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex sine", {{{3, "overflow of a finite argument"}}}, {{0.503, 0.503, 0.503}}}; }
} sin;

/// sine and cosine, to the bit those of Sin and Cos
inline constexpr struct sincos_function : detail::two_results<sincos_function> {
  static constexpr std::string_view name = "sincos";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sSinCos_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dSinCos_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"sine and cosine, to the bit those of Sin and Cos", {{{1, "infinite argument"}}}, {{1.7, 0.555, 975}}}; }
  static constexpr function_facts facts_of(const double*) { return {"sine and cosine, to the bit those of Sin and Cos", {{{1, "infinite argument"}}}, {{2.96, 0.507, 1.3e+05}}}; }
} sincos;

/// hyperbolic sine, accurate near 0
/// complex hyperbolic sine
inline constexpr struct sinh_function : detail::one_argument<sinh_function> {
  static constexpr std::string_view name = "sinh";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sSinh_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dSinh_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cSinh_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zSinh_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"hyperbolic sine, accurate near 0", {{{3, "overflow"}}}, {{2.36, 0.501, 305}}}; }
  static constexpr function_facts facts_of(const double*) { return {"hyperbolic sine, accurate near 0", {{{3, "overflow"}}}, {{2.46, 0.546, 2.46}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex hyperbolic sine", {{{3, "overflow of a finite argument"}}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex hyperbolic sine", {{{3, "overflow of a finite argument"}}}, {{0.503, 0.503, 0.503}}}; }
} sinh;

/// square; under overlap as if element by element, ascending
inline constexpr struct sqr_function : detail::one_argument<sqr_function> {
  static constexpr std::string_view name = "sqr";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sSqr_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dSqr_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"square; under overlap as if element by element, ascending", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"square; under overlap as if element by element, ascending", {{}}, {{0, 0, 0}}}; }
} sqr;

/// square root
/// complex square root, Re not negative; cut from -inf to 0
inline constexpr struct sqrt_function : detail::one_argument<sqrt_function> {
  static constexpr std::string_view name = "sqrt";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sSqrt_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dSqrt_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cSqrt_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zSqrt_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"square root", {{{1, "negative argument"}}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"square root", {{{1, "negative argument"}}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex square root, Re not negative; cut from -inf to 0", {{}}, {{1.25, 0.501, 1.25}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex square root, Re not negative; cut from -inf to 0", {{}}, {{0.501, 0.501, 0.501}}}; }
} sqrt;

/// difference; under overlap as if element by element, ascending
/// complex difference
inline constexpr struct sub_function : detail::two_arguments<sub_function> {
  static constexpr std::string_view name = "sub";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sSub_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dSub_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cSub_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zSub_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"difference; under overlap as if element by element, ascending", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"difference; under overlap as if element by element, ascending", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex difference", {{{3, "overflow of finite arguments without a zero part"}}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex difference", {{{3, "overflow of finite arguments without a zero part"}}}, {{0, 0, 0}}}; }
} sub;

/// tangent, of any finite argument
/// complex tangent
inline constexpr struct tan_function : detail::one_argument<tan_function> {
  static constexpr std::string_view name = "tan";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sTan_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dTan_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cTan_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zTan_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"tangent, of any finite argument", {{{1, "infinite argument"}}}, {{2.08, 0.555, 924}}}; }
  static constexpr function_facts facts_of(const double*) { return {"tangent, of any finite argument", {{{1, "infinite argument"}}}, {{3.31, 0.542, 2.92e+05}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex tangent", {{}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex tangent", {{}}, {{0.503, 0.503, 0.503}}}; }
} tan;

/// hyperbolic tangent, accurate near 0
/// complex hyperbolic tangent
inline constexpr struct tanh_function : detail::one_argument<tanh_function> {
  static constexpr std::string_view name = "tanh";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sTanh_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dTanh_ttab; }
  static constexpr auto& table(const std::complex<float>*) { return orv_qem_kernel_cTanh_ttab; }
  static constexpr auto& table(const std::complex<double>*) { return orv_qem_kernel_zTanh_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"hyperbolic tangent, accurate near 0", {{}}, {{2.61, 0.54, 281}}}; }
  static constexpr function_facts facts_of(const double*) { return {"hyperbolic tangent, accurate near 0", {{}}, {{1.22, 0.53, 1.13e+06}}}; }
  static constexpr function_facts facts_of(const std::complex<float>*) { return {"complex hyperbolic tangent", {{}}, {{0.501, 0.501, 0.501}}}; }
  static constexpr function_facts facts_of(const std::complex<double>*) { return {"complex hyperbolic tangent", {{}}, {{0.503, 0.503, 0.503}}}; }
} tanh;

/// integral part, towards zero
inline constexpr struct trunc_function : detail::one_argument<trunc_function> {
  static constexpr std::string_view name = "trunc";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sTrunc_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dTrunc_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"integral part, towards zero", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"integral part, towards zero", {{}}, {{0, 0, 0}}}; }
} trunc;

/// a dense vector to elements at a distance, which may be 0 or negative
inline constexpr struct unpacki_function : detail::strided_unpack<unpacki_function> {
  static constexpr std::string_view name = "unpacki";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sUnpackI_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dUnpackI_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"a dense vector to elements at a distance, which may be 0 or negative", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"a dense vector to elements at a distance, which may be 0 or negative", {{}}, {{0, 0, 0}}}; }
} unpacki;

/// a dense vector to the elements whose mask is not 0
inline constexpr struct unpackm_function : detail::masked_unpack<unpackm_function> {
  static constexpr std::string_view name = "unpackm";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sUnpackM_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dUnpackM_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"a dense vector to the elements whose mask is not 0", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"a dense vector to the elements whose mask is not 0", {{}}, {{0, 0, 0}}}; }
} unpackm;

/// a dense vector to elements at places told by indices
inline constexpr struct unpackv_function : detail::indexed_unpack<unpackv_function> {
  static constexpr std::string_view name = "unpackv";
  static constexpr auto& table(const float*) { return orv_qem_kernel_sUnpackV_ttab; }
  static constexpr auto& table(const double*) { return orv_qem_kernel_dUnpackV_ttab; }
  static constexpr function_facts facts_of(const float*) { return {"a dense vector to elements at places told by indices", {{}}, {{0, 0, 0}}}; }
  static constexpr function_facts facts_of(const double*) { return {"a dense vector to elements at places told by indices", {{}}, {{0, 0, 0}}}; }
} unpackv;

/// Calls f with each of these objects.
template <class F>
void for_each_function(F f) {
  f(abs);
  f(acos);
  f(acosh);
  f(add);
  f(arg);
  f(asin);
  f(asinh);
  f(atan);
  f(atan2);
  f(atanh);
  f(cis);
  f(cbrt);
  f(cdfnorm);
  f(cdfnorminv);
  f(ceil);
  f(conj);
  f(cos);
  f(cosh);
  f(div);
  f(erf);
  f(erfinv);
  f(erfc);
  f(erfcinv);
  f(exp);
  f(expm1);
  f(floor);
  f(hypot);
  f(inv);
  f(invcbrt);
  f(invsqrt);
  f(linearfrac);
  f(ln);
  f(log10);
  f(log1p);
  f(modf);
  f(mul);
  f(mulbyconj);
  f(nearbyint);
  f(packi);
  f(packm);
  f(packv);
  f(pow);
  f(pow2o3);
  f(pow3o2);
  f(powx);
  f(rint);
  f(round);
  f(sin);
  f(sincos);
  f(sinh);
  f(sqr);
  f(sqrt);
  f(sub);
  f(tan);
  f(tanh);
  f(trunc);
  f(unpacki);
  f(unpackm);
  f(unpackv);
}

}  // namespace orv
