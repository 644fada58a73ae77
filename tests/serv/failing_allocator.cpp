// SPDX-License-Identifier: MIT
#include "failing_allocator.hpp"

#include <orv/serv.h>
#include <stdlib.h>

#include <algorithm>
#include <iterator>

// The C library's own entries: looking malloc up by name would allocate. A compiler may make a
// calloc of a malloc whose block is cleared.
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void __libc_free(void* block);
}

namespace orv_test {
namespace {

thread_local bool watching;
thread_local int failing_number;
thread_local Allocations seen;
thread_local void* open_blocks[1024];

/// Whether this allocation goes ahead.
bool allowed(size_t size) {
  if (!watching) return true;
  ++seen.asked;
  seen.bytes += size;
  return seen.asked != failing_number;
}

/// Puts `to` where `from` stands among the open blocks.
bool replaced(void* from, void* to) {
  void** const place = std::ranges::find(open_blocks, from);
  if (place == std::end(open_blocks)) return false;
  *place = to;
  return true;
}

void* opened(void* block) {
  if (!watching || block == nullptr) return block;
  if (!replaced(nullptr, block)) abort();  // more blocks than a test may hold at a time
  ++seen.open;
  return block;
}

/// Blocks from before watch_allocations() do not count.
void closed(void* block) {
  if (watching && block != nullptr && replaced(block, nullptr)) --seen.open;
}

void* allocate(size_t size, size_t alignment) {
  if (!allowed(size)) return nullptr;
  void* block = nullptr;
  if (posix_memalign(&block, std::max(alignment, sizeof(void*)), size) != 0) return nullptr;
  return opened(block);
}

}  // namespace

void watch_allocations(int failing) {
  seen = {};
  std::ranges::fill(open_blocks, nullptr);
  failing_number = failing;
  watching = true;
}

Allocations seen_allocations() {
  watching = false;
  return seen;
}

}  // namespace orv_test

using namespace orv_test;

void* orv_serv_allocate(size_t size, size_t alignment) { return allocate(size, alignment); }
void orv_serv_deallocate(void* pointer) { free(pointer); }
void* orv_serv_orv_malloc(size_t size, size_t alignment) { return allocate(size, alignment); }
void orv_serv_orv_free(void* block) { free(block); }

extern "C" void* malloc(size_t size) {
  return allowed(size) ? opened(__libc_malloc(size)) : nullptr;
}
extern "C" void* calloc(size_t count, size_t size) {
  return allowed(count * size) ? opened(__libc_calloc(count, size)) : nullptr;
}
extern "C" void* realloc(void* block, size_t size) {
  if (!allowed(size)) return nullptr;
  void* const moved = __libc_realloc(block, size);
  if (moved != nullptr) closed(block);
  return opened(moved);
}
extern "C" void free(void* block) {
  closed(block);
  __libc_free(block);
}
