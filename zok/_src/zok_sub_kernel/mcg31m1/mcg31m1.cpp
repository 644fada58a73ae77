// SPDX-License-Identifier: MIT
// MCG31M1: x(n + 1) = a x(n) mod 2^31 - 1, the word being x itself, from 1 to 2^31 - 2.
// P. L'Ecuyer, Tables of linear congruential generators of different sizes and good lattice
// structure, Mathematics of Computation 68 (1999). Period 2^31 - 2.
#include "../_service/scaling.hpp"
#include "../_service/stream_state.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr uint32_t modulus = 0x7FFFFFFF;
constexpr uint32_t default_multiplier = 1132489760;
constexpr double unit = 1.0 / modulus;
constexpr int lanes_of_words = 4;

struct State {
  uint32_t X;  // the next element
  uint32_t A;  // the multiplier; leapfrog replaces it
};

// ---- The recurrence, for one word and for lanes of words ---------------------------------------

/// a x mod 2^31 - 1 for a, x below the modulus. 2^31 counts as 1, so the high bits of the product
/// are added to the low 31.
uint32_t multiply(uint32_t a, uint32_t x) {
  const uint64_t product = static_cast<uint64_t>(a) * x;
  const auto sum = static_cast<uint32_t>((product & modulus) + (product >> 31));
  return sum >= modulus ? sum - modulus : sum;
}

/// The same in four lanes, from 2 a: a doubled product has the high bits in a word of their own.
__m128i multiply(__m128i twice_a, __m128i x) {
  const __m128i even = _mm_mul_epu32(twice_a, x);
  const __m128i odd = _mm_mul_epu32(twice_a, _mm_srli_epi64(x, 32));
  const __m128i high = _mm_blend_epi16(_mm_srli_epi64(even, 32), odd, 0xCC);
  const __m128i low = _mm_blend_epi16(even, _mm_slli_epi64(odd, 32), 0xCC);
  const __m128i sum = _mm_add_epi32(high, _mm_srli_epi32(low, 1));
  return _mm_min_epu32(sum, _mm_sub_epi32(sum, _mm_set1_epi32(modulus)));
}

// ---- Drawing -----------------------------------------------------------------------------------

/// The next 16 elements: at first made in sequence, then each lane on its own.
class Block {
 public:
  static constexpr int vectors = 4;
  static constexpr int32_t size = vectors * lanes_of_words;

  Block(uint32_t x, uint32_t a) {
    uint32_t first[size], power = 1;
    for (uint32_t& element : first) {
      element = x;
      x = multiply(a, x);
      power = multiply(a, power);
    }
    memcpy(x_, first, sizeof x_);
    twice_step_ = _mm_set1_epi32(static_cast<int32_t>(2 * power));
  }

  template <class Output>
  void put(int32_t i, const Output& out) const {
    for (int v = 0; v < vectors; ++v) out.four(i + v * lanes_of_words, x_[v]);
  }
  void advance() {
    for (__m128i& x : x_) x = multiply(twice_step_, x);
  }
  uint32_t element(int k) const {
    uint32_t elements[size];
    memcpy(elements, x_, sizeof x_);
    return elements[k];
  }

 private:
  __m128i x_[vectors];
  __m128i twice_step_;
};

/// Delivers n elements, and one even when none is asked for.
template <class Output>
void draw(State& state, int32_t n, const Output& out) {
  int32_t i = 0;
  if (n >= 2 * Block::size) {
    Block block(state.X, state.A);
    for (; i <= n - Block::size; i += Block::size) {
      block.put(i, out);
      block.advance();
    }
    state.X = block.element(0);
    if (i == n) return;
  }
  do {
    out.one(i, state.X);
    state.X = multiply(state.A, state.X);
  } while (++i < n);
}

// ---- Streams -----------------------------------------------------------------------------------

uint32_t power(uint32_t a, uint32_t n_low, uint32_t n_high) {
  return __zokiPowMod2P31M1(a, n_low, n_high);
}

void initialise(State& state, int32_t nseeds, const uint32_t* seeds) {
  state.X = nseeds < 1 ? 1 : seeds[0] % modulus;
  if (state.X == 0) state.X = 1;
  state.A = default_multiplier;
}

/// Every nstreams-th element from the k-th on. The multiplier may be another leapfrog's.
void leapfrog(State& state, int32_t nstreams, uint32_t k) {
  state.X = multiply(power(state.A, k, 0), state.X);
  state.A = power(state.A, static_cast<uint32_t>(nstreams), high_word(nstreams));
}

void skip_ahead(State& state, const uint32_t* count) {
  state.X = multiply(power(state.A, count[0], count[1]), state.X);
}

}  // namespace
}  // namespace ORV_TAG
}  // namespace orv

using namespace orv;

int32_t __zokBRngMCG31M1InitStream(int32_t method, StreamState* stream, int32_t n,
                                   const uint32_t* params) {
  auto& state = state_of<State>(stream);
  return begin_stream(
      method, [&] { initialise(state, n, params); }, [&] { leapfrog(state, n, params[0]); },
      [&] { skip_ahead(state, params); });
}

int32_t __zoksBRngMCG31M1(StreamState* stream, int32_t n, float* r, float a, float b) {
  draw(state_of<State>(stream), n, Scaled<float>(r, a, b, unit));
  return RNG_OK;
}

int32_t __zokdBRngMCG31M1(StreamState* stream, int32_t n, double* r, double a, double b) {
  draw(state_of<State>(stream), n, Scaled<double>(r, a, b, unit));
  return RNG_OK;
}

int32_t __zokiBRngMCG31M1(StreamState* stream, int32_t n, uint32_t* r) {
  draw(state_of<State>(stream), n, Words(r));
  return RNG_OK;
}
