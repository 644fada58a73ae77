// Loads what a fuzzer makes of a stream file. Build with clang++ -fsanitize=fuzzer,address.
#include <orv/serv.h>
#include <orv/zok.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

// In front of the service layer's: a size out of a broken file may be anything, and has to be
// answered as an exhausted memory would.
void* orv_serv_orv_malloc(size_t size, size_t alignment) {
  void* block = nullptr;
  if (size > 1 << 20 || posix_memalign(&block, alignment, size) != 0) return nullptr;
  return block;
}
void orv_serv_orv_free(void* block) { free(block); }

namespace {

void require(bool condition) {
  if (!condition) abort();
}

/// A file in memory, by name.
struct MemoryFile {
  MemoryFile() : handle(memfd_create("stream", 0)) {
    require(handle >= 0);
    snprintf(name, sizeof name, "/proc/self/fd/%d", handle);
  }
  ~MemoryFile() { close(handle); }

  int handle;
  char name[40];
};

bool is_load_status(int32_t status) {
  return status == RNG_OK || status == RNG_NO_MEMORY || status == RNG_FILE_READ ||
         status == RNG_BAD_FILE_FORMAT || status == RNG_UNSUPPORTED_FILE_VERSION;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const MemoryFile file, again;
  require(write(file.handle, data, size) == static_cast<ssize_t>(size));
  StreamState* stream = nullptr;
  const int32_t status = __zokLoadStreamF(&stream, file.name, -1);
  require(is_load_status(status));
  require((stream != nullptr) == (status == RNG_OK));
  if (stream == nullptr) return 0;

  // What was loaded can be copied, saved and loaded again.
  StreamState *copy = nullptr, *reloaded = nullptr;
  require(__zokCopyStream(&copy, stream) == RNG_OK);
  require(__zokSaveStreamF(copy, again.name, -1) == RNG_OK);
  require(__zokLoadStreamF(&reloaded, again.name, -1) == RNG_OK);
  BrngProperties properties;
  require(__zokGetBrngProperties(stream->Brng, &properties) == RNG_OK);
  require(memcmp(stream + 1, reloaded + 1, properties.StateSize - sizeof(StreamState)) == 0);
  require(__zokGetNumChunks(stream) == __zokGetNumChunks(reloaded));
  __zokDeleteStream(&stream);
  __zokDeleteStream(&copy);
  __zokDeleteStream(&reloaded);
  return 0;
}
