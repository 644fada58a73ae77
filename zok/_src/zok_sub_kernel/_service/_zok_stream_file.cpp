// SPDX-License-Identifier: MIT
// Streams in files: a header, the state behind a block's header, the chunks. Integers lie as in
// memory, so the two word sizes read each other's files where the state records are the same.
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "chunk.hpp"
#include "registry.hpp"

using namespace orv;

namespace {

struct FileHeader {
  uint8_t version;
  char magic[3];
  uint16_t header_size;
  uint16_t state_size;
  uint16_t chunk_count;
  uint16_t padding;
  int32_t generator;
};
static_assert(sizeof(FileHeader) == 16);

constexpr uint8_t current_version = 0;
constexpr char magic[] = {'R', 'N', 'G'};

/// A terminated string: the caller's own, or a copy of his `length` bytes.
class FileName {
 public:
  FileName(const char* name, int32_t length) : text_(name), copy_(nullptr) {
    if (length < 0) return;
    copy_ = static_cast<char*>(allocate_block(static_cast<size_t>(length) + 1));
    text_ = copy_;
    if (copy_ == nullptr) return;
    memcpy(copy_, name, static_cast<size_t>(length));
    copy_[length] = '\0';
  }
  FileName(const FileName&) = delete;
  FileName& operator=(const FileName&) = delete;
  ~FileName() { orv_serv_orv_free(copy_); }

  /// 0 if there was no memory for it.
  const char* text() const { return text_; }

 private:
  const char* text_;
  char* copy_;
};

/// Opens a file, lets `body` go over it, closes it. A failure to close outweighs every other.
template <class Body>
int32_t with_file(const char* name, int32_t length, const char* mode, Body body) {
  const FileName file_name(name, length);
  if (file_name.text() == nullptr) return RNG_NO_MEMORY;
  FILE* const file = fopen(file_name.text(), mode);
  if (file == nullptr) return RNG_FILE_OPEN;
  const int32_t status = body(file);
  return fclose(file) == 0 ? status : RNG_FILE_CLOSE;
}

// The C library counts no item where there are no bytes.
bool write(FILE* file, const void* data, size_t size) {
  return size == 0 || fwrite(data, size, 1, file) == 1;
}
bool read(FILE* file, void* data, size_t size) {
  return size == 0 || fread(data, size, 1, file) == 1;
}

// ---- Saving ------------------------------------------------------------------------------------

/// Refuses what a file could not give back: no generator's stream, a state that the header's 16
/// bits can't count.
int32_t make_header(StreamState* stream, FileHeader* header) {
  const int32_t brng = __zokGetStreamStateBrng(stream);
  BrngProperties properties;
  // A negative identifier would pass as valid.
  if (brng < 0 || __zokGetBrngProperties(brng, &properties) < 0) return RNG_INVALID_BRNG;
  const size_t state_size = state_bytes(properties);
  if (state_size > UINT16_MAX) return RNG_BAD_FILE_FORMAT;
  *header = {.version = current_version,
             .magic = {magic[0], magic[1], magic[2]},
             .header_size = sizeof *header,
             .state_size = static_cast<uint16_t>(state_size),
             .chunk_count = static_cast<uint16_t>(__zokGetNumChunks(stream)),
             .padding = 0,
             .generator = brng};
  return RNG_OK;
}

bool write_chunk(FILE* file, const Chunk& chunk) {
  return write(file, &chunk.Id, sizeof chunk.Id) && write(file, &chunk.Size, sizeof chunk.Size) &&
         write(file, chunk.Data, chunk.Size);
}

int32_t write_stream(FILE* file, const StreamState* stream, const FileHeader& header) {
  if (!write(file, &header, sizeof header)) return RNG_FILE_WRITE;
  if (!write(file, stream + 1, header.state_size)) return RNG_FILE_WRITE;
  for (const Chunk* chunk = first_chunk(stream); chunk != nullptr; chunk = chunk->Next) {
    if (!write_chunk(file, *chunk)) return RNG_FILE_WRITE;
  }
  return RNG_OK;
}

// ---- Loading -----------------------------------------------------------------------------------

/// Checks a header and makes a stream for it, its state still open.
int32_t accept_header(const FileHeader& header, StreamState** stream) {
  if (memcmp(header.magic, magic, sizeof magic) != 0) return RNG_BAD_FILE_FORMAT;
  if (header.version != current_version) return RNG_UNSUPPORTED_FILE_VERSION;
  int32_t row, offset;
  BrngProperties* const table = __zokGetBrngBaseOffset(header.generator, &row, &offset);
  // A negative row would pass as valid.
  if (row < 0 || __zokIsBrngValid(table, row, offset) < 0) return RNG_BAD_FILE_FORMAT;
  if (header.header_size < sizeof header || header.state_size != state_bytes(table[row])) {
    return RNG_BAD_FILE_FORMAT;
  }
  return __zokAllocateStream(stream, table, header.generator, row, offset);
}

int32_t read_chunk(FILE* file, StreamState* stream) {
  uint32_t id, size;
  if (!read(file, &id, sizeof id) || !read(file, &size, sizeof size)) return RNG_FILE_READ;
  void* const data = allocate_block(size);
  if (data == nullptr) return RNG_NO_MEMORY;
  int32_t status = RNG_FILE_READ;
  if (read(file, data, size)) {
    status = __zokAddChunk(stream, id, data, static_cast<int32_t>(size));
  }
  if (status < 0) orv_serv_orv_free(data);
  return status;
}

/// Leaves in *stream what was made, complete or not.
int32_t read_stream(FILE* file, StreamState** stream) {
  FileHeader header;
  if (!read(file, &header, sizeof header)) return RNG_FILE_READ;
  int32_t status = accept_header(header, stream);
  if (status < 0) return status;
  if (!read(file, *stream + 1, header.state_size)) return RNG_FILE_READ;
  for (int i = 0; i < header.chunk_count; ++i) {
    status = read_chunk(file, *stream);
    if (status < 0) return status;
  }
  return RNG_OK;
}

void delete_if_any(StreamState** stream) {
  if (*stream != nullptr) __zokDeleteStream(stream);
}

}  // namespace

int32_t __zokSaveStreamF(StreamState* stream, const char* name, int32_t length) {
  FileHeader header;
  const int32_t status = make_header(stream, &header);
  if (status < 0) return status;
  return with_file(name, length, "wb",
                   [&](FILE* file) { return write_stream(file, stream, header); });
}

int32_t __zokLoadStreamF(StreamState** stream, const char* name, int32_t length) {
  StreamState* loaded = nullptr;
  const int32_t status =
      with_file(name, length, "rb", [&loaded](FILE* file) { return read_stream(file, &loaded); });
  if (status < 0) {
    delete_if_any(&loaded);
    delete_if_any(stream);
  } else {
    *stream = loaded;
  }
  return status;
}
