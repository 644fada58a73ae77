// SPDX-License-Identifier: MIT
// Abstract streams: numbers of type T out of the user's circular buffer, which his callback fills.
// Words come out as they are; doubles and floats are moved from the range that the user states to
// the one that is asked for.
#pragma once

#include <orv/zok.h>
#include <stdint.h>
#include <string.h>

#include "registry.hpp"
#include "stream_state.hpp"

namespace orv {

template <class T>
using FillBuffer = int32_t (*)(StreamState*, int32_t*, T*, int32_t*, int32_t*, int32_t*);

/// Length - Free elements are unread, from Position on and around the buffer's end.
template <class T>
struct AbstractState {
  int32_t Length, Position, Free;
  T RangeA, RangeB;
  T* Buffer;
  FillBuffer<T> Callback;
};
template <>
struct AbstractState<uint32_t> {
  int32_t Length, Position, Free;
  uint32_t* Buffer;
  FillBuffer<uint32_t> Callback;
};

/// What InitStream gets in place of seeds: all of these are pointers.
template <class T>
struct AbstractParameters {
  const int32_t* n;
  T* buffer;
  const T *a, *b;
  FillBuffer<T> callback;
};
template <>
struct AbstractParameters<uint32_t> {
  const int32_t* n;
  uint32_t* buffer;
  FillBuffer<uint32_t> callback;
};

template <class T>
int32_t create_abstract(StreamState** stream, int32_t brng, int32_t count,
                        const AbstractParameters<T>& parameters) {
  if (*parameters.n == 0 || parameters.buffer == nullptr || parameters.callback == nullptr) {
    return RNG_BAD_ARGS;
  }
  if constexpr (requires { parameters.a; }) {
    if (*parameters.a >= *parameters.b) return RNG_BAD_ARGS;
  }
  int32_t row, offset;
  BrngProperties* const table = __zokGetBrngBaseOffset(brng, &row, &offset);
  const int32_t status = __zokAllocateStream(stream, table, brng, row, offset);
  if (status < 0) return status;
  return table[row].InitStream(seed_stream, *stream, count,
                               reinterpret_cast<const uint32_t*>(&parameters));
}

template <class T>
int32_t init_abstract(int32_t method, StreamState* stream, const uint32_t* params) {
  if (method != seed_stream) return refuse_method(method);
  const auto& parameters = *reinterpret_cast<const AbstractParameters<T>*>(params);
  auto& state = state_of<AbstractState<T>>(stream);
  state.Length = state.Free = *parameters.n;
  state.Position = 0;
  if constexpr (requires { parameters.a; }) {
    state.RangeA = *parameters.a;
    state.RangeB = *parameters.b;
  }
  state.Buffer = parameters.buffer;
  state.Callback = parameters.callback;
  return RNG_OK;
}

/// The place `count` elements behind `position`; neither is above the length.
inline int32_t around(int32_t position, int32_t count, int32_t length) {
  const uint32_t place = static_cast<uint32_t>(position) + static_cast<uint32_t>(count);
  return static_cast<int32_t>(place % static_cast<uint32_t>(length));
}

/// Takes unread elements out of a buffer in their order and hands them on, one contiguous piece
/// after the other, as deliver(first, count).
template <class T, class Deliver>
int32_t draw_abstract(StreamState* stream, int32_t n, Deliver deliver) {
  auto& state = state_of<AbstractState<T>>(stream);
  if (state.Buffer == nullptr) return RNG_NULL_ENTRY;
  const int32_t length = state.Length;
  int32_t position = state.Position;
  int32_t free = state.Free;
  int32_t end = around(position, length - free, length);  // of the unread elements

  const auto take = [&](int32_t count) {
    if (count < 1) return;
    const int32_t to_end = length - position;
    const int32_t first = count < to_end ? count : to_end;
    deliver(state.Buffer + position, first);
    if (count > first) deliver(state.Buffer, count - first);
    position = around(position, count, length);
    free += count;
  };
  int32_t ready = length - free;
  while (ready < n) {
    take(ready);
    n -= ready;
    // The callback gets the numbers at addresses, but what it makes of them there counts nothing.
    int32_t size = length, least = n < free ? n : free, most = free, index = end;
    ready = state.Callback(stream, &size, state.Buffer, &least, &most, &index);
    if (ready < 0 || ready > free) return RNG_ABSTRACT_BAD_COUNT;
    if (ready == 0) return RNG_ABSTRACT_NO_DATA;
    end = around(end, ready, length);
    free -= ready;
  }
  take(n);
  state.Position = position;
  state.Free = free;
  return RNG_OK;
}

inline int32_t draw_abstract_words(StreamState* stream, int32_t n, uint32_t* r) {
  return draw_abstract<uint32_t>(stream, n, [&r](const uint32_t* words, int32_t count) {
    memcpy(r, words, sizeof(uint32_t) * static_cast<size_t>(count));
    r += count;
  });
}

template <class T>
int32_t draw_abstract_in_range(StreamState* stream, int32_t n, T* r, T a, T b) {
  const auto& state = state_of<AbstractState<T>>(stream);
  const T range_a = state.RangeA;
  const T s = (b - a) / (state.RangeB - range_a);
  return draw_abstract<T>(stream, n, [=](const T* x, int32_t count) mutable {
    for (int32_t i = 0; i < count; ++i) r[i] = a + s * (x[i] - range_a);
    r += count;
  });
}

}  // namespace orv
