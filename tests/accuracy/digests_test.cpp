// The digests of this build against the recorded ones.
#include <gtest/gtest.h>

#include <fstream>

#include "digests.hpp"

namespace orv_test {
namespace {

class DigestsTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    computed_ = compute_digests();
    std::ifstream file(ORV_DIGESTS_FILE);
    for (std::string line; std::getline(file, line);) {
      const size_t space = line.find(' ');
      if (line[0] != '#') recorded_[line.substr(0, space)] = line.substr(space + 1);
    }
  }
  static bool of_one_machine(const std::string& text) { return text.find(' ') != text.npos; }

  static inline Digests computed_, recorded_;
};

TEST_F(DigestsTest, SameInEveryBuild) {
  for (const auto& [name, text] : computed_) {
    if (name == "machine") continue;
    ASSERT_EQ(of_one_machine(recorded_[name]), of_one_machine(text)) << name;
    if (of_one_machine(text)) continue;
    EXPECT_EQ(recorded_[name], text) << name << " gives other bits than recorded";
  }
  EXPECT_EQ(recorded_.size(), computed_.size()) << "digests of kernels that do not exist";
}

TEST_F(DigestsTest, SameOnOneMachine) {
  if (recorded_["machine"] != computed_["machine"]) {
    GTEST_SKIP() << "recorded on " << recorded_["machine"] << ", this is " << computed_["machine"]
                 << "; kernels with a reciprocal estimate are not compared";
  }
  EXPECT_EQ(recorded_, computed_);
}

}  // namespace
}  // namespace orv_test
