// SFMT19937 beside a plain scalar form of it: words, spare words, centred scaling.
#include <array>
#include <deque>

#include "known_answers.hpp"
#include "twister_models.hpp"

namespace orv_test {
namespace {

constexpr uint32_t length = 624;

std::vector<uint32_t> seeded_table(Seeds key) {
  if (key.empty()) key = {1};
  const auto key_length = static_cast<uint32_t>(key.size());
  std::vector<uint32_t> t(length, 0x8B8B8B8B);
  // One step: factor and operation of the first mixing (^ then +) or of the second (+ then ^).
  const auto step = [&](uint32_t i, bool first, uint32_t more) {
    uint32_t &here = t[i % length], &middle = t[(i + 306) % length];
    uint32_t& beyond = t[(i + 317) % length];
    const uint32_t before = t[(i + 623) % length];
    const uint32_t x = first ? here ^ middle ^ before : here + middle + before;
    uint32_t r = (x ^ x >> 27) * (first ? 1664525 : 1566083941);
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

using Wide = std::array<uint32_t, 4>;

/// A block as one number, moved by 8 bits.
Wide shifted(const uint32_t* x, bool left) {
  Wide r;
  for (int k = 0; k < 4; ++k) {
    r[k] =
        left ? x[k] << 8 | (k > 0 ? x[k - 1] >> 24 : 0) : x[k] >> 8 | (k < 3 ? x[k + 1] << 24 : 0);
  }
  return r;
}

Register model_of(const Seeds& seeds, size_t blocks) {
  constexpr uint32_t mask[] = {0xDFFFFFEF, 0xDDFECB7F, 0xBFFAFFFF, 0xBFFFFFF6};
  std::vector<uint32_t> x = seeded_table(seeds);
  for (size_t i = 0; i < 4 * blocks; i += 4) {
    const size_t end = i + length;
    const Wide a = shifted(&x[i], true), c = shifted(&x[end - 8], false);
    for (size_t k = 0; k < 4; ++k) {
      x.push_back(x[i + k] ^ a[k] ^ (x[i + 4 * 122 + k] >> 11 & mask[k]) ^ c[k] ^
                  x[end - 4 + k] << 18);
    }
  }
  return {static_cast<int32_t>(length), 4, std::move(x), 0, length};
}

/// The register, and the words that a request left of its last block.
struct Model {
  Register table;
  std::deque<uint32_t> spare;

  std::vector<uint32_t> take_words(int32_t n) {
    std::vector<uint32_t> words;
    for (; n > 0 && !spare.empty(); --n, spare.pop_front()) words.push_back(spare.front());
    const int32_t whole = (n + 3) / 4 * 4;
    const auto from = table.raw.begin() + static_cast<std::ptrdiff_t>(table.take(whole));
    words.insert(words.end(), from, from + n);
    spare.insert(spare.end(), from + n, from + whole);
    return words;
  }
};

struct Centred {
  std::vector<uint32_t> words;

  template <class T>
  T number(int32_t i, T a, T b) const {
    const auto m = static_cast<T>((static_cast<double>(a) + b) / 2);
    const auto s = static_cast<T>((static_cast<double>(b) - a) / 4294967296.0);
    const T product = s * static_cast<T>(static_cast<int32_t>(words[i]));
    return m + product;
  }
};

struct Fields {
  uint32_t index, pos, count;
  std::vector<uint32_t> spare;  // those not yet used
};

Fields fields_of(StreamState* stream) {
  const uint32_t* state = state_words(stream) + length;
  Fields f = {state[0], state[4], state[5], {}};
  for (uint32_t k = f.pos; k < f.count && k < 3; ++k) f.spare.push_back(state[1 + k]);
  return f;
}

TEST(Sfmt, AnySplitInAnyFlavourGivesThePlainSequence) {
  for (const uint32_t order : {1u, 2u, 3u, 4u}) {
    SCOPED_TRACE(order);
    const Seeds seeds = {7, order};
    Stream stream;
    make_stream(stream, BRNG_SFMT19937, seeds);
    Model model = {model_of(seeds, 60000), {}};
    for (const Request& request : mixed_requests(order)) {
      if (request.flavour == Flavour::words) {
        const uint32_t* raw = &model.table.raw[model.table.take(4 * request.n)];
        Guarded<uint32_t> r(4 * request.n);
        ASSERT_EQ(properties_of(BRNG_SFMT19937).iBRng(stream, request.n, r.data()), RNG_OK);
        EXPECT_TRUE(r.intact());
        ASSERT_EQ(memcmp(r.data(), raw, 16 * static_cast<size_t>(request.n)), 0) << request.n;
      } else {
        expect_numbers(stream, request, Centred{model.take_words(request.n)});
      }
      if (HasFatalFailure()) return;
      const Fields fields = fields_of(stream);
      EXPECT_EQ(fields.index, model.table.index);
      EXPECT_TRUE(std::equal(fields.spare.begin(), fields.spare.end(), model.spare.begin(),
                             model.spare.end()));
      ASSERT_EQ(memcmp(state_words(stream), &model.table.raw[model.table.window], 4 * length), 0)
          << request.n;
    }
  }
}

TEST(Sfmt, PublishedOutputs) {
  Stream stream;
  make_stream(stream, BRNG_SFMT19937, {0x1234, 0x5678, 0x9abc, 0xdef0});
  EXPECT_EQ(draw_words(stream, 5), KnownAnswers().block("sfmt19937 seed words 0x1234", 20));
}

TEST(Sfmt, FieldsAfterRequests) {
  const auto words = Flavour::words, doubles = Flavour::doubles, floats = Flavour::floats;
  const struct {
    std::vector<Request> requests;
    uint32_t index, pos, count;
  } cases[] = {
      {{}, 624, 0, 0},
      {{{doubles, 1}}, 4, 0, 3},
      {{{doubles, 1}, {doubles, 3}}, 4, 3, 3},
      {{{doubles, 1}, {floats, 2}}, 4, 2, 3},
      {{{doubles, 1}, {words, 1}}, 8, 0, 3},
      {{{doubles, 1}, {words, 156}, {floats, 4}}, 8, 0, 3},
      {{{floats, 2}, {floats, 3}}, 8, 0, 3},
      {{{doubles, 4}}, 4, 0, 0},
      {{{doubles, 624}}, 624, 0, 0},
      {{{doubles, 625}}, 624, 0, 3},
      {{{doubles, 621}, {doubles, 4}}, 4, 0, 3},
      {{{floats, 626}, {doubles, 2}}, 624, 2, 2},
      {{{words, 156}}, 624, 0, 0},
      {{{words, 157}}, 624, 0, 0},
      {{{words, 150}, {words, 7}}, 4, 0, 0},
  };
  int row = 0;
  for (const auto& [requests, index, pos, count] : cases) {
    Stream stream(BRNG_SFMT19937);
    for (const auto& [flavour, n] : requests) {
      const BrngProperties p = properties_of(BRNG_SFMT19937);
      std::vector<double> r(2 * n);
      if (flavour == words) p.iBRng(stream, n, reinterpret_cast<uint32_t*>(r.data()));
      if (flavour == doubles) p.dBRng(stream, n, r.data(), 0, 1);
      if (flavour == floats) p.sBRng(stream, n, reinterpret_cast<float*>(r.data()), 0, 1);
    }
    const Fields f = fields_of(stream);
    EXPECT_EQ(f.index, index) << "row " << row;
    EXPECT_EQ(f.pos, pos) << "row " << row;
    EXPECT_EQ(f.count, count) << "row " << row;
    ++row;
  }
}

TEST(Sfmt, SeedsOfAnyNumberAreAllUsed) {
  for (const size_t count : {0, 1, 2, 3, 4, 622, 623, 624, 625, 2000}) {
    Seeds seeds;
    for (size_t i = 0; i < count; ++i) seeds.push_back(static_cast<uint32_t>(0xFFFFFFFF - 97 * i));
    Stream stream;
    make_stream(stream, BRNG_SFMT19937, seeds);
    EXPECT_EQ(memcmp(state_words(stream), seeded_table(seeds).data(), 4 * length), 0) << count;
    EXPECT_EQ(fields_of(stream).index, length);
  }
}

TEST(Sfmt, ScalingIsCentred) {
  const std::vector<uint32_t> words = {0, 0x80000000, 0x7FFFFFFF, 1, 0xFFFFFFFF, 0x40000000, 0, 0};
  for (const auto& [a, b] : {std::pair(0.0, 1.0), std::pair(-3.0, 5.0)}) {
    Stream stream(BRNG_SFMT19937);
    auto* state = const_cast<uint32_t*>(state_words(stream));
    const double s = (b - a) / 4294967296.0, m = (a + b) / 2;
    const double expected[] = {m, a, b - s, m + s, m - s, m + (b - a) / 4};
    std::copy(words.begin(), words.end(), state);
    double d[6];
    float f[6];
    state[length] = 0;
    ASSERT_EQ(properties_of(BRNG_SFMT19937).dBRng(stream, 6, d, a, b), RNG_OK);
    state[length] = state[length + 4] = state[length + 5] = 0;
    ASSERT_EQ(properties_of(BRNG_SFMT19937)
                  .sBRng(stream, 6, f, static_cast<float>(a), static_cast<float>(b)),
              RNG_OK);
    for (int i = 0; i < 6; ++i) {
      EXPECT_EQ(d[i], expected[i]) << i;
      EXPECT_EQ(f[i], static_cast<float>(expected[i])) << i;
    }
  }
}

TEST(Sfmt, FieldsOutOfRangeAreHarmless) {
  Stream broken(BRNG_SFMT19937), fresh(BRNG_SFMT19937);
  auto* state = const_cast<uint32_t*>(state_words(broken)) + length;
  state[0] = 0xFFFFFFFF;
  state[4] = 1000;
  state[5] = 0xFFFFFFFF;
  EXPECT_EQ(draw_doubles(broken, 700), draw_doubles(fresh, 700));
}

TEST(Sfmt, OnlySeedingIsOffered) { expect_refusals(BRNG_SFMT19937); }

TEST(Sfmt, DoublesAreUniform) { expect_uniform(BRNG_SFMT19937); }

}  // namespace
}  // namespace orv_test
