// SPDX-License-Identifier: MIT
// The Mersenne Twister (Matsumoto and Nishimura 1998) with 32-bit words, for any parameters:
//
//   struct Family {
//     static constexpr int32_t length, middle;   // N and M
//     static constexpr uint32_t lower;           // mask of the bits taken from the next word
//     static constexpr int temper_shift;         // the first shift of tempering
//     struct State { uint32_t mt[length], index; ... };
//     static TwisterConstants constants(const State& state);
//   };
//
// The table holds words before tempering. Formulas are written for one word and four lanes alike.
#pragma once

#include "../_service/scaling.hpp"
#include "shift_register.hpp"

namespace orv {
inline namespace ORV_TAG {

using Word4 = uint32_t __attribute__((vector_size(16)));

/// The twist's matrix A and the two masks of tempering.
struct TwisterConstants {
  uint32_t a, b, c;
};

template <class Family>
class Twister {
 public:
  using Unit = uint32_t;
  static constexpr int32_t length = Family::length;

  explicit Twister(const TwisterConstants& constants) : constants_(constants) {}

  /// The middle word lies in `from` at first, then in what has been made; the last word's successor
  /// is the first one made.
  void follow(uint32_t* to, const uint32_t* from, int32_t count) const {
    constexpr int32_t crossing = length - middle;
    twist_all(to, from, from + middle, count < crossing ? count : crossing);
    if (count <= crossing) return;
    twist_all(to + crossing, from + crossing, to, (count < length ? count : length - 1) - crossing);
    if (count < length) return;
    const uint32_t y = twist(from[length - 1], load<uint32_t>(to), load<uint32_t>(to + middle - 1));
    store(to + length - 1, y);
  }

  void extend(uint32_t* to, int32_t count) const {
    twist_all(to, to - length, to - length + middle, count);
  }

  uint32_t operator()(uint32_t word) const { return temper(word); }
  __m128i operator()(__m128i words) const {
    return reinterpret_cast<__m128i>(temper(reinterpret_cast<Word4>(words)));
  }

 private:
  static constexpr int32_t middle = Family::middle;

  template <class V>
  static V load(const uint32_t* p) {
    V v;
    memcpy(&v, p, sizeof v);
    return v;
  }
  template <class V>
  static void store(uint32_t* p, V v) {
    memcpy(p, &v, sizeof v);
  }

  template <class V>
  V twist(V word, V next, V middle_word) const {
    const V y = (word & ~Family::lower) | (next & Family::lower);
    return middle_word ^ (y >> 1) ^ (-(y & 1u) & constants_.a);
  }

  template <class V>
  V temper(V y) const {
    y ^= y >> Family::temper_shift;
    y ^= (y << 7) & constants_.b;
    y ^= (y << 15) & constants_.c;
    return y ^ (y >> 18);
  }

  /// The operands overlap the results where only earlier steps have made them.
  void twist_all(uint32_t* to, const uint32_t* from, const uint32_t* mid, int32_t count) const {
    const auto step = [&]<class V>(V) {
      store(to, twist(load<V>(from), load<V>(from + 1), load<V>(mid)));
      constexpr auto lanes = sizeof(V) / sizeof(uint32_t);
      to += lanes, from += lanes, mid += lanes;
    };
    for (int32_t fours = count / 4; fours > 0; --fours) step(Word4());
    for (int32_t rest = count % 4; rest > 0; --rest) step(uint32_t());
  }

  TwisterConstants constants_;
};

/// Seeding by an array of any length (Matsumoto and Nishimura 2002).
template <class Family>
void seed_twister(typename Family::State& state, const SeedWords& seeds) {
  constexpr int32_t length = Family::length;
  uint32_t* mt = state.mt;
  int32_t i = 1;
  const auto mixed = [&](uint32_t factor) {
    return mt[i] ^ ((mt[i - 1] ^ (mt[i - 1] >> 30)) * factor);
  };
  const auto next = [&] {
    if (++i < length) return;
    mt[0] = mt[length - 1];
    i = 1;
  };

  mt[0] = 19650218;
  for (; i < length; ++i) {
    mt[i] = 1812433253 * (mt[i - 1] ^ (mt[i - 1] >> 30)) + static_cast<uint32_t>(i);
  }
  i = 1;
  int32_t j = 0;
  for (int32_t k = length > seeds.count() ? length : seeds.count(); k > 0; --k) {
    mt[i] = mixed(1664525) + seeds[j] + static_cast<uint32_t>(j);
    next();
    if (++j == seeds.count()) j = 0;
  }
  for (int32_t k = length - 1; k > 0; --k) {
    mt[i] = mixed(1566083941) - static_cast<uint32_t>(i);
    next();
  }
  mt[0] = 0x80000000;
  state.index = length;
}

/// n tempered words to the output of the n elements at r, where they are made.
template <class Family, class T, class Out>
void draw_twister(StreamState* stream, int32_t n, T* r, const Out& out) {
  if (n < 1) return;
  uint32_t* const words = upper_half(r, n);
  auto& state = state_of<typename Family::State>(stream);
  const Twister<Family> twister(Family::constants(state));
  ShiftRegister<Twister<Family>> table(twister, state.mt, state.index);
  table.take(n, words);
  state.index = static_cast<uint32_t>(table.position());
  spread(n, words, out, twister);
}

template <class Family>
int32_t draw_words(StreamState* stream, int32_t n, uint32_t* r) {
  draw_twister<Family>(stream, n, r, Words(r));
  return RNG_OK;
}

template <class Family, class T>
int32_t draw_numbers(StreamState* stream, int32_t n, T* r, T a, T b) {
  draw_twister<Family>(stream, n, r, Scaled<T>(r, a, b, 0x1p-32));
  return RNG_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
