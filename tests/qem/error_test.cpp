// SPDX-License-Identifier: MIT
// The road of a report: status, record, callback, standard routes, write-back.
#include <errno.h>
#include <orv/zok.h>
#include <setjmp.h>
#include <signal.h>
#include <stddef.h>

#include <limits>

#include "harness.hpp"

using namespace orv_test;

namespace {

// ---- One reported element, for all four types --------------------------------------------------

template <class T>
constexpr auto error = orv_qem_kernel_dError;
template <>
constexpr auto error<float> = orv_qem_kernel_sError;
template <>
constexpr auto error<QemComplexFloat> = orv_qem_kernel_cError;
template <>
constexpr auto error<QemComplexDouble> = orv_qem_kernel_zError;

template <class T>
T number(double re, double im) {
  if constexpr (std::is_floating_point_v<T>) {
    return static_cast<T>(re);
  } else {
    return {static_cast<decltype(T::re)>(re), static_cast<decltype(T::im)>(im)};
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
thread_local int32_t new_code;           // likewise

int32_t callback(QemErrorContext* record) {
  ++seen.calls;
  seen.status = orv_qem_kernel_GetErrStatus();
  seen.record = *record;
  if (new_res1 != 0) record->res1 = new_res1, record->res1_im = new_res1 + 100;
  if (new_res2 != 0) record->res2 = new_res2, record->res2_im = new_res2 + 100;
  if (new_mode != 0) orv_qem_kernel_SetMode(new_mode);
  if (new_code != 0) record->code = new_code;
  return answer;
}

/// A thread that reports through `routes`; the callback is stored whether or not a route asks it,
/// but for no route at all, which only the environment can say.
template <class Body>
void with_routes(QemMode routes, Body body) {
  in_thread_with_mode(routes == 0 ? "QEM_HA" : nullptr, [&] {
    seen = {}, answer = 0, new_res1 = new_res2 = 0, new_mode = 0, new_code = 0;
    if (routes != 0) orv_qem_kernel_SetErrorCallBack(callback);
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
  T a[5] = {}, b[5] = {}, r1[5] = {}, r2[5] = {};
  const T values[] = {number<T>(4, 13), number<T>(23, 33), number<T>(43, 53), number<T>(63, 73)};
  a[3] = values[0], b[3] = values[1], r1[3] = values[2], r2[3] = values[3];
  const auto start = reinterpret_cast<uintptr_t>(a);
  const std::pair<uintptr_t, int32_t> cases[] = {
      // base and index
      {0, 3},
      {start, 3},
      {start - 100 * sizeof(T), 103},
      {start + 7 * sizeof(T), -4},
      {start - sizeof(T) + 1, 3},  // bytes are shifted, so that a part of an element rounds down
      {start + 1, 2},
  };
  for (const auto& place : cases) {
    with_routes(QEM_ERRMODE_CALLBACK, [&] {
      orv_qem_kernel_SetInterfInputVectorPointer(reinterpret_cast<const void*>(place.first));
      error<T>(3, 3, a, b, r1, r2, "vxName");
      ASSERT_EQ(seen.calls, 1);
      EXPECT_EQ(seen.status, 3);
      const Context& c = seen.record;
      EXPECT_EQ(c.code, 3);
      EXPECT_EQ(c.index, place.second);
      EXPECT_STREQ(c.func_name, "vxName");
      EXPECT_EQ(c.func_name_len, 6);
      const T shown[] = {number<T>(c.arg1, c.arg1_im), number<T>(c.arg2, c.arg2_im),
                         number<T>(c.res1, c.res1_im), number<T>(c.res2, c.res2_im)};
      const T kept[] = {a[3], b[3], r1[3], r2[3]};
      EXPECT_TRUE(same_bits(shown, values, 4));
      EXPECT_TRUE(same_bits(kept, values, 4));
    });
  }
}

TYPED_TEST(Record, ResultsAreWrittenBackUnlessTheCallbackTookThem) {
  using T = TypeParam;
  const double value = 1.0 + 0x1p-30;  // float narrows it to 1
  const T old = number<T>(3, 3), first = number<T>(value, value + 100), second = number<T>(6, 106);
  for (const int32_t returned : {0, 1, -1, 7}) {
    for (const bool one_vector : {false, true}) {
      with_routes(QEM_ERRMODE_CALLBACK, [&] {
        answer = returned, new_res1 = value, new_res2 = 6, new_code = -1;  // which decides nothing
        const std::vector<T> a(2);
        std::vector<T> r1(2, old), r2(2, old);
        error<T>(1, 1, a.data(), a.data(), r1.data(), one_vector ? r1.data() : r2.data(), "name");
        const bool back = returned == 0;
        EXPECT_TRUE(same_bits(r1, {old, back ? first : old}));
        EXPECT_TRUE(same_bits(r2, {old, back && !one_vector ? second : old}));
      });
    }
  }
}

TYPED_TEST(Record, BadArgumentsHaveNoElement) {
  using T = TypeParam;
  for (const int32_t code : {-1, -2}) {
    for (const int32_t left_by_callback : {0, 1}) {
      with_routes(0x1A00, [&] {
        new_code = left_by_callback;
        T* const none = nullptr;
        error<T>(code, 4, none, none, none, none, "vxName");
        EXPECT_EQ(orv_qem_kernel_GetErrStatus(), code);
        EXPECT_EQ(seen.calls, 1);
        EXPECT_EQ(seen.record.code, code);
        EXPECT_EQ(seen.record.index, 4);
        EXPECT_EQ(errno, new_code == 1 ? EDOM : code == -1 ? EINVAL : EACCES);
      });
    }
  }
}

// ---- Routes ------------------------------------------------------------------------------------

TEST(Routes, WhatEachModeRuns) {
  const struct {
    QemMode routes;
    bool called, set_errno, printed, raised;
    int32_t answer = 0;
    QemMode set_by_callback = 0;
  } cases[] = {
      {0, false, false, false, false},
      {0x0100, false, false, false, false},  // exactly this word ignores
      {0x0200, false, true, false, false},
      {0x0300, false, true, false, false},
      {0x0400, false, false, true, false},
      {0x0800, false, false, false, true},
      {0x0F00, false, true, true, true},
      {0x1000, true, false, false, false},
      {0x1A00, true, true, false, true},
      {0x1E00, true, true, true, true},
      {0x2000, true, false, false, false},
      {0x4000, true, false, false, false},
      {0x8200, true, true, false, false},
      {0x1E00, true, false, false, false, 1},  // an answer ends the report
      {0x1A00, true, false, false, false, 0, 0x1000},
      {0x1A00, true, false, false, false, 0, 0x0100},
  };
  for (const auto& c : cases) {
    with_routes(c.routes, [&] {
      SCOPED_TRACE(testing::Message() << "case " << &c - cases);
      double a[2] = {1, -2}, r[2] = {3, 4};
      errno = 99;
      new_res1 = 5, new_mode = c.set_by_callback, answer = c.answer;
      testing::internal::CaptureStderr();
      const int flags = flags_of([&] { error<double>(1, 1, a, a, r, r, "vdName"); });
      const int error_number = errno;
      const std::string text = testing::internal::GetCapturedStderr();
      EXPECT_EQ(orv_qem_kernel_GetErrStatus(), 1);
      EXPECT_EQ(seen.calls, c.called);
      EXPECT_EQ(r[1], c.called && c.answer == 0 ? 5 : 4);
      EXPECT_EQ(error_number, c.set_errno ? EDOM : 99);
      EXPECT_EQ(flags, c.raised ? FE_INVALID : 0);
      EXPECT_EQ(text.find("vdName") != std::string::npos, c.printed) << text;
      EXPECT_EQ(text.find("-2") != std::string::npos, c.printed) << text;
      EXPECT_EQ(text.empty(), !c.printed);
    });
  }
}

sigjmp_buf out_of_trap;

/// Whether `body` ends in a trap, with all exceptions of the x87 unit but denormal and inexact let
/// through. One that stayed pending would trap at the program's next instruction of that unit.
template <class Body>
bool traps(Body body) {
  const auto before = signal(SIGFPE, [](int) { siglongjmp(out_of_trap, 1); });
  volatile bool returned = false;
  if (sigsetjmp(out_of_trap, 1) == 0) {
    set_words({sse_usual, 0x362});
    body();
    returned = true;
  }
  set_words({sse_usual, x87_usual});
  signal(SIGFPE, before);
  return !returned;
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
  const Words odd{sse_usual | 0xE040,
                  0x27F};  // flags are raised on the x87 unit, whatever these are
  for (const auto& c : cases) {
    for (const Words& words : {Words{sse_usual, x87_usual}, odd}) {
      with_routes(0xA00, [&] {
        SCOPED_TRACE(c.code);
        double a = 1, r = 2;
        errno = 99;
        Words left;
        const auto report = [&] { error<double>(c.code, 0, &a, &a, &r, &r, "name"); };
        EXPECT_EQ(flags_of([&] { left = under(words, report); }), c.flags);
        EXPECT_EQ(left, words);
        EXPECT_EQ(errno, c.error_number);
        EXPECT_EQ(orv_qem_kernel_GetErrStatus(), c.code);
        EXPECT_EQ(r, 2);
        EXPECT_EQ(traps(report), c.flags != 0);
      });
    }
  }
}

TEST(Routes, NamesOfAnyLength) {
  const std::string long_name(100, 'x');
  for (const size_t length : {0u, 1u, 63u, 64u, 65u, 100u}) {
    with_routes(0x1000, [&] {
      double a = 1, r = 2;
      error<double>(1, 0, &a, &a, &r, &r, long_name.substr(0, length).c_str());
      const size_t kept = length < 64 ? length : 64;
      EXPECT_EQ(seen.record.func_name_len, static_cast<int32_t>(kept));
      EXPECT_EQ(std::string(seen.record.func_name, kept), long_name.substr(0, kept));
      EXPECT_TRUE(kept == 64 || seen.record.func_name[kept] == '\0');
    });
  }
}

#ifdef __i386__
int misalignment;  // of the stack that a callback was called with

/// A caller puts the arguments, 8 bytes above the frame pointer, at a multiple of 16.
#define ORV_LOOK_AT_STACK() \
  misalignment = (reinterpret_cast<uintptr_t>(__builtin_frame_address(0)) + 8) % 16
int32_t fill(StreamState*, int32_t*, uint32_t*, int32_t* least, int32_t*, int32_t*) {
  ORV_LOOK_AT_STACK();
  return *least;
}
int32_t look(QemErrorContext*) { return ORV_LOOK_AT_STACK(), 1; }

/// Callers may have aligned their stacks to four bytes, callbacks expect sixteen.
TEST(Callbacks, GetAnAlignedStack) {
  in_fresh_thread([] {
    orv_qem_kernel_SetErrorCallBack(look);
    uint32_t numbers[8] = {};
    double out[2];
    StreamState* stream = nullptr;
    ASSERT_EQ(__zokiNewAbstractStream(&stream, 8, numbers, fill), 0);
    const auto expect_aligned = [](auto entry, const std::vector<const void*>& arguments) {
      for (const int shift : {0, 4, 8, 12}) {
        misalignment = -1;
        call_off_balance(reinterpret_cast<void (*)()>(entry), arguments, shift);
        EXPECT_EQ(misalignment, 0) << "shift " << shift;
      }
    };
    const void *one = reinterpret_cast<void*>(1), *none = nullptr;
    expect_aligned(orv_qem_kernel_dError, {one, none, out, out, out, out, "name"});
    expect_aligned(_zokiRngUniformBits, {none, stream, one, out});
    __zokDeleteStream(&stream);
  });
}
#endif

}  // namespace
