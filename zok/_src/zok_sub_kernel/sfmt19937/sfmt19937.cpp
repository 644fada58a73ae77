// SPDX-License-Identifier: MIT
// SFMT19937: the SIMD-oriented Fast Mersenne Twister of period 2^19937 - 1 (Saito and Matsumoto
// 2008). Its unit is a block of 128 bits, which is one element of the integer flavour; the others
// take 32-bit words, and keep what is left of a block for the next of their requests.
#include "../_service/scaling.hpp"
#include "../_twister/shift_register.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr int32_t block_words = 4;

struct Block {
  uint32_t word[block_words];
};

__m128i load(const Block* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
void store(Block* p, __m128i x) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), x); }

struct Recurrence {
  using Unit = Block;
  static constexpr int32_t length = 156, middle = 122;

  /// The middle block lies in `from` at first, then in what has been made.
  void follow(Block* to, const Block* from, int32_t count) const {
    constexpr int32_t crossing = length - middle;
    Last last = {load(from + length - 2), load(from + length - 1)};
    const int32_t first = count < crossing ? count : crossing;
    run(to, from, from + middle, first, &last);
    run(to + crossing, from + crossing, to, count - crossing, &last);
  }

  void extend(Block* to, int32_t count) const {
    Last last = {load(to - 2), load(to - 1)};
    run(to, to - length, to - length + middle, count, &last);
  }

 private:
  /// The two newest blocks.
  struct Last {
    __m128i c, d;
  };

  static void run(Block* to, const Block* from, const Block* mid, int32_t count, Last* last) {
    const __m128i mask = _mm_set_epi32(static_cast<int>(0xBFFFFFF6), static_cast<int>(0xBFFAFFFF),
                                       static_cast<int>(0xDDFECB7F), static_cast<int>(0xDFFFFFEF));
    __m128i c = last->c, d = last->d;
    for (int32_t i = 0; i < count; ++i) {
      const __m128i a = load(from + i);
      __m128i rest = a ^ _mm_slli_si128(a, 1) ^ (_mm_srli_epi32(load(mid + i), 11) & mask) ^
                     _mm_srli_si128(c, 1);
      // The newest block is to come in last, or the chain from block to block grows longer.
      asm("" : "+x"(rest));
      const __m128i x = rest ^ _mm_slli_epi32(d, 18);
      store(to + i, x);
      c = d;
      d = x;
    }
    *last = {c, d};
  }
};

constexpr int32_t table_words = Recurrence::length * block_words;

struct State {
  Block sfmt[Recurrence::length];
  uint32_t index;  // in words, always at the start of a block
  uint32_t spare[block_words - 1], spare_pos, spare_count;
};

using Register = ShiftRegister<Recurrence>;

// ---- Seeding -----------------------------------------------------------------------------------

/// Seeding by an array of any length, and the repair of the period.
class Seeding {
 public:
  explicit Seeding(State& state) : t_(state.sfmt[0].word) {}

  void run(const SeedWords& key) {
    constexpr uint32_t background = 0x8B8B8B8B;
    for (int32_t i = 0; i < table_words; ++i) t_[i] = background;
    int32_t count = key.count() + 1 > table_words ? key.count() + 1 : table_words;
    stir_in(static_cast<uint32_t>(key.count()));
    --count;
    for (int32_t j = 0; j < count; ++j) {
      stir_in(static_cast<uint32_t>(i_) + (j < key.count() ? key[j] : 0));
    }
    for (int32_t j = 0; j < table_words; ++j) stir_out();
    repair_period();
  }

 private:
  static constexpr int32_t middle = 306, lag = 11;

  uint32_t& at(int32_t distance) { return t_[(i_ + distance) % table_words]; }

  static uint32_t mix(uint32_t x, uint32_t factor) { return (x ^ (x >> 27)) * factor; }

  void stir_in(uint32_t more) {
    uint32_t r = mix(at(0) ^ at(middle) ^ at(table_words - 1), 1664525);
    at(middle) += r;
    r += more;
    at(middle + lag) += r;
    at(0) = r;
    i_ = (i_ + 1) % table_words;
  }

  void stir_out() {
    uint32_t r = mix(at(0) + at(middle) + at(table_words - 1), 1566083941);
    at(middle) ^= r;
    r -= static_cast<uint32_t>(i_);
    at(middle + lag) ^= r;
    at(0) = r;
    i_ = (i_ + 1) % table_words;
  }

  /// A table of even parity under the mask may lie on a shorter cycle; the mask's lowest bit, bit 0
  /// of word 0, makes it odd.
  void repair_period() {
    constexpr uint32_t parity[block_words] = {1, 0, 0, 0x13C9E684};
    uint32_t x = 0;
    for (int32_t k = 0; k < block_words; ++k) x ^= t_[k] & parity[k];
    if (__builtin_parity(x) == 0) t_[0] ^= 1;
  }

  uint32_t* t_;
  int32_t i_ = 0;
};

// ---- Floating-point output ---------------------------------------------------------------------

/// m + s w with w as a signed word and m the middle of [a, b), in the precision of the output:
/// unlike all other generators' floats, these are computed in single precision.
template <class T>
class Centred {
 public:
  Centred(T* r, T a, T b)
      : r_(r),
        m_(static_cast<T>((static_cast<double>(a) + static_cast<double>(b)) * 0.5)),
        s_(static_cast<T>((static_cast<double>(b) - static_cast<double>(a)) * 0x1p-32)) {}

  void four(int32_t i, __m128i words) const { store_four(r_ + i, words); }

  void one(int32_t i, uint32_t word) const {
    const T x = m_ + static_cast<T>(static_cast<int32_t>(word)) * s_;
    memcpy(r_ + i, &x, sizeof x);
  }

 private:
  void store_four(double* r, __m128i words) const {
    _mm256_storeu_pd(r, _mm256_set1_pd(m_) + _mm256_cvtepi32_pd(words) * _mm256_set1_pd(s_));
  }
  void store_four(float* r, __m128i words) const {
    _mm_storeu_ps(r, _mm_set1_ps(m_) + _mm_cvtepi32_ps(words) * _mm_set1_ps(s_));
  }

  T* r_;
  T m_, s_;
};

/// Spare words while there are any, at most n. Returns how many.
template <class Out>
int32_t draw_spare(State& state, int32_t n, const Out& out) {
  constexpr uint32_t most = block_words - 1;
  const uint32_t count = state.spare_count < most ? state.spare_count : most;
  int32_t taken = 0;
  while (taken < n && state.spare_pos < count) out.one(taken++, state.spare[state.spare_pos++]);
  return taken;
}

/// Words from blocks, n of them. What they leave of the last block becomes the spare words.
template <class T>
void draw_blocks(State& state, int32_t n, T* r, const Centred<T>& out) {
  const int32_t blocks = n / block_words, whole = blocks * block_words, rest = n - whole;
  uint32_t* words = upper_half(r, n);
  auto* array = reinterpret_cast<Block*>(words);
  Block last;
  Register table({}, state.sfmt, state.index / block_words);
  if (rest == 0) {
    table.take(blocks, array);
  } else {
    table.take_and_one(blocks, array, &last);
  }
  state.index = static_cast<uint32_t>(table.position() * block_words);
  spread(whole, words, out, [](auto word) { return word; });
  if (rest == 0) return;
  for (int32_t k = 0; k < rest; ++k) out.one(whole + k, last.word[k]);
  for (int32_t k = rest; k < block_words; ++k) state.spare[k - rest] = last.word[k];
  state.spare_pos = 0;
  state.spare_count = static_cast<uint32_t>(block_words - rest);
}

template <class T>
int32_t draw_numbers(StreamState* stream, int32_t n, T* r, T a, T b) {
  auto& state = state_of<State>(stream);
  const int32_t spare = draw_spare(state, n, Centred<T>(r, a, b));
  if (spare < n) draw_blocks(state, n - spare, r + spare, Centred<T>(r + spare, a, b));
  return RNG_OK;
}

}  // namespace
}  // namespace ORV_TAG
}  // namespace orv

int32_t __zokBRngSFMT19937InitStream(int32_t method, StreamState* stream, int32_t n,
                                     const uint32_t* params) {
  if (method != orv::seed_stream) return orv::refuse_method(method);
  auto& state = orv::state_of<orv::State>(stream);
  orv::Seeding(state).run(orv::SeedWords(n, params));
  state.index = orv::table_words;
  memset(state.spare, 0, sizeof state.spare);
  state.spare_pos = state.spare_count = 0;
  return RNG_OK;
}

int32_t __zoksBRngSFMT19937(StreamState* stream, int32_t n, float* r, float a, float b) {
  return orv::draw_numbers(stream, n, r, a, b);
}

int32_t __zokdBRngSFMT19937(StreamState* stream, int32_t n, double* r, double a, double b) {
  return orv::draw_numbers(stream, n, r, a, b);
}

int32_t __zokiBRngSFMT19937(StreamState* stream, int32_t n, uint32_t* r) {
  if (n < 1) return RNG_OK;
  auto& state = orv::state_of<orv::State>(stream);
  orv::Register table({}, state.sfmt, state.index / orv::block_words);
  table.take(n, reinterpret_cast<orv::Block*>(r));
  state.index = static_cast<uint32_t>(table.position() * orv::block_words);
  return RNG_OK;
}
