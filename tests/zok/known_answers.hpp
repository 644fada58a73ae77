// Reads published outputs, suspiciously.
#pragma once

#include <gtest/gtest.h>
#include <stdint.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace orv_test {

/// Words of the block whose title "[...]" starts with `title`. Fails when there is none, or when it
/// holds something else than `count` words that are not all zero.
inline std::vector<uint32_t> known_answers(const std::string& title, size_t count) {
  std::vector<uint32_t> words;
  std::ifstream file(ORV_KNOWN_ANSWERS);
  bool inside = false;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    if (line[0] == '[') {
      inside = line.compare(1, title.size(), title) == 0;
      continue;
    }
    std::istringstream numbers(line);
    for (uint64_t word; inside && numbers >> word;) words.push_back(static_cast<uint32_t>(word));
    EXPECT_TRUE(!inside || numbers.eof()) << line;
  }
  EXPECT_EQ(words.size(), count) << title;
  EXPECT_NE(words, std::vector<uint32_t>(words.size())) << title;
  return words;
}

}  // namespace orv_test
