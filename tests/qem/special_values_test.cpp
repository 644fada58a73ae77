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
void expect_parts(double re, double im, const std::vector<R>& numbers, size_t parts) {
  const double shown[] = {re, im}, expected[] = {numbers[0], parts == 2 ? numbers[1] : 0};
  ASSERT_TRUE(same_bits(shown, expected, 2)) << re << ' ' << im << " for " << expected[0];
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
  ASSERT_EQ(std::string(report.func_name, report.func_name_len),
            by_scalar_entry ? "zCIS_HA" : std::string("v") + kernel.type + kernel.function);
  const bool two = kernel.signature().results == 2;
  expect_parts(report.arg1, report.arg1_im, alone.in[0], kernel.input_size(1));
  expect_parts(report.arg2, report.arg2_im, alone.in[0], kernel.input_size(1));
  expect_parts(report.res1, report.res1_im, alone.out[0], kernel.result_size(1));
  expect_parts(report.res2, report.res2_im, alone.out[two ? 1 : 0], kernel.result_size(1));
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

/// A change of one bit: also NaN keeps its payload and its quietness.
template <class T>
void check_conjugate(void (*conjugate)(int32_t, const T*, T*)) {
  using R = decltype(T::re);
  using Limits = std::numeric_limits<R>;
  for (const R part : {R(0), R(-1.5), Limits::infinity(), Limits::quiet_NaN(),
                       Limits::signaling_NaN(), Limits::denorm_min()}) {
    for (int n = 1; n <= longest; ++n) {
      std::vector<R> a(2 * n, part), r(2 * n);
      conjugate(n, reinterpret_cast<const T*>(a.data()), reinterpret_cast<T*>(r.data()));
      for (int i = 1; i < 2 * n; i += 2) reinterpret_cast<char*>(a.data() + i + 1)[-1] ^= '\x80';
      ASSERT_TRUE(same_bits(r, a)) << part << ", n " << n;
    }
  }
}

TEST(SpecialValues, ConjugateFlipsOneBit) {
  check_conjugate(_qemcConj);
  check_conjugate(_qemzConj);
}

/// Strides of either sign and 0, counts of either width, and what a move does to a signalling NaN.
template <class R, class Pack, class Unpack, class PackKernel, class UnpackKernel>
void check_strides(Pack pack, Unpack unpack, PackKernel pack_kernel, UnpackKernel unpack_kernel) {
  using Limits = std::numeric_limits<R>;
  for (const int64_t step : {-3, -1, 0, 1, 2, 7}) {
    for (const int n : {0, 1, 5, 20}) {
      std::vector<R> a(300), expected(20, 77), spread(300, 77);
      for (int i = 0; i < 300; ++i) a[i] = static_cast<R>(i) * Limits::denorm_min();
      a[100] = -Limits::infinity();
      for (int i = 0; i < n; ++i) expected[i] = a[100 + i * step], spread[100 + i * step] = a[i];
      const auto check = [&](auto pack_some, auto unpack_some) {
        std::vector<R> packed(20, 77), unpacked(300, 77);
        pack_some(&a[100], packed.data());
        unpack_some(a.data(), &unpacked[100]);
        EXPECT_TRUE(same_bits(packed, expected)) << step << ' ' << n;
        EXPECT_TRUE(same_bits(unpacked, spread)) << step << ' ' << n;
      };
      // Of the 64 bits of n and incr the stubs take the lower half.
      const int64_t upper = int64_t{5} << 32, increment = upper + (step & 0xFFFFFFFF);
      check([&](const R* x, R* y) { pack(upper + n, x, increment, y); },
            [&](const R* x, R* y) { unpack(upper + n, x, y, increment); });
      check([&](const R* x, R* y) { pack_kernel(n, x, step, y, 0); },
            [&](const R* x, R* y) { unpack_kernel(n, x, y, step, 0); });
      R untouched = 77;
      pack_kernel(1 - upper, a.data(), step, &untouched, 0);
      unpack_kernel(1 - upper, a.data(), &untouched, step, 0);
      EXPECT_EQ(untouched, 77);
    }
  }
  std::vector<unsigned char> bytes(sizeof(R), 0x01), quiet(sizeof(R));
  bytes[sizeof(R) - 1] = 0x7F, bytes[sizeof(R) - 2] = sizeof(R) == 8 ? 0xF1 : 0x81;
  pack(1, reinterpret_cast<const R*>(bytes.data()), 1, reinterpret_cast<R*>(quiet.data()));
  bytes[sizeof(R) - 2] |= sizeof(R) == 8 ? 0x08 : 0x40;
  EXPECT_EQ(quiet, bytes);
}

TEST(Moves, ByStrides) {
  check_strides<float>(_qemsPackI, _qemsUnpackI, orv_qem_kernel_sPackI_PXHAynn,
                       orv_qem_kernel_sUnpackI_PXHAynn);
  check_strides<double>(_qemdPackI, _qemdUnpackI, orv_qem_kernel_dPackI_PXHAynn,
                        orv_qem_kernel_dUnpackI_PXHAynn);
}

}  // namespace
