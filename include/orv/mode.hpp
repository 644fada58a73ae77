// SPDX-License-Identifier: MIT
// A thread's mode and what happens to reported elements, for the length of a scope.
#pragma once

#include <orv/qem.h>
#include <orv/error.hpp>

#include <complex>
#include <cstddef>
#include <exception>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace orv {

/// Accuracy: below 4 ulp, below 1 ulp, about half the bits. The values are slots of kernel tables.
enum class level { la, ha, ep };
/// What happens to an element that a function reports; may be joined by |. `silent` alone leaves
/// the status only.
enum class route : uint32_t {
  silent = QEM_ERRMODE_IGNORE,
  set_errno = QEM_ERRMODE_ERRNO,
  print = QEM_ERRMODE_STDERR,
  raise = QEM_ERRMODE_EXCEPT,
  call_back = QEM_ERRMODE_CALLBACK
};
/// Whether denormal arguments and results are kept or become zero.
enum class denormals : uint32_t { kept = DENORMALS_KEPT, flushed = DENORMALS_FLUSHED };

using enum level;

constexpr route operator|(route a, route b) {
  return static_cast<route>(static_cast<uint32_t>(a) | static_cast<uint32_t>(b));
}

/// The level of the thread's mode; `ha` where an environment names none.
inline level current_level() {
  const int32_t slot = orv_qem_kernel_GetTTableIndex();
  return slot >= 0 ? static_cast<level>(slot) : ha;
}

/// A part of the thread's mode, or several, until the end of the scope:
///
///     orv::scoped_mode quick(orv::la, orv::route::silent);
///
/// What was not named stays. Scopes end in the reverse order of their beginning, on their thread.
class scoped_mode {
 public:
  template <class... Settings>
  explicit scoped_mode(Settings... settings)
      : saved_(orv_qem_kernel_SetMode((QemMode{0} | ... | word(settings)))) {}
  ~scoped_mode() { restore(saved_); }
  scoped_mode(const scoped_mode&) = delete;
  scoped_mode& operator=(const scoped_mode&) = delete;

  /// Brings a word back. A field of 0, as an environment may leave it, can't be set: it gets the
  /// value that does the same.
  static void restore(QemMode word) {
    if ((word & QEM_ACCURACY_MASK) == 0) word |= QEM_HA;
    if ((word & QEM_ERRMODE_MASK) == 0) word |= QEM_ERRMODE_IGNORE;
    if ((word & QEM_DENORMALS_MASK) == 0) word |= DENORMALS_KEPT;
    orv_qem_kernel_SetMode(word);
  }

 private:
  static QemMode word(level l) { return static_cast<QemMode>(l) + QEM_LA; }
  static QemMode word(route r) { return static_cast<QemMode>(r); }
  static QemMode word(denormals d) { return static_cast<QemMode>(d); }

  QemMode saved_;
};

/// An element that a function reported. Without a second result that is the first one.
struct report {
  int32_t code;                   ///< QEM_STATUS_DOMAIN, _SINGULARITY, _OVERFLOW or _UNDERFLOW
  size_t index;                   ///< in the whole vector
  std::string function;           ///< "vdLn"
  std::complex<double> argument;  ///< the first one
  std::complex<double> result, second_result;  ///< a callback may change them
};

namespace detail {

/// The innermost callback of a thread, and what its callable has thrown.
struct callback_frame {
  bool (*call)(callback_frame& frame, report& element);
  callback_frame* outer;
  std::exception_ptr thrown = nullptr;
};
inline constinit thread_local callback_frame* innermost_callback = nullptr;
/// Elements before the piece of a long vector that is being computed.
inline constinit thread_local size_t elements_before = 0;

/// What the callable throws must not pass through a kernel: it waits for the kernel's end.
inline int32_t call_innermost(QemErrorContext* context) {
  callback_frame* const frame = innermost_callback;
  if (frame == nullptr) return 0;
  if (frame->thrown != nullptr) return 1;
  innermost_callback = frame->outer;  // what the callable calls reports to the one outside
  const size_t before = std::exchange(elements_before, 0);
  int32_t done = 1;
  try {
    const QemErrorContext& c = *context;
    report element = {c.code,
                      before + static_cast<uint32_t>(c.index),
                      {c.func_name, static_cast<size_t>(c.func_name_len)},
                      {c.arg1, c.arg1_im},
                      {c.res1, c.res1_im},
                      {c.res2, c.res2_im}};
    done = frame->call(*frame, element) ? 1 : 0;
    context->res1 = element.result.real(), context->res1_im = element.result.imag();
    context->res2 = element.second_result.real(), context->res2_im = element.second_result.imag();
  } catch (...) {
    frame->thrown = std::current_exception();
  }
  elements_before = before;
  innermost_callback = frame;
  return done;
}

inline void throw_what_waits() {
  callback_frame* const frame = innermost_callback;
  if (frame != nullptr && frame->thrown != nullptr) [[unlikely]] {
    std::rethrow_exception(std::exchange(frame->thrown, nullptr));
  }
}

}  // namespace detail

/// Calls `callable(report&)` for each element that this thread's functions report, until the end
/// of the scope. It may change the results. Where it returns true the element is dealt with, and
/// stays as the function left it; otherwise (false, or void) the changed results are stored and
/// the other routes of the mode run.
///
/// What it throws leaves the face's function, after that has computed all elements; for those that
/// were still to be reported the callable is not called. From a function of the C interface it
/// can't be thrown: then it waits for the next call of the face or of rethrow(), or is dropped at
/// the end of the scope. Functions that the callable calls report to the scope outside.
template <class F>
class scoped_callback : detail::callback_frame {
 public:
  explicit scoped_callback(F callable)
      : callback_frame{call_it, detail::innermost_callback},
        callable_(std::move(callable)),
        saved_mode_(orv_qem_kernel_GetMode()),
        saved_callback_(orv_qem_kernel_SetErrorCallBack(detail::call_innermost)) {
    detail::innermost_callback = this;
  }
  ~scoped_callback() {
    detail::innermost_callback = outer;
    orv_qem_kernel_SetErrorCallBack(saved_callback_);
    scoped_mode::restore(saved_mode_);
  }
  scoped_callback(const scoped_callback&) = delete;
  scoped_callback& operator=(const scoped_callback&) = delete;

  /// Throws what the callable threw during a call of the C interface.
  void rethrow() {
    if (thrown != nullptr) std::rethrow_exception(std::exchange(thrown, nullptr));
  }

 private:
  static bool call_it(callback_frame& frame, report& element) {
    F& callable = static_cast<scoped_callback&>(frame).callable_;
    if constexpr (std::is_void_v<std::invoke_result_t<F&, report&>>) {
      callable(element);
      return false;
    } else {
      return static_cast<bool>(callable(element));
    }
  }

  F callable_;
  QemMode saved_mode_;
  QemErrorCallBack saved_callback_;
};

namespace detail {
struct append_to {
  std::vector<report>* reports;
  bool operator()(report& element) const {
    reports->push_back(element);
    return true;
  }
};
}  // namespace detail

/// Appends what this thread's functions report to a vector, until the end of the scope. No other
/// route is taken.
///
///     std::vector<orv::report> reports;
///     { orv::collect here(reports); orv::ln(x, y); }
class collect : public scoped_callback<detail::append_to> {
 public:
  explicit collect(std::vector<report>& reports) : scoped_callback(detail::append_to{&reports}) {}
};

}  // namespace orv
