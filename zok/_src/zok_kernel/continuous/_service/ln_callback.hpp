// SPDX-License-Identifier: MIT
// Error callbacks for logarithms of uniform numbers, where an exact 0 may come: its logarithm
// becomes that of the smallest positive number.
#pragma once

#include <orv/qem.h>

namespace orv {
inline namespace ORV_TAG {

template <class T>
inline constexpr double ln_of_zero = -744.4400719213812;
template <>
inline constexpr double ln_of_zero<float> = -103.2789306640625;

inline void replace_results(QemErrorContext* context, double x) {
  context->res1 = x;
  context->res2 = x;
}

/// For generators whose kernels report nothing else.
template <class T>
int32_t _vLnCallBack(QemErrorContext* context) {
  replace_results(context, ln_of_zero<T>);
  return 0;
}

/// For those that call other functions, too: these have good results where they report underflow.
template <class T>
int32_t _vLnOnlyCallBack(QemErrorContext* context) {
  if (context->code == QEM_STATUS_SINGULARITY) replace_results(context, ln_of_zero<T>);
  return 0;
}

}  // namespace ORV_TAG
}  // namespace orv
