// What each function is timed beside, and on which arguments.
#pragma once

#include <string>
#include <vector>

#include "support/kernels.hpp"

namespace orv_bench {

using orv_test::BinaryKernel;
using orv_test::UnaryKernel;

/// One implementation of a function, with one or two inputs.
template <class T>
struct Contender {
  std::string who;  // "sleef_u10"
  UnaryKernel<T> unary = nullptr;
  BinaryKernel<T> binary = nullptr;

  void operator()(int32_t n, const T* a, const T* b, T* r) const {
    if (unary != nullptr) {
      unary(n, a, r);
    } else {
      binary(n, a, b, r);
    }
  }
};

template <class T>
struct Function {
  std::string name;  // "Exp"
  double low, high;  // arguments are drawn evenly from here
  /// The first is the scalar C library or a plain loop: what all others are checked against.
  std::vector<Contender<T>> peers;
};

/// Null if peers.cpp has no row for the function. T is a function's element type.
template <class T>
const Function<T>* find_function(const std::string& name);

}  // namespace orv_bench
