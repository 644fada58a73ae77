// SPDX-License-Identifier: MIT
// orv impute, and orv stats on tables with missing cells or too large to keep.
#include <cmath>
#include <filesystem>

#include "command.hpp"

namespace {

using Rows = std::vector<Strings>;

Rows rows_of(const std::string& text) {
  Rows rows;
  for (const std::string& line : split(text)) rows.push_back(split(line, ','));
  return rows;
}

std::string read_file(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

const std::string airquality = ORV_EXAMPLE_DATA "/airquality.csv";

/// Nothing but missing cells differs, and these are numbers.
void expect_completed(const Rows& before, const Rows& after) {
  ASSERT_EQ(before.size(), after.size());
  for (size_t i = 0; i < before.size(); ++i) {
    ASSERT_EQ(before[i].size(), after[i].size()) << i;
    for (size_t j = 0; j < before[i].size(); ++j) {
      const bool missing = before[i][j].empty() || before[i][j] == "NA";
      if (missing) {
        EXPECT_TRUE(std::isfinite(std::stod(after[i][j]))) << i;
      } else {
        EXPECT_EQ(after[i][j], before[i][j]) << i;
      }
    }
  }
}

// Of the second column given the first, which is complete, that is the regression of the complete
// rows. The sizes and texts of other columns are no matter.
TEST(Impute, EmFillsInWhatIsExpected) {
  const std::string input =
      "name,x,y\na b,8,59\n\"c, d\",6,58\n007,11,56\n,22,53\ne,14,50\nf,17,45\ng,18,43\nh,24,42\n"
      "i,19,39\nj,23,38\nk,26,30\nl,40,27\nm,4,NA\nn,5,\n";
  const Outcome run = orv("impute IN --method em --select x,y", input);
  ASSERT_EQ(run.code, 0) << run.err;
  const Strings lines = split(run.out), before = split(input);
  ASSERT_EQ(lines.size(), before.size());
  for (size_t i = 0; i < 13; ++i) EXPECT_EQ(lines[i], before[i]);
  double n = 0, x = 0, y = 0, xx = 0, xy = 0;
  for (size_t i = 1; i < 13; ++i) {
    const Strings cells =
        split(before[i].substr(before[i].rfind(',', before[i].rfind(',') - 1) + 1), ',');
    const double a = std::stod(cells[0]), b = std::stod(cells[1]);
    ++n, x += a, y += b, xx += a * a, xy += a * b;
  }
  const double slope = (xy - x * y / n) / (xx - x * x / n);
  for (const auto& [line, at] : {std::pair(13, 4.0), {14, 5.0}}) {
    EXPECT_NEAR(std::stod(split(lines[line], ',')[2]), y / n + slope * (at - x / n), 1e-5);
  }
  EXPECT_NE(run.err.find("2 cells filled; "), std::string::npos) << run.err;
}

TEST(Impute, ImputationsChangeMissingCellsOnlyAndArePooledByRubinsRules) {
  const std::string out = path_of("done.csv"), arguments = "impute " + airquality + " --format csv";
  const auto files = [&](const std::string& more) {
    const Outcome run = orv(arguments + " -m 3 --output " + out + more);
    EXPECT_EQ(run.code, 0) << run.err;
    Strings tables = {run.out};
    for (const char* number : {"-1", "-2", "-3"}) {
      const std::string file = path_of(std::string("done") + number + ".csv");
      tables.push_back(read_file(file));
      std::filesystem::remove(file);
    }
    return tables;
  };
  const Strings tables = files("");
  EXPECT_EQ(files(" --seed 1"), tables);
  EXPECT_NE(files(" --seed 2"), tables);
  const Rows before = rows_of(read_file(airquality));
  std::vector<double> means, variances;
  for (size_t k = 1; k <= 3; ++k) {
    const Rows after = rows_of(tables[k]);
    expect_completed(before, after);
    double mean = 0, squares = 0;
    for (size_t i = 1; i < after.size(); ++i) mean += std::stod(after[i][0]) / 153;
    for (size_t i = 1; i < after.size(); ++i) squares += std::pow(std::stod(after[i][0]) - mean, 2);
    means.push_back(mean);
    variances.push_back(squares / 152 / 153);
  }
  EXPECT_NE(tables[1], tables[2]);
  const double mean = (means[0] + means[1] + means[2]) / 3;
  const double within = (variances[0] + variances[1] + variances[2]) / 3;
  double between = 0;
  for (const double m : means) between += (m - mean) * (m - mean) / 2;
  const double total = within + 4.0 / 3 * between, part = 4.0 / 3 * between / total;
  const Rows report = rows_of(tables[0]);
  EXPECT_EQ(tables[0].substr(0, tables[0].find('\n')),
            "column,missing,mean,standard_error,variance,within,between,df,missing_information");
  EXPECT_EQ(report[1][0] + report[1][1], "Ozone37");
  const double expected[] = {mean, std::sqrt(total), total, within, between, 2 / part / part, part};
  for (size_t k = 0; k < 7; ++k) {
    EXPECT_NEAR(std::stod(report[1][2 + k]), expected[k], 1e-6 * expected[k]) << k;
  }
  EXPECT_EQ(report[3][6], "0");  // Wind has no missing cell
}

TEST(Impute, OtherDelimitersNothingMissingAndMistakes) {
  const Outcome semicolons =
      orv("impute IN --method em --delimiter ';' --decimal ,", "a;b\n1,5;2\n2,5;-\n4;5\n9;11\n");
  EXPECT_TRUE(semicolons.out.starts_with("a;b\n1,5;2\n2,5;3,")) << semicolons.out << semicolons.err;
  const std::string whole = "a,b\n1,2\n3,5\n4,4\n6,9\n";
  EXPECT_EQ(orv("impute IN --method em", whole).out, whole);
  EXPECT_EQ(orv("impute IN -m 2", whole).code, 0);
  std::string copies = "a,b\n";
  for (int i = 0; i < 9; ++i) copies += std::to_string(i) + "," + std::to_string(2 * i) + "\n";
  expect_mistakes(
      [](const std::string& a, const std::string& in) { return orv("impute " + a, in); },
      {{"IN --method me", whole, {"--method", "me", "em"}},
       {"IN -m 0", whole, {"-m", "0", "1 to 10000"}},
       {"IN -m 2 --output /no/folder/x.csv", whole, {"--output", "/no/folder/x-1.csv"}},
       {"IN", "a,b\n1,2\n3,\n4,5\n", {"3 rows of 2 columns", "4 rows"}},
       {"IN", copies + "9,\n", {"--method mi", "depend on each other"}},
       {"IN --method em --select a,b", "a,b\n1,2\n2,inf\n3,\n4,5\n", {"'b'", "infinite"}}});
}

// The estimate is one that a plain loop in R gave.
TEST(StatsOfMissing, EmFindsTheMaximumOfTheLikelihood) {
  const Outcome run = orv("stats " + airquality + " --missing em --format csv");
  ASSERT_EQ(run.code, 0) << run.err;
  Rows rows = rows_of(run.out);
  const auto at = std::ranges::find(rows, Strings{"EM estimate", "mean", "std. deviation"});
  ASSERT_LE(16, rows.end() - at);
  const double mean[] = {41.87117302, 184.84680625, 9.95751634, 77.88235294};
  const double ozone[] = {1044.01864306, 942.52984181, -64.63592769, 209.56350283};
  for (int j = 0; j < 4; ++j) {
    EXPECT_NEAR(std::stod(at[1 + j][1]), mean[j], 1e-7);
    EXPECT_NEAR(std::stod(at[7][1 + j]), ozone[j], 1e-5);  // of the covariance
  }
  EXPECT_EQ(at[13][1], "1");  // of the correlation
  EXPECT_NE(run.err.find("EM: 17 iterations"), std::string::npos) << run.err;
  expect_mistakes([](const std::string& a, const std::string& in) { return orv("stats " + a, in); },
                  {{"IN --missing em --by 1", "a,b\n1,2\n2,3\n", {"--by", "--missing em"}},
                   {"IN --eps 0", "1\n2\n", {"--eps", "0"}},
                   {"IN --eps 0.1 --histogram", "1\n2\n", {"--eps", "--histogram"}}});
}

// Asked for, or when the values take too much memory.
TEST(StatsOfStreams, QuantilesAreToldWithoutTheValues) {
  std::string input = "x,y\n";
  const int n = 200000;
  for (int i = 0; i < n; ++i) {
    input += std::to_string(i * 7919LL % n) + (i % 2 ? ",NA\n" : "," + std::to_string(i) + "\n");
  }
  for (const auto& [how, epsilon] : {std::pair("--eps 0.01", 0.01), {"--memory 1", 1e-4}}) {
    const Outcome run = orv(std::string("stats IN --quantiles 0,0.3,1 --format csv ") + how, input);
    ASSERT_EQ(run.code, 0) << run.err;
    const Rows rows = rows_of(run.out);
    for (int j = 0; j < 2; ++j) {
      for (const auto& [head, order] : {std::pair("q0", 0.0), {"q0.3", 0.3}, {"q1", 1.0}}) {
        const auto column = std::ranges::find(rows[0], head) - rows[0].begin();
        EXPECT_NEAR(std::stod(rows[1 + j][column]), order * n, epsilon * n + 2) << how << head;
      }
    }
    EXPECT_NE(run.err.find("whose rank is off by"), std::string::npos) << run.err;
  }
}

}  // namespace
