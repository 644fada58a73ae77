// SPDX-License-Identifier: MIT
#include "kernels.hpp"

namespace orv {
inline namespace ORV_TAG {

const Kernel<double>* kernel_funcs_table(double) {
  static constexpr KernelTable<double> table =
      make_kernels<double>(std::make_integer_sequence<unsigned, kernel_count>());
  return table.kernel;
}

}  // namespace ORV_TAG
}  // namespace orv
