// SPDX-License-Identifier: MIT
// The kernels of the basic statistics: one for every combination of layout, weights and results.
#pragma once

#include <stdint.h>

namespace orv {
inline namespace ORV_TAG {

/// The parts of a kernel. Joined, they are its place in the table.
inline constexpr unsigned raw_4 = 1, raw_3 = 2, raw_2 = 4, running_mean = 8;
inline constexpr unsigned cross_products = 16, weighted = 32, column_layout = 64;
inline constexpr unsigned kernel_count = 128;
inline constexpr unsigned all_moments = running_mean | raw_2 | raw_3 | raw_4;

/// Goes on from the given state with observations first to end - 1 of variables first_variable to
/// end_variable - 1, and returns 0.
/// x: the data, variables n apart in row layout, observations p apart in column layout.
/// acc: sums of the weights, of their squares, cubes and fourth powers.
/// mean, raw2, raw3, raw4: weighted means so far, of each variable.
/// S: sums of w (x_j - mean_j) (x_k - mean_k), j not above k, at j + k p.
template <class T>
using Kernel = int32_t (*)(intptr_t first, intptr_t end, intptr_t n, intptr_t first_variable,
                           intptr_t end_variable, intptr_t p, const T* x, const T* weights,
                           void* reserved, T* acc, T* mean, T* raw2, T* raw3, T* raw4, T* S);

/// The table for a precision; a unit each defines them.
const Kernel<double>* kernel_funcs_table(double);
const Kernel<float>* kernel_funcs_table(float);

}  // namespace ORV_TAG
}  // namespace orv
