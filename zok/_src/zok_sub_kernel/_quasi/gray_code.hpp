// SPDX-License-Identifier: MIT
// Digital sequences in base 2 in the order of the Gray code: a point follows from the one before it
// by one direction number in each dimension, and point c is the sum, without carries, of those that
// the bits of c XOR c / 2 name (I. Antonov and V. Saleev, 1979).
#pragma once

#include <string.h>

#include "../_service/scaling.hpp"
#include "../_service/stream_state.hpp"

namespace orv {
inline namespace ORV_TAG {

constexpr int fraction_bits = 32;
constexpr uint32_t last_count = 0xFFFFFFFF;

/// How far a stream has come; the first words of its state.
struct Progress {
  uint32_t Count;       // the number of the current point, from 1
  uint32_t Dim;         // of the points
  int32_t SelectedDim;  // the one coordinate that is delivered, or -1 for all
  uint32_t Pos;         // coordinates of the current point still to be delivered; 0 for all
};

constexpr Progress at_first_point(uint32_t dim) { return {1, dim, -1, 0}; }

/// Whether a state can be gone on from: one from a damaged file may be anything.
inline bool is_sound(const Progress& p) {
  return p.Dim > 0 && p.Pos < p.Dim &&
         (p.SelectedDim == -1 || static_cast<uint32_t>(p.SelectedDim) < p.Dim);
}

inline int lowest_zero_bit(uint32_t word) {
  return word == last_count ? fraction_bits : __builtin_ctz(~word);
}
inline uint32_t gray(uint32_t c) { return c ^ c >> 1; }

/// A stream's points, wherever its tables lie.
struct Sequence {
  Progress* at;
  int32_t dim;
  uint32_t* x;            // the current point
  uint32_t* v;            // direction numbers, entry j of a row for bit j
  size_t row;             // words from one dimension's row to the next one's
  uint32_t* transposed;   // rows of all dimensions' numbers, one for each bit that is below
  size_t transposed_row;  // `transposed_bits`; their words
  int transposed_bits;

  /// The numbers of one bit, `step` words apart.
  struct Column {
    uint32_t operator[](int32_t d) const { return first[static_cast<size_t>(d) * step]; }

    const uint32_t* first;
    size_t step;
  };
  Column column(int bit) const {
    if (bit >= transposed_bits) return {v + bit, row};
    return {transposed + static_cast<size_t>(bit) * transposed_row, 1};
  }

  Sequence coordinate(int32_t d) const {
    return {at, 1, x + d, v + static_cast<size_t>(d) * row, row, nullptr, 0, 0};
  }

  /// Adds one bit's numbers to the current point.
  void add(int bit) {
    const Column numbers = column(bit);
    for (int32_t d = 0; d < dim; ++d) x[d] ^= numbers[d];
  }

  void step() { add(lowest_zero_bit(at->Count++)); }

  /// Makes a point out of another one, and leaves the count alone.
  void move(uint32_t from, uint32_t to) {
    for (uint32_t bits = gray(from) ^ gray(to); bits != 0; bits &= bits - 1) {
      add(__builtin_ctz(bits));
    }
  }
};

// ---- Drawing ------------------------------------------------------------------------------------

inline __m128i load_words(const uint32_t* p) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

/// Sends n words to the elements from i on.
template <class Out>
void put(const uint32_t* words, int32_t n, int32_t i, const Out& out) {
  int32_t k = 0;
  for (; k <= n - 4; k += 4) out.four(i + k, load_words(words + k));
  for (; k < n; ++k) out.one(i + k, words[k]);
}

/// A request of n elements, of which i are there.
struct Request {
  int32_t i, n;
};

template <class Out>
void draw_singly(Sequence& s, int32_t points, Request& request, const Out& out) {
  for (; points > 0; --points, request.i += s.dim) {
    put(s.x, s.dim, request.i, out);
    s.step();
  }
}

/// Rounds of four rows, each of 2^k points one after another, so that points of few dimensions fill
/// whole vectors. All points of a row go to those of the next by the same numbers.
template <class Out>
class Rounds {
 public:
  static constexpr int32_t most_dims = 512;
  static constexpr int rows_log2 = 2;

  /// Few dimensions make rows of whole vectors; of many, vectors reach beyond a row, and what they
  /// write there is overwritten.
  static int row_log2(int32_t dim) {
    constexpr int32_t least_words = 8, many = 16;
    int k = 0;
    while (dim << k < least_words || (dim < many && (dim << k) % lanes != 0)) ++k;
    return k;
  }

  /// The stream stands at the first point of a round: its number is a multiple of 2^(k + 2).
  Rounds(const Sequence& s, int k)
      : s_(s),
        k_(k),
        width_(s.dim << k),
        padded_((width_ + lanes - 1) & -lanes),
        slots_(room / padded_) {
    if (slots_ > fraction_bits) slots_ = fraction_bits;
    memset(held_, -1, sizeof held_);
    for (int32_t d = 0; d < s.dim; ++d) row_[d] = Out::base | Out::place(s.x[d]);
    for (int32_t i = width_; i < padded_; ++i) row_[i] = Out::base;
    for (uint32_t point = 1; point < 1u << k; ++point) {
      Place* const next = row_ + static_cast<int32_t>(point) * s.dim;
      const auto step = s.column(lowest_zero_bit(point - 1));
      for (int32_t d = 0; d < s.dim; ++d) next[d] = next[d - s.dim] ^ Out::place(step[d]);
    }
  }

  /// As many rounds as the points hold and as leave room for vectors that reach beyond. Returns the
  /// number of points.
  int32_t draw(int32_t points, Request& request, const Out& out) {
    const int32_t size = 1 << (k_ + rows_log2);
    const Place *const low = numbers(0), *const middle = numbers(1);
    const uint32_t first = s_.at->Count;
    int32_t done = 0;
    for (; points - done >= size && request.n - request.i >= 3 * width_ + padded_; done += size) {
      const uint32_t round = s_.at->Count >> (k_ + rows_log2);
      put_round(low, middle, numbers(lowest_zero_bit(round) + rows_log2), request.i, out);
      request.i += 4 * width_;
      s_.at->Count += static_cast<uint32_t>(size);
    }
    s_.move(first, s_.at->Count);
    return done;
  }

 private:
  using Place = typename Out::Place;
  static constexpr int32_t room = 2048, lanes = int{32 / sizeof(Place)};

  static __m256i load(const Place* p) {
    return _mm256_load_si256(reinterpret_cast<const __m256i*>(p));
  }
  static __m256i add(__m256i x, __m256i y) {
    return _mm256_castps_si256(_mm256_xor_ps(_mm256_castsi256_ps(x), _mm256_castsi256_ps(y)));
  }

  /// From right to left, so that what reaches into the next row comes before it. The output is a
  /// copy, which no store can change.
  void put_round(const Place* low, const Place* middle, const Place* high, int32_t first, Out out) {
    const int32_t second = first + width_, third = second + width_, fourth = third + width_;
    for (int32_t w = padded_ - lanes; w >= 0; w -= lanes) {
      const __m256i x = load(row_ + w), x0 = add(x, load(low + w)), step = load(middle + w);
      const __m256i x1 = add(x, step);
      out.vector(first + w, x);
      out.vector(second + w, x0);
      out.vector(third + w, add(x0, step));
      out.vector(fourth + w, x1);
      _mm256_store_si256(reinterpret_cast<__m256i*>(row_ + w), add(x1, load(high + w)));
    }
  }

  /// What goes from a row to the next. The numbers are brought together when a bit first needs
  /// them, and kept; the high bits, which are rare, share a place.
  const Place* numbers(int bit) {
    const int slot = bit < slots_ ? bit : slots_ - 1;
    Place* const place = steps_ + slot * padded_;
    if (held_[slot] != bit) {
      held_[slot] = static_cast<int8_t>(bit);
      gather(bit, place);
    }
    return place;
  }

  /// The Gray code of a row's number steps by one bit; its lowest goes to bit k - 1 as well.
  void gather(int bit, Place* place) const {
    const auto high = s_.column(k_ + bit);
    for (int32_t d = 0; d < s_.dim; ++d) place[d] = Out::place(high[d]);
    if (k_ > 0) {
      const auto low = s_.column(k_ - 1);
      for (int32_t d = 0; d < s_.dim; ++d) place[d] ^= Out::place(low[d]);
    }
    for (int32_t i = s_.dim; i < width_; ++i) place[i] = place[i - s_.dim];
    for (int32_t i = width_; i < padded_; ++i) place[i] = 0;
  }

  Sequence s_;
  int k_;
  int32_t width_, padded_, slots_;
  int8_t held_[fraction_bits];  // the bit whose numbers lie in a place
  alignas(32) Place row_[most_dims];
  alignas(32) Place steps_[room];
};

template <class Out>
void draw_points(Sequence& s, int32_t points, Request& request, const Out& out) {
  constexpr int32_t least_rounds = 3;
  const int k = Rounds<Out>::row_log2(s.dim), round = k + Rounds<Out>::rows_log2;
  if (s.dim <= Rounds<Out>::most_dims && points >> round >= least_rounds) {
    const auto open = static_cast<int32_t>(-s.at->Count & ((1u << round) - 1));
    draw_singly(s, open, request, out);
    points -= open;
    points -= Rounds<Out>(s, k).draw(points, request, out);
  }
  draw_singly(s, points, request, out);
}

template <class Out>
void draw_all(Sequence& s, int32_t n, const Out& out) {
  Request request = {0, n};
  uint32_t& left = s.at->Pos;
  if (left > 0) {
    const int32_t count = n < static_cast<int32_t>(left) ? n : static_cast<int32_t>(left);
    put(s.x + s.dim - left, count, 0, out);
    request.i = count;
    left -= static_cast<uint32_t>(count);
    if (left > 0) return;
    s.step();
  }
  draw_points(s, (n - request.i) / s.dim, request, out);
  const int32_t begun = n - request.i;
  put(s.x, begun, request.i, out);
  if (begun > 0) left = static_cast<uint32_t>(s.dim - begun);
}

}  // namespace ORV_TAG
}  // namespace orv
