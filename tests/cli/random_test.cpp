// orv random: known sequences, saved streams, and what it says to mistakes.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

struct Outcome {
  std::string out;  // standard error included
  int code;
};

Outcome orv(const std::string& arguments) {
  std::FILE* const pipe = popen((ORV_COMMAND " random " + arguments + " 2>&1").c_str(), "r");
  Outcome outcome = {};
  char buffer[4096];
  while (const size_t size = std::fread(buffer, 1, sizeof buffer, pipe)) {
    outcome.out.append(buffer, size);
  }
  const int status = pclose(pipe);
  outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return outcome;
}

/// The lines of a run that is to succeed.
Lines lines_of(const std::string& arguments) {
  const Outcome run = orv(arguments);
  EXPECT_EQ(run.code, 0) << arguments << "\n" << run.out;
  Lines lines;
  std::istringstream stream(run.out);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string path_of(const std::string& name) {
  return testing::TempDir() + "orv_random_" + std::to_string(getpid()) + "_" + name;
}

struct Generator {
  const char* name;
  bool leapfrog, skip;
  int words;  // of an element
};
constexpr Generator generators[] = {
    {"MCG31M1", true, true, 1},       {"MCG59", true, true, 2},       {"MRG32K3A", false, true, 1},
    {"R250", false, false, 1},        {"WH:272", true, true, 4},      {"MT19937", false, false, 1},
    {"MT2203:1023", false, false, 1}, {"SFMT19937", false, false, 4},
};
constexpr const char* kinds[] = {"bits", "int --range -1000 70000", "uniform --range -1 3",
                                 "uniform --type s"};

const std::string mt_words = "bits --seed 0x123,0x234,0x345,0x456 ";

TEST(Random, GivesPublishedSequences) {
  struct Case {
    std::string arguments;
    size_t first;  // from 1
    Lines words;
  };
  const std::string mrg = "bits --brng mrg32k3a --seed 12345,12345,12345,12345,12345,12345 ";
  const Case cases[] = {
      {mt_words, 1, {"1067595299", "955945823", "477289528", "4107218783", "4228976476"}},
      {mt_words + "-n 1000",
       996,
       {"2643151863", "3896204135", "2416995901", "1397735321", "3460025646"}},
      {mrg, 1, {"545508589", "1368065410", "1327943761", "3546985096", "951893194"}},
      {mrg + "-n 100", 100, {"3260904806"}},
      {mrg + "--skip 999 -n 1", 1, {"4235174647"}},
      {"bits --brng SFMT19937 --seed 4660,22136,39612,57072 -n 1",
       1,
       {"2920711183 3885745737 3501893680 856470934"}},
  };
  for (const Case& c : cases) {
    const Lines lines = lines_of(c.arguments);
    ASSERT_GE(lines.size() + 1, c.first + c.words.size()) << c.arguments;
    const auto begin = lines.begin() + static_cast<std::ptrdiff_t>(c.first) - 1;
    EXPECT_EQ(Lines(begin, begin + static_cast<std::ptrdiff_t>(c.words.size())), c.words)
        << c.arguments;
  }
}

template <class T>
std::vector<T> binary(const std::string& arguments) {
  const std::string bytes = orv(arguments + " --format binary").out;
  std::vector<T> numbers(bytes.size() / sizeof(T));
  std::memcpy(numbers.data(), bytes.data(), numbers.size() * sizeof(T));
  return numbers;
}

// Kinds, types, ranges and formats, all against the words they are made of.
TEST(Random, MakesEveryKindFromTheWords) {
  const std::string rest = mt_words.substr(mt_words.find(' '));
  const auto words = binary<uint32_t>(mt_words);
  const Lines text = lines_of(mt_words);
  const Lines d = lines_of("uniform" + rest), s = lines_of("uniform --type s" + rest);
  const Lines wide = lines_of("uniform --range -2 6" + rest);
  const Lines percent = lines_of("int" + rest), i = lines_of("int --range -7 0x19" + rest);
  const auto raw_d = binary<double>("uniform" + rest);
  const auto raw_s = binary<float>("uniform --type s" + rest);
  const auto raw_i = binary<int32_t>("int" + rest);
  ASSERT_EQ(words.size(), 10u);
  for (const size_t size : {text.size(), d.size(), s.size(), wide.size(), percent.size(), i.size(),
                            raw_d.size(), raw_s.size(), raw_i.size()}) {
    ASSERT_EQ(size, 10u);
  }
  for (size_t k = 0; k < 10; ++k) {
    const double u = words[k] * 0x1p-32;
    EXPECT_EQ(text[k], std::to_string(words[k]));
    EXPECT_EQ(std::stod(d[k]), u);
    EXPECT_EQ(raw_d[k], u);
    EXPECT_EQ(std::stof(s[k]), static_cast<float>(u));
    EXPECT_LE(s[k].size(), 12u) << s[k];  // a float's digits, not a double's
    EXPECT_EQ(raw_s[k], static_cast<float>(u));
    EXPECT_EQ(std::stod(wide[k]), -2 + 8 * u);
    EXPECT_EQ(std::stod(percent[k]), std::floor(100 * u));
    EXPECT_EQ(raw_i[k], std::floor(100 * u));
    EXPECT_EQ(std::stod(i[k]), std::floor(-7 + 32 * u));
  }
}

// A job of several blocks too, and the saved file replaced by the next command.
TEST(Random, ASavedStreamGoesOn) {
  const std::string state = path_of("state");
  for (const Generator& g : generators) {
    const std::string source = std::string(" --seed 7,8 --brng ") + g.name;
    for (const std::string kind : kinds) {
      std::string parts, from = source;
      for (const char* n : {" -n 7", " -n 0", " -n 40000", " -n 331"}) {
        parts += orv(kind + n + from + " --save " + state).out;
        from = " --load " + state;
      }
      const Outcome whole = orv(kind + " -n 40338" + source);
      EXPECT_EQ(whole.code, 0) << whole.out;
      EXPECT_TRUE(parts == whole.out) << g.name << " " << kind;
    }
  }
  unlink(state.c_str());
}

TEST(Random, SkipsAndLeapsWhereTheListSaysSo) {
  const std::string list = orv("list").out;
  for (const Generator& g : generators) {
    const std::string name(g.name, std::strcspn(g.name, ":"));
    std::istringstream row(list.substr(list.find("\n" + name + " ") + 1));
    std::string line, word;
    std::getline(row, line);
    Lines columns;
    for (std::istringstream stream(line); stream >> word;) columns.push_back(word);
    ASSERT_GE(columns.size(), 7u) << list;
    const auto from_end = [&](size_t k) { return columns[columns.size() - k]; };
    EXPECT_EQ(from_end(1), "ready") << line;
    EXPECT_EQ(from_end(2), g.skip ? "yes" : "no") << line;
    EXPECT_EQ(from_end(3), g.leapfrog ? "yes" : "no") << line;
    EXPECT_EQ(from_end(5), std::to_string(4 * g.words)) << line;

    const std::string source = std::string("uniform --seed 5 --brng ") + g.name;
    const Outcome skipped = orv(source + " -n 8 --skip 12");
    const Outcome leapt = orv(source + " -n 6 --skip 2 --leapfrog 1/3");
    EXPECT_EQ(skipped.code, g.skip ? 0 : 2) << skipped.out;
    EXPECT_EQ(leapt.code, g.leapfrog ? 0 : 2) << leapt.out;
    const Lines plain = lines_of(source + " -n 20");
    for (const std::string& element : lines_of(std::string("bits --brng ") + g.name)) {
      EXPECT_EQ(std::count(element.begin(), element.end(), ' '), g.words - 1) << element;
    }
    std::string last, every_third;
    for (size_t i = 12; i < 20; ++i) last += plain[i] + "\n";
    for (size_t i = 3; i < 20; i += 3) every_third += plain[i] + "\n";
    if (g.skip) {
      EXPECT_EQ(skipped.out, last) << g.name;
    }
    if (g.leapfrog) {
      EXPECT_EQ(leapt.out, every_third) << g.name;
    }
  }
  EXPECT_NE(list.find("Sobol"), std::string::npos);
  EXPECT_NE(list.find("planned"), std::string::npos);
}

TEST(Random, AMistakeIsOneLineAndCode2) {
  const std::string file = path_of("file"), cut = path_of("cut");
  const std::string abstract = path_of("abstract");
  std::ofstream(file) << "a text of some length, but no stream";
  ASSERT_EQ(orv("bits -n 0 --save " + cut).code, 0);
  ASSERT_EQ(truncate(cut.c_str(), 100), 0);
  struct AbstractState {
    int32_t position[3];
    void* pointers[2];
  };
  struct {
    uint8_t header[16] = {0, 'R', 'N', 'G', 16,   0, sizeof(AbstractState), 0, 0, 0,
                          0, 0,   0,   0,   0xA0, 0};
    AbstractState state = {};
  } stream;
  std::ofstream(abstract, std::ios::binary)
      .write(reinterpret_cast<const char*>(&stream), sizeof stream);
  struct Case {
    std::string arguments;
    Lines said;
  };
  const Case cases[] = {
      {"", {"KIND"}},
      {"normal", {"normal", "uniform", "bits", "int", "list"}},
      {"bits --brng MT", {"--brng 'MT'", "MCG31M1", "SFMT19937"}},
      {"bits --brng sobol", {"Sobol is planned", "MT19937"}},
      {"bits --brng MT2203:1024", {"--brng 'MT2203:1024'", "0 to 1023"}},
      {"bits --seed 1,,2", {"--seed '1,,2'", "''", "0 to 4294967295"}},
      {"bits -n 1e6", {"-n", "'1e6'"}},
      {"bits --range 0 1", {"--range '0 1'", "bits doesn't take it"}},
      {"int --type s", {"--type 's'", "int"}},
      {"int --range 3 3", {"--range 3 3", "below"}},
      {"int --range 0 2147483648", {"--range 0 2147483648", "-2147483648 to 2147483647"}},
      {"uniform --range 1", {"--range", "2"}},
      {"uniform --range 0 nan", {"'nan'", "double"}},
      {"uniform --type s --range 0 1e39", {"'1e39'", "float"}},
      {"uniform --range -1e308 1e308", {"--range -1e308 1e308", "B - A"}},
      {"uniform --type x", {"--type", "x", "d", "s"}},
      {"uniform --format xml", {"--format", "xml", "text", "binary"}},
      {"bits --skip 3", {"--skip '3'", "'orv random list'"}},
      {"bits --leapfrog 0/2", {"--leapfrog '0/2'", "'orv random list'"}},
      {"bits --brng WH --leapfrog 2/2", {"--leapfrog '2/2'", "0 to 1"}},
      {"bits --brng WH --leapfrog 2", {"--leapfrog '2'", "K/N"}},
      {"bits --load /no/such", {"--load '/no/such'", "No such file"}},
      {"bits --load " + file, {"--load '" + file + "'", "holds no stream", "--save"}},
      {"bits --load " + cut, {"--load '" + cut + "'", "cut short", "--save"}},
      {"bits --load " + abstract, {"--load '" + abstract + "'", "abstract", "--save"}},
      {"bits --load " + file + " --seed 1", {"--seed", "--load"}},
      {"bits --save /no/such/file", {"--save '/no/such/file'", "No such file"}},
      {"bits -n 0 --save /dev/full", {"--save '/dev/full'", "room"}},

  };
  for (const Case& c : cases) {
    const Outcome run = orv(c.arguments);
    EXPECT_EQ(run.code, 2) << c.arguments;
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1) << run.out;
    EXPECT_EQ(run.out.rfind("orv: ", 0), 0u) << run.out;
    for (const std::string& text : c.said) {
      EXPECT_NE(run.out.find(text), std::string::npos) << text << " not in: " << run.out;
    }
  }
  for (const std::string& path : {file, cut, abstract}) unlink(path.c_str());
}

}  // namespace
