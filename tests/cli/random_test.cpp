// SPDX-License-Identifier: MIT
// orv random: known sequences, saved streams, and what it says to mistakes.
#include <sys/stat.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "command.hpp"

namespace {

Outcome random(const std::string& arguments, const std::string& input = "") {
  return orv("random " + arguments, input);
}

/// The lines of a run that is to succeed.
Strings lines_of(const std::string& arguments) {
  const Outcome run = random(arguments);
  EXPECT_EQ(run.code, 0) << arguments << "\n" << run.err;
  return split(run.out);
}

const std::string generators[] = {"MCG31M1", "MCG59",       "MRG32K3A",  "R250",  "WH:272",
                                  "MT19937", "MT2203:1023", "SFMT19937", "Sobol", "Niederr"};
const std::string mt_words = "bits --seed 0x123,0x234,0x345,0x456 ";

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
  const std::string arguments = kind + mt_words.substr(mt_words.find(' '));
  std::vector<T> expected, read;
  for (const uint32_t word : binary<uint32_t>(mt_words)) {
    expected.push_back(static_cast<T>(value(word * 0x1p-32)));
  }
  for (const std::string& text : lines_of(arguments)) {
    read.push_back(static_cast<T>(std::stod(text)));
    EXPECT_LE(text.size(), sizeof(T) == 4 ? 12u : 24u) << text;  // no digits beyond the type's
  }
  EXPECT_EQ(expected.size(), 10u);
  EXPECT_EQ(read, expected) << kind;
  EXPECT_EQ(binary<T>(arguments), expected) << kind;
}

TEST(Random, MakesEveryKindFromPublishedWords) {
  EXPECT_EQ(lines_of(mt_words + "-n 3"), (Strings{"1067595299", "955945823", "477289528"}));
  EXPECT_EQ(lines_of("bits --brng SFMT19937 --seed 4660,22136,39612,57072 -n 1"),
            Strings{"2920711183 3885745737 3501893680 856470934"});
  expect_kind<uint32_t>("bits", [](double u) { return u * 0x1p32; });
  expect_kind<double>("uniform", [](double u) { return u; });
  expect_kind<float>("uniform --type s", [](double u) { return u; });
  expect_kind<double>("uniform --range -2 6", [](double u) { return -2 + 8 * u; });
  expect_kind<int32_t>("int", [](double u) { return std::floor(100 * u); });
  expect_kind<int32_t>("int --range -7 0x19", [](double u) { return std::floor(-7 + 32 * u); });
  // The largest fraction that there is: a double would be 100.
  EXPECT_EQ(lines_of("int -n 1 --brng MCG59 --seed 0xFFFFFFFF,0x7FFFFFF"), Strings{"99"});
}

/// A mean or deviation of a description: what was drawn and the law's own.
std::pair<double, double> described(const std::string& name, const std::string& text) {
  std::istringstream line(text.substr(text.find("\n" + name) + name.size() + 1));
  std::string drawn, law;
  line >> drawn >> law;
  return {std::stod(drawn), law == "-" ? NAN : std::stod(law)};
}

// Every distribution against its law by moments and by each bin of the histogram.
TEST(Random, DescribesDistributionsBesideTheirLaws) {
  constexpr double n = 1e5;
  for (const std::string kind : {"uniform --range -3 5",
                                 "beta --p 0.4 --q 2.5 --shift -1 --scale 4",
                                 "cauchy --location 3",
                                 "exponential --shift 2 --scale 0.25",
                                 "gamma --shape 0.3 --scale 2",
                                 "gaussian --mean -4 --sd 3",
                                 "gaussian --method boxmuller",
                                 "gaussian --method boxmuller2",
                                 "gumbel --location 1 --scale 2",
                                 "laplace --location -1 --scale 3",
                                 "lognormal --mean 0.5 --sd 0.25 --shift 1 --scale 2",
                                 "rayleigh --shift 1 --scale 5",
                                 "weibull --shape 1.5 --shift -2 --scale 3",
                                 "bernoulli --p 0.3",
                                 "binomial --trials 30 --p 0.3",
                                 "binomial --trials 1e9 --p 0.5",
                                 "geometric --p 0.05",
                                 "hypergeometric --lot 1000 --sample 100 --marked 300",
                                 "int --range -3 4",
                                 "negative-binomial --successes 2.5 --p 0.1",
                                 "poisson --mean 1e6",
                                 "poisson --mean 30 --method poisnorm"}) {
    const bool real = random(kind + " --type s -n 0").code == 0;
    for (const char* type : {" --type d", " --type s"}) {
      const Outcome run = random(kind + (real ? type : "") + " -n 1e5 --describe");
      ASSERT_EQ(run.code, 0) << run.err;
      const auto [mean, law_mean] = described("mean", run.out);
      const auto [deviation, law_deviation] = described("deviation", run.out);
      if (!std::isnan(law_mean)) {
        EXPECT_NEAR(mean, law_mean, 5 * law_deviation / std::sqrt(n)) << run.out;
        EXPECT_NEAR(deviation, law_deviation, 0.05 * law_deviation) << run.out;
      }
      int bins = 0;
      for (const std::string& line : split(run.out.substr(run.out.find("law: |")))) {
        std::istringstream cells(line.substr(0, line.find_first_of("#|")));
        std::vector<double> numbers(std::istream_iterator<double>(cells), {});
        if (numbers.size() < 3) continue;
        const double drawn = numbers.end()[-2] / 100, law = numbers.end()[-1] / 100;
        EXPECT_NEAR(drawn, law, 5 * std::sqrt(law / n) + 1e-5) << line << "\n" << run.out;
        ++bins;
      }
      EXPECT_TRUE(real ? bins == 22 : bins > 1 && bins < 23) << run.out;
    }
  }
}

TEST(Random, DrawsPoissonNumbersForAListOfMeans) {
  const std::string from_list = random("poisson-v --means 0.5,3,1e4 -n 3").out;
  EXPECT_EQ(split(from_list).size(), 3u);
  EXPECT_NEAR(std::stod(split(split(from_list)[2], ' ').at(2)), 1e4, 600);
  const std::string file = "poisson-v --means-file IN -n 3";
  EXPECT_EQ(random(file, "0.5 3\n10000\n").out, from_list);
  EXPECT_EQ(random(file + " --column m", "k,m\n1,0.5\n2,3\n3,1e4\n").out, from_list);
}

TEST(Random, DrawsVectorsFromACovarianceOrItsFactor) {
  const std::string options = " --mean 1,-2,0.5 --seed 9 -n 4";
  const auto draw = [&](const std::string& arguments, const std::string& input) {
    const Outcome run = orv("random gaussian-mv " + arguments + options, input);
    EXPECT_EQ(run.code, 0) << run.err;
    return run.out;
  };
  const std::string full = draw("--factor IN", "2,0,0\n-1,3,0\n0.5,1,4\n");
  EXPECT_EQ(split(full).size(), 4u);
  EXPECT_EQ(split(split(full)[0], ' ').size(), 3u);
  EXPECT_EQ(draw("--factor IN --storage packed", "2,-1,0.5,3,1,4\n"), full);
  EXPECT_EQ(draw("--covariance IN", "a,b,c\n4,-2,1\n-2,10,2.5\n1,2.5,17.25\n"), full);
  EXPECT_EQ(draw("--factor IN --storage diagonal", "2\n3\n4\n"),
            draw("--factor IN", "2,0,0\n0,3,0\n0,0,4\n"));
}

// A job of several blocks too, and the saved file replaced by the next command.
TEST(Random, ASavedStreamGoesOn) {
  const std::string state = path_of("state");
  for (const std::string& name : generators) {
    const std::string source = " --seed 7,8 --brng " + name;
    for (const std::string kind :
         {"bits", "int --range -1000 70000", "uniform --range -1 3", "uniform --type s",
          "gaussian --method boxmuller2", "gamma --shape 3 --type s", "beta --p 0.5 --q 0.5",
          "binomial --trials 50 --p 0.4", "poisson --mean 200", "geometric --p 0.01"}) {
      std::string parts, from = source;
      for (const char* n : {" -n 7", " -n 0", " -n 40000", " -n 331"}) {
        parts += random(kind + n + from + " --save " + state).out;
        from = " --load " + state;
      }
      const Outcome whole = random(kind + " -n 40338" + source);
      EXPECT_EQ(whole.code, 0) << whole.err;
      EXPECT_TRUE(parts == whole.out) << name << " " << kind;
    }
  }
  unlink(state.c_str());
}

TEST(Random, AFailureToSaveLeavesTheOldState) {
  const std::string folder = path_of("folder"), state = folder + "/state", link = folder + "/link";
  ASSERT_EQ(mkdir(folder.c_str(), 0700), 0);
  ASSERT_EQ(symlink("state", link.c_str()), 0);
  ASSERT_EQ(random("bits -n 0 --save " + link).code, 0);
  ASSERT_EQ(chmod(state.c_str(), 0640), 0);
  const std::string again = "random bits -n 5 --load " + state + " --save " + link;
  // Files end at a thousand bytes; a signal may not tell.
  const std::string full_disk = "sh -c 'trap \"\" XFSZ; ulimit -f 1; exec \"$@\"' sh";
  const Outcome failed = orv(again, "", full_disk), first = orv(again), second = orv(again);
  EXPECT_EQ(failed.code, 2);
  expect_all_in(failed.err, {"--save '" + link + "'", "room"});
  EXPECT_EQ(failed.out, first.out);
  EXPECT_NE(first.out, second.out);
  struct stat saved = {};
  EXPECT_EQ(lstat(state.c_str(), &saved), 0);
  EXPECT_EQ(saved.st_mode, S_IFREG | 0640u);
  for (const std::string& file : {state, link}) EXPECT_EQ(unlink(file.c_str()), 0);
  EXPECT_EQ(rmdir(folder.c_str()), 0) << "nothing else is left there";
}

TEST(Random, SkipsAndLeapsWhereTheListSaysSo) {
  const std::string list = random("list").out;
  for (const std::string& name : generators) {
    std::istringstream row(split(list.substr(list.find("\n" + split(name, ':')[0] + " ") + 1))[0]);
    const Strings cells(std::istream_iterator<std::string>(row), {});
    const size_t end = cells.size();
    ASSERT_GE(end, 6u) << list;
    for (const std::string& element : lines_of("bits --brng " + name)) {
      EXPECT_EQ(cells[end - 4], std::to_string(4 * split(element, ' ').size())) << element;
    }
    const std::string source = "uniform --seed 5 --brng " + name;
    const Strings plain = lines_of(source + " -n 20");
    const auto expect = [&](bool able, const std::string& options, size_t first, size_t step) {
      const Outcome moved = random(source + options);
      EXPECT_EQ(moved.code, able ? 0 : 2) << moved.err;
      std::string numbers;
      for (size_t i = first; able && i < 20; i += step) numbers += plain[i] + "\n";
      EXPECT_EQ(moved.out, numbers) << name << options;
    };
    expect(cells[end - 1] == "yes", " -n 8 --skip 12", 12, 1);
    expect(cells[end - 2] == "yes", " -n 6 --skip 2 --leapfrog 1/3", 3, 3);
  }
}

TEST(Random, PrintsPointsOfLowDiscrepancy) {
  EXPECT_EQ(lines_of("sobol --dim 3 -n 4"),
            (Strings{"0.5 0.5 0.5", "0.75 0.25 0.75", "0.25 0.75 0.25", "0.375 0.375 0.625"}));
  EXPECT_EQ(lines_of("sobol --skip 2 -n 2"), (Strings{"0.25 0.75", "0.375 0.375"}));
  EXPECT_EQ(lines_of("niederreiter --dim 3 -n 2 --format csv --type s"),
            (Strings{"0.5,0.5,0.75", "0.75,0.25,0.3125"}));
  EXPECT_EQ(lines_of("bits --brng Sobol --seed 3 --leapfrog 2/0x7FFFFFFF -n 2"),
            (Strings{"2147483648", "3221225472"}));
  EXPECT_EQ(lines_of("gaussian --brng Sobol --seed 2 -n 2"), (Strings{"0", "0"}));
  // Several blocks of 318 dimensions, and a shift by the words of MT19937.
  const int dims = 318, points = 500;
  const auto words = binary<uint32_t>("bits --brng Niederr --seed 318 -n 159000");
  const auto shift = binary<uint32_t>("bits --seed 7 -n 318");
  const auto plain = binary<double>("niederreiter --dim 318 -n 500");
  const auto shifted = binary<double>("niederreiter --dim 318 -n 500 --shift 7");
  ASSERT_EQ(plain.size(), size_t{dims * points});
  ASSERT_EQ(shifted.size(), plain.size());
  for (size_t i = 0; i < plain.size(); ++i) {
    ASSERT_EQ(plain[i], words[i] * 0x1p-32);
    ASSERT_EQ(shifted[i], (words[i] ^ shift[i % dims]) * 0x1p-32);
  }
}

TEST(Random, AMistakeIsOneLineAndCode2) {
  const std::string file = path_of("file"), cut = path_of("cut"), own = path_of("own");
  std::ofstream(file) << "a text of some length, but no stream";
  ASSERT_EQ(random("bits -n 0 --save " + cut).code, 0);
  ASSERT_EQ(truncate(cut.c_str(), 100), 0);
  // A header, and the least state that an abstract stream of words can have.
  std::string stream = {0, 'R', 'N', 'G', 16, 0, sizeof(void*) == 8 ? 32 : 20, 0, 0, 0, 0, 0, 0, 0};
  stream += {char(0xA0), 0};
  std::ofstream(own, std::ios::binary) << stream + std::string(32, 0);
  const std::vector<Mistake> mistakes = {
      {"", "", {"KIND"}},
      {"normal", "", {"normal", "uniform", "bits", "int", "list"}},
      {"bits --brng MT", "", {"--brng 'MT'", "MCG31M1", "SFMT19937"}},
      {"sobol --brng WH", "", {"--brng 'WH'", "sobol doesn't take it"}},
      {"sobol --dim 41", "", {"--dim", "'41'", "1 to 40"}},
      {"niederreiter --dim 319", "", {"--dim", "'319'", "1 to 318"}},
      {"sobol --shift x", "", {"--shift", "'x'", "0 to 4294967295"}},
      {"sobol --shift=", "", {"--shift"}},
      {"sobol --skip 4294967294", "", {"--skip", "'4294967294'", "0 to 4294967293"}},
      {"sobol --skip 4294967290 -n 9", "", {"points are used up"}},
      {"uniform --dim 3", "", {"--dim '3'", "uniform doesn't take it"}},
      {"bits --brng MT2203:1024", "", {"--brng 'MT2203:1024'", "0 to 1023"}},
      {"bits --seed 1,,2", "", {"--seed '1,,2'", "''", "0 to 4294967295"}},
      {"bits -n 1.5e0", "", {"-n", "'1.5e0'"}},
      {"gamma", "", {"--shape", "gamma needs it", "numbers above 0"}},
      {"gamma --shape 0", "", {"--shape '0'", "numbers above 0"}},
      {"gamma --shape 1 --type s --scale 1e-50", "", {"--scale", "'1e-50'", "float"}},
      {"gaussian --mean nan", "", {"--mean", "'nan'"}},
      {"gaussian --method ziggurat", "", {"--method 'ziggurat'", "icdf, boxmuller, boxmuller2"}},
      {"cauchy --mean 1", "", {"--mean '1'", "cauchy doesn't take it"}},
      {"cauchy --method icdf", "", {"--method 'icdf'", "cauchy doesn't take it"}},
      {"cauchy --range 0 1", "", {"--range '0 1'", "cauchy doesn't take it"}},
      {"bits --describe", "", {"--describe", "bits doesn't take it"}},
      {"gaussian --describe --format text", "", {"--describe", "--format"}},
      {"binomial --trials -1 --p 0.5", "", {"--trials", "'-1'", "2147483647"}},
      {"bernoulli --p 1.5", "", {"--p '1.5'", "from 0 to 1"}},
      {"hypergeometric --lot 9 --sample 3 --marked 10", "", {"--marked '10'", "more than the lot"}},
      {"poisson --mean 0", "", {"--mean '0'", "above 0"}},
      {"poisson --mean 2 --type s", "", {"--type 's'", "poisson doesn't take it"}},
      {"poisson-v", "", {"--means", "--means-file"}},
      {"poisson-v --means 1,-2", "", {"--means '1,-2'", "above 0"}},
      {"gaussian-mv", "", {"--covariance", "--factor"}},
      {"gaussian-mv --covariance IN", "4,2\n1,3\n", {"row 2, column 1 has 1", "row 1, column 2"}},
      {"gaussian-mv --covariance IN", "4,2\n2,1\n", {"2 rows", "positive definite"}},
      {"gaussian-mv --covariance IN", "4,2,1\n2,1,1\n", {"2 rows of 3", "square"}},
      {"gaussian-mv --factor IN --storage packed", "1,2,3,4\n", {"4 numbers", "1, 3, 6, 10"}},
      {"gaussian-mv --factor IN --mean 1,2,3", "1,0\n2,1\n", {"--mean '1,2,3'", "vectors of 2"}},
      {"gaussian-mv --covariance IN --storage full", "1\n", {"--storage 'full'", "--factor"}},
      {"bits --range 0 1", "", {"--range '0 1'", "bits doesn't take it"}},
      {"int --type s", "", {"--type 's'", "int"}},
      {"int --range 3 3", "", {"--range 3 3", "below"}},
      {"int --range 0 2147483648", "", {"--range 0 2147483648", "-2147483648 to 2147483647"}},
      {"uniform --range 1", "", {"--range", "2"}},
      {"uniform --range 0 nan", "", {"'nan'", "double"}},
      {"uniform --type s --range 0 1e39", "", {"'1e39'", "float"}},
      {"uniform --range -1e308 1e308", "", {"--range -1e308 1e308", "B - A"}},
      {"uniform --format xml", "", {"--format", "xml", "text", "binary"}},
      {"bits --skip 3", "", {"--skip '3'", "'orv random list'"}},
      {"bits --leapfrog 0/2", "", {"--leapfrog '0/2'", "'orv random list'"}},
      {"bits --brng WH --leapfrog 2/2", "", {"--leapfrog '2/2'", "0 to 1"}},
      {"bits --brng WH --leapfrog 2", "", {"--leapfrog '2'", "K/N"}},
      {"bits --load /no/such", "", {"--load '/no/such'", "No such file"}},
      {"bits --load " + file, "", {"--load '" + file + "'", "holds no stream", "--save"}},
      {"bits --load " + cut, "", {"--load '" + cut + "'", "cut short", "--save"}},
      {"bits --load " + own, "", {"--load '" + own + "'", "abstract", "--save"}},
      {"bits --load " + file + " --seed 1", "", {"--seed", "--load"}},
      {"bits --save /no/such/file", "", {"--save '/no/such/file'", "No such file"}},
      {"bits -n 0 --save /dev/full", "", {"--save '/dev/full'", "room"}},
      {"bits -n 0 --save " + testing::TempDir(), "", {"--save", "directory"}},
  };
  expect_mistakes(random, mistakes);
  for (const std::string& path : {file, cut, own}) unlink(path.c_str());
}

}  // namespace
