// SPDX-License-Identifier: MIT
// What the tests of streams share: the generators, streams that end with their scope, a generator
// that tells what it was asked, draws as plain vectors.
#pragma once

#include <gtest/gtest.h>
#include <orv/serv.h>
#include <orv/zok.h>
#include <string.h>
#include <sys/mman.h>

#include <string>
#include <type_traits>
#include <vector>

namespace orv_test {

/// A generator of each family that can be created from seeds.
inline constexpr int32_t generators[] = {
    BRNG_MCG31M1, BRNG_R250,    BRNG_MRG32K3A,     BRNG_MCG59,
    BRNG_WH + 5,  BRNG_MT19937, BRNG_MT2203 + 700, BRNG_SFMT19937,
};

/// Those of low discrepancy, in one dimension with the seeds below.
inline constexpr int32_t quasi_generators[] = {BRNG_SOBOL, BRNG_NIEDERR};

inline BrngProperties properties_of(int32_t brng) {
  BrngProperties properties = {};
  EXPECT_EQ(__zokGetBrngProperties(brng, &properties), RNG_OK) << brng;
  return properties;
}

/// Deletes its stream, if any.
class Stream {
 public:
  Stream() = default;
  explicit Stream(int32_t brng, const std::vector<uint32_t>& seeds = {4711}) {
    const auto count = static_cast<int32_t>(seeds.size());
    EXPECT_EQ(__zokNewStreamEx(&stream_, brng, count, seeds.data()), RNG_OK) << brng;
  }
  Stream& operator=(Stream&&) = delete;
  ~Stream() { __zokDeleteStream(&stream_); }

  operator StreamState*() const { return stream_; }
  StreamState* operator->() const { return stream_; }
  StreamState** operator&() { return &stream_; }

 private:
  StreamState* stream_ = nullptr;
};

inline std::string state_of(StreamState* stream) {
  const size_t size = properties_of(stream->Brng).StateSize - sizeof(StreamState);
  return {reinterpret_cast<const char*>(stream + 1), size};
}

template <class T>
int32_t uniform(int32_t method, StreamState* stream, int32_t n, T* r, T a, T b) {
  if constexpr (std::is_integral_v<T>) return _zokiRngUniformBits(method, stream, n, r);
  if constexpr (std::is_same_v<T, double>) return _zokdRngUniform(method, stream, n, r, a, b);
  if constexpr (std::is_same_v<T, float>) return _zoksRngUniform(method, stream, n, r, a, b);
}

template <class T>
std::vector<T> draw(StreamState* stream, int32_t n, int32_t width = 1) {
  std::vector<T> r(n * width);
  EXPECT_EQ(uniform<T>(0, stream, n, r.data(), 0, 1), RNG_OK);
  return r;
}
inline std::vector<uint32_t> draw_words(StreamState* stream, int32_t n) {
  return draw<uint32_t>(stream, n, properties_of(stream->Brng).WordSize / 4);
}

/// The numbers that follow, as bytes.
inline std::string future_of(StreamState* stream) {
  const std::vector<uint32_t> words = draw_words(stream, 2000);
  const std::vector<double> doubles = draw<double>(stream, 100);
  return std::string(reinterpret_cast<const char*>(words.data()), 4 * words.size()) +
         std::string(reinterpret_cast<const char*>(doubles.data()), 8 * doubles.size());
}

/// Hangs chunks on a stream, with identifiers from 1 to `count`, of `size` bytes for each unit of
/// the identifier, which all of their bytes hold.
inline void add_chunks(StreamState* stream, int count, int32_t size = 40) {
  for (int id = 1; id <= count; ++id) {
    void* const data = orv_serv_orv_malloc(id * size, 32);
    EXPECT_EQ(__zokAddChunk(stream, id, memset(data, id, id * size), id * size), RNG_OK);
  }
}

inline void expect_chunks(StreamState* stream, int count, int32_t size = 40) {
  EXPECT_EQ(__zokGetNumChunks(stream), count);
  for (int id = 1; id <= count; ++id) {
    const auto* const data = static_cast<const char*>(__zokSearchChunk(stream, id));
    ASSERT_NE(data, nullptr) << id;
    EXPECT_EQ(std::string(data, id * size), std::string(id * size, static_cast<char>(id)));
  }
}

inline int32_t save(StreamState* stream, const std::string& name) {
  return __zokSaveStreamF(stream, name.c_str(), -1);
}
inline int32_t load(StreamState** stream, const std::string& name) {
  return __zokLoadStreamF(stream, name.c_str(), -1);
}

/// The name of a file without a place on a disk, which the process keeps.
inline std::string memory_file() {
  return "/proc/self/fd/" + std::to_string(memfd_create("stream", 0));
}

/// A registered generator that counts 0, 1, 2, ... and notes what its entries were given.
struct Spy {
  static inline int32_t answer = RNG_OK;    // of every entry
  static inline std::vector<double> given;  // the number of elements, the range

  static uint32_t& next(StreamState* stream) { return *reinterpret_cast<uint32_t*>(stream + 1); }

  static int32_t init(int32_t, StreamState* stream, int32_t, const uint32_t*) {
    next(stream) = 0;
    return answer;
  }
  template <class T, class... Range>
  static int32_t numbers(StreamState* stream, int32_t count, T* r, Range... range) {
    given = {static_cast<double>(count), range...};
    for (int32_t i = 0; i < count; ++i) r[i] = static_cast<T>(next(stream)++);
    return answer;
  }

  static constexpr BrngProperties properties = {
      24, 1, 1, 4, 32, init, numbers<float>, numbers<double>, numbers<uint32_t>};

  /// Registered once in a program.
  static int32_t brng() {
    static const int32_t identifier = __zokRegisterBrng(&properties);
    return identifier;
  }
};

}  // namespace orv_test
