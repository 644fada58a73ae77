// Add, Sub, Mul and Sqr where the output overlaps an input: the results are those of evaluation
// element by element, upward.
#include "harness.hpp"

using namespace orv_test;

namespace {

template <class T>
T one(const Kernel& kernel, T a, T b) {
  if (kernel.function == "Add") return a + b;
  if (kernel.function == "Sub") return a - b;
  if (kernel.function == "Mul") return a * b;
  return a * a;
}

/// Byte offsets of a, b and r in a buffer, as elements and odd bytes.
struct Places {
  int a, b, r, odd;
};

template <class T>
void check(const Kernel& kernel, int n, const Places& p) {
  constexpr size_t room = 256 * sizeof(T);
  alignas(32) static thread_local char actual[room], expected[room];
  static const std::vector<T> values = ordinary<T>(kernel, 250, 9);
  memset(actual, 0, room);
  memcpy(actual + p.odd, values.data(), 250 * sizeof(T));
  memcpy(expected, actual, room);
  const auto at = [&](char* buffer, int place) { return buffer + place * sizeof(T) + p.odd; };
  for (int i = 0; i < n; ++i) {
    T a, b;
    memcpy(&a, at(expected, p.a + i), sizeof a);
    memcpy(&b, at(expected, p.b + i), sizeof b);
    const T r = one(kernel, a, b);
    memcpy(at(expected, p.r + i), &r, sizeof r);
  }
  call(kernel, n, reinterpret_cast<T*>(at(actual, p.a)), reinterpret_cast<T*>(at(actual, p.b)),
       reinterpret_cast<T*>(at(actual, p.r)));
  ASSERT_EQ(memcmp(actual, expected, room), 0)
      << "n " << n << ", a " << p.a << ", b " << p.b << ", r " << p.r << ", odd " << p.odd;
}

TEST(Overlap, AsIfElementByElement) {
  int kernels = 0;
  for_each_kernel([&](const Kernel& kernel, auto element) {
    using T = decltype(element);
    if constexpr (std::is_floating_point_v<T>) {
      const std::string& f = kernel.function;
      if (f != "Add" && f != "Sub" && f != "Mul" && f != "Sqr") return;
      ++kernels;
      for (int n = 1; n <= 70; ++n) {
        for (const int odd : {0, 1, static_cast<int>(sizeof(T) / 2)}) {
          for (int d = -9; d <= 9; ++d) {  // r against a, then against b, then against both
            check<T>(kernel, n, {80, 170, 80 + d, odd});
            check<T>(kernel, n, {0, 90, 90 + d, odd});
            check<T>(kernel, n, {80, 80 + d, 80, odd});
            check<T>(kernel, n, {80 + d, 80, 80, odd});
            check<T>(kernel, n, {81, 82, 81 + d, odd});
          }
          for (const int d : {n - 1, n, n + 1}) {
            check<T>(kernel, n, {80, 80, 80 + d, odd});
            check<T>(kernel, n, {80, 80, 80 - d, odd});
          }
          if (testing::Test::HasFatalFailure()) return;
        }
      }
    }
  });
  EXPECT_EQ(kernels, 8);
}

}  // namespace
