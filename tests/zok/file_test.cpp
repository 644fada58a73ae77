// SPDX-License-Identifier: MIT
// Streams in files: the bytes, what is accepted, every failure.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

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
  return ++writes == failing_write ? 0 : real(data, size, count, file);
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

const std::string name = memory_file();

TEST(StreamFiles, HoldHeaderStateAndChunks) {
  for (const int32_t brng : generators) {
    const Stream source(brng);
    add_chunks(source, 1, 3);
    __zokAddChunk(source, 'b', nullptr, 0);
    const std::string state = state_of(source);
    const uint16_t sizes[] = {16, static_cast<uint16_t>(state.size()), 2, 0};
    std::string expected("\0RNG", 4);
    expected.append(reinterpret_cast<const char*>(sizes), sizeof sizes);
    expected.append(reinterpret_cast<const char*>(&brng), sizeof brng) += state;
    expected.append("b\0\0\0\0\0\0\0\1\0\0\0\3\0\0\0\1\1\1", 19);
    ASSERT_EQ(save(source, name), RNG_OK);
    EXPECT_EQ(read_file(name), expected) << brng;
  }
}

TEST(StreamFiles, ChunkCountHas16Bits) {
  Stream source(BRNG_MCG31M1), stream;
  for (int i = 0; i < 0x10002; ++i) __zokAddChunk(source, i, nullptr, 0);
  ASSERT_EQ(save(source, name), RNG_OK);
  EXPECT_EQ(read_file(name).size(), 24u + 8 * 0x10002);
  ASSERT_EQ(load(&stream, name), RNG_OK);
  EXPECT_EQ(__zokGetNumChunks(stream), 2);
}

TEST(StreamFiles, NamesHaveALengthOrAnEnd) {
  const Stream source(BRNG_MCG59);
  Stream stream;
  const std::string longer = name + "xyz";
  const auto length = static_cast<int32_t>(name.size());
  ASSERT_EQ(__zokSaveStreamF(source, longer.data(), length), RNG_OK);
  EXPECT_EQ(__zokLoadStreamF(&stream, longer.data(), length), RNG_OK);
  EXPECT_EQ(load(&stream, longer), RNG_FILE_OPEN);
  EXPECT_EQ(stream, nullptr) << "also this failure deletes a stream";
  EXPECT_EQ(__zokLoadStreamF(&stream, longer.data(), 0), RNG_FILE_OPEN);
  EXPECT_EQ(__zokSaveStreamF(source, longer.data(), 0), RNG_FILE_OPEN);
  EXPECT_EQ(save(source, "no such folder/file"), RNG_FILE_OPEN);
  EXPECT_EQ(load(&stream, "."), RNG_FILE_READ);
}

/// What loading these bytes may answer.
std::vector<int32_t> expected_status(const std::string& bytes) {
  if (bytes.size() < 16) return {RNG_FILE_READ};
  if (bytes.substr(1, 3) != "RNG") return {RNG_BAD_FILE_FORMAT};
  if (bytes[0] != 0) return {RNG_UNSUPPORTED_FILE_VERSION};
  BrngProperties p;
  const auto brng = field<int32_t>(bytes, 12);
  if (brng < 0 || __zokGetBrngProperties(brng, &p) < 0) return {RNG_BAD_FILE_FORMAT};
  const auto state = field<uint16_t>(bytes, 6);
  if (field<uint16_t>(bytes, 4) < 16 || state != p.StateSize - 16) return {RNG_BAD_FILE_FORMAT};
  int chunks = field<uint16_t>(bytes, 8);
  uint64_t end = 16 + state, size = 0;
  for (; chunks > 0 && end + 8 <= bytes.size(); --chunks, end += 8 + size) {
    size = field<uint32_t>(bytes, end + 4);
  }
  if (chunks == 0 && end <= bytes.size()) return {RNG_OK};
  return {RNG_FILE_READ, size < 1 << 28 ? RNG_FILE_READ : RNG_NO_MEMORY};
}

TEST(StreamFiles, DamagedGiveTheStatusOfTheirContents) {
  std::mt19937 random(1);
  for (const int32_t brng : generators) {
    SCOPED_TRACE(brng);
    Stream source(brng);
    add_chunks(source, 2, 11);
    ASSERT_EQ(save(source, name), RNG_OK);
    const std::string whole = read_file(name);
    const size_t state_size = state_of(source).size(), state_end = 16 + state_size;
    std::vector<std::string> files = {whole, whole + "more"};  // nobody looks for the end
    const auto change = [&](size_t at, auto value) {
      files.push_back(whole);
      memcpy(files.back().data() + at, &value, sizeof value);
    };
    for (size_t size = 0; size < whole.size(); ++size) {
      const bool amid_state = size >= 20 && size < state_end - 4;  // it may be anything
      if (!amid_state || size % 7 == 0) files.push_back(whole.substr(0, size));
      for (int bit = 0; !amid_state && bit < 8; ++bit) {
        change(size, static_cast<char>(whole[size] ^ 1 << bit));
      }
    }
    for (const uint16_t header_size : {15, 17, 64, 0xFFFF}) change(4, header_size);
    for (const int32_t other : {-1, INT32_MIN, 279, 0x400001, 0x7FF00000, 0, 3}) change(12, other);
    change(0, 0x484E5201);  // neither version nor magic is right; the version comes second
    for (int k = 0; k < 2000; ++k) {  // several bytes outside the state, and the end
      files.push_back(whole.substr(0, whole.size() - random() % 3 * (random() % 40)));
      for (int changes = 0; changes < 4; ++changes) {
        const size_t at = random() % 2 ? 4 + random() % 12 : state_end + random() % 40;
        if (at < files.back().size()) files.back()[at] = static_cast<char>(random() % 3);
      }
    }
    for (const std::string& bytes : files) {
      // Another stream is in the place, which only a failure deletes.
      Stream old(BRNG_MCG31M1), stream;
      *&stream = old;
      write_file(name, bytes);
      const int32_t status = load(&stream, name);
      if (status < 0) *&old = nullptr;
      ASSERT_THAT(expected_status(bytes), testing::Contains(status)) << &bytes - files.data();
      ASSERT_EQ(stream == nullptr, status < 0);
      if (status < 0) continue;
      ASSERT_EQ(stream->Brng, field<int32_t>(bytes, 12));
      ASSERT_EQ(__zokGetNumChunks(stream), field<uint16_t>(bytes, 8));
      ASSERT_EQ(state_of(stream), bytes.substr(16, state_size));
    }
  }
}

TEST(StreamFiles, WhatTheyCannotHoldIsRefusedAndTheOldOnesStay) {
  const auto registered = [](int32_t state_size) {
    BrngProperties p = Spy::properties;
    p.StateSize = state_size;
    return __zokRegisterBrng(&p);
  };
  const std::pair<int32_t, int32_t> cases[] = {{-1, RNG_INVALID_BRNG},
                                               {BRNG_MT2203 + 1024, RNG_INVALID_BRNG},
                                               {registered(15), RNG_BAD_FILE_FORMAT},
                                               {registered(0x10010), RNG_BAD_FILE_FORMAT}};
  write_file(name, "old");
  for (const auto& [brng, status] : cases) {
    StreamState source = {brng, 1, 0};
    EXPECT_EQ(save(&source, name), status) << brng;
    EXPECT_EQ(read_file(name), "old") << brng;
  }
  Stream stream;
  ASSERT_EQ(save(Stream(registered(0x1000F)), name), RNG_OK);
  EXPECT_EQ(read_file(name).size(), 0x1000Fu);
  EXPECT_EQ(load(&stream, name), RNG_OK);
}

TEST(StreamFiles, EveryFailingWriteEndsTheSavingAndAFailureToCloseOutweighsAll) {
  const auto failing = [](int write, int close, auto call, auto&& stream) {
    writes = closes = 0;
    failing_write = write, failing_close = close;
    const int32_t status = call(stream, name);
    failing_write = failing_close = 0;
    return status;
  };
  Stream source(BRNG_MT19937), stream;
  add_chunks(source, 2);
  const int items = 2 + 2 * 3;
  for (int write = 1; write <= items + 1; ++write) {
    EXPECT_EQ(failing(write, 1, save, source), RNG_FILE_CLOSE);
    EXPECT_EQ(failing(write, 0, save, source), write <= items ? RNG_FILE_WRITE : RNG_OK);
    EXPECT_EQ(writes, std::min(write, items)) << "one item a call";
    EXPECT_EQ(closes, 1);
  }
  EXPECT_EQ(save(source, "/dev/full"), RNG_FILE_CLOSE);

  const std::string good = read_file(name);
  for (const std::string& bytes : {good, good.substr(0, 30)}) {
    write_file(name, bytes);
    EXPECT_EQ(failing(0, 1, load, &stream), RNG_FILE_CLOSE);
    EXPECT_EQ(stream, nullptr);
  }
}

/// One build leaves a file and the numbers that follow it for each generator in an existing folder,
/// ORV_STREAM_FILES_OUT; another checks them there, in ORV_STREAM_FILES_IN.
TEST(StreamFiles, GoOnExactlyInAnotherBuild) {
  const char *const out = getenv("ORV_STREAM_FILES_OUT"), *const in = getenv("ORV_STREAM_FILES_IN");
  if (out == nullptr && in == nullptr) GTEST_SKIP() << "no folder is named";
  std::vector<int32_t> all(std::begin(generators), std::end(generators));
  std::ranges::copy(quasi_generators, std::back_inserter(all));
  for (const int32_t brng : all) {
    SCOPED_TRACE(brng);
    const std::string path = std::string(out != nullptr ? out : in) + "/" + std::to_string(brng);
    if (out != nullptr) {
      const Stream source(brng);
      draw<double>(source, 123);
      add_chunks(source, 2);
      ASSERT_EQ(save(source, path + ".stream"), RNG_OK);
      write_file(path + ".numbers", future_of(source));
    } else {
      if (access((path + ".numbers").c_str(), R_OK) != 0) GTEST_SKIP() << "no files there yet";
      Stream stream;
      ASSERT_EQ(load(&stream, path + ".stream"), RNG_OK);
      EXPECT_EQ(stream->Brng, brng);
      expect_chunks(stream, 2);
      EXPECT_EQ(read_file(path + ".numbers"), future_of(stream));
    }
  }
}

}  // namespace
