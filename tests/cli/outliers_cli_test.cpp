// SPDX-License-Identifier: MIT
// orv stats --outliers, --mahalanobis and --repair-correlation: tables, notes, pictures, mistakes.
#include <cmath>
#include <random>

#include "command.hpp"

namespace {

const std::string data = ORV_EXAMPLE_DATA "/";

Outcome stats(const std::string& arguments, const std::string& input = "") {
  return orv("stats " + arguments, input);
}

/// Rows of the table of CSV output that has this title; none without it.
std::vector<Strings> table(const Outcome& run, const std::string& title) {
  EXPECT_EQ(run.code, 0) << run.err;
  std::vector<Strings> rows;
  bool inside = false;
  for (const std::string& line : split(run.out)) {
    if (inside && !line.empty()) rows.push_back(split(line, ','));
    inside = !line.empty() && (inside || line.starts_with(title));
  }
  return rows;
}

Strings labels(const std::vector<Strings>& rows) {
  Strings result;
  for (const Strings& row : rows) result.push_back(row[0]);
  return result;
}

const Strings fourteen = {"1", "2", "3",  "4",  "5",  "6",  "7",
                          "8", "9", "10", "11", "12", "13", "14"};

// The outliers that Hawkins, Bradu and Kass (1984) made, and means of the rows between them.
TEST(Outliers, OfClassicalData) {
  const Outcome run = stats(data + "hbk.csv --outliers --distances --format csv");
  expect_all_in(run.err,
                {"14 of 75 rows are outliers (alpha 0.05, 0.000667 a row; start medians)"});
  const auto outliers = table(run, "Outliers by row");
  EXPECT_EQ(labels(outliers), fourteen);
  EXPECT_EQ(Strings(outliers[13].begin() + 2, outliers[13].end()),
            (Strings{"11", "34", "34", "0.1"}));
  const auto means = table(run, "\"Mean and deviation"), flags = table(run, "Distances by row");
  ASSERT_EQ(flags.size(), 75u);
  double sum = 0;
  for (size_t i = 0; i < 75; ++i) {
    EXPECT_EQ(flags[i][2], i < 14 ? "1" : "0");
    if (i < 14) {
      EXPECT_EQ(flags[i][1], outliers[i][1]);
    } else {
      sum += std::pow(std::stod(flags[i][1]), 2);
    }
  }
  EXPECT_NEAR(sum, 60 * 4, 1e-9);  // squares of distances from their own mean
}

// The same rows whatever the units, the precision, the rows that were dropped, and however many
// threads; row numbers are those of the file.
TEST(Outliers, SameRowsInEveryWay) {
  std::mt19937 random(1);
  std::normal_distribution<double> normal;
  std::ostringstream plain, odd;
  Strings expected;
  plain << "a,b,c\n", odd << "a,b,c,w\n";
  for (int i = 1; i <= 500; ++i) {
    const double a = normal(random), b = normal(random), c = a + 0.5 * normal(random);
    const double shift = i % 10 == 3 ? 15 : 0;
    if (i % 100 == 50) {
      plain << ",,\n", odd << "1,2,,1\n";
      continue;
    }
    if (shift > 0) expected.push_back(std::to_string(i));
    plain << a << "," << b - shift << "," << c + shift << "\n";
    odd << 1e6 * a << "," << 1e-7 * (b - shift) << "," << 300 + 40 * (c + shift) << ",2\n";
  }
  for (const std::string& input : {plain.str(), odd.str()}) {
    const std::string weights = input == odd.str() ? " --weights w" : "";
    for (const char* more :
         {"", " --precision s", " --threads 3", " --start mean", " --alpha 0.5"}) {
      const Outcome run = stats("IN --outliers --format csv" + weights + more, input);
      const Strings found = labels(table(run, "Outliers by row"));
      EXPECT_TRUE(std::ranges::includes(
          found, expected, {}, [](const auto& s) { return std::stoi(s); },
          [](const auto& s) { return std::stoi(s); }))
          << more;
      EXPECT_LE(found.size(), expected.size() + 3) << more;
    }
  }
  const Outcome clean = stats(data + "stackloss.csv --outliers --format csv");
  EXPECT_EQ(labels(table(clean, "Outliers by row")), Strings());
  expect_all_in(clean.err, {"0 of 21 rows are outliers"});
}

TEST(Mahalanobis, OfClassicalData) {
  const Outcome run = stats(data + "stackloss.csv --mahalanobis --format csv");
  const auto rows = table(run, "Mahalanobis distances by row");
  ASSERT_EQ(rows.size(), 21u);
  double sum = 0;
  for (const Strings& row : rows) sum += std::pow(std::stod(row[1]), 2);
  EXPECT_NEAR(sum, 20 * 4, 1e-9);
  EXPECT_NEAR(std::stod(rows[20][1]), 3.25528, 1e-5);
  EXPECT_NEAR(std::stod(rows[20][2]), 0.0314885, 1e-6);
  expect_all_in(run.err, {"0 of 21 rows are beyond the cut-off 3.338"});
}

TEST(Correlation, MadePositiveDefinite) {
  // Of pairs of columns, each in rows of their own: a and b, b and c agree, a and c don't.
  std::string input = "a,b,c\n";
  for (int i = 0; i < 30; ++i) {
    const std::string x = std::to_string(i), y = std::to_string(i + i % 3), z = std::to_string(-i);
    input += x + "," + y + ",\n," + x + "," + y + "\n" + x + ",," + z + "\n";
  }
  const Outcome run = stats("IN --missing pairwise --cor --repair-correlation --format csv", input);
  expect_all_in(run.err, {"least eigenvalue -0.", " after; largest change 0."});
  const auto before = table(run, "Correlation"), after = table(run, "Repaired correlation");
  ASSERT_EQ(after.size(), 3u);
  const auto element = [](const auto& rows, size_t i, size_t j) {
    return std::stod(rows[i][j + 1]);
  };
  const auto determinant = [&](const auto& m) {
    const double a = element(m, 0, 1), b = element(m, 0, 2), c = element(m, 1, 2);
    return 1 + 2 * a * b * c - a * a - b * b - c * c;
  };
  EXPECT_LT(determinant(before), -0.5);
  EXPECT_NEAR(determinant(after), 0, 1e-12);
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(element(after, i, i), 1);
    for (size_t j = 0; j < 3; ++j)
      EXPECT_LT(std::fabs(element(after, i, j) - element(before, i, j)), 0.9);
  }
  const Outcome good = stats(data + "iris.csv --repair-correlation");
  expect_all_in(good.out, {"Repaired correlation", "the correlation stays as it is"});
}

TEST(Outliers, Pictures) {
  for (const char* option : {"--outliers", "--mahalanobis"}) {
    const Outcome run = stats(data + "hbk.csv --plot - " + option);
    EXPECT_EQ(run.code, 0) << run.err;
    expect_all_in(run.out, {"cut-off", "row  1"});
  }
}

TEST(Outliers, Mistakes) {
  const std::string few = "a,b\n1,2\n2,3\n4,1\n5,5\n7,6\n8,1\n9,9\n3,7\n6,2\n";
  std::string equal = "a,b\n", dependent = "a,b\n", infinite = "a,b\n1,inf\n";
  for (int i = 0; i < 40; ++i) {
    equal += std::to_string(i) + ",3\n";
    dependent += std::to_string(i) + "," + std::to_string(2 * i) + "\n";
    infinite += std::to_string(i) + "," + std::to_string(i * i) + "\n";
  }
  expect_mistakes(
      stats,
      {
          {"IN --outliers", few, {"--outliers: 9 complete rows of 2 columns; needed are 10"}},
          {"IN --outliers", equal, {"--outliers", "'b' are the same", "--select"}},
          {"IN --outliers", infinite, {"--outliers", "'b' is infinite"}},
          {"IN --outliers --alpha 0", few, {"--alpha 0", "between 0 and 1"}},
          {"IN --outliers --alpha nan", few, {"--alpha nan", "between 0 and 1"}},
          {"IN --alpha 0.1", few, {"--alpha 0.1", "--outliers"}},
          {"IN --start mean", few, {"--start mean", "--outliers"}},
          {"IN --outliers --start middle", few, {"--start", "middle", "medians", "mean"}},
          {"IN --outliers --missing pairwise",
           few,
           {"--missing pairwise", "--outliers", "drop and fail"}},
          {"IN --mahalanobis --missing pairwise", few, {"--mahalanobis needs complete rows"}},
          {"IN --mahalanobis", dependent, {"--mahalanobis", "depend on each other"}},
          {"IN --outliers --mahalanobis --plot -", few, {"--plot '-'", "one of --robust"}},
          {"IN --mahalanobis --distances", few, {"--distances", "--outliers"}},
          {"IN --repair-correlation",
           equal,
           {"--repair-correlation: 'a' and 'b'", "does not vary"}},
      });
}

}  // namespace
