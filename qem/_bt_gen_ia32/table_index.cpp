// SPDX-License-Identifier: MIT
// From a mode word to a slot of the kernel tables.
#include <orv/qem.h>

namespace {

int32_t qemTTableIndex;  // the last index handed out, by any thread

int32_t index_of(QemMode mode) {
  const int32_t index = static_cast<int32_t>(mode & QEM_ACCURACY_MASK) - 1;
  __atomic_store_n(&qemTTableIndex, index, __ATOMIC_RELAXED);
  return index;
}

}  // namespace

int32_t orv_qem_kernel_GetTTableIndex() { return index_of(orv_qem_kernel_GetMode()); }

int32_t orv_qem_kernel_GetTTableIndexM(int32_t, QemMode mode) { return index_of(mode); }

int32_t dll_cpu_version() { return 0; }
