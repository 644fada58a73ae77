// What the tests of streams share: the generators, streams that end with their scope, a generator
// that tells what it was asked, draws as plain vectors.
#pragma once

#include <gtest/gtest.h>
#include <orv/serv.h>
#include <orv/zok.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <string>
#include <vector>

namespace orv_test {

struct Generator {
  const char* name;
  int32_t brng;
};

/// A generator of each family that can be created from seeds.
inline constexpr Generator generators[] = {
    {"MCG31M1", BRNG_MCG31M1},     {"R250", BRNG_R250},           {"MRG32K3A", BRNG_MRG32K3A},
    {"MCG59", BRNG_MCG59},         {"WH", BRNG_WH + 5},           {"MT19937", BRNG_MT19937},
    {"MT2203", BRNG_MT2203 + 700}, {"SFMT19937", BRNG_SFMT19937},
};

inline BrngProperties properties_of(int32_t brng) {
  BrngProperties properties = {};
  EXPECT_EQ(__zokGetBrngProperties(brng, &properties), RNG_OK) << brng;
  return properties;
}

inline size_t state_bytes(int32_t brng) {
  return static_cast<size_t>(properties_of(brng).StateSize) - sizeof(StreamState);
}

/// Deletes its stream, if any.
class Stream {
 public:
  Stream() = default;
  explicit Stream(int32_t brng, uint32_t seed = 4711) : Stream(brng, std::vector{seed}) {}
  Stream(int32_t brng, const std::vector<uint32_t>& seeds) {
    const auto count = static_cast<int32_t>(seeds.size());
    EXPECT_EQ(__zokNewStreamEx(&stream_, brng, count, seeds.data()), RNG_OK) << brng;
  }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() { reset(); }

  operator StreamState*() const { return stream_; }
  StreamState* get() const { return stream_; }
  StreamState* operator->() const { return stream_; }
  StreamState** operator&() { return &stream_; }
  void reset() {
    if (stream_ != nullptr) __zokDeleteStream(&stream_);
  }

 private:
  StreamState* stream_ = nullptr;
};

inline std::vector<uint32_t> draw_words(StreamState* stream, int32_t n) {
  std::vector<uint32_t> r(static_cast<size_t>(n) * properties_of(stream->Brng).WordSize / 4);
  EXPECT_EQ(_zokiRngUniformBits(0, stream, n, r.data()), RNG_OK);
  return r;
}

inline std::vector<double> draw_doubles(StreamState* stream, int32_t n) {
  std::vector<double> r(n);
  EXPECT_EQ(_zokdRngUniform(0, stream, n, r.data(), 0, 1), RNG_OK);
  return r;
}

/// The numbers that follow, as bytes.
inline std::string future_of(StreamState* stream) {
  const std::vector<uint32_t> words = draw_words(stream, 2000);
  const std::vector<double> doubles = draw_doubles(stream, 100);
  return std::string(reinterpret_cast<const char*>(words.data()), 4 * words.size()) +
         std::string(reinterpret_cast<const char*>(doubles.data()), 8 * doubles.size());
}

/// Hangs a chunk of `size` bytes on a stream, all of them the value of its identifier.
inline void add_chunk(StreamState* stream, uint32_t id, int32_t size) {
  void* const data = orv_serv_orv_malloc(size, 32);
  memset(data, static_cast<int>(id), size);
  EXPECT_EQ(__zokAddChunk(stream, id, data, size), RNG_OK);
}

inline void expect_chunk(StreamState* stream, uint32_t id, size_t size) {
  const auto* const data = static_cast<const char*>(__zokSearchChunk(stream, id));
  ASSERT_NE(data, nullptr) << id;
  EXPECT_EQ(std::string(data, size), std::string(size, static_cast<char>(id)));
}

inline int32_t save(StreamState* stream, const std::string& name) {
  return __zokSaveStreamF(stream, name.c_str(), -1);
}
inline int32_t load(StreamState** stream, const std::string& name) {
  return __zokLoadStreamF(stream, name.c_str(), -1);
}

template <class T>
int32_t uniform(int32_t method, StreamState* stream, int32_t n, T* r, T a, T b) {
  if constexpr (sizeof(T) == 8) return _zokdRngUniform(method, stream, n, r, a, b);
  if constexpr (sizeof(T) == 4) return _zoksRngUniform(method, stream, n, r, a, b);
}

/// A file without a place on a disk.
class MemoryFile {
 public:
  MemoryFile() : handle_(memfd_create("stream", 0)) { EXPECT_GE(handle_, 0); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { close(handle_); }

  std::string name() const { return "/proc/self/fd/" + std::to_string(handle_); }

 private:
  int handle_;
};

/// A registered generator that counts 0, 1, 2, ... and notes what its entries were given.
struct Spy {
  static inline int32_t answer = RNG_OK;  // of every entry
  static inline int32_t n;
  static inline double a, b;

  struct State {
    uint32_t next;
  };

  static State& state(StreamState* stream) { return *reinterpret_cast<State*>(stream + 1); }

  static int32_t init(int32_t, StreamState* stream, int32_t, const uint32_t*) {
    state(stream).next = 0;
    return answer;
  }
  template <class T>
  static int32_t numbers(StreamState* stream, int32_t count, T* r, T from, T to) {
    a = from;
    b = to;
    n = count;
    for (int32_t i = 0; i < count; ++i) r[i] = static_cast<T>(state(stream).next++);
    return answer;
  }
  static int32_t words(StreamState* stream, int32_t count, uint32_t* r) {
    n = count;
    for (int32_t i = 0; i < count; ++i) r[i] = state(stream).next++;
    return answer;
  }

  static constexpr BrngProperties properties = {
      24, 1, 1, 4, 32, init, numbers<float>, numbers<double>, words};

  /// Registered once in a program.
  static int32_t brng() {
    static const int32_t identifier = __zokRegisterBrng(&properties);
    return identifier;
  }
};

}  // namespace orv_test
