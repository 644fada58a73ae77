// SPDX-License-Identifier: MIT
// Aligned memory from the C library.
#include <orv/serv.h>

#include <stdlib.h>

namespace {

void* aligned_block(size_t size, size_t alignment) {
  if ((alignment & (alignment - 1)) != 0) return nullptr;
  const size_t natural = sizeof(void*);
  void* block = nullptr;
  if (posix_memalign(&block, alignment < natural ? natural : alignment, size) != 0) return nullptr;
  return block;
}

}  // namespace

void* orv_serv_allocate(size_t size, size_t alignment) { return aligned_block(size, alignment); }

void orv_serv_deallocate(void* pointer) { free(pointer); }

void* orv_serv_orv_malloc(size_t size, size_t alignment) { return aligned_block(size, alignment); }

void orv_serv_orv_free(void* block) { free(block); }
