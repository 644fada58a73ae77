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

}  // namespace orv
