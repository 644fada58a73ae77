// SPDX-License-Identifier: MIT
// The operations on a thread's mode word, status, callback and input base, and their twins.
#include "thread_cells.hpp"

using namespace orv;

namespace {

/// `word` with the field under `mask` replaced by that of `request`, unless that is 0.
QemMode with_field(QemMode word, QemMode request, QemMode mask) {
  return (request & mask) != 0 ? (word & ~mask) | (request & mask) : word;
}

template <class Word>
Word exchange(Word* cell, Word value) {
  const Word previous = *cell;
  *cell = value;
  return previous;
}

}  // namespace

QemMode orv_qem_kernel_GetMode() {
  QemMode* cell = _GetMode();
  if (*cell == 0) {
    const auto parsed = static_cast<QemMode>(orv_qem_kernel_ReadEnvVarMode());
    *cell = parsed == ~QemMode{0} ? QemMode{QEM_MODE_DEFAULT} : parsed;
  }
  return *cell;
}

QemMode orv_qem_kernel_SetMode(QemMode mode) {
  const QemMode previous = orv_qem_kernel_GetMode();
  QemMode word = with_field(previous, mode, QEM_ACCURACY_MASK);
  word = with_field(word, mode, QEM_ERRMODE_MASK);
  word = with_field(word, mode, QEM_DENORMALS_MASK);
  *_GetMode() = word;
  return previous;
}

int32_t orv_qem_kernel_GetErrStatus() { return *_GetErrStatus(); }

int32_t orv_qem_kernel_SetErrStatus(int32_t status) { return exchange(_GetErrStatus(), status); }

int32_t orv_qem_kernel_ClearErrStatus() { return exchange(_GetErrStatus(), 0); }

QemErrorCallBack orv_qem_kernel_GetErrorCallBack() { return *_GetCallBack(); }

QemErrorCallBack orv_qem_kernel_SetErrorCallBack(QemErrorCallBack callback) {
  const QemMode mode = orv_qem_kernel_GetMode();
  const QemErrorCallBack previous = exchange(_GetCallBack(), callback);
  const QemMode route = QEM_ERRMODE_CALLBACK;
  orv_qem_kernel_SetMode(callback != nullptr ? mode | route : mode & ~route);
  return previous;
}

QemErrorCallBack orv_qem_kernel_ClearErrorCallBack() {
  return orv_qem_kernel_SetErrorCallBack(nullptr);
}

const void* orv_qem_kernel_SetInterfInputVectorPointer(const void* base) {
  return *_GetInputVectorPointer() = base;
}

QemMode _qemGetMode() { return orv_qem_kernel_GetMode(); }
QemMode _qemSetMode(QemMode mode) { return orv_qem_kernel_SetMode(mode); }
int32_t _qemGetErrStatus() { return orv_qem_kernel_GetErrStatus(); }
int32_t _qemSetErrStatus(int32_t status) { return orv_qem_kernel_SetErrStatus(status); }
int32_t _qemClearErrStatus() { return orv_qem_kernel_ClearErrStatus(); }
QemErrorCallBack _qemGetErrorCallBack() { return orv_qem_kernel_GetErrorCallBack(); }
QemErrorCallBack _qemSetErrorCallBack(QemErrorCallBack callback) {
  return orv_qem_kernel_SetErrorCallBack(callback);
}
QemErrorCallBack _qemClearErrorCallBack() { return orv_qem_kernel_ClearErrorCallBack(); }
const void* _qemSetInterfInputVectorPointer(const void* base) {
  return orv_qem_kernel_SetInterfInputVectorPointer(base);
}
