// Plain scalar forms of the twisters, and what they say of any sequence of requests: the numbers
// and the state afterwards.
#pragma once

#include <gtest/gtest.h>
#include <string.h>

#include <algorithm>
#include <limits>
#include <random>
#include <vector>

#include "stream_support.hpp"

namespace orv_test {

using Seeds = std::vector<uint32_t>;

/// A register of `length` words that moves on by whole blocks. The words, before tempering, stand
/// in one array from the seeded table on; the stream's table is a window on it.
struct Register {
  int32_t length, block;
  std::vector<uint32_t> raw;
  size_t window = 0;   // where the table starts
  uint32_t index = 0;  // in the table

  /// Position in `raw` of the n words delivered next.
  size_t take(int32_t n) {
    const size_t from = window + index, total = index + static_cast<size_t>(n);
    if (n > length) {
      window += total - length;
      index = length;
    } else if (total > static_cast<size_t>(length)) {
      window += length;
      index = static_cast<uint32_t>(total - length);
    } else {
      index += n;
    }
    if (window + length > raw.size()) throw std::out_of_range("the model is too short");
    return from;
  }
};

inline const uint32_t* state_words(StreamState* stream) {
  return reinterpret_cast<const uint32_t*>(stream + 1);
}

inline void make_stream(Stream& stream, int32_t brng, const Seeds& seeds) {
  stream.reset();
  ASSERT_EQ(__zokNewStreamEx(&stream, brng, static_cast<int32_t>(seeds.size()), seeds.data()),
            RNG_OK);
}

/// An array between two guards.
template <class T>
class Guarded {
 public:
  explicit Guarded(int32_t n) : all_(n + 2) { memset(all_.data(), 0xA5, all_.size() * sizeof(T)); }
  T* data() { return all_.data() + 1; }
  T operator[](int32_t i) const { return all_[i + 1]; }
  bool intact() const {
    unsigned char rubbish[sizeof(T)];
    memset(rubbish, 0xA5, sizeof rubbish);
    return memcmp(&all_.front(), rubbish, sizeof rubbish) == 0 &&
           memcmp(&all_.back(), rubbish, sizeof rubbish) == 0;
  }

 private:
  std::vector<T> all_;
};

enum class Flavour { words, doubles, floats };

struct Request {
  Flavour flavour;
  int32_t n;
};

constexpr double low = -3, high = 5.7;

/// A request through the row's entry, held against element(i), the i-th number as T.
template <class T, class Draw, class Element>
void expect_elements(int32_t n, const Draw& draw, const Element& element) {
  Guarded<T> r(n);
  ASSERT_EQ(draw(r.data()), RNG_OK);
  EXPECT_TRUE(r.intact());
  for (int32_t i = 0; i < n; ++i) ASSERT_EQ(r[i], element(i)) << "element " << i << " of " << n;
}

template <class Word>
void expect_numbers(StreamState* stream, const Request& request, const Word& word) {
  const BrngProperties row = properties_of(stream->Brng);
  const int32_t n = request.n;
  const auto a = static_cast<float>(low), b = static_cast<float>(high);
  const auto doubles = [&](double* r) { return row.dBRng(stream, n, r, low, high); };
  const auto floats = [&](float* r) { return row.sBRng(stream, n, r, a, b); };
  if (request.flavour == Flavour::doubles) {
    expect_elements<double>(n, doubles, [&](int32_t i) { return word.number(i, low, high); });
  } else {
    expect_elements<float>(n, floats, [&](int32_t i) { return word.number(i, a, b); });
  }
}

/// Requests of every flavour whose sizes straddle what a table of 69 or 624 words, or of 156
/// blocks, can give, in random order.
inline std::vector<Request> mixed_requests(uint32_t seed) {
  std::vector<Request> all;
  for (const int32_t n : {1,   1,   2,   3,   4,   5,   7,   68,   69,   70,   100, 138, 155,
                          156, 157, 158, 311, 312, 313, 621, 622,  623,  624,  625, 626, 627,
                          628, 700, 780, 781, 900, 901, 999, 1000, 1248, 1249, 5000}) {
    for (const Flavour f : {Flavour::words, Flavour::doubles, Flavour::floats}) {
      all.push_back({f, n});
    }
  }
  std::shuffle(all.begin(), all.end(), std::mt19937(seed));
  return all;
}

/// Pearson's statistic of doubles over 16 x 16 cells of successive pairs: 255 degrees of freedom.
inline double pair_statistic(StreamState* stream, int32_t pairs) {
  const std::vector<double> x = draw_doubles(stream, 2 * pairs);
  std::vector<double> cells(256);
  for (int32_t i = 0; i < pairs; ++i) {
    cells[static_cast<size_t>(x[2 * i] * 16) * 16 + static_cast<size_t>(x[2 * i + 1] * 16)] += 1;
  }
  const double expected = pairs / 256.0;
  double sum = 0;
  for (const double cell : cells) sum += (cell - expected) * (cell - expected) / expected;
  return sum;
}

inline void expect_uniform(int32_t brng) {
  Stream stream(brng, 20240229);
  // Fixed seed: within six standard deviations for good, off by thousands for a wrong constant.
  EXPECT_NEAR(pair_statistic(stream, 1 << 20), 255, 6 * 22.6) << brng;
  const std::vector<double> x = draw_doubles(stream, 1 << 20);
  double sum = 0;
  for (const double u : x) sum += u;
  EXPECT_NEAR(sum / (1 << 20), 0.5, 6 * 0.2887 / 1024) << brng;
}

/// Seeding is all that a twister's InitStream does; refusing leaves the stream alone.
inline void expect_refusals(int32_t brng) {
  Stream stream(brng);
  const size_t bytes = state_bytes(brng);
  const std::string before(reinterpret_cast<const char*>(state_words(stream)), bytes);
  const uint32_t params[] = {0, 1};
  for (const auto& [method, status] :
       {std::pair(1, RNG_LEAPFROG_UNSUPPORTED), std::pair(2, RNG_SKIPAHEAD_UNSUPPORTED),
        std::pair(3, RNG_BAD_METHOD), std::pair(-1, RNG_BAD_METHOD)}) {
    EXPECT_EQ(properties_of(brng).InitStream(method, stream, 2, params), status) << method;
  }
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(state_words(stream)), bytes), before);
}

}  // namespace orv_test
