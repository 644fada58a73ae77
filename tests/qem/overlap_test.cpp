// SPDX-License-Identifier: MIT
// Outputs that overlap an input without being the same vector.
#include "harness.hpp"

using namespace orv_test;

namespace {

/// Places of a, b and r in a buffer, in elements, and bytes that all are moved by.
struct Places {
  int a, b, r, odd;
};

/// Calls once, or element by element, on vectors in `buffer`.
template <class R>
void run(const Kernel& kernel, int n, const Places& p, char* buffer, bool singly) {
  const auto at = [&](int place) { return buffer + p.odd + kernel.input_size(place) * sizeof(R); };
  for (int i = 0; i < (singly ? n : 1); ++i) {
    call(kernel, singly ? 1 : n, at(p.a + i), at(p.b + i), at(p.r + i), nullptr);
  }
}

/// A call gives what ascending calls of single elements give.
template <class R>
void check_ascending(const Kernel& kernel, int n, const Places& p) {
  constexpr size_t room = 256 * sizeof(R);
  alignas(32) static thread_local char actual[room], expected[room];
  static const std::vector<R> values = ordinary<R>(kernel, 250, 9).in[0];
  memset(actual, 0, room);
  memcpy(actual + p.odd, values.data(), 250 * sizeof(R));
  memcpy(expected, actual, room);
  run<R>(kernel, n, p, actual, false);
  run<R>(kernel, n, p, expected, true);
  ASSERT_EQ(memcmp(actual, expected, room), 0)
      << "n " << n << ", a " << p.a << ", b " << p.b << ", r " << p.r << ", odd " << p.odd;
}

TEST(Overlap, ElementwiseKernelsGoUpward) {
  int kernels = 0;
  for_each_kernel([&](const Kernel& kernel, auto number) {
    using R = decltype(number);
    if (kernel.frame != "elementwise") return;
    ++kernels;
    for (int n = 1; n <= 70; ++n) {
      for (const int odd : {0, 1, static_cast<int>(sizeof(R) / 2)}) {
        for (int d = -9; d <= 9; ++d) {  // r against a, then against b, then against both
          check_ascending<R>(kernel, n, {80, 170, 80 + d, odd});
          check_ascending<R>(kernel, n, {0, 90, 90 + d, odd});
          check_ascending<R>(kernel, n, {80, 80 + d, 80, odd});
          check_ascending<R>(kernel, n, {80 + d, 80, 80, odd});
          check_ascending<R>(kernel, n, {81, 82, 81 + d, odd});
        }
        for (const int d : {n - 1, n, n + 1}) {
          check_ascending<R>(kernel, n, {80, 80, 80 + d, odd});
          check_ascending<R>(kernel, n, {80, 80, 80 - d, odd});
        }
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  });
  EXPECT_GE(kernels, 9);
}

/// A padded tail is read whole before any of it is written.
TEST(Overlap, PaddedTailsAreReadFirst) {
  int kernels = 0;
  for_each_kernel([&](const Kernel& kernel, auto number) {
    using R = decltype(number);
    if (kernel.frame != "padded") return;
    ++kernels;
    Vectors<R> v = ordinary<R>(kernel, 2);
    v.call(kernel, 1);
    v.call(kernel, 2);
    std::vector<R> buffer(kernel.input_size(3));
    memcpy(buffer.data(), v.in[0].data(), v.in[0].size() * sizeof(R));
    R* r = buffer.data() + kernel.result_size(1);
    call(kernel, 2, buffer.data(), nullptr, r, nullptr);
    EXPECT_TRUE(same_bits(r, v.out[0].data(), v.out[0].size()));
  });
  EXPECT_EQ(kernels, 8);
}

}  // namespace
