// SPDX-License-Identifier: MIT
// MCG59: x(n + 1) = 13^13 x(n) mod 2^59, an element being x itself, as two words. Period 2^57 for
// an odd seed.
#include "../_service/scaling.hpp"
#include "../_service/stream_state.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr uint64_t modulus_mask = (1ull << 59) - 1;
constexpr uint64_t default_multiplier = 302875106592253;  // 13^13
constexpr double unit = 0x1p-59;

struct State {
  uint64_t X;  // the next element
  uint64_t A;  // the multiplier; leapfrog replaces it
};

// ---- The recurrence, for one element and for two lanes -----------------------------------------

uint64_t multiply(uint64_t a, uint64_t x) { return a * x & modulus_mask; }

__m128i splat(uint64_t x) { return _mm_set1_epi64x(static_cast<int64_t>(x)); }

/// The product of the high words is beyond 2^59.
__m128i multiply(__m128i a, __m128i x) {
  const __m128i cross = _mm_add_epi64(_mm_mul_epu32(_mm_srli_epi64(a, 32), x),
                                      _mm_mul_epu32(a, _mm_srli_epi64(x, 32)));
  const __m128i product = _mm_add_epi64(_mm_mul_epu32(a, x), _mm_slli_epi64(cross, 32));
  return _mm_and_si128(product, splat(modulus_mask));
}

// ---- Where elements go -------------------------------------------------------------------------

/// Two words an element, the low one first.
class WordPairs {
 public:
  explicit WordPairs(uint32_t* r) : r_(r) {}

  void four(int32_t i, __m128i first, __m128i second) const {
    auto* const to = reinterpret_cast<__m128i*>(r_ + intptr_t{2} * i);
    _mm_storeu_si128(to, first);
    _mm_storeu_si128(to + 1, second);
  }
  void one(int32_t i, uint64_t x) const { memcpy(r_ + intptr_t{2} * i, &x, sizeof x); }

 private:
  uint32_t* r_;
};

/// Numbers. The two words become doubles apart from each other. A double scales each and
/// adds; a float is made from their sum.
template <class T>
class Numbers {
 public:
  Numbers(T* r, T a, T b)
      : r_(r), a_(a), s_((static_cast<double>(b) - static_cast<double>(a)) * unit) {}

  void four(int32_t i, __m128i first, __m128i second) const {
    const __m256 x = _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_castsi128_ps(first)),
                                          _mm_castsi128_ps(second), 1);
    const __m256 low = _mm256_blend_ps(x, as_floats(two_52), 0xAA);
    const __m256 high = _mm256_blend_ps(_mm256_movehdup_ps(x), as_floats(two_84), 0xAA);
    store_four(r_ + i, scaled(_mm256_castps_pd(low) - _mm256_set1_pd(two_52),
                              _mm256_castps_pd(high) - _mm256_set1_pd(two_84)));
  }
  void one(int32_t i, uint64_t x) const {
    const double high = to_double(static_cast<uint32_t>(x >> 32)) * 0x1p32;
    store_one(r_ + i, scaled(to_double(static_cast<uint32_t>(x)), high));
  }

 private:
  /// As 2^52, with 2^32 as the unit of its low bits.
  static constexpr double two_84 = 0x1p84;

  static __m256 as_floats(double x) { return _mm256_castpd_ps(_mm256_set1_pd(x)); }

  template <class V>
  V scaled(V low, V high) const {
    if constexpr (sizeof(T) == sizeof(double)) return (low * s_ + high * s_) + a_;
    return (low + high) * s_ + a_;
  }

  T* r_;
  double a_, s_;
};

// ---- Drawing -----------------------------------------------------------------------------------

/// Four elements a round, each lane stepping by a^4.
template <class Output>
void draw(State& state, int32_t n, const Output& out) {
  const uint64_t a = state.A;
  uint64_t x = state.X;
  int32_t i = 0;
  if (n >= 8) {
    const uint64_t a2 = multiply(a, a);
    const __m128i step2 = splat(a2), step4 = splat(multiply(a2, a2));
    __m128i first = _mm_set_epi64x(static_cast<int64_t>(multiply(a, x)), static_cast<int64_t>(x));
    __m128i second = multiply(step2, first);
    for (; i <= n - 4; i += 4) {
      out.four(i, first, second);
      first = multiply(step4, first);
      second = multiply(step4, second);
    }
    memcpy(&x, &first, sizeof x);
  }
  for (; i < n; ++i) {
    out.one(i, x);
    x = multiply(a, x);
  }
  state.X = x;
}

// ---- Streams -----------------------------------------------------------------------------------

uint64_t power(uint64_t a, uint32_t n_low, uint32_t n_high) {
  return __zokiPowMod2P59(static_cast<uint32_t>(a), static_cast<uint32_t>(a >> 32), n_low, n_high);
}

/// Two seed words, the low one first. An even seed is taken as it is: its period is shorter.
void initialise(State& state, int32_t nseeds, const uint32_t* seeds) {
  state.X = nseeds < 1 ? 1 : seeds[0];
  if (nseeds > 1) state.X |= static_cast<uint64_t>(seeds[1]) << 32 & modulus_mask;
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

int32_t __zokBRngMCG59InitStream(int32_t method, StreamState* stream, int32_t n,
                                 const uint32_t* params) {
  auto& state = state_of<State>(stream);
  return begin_stream(
      method, [&] { initialise(state, n, params); }, [&] { leapfrog(state, n, params[0]); },
      [&] { skip_ahead(state, params); });
}

int32_t __zoksBRngMCG59(StreamState* stream, int32_t n, float* r, float a, float b) {
  draw(state_of<State>(stream), n, Numbers<float>(r, a, b));
  return RNG_OK;
}

int32_t __zokdBRngMCG59(StreamState* stream, int32_t n, double* r, double a, double b) {
  draw(state_of<State>(stream), n, Numbers<double>(r, a, b));
  return RNG_OK;
}

int32_t __zokiBRngMCG59(StreamState* stream, int32_t n, uint32_t* r) {
  draw(state_of<State>(stream), n, WordPairs(r));
  return RNG_OK;
}
