// SPDX-License-Identifier: MIT
// Quasi-random streams: where their tables lie, how seeds make them, and what all entries do.
//
// A generator's Tables tell
//
//   State, most_dims          the record and the dimensions that it has room for
//   Source                    what seeds say: dim, read(nseeds, seeds) for data of the user's own,
//                             make(d, v) for a dimension's direction numbers, keeps_chunk
//   chunk_id, chunk_bytes     the chunk for more dimensions
//   in_record, in_chunk       their sequence in either
//   filled, opened            what is done after the record's tables were filled, before their use
#pragma once

#include "../_service/chunk.hpp"
#include "../_service/stream_state.hpp"
#include "gray_code.hpp"

namespace orv {
inline namespace ORV_TAG {

// ---- Tables -------------------------------------------------------------------------------------

/// Words of a chunk that must have this size; null and a status if it isn't there or isn't so.
inline int32_t open_chunk(const StreamState* stream, uint32_t id, uint64_t bytes,
                          uint32_t** words) {
  const Chunk* const chunk = find_chunk(stream, id);
  if (chunk == nullptr) return RNG_NULL_ENTRY;
  if (chunk->Size != bytes) return RNG_BAD_FILE_FORMAT;
  *words = static_cast<uint32_t*>(chunk->Data);
  return RNG_OK;
}

/// Hangs room for words on the stream.
inline int32_t add_chunk(StreamState* stream, uint32_t id, uint64_t bytes, uint32_t** words) {
  if (bytes > INT32_MAX) return RNG_NO_MEMORY;
  *words = static_cast<uint32_t*>(allocate_block(static_cast<size_t>(bytes)));
  if (*words == nullptr) return RNG_NO_MEMORY;
  memset(*words, 0, static_cast<size_t>(bytes));
  const int32_t status = __zokAddChunk(stream, id, *words, static_cast<int32_t>(bytes));
  if (status < 0) orv_serv_orv_free(*words);
  return status;
}

/// The first word is the number of dimensions. Data that can't be used are passed over.
template <class Tables>
auto read_seeds(int32_t nseeds, const uint32_t* seeds) {
  using Source = typename Tables::Source;
  const auto asked = nseeds < 1 ? 1 : static_cast<int32_t>(seeds[0]);
  Source source = {.dim = asked < 1 ? 1 : asked};
  if (nseeds > 0 && source.read(static_cast<uint64_t>(nseeds), seeds)) return source;
  return Source{.dim = source.dim > Tables::most_dims ? 1 : source.dim};
}

/// Fills the tables of a sequence that stands at its first point.
template <class Source>
void fill(const Source& source, const Sequence& s) {
  for (int32_t d = 0; d < s.dim; ++d) {
    uint32_t* const numbers = s.v + static_cast<size_t>(d) * s.row;
    source.make(d, numbers);
    for (int j = 0; s.transposed != nullptr && j < fraction_bits; ++j) {
      s.transposed[static_cast<size_t>(j) * s.transposed_row + static_cast<size_t>(d)] = numbers[j];
    }
    s.x[d] = numbers[0];
  }
}

template <class Tables>
int32_t seed(StreamState* stream, int32_t nseeds, const uint32_t* seeds) {
  const auto source = read_seeds<Tables>(nseeds, seeds);
  auto& state = state_of<typename Tables::State>(stream);
  memset(&state, 0, sizeof state);
  state.at = at_first_point(static_cast<uint32_t>(source.dim));
  const bool fits = source.dim <= Tables::most_dims;
  if (fits) {
    fill(source, Tables::in_record(state));
    Tables::filled(state);
  }
  if (fits && !source.keeps_chunk) return RNG_OK;
  uint32_t* words;
  const uint64_t bytes = Tables::chunk_bytes(state.at.Dim);
  const int32_t status = add_chunk(stream, Tables::chunk_id, bytes, &words);
  if (status == RNG_OK) fill(source, Tables::in_chunk(state, words));
  return status;
}

/// As long as the record has room it has all that is needed, chunk or not: other uses of a stream
/// may delete its chunks.
template <class Tables>
int32_t open(StreamState* stream, Sequence* s) {
  auto& state = state_of<typename Tables::State>(stream);
  if (!is_sound(state.at)) return RNG_BAD_FILE_FORMAT;
  if (state.at.Dim <= Tables::most_dims) {
    Tables::opened(state);
    *s = Tables::in_record(state);
    return RNG_OK;
  }
  uint32_t* words;
  const uint64_t bytes = Tables::chunk_bytes(state.at.Dim);
  const int32_t status = open_chunk(stream, Tables::chunk_id, bytes, &words);
  if (status == RNG_OK) *s = Tables::in_chunk(state, words);
  return status;
}

// ---- Moving along -------------------------------------------------------------------------------

/// The number of streams that stands for a coordinate's selection.
constexpr int32_t selection = 0x7FFFFFFF;

/// From here on only coordinate k. Where another was selected before, its point is passed over.
inline int32_t select(Sequence& s, int32_t nstreams, uint32_t k) {
  Progress& at = *s.at;
  if (nstreams != selection || k >= at.Dim) return RNG_LEAPFROG_UNSUPPORTED;
  const auto d = static_cast<int32_t>(k);
  if (d == at.SelectedDim) return RNG_OK;
  const bool delivered = at.Pos != 0 && k < at.Dim - at.Pos;
  if (at.SelectedDim != -1 || delivered) {
    if (at.Count == last_count) return RNG_QRNG_EXHAUSTED;
    s.x[d] = 0;
    s.coordinate(d).move(0, ++at.Count);
  }
  at.Pos = 0;
  at.SelectedDim = d;
  return RNG_OK;
}

/// Passes over elements of whole points, also where a coordinate is selected.
inline int32_t skip_ahead(Sequence& s, int32_t n, const uint32_t* params) {
  if (n < 1) return RNG_SKIPAHEAD_UNSUPPORTED;
  Progress& at = *s.at;
  const uint64_t nskip = params[0] | (n > 1 ? uint64_t{params[1]} << 32 : 0);
  uint64_t points = nskip / at.Dim, rest = nskip % at.Dim;
  if (points >= last_count || at.Count + points >= last_count) return RNG_SKIPAHEAD_UNSUPPORTED;
  if (nskip < at.Pos) {
    at.Pos -= static_cast<uint32_t>(nskip);
    return RNG_OK;
  }
  if (at.Pos > 0) {
    points = (nskip - at.Pos) / at.Dim + 1;
    rest = (nskip - at.Pos) % at.Dim;
  }
  const uint32_t before = at.Count;
  at.Count += static_cast<uint32_t>(points);
  s.move(before, at.Count);
  at.Pos = static_cast<uint32_t>(rest == 0 ? 0 : at.Dim - rest);
  return RNG_OK;
}

// ---- Entries ------------------------------------------------------------------------------------

template <class Tables>
int32_t begin_sequence(int32_t method, StreamState* stream, int32_t n, const uint32_t* params) {
  if (method == seed_stream) return seed<Tables>(stream, n, params);
  if (method != leapfrog_stream && method != skip_ahead_stream) return RNG_BAD_METHOD;
  Sequence s;
  const int32_t status = open<Tables>(stream, &s);
  if (status < 0) return status;
  return method == leapfrog_stream ? select(s, n, params[0]) : skip_ahead(s, n, params);
}

/// n elements; the bound counts each of them as a point.
template <class Tables, class Out>
int32_t draw(StreamState* stream, int32_t n, const Out& out) {
  const Progress& at = state_of<Progress>(stream);
  if (int64_t{at.Count} + n > last_count) return RNG_QRNG_EXHAUSTED;
  if (n < 1) return RNG_OK;
  Sequence s;
  const int32_t status = open<Tables>(stream, &s);
  if (status < 0) return status;
  if (at.SelectedDim == -1) {
    draw_all(s, n, out);
  } else {
    Sequence coordinate = s.coordinate(at.SelectedDim);
    Request request = {0, n};
    draw_points(coordinate, n, request, out);
  }
  return RNG_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
