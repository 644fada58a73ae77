// Special values and status codes of every kernel, at every position of vectors of every length up
// to three blocks and one. Where a row tells no result, the accuracy tests tell whether it is
// right.
#include <math.h>

#include <limits>

#include "harness.hpp"

using namespace orv_test;

namespace {

/// The parts of an element, widened as an error record has them; the imaginary part of a real
/// number is 0.
template <class R>
void expect_parts(const double (&shown)[2], const std::vector<R>& numbers, size_t parts) {
  for (size_t part = 0; part < 2; ++part) {
    const double expected = part < parts ? static_cast<double>(numbers[part]) : 0;
    ASSERT_TRUE(same_bits(&shown[part], &expected, 1)) << shown[part] << " for " << expected;
  }
}

/// The value at `position` of `n` ordinary elements: its result and report, and no one else's.
template <class R>
void check_at(const Kernel& kernel, const SpecialValue& row, const Vectors<R>& alone,
              const Vectors<R>& good, int n, int position) {
  Vectors<R> v(kernel, n), expected(kernel, n);
  for (int i = 0; i < n; ++i) good.copy_element(kernel, i, expected, i);
  alone.copy_element(kernel, 0, expected, position);
  for (int j = 0; j < 2; ++j) v.in[j] = expected.in[j];

  orv_qem_kernel_SetErrStatus(42);
  reports().clear();
  v.call(kernel, n);

  ASSERT_TRUE(v.same_results(expected)) << "n " << n << " position " << position;
  ASSERT_EQ(orv_qem_kernel_GetErrStatus(), row.code != 0 ? row.code : 42);
  ASSERT_EQ(reports().size(), row.code != 0 ? 1u : 0u) << "n " << n << " position " << position;
  if (row.code == 0) return;
  const Report& report = reports()[0];
  ASSERT_EQ(report.code, row.code);
  ASSERT_EQ(report.index, position) << "n " << n;
  const bool by_scalar_entry = kernel.function == "CIS";  // whose name it reports under
  ASSERT_EQ(report.name,
            by_scalar_entry ? "zCIS_HA" : std::string("v") + kernel.type + kernel.function);
  for (const auto* shown : {&report.arg1, &report.arg2}) {
    expect_parts(*shown, alone.in[0], kernel.input_size(1));
  }
  const bool two = kernel.signature().results == 2;
  expect_parts(report.res1, alone.out[0], kernel.result_size(1));
  expect_parts(report.res2, alone.out[two ? 1 : 0], kernel.result_size(1));
}

template <class R>
void check_result(const Kernel& kernel, const SpecialValue& row, const Vectors<R>& alone) {
  const size_t parts = kernel.result_size(1);
  for (size_t k = 0; k < row.r.size(); ++k) {
    const R actual = alone.out[k / parts][k % parts], expected = static_cast<R>(row.r[k]);
    EXPECT_TRUE(isnan(expected) ? isnan(actual) : same_bits(&actual, &expected, 1))
        << actual << " for " << expected;
  }
}

TEST(SpecialValues, AtEveryPosition) {
  for_each_kernel([](const Kernel& kernel, auto number) {
    using R = decltype(number);
    listen();
    Vectors<R> good = ordinary<R>(kernel, longest), alone(kernel, 1);
    for (int i = 0; i < longest; ++i) {
      good.copy_element(kernel, i, alone, 0);
      alone.call(kernel, 1);
      alone.copy_element(kernel, 0, good, i);
    }
    for (const SpecialValue& row : special_values(kernel)) {
      testing::Message what;
      for (const auto* numbers : {&row.a, &row.b}) {
        for (const double x : *numbers) what << ' ' << x;
      }
      SCOPED_TRACE(what);
      put(kernel, row, alone, 0);
      alone.call(kernel, 1);
      check_result(kernel, row, alone);
      for (int n = 1; n <= longest; ++n) {
        for (int position = 0; position < n; ++position) {
          check_at(kernel, row, alone, good, n, position);
          if (testing::Test::HasFatalFailure()) return;
        }
      }
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

/// A change of one bit: also NaN keeps its payload and its quietness.
template <class R, class T>
void check_conjugate(void (*conjugate)(int32_t, const T*, T*)) {
  using Limits = std::numeric_limits<R>;
  for (const R part : {R(0), R(-1.5), Limits::infinity(), Limits::quiet_NaN(),
                       Limits::signaling_NaN(), Limits::denorm_min()}) {
    for (int n = 1; n <= longest; ++n) {
      std::vector<T> a(n), r(n);
      for (T& x : a) memcpy(&x.re, &part, sizeof part), memcpy(&x.im, &part, sizeof part);
      conjugate(n, a.data(), r.data());
      for (int i = 0; i < n; ++i) {
        unsigned char expected[sizeof(T)];
        memcpy(expected, &a[i], sizeof expected);
        expected[sizeof(T) - 1] ^= 0x80;
        ASSERT_EQ(memcmp(&r[i], expected, sizeof expected), 0) << "n " << n << " at " << i;
      }
    }
  }
}

TEST(SpecialValues, ConjugateFlipsOneBit) {
  check_conjugate<float>(_qemcConj);
  check_conjugate<double>(_qemzConj);
}

/// Strides of either sign and 0, counts of either width, and what a move does to a signalling NaN.
template <class R, class Pack, class Unpack>
void check_strides(Pack pack, Unpack unpack, const Kernel& pack_kernel,
                   const Kernel& unpack_kernel) {
  using Limits = std::numeric_limits<R>;
  for (const int64_t step : {-3, -1, 0, 1, 2, 7}) {
    for (const int n : {0, 1, 5, 20}) {
      std::vector<R> a(300), packed(20, 77), unpacked(300, 77), expected(20, 77), spread(300, 77);
      for (int i = 0; i < 300; ++i) a[i] = static_cast<R>(i) * Limits::denorm_min();
      a[100] = -Limits::infinity();
      for (int i = 0; i < n; ++i) expected[i] = a[100 + i * step], spread[100 + i * step] = a[i];
      // Of the 64 bits of n and incr the stubs take the lower half.
      const int64_t upper = int64_t{5} << 32;
      pack(upper + n, &a[100], upper + (step & 0xFFFFFFFF), packed.data());
      unpack(upper + n, a.data(), &unpacked[100], upper + (step & 0xFFFFFFFF));
      EXPECT_TRUE(same_bits(packed, expected)) << step << ' ' << n;
      EXPECT_TRUE(same_bits(unpacked, spread)) << step << ' ' << n;
      std::fill(packed.begin(), packed.end(), R{77});
      std::fill(unpacked.begin(), unpacked.end(), R{77});
      for (const int64_t count : {int64_t{n}, -upper}) {
        pack_kernel.call({.n = count,
                          .inputs = {&a[100]},
                          .results = {packed.data()},
                          .increment = step,
                          .narrow = 0});
        unpack_kernel.call({.n = count,
                            .inputs = {a.data()},
                            .results = {&unpacked[100]},
                            .increment = step,
                            .narrow = 0});
      }
      EXPECT_TRUE(same_bits(packed, expected)) << step << ' ' << n;
      EXPECT_TRUE(same_bits(unpacked, spread)) << step << ' ' << n;
    }
  }
  std::vector<unsigned char> bytes(sizeof(R), 0x01), quiet(sizeof(R));
  bytes[sizeof(R) - 1] = 0x7F, bytes[sizeof(R) - 2] = sizeof(R) == 8 ? 0xF1 : 0x81;
  pack(1, reinterpret_cast<const R*>(bytes.data()), 1, reinterpret_cast<R*>(quiet.data()));
  bytes[sizeof(R) - 2] |= sizeof(R) == 8 ? 0x08 : 0x40;
  EXPECT_EQ(quiet, bytes);
}

TEST(Moves, ByStrides) {
  const auto kernel = [](auto* table) {
    Kernel k{};
    k.call = orv_call::of(*table);
    return k;
  };
  check_strides<float>(_qemsPackI, _qemsUnpackI, kernel(orv_qem_kernel_sPackI_ttab),
                       kernel(orv_qem_kernel_sUnpackI_ttab));
  check_strides<double>(_qemdPackI, _qemdUnpackI, kernel(orv_qem_kernel_dPackI_ttab),
                        kernel(orv_qem_kernel_dUnpackI_ttab));
}

}  // namespace
