// SPDX-License-Identifier: MIT
#include <orv/qem.h>

#include "../../simd/format.hpp"
#include "quarter_turns.hpp"

using namespace orv;

int32_t orv_qem_kernel_reduce_pio2d(double x, double* out) {
  const uint64_t bits = bits_of(x) & ~0ull >> 1;
  const auto [turns, rest] = without_quarter_turns<double>(
      (bits & ~0ull >> 12) | 1ull << 52, static_cast<int>(bits >> 52) - 1075,
      {0x1.921FB54442D18p0, 0x1.1A62633145C07p-54});
  const bool negative = bits_of(x) >> 63 != 0;
  const double sign = negative ? -1 : 1;
  out[0] = sign * rest.hi, out[1] = sign * rest.lo;
  return (negative ? -turns : turns) & 3;
}
