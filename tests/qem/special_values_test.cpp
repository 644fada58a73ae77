// Special values and status codes of every kernel, at every position of vectors of every length up
// to three blocks and one. Whether the results are right is what the accuracy tests tell.
#include <math.h>

#include <limits>

#include "harness.hpp"

using namespace orv_test;

namespace {

template <class T>
struct Background {
  std::vector<T> a, b, r;
};

/// The value at `position` of `n` ordinary elements: its result and report, and no one else's.
template <class T>
void check_at(const Kernel& kernel, const SpecialValue& row, T b_there, T alone,
              const Background<T>& good, int n, int position) {
  std::vector<T> a(good.a.begin(), good.a.begin() + n), b(good.b.begin(), good.b.begin() + n);
  std::vector<T> expected(good.r.begin(), good.r.begin() + n), r(n);
  a[position] = static_cast<T>(row.a), b[position] = b_there;
  expected[position] = alone;

  orv_qem_kernel_SetErrStatus(42);
  reports().clear();
  call(kernel, n, a.data(), b.data(), r.data());

  ASSERT_TRUE(same_bits(r, expected)) << "n " << n << " position " << position;
  ASSERT_EQ(orv_qem_kernel_GetErrStatus(), row.code != 0 ? row.code : 42);
  ASSERT_EQ(reports().size(), row.code != 0 ? 1u : 0u) << "n " << n << " position " << position;
  if (row.code == 0) return;
  const Report& report = reports()[0];
  ASSERT_EQ(report.code, row.code);
  ASSERT_EQ(report.index, position) << "n " << n;
  ASSERT_EQ(report.name, std::string("v") + kernel.type + kernel.function);
  const double arg = a[position], result = alone;
  for (const double* shown : {&report.arg1, &report.arg2}) ASSERT_TRUE(same_bits(shown, &arg, 1));
  for (const double* shown : {&report.res1, &report.res2}) {
    ASSERT_TRUE(same_bits(shown, &result, 1));
  }
}

template <class T>
void check(const Kernel& kernel) {
  listen();
  Background<T> good{ordinary<T>(kernel, longest, 1), ordinary<T>(kernel, longest, 2), {}};
  good.r.resize(longest);
  for (int i = 0; i < longest; ++i) call(kernel, 1, &good.a[i], &good.b[i], &good.r[i]);
  for (const SpecialValue& row : special_values(kernel)) {
    SCOPED_TRACE(testing::Message() << "a = " << row.a);
    const T a = static_cast<T>(row.a);
    const T b = isnan(a) ? 1 : -a;  // compilers choose which of two NaNs comes out
    T alone;
    call(kernel, 1, &a, &b, &alone);
    for (int n = 1; n <= longest; ++n) {
      for (int position = 0; position < n; ++position) {
        check_at(kernel, row, b, alone, good, n, position);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
}

TEST(SpecialValues, AtEveryPosition) {
  for_each_kernel([](const Kernel& kernel, auto element) {
    using T = decltype(element);
    if constexpr (std::is_floating_point_v<T>) {
      check<T>(kernel);
    }
  });
}

/// Accuracy within a bound would leave these open.
TEST(SpecialValues, ExpOfTheSmallestAndTheLowest) {
  const auto check = [](auto exp, auto lowest) {
    using T = decltype(lowest);
    const T tiny = std::numeric_limits<T>::denorm_min();
    const T x[] = {0, -T{0}, tiny, -tiny, lowest}, expected[] = {1, 1, 1, 1, 0};
    T y[5];
    exp(5, x, y);
    EXPECT_TRUE(same_bits(y, expected, 5));
  };
  check(_qemsExp, -104.5f);
  check(_qemdExp, -745.2);
}

/// The one complex function so far is a bit operation: also NaN keeps its payload and its
/// quietness.
TEST(SpecialValues, ConjugateFlipsOneBit) {
  for_each_kernel([](const Kernel& kernel, auto element) {
    using T = decltype(element);
    if constexpr (!std::is_floating_point_v<T>) {
      ASSERT_EQ(kernel.function, "Conj") << "another complex function: it needs a test";
      using Part = decltype(T::re);
      using Limits = std::numeric_limits<Part>;
      for (const Part part : {Part(0), Part(-1.5), Limits::infinity(), Limits::quiet_NaN(),
                              Limits::signaling_NaN(), Limits::denorm_min()}) {
        for (int n = 1; n <= longest; ++n) {
          std::vector<T> a(n), r(n);
          for (T& x : a) memcpy(&x.re, &part, sizeof part), memcpy(&x.im, &part, sizeof part);
          call(kernel, n, a.data(), a.data(), r.data());
          for (int i = 0; i < n; ++i) {
            unsigned char expected[sizeof(T)];
            memcpy(expected, &a[i], sizeof expected);
            expected[sizeof(T) - 1] ^= 0x80;
            ASSERT_EQ(memcmp(&r[i], expected, sizeof expected), 0) << "n " << n << " at " << i;
          }
        }
      }
    }
  });
}

}  // namespace
