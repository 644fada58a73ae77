// SPDX-License-Identifier: MIT
// The floating-point environment of a kernel: asked for at the start, put back at the end.
#pragma once

#include <immintrin.h>
#include <orv/qem.h>
#include <stdint.h>

namespace orv {
inline namespace ORV_TAG {

/// Rounding, flush-to-zero and denormals-are-zero of the SSE control word.
enum : uint32_t {
  sse_fields = 0xE040,
  sse_nearest = 0,
  sse_toward_zero = 0x6000,
  sse_flush = 0x8040,
  sse_sticky_flags = 0x3F,
};

/// Precision and rounding of the x87 control word.
enum : uint16_t {
  x87_fields = 0xF00,
  x87_extended = 0x300,  // 64-bit significand, to nearest
  x87_double = 0x200,    // 53-bit significand, to nearest
};

/// The control words that a kernel asks for. The constants below are what the function list names.
struct Environment {
  bool keeps_sse = false;  // the caller's SSE word stays in force
  uint32_t sse = sse_nearest;
  bool follows_mode = true;  // flushes denormals when the thread's mode says so
  uint16_t x87 = 0;          // 0: the x87 word stays as it is
};

inline constexpr Environment environment_none = {.keeps_sse = true};
inline constexpr Environment environment_mode = {};
inline constexpr Environment environment_nearest = {.follows_mode = false};
inline constexpr Environment environment_toward_zero = {.sse = sse_toward_zero};
inline constexpr Environment environment_x87_double = {.x87 = x87_double};
inline constexpr Environment environment_x87_extended = {.x87 = x87_extended};
inline constexpr Environment environment_extended = {.follows_mode = false, .x87 = x87_extended};

inline void no_motion_across() { asm volatile("" ::: "memory"); }

/// Holds an environment for its lifetime. Restoring brings back the saved sticky flags as well, so
/// flags raised meanwhile survive only where nothing had to be changed.
class ControlWords {
 public:
  explicit ControlWords(const Environment& wanted) {
    if (wanted.x87 != 0) set_x87(wanted.x87);
    if (!wanted.keeps_sse) set_sse(wanted);
    no_motion_across();
  }

  ~ControlWords() {
    no_motion_across();
    if (x87_changed_) asm volatile("fldcw %0" : : "m"(saved_x87_));
    if (sse_changed_) _mm_setcsr(saved_sse_);
    no_motion_across();
  }

  ControlWords(const ControlWords&) = delete;
  ControlWords& operator=(const ControlWords&) = delete;

 private:
  void set_x87(uint16_t wanted) {
    asm volatile("fnstcw %0" : "=m"(saved_x87_));
    x87_changed_ = (saved_x87_ & x87_fields) != wanted;
    if (!x87_changed_) return;
    const auto word = static_cast<uint16_t>((saved_x87_ & ~x87_fields) | wanted);
    asm volatile("fldcw %0" : : "m"(word));
  }

  void set_sse(const Environment& wanted) {
    uint32_t sse = wanted.sse;
    if (wanted.follows_mode &&
        (orv_qem_kernel_GetMode() & QEM_DENORMALS_MASK) == DENORMALS_FLUSHED) {
      sse |= sse_flush;
    }
    saved_sse_ = _mm_getcsr();
    sse_changed_ = (saved_sse_ & sse_fields) != sse;
    if (sse_changed_) _mm_setcsr((saved_sse_ & 0xFFFF1FBF) | sse);
  }

  uint32_t saved_sse_ = 0;
  uint16_t saved_x87_ = 0;
  bool sse_changed_ = false;
  bool x87_changed_ = false;
};

}  // namespace ORV_TAG
}  // namespace orv
