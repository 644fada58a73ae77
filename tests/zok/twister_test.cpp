// MT19937 and MT2203 beside a plain scalar twister.
#include "known_answers.hpp"
#include "twister_models.hpp"

namespace orv_test {
namespace {

struct Parameters {
  int32_t brng;
  int32_t length, middle;
  int lower_bits, first_shift;
  uint32_t a, b, c;
};

constexpr Parameters twisters[] = {
    {BRNG_MT19937, 624, 397, 31, 11, 0x9908B0DF, 0x9D2C5680, 0xEFC60000},
    {BRNG_MT2203, 69, 34, 5, 12, 0xAF81055F, 0xDD7EEF80, 0xEFD78000},
    {BRNG_MT2203 + 1, 69, 34, 5, 12, 0x832604E1, 0x66AD7F80, 0xEBD58000},
    {BRNG_MT2203 + 2, 69, 34, 5, 12, 0x92F70739, 0x656D7780, 0xEFC50000},
    {BRNG_MT2203 + 1023, 69, 34, 5, 12, 0xE1B6093F, 0x9D326E80, 0xEFD58000},
};

std::vector<uint32_t> seeded_table(uint32_t length, Seeds seeds) {
  if (seeds.empty()) seeds = {1};
  const auto key_length = static_cast<uint32_t>(seeds.size());
  std::vector<uint32_t> mt(length, 19650218);
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

Register model_of(const Parameters& p, const Seeds& seeds, size_t words) {
  std::vector<uint32_t> x = seeded_table(p.length, seeds);
  const uint32_t lower = (1u << p.lower_bits) - 1;
  for (size_t k = 0; k < words; ++k) {
    const uint32_t y = (x[k] & ~lower) | (x[k + 1] & lower);
    x.push_back(x[k + p.middle] ^ y >> 1 ^ (y % 2 == 1 ? p.a : 0));
  }
  return {p.length, 1, std::move(x), 0, static_cast<uint32_t>(p.length)};
}

/// The words of a request, tempered.
struct Tempered {
  const Parameters& p;
  const uint32_t* raw;

  uint32_t operator()(int32_t i) const {
    uint32_t y = raw[i];
    y ^= y >> p.first_shift;
    y ^= y << 7 & p.b;
    y ^= y << 15 & p.c;
    return y ^ y >> 18;
  }
  template <class T>
  T number(int32_t i, T a, T b) const {
    const double s = (static_cast<double>(b) - a) / 4294967296.0;
    return static_cast<T>(a + s * (*this)(i));
  }
};

void expect_state(StreamState* stream, const Parameters& p, const Register& model) {
  const uint32_t* state = state_words(stream);
  EXPECT_EQ(state[p.length], model.index);
  EXPECT_EQ(memcmp(state, &model.raw[model.window], p.length * sizeof *state), 0);
}

void expect_request(StreamState* stream, const Parameters& p, const Request& request,
                    Register* model) {
  const Tempered word{p, &model->raw[model->window + model->index]};
  model->take(request.n);
  if (request.flavour == Flavour::words) {
    const auto draw = [&](uint32_t* r) {
      return properties_of(p.brng).iBRng(stream, request.n, r);
    };
    expect_elements<uint32_t>(request.n, draw, word);
  } else {
    expect_numbers(stream, request, word);
  }
  expect_state(stream, p, *model);
}

TEST(Twister, AnySplitInAnyFlavourGivesThePlainSequence) {
  for (const Parameters& p : twisters) {
    for (const uint32_t order : {1u, 2u, 3u}) {
      SCOPED_TRACE(testing::Message() << std::hex << p.brng << " order " << order);
      const Seeds seeds = {7, order};
      Stream stream;
      make_stream(stream, p.brng, seeds);
      Register model = model_of(p, seeds, 100000);
      for (const Request& request : mixed_requests(order)) {
        expect_request(stream, p, request, &model);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(Twister, PublishedOutputs) {
  Stream stream;
  make_stream(stream, BRNG_MT19937, {0x123, 0x234, 0x345, 0x456});
  const std::vector<uint32_t> words = draw_words(stream, 1000);
  KnownAnswers known;
  const auto first = known.block("mt19937 seed words 0x123", 20);
  const auto last = known.block("mt19937 same stream, words 996", 5);
  EXPECT_TRUE(std::equal(first.begin(), first.end(), words.begin()));
  EXPECT_TRUE(std::equal(last.begin(), last.end(), words.end() - 5));
}

TEST(Twister, IndexAfterRequests) {
  const struct {
    int32_t brng;
    std::vector<int32_t> requests;
    uint32_t index;
  } cases[] = {
      {BRNG_MT19937, {}, 624},         {BRNG_MT19937, {1}, 1},
      {BRNG_MT19937, {624}, 624},      {BRNG_MT19937, {624, 1}, 1},
      {BRNG_MT19937, {625}, 624},      {BRNG_MT19937, {600, 25}, 1},
      {BRNG_MT19937, {100, 700}, 624}, {BRNG_MT19937, {2000, 2000, 3}, 3},
      {BRNG_MT2203, {69}, 69},         {BRNG_MT2203, {70}, 69},
      {BRNG_MT2203, {60, 10}, 1},      {BRNG_MT2203, {1000, 2}, 2},
  };
  for (const auto& [brng, requests, index] : cases) {
    Stream stream(brng);
    for (const int32_t n : requests) draw_words(stream, n);
    EXPECT_EQ(state_words(stream)[brng == BRNG_MT19937 ? 624 : 69], index)
        << testing::PrintToString(requests);
  }
}

TEST(Twister, SeedsOfAnyNumberAreAllUsed) {
  for (const Parameters& p : twisters) {
    for (const size_t count : {0, 1, 2, 68, 69, 70, 623, 624, 625, 2000}) {
      SCOPED_TRACE(testing::Message() << std::hex << p.brng << " seeds " << std::dec << count);
      Seeds seeds;
      for (size_t i = 0; i < count; ++i)
        seeds.push_back(static_cast<uint32_t>(0xFFFFFFFF - 97 * i));
      Stream stream;
      make_stream(stream, p.brng, seeds);
      expect_state(stream, p, model_of(p, seeds, 0));
    }
  }
}

TEST(Twister, SubGeneratorsShareTheSeededTableAndDifferInTheirSequences) {
  std::vector<std::vector<uint32_t>> sequences;
  for (const Parameters& p : twisters) {
    if (p.brng == BRNG_MT19937) continue;
    Stream stream(p.brng, 5);
    const uint32_t* state = state_words(stream);
    const std::vector<uint32_t> table(state, state + 69);
    EXPECT_EQ(table, seeded_table(69, {5}));
    EXPECT_EQ(std::vector<uint32_t>(state + 70, state + 73),
              (std::vector<uint32_t>{p.a, p.b, p.c}));
    sequences.push_back(draw_words(stream, 1000));
  }
  for (size_t i = 0; i < sequences.size(); ++i) {
    for (size_t k = 0; k < i; ++k) {
      int same = 0;
      for (size_t w = 0; w < 1000; ++w) same += sequences[i][w] == sequences[k][w];
      EXPECT_LE(same, 1) << i << " " << k;
    }
  }
}

TEST(Twister, AnIndexPastTheTableMeansUsedUp) {
  Stream broken(BRNG_MT19937), fresh(BRNG_MT19937);
  const_cast<uint32_t*>(state_words(broken))[624] = 0xFFFFFFFF;
  EXPECT_EQ(draw_words(broken, 700), draw_words(fresh, 700));
}

TEST(Twister, OnlySeedingIsOffered) {
  for (const Parameters& p : twisters) expect_refusals(p.brng);
}

TEST(Twister, DoublesAreUniform) {
  for (const Parameters& p : twisters) expect_uniform(p.brng);
}

}  // namespace
}  // namespace orv_test
