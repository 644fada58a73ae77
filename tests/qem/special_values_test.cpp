// Special values and status codes of every kernel, at every position of vectors of every length up
// to three blocks and one.
#include "special_values.hpp"

#include <math.h>

#include <limits>

#include "harness.hpp"

using namespace orv_test;

namespace {

template <class T>
testing::AssertionResult matches(const Kernel& kernel, T y, const Expected& expected) {
  const T value = static_cast<T>(expected.value);
  const bool single = sizeof(T) == sizeof(float);
  const double tolerance =
      kernel.slot == EP ? (single ? 0x1p-10 : 0x1p-24) : (single ? 0x1p-21 : 0x1p-50);
  const bool exact = same_bits(&y, &value, 1);
  const bool near = exact || fabs(y - value) <= tolerance * fabs(value);
  bool good = false;
  switch (expected.is) {
    case Is::Exactly:
      good = exact;
      break;
    case Is::ExactlyAtHA:
      good = kernel.slot == HA ? exact : near;
      break;
    case Is::Zero:
      good = y == 0;
      break;
    case Is::Near:
      good = near;
      break;
    case Is::NaN:
      good = isnan(y);
      break;
    case Is::Subnormal:
      good = y > 0 && y < std::numeric_limits<T>::min();
      break;
  }
  if (good) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "result " << y << ", expected about " << value;
}

template <class T>
struct Background {
  std::vector<T> a, b, r;
};

/// The value at `position` of `n` ordinary elements: its result and report, and no one else's.
template <class T>
void check_at(const Kernel& kernel, const SpecialValue& row, T alone, const Background<T>& good,
              int n, int position) {
  std::vector<T> a(good.a.begin(), good.a.begin() + n), b(good.b.begin(), good.b.begin() + n);
  std::vector<T> expected(good.r.begin(), good.r.begin() + n), r(n);
  a[position] = static_cast<T>(row.a), b[position] = static_cast<T>(row.b);
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
  good.r = one_by_one(kernel, good.a, good.b);
  for (const SpecialValue& row : special_values(kernel)) {
    const T a = static_cast<T>(row.a), b = static_cast<T>(row.b);
    SCOPED_TRACE(testing::Message() << "a = " << a << ", b = " << b);
    T alone;
    call(kernel, 1, &a, &b, &alone);
    EXPECT_TRUE(matches(kernel, alone, row.result));
    for (int n = 1; n <= longest; ++n) {
      for (int position = 0; position < n; ++position) {
        check_at(kernel, row, alone, good, n, position);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
}

TEST(SpecialValues, AtEveryPosition) {
  for_each_kernel([](const Kernel& kernel, auto element) {
    using T = decltype(element);
    if constexpr (std::is_floating_point_v<T>) {
      EXPECT_FALSE(special_values(kernel).empty()) << "the table has no row for this function";
      check<T>(kernel);
    }
  });
}

/// The one complex function so far is a bit operation: also NaN keeps its payload and its
/// quietness.
TEST(SpecialValues, ConjugateFlipsOneBit) {
  for_each_kernel([](const Kernel& kernel, auto element) {
    using T = decltype(element);
    if constexpr (!std::is_floating_point_v<T>) {
      ASSERT_EQ(kernel.function, "Conj") << "the table has no row for this function";
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
