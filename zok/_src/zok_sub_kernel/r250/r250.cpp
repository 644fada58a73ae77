// SPDX-License-Identifier: MIT
// R250: w(n) = w(n - 250) xor w(n - 147), a generalised feedback shift register.
// S. Kirkpatrick and E. Stoll, A very fast shift-register sequence random number generator, Journal
// of Computational Physics 40 (1981). Period 2^250 - 1.
#include "../_service/scaling.hpp"
#include "../_service/stream_state.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr int32_t length = 250, lag = 147;
constexpr double unit = 0x1p-32;

struct State {
  uint32_t X[length];
  uint32_t I;  // the oldest word
  uint32_t J;  // the word `lag` steps old
};

constexpr uint32_t first_J = length - lag;

int32_t smaller(int32_t a, int32_t b) { return a < b ? a : b; }

// ---- The recurrence ----------------------------------------------------------------------------

__m256 load_eight(const uint32_t* p) { return _mm256_loadu_ps(reinterpret_cast<const float*>(p)); }
void store_eight(uint32_t* p, __m256 words) {
  _mm256_storeu_ps(reinterpret_cast<float*>(p), words);
}

/// eight(k) for all words of p[0] to p[count - 1], count >= 8. Between the first and the last
/// vector, which share words with their neighbours, p + k is a vector's boundary.
template <class Eight>
void for_eights(const uint32_t* p, int32_t count, const Eight& eight) {
  eight(0);
  auto k = static_cast<int32_t>((-reinterpret_cast<uintptr_t>(p) & 31) / sizeof(uint32_t));
#pragma GCC unroll 4
  for (; k <= count - 8; k += 8) eight(k);
  eight(count - 8);
}

/// r = a xor b. r lies apart from a and b, or follows them at a distance of eight words or more.
void xor_all(uint32_t* r, const uint32_t* a, const uint32_t* b, int32_t count) {
  if (count >= 8) {
    return for_eights(r, count, [=](int32_t k) {
      store_eight(r + k, _mm256_xor_ps(load_eight(a + k), load_eight(b + k)));
    });
  }
  for (int32_t k = 0; k < count; ++k) {
    uint32_t x, y;
    memcpy(&x, a + k, sizeof x);
    memcpy(&y, b + k, sizeof y);
    x ^= y;
    memcpy(r + k, &x, sizeof x);
  }
}

/// Copies what xor_all has just stored: the same vectors again, which are at hand at once, where a
/// load across two of them would wait for the memory.
void copy_results(uint32_t* to, const uint32_t* r, int32_t count) {
  for_eights(r, count, [=](int32_t k) { store_eight(to + k, load_eight(r + k)); });
}

/// Moves an index on, around the end.
void advance(uint32_t& index, int32_t count) {
  index += static_cast<uint32_t>(count);
  if (index == length) index = 0;
}

int32_t words_to_end(uint32_t index) { return length - static_cast<int32_t>(index); }

void draw_few(State& state, int32_t n, uint32_t* r) {
  for (int32_t k = 0; k < n;) {
    const int32_t to_end = smaller(words_to_end(state.I), words_to_end(state.J));
    const int32_t count = smaller(n - k, to_end);
    uint32_t* const oldest = state.X + state.I;
    xor_all(r + k, oldest, state.X + state.J, count);
    memcpy(oldest, r + k, count * sizeof(uint32_t));
    advance(state.I, count);
    advance(state.J, count);
    k += count;
  }
}

/// The words in order of age, the oldest first.
void rotate(State& state) {
  if (state.I == 0) return;
  uint32_t copy[length];
  const auto newer = static_cast<int32_t>(state.I);
  memcpy(copy, state.X + newer, (length - newer) * sizeof(uint32_t));
  memcpy(copy + length - newer, state.X, newer * sizeof(uint32_t));
  memcpy(state.X, copy, sizeof copy);
  state.I = 0;
  state.J = first_J;
}

/// The output is the register: the state is read for the first words and written at the end. From
/// the 251st on, the recurrence squared: w(n) = w(n - 500) xor w(n - 294), since words that were
/// stored a moment ago are slow to load at another alignment.
void draw_many(State& state, int32_t n, uint32_t* r) {
  rotate(state);
  const uint32_t* const x = state.X;
  xor_all(r, x, x + first_J, lag);
  xor_all(r + lag, x + lag, r, first_J);
  const int32_t direct = 2 * lag - length;
  xor_all(r + length, x, x + length - direct, smaller(n - length, direct));
  if (n > 2 * lag) xor_all(r + 2 * lag, x + direct, r, smaller(n, 2 * length) - 2 * lag);
  if (n > 2 * length) xor_all(r + 2 * length, r, r + 2 * first_J, n - 2 * length);
  copy_results(state.X, r + n - length, length);
}

// ---- Drawing -----------------------------------------------------------------------------------

/// One word is made even when none is asked for.
int32_t at_least_one(int32_t n) { return n < 1 ? 1 : n; }

/// J follows from I. An index beyond the register, as a damaged file may hold, starts over.
void draw(State& state, int32_t n, uint32_t* r) {
  if (state.I >= uint32_t{length}) state.I = 0;
  state.J = (state.I + first_J) % length;
  n < length ? draw_few(state, n, r) : draw_many(state, n, r);
}

template <class T>
void draw_numbers(State& state, int32_t n, T* r, T a, T b) {
  n = at_least_one(n);
  uint32_t* const words = upper_half(r, n);
  draw(state, n, words);
  spread(n, words, Scaled<T>(r, a, b, unit), [](auto word) { return word; });
}

// ---- Seeds -------------------------------------------------------------------------------------

/// A full register of seeds is taken as it is. Otherwise a congruential generator fills it, and
/// each bit's column gets a word that makes the 32 columns linearly independent.
void initialise(State& state, int32_t nseeds, const uint32_t* seeds) {
  if (nseeds >= length) {
    memcpy(state.X, seeds, sizeof state.X);
  } else {
    uint32_t v = nseeds < 1 || seeds[0] == 0 ? 1 : seeds[0];
    for (uint32_t& word : state.X) word = v *= 69069;
    for (int k = 0; k < 32; ++k) {
      uint32_t& word = state.X[3 + 7 * k];
      word = (word & 0xFFFFFFFF >> k) | 0x80000000 >> k;
    }
  }
  state.I = 0;
  state.J = first_J;
}

}  // namespace
}  // namespace ORV_TAG
}  // namespace orv

using namespace orv;

int32_t __zokBRngR250InitStream(int32_t method, StreamState* stream, int32_t n,
                                const uint32_t* params) {
  if (method != seed_stream) return refuse_method(method);
  initialise(state_of<State>(stream), n, params);
  return RNG_OK;
}

int32_t __zoksBRngR250(StreamState* stream, int32_t n, float* r, float a, float b) {
  draw_numbers(state_of<State>(stream), n, r, a, b);
  return RNG_OK;
}

int32_t __zokdBRngR250(StreamState* stream, int32_t n, double* r, double a, double b) {
  draw_numbers(state_of<State>(stream), n, r, a, b);
  return RNG_OK;
}

int32_t __zokiBRngR250(StreamState* stream, int32_t n, uint32_t* r) {
  draw(state_of<State>(stream), at_least_one(n), r);
  return RNG_OK;
}
