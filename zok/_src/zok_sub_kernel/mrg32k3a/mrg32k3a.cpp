// SPDX-License-Identifier: MIT
// MRG32K3A: the difference, modulo m1, of two recurrences of order three:
//
//   x(n) = (1403580 x(n - 2) - 810728 x(n - 3)) mod m1
//   y(n) = (527612 y(n - 1) - 1370589 y(n - 3)) mod m2
//
// P. L'Ecuyer, Good parameters and implementations for combined multiple recursive random number
// generators, Operations Research 47 (1999). Period about 2^191.
//
// All arithmetic is exact in doubles: residues are kept within m / 2 of zero, and no sum reaches
// 2^53 before its reduction.
#include "../_service/scaling.hpp"
#include "../_service/stream_state.hpp"
#include "lanes.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr double unit = 1.0 / m1;

struct State {
  uint32_t S[6];  // the last three x, oldest first, and the last three y
};

// ---- Step by step, x and y in the two lanes of a vector ----------------------------------------

class Steps {
 public:
  explicit Steps(const State& state) {
    for (int k = 0; k < 3; ++k) last_[k] = _mm_setr_pd(state.S[k], state.S[3 + k]);
  }

  /// The next x and y.
  __m128d next() {
    const __m128d older =
        _mm_setr_pd(1403580, 0) * last_[1] - _mm_setr_pd(810728, 1370589) * last_[0];
    const __m128d sum = older + _mm_setr_pd(0, 527612) * last_[2];
    last_[0] = last_[1];
    last_[1] = last_[2];
    return last_[2] = reduce(sum, moduli(), _mm_setr_pd(1.0 / m1, 1.0 / m2));
  }

  /// The word that they make.
  static uint32_t word(__m128d xy) {
    const __m128d residues = not_negative(xy, moduli());
    const __m128d difference = residues - _mm_unpackhi_pd(residues, residues);
    return to_word(_mm_cvtsd_f64(not_negative(difference, moduli())));
  }

  void save(State& state) const {
    for (int k = 0; k < 3; ++k) {
      const __m128d residues = not_negative(last_[k], moduli());
      state.S[k] = to_word(residues[0]);
      state.S[3 + k] = to_word(residues[1]);
    }
  }

 private:
  static __m128d moduli() { return _mm_setr_pd(m1, m2); }

  __m128d last_[3];
};

// ---- Drawing -----------------------------------------------------------------------------------

/// Four words from lanes of x and y.
__m256d words(__m256d x, __m256d y) {
  const __m256d modulus = _mm256_set1_pd(m1);
  return not_negative(not_negative(x, modulus) - not_negative(y, _mm256_set1_pd(m2)), modulus);
}

struct Windows {
  Window<X> x;
  Window<Y> y;

  explicit Windows(Steps steps) {
    double xy[window_size][2];
    for (auto& pair : xy) _mm_storeu_pd(pair, steps.next());
    for (int i = 0; i < window_size; ++i) {
      x.set(i, xy[i][0]);
      y.set(i, xy[i][1]);
    }
  }

  void advance() {
    x.advance();
    y.advance();
  }

  /// The three elements before number i.
  void save(State& state, int i) const {
    for (int k = 0; k < 3; ++k) {
      state.S[k] = to_word(x.residue(i - 3 + k));
      state.S[3 + k] = to_word(y.residue(i - 3 + k));
    }
  }
};

template <class Output>
void draw_windows(State& state, int32_t n, const Output& out) {
  Windows window{Steps(state)};
  int32_t i = 0;
  for (;;) {
    for (int k = 0; k < window_vectors; ++k) {
      out.four(i + 4 * k, words(window.x.four(k), window.y.four(k)));
    }
    i += window_size;
    if (i == n) return window.save(state, window_size);
    window.advance();
    if (i > n - window_size) break;
  }
  for (int k = 0; k < n - i; ++k) {
    out.one(i + k, Steps::word(_mm_setr_pd(window.x.get(k), window.y.get(k))));
  }
  window.save(state, n - i);
}

template <class Output>
void draw(State& state, int32_t n, const Output& out) {
  if (n >= window_size) return draw_windows(state, n, out);
  Steps steps(state);
  for (int32_t i = 0; i < n; ++i) out.one(i, Steps::word(steps.next()));
  steps.save(state);
}

// ---- Streams -----------------------------------------------------------------------------------

/// Repairs three words: residues of m, not all 0.
void repair(uint32_t* words_of_one, uint32_t m) {
  uint32_t any = 0;
  for (int k = 0; k < 3; ++k) any |= words_of_one[k] %= m;
  if (any == 0) words_of_one[0] = 1;
}

void initialise(State& state, int32_t nseeds, const uint32_t* seeds) {
  for (int k = 0; k < 6; ++k) state.S[k] = k < nseeds ? seeds[k] : 1;
  repair(state.S, m1);
  repair(state.S + 3, m2);
}

void skip_ahead(State& state, const uint32_t* count) {
  constexpr uint32_t x_multipliers[] = {0, 1403580, m1 - 810728};
  constexpr uint32_t y_multipliers[] = {527612, 0, m2 - 1370589};
  __zokiVect3PowMod(state.S, x_multipliers, m1, count[0], count[1]);
  __zokiVect3PowMod(state.S + 3, y_multipliers, m2, count[0], count[1]);
}

}  // namespace
}  // namespace ORV_TAG
}  // namespace orv

using namespace orv;

int32_t __zokBRngMRG32K3AInitStream(int32_t method, StreamState* stream, int32_t n,
                                    const uint32_t* params) {
  auto& state = state_of<State>(stream);
  switch (method) {
    case seed_stream:
      initialise(state, n, params);
      return RNG_OK;
    case skip_ahead_stream:
      skip_ahead(state, params);
      return RNG_OK;
    default:
      return refuse_method(method);
  }
}

int32_t __zoksBRngMRG32K3A(StreamState* stream, int32_t n, float* r, float a, float b) {
  draw(state_of<State>(stream), n, Scaled<float>(r, a, b, unit));
  return RNG_OK;
}

int32_t __zokdBRngMRG32K3A(StreamState* stream, int32_t n, double* r, double a, double b) {
  draw(state_of<State>(stream), n, Scaled<double>(r, a, b, unit));
  return RNG_OK;
}

int32_t __zokiBRngMRG32K3A(StreamState* stream, int32_t n, uint32_t* r) {
  draw(state_of<State>(stream), n, Words(r));
  return RNG_OK;
}
