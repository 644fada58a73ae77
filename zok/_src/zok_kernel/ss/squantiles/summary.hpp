// SPDX-License-Identifier: MIT
// Summaries of a stream of values from which quantiles are told within epsilon of their rank, for
// streams of unknown length (Zhang and Wang, A fast algorithm for approximate quantiles in high
// speed data streams, 2007).
//
// The stream is cut into segments, each about twice as long as the one before. In a segment, each
// full block of b values is sorted and compressed to every second one. Two compressed blocks are
// merged and compressed again, to a list that stands for 2 b values, two of those to one for 4 b,
// and so on: level l holds at most one list, for b 2^l values. With b growing as the logarithm of
// the segment's length, the ranks that all levels lose are epsilon of that length.
#pragma once

#include <orv/scalar.h>
#include <string.h>

#include "sort_values.hpp"
#include "tuples.hpp"

namespace orv {
inline namespace ORV_TAG {

// ---- Records ------------------------------------------------------------------------------------

/// One segment's summary. Memory is taken when it is needed.
struct SegmentSummary {
  int64_t length;  // values that it takes
  int64_t seen;
  int64_t block_size;  // b
  int32_t level_count, top_level;
  int64_t fill, room;  // values in level 0, and how many there is room for
  void* values;        // level 0
  void** levels;       // blocks of the lists of levels 1 to level_count, or null
  void* spare;         // blocks not in use, each with the address of the next

  /// Tuples in a list of that level. Where a merged list is even, its last tuple adds one.
  intptr_t tuples(int32_t level) const { return static_cast<intptr_t>(block_size / 2) + level; }
  intptr_t most_tuples() const { return tuples(level_count); }
};

/// One variable's.
struct VariableSummary {
  int32_t segment_count;
  int32_t current_segment;  // the one that is being filled, or -1
  int32_t active;
  SegmentSummary* segments;
};

/// What a task keeps.
struct StreamSummary {
  intptr_t dimension;
  VariableSummary variables[1];  // one for each
};

// ---- Memory -------------------------------------------------------------------------------------

/// A block for a list, or null.
template <class T>
void* take_block(SegmentSummary* s) {
  if (s->spare == nullptr) return allocate<char>(tuple_bytes<T>(s->most_tuples(), 1));
  void* const block = s->spare;
  s->spare = *static_cast<void**>(block);
  return block;
}

inline void give_block(SegmentSummary* s, void* block) {
  *static_cast<void**>(block) = s->spare;
  s->spare = block;
}

inline void release_spare(SegmentSummary* s) {
  while (s->spare != nullptr) {
    void* const block = s->spare;
    s->spare = *static_cast<void**>(block);
    orv_serv_deallocate(block);
  }
}

inline void release(VariableSummary* v) {
  for (int32_t k = 0; k < v->segment_count; ++k) {
    SegmentSummary& s = v->segments[k];
    for (int32_t l = 1; l <= s.level_count; ++l) orv_serv_deallocate(s.levels[l]);
    release_spare(&s);
    orv_serv_deallocate(s.levels);
    orv_serv_deallocate(s.values);
  }
  orv_serv_deallocate(v->segments);
}

/// Makes room in level 0 for up to `wanted` values more.
template <class T>
int32_t make_room(SegmentSummary* s, int64_t wanted) {
  constexpr int64_t least = 256;
  const int64_t needed = wanted < s->block_size - s->fill ? s->fill + wanted : s->block_size;
  if (needed <= s->room) return SS_OK;
  int64_t room = s->room < least ? least : 2 * s->room;
  if (room < needed) room = needed;
  if (room > s->block_size) room = s->block_size;
  T* const values = room <= most_elements ? allocate<T>(static_cast<intptr_t>(room)) : nullptr;
  if (values == nullptr) return SS_NO_MEMORY;
  if (s->fill > 0) memcpy(values, s->values, static_cast<size_t>(s->fill) * sizeof(T));
  orv_serv_deallocate(s->values);
  s->values = values;
  s->room = room;
  return SS_OK;
}

// ---- Segments -----------------------------------------------------------------------------------

/// Segment number k of a stream, its sizes alone. Numbers begin at -1.
inline SegmentSummary plan_segment(int32_t k, double epsilon) {
  constexpr double least_epsilon = 0x1p-60;  // no stream is so long
  constexpr double longest = 0x1p62, per_ln2 = 1.4426950408889634;
  const double e = epsilon < least_epsilon ? least_epsilon : epsilon, inverse = 1 / e;
  const auto up_to = [=](int32_t doublings) {
    const double x = inverse * (static_cast<double>(1ull << doublings) - 1);
    return static_cast<int64_t>(x < longest ? x : longest);
  };
  SegmentSummary s = {};
  s.length = up_to(k + 3) - up_to(k + 2);
  if (s.length < 1) s.length = INT64_MAX;  // as long as any stream
  double g = __zokdLn(e * static_cast<double>(s.length)) * per_ln2;
  if (g < 2) g = 2;
  s.block_size = static_cast<int64_t>(inverse * g);
  if (s.block_size < 2) s.block_size = 2;
  const int64_t blocks = s.length / s.block_size;
  for (s.level_count = 1; blocks >> s.level_count > 0;) ++s.level_count;
  return s;
}

/// Gives the variable its next segment.
inline int32_t open_segment(VariableSummary* v, double epsilon) {
  SegmentSummary next = plan_segment(v->segment_count - 1, epsilon);
  next.levels = allocate_zeros<void*>(next.level_count + 1);
  auto* const segments = allocate<SegmentSummary>(v->segment_count + 1);
  if (next.levels == nullptr || segments == nullptr) {
    orv_serv_deallocate(next.levels);
    orv_serv_deallocate(segments);
    return SS_NO_MEMORY;
  }
  const auto count = static_cast<size_t>(v->segment_count);
  if (count > 0) {
    memcpy(segments, v->segments, count * sizeof *segments);
    release_spare(&segments[count - 1]);
  }
  segments[count] = next;
  orv_serv_deallocate(v->segments);
  v->segments = segments;
  v->current_segment = v->segment_count++;
  return SS_OK;
}

// ---- Adding -------------------------------------------------------------------------------------

/// Compresses a full level 0, and merges it upward to the first level that is free. Without memory
/// nothing has been done.
template <class T>
int32_t empty_values(SegmentSummary* s) {
  static_assert(sizeof(T) <= sizeof(Rank));  // a block is scratch for sorting, too
  void* carry = take_block<T>(s);
  if (carry == nullptr) return SS_NO_MEMORY;
  void* merged = take_block<T>(s);
  if (merged == nullptr) {
    give_block(s, carry);
    return SS_NO_MEMORY;
  }
  const intptr_t room = s->most_tuples();
  auto* const values = static_cast<T*>(s->values);
  sort_values(values, static_cast<T*>(carry), s->block_size);
  Tuples<T> carried = tuples_in<T>(carry, room, 0);
  make_tuples<2>(values, static_cast<intptr_t>(s->block_size), &carried);
  s->fill = 0;

  int32_t level = 1;
  for (; s->levels[level] != nullptr; ++level) {
    void*& block = s->levels[level];
    Tuples<T> result = tuples_in<T>(merged, room, 0);
    merge<2>(tuples_in<T>(block, room, s->tuples(level)), carried, &result);
    give_block(s, block);
    block = nullptr;
    merged = carry;
    carry = result.lowest - 1;
    carried = result;
  }
  s->levels[level] = carry;
  if (level > s->top_level) s->top_level = level;
  give_block(s, merged);
  return SS_OK;
}

/// Adds values to the current segment, no more than it still takes: `copy` puts `count` of them,
/// from number `first` on, at an address.
template <class T, class Copy>
int32_t add_to_segment(SegmentSummary* s, int64_t n, Copy copy) {
  for (int64_t done = 0; done < n;) {
    // A full row is left where there was no memory to compress it.
    int32_t status = s->fill == s->block_size ? empty_values<T>(s) : SS_OK;
    if (status == SS_OK) status = make_room<T>(s, n - done);
    if (status != SS_OK) return status;
    const int64_t free = s->block_size - s->fill, count = n - done < free ? n - done : free;
    copy(static_cast<T*>(s->values) + s->fill, done, count);
    done += count;
    s->fill += count;
    s->seen += count;
    if (s->fill == s->block_size) status = empty_values<T>(s);
    if (status != SS_OK) return status;
  }
  return SS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
