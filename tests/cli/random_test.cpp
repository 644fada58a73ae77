// orv random: known sequences, saved streams, and what it says to mistakes.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "command.hpp"

namespace {

Outcome random(const std::string& arguments, const std::string& = "") {
  return orv("random " + arguments);
}

/// The lines of a run that is to succeed.
Strings lines_of(const std::string& arguments) {
  const Outcome run = random(arguments);
  EXPECT_EQ(run.code, 0) << arguments << "\n" << run.err;
  return split(run.out);
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
  const std::string mrg = "bits --brng mrg32k3a --seed 12345,12345,12345,12345,12345,12345 ";
  const struct {
    std::string arguments;
    Strings last;
  } cases[] = {
      {mt_words + "-n 5", {"1067595299", "955945823", "477289528", "4107218783", "4228976476"}},
      {mt_words + "-n 1000",
       {"2643151863", "3896204135", "2416995901", "1397735321", "3460025646"}},
      {mrg + "-n 5", {"545508589", "1368065410", "1327943761", "3546985096", "951893194"}},
      {mrg + "-n 100", {"3260904806"}},
      {mrg + "--skip 999 -n 1", {"4235174647"}},
      {"bits --brng SFMT19937 --seed 4660,22136,39612,57072 -n 1",
       {"2920711183 3885745737 3501893680 856470934"}},
  };
  for (const auto& c : cases) {
    const Strings lines = lines_of(c.arguments);
    ASSERT_GE(lines.size(), c.last.size()) << c.arguments;
    EXPECT_EQ(Strings(lines.end() - std::ssize(c.last), lines.end()), c.last) << c.arguments;
  }
}

template <class T>
std::vector<T> binary(const std::string& arguments) {
  const std::string bytes = random(arguments + " --format binary").out;
  std::vector<T> numbers(bytes.size() / sizeof(T));
  std::memcpy(numbers.data(), bytes.data(), numbers.size() * sizeof(T));
  return numbers;
}

/// The numbers of a kind, as text and binary, against the words that they are made of.
template <class T>
void expect_kind(const std::string& kind, double (*value)(double u)) {
  const std::string rest = mt_words.substr(mt_words.find(' '));
  const auto words = binary<uint32_t>(mt_words);
  const auto numbers = binary<T>(kind + rest);
  const Strings text = lines_of(kind + rest);
  ASSERT_EQ(words.size(), 10u);
  ASSERT_EQ(numbers.size(), 10u);
  ASSERT_EQ(text.size(), 10u);
  for (size_t k = 0; k < 10; ++k) {
    const T expected = static_cast<T>(value(words[k] * 0x1p-32));
    EXPECT_EQ(numbers[k], expected) << kind;
    EXPECT_EQ(static_cast<T>(std::stod(text[k])), expected) << kind;
    EXPECT_LE(text[k].size(), sizeof(T) == 4 ? 12u : 24u)
        << text[k];  // no digits beyond the type's
  }
}

TEST(Random, MakesEveryKindFromTheWords) {
  expect_kind<uint32_t>("bits", [](double u) { return u * 0x1p32; });
  expect_kind<double>("uniform", [](double u) { return u; });
  expect_kind<float>("uniform --type s", [](double u) { return u; });
  expect_kind<double>("uniform --range -2 6", [](double u) { return -2 + 8 * u; });
  expect_kind<int32_t>("int", [](double u) { return std::floor(100 * u); });
  expect_kind<int32_t>("int --range -7 0x19", [](double u) { return std::floor(-7 + 32 * u); });
}

// A job of several blocks too, and the saved file replaced by the next command.
TEST(Random, ASavedStreamGoesOn) {
  const std::string state = path_of("state");
  for (const Generator& g : generators) {
    const std::string source = std::string(" --seed 7,8 --brng ") + g.name;
    for (const std::string kind : kinds) {
      std::string parts, from = source;
      for (const char* n : {" -n 7", " -n 0", " -n 40000", " -n 331"}) {
        parts += random(kind + n + from + " --save " + state).out;
        from = " --load " + state;
      }
      const Outcome whole = random(kind + " -n 40338" + source);
      EXPECT_EQ(whole.code, 0) << whole.err;
      EXPECT_TRUE(parts == whole.out) << g.name << " " << kind;
    }
  }
  unlink(state.c_str());
}

TEST(Random, SkipsAndLeapsWhereTheListSaysSo) {
  const std::string list = random("list").out;
  for (const Generator& g : generators) {
    const std::string name(g.name, std::strcspn(g.name, ":"));
    std::istringstream row(list.substr(list.find("\n" + name + " ") + 1));
    std::string line;
    std::getline(row, line);
    std::istringstream cells(line);
    const Strings columns(std::istream_iterator<std::string>(cells), {});
    ASSERT_GE(columns.size(), 7u) << list;
    const auto from_end = [&](size_t k) { return columns[columns.size() - k]; };
    EXPECT_EQ(from_end(1), "ready") << line;
    EXPECT_EQ(from_end(2), g.skip ? "yes" : "no") << line;
    EXPECT_EQ(from_end(3), g.leapfrog ? "yes" : "no") << line;
    EXPECT_EQ(from_end(5), std::to_string(4 * g.words)) << line;

    const std::string source = std::string("uniform --seed 5 --brng ") + g.name;
    const Outcome skipped = random(source + " -n 8 --skip 12");
    const Outcome leapt = random(source + " -n 6 --skip 2 --leapfrog 1/3");
    EXPECT_EQ(skipped.code, g.skip ? 0 : 2) << skipped.err;
    EXPECT_EQ(leapt.code, g.leapfrog ? 0 : 2) << leapt.err;
    const Strings plain = lines_of(source + " -n 20");
    for (const std::string& element : lines_of(std::string("bits --brng ") + g.name)) {
      EXPECT_EQ(std::ranges::count(element, ' '), g.words - 1) << element;
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
  expect_all_in(list, {"Sobol", "planned"});
}

TEST(Random, AMistakeIsOneLineAndCode2) {
  const std::string file = path_of("file"), cut = path_of("cut");
  const std::string abstract = path_of("abstract");
  std::ofstream(file) << "a text of some length, but no stream";
  ASSERT_EQ(random("bits -n 0 --save " + cut).code, 0);
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
  const std::vector<Mistake> mistakes = {
      {"", "", {"KIND"}},
      {"normal", "", {"normal", "uniform", "bits", "int", "list"}},
      {"bits --brng MT", "", {"--brng 'MT'", "MCG31M1", "SFMT19937"}},
      {"bits --brng sobol", "", {"Sobol is planned", "MT19937"}},
      {"bits --brng MT2203:1024", "", {"--brng 'MT2203:1024'", "0 to 1023"}},
      {"bits --seed 1,,2", "", {"--seed '1,,2'", "''", "0 to 4294967295"}},
      {"bits -n 1e6", "", {"-n", "'1e6'"}},
      {"bits --range 0 1", "", {"--range '0 1'", "bits doesn't take it"}},
      {"int --type s", "", {"--type 's'", "int"}},
      {"int --range 3 3", "", {"--range 3 3", "below"}},
      {"int --range 0 2147483648", "", {"--range 0 2147483648", "-2147483648 to 2147483647"}},
      {"uniform --range 1", "", {"--range", "2"}},
      {"uniform --range 0 nan", "", {"'nan'", "double"}},
      {"uniform --type s --range 0 1e39", "", {"'1e39'", "float"}},
      {"uniform --range -1e308 1e308", "", {"--range -1e308 1e308", "B - A"}},
      {"uniform --type x", "", {"--type", "x", "d", "s"}},
      {"uniform --format xml", "", {"--format", "xml", "text", "binary"}},
      {"bits --skip 3", "", {"--skip '3'", "'orv random list'"}},
      {"bits --leapfrog 0/2", "", {"--leapfrog '0/2'", "'orv random list'"}},
      {"bits --brng WH --leapfrog 2/2", "", {"--leapfrog '2/2'", "0 to 1"}},
      {"bits --brng WH --leapfrog 2", "", {"--leapfrog '2'", "K/N"}},
      {"bits --load /no/such", "", {"--load '/no/such'", "No such file"}},
      {"bits --load " + file, "", {"--load '" + file + "'", "holds no stream", "--save"}},
      {"bits --load " + cut, "", {"--load '" + cut + "'", "cut short", "--save"}},
      {"bits --load " + abstract, "", {"--load '" + abstract + "'", "abstract", "--save"}},
      {"bits --load " + file + " --seed 1", "", {"--seed", "--load"}},
      {"bits --save /no/such/file", "", {"--save '/no/such/file'", "No such file"}},
      {"bits -n 0 --save /dev/full", "", {"--save '/dev/full'", "room"}},
  };
  expect_mistakes(random, mistakes);
  for (const std::string& path : {file, cut, abstract}) unlink(path.c_str());
}

}  // namespace
