// What the tests of the vector functions share: calls of any kernel, arguments for it, guarded
// memory, control words, and a log of reports.
#pragma once

#include <fenv.h>
#include <gtest/gtest.h>
#include <immintrin.h>
#include <orv/qem.h>
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

// ---- Kernels -----------------------------------------------------------------------------------

/// Calls `test(kernel, element)` for each kernel; the element tells its type.
template <class Test>
void for_each_kernel(Test test) {
  for (const Kernel& kernel : distinct_kernels()) {
    in_fresh_thread([&] {
      SCOPED_TRACE(kernel.name());
      switch (kernel.type) {
        case 's':
          return test(kernel, float{});
        case 'd':
          return test(kernel, double{});
        case 'c':
          return test(kernel, QemComplexFloat{});
        case 'z':
          return test(kernel, QemComplexDouble{});
      }
    });
    if (testing::Test::HasFatalFailure()) return;
  }
}

template <class T>
void call(const Kernel& kernel, int32_t n, const T* a, const T* b, T* r) {
  switch (kernel.shape) {
    case Shape::Unary:
      return kernel.unary<T>()(n, a, r);
    case Shape::Binary:
      return kernel.binary<T>()(n, a, b, r);
  }
}

/// Runs under the caller's control words, whatever they are.
bool frameless(const Kernel& kernel);

/// Arguments that go through the lane formula and raise no flag but inexact. A formula that squares
/// its reduced argument underflows below the root of the smallest normal number, so magnitudes
/// start at 1e-15 for float and at 1e-100 for double.
template <class T>
std::vector<T> ordinary(const Kernel& kernel, int count, uint32_t seed = 1);

struct SpecialValue {
  double a;
  int32_t code;  // that the function reports
};
/// Arguments outside the ordinary, for a kernel of a real function of one argument.
std::vector<SpecialValue> special_values(const Kernel& kernel);

template <class T>
bool same_bits(const T* a, const T* b, size_t n) {
  return n == 0 || memcmp(a, b, n * sizeof(T)) == 0;
}
template <class T>
bool same_bits(const std::vector<T>& a, const std::vector<T>& b) {
  return a.size() == b.size() && same_bits(a.data(), b.data(), a.size());
}

/// Three of the longest blocks and one element more.
inline constexpr int longest = 3 * 16 + 1;

// ---- Memory ------------------------------------------------------------------------------------

/// Pages without access right before begin() and right at end().
class GuardedBytes {
 public:
  explicit GuardedBytes(size_t least);
  ~GuardedBytes();
  GuardedBytes(const GuardedBytes&) = delete;
  GuardedBytes& operator=(const GuardedBytes&) = delete;

  char* begin() const { return begin_; }
  char* end() const { return end_; }

 private:
  char *begin_, *end_;
};

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

inline constexpr int watched_flags = FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW | FE_UNDERFLOW;

/// The exception flags that `body` raises, of either unit, without inexact.
template <class Body>
int flags_of(Body body) {
  feclearexcept(FE_ALL_EXCEPT);
  body();
  return fetestexcept(watched_flags);
}

/// The upper halves of the 256-bit registers are all zero.
bool upper_halves_clear();

#ifdef __i386__
/// Calls with the stack pointer `shift` bytes off its usual place.
void call_off_balance(void (*function)(), const std::vector<const void*>& arguments, int shift);
#endif

// ---- Reports -----------------------------------------------------------------------------------

struct Report {
  int32_t code, index;
  double arg1, arg2, res1, res2;
  std::string name;
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
