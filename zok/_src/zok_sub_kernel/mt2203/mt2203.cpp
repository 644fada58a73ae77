// SPDX-License-Identifier: MIT
// MT2203: 1024 Mersenne Twisters of period 2^2203 - 1, whose parameters differ so that their
// sequences are independent (Matsumoto and Nishimura 2000).
#include "../_service/registry.hpp"
#include "../_twister/twister.hpp"

namespace {

struct MT2203 {
  static constexpr int32_t length = 69, middle = 34;
  static constexpr uint32_t lower = 0x1F;
  static constexpr int temper_shift = 12;

  struct State {
    uint32_t mt[length], index;
    uint32_t matrix_a, temper_b, temper_c;
  };
  static orv::TwisterConstants constants(const State& state) {
    return {state.matrix_a, state.temper_b, state.temper_c};
  }
};

}  // namespace

int32_t __zokBRngMT2203InitStream(int32_t method, StreamState* stream, int32_t n,
                                  const uint32_t* params) {
  if (method != orv::seed_stream) return orv::refuse_method(method);
  auto& state = orv::state_of<MT2203::State>(stream);
  orv::seed_twister<MT2203>(state, orv::SeedWords(n, params));
  const uint32_t* parameters = _zok_mt2203_table[orv::offset_of(stream->Brng)];
  state.matrix_a = parameters[0];
  state.temper_b = parameters[1];
  state.temper_c = parameters[2];
  return RNG_OK;
}

int32_t __zoksBRngMT2203(StreamState* stream, int32_t n, float* r, float a, float b) {
  return orv::draw_numbers<MT2203>(stream, n, r, a, b);
}

int32_t __zokdBRngMT2203(StreamState* stream, int32_t n, double* r, double a, double b) {
  return orv::draw_numbers<MT2203>(stream, n, r, a, b);
}

int32_t __zokiBRngMT2203(StreamState* stream, int32_t n, uint32_t* r) {
  return orv::draw_words<MT2203>(stream, n, r);
}
