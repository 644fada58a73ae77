// SPDX-License-Identifier: MIT
// What NumPy's users hear of and kernels don't report: overflow, underflow to 0, and infinity over
// infinity, of the few real functions that are silent there. It is seen in results and arguments.
#pragma once

#include <orv/qem.h>

#include <cmath>
#include <limits>

namespace orv_python {

/// Whether a result is 0 or not finite, without a branch.
template <class T>
bool any_extreme(int n, const T* r) {
  int found = 0;
  for (int i = 0; i < n; ++i) {
    const T size = std::fabs(r[i]);
    found |= !(size > 0) | !(size <= std::numeric_limits<T>::max());
  }
  return found != 0;
}

/// The code of an element that its kernel has not reported, 0 if there is none. A pole, where an
/// argument is 0, has been.
template <class T>
int unreported_code(T a, T b, T r) {
  if (std::isnan(r)) return std::isinf(a) && std::isinf(b) ? QEM_STATUS_DOMAIN : QEM_STATUS_OK;
  if (!std::isfinite(a) || !std::isfinite(b) || a == 0) return QEM_STATUS_OK;
  if (std::isinf(r)) return b == 0 ? QEM_STATUS_OK : QEM_STATUS_OVERFLOW;
  return r == 0 ? QEM_STATUS_UNDERFLOW : QEM_STATUS_OK;
}

/// Calls found(code, index) for such elements. Second arguments have a step of 0 or 1 elements;
/// null if there are none.
template <class T, class Found>
void find_unreported(int n, const T* a, const T* b, int b_step, const T* r, Found found) {
  if (!any_extreme(n, r)) return;
  for (int i = 0; i < n; ++i) {
    const int code = unreported_code(a[i], b == nullptr ? T(1) : b[i * b_step], r[i]);
    if (code != QEM_STATUS_OK) found(code, i);
  }
}

}  // namespace orv_python
