/* SPDX-License-Identifier: MIT */
/* The service layer: aligned memory and messages. It is a library of its own, liborv_serv.so, so
 * that an application may put its own functions of these names in front of it. */
#ifndef ORV_SERV_H
#define ORV_SERV_H

#include <stddef.h>
#include <stdint.h>

#ifndef ORV_API
#define ORV_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Allocates `size` bytes at a multiple of `alignment` bytes (a power of two; 0 asks for the
 *  natural alignment). Returns 0 when memory is exhausted or the alignment is no power of two.
 *  Release with orv_serv_deallocate. */
ORV_API void* orv_serv_allocate(size_t size, size_t alignment);

/** Releases a block from orv_serv_allocate; 0 is accepted. */
ORV_API void orv_serv_deallocate(void* pointer);

/** The allocator of random streams; as orv_serv_allocate. Release with orv_serv_orv_free. */
ORV_API void* orv_serv_orv_malloc(size_t size, size_t alignment);

/** Releases a block from orv_serv_orv_malloc; 0 is accepted. */
ORV_API void orv_serv_orv_free(void* block);

/** Prints the catalogue's text of `key` (735 to 753) on standard error, as one line.
 *  `channel` is 1; `count` tells how many arguments follow. A name follows as `const char*`, an
 *  index as `int32_t`, a value as `double`. An unknown key prints a line that says so. */
ORV_API void orv_serv_orv_print(int channel, int key, int count, ...);

#ifdef __cplusplus
}
#endif

#endif
