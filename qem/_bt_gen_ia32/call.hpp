// SPDX-License-Identifier: MIT
// Calls a kernel of any shape, with its arguments by role, and tells what a shape takes: both
// follow from the type of the kernel's pointer. For callers that go over the function list, as the
// command, tests and benchmarks do.
#pragma once

#include <orv/qem.h>
#include <stdint.h>

#include <tuple>
#include <type_traits>

namespace orv_call {

/// Arguments of a call. What a shape does not have is passed over.
struct Arguments {
  int64_t n = 0;
  const void* inputs[2] = {};
  void* results[2] = {};
  const double* scalars = nullptr;  // numbers, in order; two for a complex scalar
  int64_t increment = 1;
  const void* indices = nullptr;
  int32_t narrow = 1;
};

/// What a shape takes.
struct Signature {
  int inputs = 0, results = 0;            // vectors
  int input_parts = 0, result_parts = 0;  // numbers an element: 2 if it is complex
  int scalars = 0;                        // numbers passed by value
  bool increment = false, indices = false;
  bool is_float = false;  // its numbers; double otherwise

  /// Each result follows from the elements of the inputs at its own place.
  bool moves_elements() const { return increment || indices; }
};

/// A kernel of unknown shape, and what calls it.
struct Kernel {
  void (*address)() = nullptr;
  void (*call_by_shape)(void (*)(), const Arguments&) = nullptr;
  Signature signature;

  void operator()(const Arguments& arguments) const { call_by_shape(address, arguments); }
};

namespace detail {

template <class T>
struct Element {
  using Part = T;
  static constexpr int parts = 1;
};
template <>
struct Element<QemComplexFloat> {
  using Part = float;
  static constexpr int parts = 2;
};
template <>
struct Element<QemComplexDouble> {
  using Part = double;
  static constexpr int parts = 2;
};

template <class P>
using Pointee = std::remove_const_t<std::remove_pointer_t<P>>;
template <class P>
inline constexpr bool is_indices = std::is_same_v<P, const void*>;
template <class P>
inline constexpr bool is_input =
    std::is_pointer_v<P>&& std::is_const_v<std::remove_pointer_t<P>> && !is_indices<P>;
template <class P>
inline constexpr bool is_result =
    std::is_pointer_v<P> && !std::is_const_v<std::remove_pointer_t<P>>;

/// Hands out the arguments in the order of a kernel's parameters.
struct Cursor {
  const Arguments& arguments;
  int integers = 0, inputs = 0, results = 0, scalars = 0;

  template <class P>
  P next() {
    if constexpr (is_indices<P>) {
      return arguments.indices;
    } else if constexpr (is_input<P>) {
      return static_cast<P>(arguments.inputs[inputs++]);
    } else if constexpr (is_result<P>) {
      return static_cast<P>(arguments.results[results++]);
    } else if constexpr (!std::is_integral_v<P>) {
      using Part = typename Element<P>::Part;
      const auto number = [&] { return static_cast<Part>(arguments.scalars[scalars++]); };
      if constexpr (Element<P>::parts == 2) {
        const Part re = number();
        return {re, number()};
      } else {
        return number();
      }
    } else if (integers++ == 0) {
      return static_cast<P>(arguments.n);
    } else {  // a stride has 64 bits, the flag 32
      return static_cast<P>(sizeof(P) == 8 ? arguments.increment : arguments.narrow);
    }
  }
};

template <class... P>
void call(void (*address)(), const Arguments& arguments) {
  Cursor cursor{arguments};
  std::apply(reinterpret_cast<void (*)(P...)>(address),
             std::tuple<P...>{cursor.next<P>()...});  // braces: from left to right
}

template <class P>
constexpr void add_to(Signature& s, int& integers) {
  using T = Pointee<P>;
  if constexpr (is_indices<P>) {
    s.indices = true;
  } else if constexpr (is_input<P>) {
    ++s.inputs, s.input_parts = Element<T>::parts;
    s.is_float = sizeof(typename Element<T>::Part) == sizeof(float);
  } else if constexpr (is_result<P>) {
    ++s.results, s.result_parts = Element<T>::parts;
  } else if constexpr (!std::is_integral_v<P>) {
    s.scalars += Element<P>::parts;
  } else if (integers++ == 1) {
    s.increment = sizeof(P) == 8;
  }
}

template <class... P>
constexpr Signature signature_of() {
  Signature s;
  int integers = 0;
  (add_to<P>(s, integers), ...);
  return s;
}

}  // namespace detail

/// Takes the shape of a kernel from the type of its pointer.
template <class... P>
Kernel of(void (*kernel)(P...)) {
  return {reinterpret_cast<void (*)()>(kernel), detail::call<P...>, detail::signature_of<P...>()};
}

}  // namespace orv_call
