// SPDX-License-Identifier: MIT
// Distributions that others are made of, with one name for both precisions.
#pragma once

#include <orv/zok.h>

namespace orv {
inline namespace ORV_TAG {

inline int32_t draw_gaussians(int32_t method, StreamState* stream, int32_t n, double* r, double a,
                              double sigma) {
  return _zokdRngGaussian(method, stream, n, r, a, sigma);
}
inline int32_t draw_gaussians(int32_t method, StreamState* stream, int32_t n, float* r, float a,
                              float sigma) {
  return _zoksRngGaussian(method, stream, n, r, a, sigma);
}

/// With mean 1.
inline int32_t draw_exponentials(StreamState* stream, int32_t n, double* r) {
  return _zokdRngExponential(0, stream, n, r, 0.0, 1.0);
}
inline int32_t draw_exponentials(StreamState* stream, int32_t n, float* r) {
  return _zoksRngExponential(0, stream, n, r, 0.0f, 1.0f);
}

}  // namespace ORV_TAG
}  // namespace orv
