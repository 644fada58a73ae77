// SPDX-License-Identifier: MIT
// Relations that callers count on: odd and even functions to the bit, and monotone ones across
// every seam of their kernels.
#include <math.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <span>

#include "harness.hpp"

using namespace orv_test;

namespace {

template <class R>
std::vector<R> results(const Kernel& kernel, const std::vector<R>& x) {
  std::vector<R> y(x.size());
  call(kernel, static_cast<int64_t>(x.size()), x.data(), nullptr, y.data(), nullptr);
  return y;
}

// ---- Symmetry ----------------------------------------------------------------------------------

/// f(-x) = sign f(x).
struct Symmetric {
  const char* function;
  int sign;
};
constexpr Symmetric symmetric[] = {{"Asin", -1},   {"Asinh", -1}, {"Atan", -1}, {"Atanh", -1},
                                   {"Cbrt", -1},   {"Cos", 1},    {"Cosh", 1},  {"Erf", -1},
                                   {"ErfInv", -1}, {"Sin", -1},   {"Sinh", -1}, {"Tan", -1},
                                   {"Tanh", -1}};

/// Any pattern, and as many numbers of usual size.
template <class R>
std::vector<R> numbers(int count) {
  std::mt19937_64 random(12);
  std::vector<R> x = {0, 1, std::numeric_limits<R>::max(), std::numeric_limits<R>::denorm_min()};
  while (static_cast<int>(x.size()) < count) {
    const uint64_t bits = random();
    const double part = static_cast<double>(random() >> 11) * 0x1p-53;
    R any;
    memcpy(&any, &bits, sizeof any);
    if (std::isfinite(any)) x.push_back(any);
    x.push_back(static_cast<R>(std::ldexp(part, static_cast<int>(bits % 16) - 8)));
  }
  return x;
}

template <class R>
void expect_symmetric(const Kernel& kernel, int sign) {
  const std::vector<R> x = numbers<R>(50'000);
  std::vector<R> opposite(x.rbegin(), x.rend());  // in other lanes
  for (R& number : opposite) number = -number;
  const std::vector<R> y = results(kernel, x), mirrored = results(kernel, opposite);
  for (size_t i = 0; i < x.size(); ++i) {
    const R there = mirrored[x.size() - 1 - i] * static_cast<R>(sign);
    if (std::isnan(y[i]) && std::isnan(there)) continue;
    ASSERT_TRUE(same_bits(&y[i], &there, 1)) << x[i] << ": " << y[i] << ' ' << there;
  }
}

TEST(Relations, OddAndEvenFunctionsToTheBit) {
  size_t kernels = 0;
  for_each_kernel([&](const Kernel& kernel, auto number) {
    for (const auto& [function, sign] : symmetric) {
      if (kernel.function != function || kernel.signature().input_parts != 1) continue;
      expect_symmetric<decltype(number)>(kernel, sign), ++kernels;
    }
  });
  EXPECT_GE(kernels, 3 * std::size(symmetric));
}

// ---- Complex functions --------------------------------------------------------------------------

constexpr const char* conjugate_functions[] = {"Acos", "Acosh", "Asin", "Asinh", "Atan",  "Atanh",
                                               "Cos",  "Cosh",  "Exp",  "Ln",    "Log10", "Sin",
                                               "Sinh", "Sqrt",  "Tan",  "Tanh"};
constexpr const char* odd_functions[] = {"Asin", "Asinh", "Atan", "Atanh",
                                         "Sin",  "Sinh",  "Tan",  "Tanh"};

bool is_in(std::span<const char* const> names, const Kernel& kernel) {
  return (kernel.type == 'c' || kernel.type == 'z') &&
         std::find(names.begin(), names.end(), kernel.function) != names.end();
}

/// The parts times these signs.
template <class R>
std::vector<R> signed_parts(std::vector<R> z, R re, R im) {
  for (size_t i = 0; i < z.size(); i += 2) z[i] *= re, z[i + 1] *= im;
  return z;
}

template <class R>
void expect_same(const char* what, const std::vector<R>& z, const std::vector<R>& a,
                 const std::vector<R>& b) {
  for (size_t i = 0; i < z.size(); i += 2) {
    for (size_t k = i; k < i + 2; ++k) {
      if (std::isnan(a[k]) && std::isnan(b[k])) continue;
      ASSERT_TRUE(same_bits(&a[k], &b[k], 1))
          << what << " at " << z[i] << ' ' << z[i + 1] << ": " << a[k] << ' ' << b[k];
    }
  }
}

template <class R>
std::vector<R> complex_results(const Kernel& kernel, const std::vector<R>& z) {
  std::vector<R> y(z.size());
  call(kernel, static_cast<int64_t>(z.size() / 2), z.data(), nullptr, y.data(), nullptr);
  return y;
}

TEST(Relations, ConjugateAndOppositeComplexArguments) {
  size_t kernels = 0;
  for_each_kernel([&](const Kernel& kernel, auto number) {
    using R = decltype(number);
    if (!is_in(conjugate_functions, kernel)) return;
    ++kernels;
    std::vector<R> z = numbers<R>(20'000);
    z.resize(z.size() / 2 * 2);
    const std::vector<R> y = complex_results(kernel, z);
    const auto mirrored = complex_results(kernel, signed_parts<R>(z, 1, -1));
    expect_same("conjugate", z, signed_parts<R>(mirrored, 1, -1), y);
    if (!is_in(odd_functions, kernel)) return;
    const auto opposite = complex_results(kernel, signed_parts<R>(z, -1, -1));
    expect_same("opposite", z, signed_parts<R>(opposite, -1, -1), y);
  });
  EXPECT_GE(kernels, 2 * std::size(conjugate_functions));
}

/// Floats are computed as doubles and narrowed, or as good as that.
TEST(Relations, ComplexFloatsAreNarrowedDoubles) {
  const std::vector<Kernel> kernels = distinct_kernels();
  for (const Kernel& narrow : kernels) {
    if (narrow.type != 'c' || !is_in(conjugate_functions, narrow)) continue;
    if (narrow.kernel.substr(2, 2) != "HA") continue;
    const auto wide = std::find_if(kernels.begin(), kernels.end(), [&](const Kernel& k) {
      return k.type == 'z' && k.function == narrow.function && k.kernel.substr(2, 2) == "HA";
    });
    ASSERT_NE(wide, kernels.end()) << narrow.name();
    std::vector<float> z = numbers<float>(20'000);
    z.resize(z.size() / 2 * 2);
    const auto y = complex_results<double>(*wide, {z.begin(), z.end()});
    std::vector<float> floats = complex_results(narrow, z), narrowed{y.begin(), y.end()};
    if (narrow.frame != "scalar_call") {  // a vector kernel's may be a neighbour
      for (size_t i = 0; i < floats.size(); ++i) {
        const float next = std::nextafter(narrowed[i], floats[i]);
        if (next == floats[i] && floats[i] != 0) narrowed[i] = next;
      }
    }
    expect_same(narrow.name().c_str(), z, floats, narrowed);
  }
}

/// Kernels whose numbers are to the bit those of a real function of the same level, of the parts.
struct OfParts {
  const char *complex, *real;
  int part;         // of the result
  bool imag_first;  // the real function takes it so
};
constexpr OfParts of_parts[] = {
    {"Abs", "Hypot", 0, false}, {"Arg", "Atan2", 0, true}, {"Ln", "Atan2", 1, true}};

template <class R>
void expect_of_parts(const Kernel& kernel, const Kernel& real, const OfParts& which) {
  constexpr size_t n = 20'000;
  std::mt19937_64 random(3);
  std::vector<R> z(2 * n), parts[2], expected(n), y(kernel.result_size(n));
  for (R& x : z) {
    const double significand = static_cast<double>(random() >> 11) * 0x1p-52 - 1;
    x = static_cast<R>(std::ldexp(significand, static_cast<int>(random() % 40) - 20));
  }
  for (size_t i = 0; i < 2 * n; ++i) parts[i % 2].push_back(z[i]);
  call(kernel, n, z.data(), nullptr, y.data(), nullptr);
  call(real, n, parts[which.imag_first].data(), parts[!which.imag_first].data(), expected.data(),
       nullptr);
  const size_t apart = kernel.result_size(1);
  for (size_t i = 0; i < n; ++i) {
    ASSERT_TRUE(same_bits(&y[i * apart + which.part], &expected[i], 1))
        << kernel.name() << " at " << z[2 * i] << ' ' << z[2 * i + 1];
  }
}

TEST(Relations, SizesAndAnglesOfParts) {
  const std::vector<Kernel> slots = all_slots();
  size_t found = 0;
  for (const Kernel& kernel : distinct_kernels()) {
    for (const OfParts& which : of_parts) {
      if (strchr("cz", kernel.type) == nullptr || kernel.function != which.complex) continue;
      const std::string level = kernel.kernel.substr(2, 2);
      const auto real = std::find_if(slots.begin(), slots.end(), [&](const Kernel& k) {
        return k.in_float() == kernel.in_float() && k.function == which.real &&
               level == slot_name[k.slot];
      });
      ASSERT_NE(real, slots.end());
      ++found;
      kernel.in_its_type([&]<class R>(R) { expect_of_parts<R>(kernel, *real, which); });
    }
  }
  EXPECT_EQ(found, 2 + 5 + 6);
}

// ---- Monotony ----------------------------------------------------------------------------------

constexpr double ln2 = 0x1.62E42FEFA39EFp-1;

/// Arguments where the HA kernel passes from one formula, or row of a table, to another.
struct Seams {
  char type;
  const char* function;
  int direction;  // -1 where the function falls
  std::vector<double> at;
};

const Seams seams[] = {
    {'d', "Cbrt", 1, {1, 8, 0x1p-1022}},
    {'s', "Cbrt", 1, {1, 8, 0x1p-126}},
    {'d', "Exp", 1, {0x1p-54, 1, 708, -708}},
    {'d', "Ln", 1, {0.5, 1, 2, 0x1p-1022}},
    {'d', "Cosh", 1, {0.5 * ln2 / 64, 1.5 * ln2 / 64, 100.5 * ln2 / 64, 1000.5 * ln2 / 64, 708}},
    {'s', "Cosh", 1, {0.5 * ln2 / 64, 1.5 * ln2 / 64, 100.5 * ln2 / 64, 1000.5 * ln2 / 64, 87}},
    {'d', "Sinh", 1, {0.25, 0.5 * ln2 / 64, 100.5 * ln2 / 64, 1000.5 * ln2 / 64, 708}},
    {'s', "Sinh", 1, {0.5 * ln2 / 64, 100.5 * ln2 / 64, 1000.5 * ln2 / 64, 87}},
    {'d', "Tanh", 1, {0.0625, 0.064453125, 0.5, 1, 1.03125, 4, 19.0615}},
    {'s', "Tanh", 1, {0.0625, 0.064453125, 0.5, 1, 1.03125, 4, 9.0109}},
    {'d', "Erf", 1, {0x1p-100, 0.5 / 32, 1.5 / 32, 20.5 / 32, 100.5 / 32, 5.96875}},
    {'s', "Erf", 1, {0.5 / 64, 1.5 / 64, 20.5 / 64, 100.5 / 64, 3.921875}},
    {'d',
     "Erfc",
     -1,
     {-1.015625, 0x1p-10, 1.0 / 64, 1.0 / 32, 3.0 / 64, 1 - 1.0 / 64, 3 - 1.0 / 64, 26.5432434}},
    {'s', "Erfc", -1, {-1.03125, 1.0 / 32, 3.0 / 32, 1 - 1.0 / 32, 3 - 1.0 / 32, 9.19454}},
    {'d',
     "CdfNorm",
     1,
     {-37.51937, 1 / 64.0 - 3, 1 / 64.0 - 1, -1 / 32.0, -1 / 64.0, 1 / 64.0, 1 / 32.0,
      1 - 1 / 64.0}},
    {'s', "CdfNorm", 1, {-12.94995, 1 / 32.0 - 3, 1 / 32.0 - 1, -1.0 / 32, 1.0 / 32, 1 - 1 / 32.0}},
    {'d', "CdfNormInv", 1, {0x1p-54, 0x1p-20, 0.125, 0.3125, 0.5, 0.6875, 0.875}},
    {'s', "CdfNormInv", 1, {0x1p-25, 0x1p-20, 0.125, 0.3125, 0.5, 0.6875, 0.875}},
    {'d', "ErfcInv", -1, {0x1p-53, 0x1p-20, 0.25, 0.625, 1, 1.375, 1.75}},
    {'s', "ErfcInv", -1, {0x1p-24, 0x1p-20, 0.25, 0.625, 1, 1.375, 1.75}},
    {'d', "ErfInv", 1, {-0.75, 0x1p-35, 0.375, 0.75, 0.9375}},
    {'s', "ErfInv", 1, {-0.75, 0x1p-20, 0.375, 0.75, 0.9375}},
    {'d', "Asin", 1, {-0.5, 0.5}},
    {'s', "Asin", 1, {-0.5, 0.5}},
    {'d', "Acos", -1, {-0.5, 0.5}},
    {'s', "Acos", -1, {-0.5, 0.5}},
    {'d', "Atan", 1, {0x1p-30, 0x1.1p-10, 0.125, 1, 1.0625, 64, 0x1p53, 0x1p54}},
    {'s', "Atan", 1, {0x1p-14, 0x1.1p-10, 0.125, 1, 1.0625, 64, 0x1p26, 0x1p28}},
    {'d', "Asinh", 1, {0x1p-53, 0x1p-27, 0x1p-26, 0.75, 0x1p500}},
    {'s', "Asinh", 1, {0x1p-26, 0.5826436781609195, 0.75, 1.4526436781609195, 0x1p60}},
    {'d', "Acosh", 1, {1 + 0x1p-26, 1.25, 2.125, 0x1p53, 0x1p500}},
    {'s', "Acosh", 1, {1.1573563218390805, 1.25, 2.125, 0x1p60}},
    {'d', "Atanh", 1, {0x1p-54, 0x1p-53, 0x1p-27, 0x1p-26, 1.0 / 3, 0.6, 1 - 0x1p-20}},
    {'s', "Atanh", 1, {0x1p-26, 0.74 / 3, 2.74 / 5, 1 - 0x1p-20}},
};

/// A million neighbours, half of them below `seam`.
template <class R>
std::vector<R> neighbours(R seam) {
  constexpr int half = 500'000;
  std::vector<R> x = {seam};
  for (int i = 0; i < half; ++i) x.push_back(std::nextafter(x.back(), -INFINITY));
  std::reverse(x.begin(), x.end());
  for (int i = 0; i < half; ++i) x.push_back(std::nextafter(x.back(), INFINITY));
  return x;
}

template <class R>
void expect_monotone(const Kernel& kernel, R seam, int direction) {
  const std::vector<R> x = neighbours(seam), y = results(kernel, x);
  size_t i = 0;
  const auto backwards = std::count_if(y.begin() + 1, y.end(), [&](R) {
    return ++i, direction > 0 ? y[i] < y[i - 1] : y[i] > y[i - 1];
  });
  EXPECT_EQ(backwards, 0) << kernel.name() << " at " << seam;
}

TEST(Relations, MonotoneAcrossSeams) {
  size_t found = 0;
  for (const Kernel& kernel : all_slots()) {
    for (const Seams& s : seams) {
      if (kernel.slot != HA || kernel.type != s.type || kernel.function != s.function) continue;
      ++found;
      kernel.in_its_type([&]<class R>(R) {
        for (const double at : s.at) expect_monotone(kernel, static_cast<R>(at), s.direction);
      });
    }
  }
  EXPECT_EQ(found, std::size(seams));
}

}  // namespace
