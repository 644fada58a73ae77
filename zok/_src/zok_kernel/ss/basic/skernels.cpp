// SPDX-License-Identifier: MIT
#include "kernels.hpp"

namespace orv {
inline namespace ORV_TAG {

const Kernel<float>* kernel_funcs_table(float) {
  static constexpr KernelTable<float> table =
      make_kernels<float>(std::make_integer_sequence<unsigned, kernel_count>());
  return table.kernel;
}

}  // namespace ORV_TAG
}  // namespace orv
