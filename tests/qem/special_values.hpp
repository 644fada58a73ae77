// What each real function gives for arguments outside the ordinary, as data.
#pragma once

#include <string>
#include <vector>

#include "support/kernels.hpp"

namespace orv_test {

enum class Is { Exactly, ExactlyAtHA, Zero, Near, NaN, Subnormal };

struct Expected {
  Is is;
  double value;
};

struct SpecialValue {
  std::string types;  // which of s and d the row is for
  std::string function;
  double a, b;  // b: second argument of two
  Expected result;
  int32_t code;
};

/// The rows of a kernel's function and type.
std::vector<SpecialValue> special_values(const Kernel& kernel);

}  // namespace orv_test
