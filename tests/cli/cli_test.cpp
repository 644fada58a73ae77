// orv math, info and measure: results, reports and what they say to mistakes.
#include <cmath>
#include <limits>

#include "command.hpp"

namespace {

// What the command computes must be the level's result, against the C library's 80-bit form.
TEST(Math, ResultsAreWithinTheLevel) {
  struct Case {
    const char* arguments;
    long double (*exact)(long double);
    bool single;
    double tolerance;  // relative
  };
  const double ulp_d = std::numeric_limits<double>::epsilon();
  const double ulp_s = std::numeric_limits<float>::epsilon();
  const std::vector<double> x = {0.125, 0.75, 2.5, 3, 10.0625, 80};
  std::string list;
  for (const double v : x) list += std::to_string(v) + " ";
  for (const Case& c :
       {Case{"Exp", expl, false, ulp_d}, Case{"Exp --level la", expl, false, 4 * ulp_d},
        Case{"Exp --level EP", expl, false, 0x1p-25}, Case{"dln --level ha -", logl, false, ulp_d},
        Case{"Ln --type s", logl, true, ulp_s}, Case{"sLn --level ep", logl, true, 0x1p-11}}) {
    const Outcome run = orv("math " + std::string(c.arguments), list);
    EXPECT_EQ(run.code, 0) << run.err;
    const auto results = split(run.out);
    ASSERT_EQ(results.size(), x.size()) << c.arguments;
    for (size_t i = 0; i < x.size(); ++i) {
      const long double exact = c.exact(x[i]);
      const double result = c.single ? std::stof(results[i]) : std::stod(results[i]);
      EXPECT_LE(std::fabs(result - exact), c.tolerance * std::fabs(exact))
          << c.arguments << " " << x[i];
    }
  }
}

TEST(Math, ReadsEveryFormOfInput) {
  struct Case {
    const char *arguments, *input, *output;
  };
  const Case cases[] = {
      {"--column b IN", "a,b\n1,2\n3,4\n", "4\n16\n"},
      {"--column 2 IN", "a,b\n1,2\n3,4", "4\n16\n"},
      {"--column 2", "1,2\n3,4\n", "4\n16\n"},
      {"--column b", "a,b\r\n1,2\r\n\r\n3,4\r\n", "4\n16\n"},
      {"--column b", "a,b\r1,2\r\"3\",\"4\"\r", "4\n16\n"},
      {"--column 'b,\"c\"'", "\"a\nx\",\"b,\"\"c\"\"\"\n\" 1,0\n\",\" 2\" \nx,+4\n", "4\n16\n"},
      {"--column b",
       "\xEF\xBB\xBF"
       "b\n2\n",
       "4\n"},
      {"--column 2010 --header yes", "2009,2010\n1,2\n", "4\n"},
      {"", "1 2\t3\n4\n", "1\n4\n9\n16\n"},
      {"", "1, -2,0x1p-1\n", "1\n4\n0.25\n"},
      {"", "x\n0.1\n", "0.010000000000000002\n"},
      {"--type s", "x\n0.1\n", "0.010000001\n"},
      {"", "", nullptr},
      {"", "nan -inf 1e-400", "nan\ninf\n0\n"},
      {"--column b --missing skip", "a,b\n1,2\n3,\n5,NA\n7,3\n", "4\n9\n"},
      {"--column b --missing nan", "a,b\n1,2\n3,\n", "4\nnan\n"},
  };
  for (const Case& c : cases) {
    const Outcome run = orv("math Sqr " + std::string(c.arguments), c.input);
    EXPECT_EQ(run.code, c.output ? 0 : 2) << c.arguments << c.input << run.err;
    EXPECT_EQ(run.out, c.output ? c.output : "") << c.arguments << c.input;
  }
}

TEST(Math, TakesTwoColumns) {
  const std::string table = "a,b\n1,2\n-3,0.5\n";
  EXPECT_EQ(orv("math Mul --column a --second b", table).out, "2\n-1.5\n");
  EXPECT_EQ(orv("math ssub --column 2 --second 1", table).out, "1\n3.5\n");
  EXPECT_EQ(orv("math Conj --column a --second b", table).out, "1,-2\n-3,-0.5\n");
  EXPECT_EQ(orv("math Conj --type c --column a --second b", table).out, "1,-2\n-3,-0.5\n");
}

TEST(Math, ListsReportedElements) {
  const Outcome run = orv("math Ln --errors --column x", "y,x\n0,1\n0,-0.1\n\n0,0\n");
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out, "0\nnan\n-inf\n");
  EXPECT_EQ(run.err,
            "vdLn: code 1 (domain), index 1, line 3, argument -0.1, result nan\n"
            "vdLn: code 2 (singularity), index 2, line 5, argument 0, result -inf\n");
  EXPECT_EQ(orv("math sLn --errors", "-0.1").err,
            "vsLn: code 1 (domain), index 0, line 1, argument -0.1, result nan\n");
}

// The file is longer than what a kernel gets in one call: indices count on.
TEST(Math, IndicesCountThroughAStream) {
  std::string list = "-1\n";
  for (int i = 1; i < 100000; ++i) list += "1\n";
  const Outcome run = orv("math Ln --errors", list + "0\n-2\n");
  EXPECT_EQ(run.err,
            "vdLn: code 1 (domain), index 0, line 1, argument -1, result nan\n"
            "vdLn: code 2 (singularity), index 100000, line 100001, argument 0, result -inf\n"
            "vdLn: code 1 (domain), index 100001, line 100002, argument -2, result nan\n");
  EXPECT_EQ(split(run.out).size(), 100002u);
}

TEST(Math, ModeWordChoosesLevelAndRoutes) {
  const std::string x = "0.3 1.7 20.9";
  const std::string ha = orv("math Exp", x).out;
  const std::string ep = orv("math Exp --level ep", x).out;
  EXPECT_NE(ha, ep);
  EXPECT_EQ(orv("math Exp --mode QEM_EP", x).out, ep);
  EXPECT_EQ(orv("math Exp", x, "ORV_QEM_MODE=QEM_EP").out, ep);
  EXPECT_EQ(orv("math Exp --mode QEM_HA", x, "ORV_QEM_MODE=QEM_EP").out, ha);
  EXPECT_EQ(orv("math Exp --mode QEM_EP --level ha", x).out, ha);
  EXPECT_EQ(orv("math Exp", x, "ORV_QEM_MODE=malformed").out, ha);

  EXPECT_EQ(orv("math Ln", "1").err, "");
  expect_all_in(orv("math Ln", "1 0").err, {"code 2 (singularity)"});
  EXPECT_EQ(orv("math Ln --mode QEM_HA,QEM_ERRMODE_IGNORE", "0").err, "");
  const std::string message = orv("math Ln --mode QEM_HA,QEM_ERRMODE_STDERR", "0").err;
  expect_all_in(message, {"vdLn"});
  EXPECT_EQ(message.find("--errors"), std::string::npos) << message;
}

TEST(Mistakes, AreOneLineAndCode2) {
  const char* table = "a,b,a\n1,2,3\n4,,x\n7,8,1e999\n";
  const std::vector<Mistake> mistakes = {
      {"", "", {"no command", "math, info, measure"}},
      {"mth", "", {"'mth'", "math, info, measure"}},
      {"math", "", {"FUNCTION"}},
      {"math Exq", "1", {"'Exq'", "did you mean", "Exp"}},
      {"math Frobnicate", "1", {"'Frobnicate'", "ready are", "Exp"}},
      {"math LinearFrac", "1", {"dLinearFrac", "planned", "Exp"}},
      {"math Conj --type d", "1", {"--type d", "'Conj'", "c, z"}},
      {"math Exp --type q", "1", {"--type", "q", "d", "s"}},
      {"math Exp --level xx", "1", {"--level", "xx", "la", "ha", "ep"}},
      {"math Exp --mode QEM_XX", "1", {"--mode", "'QEM_XX'", "QEM_HA"}},
      {"math Exp --mode QEM_ERRMODE_ERRNO", "1", {"0x200", "--level la, ha or ep"}},
      {"math Exp --missing maybe", "1", {"--missing", "maybe", "skip"}},
      {"math Exp --bogus", "1", {"--bogus"}},
      {"math Exp --second 2 --column 1", "1,2", {"--second '2'", "dExp takes one column"}},
      {"math Add --column 1", "1,2", {"dAdd takes two columns", "--second"}},
      {"math Exp /no/such.csv", "", {"'/no/such.csv'", "No such file", "standard input"}},
      {"math Exp /", "", {"'/'", "Is a directory"}},
      {"math Exp IN", table, {"a, b, a", "--column"}},
      {"math Exp --column z", "a,\"b\nc\"\n1,2\n", {"'z'", "1 to 2, a, b?c"}},
      {"math Exp --column c IN", table, {"'c'", "1 to 3, a, b, a"}},
      {"math Exp --column 4", "1,2", {"'4'", "1 to 2"}},
      {"math Exp --column 0", "1,2", {"'0'", "1 to 2"}},
      {"math Exp --column a IN", table, {"'a'", "2 columns of that name"}},
      {"math Exp --column b",
       table,
       {"standard input, line 3, column 2 (b)", "empty", "--missing"}},
      {"math Exp --column 3", table, {"line 3, column 3 (a): 'x'", "1e-3"}},
      {"math Exp --column 3", "1,2,3\n1,2,1e999\n", {"line 2, column 3: '1e999'", "out of range"}},
      {"math sLn --column 1", "1e39\n", {"line 1, column 1: '1e39'", "float"}},
      {"math Exp --column 1", "1,2\n3\n", {"line 2: 1 columns", "2"}},
      {"math Exp", "1 2 3q", {"line 1, column 1: '3q'"}},
      {"math Exp", "1\n\"2\n\n", {"line 2: a quote is opened"}},
      {"math Exp",
       "1\n\"2\"x\n",
       {"line 2: a quote within a cell, or text after the closing quote"}},
      {"math Exp", "1\n\"a\nb\"\n", {"line 2, column 1: 'a"}},
      {"info Exq", "", {"'Exq'", "Exp"}},
      {"info --format xml", "", {"xml", "table", "csv", "json"}},
      {"measure Sqr", "", {"dSqr", "Log1p"}},
      {"measure Exp -n 0", "", {"0", "1", "1000000"}},
  };
  expect_mistakes([](const auto& arguments, const auto& in) { return orv(arguments, in); },
                  mistakes);
}

TEST(Info, TellsEveryFunction) {
  EXPECT_EQ(split(orv("info --format csv").out).size(), 1u + 164 * 3);
  expect_all_in(orv("info").out, {" of 164 functions are ready", "zTanh "});
  expect_all_in(orv("info dexp").out,
                {"dExp: e^x", "3 overflow", "orv_qem_kernel_dExp_G9HAynn", "AVX"});
  const std::string json = orv("info dExp --format json").out;
  expect_all_in(json, {"\"kernel\": \"G9EPnnn\""});
  EXPECT_EQ(json.front(), '[');
}

TEST(Measure, FindsTheErrorOfALevel) {
  const Outcome run = orv("measure Exp --arguments 5000 -n 10");
  EXPECT_EQ(run.code, 0) << run.err;
  const size_t ha = run.out.find("\nHA ");
  ASSERT_NE(ha, std::string::npos) << run.out;
  std::istringstream row(run.out.substr(ha));
  std::string level, kernel;
  double ulp = 0;
  row >> level >> kernel >> ulp;
  EXPECT_GT(ulp, 0.49) << run.out;  // the best of 5000 roundings is not better than that
  EXPECT_LT(ulp, 1.0) << run.out;
}

TEST(Command, HasHelpAndVersion) {
  EXPECT_EQ(orv("--version").out.rfind("orv ", 0), 0u);
  for (const char* page : {"--help", "math --help", "info --help", "measure --help",
                           "random --help", "stats --help"}) {
    const Outcome run = orv(page);
    EXPECT_EQ(run.code, 0) << page;
    EXPECT_NE(run.out.find("Usage: "), std::string::npos) << page;
  }
}

}  // namespace
