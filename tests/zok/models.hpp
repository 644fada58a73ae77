// The recurrences of all generators as they are defined, in plain integers.
#pragma once

#include <math.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>

#include "stream_support.hpp"

namespace orv_test {

using Words = std::vector<uint32_t>;

/// The elements of a stream one after the other, as words or as numbers in [a, b).
struct Model {
  virtual ~Model() = default;
  virtual Words next() = 0;
  virtual double number(double a, double b) = 0;
  /// Before it is rounded to float.
  virtual double number_for_float(double a, double b) { return number(a, b); }
};

inline double scale(double w, double a, double b, double c) {
  const volatile double s = (b - a) * c;
  const volatile double product = w * s;
  return a + product;
}

/// Generators whose elements are single words, and whose numbers are these times a factor.
struct WordModel : Model {
  explicit WordModel(double c) : factor(c) {}
  double number(double a, double b) override { return scale(next()[0], a, b, factor); }
  double factor;
};

struct MCG31M1 : WordModel {
  explicit MCG31M1(const Words& seeds)
      : WordModel(4.656612875245797e-10), x(seeds.empty() ? 1 : seeds[0] % 2147483647) {
    if (x == 0) x = 1;
  }
  Words next() override {
    const Words element = {static_cast<uint32_t>(x)};
    x = 1132489760 * x % 2147483647;
    return element;
  }
  uint64_t x;
};

struct MCG59 : Model {
  explicit MCG59(const Words& seeds) : x(seeds.empty() ? 1 : seeds[0]) {
    if (seeds.size() > 1) x += uint64_t{seeds[1] % (1u << 27)} << 32;
    if (x == 0) x = 1;
  }
  Words next() override {
    const Words element = {static_cast<uint32_t>(x), static_cast<uint32_t>(x >> 32)};
    x = times(302875106592253, x);
    return element;
  }
  /// By shifts and additions; 32-bit programs have no wider product.
  static uint64_t times(uint64_t a, uint64_t x) {
    uint64_t sum = 0;
    for (; a != 0; a >>= 1, x = 2 * x % modulus) {
      if (a % 2 != 0) sum = (sum + x) % modulus;
    }
    return sum;
  }
  double number(double a, double b) override {
    const Words w = next();
    const volatile double s = (b - a) * 1.734723475976807e-18;
    const volatile double low = w[0] * s, high = w[1] * 4294967296.0 * s;
    const volatile double sum = low + high;
    return sum + a;
  }
  double number_for_float(double a, double b) override {
    const Words w = next();
    const volatile double sum = w[0] + w[1] * 4294967296.0;
    return scale(sum, a, b, 1.734723475976807e-18);
  }
  static constexpr uint64_t modulus = 1ull << 59;
  uint64_t x;
};

struct MRG32K3A : WordModel {
  explicit MRG32K3A(const Words& seeds) : WordModel(2.328306549837829e-10) {
    for (size_t k = 0; k < 6; ++k) s[k] = (k < seeds.size() ? seeds[k] : 1) % (k < 3 ? m1 : m2);
    if (s[0] + s[1] + s[2] == 0) s[0] = 1;
    if (s[3] + s[4] + s[5] == 0) s[3] = 1;
  }
  Words next() override {
    const int64_t x = ((1403580 * s[1] - 810728 * s[0]) % m1 + m1) % m1;
    const int64_t y = ((527612 * s[5] - 1370589 * s[3]) % m2 + m2) % m2;
    s[0] = s[1], s[1] = s[2], s[2] = x;
    s[3] = s[4], s[4] = s[5], s[5] = y;
    return {static_cast<uint32_t>((x - y + m1) % m1)};
  }
  static constexpr int64_t m1 = 4294967087, m2 = 4294944443;
  int64_t s[6];
};

struct R250 : WordModel {
  explicit R250(const Words& seeds) : WordModel(2.3283064365386963e-10), w(seeds) {
    if (w.size() >= 250) {
      w.resize(250);
      return;
    }
    uint32_t v = seeds.empty() || seeds[0] == 0 ? 1 : seeds[0];
    w.clear();
    for (int i = 0; i < 250; ++i) w.push_back(v *= 69069);
    for (uint32_t k = 0; k < 32; ++k) {
      w[3 + 7 * k] &= static_cast<uint32_t>((1ull << (32 - k)) - 1);
      w[3 + 7 * k] |= 1u << (31 - k);
    }
  }
  Words next() override {
    w.push_back(w[w.size() - 250] ^ w[w.size() - 147]);
    return {w.back()};
  }
  Words w;
};

struct WH : Model {
  explicit WH(const Words& seeds, int32_t generator) : offset(generator) {
    for (size_t k = 0; k < 4; ++k) {
      x[k] = (k < seeds.size() ? seeds[k] : 1) % _zok_WH_M[offset][k];
      if (x[k] == 0) x[k] = 1;
    }
  }
  Words next() override {
    const Words element(x, x + 4);
    for (int k = 0; k < 4; ++k) x[k] = x[k] * _zok_WH_A[offset][k] % _zok_WH_M[offset][k];
    return element;
  }
  double number(double a, double b) override {
    const Words w = next();
    volatile double sum = 0;
    for (int k = 0; k < 4; ++k) {
      const volatile double term = w[k] * (1.0 / _zok_WH_M[offset][k]);
      sum = k == 0 ? term : sum + term;
    }
    const volatile double u = sum - floor(sum);
    const volatile double product = u * (b - a);
    return product + a;
  }
  int32_t offset;
  uint32_t x[4];
};

struct TwisterParameters {
  uint32_t length, middle;
  int lower_bits, first_shift;
  uint32_t a, b, c;
};

struct Twister : WordModel {
  Twister(const Words& seeds, const TwisterParameters& parameters)
      : WordModel(0x1p-32), p(parameters), mt(seeded_table(p.length, seeds)) {}
  Words next() override {
    const uint32_t lower = (1u << p.lower_bits) - 1;
    const auto oldest = mt.end() - p.length;
    uint32_t y = (oldest[0] & ~lower) | (oldest[1] & lower);
    mt.push_back(oldest[p.middle] ^ y >> 1 ^ (y % 2 == 1 ? p.a : 0));
    y = mt.back();
    y ^= y >> p.first_shift;
    y ^= y << 7 & p.b;
    y ^= y << 15 & p.c;
    return {y ^ y >> 18};
  }

  static Words seeded_table(uint32_t length, Words seeds) {
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

  TwisterParameters p;
  Words mt;
};

struct SFMT19937 : Model {
  explicit SFMT19937(const Words& seeds) : x(seeded_table(seeds)) {}
  Words next() override {
    constexpr uint32_t mask[] = {0xDFFFFFEF, 0xDDFECB7F, 0xBFFAFFFF, 0xBFFFFFF6};
    const uint32_t *oldest = &x[x.size() - length], *end = &x[x.size()];
    Words block;
    for (int k = 0; k < 4; ++k) {  // blocks as one number, moved by 8 bits
      const uint32_t left = oldest[k] << 8 | (k > 0 ? oldest[k - 1] >> 24 : 0);
      const uint32_t right = end[k - 8] >> 8 | (k < 3 ? end[k - 7] << 24 : 0);
      block.push_back(oldest[k] ^ left ^ (oldest[4 * 122 + k] >> 11 & mask[k]) ^ right ^
                      end[k - 4] << 18);
    }
    x.insert(x.end(), block.begin(), block.end());
    return block;
  }
  double number(double a, double b) override { return centred(a, b); }
  double number_for_float(double a, double b) override {
    return centred(static_cast<float>(a), static_cast<float>(b));
  }
  /// Words of a block that numbers leave over serve the next numbers.
  template <class T>
  T centred(T a, T b) {
    if (spare.empty()) {
      const Words block = next();
      spare.assign(block.begin(), block.end());
    }
    const auto m = static_cast<T>((static_cast<double>(a) + b) / 2);
    const auto s = static_cast<T>((static_cast<double>(b) - a) * 0x1p-32);
    const volatile T product = s * static_cast<T>(static_cast<int32_t>(spare.front()));
    spare.pop_front();
    return m + product;
  }

  static Words seeded_table(Words key) {
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
    const uint32_t x = (t[0] & 1) ^ (t[3] & 0x13C9E684);
    uint32_t bit = 0;
    for (int k = 0; k < 32; ++k) bit ^= x >> k & 1;
    if (bit == 0) t[0] ^= 1;
    return t;
  }

  static constexpr uint32_t length = 624;
  Words x;
  std::deque<uint32_t> spare;
};

// ---- The generators under test -----------------------------------------------------------------

struct Case {
  const char* name;
  int32_t brng;
  bool leapfrogs, skips;
  std::function<std::unique_ptr<Model>(const Words&)> model;
};

template <class M, class... More>
auto make(More... more) {
  return [=](const Words& seeds) -> std::unique_ptr<Model> {
    return std::make_unique<M>(seeds, more...);
  };
}

inline const std::vector<Case>& cases() {
  const auto mt2203 = [](uint32_t a, uint32_t b, uint32_t c) {
    return make<Twister>(TwisterParameters{69, 34, 5, 12, a, b, c});
  };
  static const std::vector<Case> all = {
      {"MCG31M1", BRNG_MCG31M1, true, true, make<MCG31M1>()},
      {"MCG59", BRNG_MCG59, true, true, make<MCG59>()},
      {"MRG32K3A", BRNG_MRG32K3A, false, true, make<MRG32K3A>()},
      {"R250", BRNG_R250, false, false, make<R250>()},
      {"WH 0", BRNG_WH, true, true, make<WH>(0)},
      {"WH 272", BRNG_WH + 272, true, true, make<WH>(272)},
      {"WH 1, low identifier", 5, true, true, make<WH>(1)},
      {"MT19937", BRNG_MT19937, false, false,
       make<Twister>(TwisterParameters{624, 397, 31, 11, 0x9908B0DF, 0x9D2C5680, 0xEFC60000})},
      {"MT2203 0", BRNG_MT2203, false, false, mt2203(0xAF81055F, 0xDD7EEF80, 0xEFD78000)},
      {"MT2203 1", BRNG_MT2203 + 1, false, false, mt2203(0x832604E1, 0x66AD7F80, 0xEBD58000)},
      {"MT2203 2", BRNG_MT2203 + 2, false, false, mt2203(0x92F70739, 0x656D7780, 0xEFC50000)},
      {"MT2203 1023", BRNG_MT2203 + 1023, false, false, mt2203(0xE1B6093F, 0x9D326E80, 0xEFD58000)},
      {"SFMT19937", BRNG_SFMT19937, false, false, make<SFMT19937>()},
  };
  return all;
}

}  // namespace orv_test
