// The digests of this build against the recorded ones, and the suspicion of their reader.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "digests.hpp"

namespace orv_test {
namespace {

class DigestsTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    computed_ = compute_digests();
    std::ifstream file(ORV_DIGESTS_FILE);
    ASSERT_TRUE(file) << ORV_DIGESTS_FILE;
    recorded_ = read_digests(file, computed_);
  }
  static void compare(bool one_machine) {
    for (const auto& [name, digest] : computed_.of) {
      const auto found = recorded_.of.find(name);
      if (digest.one_machine != one_machine || found == recorded_.of.end()) continue;
      EXPECT_EQ(found->second.value, digest.value) << name << " gives other bits than recorded";
    }
  }
  static inline Digests computed_, recorded_;
};

TEST_F(DigestsTest, FileIsComplete) {
  for (const std::string& fault : recorded_.faults) ADD_FAILURE() << fault;
}

TEST_F(DigestsTest, SameInEveryBuild) { compare(false); }

TEST_F(DigestsTest, SameOnOneMachine) {
  if (computed_.machine != recorded_.machine) {
    std::string names;
    for (const auto& [name, digest] : computed_.of) {
      if (digest.one_machine) names += " " + name;
    }
    GTEST_SKIP() << "recorded on " << recorded_.machine << ", this is " << computed_.machine
                 << "; not compared:" << names;
  }
  compare(true);
}

TEST(DigestsReader, RefusesBadFiles) {
  Digests expected;
  expected.of = {{"dExp_G9HAynn", {1, false}}, {"dLn_G9HAynn", {1, true}}};
  const std::string good =
      "machine M\ndExp_G9HAynn 0123456789abcdef\ndLn_G9HAynn 0123456789abcdef machine\n";
  const struct {
    std::string text, fault;
  } cases[] = {
      {good, ""},
      {"# comment\n\n" + good, ""},
      {good + "dExp_G9HAynn 0123456789abcdef\n", "double: dExp_G9HAynn 0123456789abcdef"},
      {good + "machine N\n", "double: machine N"},
      {good + "dSin_HA 0123456789abcdef\n", "unknown: dSin_HA"},
      {good + "dSin_HA\n", "malformed: dSin_HA"},
      {good + "dSin_HA 123\n", "malformed: dSin_HA 123"},
      {good + "dSin_HA 0123456789abcdeg\n", "malformed: dSin_HA 0123456789abcdeg"},
      {good + "dSin_HA 0123456789abcdef mahcine\n", "malformed: dSin_HA 0123456789abcdef mahcine"},
      {"machine M\ndExp_G9HAynn 0000000000000000\ndLn_G9HAynn 0123456789abcdef machine\n",
       "zero: dExp_G9HAynn 0000000000000000"},
      {"machine M\ndExp_G9HAynn 0123456789abcdef\n", "missing: dLn_G9HAynn"},
      {"dExp_G9HAynn 0123456789abcdef\ndLn_G9HAynn 0123456789abcdef machine\n", "missing: machine"},
      {"machine M\ndExp_G9HAynn 0123456789abcdef\ndLn_G9HAynn 0123456789abcdef\n",
       "marked wrongly: dLn_G9HAynn"},
  };
  for (const auto& c : cases) {
    std::istringstream text(c.text);
    const Digests read = read_digests(text, expected);
    ASSERT_EQ(read.faults.size(), c.fault.empty() ? 0u : 1u) << c.text;
    if (!c.fault.empty()) {
      EXPECT_EQ(read.faults[0], c.fault);
    }
  }
}

TEST(DigestsReader, ReadsWhatIsWritten) {
  Digests digests;
  digests.machine = "M";
  digests.of = {{"dExp_G9HAynn", {0x0123456789ABCDEF, false}}, {"dLn_G9HAynn", {5, true}}};
  std::stringstream text;
  write_digests(digests, text);
  const Digests read = read_digests(text, digests);
  EXPECT_TRUE(read.faults.empty());
  EXPECT_EQ(read.of.at("dExp_G9HAynn").value, 0x0123456789ABCDEF);
  EXPECT_EQ(read.of.at("dLn_G9HAynn").value, 5u);
}

}  // namespace
}  // namespace orv_test
