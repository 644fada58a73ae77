// The scalar entries of SinCos and CIS: the bits of the vector kernels under any control words, and
// reports under names of their own.
#include <math.h>

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

}  // namespace
