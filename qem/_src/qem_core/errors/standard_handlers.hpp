// SPDX-License-Identifier: MIT
// The error routes that the library has itself: errno, standard error, floating-point exception.
#pragma once

#include <orv/qem.h>

namespace orv {

/// Runs the routes that the thread's mode selects, in that order.
void _qemStdErrorHandler(const QemErrorContext* record);

}  // namespace orv
