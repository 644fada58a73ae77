// SPDX-License-Identifier: MIT
// orv stats --robust: its tables, distances and pictures, and what it says to mistakes.
#include <cmath>
#include <random>

#include "command.hpp"

namespace {

const std::string data = ORV_EXAMPLE_DATA "/";

Outcome stats(const std::string& arguments, const std::string& input = "") {
  return orv("stats " + arguments, input);
}

/// The tables of CSV output by the heads of their first columns.
std::vector<Strings> table(const std::string& out, const std::string& title) {
  std::vector<Strings> rows;
  bool inside = false;
  for (const std::string& line : split(out)) {
    if (line.empty()) inside = false;
    if (line.starts_with(title)) inside = true;
    if (inside) rows.push_back(split(line, ','));
  }
  EXPECT_GT(rows.size(), 1u) << title;
  return rows;
}

/// Correlated normal rows of three columns, in the units given; the first tenth lies far off.
std::string rows_in_units(const std::vector<double>& units) {
  std::mt19937 random(1);
  std::normal_distribution<double> normal;
  std::ostringstream text;
  text.precision(17);
  text << "a,b,c\n";
  for (int i = 0; i < 300; ++i) {
    double before = 0;
    for (size_t j = 0; j < units.size(); ++j) {
      before = 0.5 * before + normal(random);
      text << (j > 0 ? "," : "") << units[j] * (before + (i < 30 ? 12 : 0));
    }
    text << "\n";
  }
  return text.str();
}

// The distances of R's robustbase 0.95, covOGK(x, n.iter = 1, sigmamu = scaleTau2).
TEST(Robust, DistancesOfStackloss) {
  const Outcome run = stats(data + "stackloss.csv --robust ogk --distances --format csv");
  ASSERT_EQ(run.code, 0) << run.err;
  const auto centre = table(run.out, "\"Mean and deviation");
  EXPECT_EQ(centre[1][0], "Air.Flow");
  EXPECT_DOUBLE_EQ(std::stod(centre[1][2]), 56.375);
  EXPECT_NEAR(std::stod(centre[1][4]), std::sqrt(21.609375), 1e-9);
  const auto cov = table(run.out, "Robust covariance");
  EXPECT_NEAR(std::stod(cov[1][4]), 18.1015625, 1e-9);
  const auto distances = table(run.out, "Distances by row");
  ASSERT_EQ(distances.size(), 22u);
  const Strings beyond = {"1", "2", "3", "4", "21"};
  for (const Strings& row : distances) {
    if (row[0] == "Distances by row") continue;
    EXPECT_EQ(row[3] == "1", std::ranges::count(beyond, row[0]) == 1) << row[0];
    EXPECT_EQ(std::stod(row[2]) > std::sqrt(11.14328678), row[3] == "1") << row[0];
  }
  EXPECT_NEAR(std::stod(distances[21][1]), 3.25528, 1e-4);
  EXPECT_NEAR(std::stod(distances[1][2]), 10.5934, 1e-4);
  expect_all_in(run.err, {"5 of 21 rows are beyond the cut-off 3.338: 1, 2, 3, 4, 21"});
}

// Units don't matter, though the library's own stopping rule has one; nor does the precision but
// for rounding. Row numbers are those of the file where rows were dropped.
TEST(Robust, SameRowsInAnyUnitAndPrecision) {
  const std::string unit = rows_in_units({1, 1, 1}), odd = rows_in_units({1e-6, 1e7, 300});
  for (const char* method : {"ogk", "tbs"}) {
    const std::string arguments = std::string("IN --distances --format csv --robust ") + method;
    const auto expected = table(stats(arguments, unit).out, "Distances by row");
    for (const auto& [more, input, tolerance] :
         {std::tuple("", &odd, 1e-4), {" --precision s", &unit, 0.01}}) {
      const auto found = table(stats(arguments + more, *input).out, "Distances by row");
      ASSERT_EQ(found.size(), 301u);
      for (size_t i = 1; i < 301; ++i) {
        EXPECT_NEAR(std::stod(found[i][2]), std::stod(expected[i][2]),
                    tolerance * std::stod(expected[i][2]))
            << method << more << i;
      }
    }
    for (size_t i = 1; i <= 30; ++i) EXPECT_EQ(expected[i][3], "1") << i;
  }
  std::string dropped = unit;
  dropped.insert(dropped.find('\n') + 1, ",1,2\nNA,3,4\n");
  const auto found =
      table(stats("IN --distances --format csv --robust ogk", dropped).out, "Distances by row");
  EXPECT_EQ(found[1][0], "3");
  EXPECT_EQ(found[300][0], "302");
}

TEST(Robust, ReportsAsTableAndJson) {
  const std::string hbk = data + "hbk.csv --select X1,X2,X3 --robust tbs";
  const Outcome plain = stats(hbk);
  ASSERT_EQ(plain.code, 0) << plain.err;
  expect_all_in(plain.out, {"robust mean", "1.5377", "Robust covariance", "14 of 75 rows",
                            "1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14\n"});
  EXPECT_EQ(plain.out.find("Distances by row"), std::string::npos);
  const Outcome json = stats(hbk + " --format json --distances");
  ASSERT_EQ(json.code, 0) << json.err;
  expect_all_in(json.out, {"\"columns\": [", "\"robust std. dev.\"", "\"Distances by row\"",
                           "\"note\": \"14 of 75"});
  EXPECT_EQ(stats(hbk + " --threads 1").out, stats(hbk + " --threads 2").out);
}

// A mark for each row, and for those beyond the line another.
TEST(Robust, Plots) {
  const std::string hbk = data + "hbk.csv --select X1,X2,X3 --robust ogk --plot ";
  const std::string file = path_of("plot.svg");
  ASSERT_EQ(stats(hbk + file).code, 0);
  std::ifstream stream(file);
  const std::string svg(std::istreambuf_iterator<char>(stream), {});
  unlink(file.c_str());
  const auto count = [](const std::string& text, const std::string& part) {
    int found = 0;
    for (size_t at = 0; (at = text.find(part, at)) != text.npos; ++at) ++found;
    return found;
  };
  EXPECT_TRUE(svg.starts_with("<svg ")) << svg;
  EXPECT_TRUE(svg.ends_with("</svg>\n"));
  EXPECT_EQ(count(svg, "<circle "), 75);
  EXPECT_EQ(count(svg.substr(svg.find("cut-off")), "<circle "), 14);
  expect_all_in(svg, {"cut-off 3.058", "stroke-dasharray", ">14</text>", ">75</text>"});

  const Outcome text = stats(hbk + "-");
  ASSERT_EQ(text.code, 0);
  const std::string plot = text.out.substr(text.out.find("\ndistance\n"));
  EXPECT_EQ(std::ranges::count(plot.substr(0, plot.find("-- cut-off")), '*'), 13);  // 1 and 2 share
  expect_all_in(plot, {"3.058 |-----", "cut-off 3.058, * beyond it"});
}

TEST(Robust, SaysWhatIsWrong) {
  std::string equal = "a,b,c\n", dependent = equal,
              infinite = rows_in_units({1, 1, 1}) + "inf,1,1\n";
  std::mt19937 random(1);
  for (int i = 0; i < 40; ++i) {
    const std::string u = std::to_string(random() % 1000), v = std::to_string(random() % 1000);
    equal += u + "," + v + ",7\n";
    dependent += u + "," + v + "," + std::to_string(std::stoi(u) + std::stoi(v)) + "\n";
  }
  const std::string fine = rows_in_units({1, 1, 1});
  expect_mistakes(
      [](const std::string& arguments, const std::string& input) {
        return stats(arguments, input);
      },
      {{"IN --robust mcd", fine, {"--robust", "mcd", "ogk", "tbs"}},
       {"IN --robust ogk --memory 0", fine, {"--robust", "0 MiB", "--memory"}},
       {"IN --distances", fine, {"--distances", "--robust"}},
       {"IN --plot x.gif", fine, {"--plot", "'x.gif'", ".svg or .png"}},
       {"IN --robust ogk --plot - --format csv", fine, {"--plot -", "csv", "table"}},
       {"IN --robust ogk --missing pairwise", fine, {"pairwise", "--robust ogk", "drop"}},
       {"IN --robust ogk --select a,b --weights c", fine, {"--weights", "no weights"}},
       {"IN --robust tbs",
        "a,b,c\n1,2,3\n4,5,7\n2,1,1\n",
        {"--robust tbs", "3 complete rows of 3", "more than 6"}},
       {"IN --robust tbs", equal, {"--robust tbs", "'c'", "the same", "--select"}},
       {"IN --robust ogk", dependent, {"--robust ogk", "depend on each other", "--select"}},
       {"IN --robust tbs", dependent, {"--robust tbs", "depend on each other", "--select"}},
       {"IN --robust ogk", infinite, {"--robust ogk", "'a'", "infinite"}}});
  const Outcome unwritable = stats("IN --robust ogk --plot /nowhere/x.svg", fine);
  EXPECT_EQ(unwritable.code, 2);
  expect_all_in(unwritable.err, {"--plot", "/nowhere/x.svg", "No such file"});
}

}  // namespace
