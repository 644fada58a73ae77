// SPDX-License-Identifier: MIT
// The scalar entries: of SinCos and CIS, with the bits of the vector kernels under any control
// words and reports under names of their own; of CdfNormInv and ErfcInv, which take other ways than
// the kernels' lanes and return their status codes.
#include <math.h>

#include <cmath>
#include <limits>

#include "harness.hpp"

using namespace orv_test;

namespace {

template <class T, class Complex>
struct Entries {
  const char *sincos_name, *cis_name;
  void (*sincos)(int32_t, const T*, T*, T*);
  void (*cis)(int32_t, const T*, Complex*);
};

#define ORV_ENTRIES(s, c, level)                                                \
  {                                                                             \
#s "SinCos_" #level, "zCIS_" #level, orv_qem_kernel_##s##SinCos_SC_##level, \
        orv_qem_kernel_##c##CIS_SC_##level                                      \
  }
constexpr Entries<float, QemComplexFloat> in_float[] = {
    ORV_ENTRIES(s, c, HA), ORV_ENTRIES(s, c, LA), ORV_ENTRIES(s, c, A11)};
constexpr Entries<double, QemComplexDouble> in_double[] = {
    ORV_ENTRIES(d, z, HA), ORV_ENTRIES(d, z, LA), ORV_ENTRIES(d, z, A11)};

template <class T, class Complex, class Kernel>
void check(const Entries<T, Complex> (&entries)[3], Kernel kernel) {
  constexpr int n = 9;
  const T inf = INFINITY, a[n] = {1, -3, 65536, 1e6f, -1e30f, -0.0f, -inf, NAN, inf};
  Complex expected[n];
  orv_qem_kernel_SetMode(QEM_ERRMODE_IGNORE);
  kernel(n, a, expected);
  for (const Entries<T, Complex>& entry : entries) {
    listen();
    for (int i = 0; i < n; ++i) {
      T sine[n], cosine[n];
      Complex both[n];
      const Words upward{sse_usual | 0x4000 | denormals_are_zero, 0xB7F};
      EXPECT_EQ(under(upward,
                      [&] {
                        entry.sincos(i, a, sine, cosine);
                        entry.cis(i, a, both);
                      })
                    .x87,
                upward.x87);
      EXPECT_TRUE(same_bits(&both[i], &expected[i], 1)) << a[i];
      EXPECT_TRUE(same_bits(&sine[i], &expected[i].im, 1)) << a[i];
      EXPECT_TRUE(same_bits(&cosine[i], &expected[i].re, 1)) << a[i];
    }
    ASSERT_EQ(codes_heard(), (Codes{{1, 6}, {1, 6}, {1, 8}, {1, 8}}));
    EXPECT_EQ(reports()[0].func_name, std::string(entry.sincos_name));
    EXPECT_EQ(reports()[1].func_name, std::string(entry.cis_name));
    EXPECT_EQ(double{reports()[3].arg1}, inf);
    EXPECT_TRUE(isnan(double{reports()[3].res1_im}));
  }
}

TEST(ScalarEntries, GiveTheBitsOfTheKernelAndReportByTheirName) {
  in_fresh_thread([] {
    check(in_float, _qemcCIS);
    check(in_double, _qemzCIS);
  });
}

/// Both are so near to the truth that they are neighbours at most. Arguments are close together
/// at 0, on both sides of the zero, where the entries' ways change, and at the upper pole.
template <class T>
void check_inverse(int32_t (*entry)(const T*, T*), void (*kernel)(int32_t, const T*, T*), T end) {
  using Limits = std::numeric_limits<T>;
  std::vector<T> a = {0, -T(0), -1, end, std::nextafter(end, T(3)), INFINITY, -INFINITY, NAN};
  for (T x = Limits::denorm_min(); x < end; x = x * T(1.03) + Limits::denorm_min()) {
    a.push_back(x);
    if (x < end / 2) a.insert(a.end(), {end - x, end / 2 + x, end / 2 - x});
  }
  listen();
  const auto n = static_cast<int32_t>(a.size());
  std::vector<T> expected(n);
  kernel(n, a.data(), expected.data());
  Codes codes;
  for (int32_t i = 0; i < n; ++i) {
    T y;
    int32_t code;
    under({sse_usual | flush_to_zero | denormals_are_zero, x87_usual},
          [&] { code = entry(&a[i], &y); });
    if (code != 0) codes.emplace_back(code, i);
    const T above = std::nextafter(expected[i], T(INFINITY)),
            below = std::nextafter(expected[i], -T(INFINITY));
    EXPECT_TRUE((below <= y && y <= above) || (isnan(y) && isnan(expected[i]))) << a[i];
    EXPECT_EQ(std::signbit(y), std::signbit(expected[i])) << a[i];
  }
  EXPECT_EQ(codes, codes_heard());
  EXPECT_GE(codes.size(), 6u);
}

TEST(ScalarEntries, OfInversesAgreeWithTheKernels) {
  in_fresh_thread([] {
    check_inverse<double>(dCdfNormInv_SC, _qemdCdfNormInv_HA, 1);
    check_inverse<double>(dErfcInv_SC, _qemdErfcInv_HA, 2);
    check_inverse<float>(sCdfNormInv_SC, _qemsCdfNormInv_HA, 1);
    check_inverse<float>(sErfcInv_SC, _qemsErfcInv_HA, 2);
    for (const double x : {5e-324, 1e-300, 0.3, 0.97}) {
      double y, z;
      EXPECT_EQ(dCdfNormInv_SC(&x, &y), 0);
      EXPECT_EQ(dErfcInv_SC(&x, &z), 0);
      EXPECT_EQ(dCdfNormInv_Tail(x), y);
      EXPECT_EQ(dErfcInv_Tail(x), z);
    }
  });
}

}  // namespace
