// SPDX-License-Identifier: MIT
// SinCos against Sin and Cos, and the symmetry of both, to the bit: streams of random numbers take
// whichever they need.
#include <math.h>

#include <cmath>
#include <limits>
#include <random>

#include "harness.hpp"

using namespace orv_test;

namespace {

const Kernel& kernel_of(const std::vector<Kernel>& slots, char type, const char* function,
                        Slot slot) {
  for (const Kernel& k : slots) {
    if (k.type == type && k.function == function && k.slot == slot) return k;
  }
  ADD_FAILURE() << "no " << type << function;
  return slots.front();
}

/// All ranges of a reduction: any pattern, angles of every size, multiples of pi/512, where rows
/// and quadrants meet, and their neighbours.
template <class R>
std::vector<R> angles() {
  std::mt19937_64 random(11);
  std::vector<R> x = {0, -R{0}, std::numeric_limits<R>::max(),
                      std::numeric_limits<R>::denorm_min()};
  for (const double limit : {10000.0, 65536.0, 0x1p24}) {
    for (const R to : {R{0}, std::numeric_limits<R>::max()}) {
      x.push_back(static_cast<R>(limit)), x.push_back(std::nextafter(static_cast<R>(limit), to));
    }
  }
  while (x.size() < 100'000) {
    const double part = static_cast<double>(random() >> 11) * 0x1p-53;
    const double size = std::ldexp(1 + part, static_cast<int>(random() % (sizeof(R) * 20)) - 30);
    const R near = static_cast<R>(std::nearbyint(size) * 0x1.921FB54442D18p-8);
    x.push_back(static_cast<R>(size));
    x.push_back(near), x.push_back(std::nextafter(near, R{0}));
    R any;
    const uint64_t bits = random();
    memcpy(&any, &bits, sizeof any);
    if (std::isfinite(any)) x.push_back(any);
  }
  return x;
}

template <class R>
std::vector<R> negated(std::vector<R> x) {
  for (R& number : x) number = -number;
  return x;
}

template <class R>
void expect_same(const char* what, const std::vector<R>& x, const std::vector<R>& a,
                 const std::vector<R>& b) {
  for (size_t i = 0; i < x.size(); ++i) {
    ASSERT_TRUE(same_bits(&a[i], &b[i], 1)) << what << ' ' << x[i] << ": " << a[i] << ' ' << b[i];
  }
}

TEST(SinCos, AgreesWithSinAndCos) {
  const std::vector<Kernel> slots = all_slots();
  int kernels = 0;
  for_each_kernel([&](const Kernel& both, auto number) {
    using R = decltype(number);
    if (both.function != "SinCos") return;
    ++kernels;
    const Kernel& sin = kernel_of(slots, both.type, "Sin", both.slot);
    const Kernel& cos = kernel_of(slots, both.type, "Cos", both.slot);
    const std::vector<R> x = angles<R>(), opposite = negated(x);
    const auto n = static_cast<int32_t>(x.size());
    std::vector<R> s(n), c(n), s2(n), c2(n);
    call(sin, n, x.data(), nullptr, s.data(), nullptr);
    call(cos, n, x.data(), nullptr, c.data(), nullptr);
    call(both, n, x.data(), nullptr, s2.data(), c2.data());
    expect_same("sine", x, s2, s);
    expect_same("cosine", x, c2, c);
    // The opposite angles in reverse order lie in other lanes.
    std::vector<R> reversed(opposite.rbegin(), opposite.rend());
    call(both, n, reversed.data(), nullptr, s2.data(), c2.data());
    expect_same("odd sine", x, {s2.rbegin(), s2.rend()}, negated(s));
    expect_same("even cosine", x, {c2.rbegin(), c2.rend()}, c);
  });
  EXPECT_GE(kernels, 3);
}

}  // namespace
