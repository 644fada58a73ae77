// SPDX-License-Identifier: MIT
// orv stats: its figures against sums in long double, and what it says to mistakes.
#include <cmath>
#include <numeric>
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
  double offset;

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
  Data data = {{}, {}, offset};
  for (size_t i = 0; i < n; ++i) {
    auto& row = data.rows.emplace_back(p);
    for (double& x : row) x = random() < part_missing * 0x1p32 ? NAN : offset + gamma(random);
    for (size_t j = 1; j < p; ++j) row[j] += 0.3 * (row[j - 1] - offset);
    data.weights.push_back(static_cast<double>(random() % 8) / 4);
  }
  return data;
}

bool has(const std::string& arguments, const char* word) {
  return arguments.find(word) != std::string::npos;
}

/// Two columns of the rows that the arguments of a run leave, as deviations from their means. Sums
/// are taken from the data's offset on, lest they round.
struct Pair {
  struct Row {
    Real weight, x, y;
  };
  std::vector<Row> rows;
  Real w = 0, w2 = 0, mean;  // sums of weights and their squares, x's mean

  Pair(const Data& data, const std::string& arguments, size_t j, size_t k) {
    const Real offset = data.offset;
    for (size_t i = 0; i < data.rows.size(); ++i) {
      const auto& x = data.rows[i];
      const Real weight = has(arguments, "--weights") ? data.weights[i] : 1;
      const bool pairwise = has(arguments, "pairwise") || has(arguments, "available");
      if (std::isnan(pairwise ? x[j] + x[k] : std::reduce(x.begin(), x.end()))) continue;
      if (weight > 0) rows.push_back({weight, x[j] - offset, x[k] - offset});
      w += weight;
      w2 += weight * weight;
    }
    mean = offset + moment(1, 0);
    for (const Real mx = moment(1, 0), my = moment(0, 1); auto& [weight, x, y] : rows) {
      x -= mx;
      y -= my;
    }
  }
  /// The mean of x^p y^q.
  Real moment(int p, int q) const {
    Real sum = 0;
    for (const auto& [weight, x, y] : rows) sum += weight * powl(x, p) * powl(y, q);
    return sum / w;
  }
  Real covariance() const { return moment(1, 1) * w / (w - w2 / w); }
};

TEST(Stats, ColumnsAreRight) {
  const struct {
    size_t n, p;
    double offset;
    const char* arguments;
    double first = NAN;  // all of the first row
  } cases[] = {
      {7, 1, 0, "--missing drop"},
      {500, 3, 1e9, "--missing drop"},
      {500, 3, 1e9, "--threads 3 --missing drop", 0},
      {500, 19, -5, "--threads 2 --missing drop"},
      {500, 4, 5, "--weights w --missing drop"},
      {500, 4, 1e9, "--weights w --missing available --threads 3"},
      {3000, 19, 1e6, "--missing pairwise --threads 2"},
      {500, 4, 1, "--precision s --missing pairwise"},
      {150000, 5, 1e7, "--threads 2 --missing drop"},
  };
  for (const auto& [n, p, offset, arguments, first] : cases) {
    SCOPED_TRACE(testing::Message() << arguments << " n " << n);
    Data data = make_data(n, p, offset, has(arguments, "drop") ? 0.01 : 0.2);
    if (!std::isnan(first)) std::ranges::fill(data.rows[0], first);
    const bool weighted = has(arguments, "--weights"), single = has(arguments, "--precision s");
    const auto table = tables(arguments, data.csv())[0];
    ASSERT_EQ(table.size(), p + (weighted ? 1 : 2));
    const double unit = single ? 0x1p-23 : 0x1p-52;
    for (size_t j = 0; j < p; ++j) {
      const Strings& row = table[j + 1];
      ASSERT_EQ(row.size(), 12u);
      const Pair self(data, arguments, j, j);
      const Real c2 = self.covariance();
      std::vector<Real> values;
      for (const auto& r : self.rows) values.push_back(self.mean + r.x);
      std::ranges::sort(values);
      const auto expect = [&](size_t column, Real exact, Real tolerance) {
        EXPECT_NEAR(number(row[column]), static_cast<double>(exact), static_cast<double>(tolerance))
            << table[0][column] << " of " << row[0];
      };
      EXPECT_EQ(row[0].substr(1), std::to_string(j));
      EXPECT_EQ(row[1], std::to_string(values.size()));
      const double rounding = single ? 0x1p-24 : 0;  // of exact arithmetic
      expect(3, self.mean, rounding * std::fabs(offset + 1));
      expect(4, sqrtl(c2), rounding * sqrtl(c2));
      expect(5, values.front(), unit * fabsl(values.front()));
      expect(9, values.back(), unit * fabsl(values.back()));
      const Real skewness = self.moment(3, 0) / powl(c2, 1.5L);
      const Real kurtosis = self.moment(4, 0) / (c2 * c2);
      // Rounding of the mean shifts the origin; an outlying row costs digits of these two only.
      const double digits = std::isnan(first) ? 1e4 * unit : 1e-12;
      expect(10, skewness, digits * (1 + fabsl(skewness)));
      expect(11, kurtosis - 3, digits * kurtosis);
      for (const int q : {1, 2, 3}) {
        if (weighted) continue;
        const double at = static_cast<double>(values.size() - 1) * q / 4;
        const auto k = static_cast<size_t>(at);
        const Real next = values[std::min(k + 1, values.size() - 1)];
        expect(5 + q, values[k] + (at - k) * (next - values[k]), 4 * unit * (1 + fabsl(next)));
      }
    }
  }
}

TEST(Stats, MatricesAreRight) {
  const Data data = make_data(400, 4, 100, 0.1);
  for (const std::string options :
       {"", " --missing pairwise", " --weights w", " --missing pairwise --weights w"}) {
    const auto out =
        tables("--select x0,x1,x2,x3 --cov --cor --partial x0,x2 --given x3" + options, data.csv());
    ASSERT_EQ(out.size(), 5u);
    EXPECT_EQ(out[1][0], (Strings{"Covariance", "x0", "x1", "x2", "x3"}));
    for (size_t j = 0; j < 4; ++j) {
      for (size_t k = 0; k < 4; ++k) {
        const auto cov = [&](size_t a, size_t b) { return Pair(data, options, a, b).covariance(); };
        const auto partial = [&](size_t a, size_t b) {
          return cov(a, b) - cov(a, 3) * cov(3, b) / cov(3, 3);
        };
        const auto expect = [&](size_t table, size_t step, Real exact, Real scale = 1) {
          const std::string& cell = out[table].at(j / step + 1).at(k / step + 1);
          EXPECT_NEAR(number(cell), static_cast<double>(exact / scale), 1e-12)
              << options << " " << out[table][0][0] << " " << j << " " << k;
        };
        const Pair both(data, options, j, k);
        expect(1, 1, both.covariance());
        expect(2, 1, both.moment(1, 1), sqrtl(both.moment(2, 0) * both.moment(0, 2)));
        if (j % 2 != 0 || k % 2 != 0) continue;
        expect(3, 2, partial(j, k));
        expect(4, 2, partial(j, k), sqrtl(partial(j, j) * partial(k, k)));
      }
    }
  }
}

TEST(Stats, DigitsAreExactAndTheSameForAnyNumberOfThreads) {
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
    Strings out, err = {};
  } cases[] = {
      {"--by g --format csv --figures count,missing,sum --cov --cor --missing drop",
       "x,y,g\n1,10,u\n2,30,v\n3,12,u\n8,,v\n6,50,v\n4,20,\n",
       {"\nx,4,0,12\n", "\n\ng,column,count,missing,sum\nu,x,2,0,4\nu,y,2,0,22\nv,x,2,0,8\nv,y,",
        "\n\n" + pooled, "\n\nPooled correlation within g,x,y\nx,1,0.9"},
       {"6 rows, 2 dropped"}},
      {"--by g --format csv --figures count,missing --cov",
       "x,y,g\n1,10,7\n2,30,15\n3,12,7\n6,50,15\n7,,15\n",
       {"\n\ng,column,count,missing\n7,x,2,0\n7,y,2,0\n15,x,3,0\n15,y,2,1\n\n", "\n\n" + pooled}},
      {"--by g,h --format csv --figures mean,median,sd,min,max",
       "g,x,h\nb,1,-\nb,4,2\na,5,11\nb,3,2\na,7,2\na,8,2\n",
       {"\n\ng,h,column,mean,q0.5,standard_deviation,minimum,maximum\na,2,x,7.5,7.5,0."
        "7071067811865476,"
        "7,8\na,11,x,5,5,,5,5\nb,2,x,3.5,3.5,0.7071067811865476,3,4\n"},
       {"1 dropped"}},
      {"--format csv --figures mode,mode_count,sum,var,se,ci --histogram --bins 3",
       "a,b\n3,1.5\n1,1.5\n3,2\n7,4\n7,\n",
       {"\na,3,2,21,7.2,1.2,0.86826587", "\nb,,,9,1.4166666666666667,",
        "\nhistogram "
        "of,from,to,count\na,0,1,1\na,2,3,2\na,4,5,0\na,6,7,2\nb,1,2,2\nb,2,3,1\nb,3,4,0\nb,4,5,"
        "1\n"}},
      {"--format jsonl --figures count,mean,median --by b",
       "a,b\n3,u\n",
       {"{\"name\":\"a\",\"count\":1,\"mean\":3.0,\"quantiles\":[{\"order\":0.5,\"value\":3.0}]}\n",
        "{\"name\":\"a\",\"by\":{\"b\":\"u\"},\"count\":1,"}},
      {"--format markdown --figures count,mean",
       "a|b,c\n1,2.5\n",
       {"|  | a\\|b | c |\n|---|---:|---:|\n| count | 1 | 1 |\n| mean | 1 | 2.5 |\n"}},
      {"--format csv --cor --figures count", missing, {"\na,5\nb,4\nc,3\n", "\na,1,0.99999"}},
      {"--missing drop", missing, {"5 rows, 3 dropped"}},
      {"--cov", missing, {"5 rows; matrices: 2 rows without a missing cell"}},
      {"--format csv --missing drop",
       missing,
       {"\na,2,0,", "\nb,2,1,", "\nc,2,2,"},
       {"5 rows, 3 dropped"}},
      {"--format csv --missing pairwise", missing, {"\na,5,0,", "\nb,4,1,", "\nc,3,2,"}},
      {"--format csv --missing fail --select a", missing, {"\na,5,0,"}},
      {"--format csv --missing pairwise --select a,b",
       "a,b\n1,\n2,\n",
       {"\na,2,0,1.5,", "\nb,0,2,,,,,,,,,\n"}},
      {"--format csv", "a,b\n3,4\n", {"\na,1,0,3,,3,3,3,3,3,,\n"}},
      {"--format csv --cor", constant, {"\na,2,0,3,0,3,", "\na,1,\nb,,1\n"}},
      {"--format json", "a\n3\n", {"\"standard_deviation\": null"}},
      {"--format json", "a\n-inf\ninf\n", {"\"minimum\": \"-inf\"", "\"maximum\": \"inf\""}},
      {"--format json --cor --quantiles 0.5 --precision s",
       names,
       {"\"rows\": 3", "\"name\": \"a \\\"b\"", "\"name\": \"gr\xC3\xB6\xC3\x9F\x65\"",
        "\"mean\": 2.5833333", "\"order\": 0.5", "\"value\": 2.25", "\"title\": \"Correlation\""}},
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
    const auto lines = split(run.out + "\n");  // a table ends in a blank one
    ASSERT_GT(lines.size(), c.columns.size() + 1) << run.out;
    for (size_t j = 0; j < c.columns.size(); ++j) {
      EXPECT_TRUE(lines[j + 1].starts_with(c.columns[j] + ",")) << lines[j + 1];
    }
    EXPECT_EQ(lines[c.columns.size() + 1], "");
  }
}

// Beyond the memory that is allowed everything but quantiles comes out the same, and these nearly.
TEST(Stats, StreamsWhatDoesNotFit) {
  const std::string input = make_data(120000, 3, 2, 0).csv();
  const std::string others = "--figures count,mean,sd,min,max,skew,kurtosis ";
  const auto expected = tables(others, input), quartiles = tables("--figures quantiles", input);
  for (const std::string source : {"--memory 1", "--memory 1 - "}) {
    EXPECT_EQ(tables(others + source, input), expected);
    const auto streamed = tables("--figures quantiles " + source, input);
    for (size_t j = 1; j < 5; ++j) {
      for (size_t k = 1; k < 4; ++k) {
        EXPECT_NEAR(number(streamed[0][j][k]), number(quartiles[0][j][k]), 2e-3) << source;
      }
    }
    expect_all_in(stats(source, input).err, {"rank is off by at most 0.0001"});
  }
  expect_mistakes(stats, {{"--by w --memory 1", input, {"--memory MIB allows more"}}});
}

TEST(Stats, MistakesAreOneLineAndCode2) {
  std::string wide;
  for (int i = 0; i < 40000; ++i) wide += "1,";
  const char* table = "a,b,t\n1,2,x\n3,,y\n5,-6,z\n";
  const std::vector<Mistake> mistakes = {
      {"", "", {"holds no number"}},
      {"", "a,b\n", {"only names"}},
      {"", "a,b\nx,y\n", {"no column of numbers", "a ('x', line 2)"}},
      {"--missing fail", "a,b\n1,2\n3,q\n", {"line 3, column 2 (b)", "'q'", "1e-3"}},
      {"--cov", "a,b\n1,\n,2\n", {"no row is complete", "pairwise"}},
      {"--missing fail", table, {"line 3, column 2 (b)", "empty", "another --missing"}},
      {"--select t", table, {"line 2, column 3 (t)", "'x'"}},
      {"--select a,1", table, {"--select", "'a'", "twice"}},
      {"--select a,", table, {"--select", "''", "1 to 3"}},
      {"--weights b", table, {"line 4, column 2 (b)", "-6", "from 0"}},
      {"--weights a --select a", table, {"--weights", "'a'"}},
      {"--weights b", "a,b\n1,0\n2,0\n", {"no row is left", "2 have weight 0"}},
      {"--by q", table, {"--by", "'q'", "1 to 3"}},
      {"--by a --select a", table, {"--by", "'a'"}},
      {"--by t --missing pairwise", table, {"--by", "pairwise", "drop and fail"}},
      {"--by t --missing fail --select a", "a,t\n1,x\n1,\n", {"line 3, column 2 (t)", "group"}},
      {"--partial a", table, {"--partial 'a'", "--given"}},
      {"--partial a --given a", table, {"'a'", "twice"}},
      {"--partial a --given b,c", "a,b,c\n1,2,4\n3,3,6\n4,7,14\n", {"--given", "linearly"}},
      {"--partial a --given b", "a,b\n1,2\n3,2\n4,2\n", {"--given", "constant"}},
      {"--quantiles 0.5,1.5", table, {"--quantiles", "'1.5'", "0 to 1"}},
      {"--threads 0", table, {"--threads", "0", "1", "256"}},
      {"--memory 1", wide, {"line 1: a row of more than 11397 columns", "--memory MIB"}},
      {"--memory 1 --cov", wide.substr(0, 2000) + "1\n", {"of 1001 columns take", "--select"}},
      {"--select a --by b", "a,b\n1,\n2,\n", {"no row is left", "groups"}},
      {"--figures count,varianse", table, {"--figures", "'varianse'", "did you mean variance?"}},
  };
  expect_mistakes(stats, mistakes);
}

}  // namespace
