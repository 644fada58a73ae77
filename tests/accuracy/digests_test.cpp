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
  const std::string here = computed["machine"], there = recorded["machine"];
  if (here != there) {  // of the figures that hold for one machine, only the mark is left
    for (Digests* digests : {&computed, &recorded}) {
      (*digests)["machine"].clear();
      for (auto& [name, text] : *digests) {
        if (text.find(' ') != text.npos) text = text.substr(text.find(' '));
      }
    }
  }
  for (const auto& [name, text] : computed) EXPECT_EQ(recorded[name], text) << name;
  EXPECT_EQ(recorded.size(), computed.size()) << "digests of kernels that do not exist";
  if (here != there) {
    GTEST_SKIP() << "recorded on " << there << ", this is " << here
                 << "; kernels with a reciprocal estimate are not compared";
  }
}

}  // namespace
}  // namespace orv_test
