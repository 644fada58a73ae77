// The digests of this build against the recorded ones.
#include <gtest/gtest.h>

#include <fstream>

#include "measure.hpp"

namespace orv_test {
namespace {

TEST(Digests, AreAsRecorded) {
  Digests computed = compute_digests(), recorded;
  std::ifstream file(ORV_DIGESTS_FILE);
  for (std::string line; std::getline(file, line);) {
    const size_t space = line.find(' ');
    if (line[0] != '#') recorded[line.substr(0, space)] = line.substr(space + 1);
  }
  for (const auto& [name, text] : computed) EXPECT_EQ(recorded[name], text) << name;
  EXPECT_EQ(recorded.size(), computed.size()) << "digests of kernels that do not exist";
}

}  // namespace
}  // namespace orv_test
