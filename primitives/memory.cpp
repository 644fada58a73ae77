// SPDX-License-Identifier: MIT
// Copying and zeroing, checked and unchecked. The C library's own are the fastest known here.
#include <orv/sort.h>
#include <string.h>

namespace {

int32_t check(const void* a, const void* b, int32_t len) {
  if (a == nullptr || b == nullptr) return SORT_NULL_POINTER;
  return len < 1 ? SORT_BAD_LENGTH : SORT_OK;
}

}  // namespace

void p8_ownsCopy_8u(const uint8_t* src, uint8_t* dst, size_t bytes) { memmove(dst, src, bytes); }

void p8_ownsZero_8u(uint8_t* dst, size_t bytes) { memset(dst, 0, bytes); }

int32_t p8_tebsCopy_32f(const float* src, float* dst, int32_t len) {
  const int32_t status = check(src, dst, len);
  if (status != SORT_OK) return status;
  p8_ownsCopy_8u(reinterpret_cast<const uint8_t*>(src), reinterpret_cast<uint8_t*>(dst),
                 static_cast<size_t>(len) * sizeof *src);
  return SORT_OK;
}

int32_t p8_tebsZero_32s(int32_t* dst, int32_t len) {
  const int32_t status = check(dst, dst, len);
  if (status != SORT_OK) return status;
  p8_ownsZero_8u(reinterpret_cast<uint8_t*>(dst), static_cast<size_t>(len) * sizeof *dst);
  return SORT_OK;
}
