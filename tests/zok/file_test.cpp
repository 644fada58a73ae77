// Streams in files: the bytes, what is accepted, every failure.
//
// One build's files are another's: with ORV_STREAM_FILES_OUT naming an existing folder, the test
// StreamFiles.AreWrittenForAnotherBuild leaves a file and the numbers that follow it for each
// generator; with ORV_STREAM_FILES_IN, StreamFiles.OfAnotherBuildGoOnExactly checks such a folder.
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "stream_support.hpp"

using namespace orv_test;

namespace {

/// Which of the thread's calls of the C library is to fail, from 1; 0 for none.
thread_local int failing_write, failing_close;
thread_local int writes, closes;

template <class Function>
Function next_definition(const char* name, Function) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// In front of the C library's, for the stream files of this program as well.
extern "C" size_t fwrite(const void* data, size_t size, size_t count, FILE* file) {
  static const auto real = next_definition("fwrite", &fwrite);
  if (++writes == failing_write) return 0;
  return real(data, size, count, file);
}
extern "C" int fclose(FILE* file) {
  static const auto real = next_definition("fclose", &fclose);
  const int result = real(file);
  return ++closes == failing_close ? EOF : result;
}

namespace {

std::string read_file(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}
void write_file(const std::string& name, const std::string& bytes) {
  std::ofstream(name, std::ios::binary).write(bytes.data(), bytes.size());
}

template <class T>
T field(const std::string& bytes, size_t at) {
  T value;
  memcpy(&value, bytes.data() + at, sizeof value);
  return value;
}
template <class T>
void set_field(std::string& bytes, size_t at, T value) {
  memcpy(bytes.data() + at, &value, sizeof value);
}

class StreamFiles : public testing::Test {
 protected:
  /// Loads these bytes in place of another stream, which only a failure deletes.
  int32_t load_bytes(const std::string& bytes) {
    write_file(name, bytes);
    stream.reset();
    const uint32_t seed = 1;
    __zokNewStreamEx(&stream, BRNG_MCG31M1, 1, &seed);
    StreamState* old = stream;
    const int32_t status = load(&stream, name);
    EXPECT_EQ(stream == nullptr, status < 0) << status;
    if (status == RNG_OK) {
      EXPECT_NE(stream, old);
      EXPECT_EQ(__zokDeleteStream(&old), RNG_OK);
    }
    return status;
  }

  const MemoryFile memory;
  const std::string name = memory.name();
  Stream stream;
};

std::string saved(const std::string& name, int32_t brng, int chunks) {
  Stream stream(brng);
  draw_doubles(stream, 7);
  for (int id = 1; id <= chunks; ++id) EXPECT_EQ(add_chunk(stream, id, id * 11), RNG_OK);
  EXPECT_EQ(save(stream, name), RNG_OK);
  return read_file(name);
}

TEST_F(StreamFiles, HoldHeaderStateAndChunks) {
  for (const Generator& g : generators) {
    Stream source(g.brng);
    const uint32_t size = properties_of(g.brng).StateSize;
    std::string header(16, '\0');
    header.replace(0, 6, std::string("\0RNG\x10\0", 6));
    set_field(header, 6, static_cast<uint16_t>(size - 16));
    set_field(header, 12, g.brng);
    const std::string state(reinterpret_cast<const char*>(static_cast<StreamState*>(source)) + 16,
                            size - 16);
    ASSERT_EQ(save(source, name), RNG_OK);
    EXPECT_EQ(read_file(name), header + state) << g.name;

    add_chunk(source, 'a', 3);
    add_chunk(source, 'b', 0);
    set_field(header, 8, static_cast<uint16_t>(2));
    const std::string chunks("b\0\0\0\0\0\0\0a\0\0\0\3\0\0\0aaa", 19);
    ASSERT_EQ(save(source, name), RNG_OK);
    EXPECT_EQ(read_file(name), header + state + chunks) << g.name;
  }
}

TEST_F(StreamFiles, ChunkCountHas16Bits) {
  Stream source(BRNG_MCG31M1);
  for (int i = 0; i < 0x10002; ++i) __zokAddChunk(source, i, nullptr, 0);
  ASSERT_EQ(save(source, name), RNG_OK);
  EXPECT_EQ(read_file(name).size(), 24u + 8 * 0x10002);
  ASSERT_EQ(load(&stream, name), RNG_OK);
  EXPECT_EQ(__zokGetNumChunks(stream), 2);
  EXPECT_NE(__zokSearchChunk(stream, 0x10001), nullptr);
}

TEST_F(StreamFiles, NamesHaveALengthOrAnEnd) {
  const Stream source(BRNG_MCG59);
  const std::string longer = name + "xyz";
  const auto length = static_cast<int32_t>(name.size());
  ASSERT_EQ(__zokSaveStreamF(source, longer.data(), length), RNG_OK);
  EXPECT_EQ(access(name.c_str(), F_OK), 0);
  EXPECT_NE(access(longer.c_str(), F_OK), 0);
  EXPECT_EQ(__zokLoadStreamF(&stream, longer.data(), length), RNG_OK);
  EXPECT_EQ(__zokLoadStreamF(&stream, longer.data(), -1), RNG_FILE_OPEN);
  EXPECT_EQ(stream, nullptr) << "also this failure deletes a stream";
  EXPECT_EQ(__zokLoadStreamF(&stream, longer.data(), 0), RNG_FILE_OPEN);
  EXPECT_EQ(__zokSaveStreamF(source, longer.data(), 0), RNG_FILE_OPEN);
  EXPECT_EQ(save(source, "no such folder/file"), RNG_FILE_OPEN);
  EXPECT_EQ(load(&stream, "."), RNG_FILE_READ);
}

/// What loading these bytes must answer.
int32_t expected_status(const std::string& bytes) {
  if (bytes.size() < 16) return RNG_FILE_READ;
  if (bytes.substr(1, 3) != "RNG") return RNG_BAD_FILE_FORMAT;
  if (bytes[0] != 0) return RNG_UNSUPPORTED_FILE_VERSION;
  BrngProperties p;
  const auto brng = field<int32_t>(bytes, 12);
  if (brng < 0 || __zokGetBrngProperties(brng, &p) < 0) return RNG_BAD_FILE_FORMAT;
  const auto state = field<uint16_t>(bytes, 6);
  if (field<uint16_t>(bytes, 4) < 16 || state != p.StateSize - 16) return RNG_BAD_FILE_FORMAT;
  size_t left = bytes.size() - 16;
  if (left < state) return RNG_FILE_READ;
  left -= state;
  for (int count = field<uint16_t>(bytes, 8); count > 0; --count) {
    if (left < 8) return RNG_FILE_READ;
    const auto size = field<uint32_t>(bytes, bytes.size() - left + 4);
    left -= 8;
    if (left < size) return RNG_FILE_READ;
    left -= size;
  }
  return RNG_OK;
}

TEST_F(StreamFiles, CutAnywhereAreRefused) {
  for (const Generator& g : generators) {
    const std::string whole = saved(name, g.brng, 2);
    for (size_t size = 0; size < whole.size(); ++size) {
      const bool amid_state = size >= 40 && size + 51 < whole.size();
      if (amid_state && size % 7 != 0) continue;
      ASSERT_EQ(load_bytes(whole.substr(0, size)), RNG_FILE_READ) << g.name << " at " << size;
    }
    EXPECT_EQ(load_bytes(whole), RNG_OK);
    EXPECT_EQ(load_bytes(whole + "more"), RNG_OK) << "nobody looks for the end";
  }
}

TEST_F(StreamFiles, WithABitFlippedGiveTheStatusOfTheirContents) {
  constexpr uint32_t too_large_perhaps = 1u << 28;
  for (const Generator& g : generators) {
    const std::string whole = saved(name, g.brng, 2);
    const size_t state_end = 16 + state_bytes(g.brng);
    for (size_t bit = 0; bit < 8 * whole.size(); ++bit) {
      if (bit / 8 >= 20 && bit / 8 < state_end - 4) continue;  // the state may be anything
      std::string bytes = whole;
      bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
      SCOPED_TRACE(testing::Message() << g.name << " bit " << bit);
      const int32_t expected = expected_status(bytes);
      const int32_t status = load_bytes(bytes);
      if (status == RNG_NO_MEMORY) {
        const bool second = bit / 8 >= state_end + 8 + 22;
        const size_t size_at = second ? state_end + 8 + 22 + 4 : state_end + 4;
        ASSERT_GE(field<uint32_t>(bytes, size_at), too_large_perhaps);
        ASSERT_EQ(expected, RNG_FILE_READ);
        continue;
      }
      ASSERT_EQ(status, expected);
      if (status < 0) continue;
      ASSERT_EQ(stream->Brng, field<int32_t>(bytes, 12));
      ASSERT_EQ(__zokGetNumChunks(stream), field<uint16_t>(bytes, 8));
      ASSERT_EQ(memcmp(static_cast<StreamState*>(stream) + 1, bytes.data() + 16, state_end - 16),
                0);
    }
  }
}

TEST_F(StreamFiles, HeadersAreChecked) {
  const std::string good = saved(name, BRNG_MCG59, 1);
  std::string bytes = good;
  bytes[0] = 1, bytes[3] = 'H';
  EXPECT_EQ(load_bytes(bytes), RNG_BAD_FILE_FORMAT) << "not the version, which comes later";
  for (const uint16_t header : {15, 17, 64, 0xFFFF}) {
    bytes = good;
    set_field(bytes, 4, header);
    EXPECT_EQ(load_bytes(bytes), header < 16 ? RNG_BAD_FILE_FORMAT : RNG_OK) << header;
  }
  for (const int32_t brng : {-1, INT32_MIN, 279, 0x400001, 0x7FF00000, 0, 3}) {
    bytes = good;
    set_field(bytes, 12, brng);
    EXPECT_EQ(load_bytes(bytes), brng == 3 ? RNG_OK : RNG_BAD_FILE_FORMAT) << brng;
  }
}

TEST_F(StreamFiles, EveryFailingWriteEndsTheSaving) {
  Stream source(BRNG_MT19937);
  for (int id = 1; id <= 2; ++id) add_chunk(source, id, 30);
  const int items = 2 + 2 * 3;
  for (int failing = 1; failing <= items + 1; ++failing) {
    for (const bool close_fails : {false, true}) {
      writes = closes = 0;
      failing_write = failing;
      failing_close = close_fails ? 1 : 0;
      const int32_t status = save(source, name);
      failing_write = failing_close = 0;
      EXPECT_EQ(status, close_fails ? RNG_FILE_CLOSE : failing <= items ? RNG_FILE_WRITE : RNG_OK);
      EXPECT_EQ(writes, failing <= items ? failing : items) << "one item a call";
      EXPECT_EQ(closes, 1);
    }
  }
  EXPECT_EQ(save(source, "/dev/full"), RNG_FILE_CLOSE);
  ASSERT_EQ(save(source, name), RNG_OK);
  ASSERT_EQ(load(&stream, name), RNG_OK);
  EXPECT_TRUE(future_of(source) == future_of(stream));
}

TEST_F(StreamFiles, AFailureToCloseOutweighsALoad) {
  const std::string good = saved(name, BRNG_WH, 1);
  for (const std::string& bytes : {good, good.substr(0, 30)}) {
    write_file(name, bytes);
    closes = 0;
    failing_close = 1;
    const int32_t status = load(&stream, name);
    failing_close = 0;
    EXPECT_EQ(status, RNG_FILE_CLOSE);
    EXPECT_EQ(stream, nullptr);
  }
}

// ---- From build to build -----------------------------------------------------------------------

TEST_F(StreamFiles, AreWrittenForAnotherBuild) {
  const char* const folder = getenv("ORV_STREAM_FILES_OUT");
  if (folder == nullptr) GTEST_SKIP() << "ORV_STREAM_FILES_OUT names no folder";
  for (const Generator& g : generators) {
    const std::string path = std::string(folder) + "/" + g.name;
    Stream source(g.brng);
    draw_doubles(source, 123);
    add_chunk(source, 'c', 50);
    ASSERT_EQ(save(source, path + ".stream"), RNG_OK);
    write_file(path + ".numbers", future_of(source));
  }
}

TEST_F(StreamFiles, OfAnotherBuildGoOnExactly) {
  const char* const folder = getenv("ORV_STREAM_FILES_IN");
  if (folder == nullptr) GTEST_SKIP() << "ORV_STREAM_FILES_IN names no folder";
  if (access((std::string(folder) + "/" + generators[0].name + ".numbers").c_str(), R_OK) != 0) {
    GTEST_SKIP() << "no files in " << folder << " yet";
  }
  for (const Generator& g : generators) {
    SCOPED_TRACE(g.name);
    const std::string path = std::string(folder) + "/" + g.name;
    stream.reset();
    ASSERT_EQ(load(&stream, path + ".stream"), RNG_OK);
    EXPECT_EQ(stream->Brng, g.brng);
    expect_chunk(stream, 'c', 50);
    EXPECT_EQ(read_file(path + ".numbers"), future_of(stream));
  }
}

}  // namespace
