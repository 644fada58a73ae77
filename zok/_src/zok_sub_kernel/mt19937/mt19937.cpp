// SPDX-License-Identifier: MIT
// MT19937: the Mersenne Twister of period 2^19937 - 1.
#include "../_twister/twister.hpp"

namespace {

struct MT19937 {
  static constexpr int32_t length = 624, middle = 397;
  static constexpr uint32_t lower = 0x7FFFFFFF;
  static constexpr int temper_shift = 11;

  struct State {
    uint32_t mt[length], index;
  };
  static constexpr orv::TwisterConstants constants(const State&) {
    return {0x9908B0DF, 0x9D2C5680, 0xEFC60000};
  }
};

}  // namespace

int32_t __zokBRngMT19937InitStream(int32_t method, StreamState* stream, int32_t n,
                                   const uint32_t* params) {
  if (method != orv::seed_stream) return orv::refuse_method(method);
  orv::seed_twister<MT19937>(orv::state_of<MT19937::State>(stream), orv::SeedWords(n, params));
  return RNG_OK;
}

int32_t __zoksBRngMT19937(StreamState* stream, int32_t n, float* r, float a, float b) {
  return orv::draw_numbers<MT19937>(stream, n, r, a, b);
}

int32_t __zokdBRngMT19937(StreamState* stream, int32_t n, double* r, double a, double b) {
  return orv::draw_numbers<MT19937>(stream, n, r, a, b);
}

int32_t __zokiBRngMT19937(StreamState* stream, int32_t n, uint32_t* r) {
  return orv::draw_words<MT19937>(stream, n, r);
}
