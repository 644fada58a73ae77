// SPDX-License-Identifier: MIT
// Random streams as values, which are also uniform random bit generators of the C++ library.
//
//     orv::stream s(orv::mt19937, 7);
//     std::shuffle(v.begin(), v.end(), s);
//     s.fill(y);                                        // uniform on [0, 1)
//     orv::sample(s, orv::normal{.mean = 5, .sd = 2}, y);
//
// A stream has one user at a time; streams_for_threads() makes one for each of several.
#pragma once

#include <orv/zok.h>
#include <orv/error.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace orv {

/// The identifier of a basic generator, see the BRNG_ constants of orv/zok.h.
struct generator {
  int32_t brng;
  friend constexpr bool operator==(generator, generator) = default;
};

inline constexpr generator mcg31m1{BRNG_MCG31M1}, r250{BRNG_R250}, mrg32k3a{BRNG_MRG32K3A},
    mcg59{BRNG_MCG59}, mt19937{BRNG_MT19937}, sfmt19937{BRNG_SFMT19937};
/// Points of low discrepancy; the seed is the number of dimensions.
inline constexpr generator sobol{BRNG_SOBOL}, niederr{BRNG_NIEDERR};

namespace detail {
constexpr generator member(const char* family, int32_t brng, int32_t which, int32_t members) {
  if (which < 0 || which >= members) {
    fail(RNG_INVALID_BRNG, family,
         "member " + std::to_string(which) + "; allowed is 0 to " + std::to_string(members - 1));
  }
  return {brng + which};
}
inline constexpr int32_t wh_members = 273, mt2203_members = 1024;
}  // namespace detail

/// Families of independent generators.
constexpr generator wh(int32_t which = 0) {
  return detail::member("wh", BRNG_WH, which, detail::wh_members);
}
constexpr generator mt2203(int32_t which = 0) {
  return detail::member("mt2203", BRNG_MT2203, which, detail::mt2203_members);
}

class stream {
 public:
  using result_type = uint32_t;

  explicit stream(generator g, uint32_t seed = 1) : stream(g, std::span(&seed, 1)) {}
  stream(generator g, std::initializer_list<uint32_t> seeds)
      : stream(g, std::span(seeds.begin(), seeds.size())) {}
  stream(generator g, std::span<const uint32_t> seeds) {
    if (g.brng < 0) detail::check_stream(RNG_INVALID_BRNG, "stream");
    const int32_t status =
        __zokNewStreamEx(&state_, g.brng, static_cast<int32_t>(seeds.size()), seeds.data());
    if (status != RNG_OK) __zokDeleteStream(&state_);
    detail::check_stream(status, "stream");
    find_kind();
  }
  /// Takes a stream of the C interface over, as those of a program's own numbers.
  explicit stream(StreamState* adopted) : state_(adopted) { find_kind(); }

  stream(const stream& other) : kind_(other.kind_) {
    detail::check_stream(__zokCopyStream(&state_, other.valid("stream")), "stream");
  }
  stream(stream&& other) noexcept
      : state_(std::exchange(other.state_, nullptr)), kind_(other.kind_) {}
  stream& operator=(stream other) noexcept {
    std::swap(state_, other.state_);
    std::swap(kind_, other.kind_);
    return *this;
  }
  ~stream() { __zokDeleteStream(&state_); }

  /// For functions of the C interface; null after the stream has been moved away.
  StreamState* get() const noexcept { return state_; }
  generator basic_generator() const { return {__zokGetStreamStateBrng(valid("basic_generator"))}; }

  // ---- Words of 32 random bits ------------------------------------------------------------------

  static constexpr uint32_t min() { return 0; }
  static constexpr uint32_t max() { return std::numeric_limits<uint32_t>::max(); }
  /// The generator's word where that has 32 bits; else the first 32 bits of a double, or for
  /// MCG31M1 16 bits each of two numbers. See `words` for many of them.
  uint32_t operator()() {
    uint32_t word;
    if (kind_ == words_of::generator) [[likely]] {
      detail::check_stream(_zokiRngUniformBits(0, state_, 1, &word), "stream");
    } else {
      fill(std::span(&word, 1));
    }
    return word;
  }

  /// Words as operator() makes them, or floats or doubles uniform on [0, 1). However a request is
  /// split, the numbers are the same.
  template <class Y>
  void fill(Y&& y) {
    using T = std::remove_reference_t<decltype(*std::data(y))>;
    static_assert(
        std::is_same_v<T, uint32_t> || std::is_same_v<T, float> || std::is_same_v<T, double>,
        "streams fill vectors of uint32_t, float or double");
    T* const r = std::data(y);
    if constexpr (std::is_same_v<T, uint32_t>) {
      if (kind_ != words_of::generator) return fill_from_doubles(r, std::size(y));
    }
    in_parts(std::size(y), [&](size_t first, int32_t count) {
      if constexpr (std::is_same_v<T, uint32_t>) {
        return _zokiRngUniformBits(0, state_, count, r + first);
      } else if constexpr (std::is_same_v<T, float>) {
        return _zoksRngUniform(0, state_, count, r + first, 0, 1);
      } else {
        return _zokdRngUniform(0, state_, count, r + first, 0, 1);
      }
    });
  }

  /// Passes over elements of the generator. Which can do so: all congruential ones, MRG32K3A, and
  /// those of low discrepancy, by whole points.
  void skip(uint64_t elements) {
    detail::check_stream(__zokSkipAheadStream(valid("skip"), static_cast<int64_t>(elements)),
                         "skip");
  }
  /// Leaves every n-th element from the k-th on; the congruential generators can.
  void leapfrog(int32_t k, int32_t n) {
    if (n < 1 || k < 0 || k >= n) check_leapfrog(k, n);
    detail::check_stream(__zokLeapfrogStream(valid("leapfrog"), k, n), "leapfrog");
  }
  /// Leaves coordinate k of the points of sobol or niederr.
  void select_coordinate(int32_t k) {
    detail::check_stream(__zokLeapfrogStream(valid("select_coordinate"), k, 0x7FFFFFFF),
                         "select_coordinate");
  }

  /// A file that continues exactly, in either word size.
  void save(const std::string& path) const {
    check_file(__zokSaveStreamF(valid("save"), path.c_str(), -1), "save", path);
  }
  static stream load(const std::string& path) {
    StreamState* state = nullptr;
    check_file(__zokLoadStreamF(&state, path.c_str(), -1), "load", path);
    return stream(state);
  }

  /// Calls draw(first, count), which returns a status, for n elements in parts that the C interface
  /// can count. It is not called for none, which some generators would take for one.
  template <class Draw>
  void in_parts(size_t n, Draw draw, std::string_view function = "fill", size_t width = 1) {
    valid(function);
    const size_t most = std::max((size_t{1} << 30) / width, size_t{1});
    for (size_t first = 0; first < n; first += most) {
      detail::check_stream(draw(first, static_cast<int32_t>(std::min(n - first, most))), function);
    }
  }

 private:
  enum class words_of { generator, doubles, half_words };

  void find_kind() {
    BrngProperties properties = {};
    detail::check_stream(
        __zokGetBrngProperties(__zokGetStreamStateBrng(valid("stream")), &properties), "stream");
    if (properties.WordSize == 4 && properties.NumBits >= 32) return;
    kind_ = properties.NumBits == 31 ? words_of::half_words : words_of::doubles;
  }

  StreamState* valid(std::string_view function) const {
    if (state_ == nullptr) [[unlikely]] {
      detail::fail(RNG_BAD_ARGS, function, "the stream has been moved away");
    }
    return state_;
  }

  void fill_from_doubles(uint32_t* r, size_t n) {
    constexpr size_t block = 256;
    std::array<double, block> u;
    const size_t numbers = kind_ == words_of::half_words ? 2 : 1;
    const double range = numbers == 2 ? 0x1p16 : 0x1p32;
    for (size_t first = 0; first < n; first += block / numbers) {
      const size_t count = std::min(n - first, block / numbers);
      detail::check_stream(_zokdRngUniform(0, valid("fill"), static_cast<int32_t>(count * numbers),
                                           u.data(), 0, range),
                           "fill");
      // A double may have been rounded up to the range's end.
      const auto whole = [&](size_t i) { return static_cast<uint32_t>(std::min(u[i], range - 1)); };
      for (size_t i = 0; i < count; ++i) {
        r[first + i] = numbers == 2 ? whole(2 * i) << 16 | whole(2 * i + 1) : whole(i);
      }
    }
  }

  [[gnu::cold]] static void check_leapfrog(int32_t k, int32_t n) {
    detail::fail(
        RNG_BAD_NSTREAMS, "leapfrog",
        "stream " + std::to_string(k) + " of " + std::to_string(n) + "; they are counted from 0");
  }
  static void check_file(int32_t status, const char* function, const std::string& path) {
    if (status != RNG_OK) {
      detail::fail_with(detail::stream_texts, status, function, "'" + path + "': ");
    }
  }

  StreamState* state_ = nullptr;
  words_of kind_ = words_of::generator;
};

/// Words of a stream from blocks of 256: a faster generator for the algorithms and distributions of
/// the C++ library. The stream is ahead of what has been handed out, by the rest of a block.
class words {
 public:
  using result_type = uint32_t;
  explicit words(stream& source) : source_(&source) {}
  static constexpr uint32_t min() { return stream::min(); }
  static constexpr uint32_t max() { return stream::max(); }
  uint32_t operator()() {
    if (next_ == block_.size()) {
      source_->fill(block_);
      next_ = 0;
    }
    return block_[next_++];
  }

 private:
  stream* source_;
  std::array<uint32_t, 256> block_;
  size_t next_ = block_.size();
};

namespace detail {
/// Seed words for member i of a family, which begins like others that have the same ones. Mixed by
/// SplitMix (Steele, Lea and Flood 2014).
inline std::array<uint32_t, 4> member_seeds(uint32_t seed, size_t i) {
  uint64_t state = uint64_t{seed} << 32 | static_cast<uint32_t>(i);
  std::array<uint32_t, 4> words;
  for (uint32_t& word : words) {
    uint64_t z = state += 0x9E3779B97F4A7C15;
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9;
    z = (z ^ z >> 27) * 0x94D049BB133111EB;
    word = static_cast<uint32_t>((z ^ z >> 31) >> 32);
  }
  return words;
}
}  // namespace detail

/// Streams for k threads, whose numbers don't overlap: members of a family, from the given one on
/// (mt2203, wh), each with seeds of its own that follow from the one given; or parts of one
/// sequence as far apart as its period or 2^63 elements allow (mrg32k3a, mcg59, mcg31m1).
inline std::vector<stream> streams_for_threads(size_t k, generator g = mt2203(),
                                               uint32_t seed = 1) {
  constexpr const char* name = "streams_for_threads";
  const auto member_of = [&](int32_t family, int32_t members) {
    if (g.brng < family || g.brng >= family + members) return false;
    if (k > static_cast<size_t>(family + members - g.brng)) {
      detail::fail(RNG_INVALID_BRNG, name,
                   std::to_string(k) + " streams; the family has " +
                       std::to_string(family + members - g.brng) + " generators from here on");
    }
    return true;
  };
  std::vector<stream> all;
  all.reserve(k);
  if (member_of(BRNG_MT2203, detail::mt2203_members) || member_of(BRNG_WH, detail::wh_members)) {
    for (size_t i = 0; i < k; ++i) {
      const auto seeds = detail::member_seeds(seed, i);
      all.emplace_back(generator{g.brng + static_cast<int32_t>(i)}, std::span(seeds));
    }
    return all;
  }
  const uint64_t period = g == mrg32k3a  ? uint64_t{1} << 63
                          : g == mcg59   ? uint64_t{1} << 57
                          : g == mcg31m1 ? (uint64_t{1} << 31) - 2
                                         : 0;
  if (period == 0) {
    detail::fail(RNG_SKIPAHEAD_UNSUPPORTED, name,
                 "the generator can't be split; take mt2203, wh, mrg32k3a, mcg59 or mcg31m1");
  }
  const uint64_t distance = g == mrg32k3a || k == 0 ? period : period / k;
  for (size_t i = 0; i < k; ++i) {
    if (i == 0) {
      all.emplace_back(g, seed);
    } else {
      all.push_back(all.back());
      all.back().skip(distance);
    }
  }
  return all;
}

}  // namespace orv
