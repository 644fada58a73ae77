// The frames that no kernel uses yet (two inputs, two results, scheduled, scalar calls), with toy
// operations. This unit is compiled for the instruction set of the kernels that use them.
#include <qem/_src/qem_core/frame/guarded.hpp>
#include <qem/_src/qem_core/frame/scalar_call.hpp>
#include <qem/_src/qem_core/frame/scheduled.hpp>

#include "harness.hpp"

using namespace orv_test;

namespace {

/// Lanes: x + y. Slow when x > 100: x - y, and a code when y > 0.
template <class Element>
struct Sum {
  using T = Element;
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vxSum";
  static constexpr orv::Environment environment = {};

  template <class V>
  static V lane(V x, V y) {
    return x + y;
  }
  template <class V>
  static int rare(V x, V) {
    return orv::mask_of(orv::compare<_CMP_GT_OQ>(x, orv::splat<V>(100)));
  }
  static int slow(const T* x, const T* y, T* r) {
    *r = *x - *y;
    return *y > 0 ? QEM_STATUS_DOMAIN : QEM_STATUS_OK;
  }
};

/// Lanes: x + 1 and 2 x. Slow when x > 100: x - 1 and -x, with a code.
template <class Element>
struct Split {
  using T = Element;
  static constexpr int block = 16;
  static constexpr char _QEM_THISFUNC_NAME[] = "vxSplit";
  static constexpr orv::Environment environment = {orv::sse_toward_zero};

  template <class V>
  static void lane(V x, V& y1, V& y2) {
    y1 = x + 1;
    y2 = x * 2;
  }
  template <class V>
  static int rare(V x) {
    return orv::mask_of(orv::compare<_CMP_GT_OQ>(x, orv::splat<V>(100)));
  }
  static int slow(const T* x, T* y1, T* y2) {
    *y1 = *x - 1;
    *y2 = -*x;
    return QEM_STATUS_OVERFLOW;
  }
};

template <class T>
class Forms : public testing::Test {};
using Reals = testing::Types<float, double>;
TYPED_TEST_SUITE(Forms, Reals);

/// Calls `body` for all lengths, and for all places of the first special element, and none.
template <class Body>
void at_all_places(int most, Body body) {
  in_fresh_thread([&] {
    for (int n = 0; n <= most; ++n) {
      for (int special = 0; special <= n; ++special) {
        listen();
        body(n, special);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  });
}

TYPED_TEST(Forms, TwoInputs) {
  using T = TypeParam;
  at_all_places(longest, [](int n, int special) {
    std::vector<T> x(n), y(n), r(n + 1, 77), expected(n + 1, 77);
    for (int i = 0; i < n; ++i) x[i] = i, y[i] = -1 - i, expected[i] = -1;
    Codes codes;
    for (int i = special; i < n; i += 5) {
      x[i] = 200, y[i] = i % 2 != 0 ? 3 : -3, expected[i] = x[i] - y[i];
      if (y[i] > 0) codes.emplace_back(QEM_STATUS_DOMAIN, i);
    }
    orv::guarded_binary(Sum<T>{}, n, x.data(), y.data(), r.data());
    ASSERT_EQ(r, expected);
    ASSERT_EQ(codes_heard(), codes);
    for (const Report& report : reports()) {  // the second input is never passed on
      const std::vector<double> values = {report.arg1, report.arg2, report.res1, report.res2};
      ASSERT_EQ(values, (std::vector<double>{200, 200, 197, 197}));
      ASSERT_EQ(report.name, "vxSum");
    }
  });
}

TYPED_TEST(Forms, TwoResults) {
  using T = TypeParam;
  at_all_places(longest, [](int n, int special) {
    std::vector<T> x(n), r1(n + 1, 77), r2(n + 1, 77), e1(n + 1, 77), e2(n + 1, 77);
    Codes codes;
    for (int i = 0; i < n; ++i) {
      const bool slow = i >= special && (i - special) % 3 == 0;
      x[i] = slow ? 200 : i, e1[i] = slow ? 199 : i + 1, e2[i] = slow ? -200 : 2 * i;
      if (slow) codes.emplace_back(QEM_STATUS_OVERFLOW, i);
    }
    orv::guarded_two_results(Split<T>{}, n, x.data(), r1.data(), r2.data());
    ASSERT_EQ(r1, e1);
    ASSERT_EQ(r2, e2);
    ASSERT_EQ(codes_heard(), codes);
    for (const Report& report : reports()) {
      ASSERT_EQ(report.res1, 199);
      ASSERT_EQ(report.res2, -200);
    }
  });
}

int32_t mend_both(QemErrorContext* record) {
  record->res1 = 5, record->res2 = 6;
  return 0;
}

TYPED_TEST(Forms, BothResultsCanBeMended) {
  using T = TypeParam;
  in_fresh_thread([] {
    orv_qem_kernel_SetErrorCallBack(mend_both);
    orv_qem_kernel_SetMode(QEM_ERRMODE_CALLBACK);
    std::vector<T> x(19, 200), r1(19), r2(19);
    orv::guarded_two_results(Split<T>{}, 19, x.data(), r1.data(), r2.data());
    EXPECT_EQ(r1, std::vector<T>(19, 5));
    EXPECT_EQ(r2, std::vector<T>(19, 6));
  });
}

/// Lanes: x + 1. The scalar routine, which can do any element: x + 2, and a code above 100.
template <class Element, int elements_a_pass>
struct Scheduled {
  using T = Element;
  static constexpr int pass = elements_a_pass;
  static constexpr char _QEM_THISFUNC_NAME[] = "vxScheduled";
  static constexpr orv::Environment environment = {.x87 = orv::x87_double};
  static inline uint16_t x87_inside;

  template <class V>
  static V lane(V x) {
    return x + 1;
  }
  template <class V>
  static int special(V x) {
    return orv::mask_of(orv::compare<_CMP_GT_OQ>(x, orv::splat<V>(100)));
  }
  static int scalar(const T* x, T* y) {
    x87_inside = words_now().x87;
    *y = *x + 2;
    return *x > 100 ? QEM_STATUS_DOMAIN : QEM_STATUS_OK;
  }
};

/// The routine has the whole pass of a special element, and the last element of an odd vector.
template <class Op>
void check_scheduled(int n, int special) {
  using T = typename Op::T;
  std::vector<T> x(n + 1, 77), expected(n + 1, 77);
  for (int i = 0; i < n; ++i) x[i] = i == special ? 200 : i;
  for (int i = 0; i < n;) {
    const int pass = n - i >= Op::pass ? Op::pass : n - i >= 2 ? 2 : 1;
    const bool scalar = pass == 1 || (special >= i && special < i + pass);
    for (const int end = i + pass; i < end; ++i) expected[i] = x[i] + (scalar ? 2 : 1);
  }
  std::vector<T> r(n + 1, 77), in_place = x;
  orv::scheduled<Op>(n, x.data(), r.data());
  orv::scheduled<Op>(n, in_place.data(), in_place.data());
  ASSERT_EQ(r, expected);
  ASSERT_EQ(in_place, expected);
  ASSERT_EQ(codes_heard(), Codes(special < n ? 2 : 0, {QEM_STATUS_DOMAIN, special}));
  if (n % 2 == 1) {
    ASSERT_EQ(Op::x87_inside & 0xF00, orv::x87_double);
  }
}

TYPED_TEST(Forms, Scheduled) {
  at_all_places(13, check_scheduled<Scheduled<TypeParam, 2>>);
  at_all_places(13, check_scheduled<Scheduled<TypeParam, 4>>);
}

/// -z, and a code for a real part of 0.
struct Negated {
  using T = QemComplexDouble;
  static constexpr char _QEM_THISFUNC_NAME[] = "vzNegated";
  static constexpr orv::Environment environment = {.x87 = orv::x87_extended};
  static inline uint16_t x87_inside;

  static int call(const T* z, T* r) {
    x87_inside = words_now().x87;
    *r = {-z->re, -z->im};
    return z->re == 0 ? QEM_STATUS_SINGULARITY : QEM_STATUS_OK;
  }
};

TEST(ScalarCalls, EachElementUnderTheWord) {
  in_fresh_thread([] {
    const Words before{0x1F80, 0x27F};
    for (const int n : {-3, 0, 1, 5}) {
      std::vector<QemComplexDouble> z(5), r(5, {77, 77});
      for (int i = 0; i < 5; ++i) z[i] = {i % 2 * 1.0, i + 1.0};
      listen();
      EXPECT_EQ(under(before, [&] { orv::scalar_calls<Negated>(n, z.data(), r.data()); }), before);
      for (int i = 0; i < 5; ++i) EXPECT_EQ(r[i].im, i < n ? -i - 1.0 : 77);
      EXPECT_EQ(codes_heard().size(), n > 0 ? (n + 1) / 2 : 0);
      if (n > 0) {
        EXPECT_EQ(Negated::x87_inside & 0xF00, orv::x87_extended);
      }
    }
  });
}

/// Words that a frame asks for: SSE rounding and flushing, x87 precision; what it found comes back.
TEST(Forms, ControlWords) {
  in_fresh_thread([] {
    for (const QemMode denormals : {DENORMALS_KEPT, DENORMALS_FLUSHED}) {
      orv_qem_kernel_SetMode(denormals);
      for (const uint32_t sse : {0x1F80u, 0x5FA4u, 0xFFC0u}) {
        for (const uint16_t x87 : {0x37F, 0x27F, 0xC7F, 0x072}) {
          for (const orv::Environment& wanted :
               {orv::Environment{}, orv::Environment{orv::sse_toward_zero},
                orv::Environment{orv::sse_nearest, false},
                orv::Environment{orv::sse_nearest, true, orv::x87_extended},
                orv::Environment{orv::sse_nearest, true, orv::x87_double}}) {
            const Words before{sse, x87};
            Words inside;
            const Words after = under(before, [&] {
              const orv::ControlWords words(wanted);
              inside = words_now();
            });
            const bool flush = denormals == DENORMALS_FLUSHED && wanted.follows_mode;
            EXPECT_EQ(inside.sse, (sse & ~0xE040u) | wanted.sse | (flush ? 0x8040u : 0));
            EXPECT_EQ(inside.x87, wanted.x87 == 0 ? x87 : (x87 & ~0xF00) | wanted.x87);
            EXPECT_EQ(after, before);
          }
        }
      }
    }
  });
}

}  // namespace
