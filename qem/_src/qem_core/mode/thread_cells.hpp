// SPDX-License-Identifier: MIT
// The four words that each thread has of its own. An accessor returns the address of the calling
// thread's word and makes it, as 0, on first use; null if there is no memory for it.
#pragma once

#include <orv/qem.h>

namespace orv {

QemMode* _GetMode();
int32_t* _GetErrStatus();
QemErrorCallBack* _GetCallBack();
const void** _GetInputVectorPointer();

}  // namespace orv
