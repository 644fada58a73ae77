// SPDX-License-Identifier: MIT
// Powers.
#include "families.hpp"

namespace orv_test {
namespace {

/// log2 of a positive number by the four operations, to some 2^-45 of it: atanh's series.
double binary_log(double x) {
  int exponent;
  double m = std::frexp(x, &exponent);
  if (m < 2.0 / 3) m *= 2, --exponent;
  const double s = (m - 1) / (m + 1);
  double sum = 0;
  for (int k = 29; k > 0; k -= 2) sum = sum * s * s + 1.0 / k;
  return exponent + 2 * 0x1.71547652B82FEp0 * s * sum;
}

/// x, and the logarithm of x^y. In braces their random numbers are drawn from left to right.
struct Power {
  double x, w;
};

/// Pairs with a given logarithm of the result.
template <class R>
class Powers {
 public:
  explicit Powers(Inputs<R>& in) : in_(in) {}

  /// x with y such that x^y = 2^w.
  void add(const Power& power) {
    const R base = static_cast<R>(power.x);
    in_.pairs.push_back({base, static_cast<R>(power.w / binary_log(base))});
  }
  /// Over the whole range of results, and beyond.
  double any_log() { return 1.06 * lowest * (2 * in_.random.unit() - 1); }
  double any_base() {
    const auto patterns = bits_of(std::numeric_limits<R>::infinity());
    return from_bits<R>(static_cast<typename Format<R>::Bits>(1 + in_.random.below(patterns - 1)));
  }
  /// 1 +- 2^-k, k up to what 1 still feels.
  double near_one() {
    const double d = power(-1 - static_cast<int>(in_.random.below(digits - 1)));
    const double distance = d * (1 + in_.random.unit());
    return 1 + distance * (in_.random.below(2) ? 1 : -0.5);
  }
  double power(int exponent) const { return std::ldexp(1.0, exponent); }

  static constexpr int digits = std::numeric_limits<R>::digits;
  static constexpr double lowest = std::numeric_limits<R>::min_exponent - 1 - digits;

 private:
  Inputs<R>& in_;
};

/// Where a table's row changes, and where a row stands, at any power of two.
template <class R>
void table_seams(Inputs<R>& in, Powers<R>& powers, int rows) {
  for (int j = 0; j <= 2 * rows; ++j) {
    const double m = 0.75 + 0.75 * j / (2 * rows), at = m < 1 ? m : 0.5 + j * 0.5 / rows;
    Inputs<R> near(in.random.next(), 0);
    near.values.clear();
    near.seam(at, 2);
    for (const R x : near.values) {
      const double scale = powers.power(static_cast<int>(in.random.below(200)) - 100);
      powers.add({x, powers.any_log()});
      powers.add({x * scale, powers.any_log()});
    }
  }
}

/// Logarithms of results at which something changes: the last normal and the last finite result,
/// the ends of the lanes, half steps of the powers' tables, what decides early.
template <class R>
void result_seams(Inputs<R>& in, Powers<R>& powers) {
  const double normal = std::numeric_limits<R>::min_exponent - 1, top = -normal + 2;
  for (const double w :
       {normal, normal + 1, top, powers.lowest, powers.lowest + 1, normal - 10, 1021.99963,
        -1021.99963, 126.0, -126.0, 125.9, 0x1p11, 0x1p-61, 0x1p-24, 0x1p-53, 1.0, -1.0}) {
    for (int i = 0; i < 300; ++i) {
      const double size = powers.power(-static_cast<int>(in.random.below(30)));
      const double off = size * in.random.unit();
      powers.add({i % 2 ? powers.any_base() : powers.near_one(), w * (1 + (i % 3 - 1) * off)});
    }
  }
  for (int i = 0; i < in.amount(0.05); ++i) {
    const double steps = static_cast<double>(in.random.below(4096)) - 2048;
    const double off = powers.power(-20 - static_cast<int>(in.random.below(20)));
    powers.add({powers.any_base(), (steps + 0.5) / 128 + (i % 3 - 1) * off});
  }
}

/// Whole and half exponents: exact results, halfway cases, signs.
template <class R>
void whole_exponents(Inputs<R>& in) {
  for (int x = -40; x <= 40; ++x) {
    for (int y = -40; y <= 40; ++y) {
      in.pairs.push_back({static_cast<R>(x), static_cast<R>(y / 2.0)});
      in.pairs.push_back({static_cast<R>(x / 16.0), static_cast<R>(y)});
    }
  }
  for (const double y : {0x1p22, 0x1p23, 0x1p24, 0x1p51, 0x1p52, 0x1p53}) {
    for (const double off : {-2.0, -1.0, -0.5, 0.0, 0.5, 1.0}) {
      for (const double x : {-1.0, -0.5, -2.0, 1 - 0x1p-24, -1 - 0x1p-23}) {
        in.pairs.push_back({static_cast<R>(x), static_cast<R>(y + off)});
        in.pairs.push_back({static_cast<R>(x), static_cast<R>(-y - off)});
      }
    }
  }
}

template <class R>
void pow_inputs(Inputs<R>& in) {
  arithmetic_inputs(in);
  Powers<R> powers(in);
  for (int i = 0; i < in.amount(0.3); ++i) {
    powers.add({powers.any_base(), powers.any_log()});
    powers.add({powers.near_one(), powers.any_log()});
    powers.add({0.7 + 0.8 * in.random.unit(), powers.any_log()});
    powers.add({std::numeric_limits<R>::min() * in.random.unit(), powers.any_log()});  // denormal x
  }
  for (int i = 0; i < in.amount(0.1); ++i) {  // denormal results
    powers.add({powers.any_base(), powers.lowest * (1 - 0.05 * in.random.unit())});
    powers.add({powers.near_one(), powers.lowest * (1 - 0.05 * in.random.unit())});
  }
  for (const int rows : {32, 256, 1024}) table_seams(in, powers, rows);
  result_seams(in, powers);
  whole_exponents(in);
}

// ---- One exponent for all ---------------------------------------------------------------------

struct Root {
  double exponent;
  const char* function;
};
constexpr Root roots[] = {{-1, "Inv"},       {0.5, "Sqrt"},         {-0.5, "InvSqrt"},
                          {1.0 / 3, "Cbrt"}, {-1.0 / 3, "InvCbrt"}, {2.0 / 3, "Pow2o3"},
                          {1.5, "Pow3o2"}};

/// Exponents with functions of their own have those functions' truth.
void powx(mpfr_t* y, mpfr_t* x) {
  const bool in_float = mpfr_get_prec(x[1]) == std::numeric_limits<float>::digits;
  const double b = mpfr_get_d(x[1], MPFR_RNDN);
  for (const auto& [exponent, name] : roots) {
    if (b != (in_float ? static_cast<float>(exponent) : exponent)) continue;
    if (const Function* f = find_function(in_float ? 's' : 'd', name)) return f->exact(y, x);
  }
  if (b == 1) {
    mpfr_set(y[0], x[0], MPFR_RNDN);
  } else {
    mpfr_pow(y[0], x[0], x[1], MPFR_RNDN);
  }
}

template <class R>
void powx_inputs(Inputs<R>& in) {
  pow_inputs(in);
  const auto run = [&](double exponent) {
    for (const R x : special_values<R>()) in.pairs.push_back({x, static_cast<R>(exponent)});
    for (int i = 0; i < in.amount(0.01); ++i) {
      const auto bits = static_cast<typename Format<R>::Bits>(in.random.next());
      in.pairs.push_back({from_bits<R>(bits), static_cast<R>(exponent)});
    }
  };
  for (const Root& root : roots) run(root.exponent);
  for (const double exponent : {1.0, 2.0, 3.0, 2.5, -2.0, 0.25}) run(exponent);
}

}  // namespace

std::vector<Function> power_functions() {
  return {
      {"sd", "Pow", Approximate, binary<mpfr_pow>, nullptr, ORV_INPUTS(pow_inputs)},
      {"sd", "Powx", Approximate, powx, nullptr, ORV_INPUTS(powx_inputs)},
  };
}

}  // namespace orv_test
