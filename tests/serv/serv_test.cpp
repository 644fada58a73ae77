// SPDX-License-Identifier: MIT
// The service layer: aligned memory, and a text for every message.
#include <orv/serv.h>
#include <stdint.h>
#include <string.h>

#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

const struct {
  void* (*allocate)(size_t, size_t);
  void (*release)(void*);
} pairs[] = {{orv_serv_allocate, orv_serv_deallocate}, {orv_serv_orv_malloc, orv_serv_orv_free}};

TEST(Memory, BlocksAreAlignedAndSeparate) {
  for (const auto& p : pairs) {
    std::vector<std::pair<unsigned char*, size_t>> blocks;
    for (const size_t alignment : {0, 1, 2, 4, 8, 16, 32, 64, 128, 4096, 65536}) {
      for (const size_t size : {1, 3, 8, 63, 1000, 100000}) {
        auto* block = static_cast<unsigned char*>(p.allocate(size, alignment));
        ASSERT_NE(block, nullptr) << size << " at " << alignment;
        const size_t multiple = alignment == 0 ? sizeof(void*) : alignment;
        EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % multiple, 0u);
        memset(block, static_cast<int>(blocks.size()), size);
        blocks.emplace_back(block, size);
      }
    }
    for (size_t i = 0; i < blocks.size(); ++i) {
      const std::vector<unsigned char> expected(blocks[i].second, static_cast<unsigned char>(i));
      EXPECT_EQ(memcmp(blocks[i].first, expected.data(), expected.size()), 0) << "overwritten";
      p.release(blocks[i].first);
    }
  }
}

TEST(Memory, ZeroWhenThereIsNone) {
  for (const auto& p : pairs) {
    for (const size_t size : {SIZE_MAX, SIZE_MAX - 64, SIZE_MAX / 8 * 7}) {
      for (const size_t alignment : {0, 16, 64, 4096}) {
        EXPECT_EQ(p.allocate(size, alignment), nullptr);
      }
    }
    for (const size_t no_power_of_two : {3, 12, 24, 100}) {
      EXPECT_EQ(p.allocate(8, no_power_of_two), nullptr) << no_power_of_two;
    }
    p.release(nullptr);
  }
}

/// What one call prints, without the line's end.
template <class... Arguments>
std::string line(int key, Arguments... arguments) {
  testing::internal::CaptureStderr();
  orv_serv_orv_print(1, key, static_cast<int>(sizeof...(arguments)), arguments...);
  const std::string text = testing::internal::GetCapturedStderr();
  EXPECT_EQ(text.find('\n') + 1, text.size()) << "key " << key;
  return text.substr(0, text.find('\n'));
}

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// The keys of a group are to be told apart.
TEST(Messages, TellWhatHappenedAndToWhom) {
  for (const auto& [first, end] :
       {std::pair{735, 742}, {742, 744}, {744, 747}, {747, 750}, {750, 754}}) {
    std::set<std::string> texts;
    for (int key = first; key < end; ++key) {
      const bool has_value = key > 741;
      const std::string text =
          has_value ? line(key, int32_t{417}, -0.1) : line(key, "vdName", int32_t{417});
      texts.insert(text);
      EXPECT_GT(text.size(), 15u) << text;
      EXPECT_EQ(contains(text, "vdName"), !has_value) << text;
      EXPECT_EQ(contains(text, "417"), has_value || key == 735) << text;
      if (!has_value) continue;
      const size_t number = text.find("-0.1");
      ASSERT_NE(number, std::string::npos) << text;
      EXPECT_EQ(strtod(text.c_str() + number, nullptr), -0.1) << "digits were lost: " << text;
      EXPECT_TRUE(contains(line(key, int32_t{1}, __builtin_nan("")), "nan"));
      EXPECT_TRUE(contains(line(key, int32_t{1}, -__builtin_inf()), "-inf"));
    }
    EXPECT_EQ(texts.size(), end - first) << "two keys have one text";
  }
  for (const int key : {0, -1, 734, 754}) {
    EXPECT_TRUE(contains(line(key), std::to_string(key)));  // says that there is none
  }
  EXPECT_TRUE(contains(line(737, std::string(1000, 'x').c_str()), "xxxxxxxx"));
}

}  // namespace
