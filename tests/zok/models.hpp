// SPDX-License-Identifier: MIT
// The recurrences of all generators as they are defined, in plain integers.
#pragma once

#include <math.h>

#include <algorithm>
#include <array>
#include <functional>
#include <random>
#include <utility>

#include "stream_support.hpp"

namespace orv_test {

using Words = std::vector<uint32_t>;
using Sequence = std::function<Words()>;  // of elements

inline uint32_t seed_or(uint32_t otherwise, const Words& seeds, size_t k) {
  return k < seeds.size() ? seeds[k] : otherwise;
}

/// x(n + 1) = a x(n) mod m. A seed that is 0 counts as 1.
struct Congruence {
  Congruence(uint64_t factor, uint64_t modulus, uint64_t seed)
      : a(factor), m(modulus), x(seed % m == 0 ? 1 : seed % m) {}
  /// Products modulo 2^64 are right where m is a lower power of 2.
  uint64_t next() { return std::exchange(x, a * x % m); }
  uint64_t a, m, x;
};

inline Sequence mcg31m1(const Words& seeds) {
  return [x = Congruence(1132489760, 2147483647, seed_or(1, seeds, 0))]() mutable {
    return Words{static_cast<uint32_t>(x.next())};
  };
}

inline Sequence mcg59(const Words& seeds) {
  const uint64_t seed = seed_or(1, seeds, 0) | uint64_t{seed_or(0, seeds, 1)} << 32;
  return [x = Congruence(302875106592253, 1ull << 59, seed)]() mutable {
    const uint64_t element = x.next();
    return Words{static_cast<uint32_t>(element), static_cast<uint32_t>(element >> 32)};
  };
}

inline Sequence mrg32k3a(const Words& seeds) {
  static constexpr int64_t m1 = 4294967087, m2 = 4294944443;
  std::array<int64_t, 6> s;
  for (size_t k = 0; k < 6; ++k) s[k] = seed_or(1, seeds, k) % (k < 3 ? m1 : m2);
  if (s[0] + s[1] + s[2] == 0) s[0] = 1;
  if (s[3] + s[4] + s[5] == 0) s[3] = 1;
  return [s]() mutable {
    const int64_t x = ((1403580 * s[1] - 810728 * s[0]) % m1 + m1) % m1;
    const int64_t y = ((527612 * s[5] - 1370589 * s[3]) % m2 + m2) % m2;
    s = {s[1], s[2], x, s[4], s[5], y};
    return Words{static_cast<uint32_t>((x - y + m1) % m1)};
  };
}

inline Sequence r250(const Words& seeds) {
  Words w(250);
  if (seeds.size() >= 250) {
    std::copy_n(seeds.begin(), 250, w.begin());
  } else {
    uint32_t v = std::max(seed_or(1, seeds, 0), 1u);
    for (uint32_t& word : w) word = v *= 69069;
    for (uint32_t k = 0; k < 32; ++k) {
      w[3 + 7 * k] &= static_cast<uint32_t>((1ull << (32 - k)) - 1);
      w[3 + 7 * k] |= 1u << (31 - k);
    }
  }
  return [w]() mutable {
    w.push_back(w[w.size() - 250] ^ w[w.size() - 147]);
    return Words{w.back()};
  };
}

inline auto wh(int32_t offset) {
  return [=](const Words& seeds) -> Sequence {
    std::vector<Congruence> x;
    for (size_t k = 0; k < 4; ++k) {
      x.emplace_back(_zok_WH_A[offset][k], _zok_WH_M[offset][k], seed_or(1, seeds, k));
    }
    return [x]() mutable {
      Words element;
      for (Congruence& component : x) element.push_back(static_cast<uint32_t>(component.next()));
      return element;
    };
  };
}

inline Words seeded_twister(uint32_t length, Words seeds) {
  if (seeds.empty()) seeds = {1};
  const auto key_length = static_cast<uint32_t>(seeds.size());
  Words mt(length, 19650218);
  const auto mixed = [&](uint32_t i) { return mt[i - 1] ^ mt[i - 1] >> 30; };
  for (uint32_t i = 1; i < length; ++i) mt[i] = 1812433253 * mixed(i) + i;
  // Step k of the two rounds works on word 1 + k mod (N - 1); word 0 follows the last one.
  const uint32_t first = std::max(length, key_length);
  for (uint32_t k = 0; k < first + length - 1; ++k) {
    const uint32_t i = 1 + k % (length - 1);
    const uint32_t j = k % key_length;
    mt[i] = k < first ? (mt[i] ^ mixed(i) * 1664525) + seeds[j] + j
                      : (mt[i] ^ mixed(i) * 1566083941) - i;
    if (i == length - 1) mt[0] = mt[i];
  }
  mt[0] = 0x80000000;
  return mt;
}

/// A state as the standard library's twisters take it.
struct SeededState {
  using result_type = uint32_t;
  void generate(auto to, auto) { std::ranges::copy(words, to); }
  Words words;
};

template <uint32_t length, uint32_t middle, int lower, uint32_t a, int shift, uint32_t b,
          uint32_t c>
Sequence twister(const Words& seeds) {
  SeededState state = {seeded_twister(length, seeds)};
  using Engine = std::mersenne_twister_engine<uint32_t, 32, length, middle, lower, a, shift, ~0u, 7,
                                              b, 15, c, 18, 1>;
  return [engine = Engine(state)]() mutable { return Words{engine()}; };
}
template <uint32_t a, uint32_t b, uint32_t c>
constexpr auto mt2203 = twister<69, 34, 5, a, 12, b, c>;

inline Words seeded_sfmt19937(Words key) {
  constexpr uint32_t length = 624;
  if (key.empty()) key = {1};
  const auto key_length = static_cast<uint32_t>(key.size());
  Words t(length, 0x8B8B8B8B);
  // One step: factor and operation of the first mixing (^ then +) or of the second (+ then ^).
  const auto step = [&](uint32_t i, bool first, uint32_t more) {
    uint32_t &here = t[i % length], &middle = t[(i + 306) % length];
    uint32_t& beyond = t[(i + 317) % length];
    const uint32_t before = t[(i + 623) % length];
    const uint32_t mixed = first ? here ^ middle ^ before : here + middle + before;
    uint32_t r = (mixed ^ mixed >> 27) * (first ? 1664525 : 1566083941);
    middle = first ? middle + r : middle ^ r;
    r += more;
    beyond = first ? beyond + r : beyond ^ r;
    here = r;
  };
  step(0, true, key_length);
  uint32_t i = 1;
  for (; i < std::max(key_length + 1, length); ++i) {
    step(i, true, i % length + (i <= key_length ? key[i - 1] : 0));
  }
  for (uint32_t k = 0; k < length; ++k, ++i) step(i, false, -(i % length));
  const bool odd = __builtin_parity((t[0] & 1) ^ (t[3] & 0x13C9E684)) != 0;
  if (!odd) t[0] ^= 1;
  return t;
}

inline Sequence sfmt19937(const Words& seeds) {
  return [x = seeded_sfmt19937(seeds)]() mutable {
    constexpr uint32_t mask[] = {0xDFFFFFEF, 0xDDFECB7F, 0xBFFAFFFF, 0xBFFFFFF6};
    const uint32_t *oldest = &x[x.size() - 624], *end = &x[x.size()];
    Words block;
    for (int k = 0; k < 4; ++k) {  // blocks as one number, moved by 8 bits
      const uint32_t left = oldest[k] << 8 | (k > 0 ? oldest[k - 1] >> 24 : 0);
      const uint32_t right = end[k - 8] >> 8 | (k < 3 ? end[k - 7] << 24 : 0);
      block.push_back(oldest[k] ^ left ^ (oldest[4 * 122 + k] >> 11 & mask[k]) ^ right ^
                      end[k - 4] << 18);
    }
    x.insert(x.end(), block.begin(), block.end());
    return block;
  };
}

/// Numbers on [a, b), doubles or, before they are rounded, floats.
using Scaling = std::function<double(const Words& w, double a, double b, bool single)>;

inline double scale(double w, double a, double b, double c) { return a + w * ((b - a) * c); }

inline Scaling times(double c) {
  return [c](const Words& w, double a, double b, bool) { return scale(w[0], a, b, c); };
}

inline double mcg59_number(const Words& w, double a, double b, bool single) {
  constexpr double c = 1.734723475976807e-18;
  if (single) return scale(w[0] + w[1] * 4294967296.0, a, b, c);
  return w[0] * ((b - a) * c) + w[1] * 4294967296.0 * ((b - a) * c) + a;
}

inline Scaling wh_number(int32_t offset) {
  return [=](const Words& w, double a, double b, bool) {
    double sum = 0;
    for (int k = 0; k < 4; ++k) sum += w[k] * (1.0 / _zok_WH_M[offset][k]);
    return scale(sum - floor(sum), a, b, 1);
  };
}

/// Centred; a float's arithmetic is in single precision.
inline double sfmt19937_number(const Words& w, double a, double b, bool single) {
  const double m = (a + b) / 2, s = (b - a) * 0x1p-32;
  const auto word = static_cast<int32_t>(w[0]);
  return single ? static_cast<float>(m) + static_cast<float>(s) * static_cast<float>(word)
                : m + s * word;
}

struct Model {
  Sequence next;
  Scaling scaling;
  bool by_words;  // words of an element that numbers leave over serve the next numbers
  Words spare = {};

  double number(double a, double b, bool single) {
    if (spare.empty()) spare = next();
    const Words taken(spare.begin(), by_words ? spare.begin() + 1 : spare.end());
    spare.erase(spare.begin(), spare.begin() + taken.size());
    return scaling(taken, a, b, single);
  }
};

struct Case {
  int32_t brng;
  bool leapfrogs, skips;
  std::function<Sequence(const Words&)> sequence;
  Scaling scaling;

  Model model(const Words& seeds) const {
    return {sequence(seeds), scaling, brng == BRNG_SFMT19937};
  }
};

const Scaling all_bits = times(2.3283064365386963e-10);
const Case cases[] = {
    {BRNG_MCG31M1, true, true, mcg31m1, times(4.656612875245797e-10)},
    {BRNG_MCG59, true, true, mcg59, mcg59_number},
    {BRNG_MRG32K3A, false, true, mrg32k3a, times(2.328306549837829e-10)},
    {BRNG_R250, false, false, r250, all_bits},
    {BRNG_WH, true, true, wh(0), wh_number(0)},
    {BRNG_WH + 272, true, true, wh(272), wh_number(272)},
    {5, true, true, wh(1), wh_number(1)},
    {BRNG_MT19937, false, false, twister<624, 397, 31, 0x9908B0DF, 11, 0x9D2C5680, 0xEFC60000>,
     all_bits},
    {BRNG_MT2203, false, false, mt2203<0xAF81055F, 0xDD7EEF80, 0xEFD78000>, all_bits},
    {BRNG_MT2203 + 1, false, false, mt2203<0x832604E1, 0x66AD7F80, 0xEBD58000>, all_bits},
    {BRNG_MT2203 + 1023, false, false, mt2203<0xE1B6093F, 0x9D326E80, 0xEFD58000>, all_bits},
    {BRNG_SFMT19937, false, false, sfmt19937, sfmt19937_number},
};

}  // namespace orv_test
