// SPDX-License-Identifier: MIT
// WH: 273 generators of four congruential components each, x_k(n + 1) = a_k x_k(n) mod m_k, whose
// fractions x_k / m_k are added modulo 1.
// B. Wichmann and D. Hill, Algorithm AS 183, Applied Statistics 31 (1982); N. Maclaren, The
// generation of multiple independent sequences of pseudorandom numbers, Applied Statistics 38
// (1989). Period about 2^93.
#include <qem/_src/qem_core/frame/control_words.hpp>
#include <qem/_src/qem_core/simd/vectors.hpp>

#include "../_service/registry.hpp"
#include "../_service/scaling.hpp"
#include "../_service/stream_state.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr int components = 4;

struct State {
  uint32_t X[components];  // the next element
  uint32_t A[components];  // the multipliers; leapfrog replaces them
};

// ---- The recurrence, all components of an element in the lanes of a vector ---------------------

__m256d load_words(const uint32_t* words) {
  return _mm256_cvtepi32_pd(_mm_loadu_si128(reinterpret_cast<const __m128i*>(words)));
}
void store_words(uint32_t* words, __m256d x) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(words), _mm256_cvttpd_epi32(x));
}

class Moduli {
 public:
  explicit Moduli(const uint32_t* m) : m_(load_words(m)) {
    constexpr Environment upward = {.sse = 0x4000, .follows_mode = false};
    const ControlWords words(upward);
    inverse_ = opaque(_mm256_set1_pd(1.0) / opaque(m_));
  }

  /// a x mod m, exactly, for a and x below m: the product is below 2^48. An inverse that is never
  /// too small gives multiples of m their whole quotient; its error is too small for others.
  __m256d multiply(__m256d a, __m256d x) const {
    const __m256d product = a * x;
    const __m256d quotient =
        _mm256_round_pd(product * inverse_, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
    return product - quotient * m_;
  }

 private:
  __m256d m_, inverse_;
};

// ---- Where elements go -------------------------------------------------------------------------

/// Four words an element.
class Components {
 public:
  explicit Components(uint32_t* r) : r_(r) {}

  void four(int32_t i, const __m256d (&x)[4]) const {
    for (int j = 0; j < 4; ++j) one(i + j, x[j]);
  }
  void one(int32_t i, __m256d x) const { store_words(r_ + intptr_t{components} * i, x); }

 private:
  uint32_t* r_;
};

/// Numbers, a fraction's place between a and b.
template <class T>
class Fractions {
 public:
  Fractions(T* r, T a, T b, const double* reciprocals)
      : r_(r), a_(a), width_(static_cast<double>(b) - static_cast<double>(a)), t_(reciprocals) {}

  void four(int32_t i, const __m256d (&x)[4]) const { store_four(r_ + i, numbers(x)); }
  void one(int32_t i, __m256d x) const {
    store_one(r_ + i, _mm256_cvtsd_f64(numbers({x, x, x, x})));
  }

 private:
  __m256d numbers(const __m256d (&x)[4]) const {
    // From elements to components: pairs of lanes, then halves.
    const __m256d odd01 = _mm256_unpacklo_pd(x[0], x[1]), even01 = _mm256_unpackhi_pd(x[0], x[1]);
    const __m256d odd23 = _mm256_unpacklo_pd(x[2], x[3]), even23 = _mm256_unpackhi_pd(x[2], x[3]);
    const __m256d sum = _mm256_permute2f128_pd(odd01, odd23, 0x20) * t_[0] +
                        _mm256_permute2f128_pd(even01, even23, 0x20) * t_[1] +
                        _mm256_permute2f128_pd(odd01, odd23, 0x31) * t_[2] +
                        _mm256_permute2f128_pd(even01, even23, 0x31) * t_[3];
    return (sum - _mm256_floor_pd(sum)) * width_ + a_;
  }

  T* r_;
  double a_, width_;
  const double* t_;
};

// ---- Drawing -----------------------------------------------------------------------------------

/// Four elements a round, each stepping by a^4.
template <class Output>
void draw(State& state, const uint32_t* m, int32_t n, const Output& out) {
  if (n < 1) return;
  const Moduli moduli(m);
  const __m256d a = load_words(state.A);
  __m256d x = load_words(state.X);
  int32_t i = 0;
  if (n >= 8) {
    const __m256d a2 = moduli.multiply(a, a), a4 = moduli.multiply(a2, a2);
    const __m256d next = moduli.multiply(a, x);
    __m256d elements[4] = {x, next, moduli.multiply(a2, x), moduli.multiply(a2, next)};
    for (; i <= n - 4; i += 4) {
      out.four(i, elements);
      for (__m256d& element : elements) element = moduli.multiply(a4, element);
    }
    x = elements[0];
  }
  for (; i < n; ++i) {
    out.one(i, x);
    x = moduli.multiply(a, x);
  }
  store_words(state.X, x);
}

template <class T>
void draw_numbers(StreamState* stream, int32_t n, T* r, T a, T b) {
  const int32_t offset = offset_of(stream->Brng);
  const Fractions<T> out(r, a, b, _zokdWH_IM_Tab[offset]);
  draw(state_of<State>(stream), _zok_WH_M[offset], n, out);
}

// ---- Streams -----------------------------------------------------------------------------------

void initialise(State& state, int32_t offset, int32_t nseeds, const uint32_t* seeds) {
  for (int k = 0; k < components; ++k) {
    state.X[k] = k < nseeds ? seeds[k] % _zok_WH_M[offset][k] : 1;
    if (state.X[k] == 0) state.X[k] = 1;
    state.A[k] = _zok_WH_A[offset][k];
  }
}

/// Multiplies each component of x by its multiplier to the n.
void multiply_by_power(State& state, const uint32_t* m, uint32_t n_low, uint32_t n_high) {
  for (int k = 0; k < components; ++k) {
    const uint64_t power = __zokiPowMod(state.A[k], n_low, n_high, m[k]);
    state.X[k] = static_cast<uint32_t>(power * state.X[k] % m[k]);
  }
}

/// Every nstreams-th element from the k-th on. The multipliers may be another leapfrog's.
void leapfrog(State& state, const uint32_t* m, int32_t nstreams, uint32_t k) {
  multiply_by_power(state, m, k, 0);
  for (int j = 0; j < components; ++j) {
    const auto n_low = static_cast<uint32_t>(nstreams);
    state.A[j] = __zokiPowMod(state.A[j], n_low, high_word(nstreams), m[j]);
  }
}

}  // namespace
}  // namespace ORV_TAG
}  // namespace orv

using namespace orv;

int32_t __zokBRngWHInitStream(int32_t method, StreamState* stream, int32_t n,
                              const uint32_t* params) {
  auto& state = state_of<State>(stream);
  const int32_t offset = offset_of(stream->Brng);
  const uint32_t* const m = _zok_WH_M[offset];
  return begin_stream(
      method, [&] { initialise(state, offset, n, params); },
      [&] { leapfrog(state, m, n, params[0]); },
      [&] { multiply_by_power(state, m, params[0], params[1]); });
}

int32_t __zoksBRngWH(StreamState* stream, int32_t n, float* r, float a, float b) {
  draw_numbers(stream, n, r, a, b);
  return RNG_OK;
}

int32_t __zokdBRngWH(StreamState* stream, int32_t n, double* r, double a, double b) {
  draw_numbers(stream, n, r, a, b);
  return RNG_OK;
}

int32_t __zokiBRngWH(StreamState* stream, int32_t n, uint32_t* r) {
  draw(state_of<State>(stream), _zok_WH_M[offset_of(stream->Brng)], n, Components(r));
  return RNG_OK;
}
