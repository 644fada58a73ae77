// SPDX-License-Identifier: MIT
// Vector functions on spans, vectors, arrays: whatever has data() and size().
//
//     std::vector<double> x = ..., y(x.size());
//     orv::exp(x, y);                   // at the level of the thread's mode
//     orv::exp(x, y, orv::la);          // at low accuracy
//     auto z = orv::pow(x, y);          // a new vector
//     auto [s, c] = orv::sincos(x);
//
// The functions are those of the C interface, their names in lower case; orv/detail/functions.hpp
// lists them. Elements are float, double, and complex numbers of both. A result may be the same
// vector as an argument. Sizes have to agree: orv::error tells which do not.
#pragma once

#include <orv/qem_functions.h>
#include <orv/mode.hpp>

#include <algorithm>
#include <array>
#include <complex>
#include <cstddef>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace orv {

/// When a function reports an element.
struct condition {
  int32_t code = 0;       ///< QEM_STATUS_DOMAIN, ...; 0 for no condition
  const char* when = "";  ///< "argument outside -1 to 1"
};

/// What is known of a function for one type of elements.
struct function_facts {
  const char* what;
  std::array<condition, 2> conditions;
  /// In ulp, as measured; 0 where the result is exact, or each operation rounded once.
  std::array<double, 3> largest_error;

  constexpr bool reports(int32_t code) const {
    return conditions[0].code == code || conditions[1].code == code;
  }
  constexpr double error(level l) const { return largest_error[static_cast<size_t>(l)]; }
};

namespace detail {

template <class X>
concept sequence = requires(X& x) {
  *std::data(x);
  std::size(x);
};
template <class X>
using element_of =
    std::remove_cv_t<std::remove_reference_t<decltype(*std::data(std::declval<X&>()))>>;
template <class X>
inline constexpr bool is_writable =
    !std::is_const_v<std::remove_reference_t<decltype(*std::data(std::declval<X&>()))>>;

// Complex numbers of C++ and of the C interface lie alike in memory.
template <class T>
struct twin {
  using type = T;
};
template <>
struct twin<std::complex<float>> {
  using type = QemComplexFloat;
};
template <>
struct twin<std::complex<double>> {
  using type = QemComplexDouble;
};
template <>
struct twin<QemComplexFloat> {
  using type = std::complex<float>;
};
template <>
struct twin<QemComplexDouble> {
  using type = std::complex<double>;
};
template <class T>
const typename twin<T>::type* raw(const T* p) {
  return reinterpret_cast<const typename twin<T>::type*>(p);
}
template <class T>
typename twin<T>::type* raw(T* p) {
  return reinterpret_cast<typename twin<T>::type*>(p);
}
inline float raw(float x) { return x; }
inline double raw(double x) { return x; }
template <class R>
typename twin<std::complex<R>>::type raw(std::complex<R> x) {
  return {x.real(), x.imag()};
}

/// The type of a kernel's last parameter, the result.
template <class... P>
struct last_of {
  using type = typename decltype((std::type_identity<P>{}, ...))::type;
};
template <class... P>
constexpr auto result_type_of(void (*)(P...)) {
  return std::type_identity<
      typename twin<std::remove_pointer_t<typename last_of<P...>::type>>::type>{};
}

[[noreturn, gnu::cold]] inline void fail_sizes(std::string_view function, const char* what,
                                               size_t found, size_t wanted) {
  fail(QEM_STATUS_BAD_ARGUMENT, function,
       std::string(what) + " has " + std::to_string(found) + " elements; it needs " +
           std::to_string(wanted));
}
inline void check_size(std::string_view function, const char* what, size_t found, size_t wanted) {
  if (found != wanted) [[unlikely]]
    fail_sizes(function, what, found, wanted);
}

/// Kernels count to 2^31.
inline constexpr size_t largest_piece = size_t{1} << 30;

/// Calls call(first, count) for all elements, in pieces that a kernel can count. Then throws what
/// the thread's callback has thrown, whatever piece that was in.
template <class Call>
void in_pieces(size_t n, Call call) {
  if (n <= largest_piece) [[likely]] {
    call(size_t{0}, static_cast<int32_t>(n));
  } else {
    const size_t before = elements_before;
    for (size_t first = 0; first < n; first += largest_piece) {
      elements_before = before + first;
      call(first, static_cast<int32_t>(std::min(n - first, largest_piece)));
    }
    elements_before = before;
  }
  throw_what_waits();
}

/// A kernel's arguments from an element on: vectors, and numbers for all.
template <class T>
T* from(T* vector, size_t first) {
  return vector + first;
}
template <class R>
R from(R number, size_t) {
  return number;
}

/// What all functions have: facts, and the kernel of a level for elements of type T.
template <class F>
struct function {
  /// As constants: static_assert(orv::ln.facts<double>().reports(QEM_STATUS_DOMAIN));
  template <class T>
  static constexpr function_facts facts() {
    return F::facts_of(static_cast<const T*>(nullptr));
  }
  template <class T>
  static constexpr bool exists_for = requires {
    F::table(static_cast<const T*>(nullptr));
  };

  // For the forms below.
  template <class T>
  static auto kernel(level l) {
    static_assert(exists_for<T>, "the function does not exist for elements of this type");
    return F::table(static_cast<const T*>(nullptr))[static_cast<int>(l)];
  }
  template <class T>
  using result_of = typename decltype(result_type_of(kernel<T>(ha)))::type;
  template <class T, class... Arguments>
  static void run(level l, size_t n, Arguments... arguments) {
    const auto compute = kernel<T>(l);
    in_pieces(n, [=](size_t first, int32_t count) { compute(count, from(arguments, first)...); });
  }

  /// The address of a result of the right type and size.
  template <class R, class Y>
  static auto* place(Y& y, size_t n, const char* what = "the result") {
    static_assert(is_writable<Y>, "results can't be stored in constant elements");
    static_assert(std::is_same_v<element_of<Y>, R>, "the result has elements of another type");
    check_size(F::name, what, std::size(y), n);
    return raw(std::data(y));
  }
  /// The address of another argument, which has the type and size of the first.
  template <class T, class B>
  static auto* second(const B& b, size_t n) {
    static_assert(std::is_same_v<element_of<const B>, T>, "arguments are of different types");
    check_size(F::name, "the second argument", std::size(b), n);
    return raw(std::data(b));
  }
};

/// r[i] = f(x[i])
template <class F>
struct one_argument : function<F> {
  template <sequence X, sequence Y>
  void operator()(const X& x, Y&& y, level l = current_level()) const {
    using T = element_of<const X>;
    const size_t n = std::size(x);
    auto* r = F::template place<typename F::template result_of<T>>(y, n);
    F::template run<T>(l, n, raw(std::data(x)), r);
  }
  template <sequence X>
  auto operator()(const X& x, level l = current_level()) const {
    std::vector<typename F::template result_of<element_of<const X>>> y(std::size(x));
    (*this)(x, y, l);
    return y;
  }
};

/// r[i] = f(a[i], b[i])
template <class F>
struct two_arguments : function<F> {
  template <sequence A, sequence B, sequence Y>
  void operator()(const A& a, const B& b, Y&& y, level l = current_level()) const {
    using T = element_of<const A>;
    const size_t n = std::size(a);
    const auto* second = F::template second<T>(b, n);
    auto* r = F::template place<T>(y, n);
    F::template run<T>(l, n, raw(std::data(a)), second, r);
  }
  template <sequence A, sequence B>
  auto operator()(const A& a, const B& b, level l = current_level()) const {
    std::vector<element_of<const A>> y(std::size(a));
    (*this)(a, b, y, l);
    return y;
  }
};

/// A number of a vector's type.
template <class A>
using number_for = std::type_identity_t<element_of<const A>>;

/// r[i] = f(a[i], b), b a number
template <class F>
struct second_number : function<F> {
  template <sequence A, sequence Y>
  void operator()(const A& a, number_for<A> b, Y&& y, level l = current_level()) const {
    using T = element_of<const A>;
    const size_t n = std::size(a);
    auto* r = F::template place<T>(y, n);
    F::template run<T>(l, n, raw(std::data(a)), raw(b), r);
  }
  template <sequence A>
  auto operator()(const A& a, number_for<A> b, level l = current_level()) const {
    std::vector<element_of<const A>> y(std::size(a));
    (*this)(a, b, y, l);
    return y;
  }
};

/// r1[i], r2[i] = f(x[i])
template <class F>
struct two_results : function<F> {
  template <sequence X, sequence Y, sequence Z>
  void operator()(const X& x, Y&& y, Z&& z, level l = current_level()) const {
    using T = element_of<const X>;
    const size_t n = std::size(x);
    auto* r1 = F::template place<T>(y, n, "the first result");
    auto* r2 = F::template place<T>(z, n, "the second result");
    F::template run<T>(l, n, raw(std::data(x)), r1, r2);
  }
  template <sequence X>
  auto operator()(const X& x, level l = current_level()) const {
    using Vector = std::vector<element_of<const X>>;
    std::pair<Vector, Vector> results{Vector(std::size(x)), Vector(std::size(x))};
    (*this)(x, results.first, results.second, l);
    return results;
  }
};

/// r[i] = (scalea a[i] + shifta) / (scaleb b[i] + shiftb)
template <class F>
struct linear_fraction : function<F> {
  template <sequence A, sequence B, sequence Y>
  void operator()(const A& a, const B& b, number_for<A> scalea, number_for<A> shifta,
                  number_for<A> scaleb, number_for<A> shiftb, Y&& y,
                  level l = current_level()) const {
    using T = element_of<const A>;
    const size_t n = std::size(a);
    const auto* second = F::template second<T>(b, n);
    auto* r = F::template place<T>(y, n);
    F::template run<T>(l, n, raw(std::data(a)), second, scalea, shifta, scaleb, shiftb, r);
  }
};

// ---- Data movement: nothing is computed, so there are no levels ---------------------------------

/// How many elements lie `step` apart in a vector of `size`; below 0 from its last one backwards.
inline size_t steps_in(size_t size, ptrdiff_t step) {
  if (size == 0 || step == 0) return size == 0 ? 0 : SIZE_MAX;
  const size_t distance =
      step < 0 ? size_t{0} - static_cast<size_t>(step) : static_cast<size_t>(step);
  return (size - 1) / distance + 1;
}
template <class T>
T* first_step(T* data, size_t size, ptrdiff_t step) {
  return data + (step < 0 && size > 0 ? size - 1 : 0);
}
inline void check_steps(std::string_view function, size_t wanted, size_t size, ptrdiff_t step) {
  if (wanted <= steps_in(size, step)) [[likely]]
    return;
  fail(QEM_STATUS_BAD_ARGUMENT, function,
       std::to_string(wanted) + " elements at steps of " + std::to_string(step) +
           " don't fit into " + std::to_string(size));
}

template <class V>
inline constexpr bool is_index = std::is_integral_v<V>&& std::is_signed_v<V> &&
                                 (sizeof(V) == 4 || sizeof(V) == 8);

template <class V>
void check_indices(std::string_view function, const V* indices, size_t n, size_t size) {
  static_assert(is_index<V>, "indices are integers of 32 or 64 bits, with a sign");
  using Unsigned = std::make_unsigned_t<V>;
  Unsigned largest = 0;  // a negative one is larger than any size
  for (size_t i = 0; i < n; ++i) largest = std::max(largest, static_cast<Unsigned>(indices[i]));
  if (n == 0 || largest < size) [[likely]]
    return;
  size_t i = 0;
  while (static_cast<Unsigned>(indices[i]) < size) ++i;
  fail(QEM_STATUS_BAD_ARGUMENT, function,
       "index " + std::to_string(indices[i]) + " at " + std::to_string(i) + "; the vector has " +
           std::to_string(size) + " elements");
}

template <class V>
size_t count_set(const V* mask, size_t n) {
  static_assert(is_index<V>, "masks have integers of 32 or 64 bits");
  size_t count = 0;
  for (size_t i = 0; i < n; ++i) count += mask[i] != 0;
  return count;
}

/// y[i] = a[i step]
template <class F>
struct strided_pack : function<F> {
  template <sequence A, sequence Y>
  void operator()(const A& a, ptrdiff_t step, Y&& y) const {
    using T = element_of<const A>;
    const size_t n = std::size(y), size = std::size(a);
    check_steps(F::name, n, size, step);
    auto* r = F::template place<T>(y, n);
    F::template kernel<T>(ha)(static_cast<int64_t>(n), first_step(raw(std::data(a)), size, step),
                              step, r, 0);
  }
  template <sequence A>
  auto operator()(const A& a, ptrdiff_t step) const {
    if (step == 0) fail(QEM_STATUS_BAD_ARGUMENT, F::name, "a step of 0 needs a result");
    std::vector<element_of<const A>> y(steps_in(std::size(a), step));
    (*this)(a, step, y);
    return y;
  }
};

/// y[i step] = a[i]
template <class F>
struct strided_unpack : function<F> {
  template <sequence A, sequence Y>
  void operator()(const A& a, ptrdiff_t step, Y&& y) const {
    using T = element_of<const A>;
    const size_t n = std::size(a), size = std::size(y);
    check_steps(F::name, n, size, step);
    auto* r = F::template place<T>(y, size);
    F::template kernel<T>(ha)(static_cast<int64_t>(n), raw(std::data(a)), first_step(r, size, step),
                              step, 0);
  }
};

/// Kernels read indices and masks of 64 bits with a flag of 0, those of 32 bits with 1, and then
/// count to 2^31.
template <class V>
inline constexpr int32_t narrow = sizeof(V) == 4;
/// Calls call(first, count) for all elements, in pieces where V's flag asks for them.
template <class V, class Call>
void move_in_pieces(size_t n, Call call) {
  const size_t most = narrow<V> != 0 ? largest_piece : n;
  for (size_t first = 0; first < n; first += most) {
    call(first, static_cast<int64_t>(std::min(n - first, most)));
  }
}

/// y[i] = a[indices[i]]
template <class F>
struct indexed_pack : function<F> {
  template <sequence A, sequence I, sequence Y>
  void operator()(const A& a, const I& indices, Y&& y) const {
    using T = element_of<const A>;
    using V = element_of<const I>;
    const size_t n = std::size(indices);
    auto* r = F::template place<T>(y, n);
    check_indices(F::name, std::data(indices), n, std::size(a));
    move_in_pieces<V>(n, [&](size_t first, int64_t count) {
      F::template kernel<T>(ha)(count, raw(std::data(a)), std::data(indices) + first, r + first,
                                narrow<V>);
    });
  }
  template <sequence A, sequence I>
  auto operator()(const A& a, const I& indices) const {
    std::vector<element_of<const A>> y(std::size(indices));
    (*this)(a, indices, y);
    return y;
  }
};

/// y[indices[i]] = a[i]
template <class F>
struct indexed_unpack : function<F> {
  template <sequence A, sequence I, sequence Y>
  void operator()(const A& a, const I& indices, Y&& y) const {
    using T = element_of<const A>;
    using V = element_of<const I>;
    const size_t n = std::size(a);
    check_size(F::name, "the vector of indices", std::size(indices), n);
    check_indices(F::name, std::data(indices), n, std::size(y));
    auto* r = F::template place<T>(y, std::size(y));
    move_in_pieces<V>(n, [&](size_t first, int64_t count) {
      F::template kernel<T>(ha)(count, raw(std::data(a)) + first, r, std::data(indices) + first,
                                narrow<V>);
    });
  }
};

/// Goes over a mask: move(first, packed, count), `packed` being how many elements are set before.
template <class V, class Move>
void by_mask(const V* mask, size_t n, Move move) {
  size_t packed = 0;
  move_in_pieces<V>(n, [&](size_t first, int64_t count) {
    move(first, packed, count);
    const size_t next = first + static_cast<size_t>(count);
    if (next < n) packed += count_set(mask + first, next - first);
  });
}

/// y[k++] = a[i] where mask[i] is not 0
template <class F>
struct masked_pack : function<F> {
  template <sequence A, sequence M, sequence Y>
  void operator()(const A& a, const M& mask, Y&& y) const {
    using T = element_of<const A>;
    const auto* const set = std::data(mask);
    const size_t n = std::size(a);
    check_size(F::name, "the mask", std::size(mask), n);
    auto* r = F::template place<T>(y, count_set(set, n));
    by_mask(set, n, [&](size_t first, size_t packed, int64_t count) {
      F::template kernel<T>(ha)(count, raw(std::data(a)) + first, set + first, r + packed,
                                narrow<element_of<const M>>);
    });
  }
  template <sequence A, sequence M>
  auto operator()(const A& a, const M& mask) const {
    check_size(F::name, "the mask", std::size(mask), std::size(a));
    std::vector<element_of<const A>> y(count_set(std::data(mask), std::size(mask)));
    (*this)(a, mask, y);
    return y;
  }
};

/// y[i] = a[k++] where mask[i] is not 0
template <class F>
struct masked_unpack : function<F> {
  template <sequence A, sequence M, sequence Y>
  void operator()(const A& a, const M& mask, Y&& y) const {
    using T = element_of<const A>;
    const auto* const set = std::data(mask);
    const size_t n = std::size(y);
    check_size(F::name, "the mask", std::size(mask), n);
    check_size(F::name, "the argument", std::size(a), count_set(set, n));
    auto* r = F::template place<T>(y, n);
    by_mask(set, n, [&](size_t first, size_t packed, int64_t count) {
      F::template kernel<T>(ha)(count, raw(std::data(a)) + packed, r + first, set + first,
                                narrow<element_of<const M>>);
    });
  }
};

}  // namespace detail
}  // namespace orv

#include <orv/detail/functions.hpp>
