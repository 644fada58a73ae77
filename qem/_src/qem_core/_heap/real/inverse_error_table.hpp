// SPDX-License-Identifier: MIT
// Tables of the inverses of the error functions.
#pragma once

#include "../../simd/format.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Rows of coefficients for w from 1 down, 2^bits a binade; the first one is for 1 itself. Behind
/// them the middle of a row's significands, and what results at and beyond the ends of the domain
/// are made from. `Element` is the function's type; its rows may be wider.
template <class Number, class Element, int bits_of_row, int numbers, int rows>
struct InverseErrorTable {
  using Row = Number[numbers];
  static constexpr int bits = bits_of_row;
  static constexpr Number half_row = Number{0.5} / (1 << bits);

  Row row[rows];
  alignas(16) Number middle[16 / sizeof(Number)];
  Element infinity[2] = {Format<Element>::infinity, -Format<Element>::infinity};
  Element one[2] = {1, -1};
  Element zero[2] = {0, -Element{0}};
};

/// A short R, and -ln R in two parts.
struct LogRecord {
  float reciprocal, low;
  double high;
};

}  // namespace ORV_TAG
}  // namespace orv
