#include "rows.hpp"

#include <math.h>

#include <algorithm>
#include <limits>
#include <random>

namespace orv_test {
namespace {

struct Domain {
  const char *types, *function;
  double low, high;
  double smallest = 0;  // magnitude, where cubes or quotients underflow
};
constexpr Domain domains[] = {
    {"d", "Exp", -690, 690},
    {"s", "Exp", -86, 86},
    {"d", "Expm1", -700, 700},
    {"s", "Expm1", -86, 86},
    {"sd", "Ln", 0, 1e30},
    {"sd", "Log10", 0, 1e30},
    {"sd", "Log1p", -0.9, 1e30},
    {"sdcz", "CIS", -60000, 60000},
    {"sd", "Sqrt", 0, 1e30},
    {"s", "Cos", -10000, 10000},
    {"s", "Sin", -10000, 10000},
    {"s", "SinCos", -10000, 10000},
    {"s", "Tan", -10000, 10000},
    {"sd", "InvSqrt", 0, 1e30},
    {"sd", "Pow3o2", 0, 1e20},
    {"sd", "Pow", 0.5, 20},
    {"sd", "Powx", 0, 1e30},
    {"s", "Atan", -1e8, 1e8, 1e-12},
    {"sd", "Atan2", -1000, 1000, 0.001},
    {"d", "Cosh", -708, 708},
    {"s", "Cosh", -87, 87},
    {"d", "Sinh", -708, 708},
    {"s", "Sinh", -87, 87},
    {"sd", "Acos", -1, 1},
    {"sd", "Asin", -1, 1},
    {"sd", "Acosh", 1, 1000},
    {"sd", "Atanh", -0.9, 0.9},
    {"d", "Erfc", -26, 26},
    {"s", "Erfc", -9, 9},
    {"d", "CdfNorm", -37, 37},
    {"s", "CdfNorm", -12, 12},
    {"sd", "CdfNormInv", 0.001, 0.999},
    {"sd", "ErfcInv", 0.001, 1.999},
    {"sd", "ErfInv", 0.001, 0.999},
    {"cz", "Pow", 0.5, 4},
    {"cz", "Arg", -1000, 1000, 0.001},
    {"c", "Div", -1000, 1000, 0.001},  // squares at EP
    {"cz", "Exp", -60, 60, 0.001},
    {"cz", "Ln", -1000, 1000, 0.001},
    {"cz", "Cos", -80, 80},
    {"cz", "Cosh", -80, 80},
    {"cz", "Sin", -80, 80},
    {"cz", "Sinh", -80, 80},
    {"cz", "Tan", -10, 10},
    {"cz", "Tanh", -10, 10},
    {"cz", "Atan", -10, 10},
    {"cz", "Atanh", -10, 10},
};

/// Functions without a row of their own take numbers of either sign, far from over- and underflow.
Domain domain_of(const Kernel& kernel) {
  for (const Domain& domain : domains) {
    if (kernel.function == domain.function && strchr(domain.types, kernel.type)) return domain;
  }
  return {"", "", -1e15, 1e15};
}

/// Magnitudes even on a logarithmic scale, or even on the interval where it is short.
double draw(const Domain& domain, double tiny, std::mt19937& random) {
  const auto uniform = [&] { return random() / 4294967296.0; };
  if (domain.low > 0) return domain.low + (domain.high - domain.low) * uniform();
  const bool negative = domain.low < 0 && random() % 2 == 0;
  const double top = negative ? -domain.low : domain.high;
  const double smallest = domain.smallest > 0 ? domain.smallest : tiny;
  const double magnitude = smallest * pow(top / smallest, uniform());
  return negative ? -magnitude : magnitude;
}

template <class T>
int32_t code_of(const std::string& f, T x, T exp_lowest, T exp_largest) {
  const bool logarithm = f == "Ln" || f == "Log10" || f == "Log1p";
  const bool root = f == "Sqrt" || f == "InvSqrt" || f == "Pow3o2";
  const bool reciprocal = f == "Inv" || f == "InvCbrt" || f == "InvSqrt";
  const bool angle = f == "Sin" || f == "Cos" || f == "SinCos" || f == "Tan";
  const bool arc = f == "Acos" || f == "Asin";
  const T pole = f == "Log1p" ? -1 : 0;
  if (arc && fabs(x) > 1) return QEM_STATUS_DOMAIN;
  if (f == "CdfNormInv" || f == "ErfcInv" || f == "ErfInv") {
    const T low = f == "ErfInv" ? -1 : 0, high = f == "ErfcInv" ? 2 : 1;
    if (x < low || x > high) return QEM_STATUS_DOMAIN;
    return x == low || x == high ? QEM_STATUS_SINGULARITY : QEM_STATUS_OK;
  }
  if ((logarithm || root) && x < pole) return QEM_STATUS_DOMAIN;
  if ((logarithm || reciprocal) && x == pole) return QEM_STATUS_SINGULARITY;
  if (f == "Acosh" && x < 1) return QEM_STATUS_DOMAIN;
  if (f == "Atanh" && fabs(x) == 1) return QEM_STATUS_SINGULARITY;
  if (f == "Atanh" && fabs(x) > 1) return QEM_STATUS_DOMAIN;
  if (isinf(x)) return angle ? QEM_STATUS_DOMAIN : QEM_STATUS_OK;
  if (f == "Powx" && x < 0) return QEM_STATUS_DOMAIN;  // the exponent is a fraction
  if ((f == "Exp" || f == "Expm1") && x > exp_largest) return QEM_STATUS_OVERFLOW;
  if ((f == "Cosh" || f == "Sinh") && fabs(x) > exp_largest) return QEM_STATUS_OVERFLOW;
  if (f == "Exp" && x < exp_lowest) return QEM_STATUS_UNDERFLOW;
  if ((f == "Erfc" && x > 30) || (f == "CdfNorm" && x < -40)) return QEM_STATUS_UNDERFLOW;
  const bool denormal = x != 0 && fabs(x) < std::numeric_limits<T>::min();
  if (f == "Expm1" && denormal) return QEM_STATUS_UNDERFLOW;
  return QEM_STATUS_OK;
}

/// Arguments around which a real function of one argument has its branches.
template <class T>
std::vector<SpecialValue> unary_values(const std::string& function, T small, T exp_lowest,
                                       T exp_zero, T exp_largest) {
  using Limits = std::numeric_limits<T>;
  const T inf = Limits::infinity();
  std::vector<SpecialValue> list = {{{Limits::quiet_NaN()}, {}, QEM_STATUS_OK, {}}};
  for (const T magnitude : {T(0), Limits::denorm_min(), Limits::min(), small, nextafter(T(1), T(0)),
                            T(1), nextafter(T(1), T(2)), T(2), T(60), T(1000), Limits::max(), inf,
                            exp_largest, nextafter(exp_largest, inf), T(1.0001) * exp_largest,
                            -exp_lowest, nextafter(-exp_lowest, inf), -exp_zero}) {
    for (const T x : {magnitude, -magnitude}) {
      list.push_back({{x}, {}, code_of(function, x, exp_lowest, exp_largest), {}});
    }
  }
  return list;
}

constexpr double pi = 0x1.921FB54442D18p1;

/// Functions of two arguments, of two results, of complex ones; results that must be exact.
const Row rows[] = {
    {"Exp", {{0}, {}, 0, {1}}},
    {"Exp", {{-tiny}, {}, 0, {1}}},
    {"Exp", {{-745.2}, {}, 4, {0}}},
    {"Sqrt", {{-0.0}, {}, 0, {-0.0}}},
    {"Sqrt", {{inf}, {}, 0, {inf}}},
    {"Sqrt", {{-inf}, {}, 1, {nan}}},
    {"Sqrt", {{-tiny}, {}, 1, {nan}}},
    {"InvSqrt", {{0}, {}, 2, {inf}}},
    {"InvSqrt", {{-0.0}, {}, 2, {-inf}}},
    {"InvSqrt", {{inf}, {}, 0, {0}}},
    {"InvSqrt", {{-inf}, {}, 1, {nan}}},
    {"InvSqrt", {{-tiny}, {}, 1, {nan}}},
    {"Pow3o2", {{-0.0}, {}, 0, {-0.0}}},
    {"Pow3o2", {{4}, {}, 0, {8}}},
    {"Pow3o2", {{inf}, {}, 0, {inf}}},
    {"Pow3o2", {{largest}, {}, 0, {inf}}},
    {"Pow3o2", {{tiny}, {}, 0, {0}}},
    {"Pow3o2", {{-inf}, {}, 1, {nan}}},
    {"Pow3o2", {{-tiny}, {}, 1, {nan}}},
    {"Hypot", {{3}, {-4}, 0, {5}}},
    {"Hypot", {{-0.0}, {-0.0}, 0, {0}}},
    {"Hypot", {{nan}, {-inf}, 0, {inf}}},
    {"Hypot", {{inf}, {nan}, 0, {inf}}},
    {"Hypot", {{-inf}, {inf}, 0, {inf}}},
    {"Hypot", {{nan}, {0}, 0, {nan}}},
    {"Hypot", {{-1}, {nan}, 0, {nan}}},
    {"Hypot", {{nan}, {nan}, 0, {nan}}},
    {"Hypot", {{-inf}, {tiny}, 0, {inf}}},
    {"Hypot", {{largest}, {-largest}, 0, {inf}}},
    {"Hypot", {{1}, {-largest}, 0, {largest}}},
    {"Hypot", {{-tiny}, {tiny}, 0, {tiny}}},
    {"Hypot", {{0}, {-tiny}, 0, {tiny}}},
    {"Acosh", {{1}, {}, 0, {0}}},
    {"Acosh", {{inf}, {}, 0, {inf}}},
    {"Acosh", {{-inf}, {}, 1, {nan}}},
    {"Acosh", {{nan}, {}, 0, {nan}}},
    {"Asinh", {{-0.0}, {}, 0, {-0.0}}},
    {"Asinh", {{-tiny}, {}, 0, {-tiny}}},
    {"Asinh", {{-inf}, {}, 0, {-inf}}},
    {"Asinh", {{nan}, {}, 0, {nan}}},
    {"Atanh", {{-0.0}, {}, 0, {-0.0}}},
    {"Atanh", {{-tiny}, {}, 0, {-tiny}}},
    {"Atanh", {{1}, {}, 2, {inf}}},
    {"Atanh", {{-1}, {}, 2, {-inf}}},
    {"Atanh", {{-inf}, {}, 1, {nan}}},
    {"Atanh", {{nan}, {}, 0, {nan}}},
    {"Div", {{1}, {0}, 2, {inf}}},
    {"Div", {{1}, {-0.0}, 2, {-inf}}},
    {"Div", {{0}, {0}, 2, {nan}}},
    {"Div", {{nan}, {0}, 2, {nan}}},
    {"Div", {{inf}, {-0.0}, 2, {-inf}}},
    {"Div", {{-1}, {inf}, 0, {-0.0}}},
    {"Div", {{inf}, {inf}, 0, {nan}}},
    {"Div", {{1}, {tiny}, 0, {inf}}},
    {"Div", {{3}, {nan}, 0, {nan}}},
    {"Cbrt", {{-0.0}, {}, 0, {-0.0}}},
    {"Cbrt", {{-inf}, {}, 0, {-inf}}},
    {"Cbrt", {{inf}, {}, 0, {inf}}},
    {"Pow2o3", {{-0.0}, {}, 0, {0}}},
    {"Pow2o3", {{-inf}, {}, 0, {inf}}},
    {"InvCbrt", {{0}, {}, 2, {inf}}},
    {"InvCbrt", {{-0.0}, {}, 2, {-inf}}},
    {"InvCbrt", {{inf}, {}, 0, {0}}},
    {"InvCbrt", {{-inf}, {}, 0, {-0.0}}},
    {"Erfc", {{-0.0}, {}, 0, {1}}},
    {"Erfc", {{tiny}, {}, 0, {1}}},
    {"Erfc", {{26.6}, {}, 4, {}}},  // denormal in double
    {"Erfc", {{largest}, {}, 4, {0}}},
    {"Erfc", {{-largest}, {}, 0, {2}}},
    {"Erfc", {{inf}, {}, 0, {0}}},
    {"Erfc", {{-inf}, {}, 0, {2}}},
    {"CdfNorm", {{0}, {}, 0, {0.5}}},
    {"CdfNorm", {{-tiny}, {}, 0, {0.5}}},
    {"CdfNorm", {{-14}, {}, 0, {}}},  // denormal in float
    {"CdfNorm", {{-38.5}, {}, 4, {0}}},
    {"CdfNorm", {{largest}, {}, 0, {1}}},
    {"CdfNorm", {{-inf}, {}, 0, {0}}},
    {"CdfNorm", {{inf}, {}, 0, {1}}},
    {"Erf", {{-0.0}, {}, 0, {-0.0}}},
    {"Erf", {{tiny}, {}, 0, {tiny}}},
    {"Erf", {{largest}, {}, 0, {1}}},
    {"Erf", {{-inf}, {}, 0, {-1}}},
    {"Modf", {{-3.75}, {}, 0, {-3, -0.75}}},
    {"Modf", {{-0.0}, {}, 0, {-0.0, -0.0}}},
    {"Modf", {{-tiny}, {}, 0, {-0.0, -tiny}}},
    {"Modf", {{8388607.5}, {}, 0, {8388607, 0.5}}},
    {"Modf", {{-8388608}, {}, 0, {-8388608, -0.0}}},
    {"Modf", {{0x1p52}, {}, 0, {0x1p52, 0}}},
    {"Modf", {{inf}, {}, 0, {inf, 0}}},
    {"Modf", {{-inf}, {}, 0, {-inf, -0.0}}},
    {"Modf", {{nan}, {}, 0, {nan, nan}}},
    {"Floor", {{-0.5}, {}, 0, {-1}}},
    {"Floor", {{-0.0}, {}, 0, {-0.0}}},
    {"Floor", {{-tiny}, {}, 0, {-1}}},
    {"Ceil", {{-0.5}, {}, 0, {-0.0}}},
    {"Ceil", {{tiny}, {}, 0, {1}}},
    {"Trunc", {{-0.5}, {}, 0, {-0.0}}},
    {"Trunc", {{8388607.5}, {}, 0, {8388607}}},
    {"Round", {{0.5}, {}, 0, {1}}},
    {"Round", {{1.5}, {}, 0, {2}}},
    {"Round", {{2.5}, {}, 0, {3}}},
    {"Round", {{-2.5}, {}, 0, {-3}}},
    {"Round", {{-0.3}, {}, 0, {-0.0}}},
    {"Round", {{4194303.5}, {}, 0, {4194304}}},
    {"Round", {{8388607}, {}, 0, {8388607}}},
    {"Round", {{-16777215}, {}, 0, {-16777215}}},
    {"Round", {{inf}, {}, 0, {inf}}},
    {"Rint", {{2.5}, {}, 0, {2}}},
    {"Rint", {{-0.5}, {}, 0, {-0.0}}},
    {"NearbyInt", {{3.5}, {}, 0, {4}}},
    {"NearbyInt", {{-inf}, {}, 0, {-inf}}},
    {"Inv", {{0}, {}, 2, {inf}}},
    {"Inv", {{-0.0}, {}, 2, {-inf}}},
    {"Inv", {{-inf}, {}, 0, {-0.0}}},
    {"Inv", {{tiny}, {}, 0, {inf}}},
    {"Inv", {{-0x1p126}, {}, 0, {-0x1p-126}}},
    {"Inv", {{0x1p127}, {}, 0, {0x1p-127}}},
    {"LinearFrac", {{nan}, {1}, 0, {nan}}},
    {"LinearFrac", {{2}, {-1.5555555555555556}, 0, {}}},
    {"LinearFrac", {{2}, {0}, 0, {}}},
    {"LinearFrac", {{largest}, {largest}, 0, {}}},
    {"Sin", {{-0.0}, {}, 0, {-0.0}}},
    {"Sin", {{0}, {}, 0, {0}}},
    {"Sin", {{-tiny}, {}, 0, {-tiny}}},
    {"Sin", {{-inf}, {}, 1, {nan}}},
    {"Cos", {{-0.0}, {}, 0, {1}}},
    {"Cos", {{tiny}, {}, 0, {1}}},
    {"Cos", {{inf}, {}, 1, {nan}}},
    {"SinCos", {{-0.0}, {}, 0, {-0.0, 1}}},
    {"SinCos", {{tiny}, {}, 0, {tiny, 1}}},
    {"SinCos", {{inf}, {}, 1, {nan, nan}}},
    {"SinCos", {{nan}, {}, 0, {nan, nan}}},
    {"Tan", {{-0.0}, {}, 0, {-0.0}}},
    {"Tan", {{0}, {}, 0, {0}}},
    {"Tan", {{-tiny}, {}, 0, {-tiny}}},
    {"Tan", {{inf}, {}, 1, {nan}}},
    {"Cosh", {{-0.0}, {}, 0, {1}}},
    {"Cosh", {{-tiny}, {}, 0, {1}}},
    {"Cosh", {{-inf}, {}, 0, {inf}}},
    {"Cosh", {{-largest}, {}, 3, {inf}}},
    {"Sinh", {{-0.0}, {}, 0, {-0.0}}},
    {"Sinh", {{0}, {}, 0, {0}}},
    {"Sinh", {{-tiny}, {}, 0, {-tiny}}},
    {"Sinh", {{-inf}, {}, 0, {-inf}}},
    {"Sinh", {{inf}, {}, 0, {inf}}},
    {"Sinh", {{-largest}, {}, 3, {-inf}}},
    {"Tanh", {{-0.0}, {}, 0, {-0.0}}},
    {"Tanh", {{0}, {}, 0, {0}}},
    {"Tanh", {{-tiny}, {}, 0, {-tiny}}},
    {"Tanh", {{tiny}, {}, 0, {tiny}}},
    {"Tanh", {{20}, {}, 0, {1}}},
    {"Tanh", {{-largest}, {}, 0, {-1}}},
    {"Tanh", {{inf}, {}, 0, {1}}},
    {"Tanh", {{-inf}, {}, 0, {-1}}},
    {"Acos", {{1}, {}, 0, {0}}},
    {"Acos", {{-1}, {}, 0, {0x1.921FB54442D18p1}}},
    {"Acos", {{0}, {}, 0, {0x1.921FB54442D18p0}}},
    {"Acos", {{-tiny}, {}, 0, {0x1.921FB54442D18p0}}},
    {"Acos", {{-inf}, {}, 1, {nan}}},
    {"Asin", {{1}, {}, 0, {0x1.921FB54442D18p0}}},
    {"Asin", {{-1}, {}, 0, {-0x1.921FB54442D18p0}}},
    {"Asin", {{0}, {}, 0, {0}}},
    {"Asin", {{-0.0}, {}, 0, {-0.0}}},
    {"Asin", {{-tiny}, {}, 0, {-tiny}}},
    {"Asin", {{inf}, {}, 1, {nan}}},
    {"Asin", {{largest}, {}, 1, {nan}}},
    {"Pow", {{1}, {nan}, 0, {1}}},
    {"Pow", {{nan}, {-0.0}, 0, {1}}},
    {"Pow", {{nan}, {1}, 0, {nan}}},
    {"Pow", {{-1}, {nan}, 0, {nan}}},
    {"Pow", {{0}, {0}, 0, {1}}},
    {"Pow", {{-0.0}, {3}, 0, {-0.0}}},
    {"Pow", {{-0.0}, {2.5}, 0, {0}}},
    {"Pow", {{-0.0}, {inf}, 0, {0}}},
    {"Pow", {{-0.0}, {-3}, 1, {-inf}}},
    {"Pow", {{-0.0}, {-2}, 1, {inf}}},
    {"Pow", {{0}, {-0.5}, 1, {inf}}},
    {"Pow", {{-0.0}, {-inf}, 1, {inf}}},
    {"Pow", {{-1}, {-inf}, 0, {1}}},
    {"Pow", {{-1}, {0x1p53 - 1}, 0, {}}},
    {"Pow", {{-1}, {largest}, 0, {1}}},
    {"Pow", {{-2}, {-3}, 0, {-0.125}}},
    {"Pow", {{-8}, {1.0 / 3}, 1, {nan}}},
    {"Pow", {{-tiny}, {0.5}, 1, {nan}}},
    {"Pow", {{-largest}, {-1.5}, 1, {nan}}},
    {"Pow", {{-inf}, {0.5}, 0, {inf}}},
    {"Pow", {{-inf}, {3}, 0, {-inf}}},
    {"Pow", {{-inf}, {-3}, 0, {-0.0}}},
    {"Pow", {{-inf}, {-2}, 0, {0}}},
    {"Pow", {{inf}, {-inf}, 0, {0}}},
    {"Pow", {{0.5}, {inf}, 0, {0}}},
    {"Pow", {{-0.5}, {-inf}, 0, {inf}}},
    {"Pow", {{-1.5}, {inf}, 0, {inf}}},
    {"Pow", {{tiny}, {1}, 0, {tiny}}},
    {"Pow", {{largest}, {1}, 0, {largest}}},
    {"Pow", {{largest}, {2}, 0, {inf}}},
    {"Pow", {{-largest}, {3}, 0, {-inf}}},
    {"Pow", {{-largest}, {-largest}, 0, {0}}},
    {"Pow", {{-2}, {-4097}, 0, {-0.0}}},
    {"Pow", {{3}, {-tiny}, 0, {1}}},
    {"CdfNormInv", {{0.5}, {}, 0, {0}}},
    {"CdfNormInv", {{0}, {}, 2, {-inf}}},
    {"CdfNormInv", {{-0.0}, {}, 2, {-inf}}},
    {"CdfNormInv", {{1}, {}, 2, {inf}}},
    {"CdfNormInv", {{-tiny}, {}, 1, {nan}}},
    {"CdfNormInv", {{inf}, {}, 1, {nan}}},
    {"CdfNormInv", {{-inf}, {}, 1, {nan}}},
    {"CdfNormInv", {{tiny}, {}, 0, {}}},
    {"CdfNormInv", {{0x1p-54}, {}, 0, {}}},
    {"CdfNormInv", {{0x1.FFFFFFp-55}, {}, 0, {}}},
    {"ErfcInv", {{1}, {}, 0, {0}}},
    {"ErfcInv", {{0}, {}, 2, {inf}}},
    {"ErfcInv", {{-0.0}, {}, 2, {inf}}},
    {"ErfcInv", {{2}, {}, 2, {-inf}}},
    {"ErfcInv", {{-tiny}, {}, 1, {nan}}},
    {"ErfcInv", {{-inf}, {}, 1, {nan}}},
    {"ErfcInv", {{tiny}, {}, 0, {}}},
    {"ErfInv", {{0}, {}, 0, {0}}},
    {"ErfInv", {{-0.0}, {}, 0, {-0.0}}},
    {"ErfInv", {{1}, {}, 2, {inf}}},
    {"ErfInv", {{-1}, {}, 2, {-inf}}},
    {"ErfInv", {{inf}, {}, 1, {nan}}},
    {"ErfInv", {{-inf}, {}, 1, {nan}}},
    {"ErfInv", {{-tiny}, {}, 0, {-tiny}}},
    {"ErfInv", {{0x1p-35}, {}, 0, {}}},
    {"CIS", {{inf}, {}, 1, {nan, nan}}},
    {"CIS", {{-inf}, {}, 1, {nan, nan}}},
    {"CIS", {{nan}, {}, 0, {nan, nan}}},
    {"CIS", {{-0.0}, {}, 0, {1, -0.0}}},
    {"CIS", {{tiny}, {}, 0, {1, tiny}}},
    {"CIS", {{largest}, {}, 0, {}}},
    {"CIS", {{-65536}, {}, 0, {}}},
    {"CIS", {{65535.9921875}, {}, 0, {}}},
    {"Cos", {{-0.0}, {}, 0, {1}}},
    {"Cos", {{tiny}, {}, 0, {1}}},
    {"Cos", {{-inf}, {}, 1, {nan}}},
    {"Cos", {{largest}, {}, 0, {}}},
    {"Sin", {{-0.0}, {}, 0, {-0.0}}},
    {"Sin", {{-tiny}, {}, 0, {-tiny}}},
    {"Sin", {{inf}, {}, 1, {nan}}},
    {"Sin", {{-largest}, {}, 0, {}}},
    {"SinCos", {{-0.0}, {}, 0, {-0.0, 1}}},
    {"SinCos", {{tiny}, {}, 0, {tiny, 1}}},
    {"SinCos", {{inf}, {}, 1, {nan, nan}}},
    {"SinCos", {{nan}, {}, 0, {nan, nan}}},
    {"SinCos", {{-largest}, {}, 0, {}}},
    {"Tan", {{-0.0}, {}, 0, {-0.0}}},
    {"Tan", {{tiny}, {}, 0, {tiny}}},
    {"Tan", {{-inf}, {}, 1, {nan}}},
    {"Tan", {{largest}, {}, 0, {}}},
    {"Atan", {{-0.0}, {}, 0, {-0.0}}},
    {"Atan", {{-tiny}, {}, 0, {-tiny}}},
    {"Atan", {{1}, {}, 0, {pi / 4}}},
    {"Atan", {{-largest}, {}, 0, {-pi / 2}}},
    {"Atan", {{0x1p54}, {}, 0, {pi / 2}}},
    {"Atan", {{inf}, {}, 0, {pi / 2}}},
    {"Atan", {{-inf}, {}, 0, {-pi / 2}}},
    {"Atan2", {{0}, {0}, 0, {0}}},
    {"Atan2", {{-0.0}, {0}, 0, {-0.0}}},
    {"Atan2", {{0}, {-0.0}, 0, {pi}}},
    {"Atan2", {{-0.0}, {-0.0}, 0, {-pi}}},
    {"Atan2", {{0}, {-1}, 0, {pi}}},
    {"Atan2", {{-0.0}, {tiny}, 0, {-0.0}}},
    {"Atan2", {{-0.0}, {-inf}, 0, {-pi}}},
    {"Atan2", {{0}, {inf}, 0, {0}}},
    {"Atan2", {{1}, {-0.0}, 0, {pi / 2}}},
    {"Atan2", {{-tiny}, {0}, 0, {-pi / 2}}},
    {"Atan2", {{-inf}, {0}, 0, {-pi / 2}}},
    {"Atan2", {{inf}, {inf}, 0, {pi / 4}}},
    {"Atan2", {{-inf}, {inf}, 0, {-pi / 4}}},
    {"Atan2", {{inf}, {-inf}, 0, {3 * pi / 4}}},
    {"Atan2", {{-inf}, {-inf}, 0, {-3 * pi / 4}}},
    {"Atan2", {{1}, {inf}, 0, {0}}},
    {"Atan2", {{-1}, {inf}, 0, {-0.0}}},
    {"Atan2", {{1}, {-inf}, 0, {pi}}},
    {"Atan2", {{-inf}, {-largest}, 0, {-pi / 2}}},
    {"Atan2", {{tiny}, {1}, 0, {tiny}}},
    {"Atan2", {{-tiny}, {largest}, 0, {-0.0}}},
    {"Atan2", {{tiny}, {-largest}, 0, {pi}}},
    {"Atan2", {{largest}, {-tiny}, 0, {pi / 2}}},
    {"Atan2", {{tiny}, {-tiny}, 0, {3 * pi / 4}}},
    {"Atan2", {{-largest}, {largest}, 0, {-pi / 4}}},
    {"Atan2", {{nan}, {inf}, 0, {nan}}},
    {"Atan2", {{0}, {nan}, 0, {nan}}},
    {"Atan2", {{-inf}, {nan}, 0, {nan}}},
    {"Add", {{largest, 1}, {largest, -2}, 3, {inf, -1}}},
    {"Add", {{1, -largest}, {1, -largest}, 3, {2, -inf}}},
    {"Add", {{largest, 0}, {largest, 1}, 0, {inf, 1}}},  // a part of 0 is not reported
    {"Add", {{inf, 1}, {1, 1}, 0, {inf, 2}}},
    {"Add", {{inf, 1}, {-inf, 1}, 0, {nan, 2}}},
    {"Add", {{nan, largest}, {1, largest}, 0, {nan, inf}}},
    {"Mul", {{largest, 1}, {largest, 1}, 3, {inf, inf}}},
    {"Mul", {{largest, 0}, {largest, 1}, 0, {inf, largest}}},
    {"Mul", {{1, largest}, {1, -2}, 3, {inf, largest}}},
    {"Mul", {{inf, 1}, {1, 1}, 0, {inf, inf}}},
    {"Mul", {{inf, 0}, {1, 0}, 0, {inf, nan}}},
    {"Mul", {{nan, 1}, {1, 1}, 0, {nan, nan}}},
    {"Mul", {{tiny, tiny}, {2, 0}, 0, {2 * tiny, 2 * tiny}}},
    {"Mul", {{3, 4}, {0, -0.0}, 0, {0, 0}}},
};

/// The number that a row's constant stands for in the kernel's type.
double number_of(double x, bool in_float) {
  const auto of = [&](auto limits) -> double {
    if (fabs(x) >= largest && !isinf(x)) return copysign(limits.max(), x);
    if (x != 0 && fabs(x) <= 2 * tiny) return x / tiny * limits.denorm_min();
    return x;
  };
  return in_float ? of(std::numeric_limits<float>{}) : of(std::numeric_limits<double>{});
}

thread_local std::vector<Report> heard;

int32_t log_report(QemErrorContext* record) {
  const bool clear = upper_halves_clear();
  heard.push_back({*record, clear});
  return 0;
}

}  // namespace

void call(const Kernel& kernel, int64_t n, const void* a, const void* b, void* r1, void* r2) {
  orv_call::Arguments arguments = usual_arguments(kernel, n);
  arguments.inputs[0] = a, arguments.inputs[1] = b;
  arguments.results[0] = r1, arguments.results[1] = r2;
  kernel.call(arguments);
}

template <class R>
Vectors<R>::Vectors(const Kernel& kernel, int n) {
  for (int j = 0; j < kernel.signature().inputs; ++j) in[j].resize(kernel.input_size(n));
  for (int j = 0; j < kernel.signature().results; ++j) out[j].resize(kernel.result_size(n));
}

template <class R>
void Vectors<R>::copy_element(const Kernel& kernel, int i, Vectors& other, int to) const {
  const auto copy = [&](const std::vector<R>& from, std::vector<R>& into, size_t parts) {
    if (!from.empty()) memcpy(&into[to * parts], &from[i * parts], parts * sizeof(R));
  };
  for (int j = 0; j < 2; ++j) {
    copy(in[j], other.in[j], kernel.input_size(1));
    copy(out[j], other.out[j], kernel.result_size(1));
  }
}

template <class R>
Vectors<R> ordinary(const Kernel& kernel, int n, uint32_t seed) {
  Vectors<R> v(kernel, n);
  std::mt19937 random(seed);
  for (std::vector<R>& input : v.in) {
    for (R& x : input) {
      x = static_cast<R>(draw(domain_of(kernel), kernel.in_float() ? 1e-15 : 1e-100, random));
    }
  }
  return v;
}

std::vector<SpecialValue> special_values(const Kernel& kernel) {
  std::vector<SpecialValue> list;
  if (strchr("sd", kernel.type) && kernel.signature().inputs == 1) {
    // The last arguments at which Exp, or its half, is normal and finite, and one at which it is 0.
    const bool half = kernel.function == "Cosh" || kernel.function == "Sinh";
    list = kernel.type == 's' ? unary_values(kernel.function, 1e-15f, -87.33654022216797f, -104.5f,
                                             half ? 89.41598510742188f : 88.72283172607422f)
                              : unary_values(kernel.function, 1e-100, -708.3964185322641, -745.2,
                                             half ? 710.4758600739439 : 709.782712893384);
  }
  const bool complex = strchr("cz", kernel.type) != nullptr;
  const bool silent = kernel.name() == "sDiv_EP" ||
                      (complex && kernel.slot == EP && kernel.kernel.starts_with("W7EP"));
  std::vector<Row> all(std::begin(rows), std::end(rows));
  all.insert(all.end(), complex_rows().begin(), complex_rows().end());
  for (const auto& [function, row] : all) {
    if (function != kernel.function || kernel.input_size(1) != row.a.size()) continue;
    SpecialValue value = row;
    for (auto* numbers : {&value.a, &value.b, &value.r}) {
      for (double& x : *numbers) x = number_of(x, kernel.in_float());
    }
    if (silent) value.code = 0;
    list.push_back(value);
  }
  return list;
}

template <class R>
void put(const Kernel& kernel, const SpecialValue& row, Vectors<R>& v, int i) {
  const size_t parts = kernel.input_size(1);
  for (size_t part = 0; part < parts; ++part) {
    v.in[0][i * parts + part] = static_cast<R>(row.a[part]);
    if (!v.in[1].empty()) {
      // Compilers choose which of two NaNs comes out.
      const double alike = std::isnan(row.a[part]) ? 1 : -row.a[part];
      v.in[1][i * parts + part] = static_cast<R>(row.b.empty() ? alike : row.b[part]);
    }
  }
}

#define ORV_INSTANTIATE(R)                                    \
  template struct Vectors<R>;                                 \
  template Vectors<R> ordinary(const Kernel&, int, uint32_t); \
  template void put(const Kernel&, const SpecialValue&, Vectors<R>&, int);
ORV_INSTANTIATE(float)
ORV_INSTANTIATE(double)
#undef ORV_INSTANTIATE

bool upper_halves_clear() {
  constexpr int registers = sizeof(void*) == 8 ? 16 : 8;
  alignas(64) unsigned char area[832] = {}, *const upper = area + 576;  // as XSAVE lays them out
  asm volatile("xsave %0" : "+m"(area) : "a"(4), "d"(0));
  return std::all_of(upper, upper + 16 * registers, [](unsigned char byte) { return byte == 0; });
}

#ifdef __i386__
void call_off_balance(void (*function)(), const std::vector<const void*>& arguments, int shift) {
  const void* const* first = arguments.data();
  size_t count = arguments.size();
  asm volatile(
      "movl %%esp, %%esi\n\t"
      "andl $-16, %%esp\n\t"
      "subl %%ecx, %%esp\n"
      "1:\tpushl -4(%%edx,%%edi,4)\n\t"
      "decl %%edi\n\t"
      "jnz 1b\n\t"
      "call *%%eax\n\t"
      "movl %%esi, %%esp"
      : "+a"(function), "+c"(shift), "+d"(first), "+D"(count)
      :
      : "esi", "memory", "cc", "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7");
}
#endif

std::vector<Report>& reports() { return heard; }

void listen() {
  heard.clear();
  orv_qem_kernel_SetErrorCallBack(log_report);
  orv_qem_kernel_SetMode(QEM_ERRMODE_CALLBACK);
}

Codes codes_heard() {
  Codes list;
  for (const Report& report : heard) list.emplace_back(report.code, report.index);
  return list;
}

}  // namespace orv_test
