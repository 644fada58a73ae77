// SPDX-License-Identifier: MIT
// What integer generators share: blocks of uniforms, results that fit 32 bits, the parameters that
// a record on the stream was made for.
#pragma once

#include <immintrin.h>

#include "../../continuous/_service/uniforms.hpp"

namespace orv {
inline namespace ORV_TAG {

inline constexpr int32_t most_int = 2147483647;

/// A whole number as a result. The greatest stands for all above it.
inline int32_t to_result(double whole) {
  return _mm_cvttsd_si32(_mm_min_sd(_mm_set_sd(whole), _mm_set_sd(most_int)));
}

/// All of them alike.
inline int32_t fill(int32_t n, int32_t* r, int32_t value) {
  for (int32_t i = 0; i < n; ++i) r[i] = value;
  return RNG_OK;
}

/// A method's number k becomes origin + direction k.
struct Image {
  int32_t origin = 0, direction = 1;

  int32_t operator()(int32_t k) const {  // that of no law, out of a file, may leave the range
    return static_cast<int32_t>(static_cast<uint32_t>(origin) +
                                static_cast<uint32_t>(direction) * static_cast<uint32_t>(k));
  }
};

/// Draws blocks of n uniforms on [0, 1) for work(count, uniforms).
template <class Work>
int32_t with_uniforms(StreamState* stream, int32_t n, const Work& work) {
  constexpr int32_t block = 1024;
  alignas(32) double u[block];
  while (n > 0) {
    const int32_t count = n < block ? n : block;
    const int32_t status = draw_uniforms(stream, count, u);
    if (status < 0) return status;
    work(count, u);
    n -= count;
  }
  return RNG_OK;
}

/// The parameters of a record. None at first: no parameters equal what is not a number.
template <int count>
struct Key {
  double is[count];

  Key() {
    for (double& parameter : is) parameter = __builtin_nan("");
  }
  template <class... Parameters>
  bool holds(Parameters... parameters) const {
    int i = 0;
    return ((is[i++] == static_cast<double>(parameters)) && ...);
  }
  template <class... Parameters>
  void hold(Parameters... parameters) {
    int i = 0;
    ((is[i++] = static_cast<double>(parameters)), ...);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
