#include "inputs.hpp"

namespace orv_test {
namespace {

constexpr double ln2 = 0x1.62E42FEFA39EFp-1;

template <class R>
constexpr bool is_float = sizeof(R) == sizeof(float);

template <class R>
void arithmetic_inputs(Inputs<R>& in) {
  in.patterns_of_both_signs(0.8, 0, std::numeric_limits<R>::infinity());
}

/// Parts of factors: mostly of a size that products neither overflow nor underflow.
template <class R>
void factor_inputs(Inputs<R>& in) {
  const double far = is_float<R> ? 0x1p30 : 0x1p250;
  arithmetic_inputs(in);
  in.patterns_of_both_signs(2, 1 / far, far);
}

/// Where lanes end, multiples and halves of a table step, and doubles next to multiples of pi/2.
template <class R>
void angle_inputs(Inputs<R>& in) {
  constexpr double pi = 0x1.921FB54442D18p1;
  in.linear(0.3, -10, 10);
  in.linear(0.2, -65600, 65600);
  in.patterns_of_both_signs(0.3, 0, std::numeric_limits<R>::infinity());
  in.seams(0.2, pi / 512, -70000, 70000);
  in.seams(0.1, pi / 2, 65000, 1e15);
  for (const double x : {65536.0, pi / 2, pi}) in.at(x, 16);
  for (const double x : {0x1.6AC5B262CA1FFp849, 0x1.DF77E73A0A3C5p+417, 0x1.921FB54442D18p+100,
                         0x1.2D97C7F3321D2p+2, 22.0, 355.0, 1e22}) {
    if (!is_float<R> || x < 1e38) in.at(x, 4);
  }
}

/// Around whole numbers of all sizes, up to where all are whole.
template <class R>
void whole_inputs(Inputs<R>& in) {
  arithmetic_inputs(in);
  in.patterns_of_both_signs(0.4, 0.01, 4 / std::numeric_limits<R>::epsilon());
  in.seams(0.2, 0.5, -100, 100);
}

/// Multiples of half a reduction step: where the nearest step changes, and where nothing is left.
template <class R>
void exp_steps(Inputs<R>& in, double lo, double hi) {
  for (const double steps : {128.0, 256.0, 2048.0}) in.seams(0.08, ln2 / steps, lo, hi);
}

template <class R>
void exp_inputs(Inputs<R>& in) {
  // The last values below 0: of the normal results, and of the results other than 0.
  const double normal = is_float<R> ? -0x1.5D589Ep6 : -0x1.6232BDD7ABCD2p9;
  const double nonzero = is_float<R> ? -0x1.9FE368p6 : -0x1.74910D52D3051p9;
  const double largest = is_float<R> ? 0x1.62E42Ep6 : 0x1.62E42FEFA39EFp9;
  in.linear(0.3, nonzero - 1, largest + 1);
  in.linear(0.1, nonzero, normal);
  in.linear(0.1, -1, 1);
  in.patterns_of_both_signs(0.2, std::numeric_limits<R>::epsilon() / 8, -nonzero);
  exp_steps(in, nonzero, largest);
  for (const double x : {normal, nonzero, largest}) in.seam(x);
  if (is_float<R>) {
    in.seam(0x1.5D589Ep6);  // lanes end
    in.seam(-0x1.9D1DA0p6);
  } else {
    // High words at which the lanes of a level end, and results that lose all but a few bits.
    for (const double x : {0x1.6232Bp9, 0x1.61266p9, 0x1.5D533p9}) {
      for (const double sign : {-1, 1}) in.at(sign * x), in.seam(sign * (x + 0x1p-11));
    }
    in.at(-0x1.6DDC0F4C6DAF4p9);
    in.near(0.02, 0, 0x1p-53);
  }
}

template <class R>
void expm1_inputs(Inputs<R>& in) {
  const double largest = is_float<R> ? 0x1.62E42Ep6 : 0x1.62E42FEFA39EFp9;
  in.linear(0.2, -50, largest + 1);
  in.linear(0.2, -2, 2);
  in.linear(0.1, -0.05, 0.05);
  in.patterns_of_both_signs(0.3, 0, -2 * ln2 * std::numeric_limits<R>::min_exponent);
  exp_steps(in, -45, largest);
  exp_steps(in, -0.1, 0.1);
  for (const double x : {largest, is_float<R> ? 0x1.5A92D6p6 : 0x1.61DA04CBAFE44p9, 54 * -ln2,
                         55 * -ln2, 25 * -ln2, 26 * -ln2}) {
    in.seam(x);
  }
}

/// Arguments whose reciprocal, in units of a logarithm's table, is a whole number or lies between
/// two: those of ln(x + shift). Beside 1 the table's entry and the rest cancel, so most are there.
template <class R>
void log_seams(Inputs<R>& in, double shift) {
  for (const int entries : {256, 512, 1024}) {
    for (double at = entries / 2; at <= entries; at += 0.5) {
      const double x = entries / at;
      for (const double scale : {0.5, 1.0, static_cast<double>(1u << in.random.below(31))}) {
        const bool cancels = std::abs(x * scale - 1) < 8.0 / entries;
        in.seam(x * scale - shift, cancels ? 400 : 4);
      }
    }
  }
}

template <class R>
void log_inputs(Inputs<R>& in) {
  in.patterns(0.25, 0, std::numeric_limits<R>::infinity());
  in.linear(0.25, 0.5, 2);
  in.linear(0.05, 0.98, 1.02);
  in.near(0.2, 1, 0.5);
  in.patterns_of_both_signs(0.02, 0, std::numeric_limits<R>::infinity());
  log_seams(in, 0);
  for (int k = 64; k < 128; ++k) {  // the slow path's table, by way of denormals
    in.seam((k + 0.5) / 64 * std::numeric_limits<R>::min() / 64);
  }
  for (double x = 2.0 / 3; x < std::numeric_limits<R>::max() / 2; x *= 2)
    in.seam(x), in.seam(1 / x);
  for (const double x : {1.0, 0.990234375, 1.009765625}) in.at(x, 64);
}

template <class R>
void log10_inputs(Inputs<R>& in) {
  log_inputs(in);
  for (double x = 1; x < std::numeric_limits<R>::max() / 10; x *= 10) in.at(x), in.at(1 / x);
}

template <class R>
void log1p_inputs(Inputs<R>& in) {
  constexpr double epsilon = std::numeric_limits<R>::epsilon();
  in.patterns_of_both_signs(0.2, 0, std::numeric_limits<R>::infinity());
  in.patterns_of_both_signs(0.2, epsilon / 16, 1);
  in.linear(0.2, -1, 1);
  in.linear(0.1, -0.02, 0.02);
  in.near(0.1, -1, 0.5);
  log_seams(in, 1);
  for (const double x :
       {-1.0, -0.5, -0.25, 1.0 / 3, -1.0 / 3, epsilon, epsilon / 2, epsilon / 4, -epsilon / 2,
        -epsilon / 4, is_float<R> ? 0x1.FFFFFEp117 : 0x1.FFFFFFFFFF000p1012}) {
    in.at(x, 16);
  }
}

template <auto mpfr_function>
void unary(mpfr_t* y, mpfr_t* x) {
  mpfr_function(y[0], x[0], MPFR_RNDN);
}
template <auto mpfr_function>
void binary(mpfr_t* y, mpfr_t* x) {
  mpfr_function(y[0], x[0], x[1], MPFR_RNDN);
}
void absolute(mpfr_t* y, mpfr_t* x) { mpfr_abs(y[0], x[0], MPFR_RNDN); }
void conjugate(mpfr_t* y, mpfr_t* x) {
  mpfr_set(y[0], x[0], MPFR_RNDN);
  mpfr_neg(y[1], x[1], MPFR_RNDN);
}
void complex_sum(mpfr_t* y, mpfr_t* x) {
  mpfr_add(y[0], x[0], x[2], MPFR_RNDN);
  mpfr_add(y[1], x[1], x[3], MPFR_RNDN);
}
/// MPFR's own form with two products is infinite only where one of them is.
void complex_product(mpfr_t* y, mpfr_t* x) {
  mpfr_fmms(y[0], x[0], x[2], x[1], x[3], MPFR_RNDN);
  mpfr_fmma(y[1], x[0], x[3], x[1], x[2], MPFR_RNDN);
}
void cis(mpfr_t* y, mpfr_t* x) { mpfr_sin_cos(y[1], y[0], x[0], MPFR_RNDN); }
void modf(mpfr_t* y, mpfr_t* x) { mpfr_modf(y[0], y[1], x[0], MPFR_RNDN); }
void copy(mpfr_t* y, mpfr_t* x) { mpfr_set(y[0], x[0], MPFR_RNDN); }
double square(double x) { return x * x; }

#define ORV_INPUTS(make) make<float>, make<double>
constexpr Grade Rounded = Grade::Rounded, Approximate = Grade::Approximate;

const std::vector<Function> rows = {
    {"sd", "Abs", Rounded, absolute, ::fabs, ORV_INPUTS(arithmetic_inputs)},
    {"sd", "Add", Rounded, binary<mpfr_add>, nullptr, ORV_INPUTS(arithmetic_inputs)},
    {"sd", "Sub", Rounded, binary<mpfr_sub>, nullptr, ORV_INPUTS(arithmetic_inputs)},
    {"sd", "Mul", Rounded, binary<mpfr_mul>, nullptr, ORV_INPUTS(arithmetic_inputs)},
    {"sd", "Sqr", Rounded, unary<mpfr_sqr>, square, ORV_INPUTS(arithmetic_inputs)},
    {"sd", "Div", Rounded, binary<mpfr_div>, nullptr, ORV_INPUTS(arithmetic_inputs)},
    {"sd", "Modf", Rounded, modf, nullptr, ORV_INPUTS(whole_inputs)},
    {"sd", "PackI", Rounded, copy, nullptr, ORV_INPUTS(arithmetic_inputs)},
    {"sd", "UnpackI", Rounded, copy, nullptr, ORV_INPUTS(arithmetic_inputs)},
    {"cz", "Add", Rounded, complex_sum, nullptr, ORV_INPUTS(arithmetic_inputs)},
    {"cz", "Mul", Approximate, complex_product, nullptr, ORV_INPUTS(factor_inputs), true},
    {"cz", "CIS", Approximate, cis, nullptr, ORV_INPUTS(angle_inputs)},
    {"cz", "Conj", Rounded, conjugate, nullptr, ORV_INPUTS(arithmetic_inputs)},
    {"sd", "Exp", Approximate, unary<mpfr_exp>, ::exp, ORV_INPUTS(exp_inputs)},
    {"sd", "Expm1", Approximate, unary<mpfr_expm1>, ::expm1, ORV_INPUTS(expm1_inputs)},
    {"sd", "Ln", Approximate, unary<mpfr_log>, ::log, ORV_INPUTS(log_inputs)},
    {"sd", "Log10", Approximate, unary<mpfr_log10>, ::log10, ORV_INPUTS(log10_inputs)},
    {"sd", "Log1p", Approximate, unary<mpfr_log1p>, ::log1p, ORV_INPUTS(log1p_inputs)},
};

}  // namespace

const std::vector<Function>& functions() { return rows; }

const Function* find_function(char type, const std::string& name) {
  for (const Function& f : rows) {
    if (f.name == name && f.types.find(type) != std::string::npos) return &f;
  }
  return nullptr;
}

}  // namespace orv_test
