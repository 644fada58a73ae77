// SPDX-License-Identifier: MIT
// The list of chunks that a stream owns; the newest is its head.
#include "chunk.hpp"

using namespace orv;

int32_t __zokAddChunk(StreamState* stream, uint32_t id, void* data, int32_t size) {
  auto* const chunk = static_cast<Chunk*>(allocate_block(sizeof(Chunk)));
  if (chunk == nullptr) return RNG_NO_MEMORY;
  *chunk = {id, static_cast<uint32_t>(size), data, first_chunk(stream)};
  stream->Chunks = reinterpret_cast<intptr_t>(chunk);
  return RNG_OK;
}

void* __zokSearchChunk(StreamState* stream, int32_t id) {
  const Chunk* const chunk = find_chunk(stream, static_cast<uint32_t>(id));
  return chunk == nullptr ? nullptr : chunk->Data;
}

int32_t __zokGetNumChunks(StreamState* stream) {
  int32_t count = 0;
  for (const Chunk* chunk = first_chunk(stream); chunk != nullptr; chunk = chunk->Next) ++count;
  return count;
}

int32_t __zokDeleteChunks(StreamState* stream) {
  for (Chunk* chunk = first_chunk(stream); chunk != nullptr;) {
    Chunk* const next = chunk->Next;
    if (chunk->Data != nullptr) orv_serv_orv_free(chunk->Data);
    orv_serv_orv_free(chunk);
    chunk = next;
  }
  stream->Chunks = 0;
  return RNG_OK;
}
