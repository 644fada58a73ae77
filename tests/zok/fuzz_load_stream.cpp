// SPDX-License-Identifier: MIT
// Loads what a fuzzer makes of a stream file. Build with clang++ -fsanitize=fuzzer,address.
#include <assert.h>
#include <orv/serv.h>
#include <orv/zok.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>

#include <string>

// In front of the service layer's: a size out of a broken file may be anything, and has to be
// answered as an exhausted memory would.
void* orv_serv_orv_malloc(size_t size, size_t alignment) {
  void* block = nullptr;
  if (size > 1 << 20 || posix_memalign(&block, alignment, size) != 0) return nullptr;
  return block;
}
void orv_serv_orv_free(void* block) { free(block); }

/// Quasi-random streams look at their states when they are used. A file of one is longer than what
/// the fuzzer makes, so the first fields come from the data.
static void use_quasi_random(const uint8_t* data, size_t size) {
  static uint32_t words[3000];
  for (const int32_t brng : {BRNG_SOBOL, BRNG_NIEDERR}) {
    BrngProperties properties;
    assert(__zokGetBrngProperties(brng, &properties) == RNG_OK);
    StreamState* stream = nullptr;
    const uint32_t dims = 3;
    assert(__zokNewStreamEx(&stream, brng, 1, &dims) == RNG_OK);
    memcpy(stream + 1, data, size < 64 ? size : 64);
    for (const int32_t n : {1, 3000, 7, 500}) {
      properties.iBRng(stream, n, words);
      __zokSkipAheadStream(stream, n);
      __zokLeapfrogStream(stream, n, 0x7FFFFFFF);
    }
    __zokDeleteStream(&stream);
  }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  use_quasi_random(data, size);
  static const std::string memory = "/proc/self/fd/" + std::to_string(memfd_create("stream", 0));
  const char* const name = memory.c_str();
  FILE* const file = fopen(name, "wb");
  assert(file != nullptr && fwrite(data, 1, size, file) == size && fclose(file) == 0);
  StreamState* stream = nullptr;
  const int32_t status = __zokLoadStreamF(&stream, name, -1);
  assert((stream != nullptr) == (status == RNG_OK));
  if (stream == nullptr) {
    assert(status == RNG_NO_MEMORY || status == RNG_FILE_READ || status == RNG_BAD_FILE_FORMAT ||
           status == RNG_UNSUPPORTED_FILE_VERSION);
    return 0;
  }

  // What was loaded can be copied, saved and loaded again.
  StreamState *copy = nullptr, *reloaded = nullptr;
  assert(__zokCopyStream(&copy, stream) == RNG_OK);
  assert(__zokSaveStreamF(copy, name, -1) == RNG_OK);
  assert(__zokLoadStreamF(&reloaded, name, -1) == RNG_OK);
  BrngProperties properties;
  assert(__zokGetBrngProperties(stream->Brng, &properties) == RNG_OK);
  assert(memcmp(stream + 1, reloaded + 1, properties.StateSize - sizeof(StreamState)) == 0);
  assert(__zokGetNumChunks(stream) == __zokGetNumChunks(reloaded));
  __zokDeleteStream(&stream);
  __zokDeleteStream(&copy);
  __zokDeleteStream(&reloaded);
  return 0;
}
