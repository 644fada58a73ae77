// orv stats: its figures against sums in long double, and what it says to mistakes.
#include <cmath>
#include <initializer_list>
#include <random>

#include "command.hpp"

namespace {

using Real = long double;

/// The input is a file, or standard input if "-" is among the arguments.
Outcome stats(const std::string& arguments, const std::string& input) {
  const std::string command = "stats " + arguments;
  return orv(command + (command.find(" - ") == std::string::npos ? " IN" : ""), input);
}

/// The tables of CSV output.
std::vector<std::vector<Strings>> tables(const std::string& arguments, const std::string& input) {
  const Outcome run = stats(arguments + " --format csv", input);
  EXPECT_EQ(run.code, 0) << arguments << "\n" << run.err;
  std::vector<std::vector<Strings>> result(1);
  for (const std::string& line : split(run.out)) {
    if (line.empty()) {
      result.emplace_back();
    } else {
      result.back().push_back(split(line, ','));
    }
  }
  return result;
}

double number(const std::string& text) { return text.empty() ? NAN : std::stod(text); }

/// Rows of values with weights; NaN is a missing cell.
struct Data {
  std::vector<std::vector<double>> rows;
  std::vector<double> weights;

  std::string csv() const {
    std::ostringstream text;
    text.precision(17);
    for (size_t j = 0; j < rows[0].size(); ++j) text << "x" << j << ",";
    text << "w\n";
    for (size_t i = 0; i < rows.size(); ++i) {
      for (const double x : rows[i]) std::isnan(x) ? text << "," : text << x << ",";
      text << weights[i] << "\n";
    }
    return text.str();
  }
};

Data make_data(size_t n, size_t p, double offset, double part_missing) {
  std::mt19937 random(static_cast<unsigned>(n * 31 + p));
  std::gamma_distribution<double> gamma(2);
  Data data;
  for (size_t i = 0; i < n; ++i) {
    auto& row = data.rows.emplace_back(p);
    for (double& x : row) x = random() < part_missing * 0x1p32 ? NAN : offset + gamma(random);
    for (size_t j = 1; j < p; ++j) row[j] += 0.3 * (row[j - 1] - offset);
    data.weights.push_back(static_cast<double>(random() % 8) / 4);
  }
  return data;
}

/// E f(x) over W, with the sums of weights.
struct Sums {
  std::vector<std::pair<size_t, Real>> rows;  // with their weights
  const Data& data;
  Real w = 0, w2 = 0;

  /// Of the rows in which none of the columns is missing.
  Sums(const Data& d, bool weighted, const std::vector<size_t>& columns) : data(d) {
    for (size_t i = 0; i < d.rows.size(); ++i) {
      const Real weight = weighted ? d.weights[i] : 1;
      const auto is_there = [&](size_t j) { return !std::isnan(d.rows[i][j]); };
      if (weight == 0 || !std::ranges::all_of(columns, is_there)) continue;
      rows.emplace_back(i, weight);
      w += weight;
      w2 += weight * weight;
    }
  }
  /// Values are taken from here, lest sums round.
  Real origin(size_t j) const { return data.rows[rows[rows.size() / 2].first][j]; }
  Real shift(size_t j) const {
    Real sum = 0;
    for (const auto& [i, weight] : rows) sum += weight * (data.rows[i][j] - origin(j));
    return sum / w;
  }
  Real mean(size_t j) const { return origin(j) + shift(j); }
  /// The mean product of the deviations of these columns, which may come repeatedly.
  Real central(std::initializer_list<size_t> columns) const {
    std::vector<Real> means;
    for (const size_t j : columns) means.push_back(shift(j));
    Real sum = 0;
    for (const auto& [i, weight] : rows) {
      Real product = weight;
      auto mean = means.begin();
      for (const size_t j : columns) product *= data.rows[i][j] - origin(j) - *mean++;
      sum += product;
    }
    return sum / w;
  }
  Real covariance(size_t j, size_t k) const { return central({j, k}) * w / (w - w2 / w); }
  Real correlation(size_t j, size_t k) const {
    return covariance(j, k) / sqrtl(covariance(j, j) * covariance(k, k));
  }
  std::vector<double> sorted(size_t j) const {
    std::vector<double> values;
    for (const auto& [i, weight] : rows) values.push_back(data.rows[i][j]);
    std::ranges::sort(values);
    return values;
  }
};

TEST(Stats, ColumnsAreRight) {
  struct Case {
    size_t n, p;
    double offset;
    const char* arguments;
    bool weighted = false, pairwise = false, single = false;
    double first = NAN;  // all of the first row
  };
  const Case cases[] = {
      {7, 1, 0, ""},
      {500, 3, 1e9, ""},
      {500, 3, 1e9, "--threads 3", false, false, false, 0},
      {500, 19, -5, "--threads 2"},
      {500, 4, 5, "--weights w", true},
      {500, 4, 1e9, "--weights w --missing pairwise --threads 3", true, true},
      {3000, 19, 1e6, "--missing pairwise --threads 2", false, true},
      {500, 4, 1, "--precision s", false, false, true},
      {150000, 5, 1e7, "--threads 2"},
  };
  for (const Case& c : cases) {
    Data data = make_data(c.n, c.p, c.offset, c.pairwise ? 0.2 : 0.01);
    if (!std::isnan(c.first)) std::ranges::fill(data.rows[0], c.first);
    std::string select = " --select x0";
    std::vector<size_t> all;
    for (size_t j = 0; j < c.p; ++j) all.push_back(j);
    for (size_t j = 1; j < c.p; ++j) select += ",x" + std::to_string(j);
    const auto table = tables(c.arguments + select, data.csv())[0];
    ASSERT_EQ(table.size(), c.p + 1) << c.arguments;
    const double unit = c.single ? 0x1p-23 : 0x1p-52;
    for (size_t j = 0; j < c.p; ++j) {
      const Strings& row = table[j + 1];
      ASSERT_EQ(row.size(), 12u);
      const Sums sums(data, c.weighted, c.pairwise ? std::vector{j} : all);
      const auto values = sums.sorted(j);
      const Real c2 = sums.covariance(j, j);
      const auto expect = [&](size_t column, Real exact, double tolerance) {
        EXPECT_NEAR(number(row[column]), static_cast<double>(exact), tolerance)
            << c.arguments << " n " << c.n << " " << table[0][column] << " of " << row[0];
      };
      EXPECT_EQ(row[1], std::to_string(values.size()));
      const double rounding = c.single ? 0x1p-24 : 0;  // of exact arithmetic
      expect(3, sums.mean(j), rounding * std::fabs(c.offset + 1));
      expect(4, sqrtl(c2), rounding * static_cast<double>(sqrtl(c2)));
      expect(5, values.front(), unit * std::fabs(values.front()));
      expect(9, values.back(), unit * std::fabs(values.back()));
      const auto skewness = static_cast<double>(sums.central({j, j, j}) / powl(c2, 1.5L));
      const auto kurtosis = static_cast<double>(sums.central({j, j, j, j}) / (c2 * c2));
      // Rounding of the mean shifts the origin; an outlying row costs digits of these two only.
      const double digits = std::isnan(c.first) ? 1e4 * unit : 1e-12;
      expect(10, skewness, digits * (1 + std::fabs(skewness)));
      expect(11, kurtosis - 3, digits * kurtosis);
      if (c.weighted) continue;
      for (const int q : {1, 2, 3}) {
        const double at = static_cast<double>(values.size() - 1) * q / 4;
        const auto k = static_cast<size_t>(at);
        const Real next = values[std::min(k + 1, values.size() - 1)];
        expect(5 + q, values[k] + (at - k) * (next - values[k]), 4 * unit * (1 + fabsl(next)));
      }
    }
  }
}

TEST(Stats, MatricesAreRight) {
  for (const bool pairwise : {false, true}) {
    for (const bool weighted : {false, true}) {
      const Data data = make_data(400, 4, 100, 0.1);
      std::string arguments = "--select x0,x1,x2,x3 --cov --cor --partial x0,x2 --given x3";
      if (pairwise) arguments += " --missing pairwise";
      if (weighted) arguments += " --weights w";
      const auto out = tables(arguments, data.csv());
      ASSERT_EQ(out.size(), 5u);
      EXPECT_EQ(out[1][0], (Strings{"Covariance", "x0", "x1", "x2", "x3"}));
      const auto sums = [&](size_t j, size_t k) {
        return Sums(data, weighted, pairwise ? std::vector{j, k} : std::vector<size_t>{0, 1, 2, 3});
      };
      const auto cov = [&](size_t j, size_t k) { return sums(j, k).covariance(j, k); };
      const auto partial = [&](size_t j, size_t k) {
        return cov(j, k) - cov(j, 3) * cov(3, k) / cov(3, 3);
      };
      for (size_t j = 0; j < 4; ++j) {
        for (size_t k = 0; k < 4; ++k) {
          const auto expect = [&](size_t table, size_t step, Real exact) {
            const std::string& cell = out[table].at(j / step + 1).at(k / step + 1);
            EXPECT_NEAR(number(cell), static_cast<double>(exact), 1e-12)
                << arguments << " " << out[table][0][0] << " " << j << " " << k;
          };
          expect(1, 1, cov(j, k));
          expect(2, 1, sums(j, k).correlation(j, k));
          if (j % 2 != 0 || k % 2 != 0) continue;
          expect(3, 2, partial(j, k));
          expect(4, 2, partial(j, k) / sqrtl(partial(j, j) * partial(k, k)));
        }
      }
    }
  }
}

TEST(Stats, DigitsAreExactAndTheSameForAnyNumberOfThreads) {
  std::string numbers = "x,g\n";
  for (int i = 1; i <= 1000; ++i) numbers += std::to_string(i) + ",a\n";
  const auto out = tables("--by g", numbers);
  EXPECT_EQ(out[0][1][3], "500.5");
  EXPECT_EQ(out[0][1][4], "288.8194360957494");
  EXPECT_EQ(out[1][1], (Strings{"a", "1000", "500.5"}));
  EXPECT_EQ(tables("", "x\n1e20\n1\n-1e20\n")[0][1][3], "0.3333333333333333");
  const std::string input = make_data(30000, 9, 3, 0).csv();
  for (const std::string options : {"", "--cov --cor --precision s", "--cor --weights w"}) {
    const std::string alone = stats(options + " --format csv --threads 1", input).out;
    for (const char* threads : {" --threads 2", " --threads 5"}) {
      EXPECT_EQ(stats(options + " --format csv" + threads, input).out, alone) << options << threads;
    }
  }
}

TEST(Stats, PrintsGroupsGapsAndNames) {
  const char* missing = "a,b,c\n1,2,\n3,NA,4\n5,6,7\n8,9,nan\n10,11,12\n";
  const char* constant = "a,b\n3,4\n3,5\n";
  const char* names = "\"a \"\"b\",gr\xC3\xB6\xC3\x9F\x65\n1.5,2\n4,1\n2.25,7\n";
  const std::string pooled = "Pooled covariance within g,x,y\nx,5,21\ny,21,101\n";
  const struct {
    const char *arguments, *input;
    Strings out, err;
  } cases[] = {
      {"--by g --format csv",
       "x,y,g\n1,10,u\n2,30,v\n3,12,u\n8,,v\n6,50,v\n4,20,\n",
       {"\nx,4,", "\n\nmean by g,count,x,y\nu,2,2,11\nv,2,4,40\n\n" + pooled},
       {"6 rows, 2 dropped"}},
      {"--by g --format csv",
       "x,y,g\n1,10,7\n2,30,5\n3,12,7\n6,50,5\n",
       {"\n\nmean by g,count,x,y\n7,2,2,11\n5,2,4,40\n\n" + pooled},
       {}},
      {"", missing, {"5 rows, 3 dropped"}, {}},
      {"--format csv", missing, {"\na,2,0,", "\nb,2,1,", "\nc,2,2,"}, {"5 rows, 3 dropped"}},
      {"--format csv --missing pairwise", missing, {"\na,5,0,", "\nb,4,1,", "\nc,3,2,"}, {}},
      {"--format csv --missing fail --select a", missing, {"\na,5,0,"}, {}},
      {"--format csv --missing pairwise --select a,b",
       "a,b\n1,\n2,\n",
       {"\na,2,0,1.5,", "\nb,0,2,,,,,,,,,\n"},
       {}},
      {"--format csv", "a,b\n3,4\n", {"\na,1,0,3,,3,3,3,3,3,,\n"}, {}},
      {"--format csv --cor", constant, {"\na,2,0,3,0,3,", "\na,1,\nb,,1\n"}, {}},
      {"--format json", "a\n3\n", {"\"standard_deviation\": null"}, {}},
      {"--format json", "a\n-inf\ninf\n", {"\"minimum\": \"-inf\"", "\"maximum\": \"inf\""}, {}},
      {"--format json --cor --quantiles 0.5 --precision s",
       names,
       {"\"rows\": 3", "\"name\": \"a \\\"b\"", "\"name\": \"gr\xC3\xB6\xC3\x9F\x65\"",
        "\"mean\": 2.5833333", "\"order\": 0.5", "\"value\": 2.25", "\"title\": \"Correlation\""},
       {}},
  };
  for (const auto& c : cases) {
    const Outcome run = stats(c.arguments, c.input);
    expect_all_in(run.out, c.out);
    expect_all_in(run.err, c.err);
    EXPECT_EQ(run.err.empty(), c.err.empty()) << run.err;
  }
  // Every line of a table ends in the same place, in letters rather than bytes.
  const auto lines = split(stats("", names).out);
  ASSERT_EQ(lines.size(), 14u);
  for (size_t i = 2; i < lines.size(); ++i) {
    const auto letters = std::ranges::count_if(lines[i], [](char c) { return (c & 0xC0) != 0x80; });
    EXPECT_EQ(letters, static_cast<std::ptrdiff_t>(lines[3].size())) << lines[i];
  }
}

TEST(Stats, ChoosesTheColumnsOfNumbers) {
  const std::string header =
      "orv: note: standard input: the first row is taken as a header, though it holds numbers; "
      "--header no takes it as data\n";
  const std::string data =
      "orv: note: standard input: the first row is taken as data, though it may be a header; "
      "--header yes takes it as one\n";
  const std::string text = "orv: note: left out, as they hold text: ";
  const char* mixed = "name,x,none,\"y,\"\"z\"\nab,1,,2\ncd,3,NA,4\n";
  const struct {
    const char *arguments, *input;
    Strings columns;
    std::string note;  // all of standard error
  } cases[] = {
      {"", "2020\n2.5\n", {"column 1"}, ""},
      {"", "a,b\n1,2\n3,4\n", {"a", "b"}, ""},
      {"-", "c,2020\nF,5.5\nS,7\n", {"2020"}, header + text + "c ('F', line 2)\n"},
      {"-", "c,2020\nF,1990\nS,7\n", {"column 2"}, data + text + "column 1 ('c', line 1)\n"},
      {"-", "c,2\nF,1.5\nS,-7e1\n", {"2"}, header + text + "c ('F', line 2)\n"},
      {"- --header yes", "c,2\nF,1\nS,-7\n", {"2"}, text + "c ('F', line 2)\n"},
      {"-", "c,2,2\nF,.5,.5\n", {"column 2", "column 3"}, text + "column 1 ('c', line 1)\n"},
      {"-", "id,7\n5,7\n6,9\n", {"id", "7"}, header},
      {"-", "2019,2020\n1,2\n", {"2019", "2020"}, header},
      {"-", "1,2\n1.5,2.5\n", {"column 1", "column 2"}, data},
      {"-", "1,2\n-1,2.5\n", {"column 1", "column 2"}, ""},
      {"-", ",7\n1,7.5\n", {"", "7"}, header},
      {"--select b", "a,b\n1,2\n3,4\n", {"b"}, ""},
      {"--select '2, a'", "a,b\n1,2\n3,4\n", {"b", "a"}, ""},
      {"--header yes", "1,2\n3,4\n", {"1", "2"}, ""},
      {"--header no", "1,2\n3,4\n", {"column 1", "column 2"}, ""},
      {"",
       mixed,
       {"x", "\"y,\"\"z\""},
       text + "name ('ab', line 2)\n"
              "orv: note: left out, as they are empty: none\n"},
      {"--select 'y,\"z'", mixed, {"\"y,\"\"z\""}, ""},
      {"--partial b --given c --select a", "a,b,c\n1,2,3\n3,4,4\n3,3,9\n", {"a", "b", "c"}, ""},
  };
  for (const auto& c : cases) {
    const Outcome run = stats(std::string(c.arguments) + " --format csv", c.input);
    EXPECT_EQ(run.err, c.note) << c.arguments << c.input;
    const auto lines = split(run.out);
    ASSERT_GT(lines.size(), c.columns.size()) << run.out;
    for (size_t j = 0; j < c.columns.size(); ++j) {
      EXPECT_EQ(lines[j + 1].rfind(c.columns[j] + ",", 0), 0u) << lines[j + 1];
    }
    EXPECT_TRUE(lines.size() == c.columns.size() + 1 || lines[c.columns.size() + 1].empty());
  }
}

// Beyond the memory that is allowed everything but quantiles comes out the same.
TEST(Stats, StreamsWhatDoesNotFit) {
  const std::string input = make_data(120000, 3, 2, 0).csv();
  const auto whole = tables("", input)[0];
  for (const char* source : {"--memory 1 --format csv ", "--memory 1 --format csv - "}) {
    const Outcome run = stats(source, input);
    EXPECT_EQ(run.code, 0);
    expect_all_in(run.err, {"quartiles are left out"});
    const auto lines = split(run.out);
    ASSERT_EQ(lines.size(), whole.size());
    for (size_t i = 0; i < lines.size(); ++i) {
      Strings expected = whole[i];
      expected.erase(expected.begin() + 6, expected.begin() + 9);
      EXPECT_EQ(split(lines[i], ','), expected);
    }
  }
  expect_mistakes(stats, {{"--quantiles 0.5 --memory 1", input, {"--memory MIB allows more"}},
                          {"--by w --memory 1", input, {"--memory MIB allows more"}}});
}

TEST(Stats, MistakesAreOneLineAndCode2) {
  std::string many = "a,b\n", wide, grouped;
  for (int i = 0; i < 1100; ++i) many += std::to_string(i) + ",1\n";
  for (int i = 0; i < 40000; ++i) wide += "1,";
  for (int i = 0; i < 1000; ++i) grouped += wide.substr(0, 200) + std::to_string(i) + "\n";
  const char* table = "a,b,t\n1,2,x\n3,,y\n5,-6,z\n";
  const std::vector<Mistake> mistakes = {
      {"", "", {"holds no number"}},
      {"", "a,b\n", {"only names"}},
      {"", "a,b\nx,y\n", {"no column of numbers", "a ('x', line 2)"}},
      {"", "a,b\n1,2\n3,q\n", {"line 3, column 2 (b)", "'q'", "1e-3"}},
      {"", "a,b\n1,\n,2\n", {"no row is complete", "pairwise"}},
      {"--missing fail", table, {"line 3, column 2 (b)", "empty", "drop or pairwise"}},
      {"--select t", table, {"line 2, column 3 (t)", "'x'"}},
      {"--select a,1", table, {"--select", "'a'", "twice"}},
      {"--select a,", table, {"--select", "''", "1 to 3"}},
      {"--weights b", table, {"line 4, column 2 (b)", "-6", "from 0"}},
      {"--weights a --select a", table, {"--weights", "'a'"}},
      {"--weights b", "a,b\n1,0\n2,0\n", {"no row is left", "2 have weight 0"}},
      {"--by q", table, {"--by", "'q'", "1 to 3"}},
      {"--by a --select a", table, {"--by", "'a'"}},
      {"--by t --missing pairwise", table, {"--by", "complete rows", "drop and fail"}},
      {"--by t --missing fail --select a", "a,t\n1,x\n1,\n", {"line 3, column 2 (t)", "group"}},
      {"--partial a", table, {"--partial 'a'", "--given"}},
      {"--partial a --given a", table, {"'a'", "twice"}},
      {"--partial a --given b,c", "a,b,c\n1,2,4\n3,3,6\n4,7,14\n", {"--given", "linearly"}},
      {"--partial a --given b", "a,b\n1,2\n3,2\n4,2\n", {"--given", "constant"}},
      {"--quantiles 0.5,1.5", table, {"--quantiles", "'1.5'", "0 to 1"}},
      {"--threads 0", table, {"--threads", "0", "1", "256"}},
      {"--memory 1", wide, {"line 1: a row of more than 37449 columns", "--memory MIB"}},
      {"--memory 1 --cov", wide.substr(0, 2000) + "1\n", {"of 1001 columns take", "--select"}},
      {"--memory 1 --by 101", grouped, {"of 100 columns take", "--memory MIB allows more"}},
      {"--by a", many, {"line 1002, column 1 (a)", "1000 groups"}},
      {"--select a --by b", "a,b\n1,\n2,\n", {"no row is complete"}},
  };
  expect_mistakes(stats, mistakes);
}

}  // namespace
