// SPDX-License-Identifier: MIT
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
}

TEST(Moves, ByStrides) {
  check_strides<float>(_qemsPackI, _qemsUnpackI, orv_qem_kernel_sPackI_PXHAynn,
                       orv_qem_kernel_sUnpackI_PXHAynn);
  check_strides<double>(_qemdPackI, _qemdUnpackI, orv_qem_kernel_dPackI_PXHAynn,
                        orv_qem_kernel_dUnpackI_PXHAynn);
}

/// Places and masks of either width, of which only the first n are read.
template <class R, class Word, class PackV, class UnpackV, class PackM, class UnpackM>
void check_words(PackV pack_v, UnpackV unpack_v, PackM pack_m, UnpackM unpack_m) {
  const int32_t narrow = sizeof(Word) == 4;
  const int64_t upper = narrow ? int64_t{5} << 32 : 0;  // of n, not looked at if narrow
  for (const int n : {0, 1, 4, 5, 20}) {
    // Places go down, with the first of them again at the end.
    std::vector<Word> place(n + 1, -1000000), mask(n + 1, 1);
    std::vector<R> a(100), packed_v(100, 77), unpacked_v(100, 77), packed_m(100, 77),
        unpacked_m(100, 77);
    for (int i = 0; i < 100; ++i) a[i] = static_cast<R>(i + 1);
    auto expected_v = packed_v, expected_uv = unpacked_v, expected_m = packed_m,
         expected_um = unpacked_m;
    for (int i = 0, k = 0; i < n; ++i) {
      place[i] = i == n - 1 ? 10 : 10 - 2 * i;
      mask[i] = i % 3 == 1 ? 0 : static_cast<Word>(1) << (i * 5 % (8 * sizeof(Word)));
      expected_v[i] = a[50 + place[i]];
      expected_uv[50 + place[i]] = a[i];
      if (mask[i] == 0) continue;
      expected_m[k] = a[i];
      expected_um[i] = a[k++];
    }
    pack_v(upper + n, &a[50], place.data(), packed_v.data(), narrow);
    unpack_v(upper + n, a.data(), &unpacked_v[50], place.data(), narrow);
    pack_m(upper + n, a.data(), mask.data(), packed_m.data(), narrow);
    unpack_m(upper + n, a.data(), unpacked_m.data(), mask.data(), narrow);
    EXPECT_EQ(packed_v, expected_v) << n;
    EXPECT_EQ(unpacked_v, expected_uv) << n;
    EXPECT_EQ(packed_m, expected_m) << n;
    EXPECT_EQ(unpacked_m, expected_um) << n;
  }
}

TEST(Moves, ByPlacesAndMasks) {
#define ORV_CHECK(t, R, Word)                                                                  \
  check_words<R, Word>(orv_qem_kernel_##t##PackV_PXHAynn, orv_qem_kernel_##t##UnpackV_PXHAynn, \
                       orv_qem_kernel_##t##PackM_PXHAynn, orv_qem_kernel_##t##UnpackM_PXHAynn)
  ORV_CHECK(s, float, int32_t);
  ORV_CHECK(s, float, int64_t);
  ORV_CHECK(d, double, int32_t);
  ORV_CHECK(d, double, int64_t);
#undef ORV_CHECK
}

/// Every element arrives with its bits, a signalling NaN with its quiet bit set.
TEST(Moves, OnlyQuiet) {
  for_each_kernel([](const Kernel& kernel, auto number) {
    using R = decltype(number);
    if (kernel.frame != "moves") return;
    for (int n = 1; n <= 9; ++n) {
      for (const bool quiet : {false, true}) {
        std::vector<unsigned char> bytes(sizeof(R), 0x01);
        bytes[sizeof(R) - 1] = 0xFF, bytes[sizeof(R) - 2] = sizeof(R) == 8 ? 0xF1 : 0x81;
        if (quiet) bytes[sizeof(R) - 2] |= sizeof(R) == 8 ? 0x08 : 0x40;
        Vectors<R> v(kernel, n);
        for (R& x : v.in[0]) memcpy(&x, bytes.data(), sizeof x);
        v.call(kernel, n);
        bytes[sizeof(R) - 2] |= sizeof(R) == 8 ? 0x08 : 0x40;
        for (const R& x : v.out[0]) EXPECT_EQ(memcmp(&x, bytes.data(), sizeof x), 0);
      }
    }
  });
}

// ---- LinearFrac --------------------------------------------------------------------------------

/// Each of its forms, and that a vector whose scale is 0 is not read.
template <class T>
void check_linear_frac(void (*f)(int32_t, const T*, const T*, T, T, T, T, T*)) {
  const T inf = std::numeric_limits<T>::infinity();
  for (int n = 1; n <= longest; ++n) {
    std::vector<T> a(n), b(n), r(n), full(n), over(n), times(n), infinite(n);
    for (int i = 0; i < n; ++i) {
      a[i] = static_cast<T>(i - 7), b[i] = static_cast<T>(3 * i + 1) / 16;
      const T numerator = a[i] * T(1.1) + T(0.3), denominator = b[i] * T(-0.7) + T(9);
      full[i] = numerator / denominator;
      over[i] = T(0.3) / denominator;
      times[i] = numerator * (T(1) / T(9));
      infinite[i] = numerator < 0 ? -inf : inf;
    }
    f(n, a.data(), b.data(), T(1.1), T(0.3), T(-0.7), 9, r.data());
    EXPECT_EQ(r, full);
    f(n, nullptr, b.data(), -T(0), T(0.3), T(-0.7), 9, r.data());
    EXPECT_EQ(r, over);
    f(n, a.data(), nullptr, T(1.1), T(0.3), 0, 9, r.data());
    EXPECT_EQ(r, times);
    f(n, a.data(), nullptr, T(1.1), T(0.3), -T(0), 0, r.data());
    EXPECT_EQ(r, infinite);
  }
}

TEST(LinearFrac, ReadsWhatItsScalarsLeave) {
  orv_qem_kernel_SetErrStatus(0);
  check_linear_frac(_qemsLinearFrac);
  check_linear_frac(_qemdLinearFrac);
  EXPECT_EQ(orv_qem_kernel_GetErrStatus(), 0);
}

/// Scalars, too, are taken under the kernel's words, not the caller's: a denormal one is 0 where
/// the mode says so. The float form follows the mode, the double form keeps denormals.
template <class T>
void check_denormals(void (*f)(int32_t, const T*, const T*, T, T, T, T, T*), bool flushes) {
  const T tiny = std::numeric_limits<T>::denorm_min(), x[] = {tiny, tiny * 2}, one[] = {1};
  T of_vector, of_shift, of_scale, of_other_scale;
  under({sse_usual | 0x4000 | (flushes ? 0 : denormals_are_zero | flush_to_zero), x87_usual}, [&] {
    f(1, x, nullptr, 1, 0, 0, 1, &of_vector);
    f(1, nullptr, one, 0, tiny, 1, 0, &of_shift);
    f(1, one, one, tiny, 0, 1, 0, &of_scale);
    f(1, x, x, 1, 0, x[1], tiny, &of_other_scale);
  });
  EXPECT_EQ(of_vector, flushes ? 0 : tiny);
  EXPECT_EQ(of_shift, flushes ? 0 : tiny);
  EXPECT_EQ(of_scale, flushes ? 0 : tiny);
  const bool is_nan = isnan(of_other_scale);  // 0/0
  EXPECT_TRUE(flushes ? is_nan : of_other_scale == 1);
}

TEST(LinearFrac, FollowsTheModeInFloatOnly) {
  in_fresh_thread([] {
    for (const QemMode mode : {DENORMALS_KEPT, DENORMALS_FLUSHED}) {
      orv_qem_kernel_SetMode(mode);
      check_denormals(_qemsLinearFrac, mode == DENORMALS_FLUSHED);
      check_denormals(_qemdLinearFrac, false);
    }
  });
}

}  // namespace
