// SPDX-License-Identifier: MIT
// Radius and angle of pairs of Gaussian numbers (Box and Muller 1958).
#pragma once

#include "../../../zok_sub_kernel/_service/vector_kernels.hpp"

namespace orv {
inline namespace ORV_TAG {

/// rho[k] = sqrt(-2 ln u[k]). Out of place: callbacks want to see a u of 0.
template <class T>
void radii(int32_t n, const T* u, T* rho) {
  kernels::ln(n, u, rho);
  for (int32_t k = 0; k < n; ++k) rho[k] = T(0) - (rho[k] + rho[k]);
  kernels::sqrt(n, rho, rho);
}

/// u[k] = 2 pi u[k]
template <class T>
void angles(int32_t n, T* u) {
  constexpr T two_pi = static_cast<T>(6.283185307179586);
  for (int32_t k = 0; k < n; ++k) u[k] = two_pi * u[k];
}

}  // namespace ORV_TAG
}  // namespace orv
