// Reads published outputs, suspiciously.
#pragma once

#include <gtest/gtest.h>
#include <stdint.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace orv_test {

/// A vector of rubbish, which no draw leaves in place by chance.
inline std::vector<uint32_t> rubbish(size_t n) { return std::vector<uint32_t>(n, 0xBADC0FFE); }

class KnownAnswers {
 public:
  /// Words of the block whose title "[...]" starts with `title`. Fails when there is none, or when
  /// it holds something else than `count` words that are not all zero.
  std::vector<uint32_t> block(const std::string& title, size_t count) {
    std::vector<uint32_t> words;
    std::ifstream file(ORV_KNOWN_ANSWERS);
    EXPECT_TRUE(file.is_open()) << ORV_KNOWN_ANSWERS;
    bool inside = false;
    for (std::string line; std::getline(file, line);) {
      if (line.empty() || line[0] == '#') continue;
      if (line[0] == '[') {
        inside = line.compare(1, title.size(), title) == 0;
        continue;
      }
      std::istringstream numbers(line);
      for (uint64_t word; inside && numbers >> word;) {
        EXPECT_LE(word, UINT32_MAX) << line;
        words.push_back(static_cast<uint32_t>(word));
      }
      EXPECT_TRUE(!inside || numbers.eof()) << line;
    }
    EXPECT_EQ(words.size(), count) << title;
    EXPECT_TRUE(std::any_of(words.begin(), words.end(), [](uint32_t w) { return w != 0; }))
        << title;
    words.resize(count);
    return words;
  }

  /// Compares and counts.
  void expect(uint32_t answer, uint32_t word, const char* what) {
    EXPECT_EQ(answer, word) << what << ", answer " << used_;
    ++used_;
  }
  int used() const { return used_; }

 private:
  int used_ = 0;
};

}  // namespace orv_test
