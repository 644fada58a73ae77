// SPDX-License-Identifier: MIT
// Results with two indices, and views of data that the caller keeps.
#pragma once

#include <orv/ss.h>
#include <orv/error.hpp>

#include <cstddef>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

namespace orv {

/// Rows one after another.
template <class T>
class matrix {
 public:
  matrix() = default;
  matrix(size_t rows, size_t columns, T value = 0)
      : columns_(columns), rows_(rows), elements_(rows * columns, value) {}

  size_t rows() const { return rows_; }
  size_t columns() const { return columns_; }
  T& operator()(size_t i, size_t j) { return elements_[i * columns_ + j]; }
  const T& operator()(size_t i, size_t j) const { return elements_[i * columns_ + j]; }
  std::span<T> row(size_t i) { return {&elements_[i * columns_], columns_}; }
  std::span<const T> row(size_t i) const { return {&elements_[i * columns_], columns_}; }
  T* data() { return elements_.data(); }
  const T* data() const { return elements_.data(); }
  const std::vector<T>& elements() const { return elements_; }

 private:
  size_t columns_ = 0, rows_ = 0;
  std::vector<T> elements_;
};

/// Observation i of variable j, of n and p: at i p + j, or at j n + i.
enum class layout { by_observation = SS_COLUMNS, by_variable = SS_ROWS };

namespace detail {
/// What std::mdspan offers, two indices given: observation, variable.
template <class V>
concept two_dimensional = requires(const V& v) {
  v.data_handle();
  v.extent(0);
  v.stride(1);
};
template <class V>
using number_of = std::remove_cv_t<std::remove_reference_t<decltype(*std::declval<V&>())>>;
}  // namespace detail

/// A view of data, which have to lie densely in one of the two layouts.
template <class T>
class table {
  static_assert(std::is_same_v<T, float> || std::is_same_v<T, double>,
                "statistics are of float or double");

 public:
  table(const T* data, size_t observations, size_t variables,
        orv::layout order = orv::layout::by_observation)
      : data_(data), n_(observations), p_(variables), layout_(order) {}

  /// All that a vector or array has.
  template <class X>
  requires requires(const X& x) {
    std::data(x);
    std::size(x);
  }
  table(const X& x, size_t variables, orv::layout order = orv::layout::by_observation)
      : table(std::data(x), variables > 0 ? std::size(x) / variables : 0, variables, order) {
    if (n_ * p_ != std::size(x)) {
      detail::fail(SS_BAD_DIMENSION, "table",
                   std::to_string(std::size(x)) + " elements are no observations of " +
                       std::to_string(variables) + " variables");
    }
  }

  template <detail::two_dimensional V>
  table(const V& view)
      : table(view.data_handle(), static_cast<size_t>(view.extent(0)),
              static_cast<size_t>(view.extent(1))) {
    const auto down = static_cast<size_t>(view.stride(0)),
               across = static_cast<size_t>(view.stride(1));
    if ((across == 1 || p_ == 1) && (down == p_ || n_ == 1)) return;
    layout_ = orv::layout::by_variable;
    if ((down == 1 || n_ == 1) && (across == n_ || p_ == 1)) return;
    detail::fail(SS_BAD_STORAGE, "table",
                 "strides of " + std::to_string(down) + " and " + std::to_string(across) +
                     "; the data have to lie densely");
  }

  const T* data() const { return data_; }
  size_t observations() const { return n_; }
  size_t variables() const { return p_; }
  orv::layout layout() const { return layout_; }
  T operator()(size_t i, size_t j) const {
    return data_[layout_ == orv::layout::by_variable ? j * n_ + i : i * p_ + j];
  }

 private:
  const T* data_;
  size_t n_, p_;
  orv::layout layout_;
};

template <class X>
table(const X& x, size_t variables, layout = {})
    -> table<std::remove_cv_t<std::remove_reference_t<decltype(*std::data(x))>>>;
template <class T>
table(const T*, size_t, size_t, layout = {}) -> table<T>;
template <detail::two_dimensional V>
table(const V&) -> table<detail::number_of<decltype(std::declval<const V&>().data_handle())>>;

}  // namespace orv
