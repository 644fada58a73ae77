// SPDX-License-Identifier: MIT
// Runs the built command and looks at what it prints and how it ends.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using Strings = std::vector<std::string>;

struct Outcome {
  std::string out, err;
  int code;
};

inline std::string path_of(const std::string& name) {
  return testing::TempDir() + "orv_cli_" + std::to_string(getpid()) + "_" + name;
}

/// `arguments` go through the shell; IN in them is the path of a file that holds `input`, which
/// is standard input as well. Standard output may be sent elsewhere.
inline Outcome orv(std::string arguments, const std::string& input = "",
                   const std::string& env = "") {
  std::ofstream(path_of("in")) << input;
  if (const size_t at = arguments.find("IN"); at != std::string::npos) {
    arguments.replace(at, 2, path_of("in"));
  }
  const std::string command = "env -u ORV_QEM_MODE " + env + " " ORV_COMMAND " <" + path_of("in") +
                              " >" + path_of("out") + " 2>" + path_of("err") + " " + arguments;
  const int status = std::system(command.c_str());
  const auto read = [](const char* name) {
    std::ifstream file(path_of(name));
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  Outcome outcome = {read("out"), read("err"), WIFEXITED(status) ? WEXITSTATUS(status) : -1};
  for (const char* name : {"in", "out", "err"}) unlink(path_of(name).c_str());
  return outcome;
}

inline Strings split(const std::string& text, char separator = '\n') {
  Strings parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  if (separator == ',' && text.ends_with(',')) parts.push_back("");
  return parts;
}

inline void expect_all_in(const std::string& text, const Strings& parts) {
  for (const std::string& part : parts) {
    EXPECT_NE(text.find(part), std::string::npos) << part << " not in: " << text;
  }
}

struct Mistake {
  std::string arguments, input;
  Strings said;
};

/// A mistake: nothing but one line that says what and where and what is allowed, and exit code 2.
template <class Run>
void expect_mistakes(Run run, const std::vector<Mistake>& mistakes) {
  for (const Mistake& m : mistakes) {
    const Outcome outcome = run(m.arguments, m.input);
    EXPECT_EQ(outcome.code, 2) << m.arguments;
    EXPECT_EQ(outcome.out, "") << m.arguments;
    EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << m.arguments << "\n" << outcome.err;
    EXPECT_TRUE(outcome.err.starts_with("orv: ")) << outcome.err;
    expect_all_in(outcome.err, m.said);
  }
}
