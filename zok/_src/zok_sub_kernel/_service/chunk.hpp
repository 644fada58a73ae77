// SPDX-License-Identifier: MIT
// The chunks of a stream: a list of records, each owning a block of data.
#pragma once

#include <orv/serv.h>
#include <orv/zok.h>
#include <stdint.h>

namespace orv {

struct Chunk {
  uint32_t Id;
  uint32_t Size;
  void* Data;
  Chunk* Next;
};

/// Alignment of streams, chunks and their data, so that vectors can live in them.
inline constexpr size_t block_alignment = 32;

inline void* allocate_block(size_t size) { return orv_serv_orv_malloc(size, block_alignment); }

/// The header keeps the address in 64 bits, sign-extended.
inline Chunk* first_chunk(const StreamState* stream) {
  return reinterpret_cast<Chunk*>(static_cast<intptr_t>(stream->Chunks));
}

/// The newest chunk with an identifier, or null.
inline const Chunk* find_chunk(const StreamState* stream, uint32_t id) {
  const Chunk* chunk = first_chunk(stream);
  while (chunk != nullptr && chunk->Id != id) chunk = chunk->Next;
  return chunk;
}

/// The newest record under an identifier, or null. Data of another size, which a file may have
/// brought, is no such record.
template <class Record>
Record* find_record(const StreamState* stream, uint32_t id) {
  for (const Chunk* chunk = first_chunk(stream); chunk != nullptr; chunk = chunk->Next) {
    if (chunk->Id == id && chunk->Size == sizeof(Record)) return static_cast<Record*>(chunk->Data);
  }
  return nullptr;
}

/// The record under an identifier; a fresh one is hung on the stream if there is none.
template <class Record>
int32_t find_or_add_record(StreamState* stream, uint32_t id, Record** record) {
  *record = find_record<Record>(stream, id);
  if (*record != nullptr) return RNG_OK;
  auto* const added = static_cast<Record*>(allocate_block(sizeof(Record)));
  if (added == nullptr) return RNG_NO_MEMORY;
  *added = Record();
  const int32_t status = __zokAddChunk(stream, id, added, sizeof(Record));
  if (status < 0) {
    orv_serv_orv_free(added);
    return status;
  }
  *record = added;
  return RNG_OK;
}

}  // namespace orv
