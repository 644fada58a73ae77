// SPDX-License-Identifier: MIT
// Streams come and go here: creating, copying, deleting.
#include <string.h>

#include "chunk.hpp"
#include "registry.hpp"
#include "stream_state.hpp"

using namespace orv;

namespace {

/// Their buffers and callbacks do not come as seeds, so they have creators of their own.
bool is_abstract(int32_t brng) {
  return brng == BRNG_IABSTRACT || brng == BRNG_DABSTRACT || brng == BRNG_SABSTRACT;
}

int32_t copy_chunk(StreamState* destination, const Chunk& chunk) {
  void* const data = allocate_block(chunk.Size);
  if (data == nullptr) return RNG_NO_MEMORY;
  if (chunk.Size > 0) memcpy(data, chunk.Data, chunk.Size);
  const int32_t status = __zokAddChunk(destination, chunk.Id, data, chunk.Size);
  if (status < 0) orv_serv_orv_free(data);
  return status;
}

/// Gives a stream without chunks copies of the source's, in reverse order; none if one fails.
/// `status` is the answer if there are none to copy.
int32_t copy_chunks(StreamState* destination, const StreamState* source, int32_t status) {
  for (const Chunk* chunk = first_chunk(source); chunk != nullptr; chunk = chunk->Next) {
    status = copy_chunk(destination, *chunk);
    if (status < 0) {
      __zokDeleteChunks(destination);
      break;
    }
  }
  return status;
}

size_t min(size_t a, size_t b) { return a < b ? a : b; }

/// What the seeds make up of the source's state, as far as both blocks reach: for WH and SFMT19937
/// the product is more than the block has.
size_t seeded_bytes(const BrngProperties& source, const BrngProperties& destination) {
  const size_t bytes = static_cast<size_t>(source.WordSize) * static_cast<size_t>(source.NumSeeds);
  return min(bytes, min(state_bytes(source), state_bytes(destination)));
}

}  // namespace

int32_t __zokAllocateStream(StreamState** stream, BrngProperties* table, int32_t brng, int32_t row,
                            int32_t offset) {
  const int32_t status = __zokIsBrngValid(table, row, offset);
  if (status < 0) return status;
  *stream = static_cast<StreamState*>(allocate_block(table[row].StateSize));
  if (*stream == nullptr) return RNG_NO_MEMORY;
  **stream = {.Brng = brng, .HeaderMark = 1, .Chunks = 0};
  return RNG_OK;
}

int32_t __zokNewStreamEx(StreamState** stream, int32_t brng, int32_t nseeds,
                         const uint32_t* seeds) {
  if (is_abstract(brng)) return RNG_INVALID_BRNG;
  int32_t row, offset;
  BrngProperties* const table = __zokGetBrngBaseOffset(brng, &row, &offset);
  const int32_t status = __zokAllocateStream(stream, table, brng, row, offset);
  if (status < 0) return status;
  return table[row].InitStream(seed_stream, *stream, nseeds, seeds);
}

int32_t __zokDeleteStream(StreamState** stream) {
  if (*stream == nullptr) return RNG_OK;
  __zokDeleteChunks(*stream);
  orv_serv_orv_free(*stream);
  *stream = nullptr;
  return RNG_OK;
}

int32_t __zokCopyStream(StreamState** newStream, StreamState* source) {
  int32_t row, offset;
  BrngProperties* const table = __zokGetBrngBaseOffset(source->Brng, &row, &offset);
  const int32_t status = __zokAllocateStream(newStream, table, source->Brng, row, offset);
  if (status < 0) return status;
  memcpy(*newStream, source, table[row].StateSize);
  (*newStream)->Chunks = 0;
  return copy_chunks(*newStream, source, RNG_OK);
}

int32_t __zokCopyStreamState(StreamState* destination, StreamState* source) {
  if (destination == source) return RNG_OK;
  int32_t row, from_row, offset;
  const BrngProperties* const table = __zokGetBrngBaseOffset(destination->Brng, &row, &offset);
  const BrngProperties* const from = __zokGetBrngBaseOffset(source->Brng, &from_row, &offset);
  memcpy(destination + 1, source + 1, seeded_bytes(from[from_row], table[row]));
  __zokDeleteChunks(destination);
  return copy_chunks(destination, source, row == from_row ? RNG_OK : RNG_BRNGS_INCOMPATIBLE);
}
