// The road of a report: status, record, callback, standard routes, write-back.
#include <errno.h>
#include <stddef.h>
#include <stdlib.h>

#include <limits>

#include "harness.hpp"

using namespace orv_test;

namespace {

// ---- One reported element, for all four types --------------------------------------------------

void error(int32_t code, int32_t i, const float* a, const float* b, float* r1, float* r2,
           const char* name) {
  orv_qem_kernel_sError(code, i, a, b, r1, r2, name);
}
void error(int32_t code, int32_t i, const double* a, const double* b, double* r1, double* r2,
           const char* name) {
  orv_qem_kernel_dError(code, i, a, b, r1, r2, name);
}
void error(int32_t code, int32_t i, const QemComplexFloat* a, const QemComplexFloat* b,
           QemComplexFloat* r1, QemComplexFloat* r2, const char* name) {
  orv_qem_kernel_cError(code, i, a, b, r1, r2, name);
}
void error(int32_t code, int32_t i, const QemComplexDouble* a, const QemComplexDouble* b,
           QemComplexDouble* r1, QemComplexDouble* r2, const char* name) {
  orv_qem_kernel_zError(code, i, a, b, r1, r2, name);
}

template <class T>
T number(double re, double im) {
  if constexpr (std::is_floating_point_v<T>) {
    return static_cast<T>(re);
  } else {
    return {static_cast<decltype(T::re)>(re), static_cast<decltype(T::im)>(im)};
  }
}
template <class T>
double part(T x, bool imaginary) {
  if constexpr (std::is_floating_point_v<T>) {
    return imaginary ? 0 : x;
  } else {
    return imaginary ? x.im : x.re;
  }
}

// ---- The record --------------------------------------------------------------------------------

using Context = QemErrorContext;
static_assert(offsetof(Context, code) == 0 && offsetof(Context, index) == 4 &&
              offsetof(Context, arg1) == 8 && offsetof(Context, arg2) == 16 &&
              offsetof(Context, res1) == 24 && offsetof(Context, res2) == 32 &&
              offsetof(Context, func_name) == 40 && offsetof(Context, func_name_len) == 104 &&
              offsetof(Context, arg1_im) == 108 && offsetof(Context, arg2_im) == 116 &&
              offsetof(Context, res1_im) == 124 && offsetof(Context, res2_im) == 132 &&
              sizeof(Context) == 140);

struct Seen {
  int calls = 0;
  int32_t status = 0;
  Context record;
};
thread_local Seen seen;
thread_local int32_t answer;             // what the callback returns
thread_local double new_res1, new_res2;  // what it stores, with 100 more as imaginary parts
thread_local QemMode new_mode;           // if not 0

int32_t callback(QemErrorContext* record) {
  ++seen.calls;
  seen.status = orv_qem_kernel_GetErrStatus();
  seen.record = *record;
  if (new_res1 != 0) record->res1 = new_res1, record->res1_im = new_res1 + 100;
  if (new_res2 != 0) record->res2 = new_res2, record->res2_im = new_res2 + 100;
  if (new_mode != 0) orv_qem_kernel_SetMode(new_mode);
  return answer;
}

/// A thread that reports through `routes`; the callback is stored whether or not a route asks it.
template <class Body>
void with_routes(QemMode routes, Body body) {
  in_fresh_thread([&] {
    seen = {}, answer = 0, new_res1 = new_res2 = 0, new_mode = 0;
    orv_qem_kernel_SetErrorCallBack(callback);
    orv_qem_kernel_SetMode(routes);
    body();
  });
}

template <class T>
class Record : public testing::Test {};
using Elements = testing::Types<float, double, QemComplexFloat, QemComplexDouble>;
TYPED_TEST_SUITE(Record, Elements);

TYPED_TEST(Record, HoldsTheElement) {
  using T = TypeParam;
  T a[5], b[5], r1[5], r2[5];
  for (int i = 0; i < 5; ++i) {
    a[i] = number<T>(1 + i, 10 + i), b[i] = number<T>(20 + i, 30 + i);
    r1[i] = number<T>(40 + i, 50 + i), r2[i] = number<T>(60 + i, 70 + i);
  }
  const auto start = reinterpret_cast<uintptr_t>(a);
  const struct {
    uintptr_t base;
    int32_t index;
  } cases[] = {
      {0, 3},
      {start, 3},
      {start - 100 * sizeof(T), 103},
      {start + 7 * sizeof(T), -4},
      {start - sizeof(T) + 1, 3},  // bytes are shifted, so that a part of an element rounds down
      {start + 1, 2},
  };
  for (const auto& place : cases) {
    with_routes(QEM_ERRMODE_CALLBACK, [&] {
      orv_qem_kernel_SetInterfInputVectorPointer(reinterpret_cast<const void*>(place.base));
      error(3, 3, a, b, r1, r2, "vxName");
      ASSERT_EQ(seen.calls, 1);
      EXPECT_EQ(seen.status, 3);
      EXPECT_EQ(seen.record.code, 3);
      EXPECT_EQ(seen.record.index, place.index);
      EXPECT_STREQ(seen.record.func_name, "vxName");
      EXPECT_EQ(seen.record.func_name_len, 6);
      const T values[] = {a[3], b[3], r1[3], r2[3]};
      const Context& c = seen.record;
      const double shown[] = {c.arg1, c.arg2, c.res1, c.res2};
      const double shown_im[] = {c.arg1_im, c.arg2_im, c.res1_im, c.res2_im};
      for (int k = 0; k < 4; ++k) {
        EXPECT_EQ(shown[k], part(values[k], false));
        if (!std::is_floating_point_v<T>) {
          EXPECT_EQ(shown_im[k], part(values[k], true));
        }
      }
      EXPECT_EQ(part(r1[3], false), 43);  // written back as they were
      EXPECT_EQ(part(r2[3], false), 63);
    });
  }
}

TYPED_TEST(Record, ResultsAreWrittenBackUnlessTheCallbackTookThem) {
  using T = TypeParam;
  const double value = 1.0 + 0x1p-30;  // float narrows it to 1
  for (const int32_t returned : {0, 1, -1, 7}) {
    for (const bool one_vector : {false, true}) {
      with_routes(QEM_ERRMODE_CALLBACK, [&] {
        answer = returned, new_res1 = value, new_res2 = 6;
        T a[2] = {}, r1[2] = {number<T>(3, 3), number<T>(3, 3)}, r2[2] = {r1[0], r1[0]};
        error(1, 1, a, a, r1, one_vector ? r1 : r2, "name");
        const bool back = returned == 0;
        for (const bool imaginary : {false, true}) {
          const T first = number<T>(value, value + 100), second = number<T>(6, 106), old = r1[0];
          EXPECT_EQ(part(r1[1], imaginary), part(back ? first : old, imaginary));
          if (one_vector) continue;
          EXPECT_EQ(part(r2[1], imaginary), part(back ? second : old, imaginary));
        }
        EXPECT_EQ(part(r1[0], false), 3);
      });
    }
  }
}

TYPED_TEST(Record, BadArgumentsHaveNoElement) {
  using T = TypeParam;
  for (const int32_t code : {-1, -2}) {
    with_routes(0x1A00, [&] {
      T* const none = nullptr;
      error(code, 4, none, none, none, none, "vxName");
      EXPECT_EQ(orv_qem_kernel_GetErrStatus(), code);
      EXPECT_EQ(seen.calls, 1);
      EXPECT_EQ(seen.record.code, code);
      EXPECT_EQ(seen.record.index, 4);
      EXPECT_EQ(errno, code == -1 ? EINVAL : EACCES);
    });
  }
}

// ---- Routes ------------------------------------------------------------------------------------

TEST(Routes, WhatEachModeRuns) {
  const struct {
    QemMode routes;
    bool called, set_errno, printed, raised;
  } cases[] = {
      {0x0100, false, false, false, false},  // exactly this word ignores
      {0x0200, false, true, false, false},  {0x0300, false, true, false, false},
      {0x0400, false, false, true, false},  {0x0500, false, false, true, false},
      {0x0800, false, false, false, true},  {0x0F00, false, true, true, true},
      {0x1000, true, false, false, false},  {0x1100, true, false, false, false},
      {0x1A00, true, true, false, true},    {0x1E00, true, true, true, true},
      {0x2000, true, false, false, false},  {0x4000, true, false, false, false},
      {0x8200, true, true, false, false},
  };
  for (const auto& c : cases) {
    with_routes(c.routes, [&] {
      SCOPED_TRACE(testing::Message() << std::hex << c.routes);
      double a[2] = {1, -2}, r[2] = {3, 4};
      errno = 99;
      new_res1 = 5;
      testing::internal::CaptureStderr();
      const int flags = flags_of([&] { error(1, 1, a, a, r, r, "vdName"); });
      const int error_number = errno;
      const std::string text = testing::internal::GetCapturedStderr();
      EXPECT_EQ(orv_qem_kernel_GetErrStatus(), 1);
      EXPECT_EQ(seen.calls, c.called);
      EXPECT_EQ(r[1], c.called ? 5 : 4);
      EXPECT_EQ(error_number, c.set_errno ? EDOM : 99);
      EXPECT_EQ(flags, c.raised ? FE_INVALID : 0);
      EXPECT_EQ(text.find("vdName") != std::string::npos, c.printed) << text;
      EXPECT_EQ(text.find("-2") != std::string::npos, c.printed) << text;
      EXPECT_EQ(text.empty(), !c.printed);
    });
  }
}

TEST(Routes, NoRouteButTheStatus) {
  setenv("ORV_QEM_MODE", "QEM_HA", 1);
  in_fresh_thread([] {
    double a = 1, r = 2;
    errno = 99;
    EXPECT_EQ(flags_of([&] { error(1, 0, &a, &a, &r, &r, "name"); }), 0);
    EXPECT_EQ(orv_qem_kernel_GetErrStatus(), 1);
    EXPECT_EQ(errno, 99);
    EXPECT_EQ(r, 2);
  });
  unsetenv("ORV_QEM_MODE");
}

TEST(Routes, ACallbackThatAnswersEndsTheReport) {
  with_routes(0x1E00, [] {
    double a = 1, r = 2;
    errno = 99;
    answer = 1;
    testing::internal::CaptureStderr();
    EXPECT_EQ(flags_of([&] { error(1, 0, &a, &a, &r, &r, "name"); }), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(errno, 99);
  });
}

TEST(Routes, TheModeIsReadAgainAfterTheCallback) {
  for (const QemMode later : {0x1000u, 0x100u}) {
    with_routes(0x1A00, [&] {
      double a = 1, r = 2;
      errno = 99;
      new_mode = later;
      EXPECT_EQ(flags_of([&] { error(1, 0, &a, &a, &r, &r, "name"); }), 0);
      EXPECT_EQ(errno, 99);
    });
  }
}

TEST(Routes, ErrnoAndExceptionOfEachCode) {
  const struct {
    int32_t code;
    int error_number, flags;
  } cases[] = {
      {0, 0, 0},
      {-1, 22, 0},
      {-2, 13, 0},
      {1, 33, FE_INVALID},
      {2, 34, FE_DIVBYZERO},
      {3, 34, 0},  // overflow raises nothing by design
      {4, 34, FE_UNDERFLOW},
      {5, 14, 0},
      {7, 14, 0},
      {-3, 14, 0},
      {std::numeric_limits<int32_t>::min(), 14, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.code);
    with_routes(0xA00, [&] {
      double a = 1, r = 2;
      errno = 99;
      EXPECT_EQ(flags_of([&] { error(c.code, 0, &a, &a, &r, &r, "name"); }), c.flags);
      EXPECT_EQ(errno, c.error_number);
      EXPECT_EQ(orv_qem_kernel_GetErrStatus(), c.code);
      EXPECT_EQ(r, 2);
    });
    with_routes(0xA00, [&] {  // on the x87 unit, whatever the other unit's words are
      double a = 1, r = 2;
      Words left;
      const auto report = [&] { error(c.code, 0, &a, &a, &r, &r, "name"); };
      EXPECT_EQ(flags_of([&] { left = under({sse_usual | 0xE040, 0x27F}, report); }), c.flags);
      EXPECT_EQ(left, (Words{sse_usual | 0xE040, 0x27F}));
    });
  }
}

TEST(Routes, NamesOfAnyLength) {
  const std::string long_name(100, 'x');
  for (const size_t length : {0u, 1u, 63u, 64u, 65u, 100u}) {
    with_routes(0x1000, [&] {
      double a = 1, r = 2;
      error(1, 0, &a, &a, &r, &r, long_name.substr(0, length).c_str());
      const size_t kept = length < 64 ? length : 64;
      EXPECT_EQ(seen.record.func_name_len, static_cast<int32_t>(kept));
      EXPECT_EQ(std::string(seen.record.func_name, kept), long_name.substr(0, kept));
      if (kept < 64) {
        EXPECT_EQ(seen.record.func_name[kept], '\0');
      }
    });
  }
}

/// The callback's word on a kernel's result, for both types and in block and tail.
TEST(Routes, CallbackMendsAKernelsResults) {
  with_routes(0x1000, [] {
    new_res1 = new_res2 = 7.5;
    std::vector<double> a(19, 1000.0), r(19);
    _qemdExp(19, a.data(), r.data());
    EXPECT_EQ(seen.calls, 19);
    EXPECT_EQ(r, std::vector<double>(19, 7.5));
  });
}

}  // namespace
