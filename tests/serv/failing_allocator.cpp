#include "failing_allocator.hpp"

#include <dlfcn.h>
#include <orv/serv.h>
#include <stdlib.h>

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

void* opened(void* block) {
  if (!watching || block == nullptr) return block;
  for (void*& place : open_blocks) {
    if (place != nullptr) continue;
    place = block;
    ++seen.open;
    return block;
  }
  abort();  // more blocks than a test may hold at a time
}

/// Blocks from before watch_allocations() do not count.
void closed(void* block) {
  if (!watching || block == nullptr) return;
  for (void*& place : open_blocks) {
    if (place != block) continue;
    place = nullptr;
    --seen.open;
    return;
  }
}

/// The function behind this program's one of the same name. What it calls in turn is not counted.
template <class Call>
auto unwatched(Call call) {
  const bool before = watching;
  watching = false;
  const auto result = call();
  watching = before;
  return result;
}

using Allocate = void* (*)(size_t, size_t);
using Release = void (*)(void*);

void* allocate(const char* name, size_t size, size_t alignment) {
  if (!allowed(size)) return nullptr;
  return opened(unwatched(
      [&] { return reinterpret_cast<Allocate>(dlsym(RTLD_NEXT, name))(size, alignment); }));
}

void release(const char* name, void* block) {
  closed(block);
  unwatched([&] {
    reinterpret_cast<Release>(dlsym(RTLD_NEXT, name))(block);
    return 0;
  });
}

}  // namespace

void watch_allocations(int failing) {
  seen = {};
  for (void*& place : open_blocks) place = nullptr;
  failing_number = failing;
  watching = true;
}

Allocations seen_allocations() {
  watching = false;
  return seen;
}

}  // namespace orv_test

using namespace orv_test;

void* orv_serv_allocate(size_t size, size_t alignment) {
  return allocate("orv_serv_allocate", size, alignment);
}
void orv_serv_deallocate(void* pointer) { release("orv_serv_deallocate", pointer); }
void* orv_serv_orv_malloc(size_t size, size_t alignment) {
  return allocate("orv_serv_orv_malloc", size, alignment);
}
void orv_serv_orv_free(void* block) { release("orv_serv_orv_free", block); }

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
