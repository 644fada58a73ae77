// SPDX-License-Identifier: MIT
// What the tests of the vector functions share: calls of any kernel, arguments for it, control
// words, and a log of reports.
#pragma once

#include <fenv.h>
#include <gtest/gtest.h>
#include <immintrin.h>
#include <orv/qem.h>
#include <stdlib.h>
#include <string.h>

#include <string>
#include <thread>
#include <vector>

#include "support/kernels.hpp"

namespace orv_test {

/// Each thread has a mode, status, callback and input base of its own, as new.
template <class Body>
void in_fresh_thread(Body body) {
  std::thread(body).join();
}

/// With ORV_QEM_MODE as told, or without it.
template <class Body>
void in_thread_with_mode(const char* value, Body body) {
  if (value != nullptr) setenv("ORV_QEM_MODE", value, 1);
  in_fresh_thread(body);
  unsetenv("ORV_QEM_MODE");
}

// ---- Kernels -----------------------------------------------------------------------------------

template <class T>
bool same_bits(const T* a, const T* b, size_t n) {
  return n == 0 || memcmp(a, b, n * sizeof(T)) == 0;
}
template <class T>
bool same_bits(const std::vector<T>& a, const std::vector<T>& b) {
  return a.size() == b.size() && same_bits(a.data(), b.data(), a.size());
}

/// Calls `test(kernel, number)` for each kernel; the number tells the type of its elements' parts.
template <class Test>
void for_each_kernel(Test test) {
  for (const Kernel& kernel : distinct_kernels()) {
    in_fresh_thread([&] {
      SCOPED_TRACE(kernel.name());
      kernel.in_its_type([&](auto number) { test(kernel, number); });
    });
    if (testing::Test::HasFatalFailure()) return;
  }
}

/// A call of any shape. Scalars are ordinary numbers, data is moved from each place to the same.
void call(const Kernel& kernel, int64_t n, const void* a, const void* b, void* r1, void* r2);

/// Inputs and results of a call: numbers, a complex element being two. What the shape does not have
/// is empty.
template <class R>
struct Vectors {
  std::vector<R> in[2], out[2];

  Vectors(const Kernel& kernel, int n);
  void call(const Kernel& kernel, int n) {
    orv_test::call(kernel, n, in[0].data(), in[1].data(), out[0].data(), out[1].data());
  }
  /// Takes element `i` to place `to` of other vectors.
  void copy_element(const Kernel& kernel, int i, Vectors& other, int to) const;
  bool same_results(const Vectors& other) const {
    return same_bits(out[0], other.out[0]) && same_bits(out[1], other.out[1]);
  }
};

/// Runs under the caller's control words, whatever they are.
inline bool frameless(const Kernel& kernel) { return kernel.environment == "none"; }

/// Vectors of arguments that go through the lane formula and raise no flag but inexact. A formula
/// that squares its reduced argument underflows below the root of the smallest normal number, so
/// magnitudes start at 1e-15 for float and at 1e-100 for double.
template <class R>
Vectors<R> ordinary(const Kernel& kernel, int n, uint32_t seed = 1);

struct SpecialValue {
  std::vector<double> a, b;  // parts of the arguments
  int32_t code;              // that the function reports
  std::vector<double> r;     // parts of the results in turn, NaN for any NaN; none: not told
};
/// Arguments outside the ordinary.
std::vector<SpecialValue> special_values(const Kernel& kernel);

/// Puts the arguments of a row to place `i`.
template <class R>
void put(const Kernel& kernel, const SpecialValue& row, Vectors<R>& v, int i);

/// Three of the longest blocks and one element more.
inline constexpr int longest = 3 * 16 + 1;

// ---- Control words -----------------------------------------------------------------------------

struct Words {
  uint32_t sse;
  uint16_t x87;
  bool operator==(const Words&) const = default;
};
inline constexpr uint32_t sse_flags = 0x3F, sse_usual = 0x1F80;
inline constexpr uint32_t flush_to_zero = 0x8000, denormals_are_zero = 0x40;
inline constexpr uint16_t x87_usual = 0x37F;

inline Words words_now() {
  Words words{_mm_getcsr(), 0};
  asm volatile("fnstcw %0" : "=m"(words.x87));
  return words;
}
inline void set_words(const Words& words) {
  _mm_setcsr(words.sse);
  asm volatile("fldcw %0" : : "m"(words.x87) : "memory");
}

/// Runs `body` under `words` and returns what it leaves there.
template <class Body>
Words under(const Words& words, Body body) {
  const Words saved = words_now();
  set_words(words);
  body();
  const Words left = words_now();
  set_words(saved);
  return left;
}

/// The exception flags that `body` raises, of either unit, without inexact.
template <class Body>
int flags_of(Body body) {
  feclearexcept(FE_ALL_EXCEPT);
  body();
  return fetestexcept(FE_ALL_EXCEPT & ~FE_INEXACT);
}

/// The upper halves of the 256-bit registers are all zero.
bool upper_halves_clear();

#ifdef __i386__
/// Calls with the stack pointer `shift` bytes off its usual place.
void call_off_balance(void (*function)(), const std::vector<const void*>& arguments, int shift);
#endif

// ---- Reports -----------------------------------------------------------------------------------

struct Report : QemErrorContext {
  bool upper_halves_clear;  // when the callback was entered
};

/// What the thread's callback heard since listen().
std::vector<Report>& reports();

/// Sends errors of this thread to reports() and nowhere else.
void listen();

/// Codes and indices, for comparison.
using Codes = std::vector<std::pair<int32_t, int32_t>>;
Codes codes_heard();

}  // namespace orv_test
