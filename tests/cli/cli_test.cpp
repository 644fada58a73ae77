// SPDX-License-Identifier: MIT
// orv math, info and measure: results, reports and what they say to mistakes.
#include <orv/version.h>

#include <cmath>
#include <set>

#include "command.hpp"

namespace {

TEST(Math, ComputesOfEveryFormOfInput) {
  const char* two = "a,b\n1,2\n-3,0.5\n";
  const struct {
    const char *arguments, *input, *output;
  } cases[] = {
      {"Sqr --column b IN", "a,b\n1,2\n3,4\n", "4\n16\n"},
      {"Sqr --column 2 IN", "a,b\n1,2\n3,4", "4\n16\n"},
      {"Sqr --column 2", "1,2\n3,4\n", "4\n16\n"},
      {"Sqr --column 2", "a,1\nb,0.5\nc,3e0\n", "0.25\n9\n"},
      {"Sqr --column 2 --header no", "a,1\nb,0.5\n", "1\n0.25\n"},
      {"Sqr --column b", "a,b\r\n1,2\r\n\r\n3,4\r\n", "4\n16\n"},
      {"Sqr --column b", "a,b\r1,2\r\"3\",\"4\"\r", "4\n16\n"},
      {"Sqr --column 'b,\"c\"'", "\"a\nx\",\"b,\"\"c\"\"\"\n\" 1,0\n\",\" 2\" \nx,+4\n", "4\n16\n"},
      {"Sqr --column b", "\xEF\xBB\xBF\"b\"\n2\n", "4\n"},
      {"Sqr --column 2010 --header yes", "2009,2010\n1,2\n", "4\n"},
      {"Exp", "0 1\t2.5\n", "1\n2.718281828459045\n12.182493960703473\n"},
      {"dln --level ha -", "2.5", "0.9162907318741551\n"},
      {"sLn", "2.5", "0.91629076\n"},
      {"Sqr", "1, -2,0x1p-1\n", "1\n4\n0.25\n"},
      {"Sqr", "x\n0.1\n", "0.010000000000000002\n"},
      {"Sqr --type s", "x\n0.1\n", "0.010000001\n"},
      {"Sqr", "nan -inf 1e-400", "nan\ninf\n0\n"},
      {"Sqr --column b --missing skip", "a,b\n1,2\n3,\n5,NA\n7,3\n", "4\n9\n"},
      {"Sqr --column b --missing nan", "a,b\n1,2\n3,\n", "4\nnan\n"},
      {"Mul --column a --second b", two, "2\n-1.5\n"},
      {"ssub --column 2 --second 1", two, "1\n3.5\n"},
      {"Conj --column a --second b", two, "1,-2\n-3,-0.5\n"},
      {"Conj --type c --column a --second b", two, "1,-2\n-3,-0.5\n"},
      {"zConj", "3+4i -1-0i, 1e-3-2E-2j,-i 0x1p-1+1e+2I\n",
       "3,-4\n-1,0\n0.001,0.02\n0,1\n0.5,-100\n"},
      {"Conj --type z", "3,4\n-inf,0\n", "3,-4\n-inf,-0\n"},
      {"cConj --column z", "w,z\n1,\"3, 4\"\n2,2 - 0.5i\n3,-7\n", "3,-4\n2,0.5\n-7,-0\n"},
      {"zConj --column j --second i", "i,j\n1,2\n", "2,-1\n"},
      {"zConj --column z --missing nan", "z\n1+i\nNA\n", "1,-1\nnan,nan\n"},
      {"zMul --column a --second b", "a,b\n1+2i,\"3,4\"\n-i,2\n", "-5,10\n0,-2\n"},
      {"zPowx --arg 0+0i", "2i", "1,0\n"},
      {"Modf", "-3.75 1e300 inf", "-3,-0.75\n1e+300,0\ninf,0\n"},
      {"Modf --column b", two, "2,0\n0,0.5\n"},
      {"sModf --column 2 --missing nan", "1,\n2,2.5\n", "nan,nan\n2,0.5\n"},
      {"Div --column 1 --second b", two, "0.5\n-6\n"},
      {"LinearFrac --column a --second b --scalea 2 --shifta -1 --scaleb 4 --shiftb 0.5", two,
       "0.11764705882352941\n-2.8\n"},
      {"LinearFrac --scalea -0.5 --shifta 1e1", "1 2", "9.5\n9\n"},
      {"LinearFrac --column b --second a --scalea 0 --shifta 1 --scaleb 1 --shiftb 0", two,
       "1\n-0.3333333333333333\n"},
      {"sLinearFrac --shifta 0.1", "x\n0\n", "0.1\n"},
      {"LinearFrac", "x\n7\n", "7\n"},
      {"Powx --arg 2.5", "4", "32\n"},
      {"sPowx --arg -0.5", "4 0.25", "0.5\n2\n"},
      {"SinCos", "0 -0", "0,1\n-0,1\n"},
      {"Hypot --column a --second b", "a,b\n3,4\n", "5\n"},
      {"log", "1", "0\n"},
      {"square,Powx,SinCos --arg 3", "0 2",
       "0,0,0,1\n4,8,0.9092974268256817,-0.4161468365471424\n"},
      {"Sqr -c a --append", "b,a\n\"x,\"\"y\",2\n,\n\" z\",3\n",
       "b,a,Sqr(a)\n\"x,\"\"y\",2,4\n,,\n\" z\",3,9\n"},
      {"Sqr,SinCos -c 1 --append", "0\n", "0,0,0,1\n"},
      {"Sqr -c a --append --as 'a 2' --missing nan", "a\n1\nNA\n", "a,a 2\n1,1\nNA,nan\n"},
      {"Sqr -c a --append --missing skip", "a\n1\nq\n3\n", "a,Sqr(a)\n1,1\n3,9\n"},
      {"Sqr,SinCos -c a --decimal , --append", "a;b\n1,5;2\n",
       "a;b;Sqr(a);SinCos(a).1;SinCos(a).2\n1,5;2;2,25;0,9974949866040544;0,0707372016677029\n"},
      {"Modf -c 1 -d tab --append", "1.5\tx\n", "1.5\tx\t1\t0.5\n"},
      {"Conj --type z -c z --append", "z\n1+2i\n", "z,Conj(z).re,Conj(z).im\n1+2i,1,-2\n"},
  };
  for (const auto& c : cases) {
    const Outcome run = orv("math " + std::string(c.arguments), c.input);
    EXPECT_EQ(run.out, c.output) << c.arguments << c.input << run.err;
  }
}

TEST(Math, WritesAFileWhenAllIsDone) {
  const std::string path = path_of("table.csv");
  std::ofstream(path) << "a,b\n1,x\n3,y\n";
  const auto content = [&] {
    std::ifstream file(path);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  EXPECT_EQ(orv("math Sqr -c a --append " + path + " -o " + path).code, 0);
  EXPECT_EQ(content(), "a,b,Sqr(a)\n1,x,1\n3,y,9\n");
  EXPECT_EQ(orv("math Sqr -c b --append " + path + " --missing fail -o " + path).code, 2);
  EXPECT_EQ(content(), "a,b,Sqr(a)\n1,x,1\n3,y,9\n");
  EXPECT_NE(access((path + ".unfinished").c_str(), F_OK), 0);
  unlink(path.c_str());
}

TEST(Math, ListsReportedElements) {
  const Outcome run = orv("math Ln --errors --column x", "y,x\n0,1\n0,-0.1\n\n0,0\n");
  EXPECT_EQ(run.out, "0\nnan\n-inf\n");
  EXPECT_EQ(run.err,
            "vdLn: code 1 (domain), index 1, line 3, argument -0.1, result nan\n"
            "vdLn: code 2 (singularity), index 2, line 5, argument 0, result -inf\n");
  EXPECT_EQ(orv("math sLn --errors", "-0.1").err,
            "vsLn: code 1 (domain), index 0, line 1, argument -0.1, result nan\n");

  // A row longer than what is held of it, a file longer than what a kernel gets in one call.
  std::string list = "-1";
  for (int i = 1; i < 100000; ++i) list += ",1";
  const Outcome stream = orv("math Ln --errors", list + "\n2\n-2\n");
  EXPECT_EQ(stream.err,
            "vdLn: code 1 (domain), index 0, line 1, argument -1, result nan\n"
            "vdLn: code 1 (domain), index 100001, line 3, argument -2, result nan\n");
  EXPECT_EQ(split(stream.out).size(), 100002u);
  expect_all_in(orv("math Ln", list + ",q").err, {"line 1, column 100001: 'q'"});
}

TEST(Math, ModeWordChoosesLevelAndRoutes) {
  const std::string x = "0.3 1.7 20.9";
  const std::string ha = orv("math Exp", x).out, la = orv("math Exp --level la", x).out,
                    ep = orv("math Exp --level EP", x).out;
  EXPECT_EQ(std::set({ha, la, ep}).size(), 3u) << ha << la << ep;
  EXPECT_NEAR(std::stod(split(la)[1]), std::exp(1.7), std::exp(1.7) * 0x1p-50);
  EXPECT_NEAR(std::stod(split(ep)[1]), std::exp(1.7), std::exp(1.7) * 0x1p-25);
  const struct {
    const char *arguments, *env;
    const std::string& expected;
  } levels[] = {{"--mode QEM_EP", "", ep},
                {"--mode QEM_LA", "", la},
                {"", "ORV_QEM_MODE=QEM_EP", ep},
                {"--mode QEM_HA", "ORV_QEM_MODE=QEM_EP", ha},
                {"--mode QEM_EP --level ha", "", ha},
                {"", "ORV_QEM_MODE=malformed", ha}};
  for (const auto& [arguments, env, expected] : levels) {
    EXPECT_EQ(orv(std::string("math Exp ") + arguments, x, env).out, expected) << arguments << env;
  }
  EXPECT_EQ(orv("math Ln", "1").err, "");
  expect_all_in(orv("math Ln", "1 0").err, {"code 2 (singularity)", "--errors"});
  EXPECT_EQ(orv("math Ln --mode QEM_HA,QEM_ERRMODE_IGNORE", "0").err, "");
  const std::string message = orv("math Ln --mode QEM_HA,QEM_ERRMODE_STDERR", "0").err;
  expect_all_in(message, {"vdLn"});
  EXPECT_EQ(message.find("--errors"), std::string::npos) << message;
}

TEST(Mistakes, AreOneLineAndCode2) {
  const char* table = "a,b,a\n1,2,3\n4,,x\n7,8,1e999\n";
  std::vector<Mistake> mistakes = {
      {"", "", {"no command", "math, impute, info, measure"}},
      {"mth", "", {"'mth'", "math, impute, info, measure"}},
      {"math", "", {"FUNCTION"}},
      {"math Sqr", "", {"standard input holds no number"}},
      {"math Exq", "1", {"'Exq'", "did you mean", "Exp"}},
      {"math Frobnicate", "1", {"'Frobnicate'", "there are", "Exp"}},
      {"math Exp --arg 2", "1", {"--arg '2'", "dExp takes no such number", "Powx does"}},
      {"math Div --column 1 --second 2 --shiftb 2", "1,2", {"--shiftb '2'", "dDiv", "LinearFrac"}},
      {"math LinearFrac --arg 2", "1", {"--arg '2'", "dLinearFrac", "Powx does"}},
      {"math LinearFrac --scaleb 1", "1", {"dLinearFrac takes two columns", "--second"}},
      {"math LinearFrac --scalea 1,5", "1", {"--scalea '1,5'", "not a number", "1e-3"}},
      {"math sLinearFrac --shifta 1e39", "1", {"--shifta '1e39'", "out of range", "float"}},
      {"math PackI", "1", {"dPackI moves elements", "orv math applies"}},
      {"math zAdd --column 1", "1,2", {"zAdd takes two columns", "--second"}},
      {"math zConj", "3\n4", {"line 1", "without its imaginary part", "3+0i"}},
      {"math zConj", "1 2 3", {"line 1", "without its imaginary part", "3+0i"}},
      {"math zConj --column 1", "a\n1+2k\n", {"line 2, column 1 (a)", "'1+2k'", "not a number"}},
      {"math Add --column 1 --second z", "1,2", {"--second: no column 'z'", "1 to 2"}},
      {"math Conj --type d", "1", {"--type d", "'Conj'", "c, z"}},
      {"math Exp --level xx", "1", {"--level", "xx", "la", "ha", "ep"}},
      {"math Exp --mode QEM_XX", "1", {"--mode", "'QEM_XX'", "QEM_HA"}},
      {"math Exp --mode QEM_ERRMODE_ERRNO", "1", {"0x200", "--level la, ha or ep"}},
      {"math Exp --second 2 --column 1", "1,2", {"--second '2'", "dExp takes one column"}},
      {"math Add --column 1", "1,2", {"dAdd takes two columns", "--second"}},
      {"math Exp /no/such.csv", "", {"'/no/such.csv'", "No such file", "standard input"}},
      {"math Exp /", "", {"'/'", "Is a directory"}},
      {"math Exp IN", table, {"a, b, a", "--column"}},
      {"math Exp --column z", "a,\"b\nc\"\n1,2\n", {"'z'", "1 to 2, a, b?c"}},
      {"math Exp --column 0", "1,2", {"'0'", "1 to 2"}},
      {"math Exp --column a IN", table, {"'a'", "2 columns of that name"}},
      {"math Exp --column b", table, {"input, line 3, column 2 (b)", "empty", "--missing"}},
      {"math Exp --column 3", table, {"line 3, column 3 (a): 'x'", "1e-3"}},
      {"math Exp --column 3", "1,2,3\n1,2,1e999\n", {"line 2, column 3: '1e999'", "out of range"}},
      {"math sLn --column 1", "1e39\n", {"line 1, column 1: '1e39'", "float"}},
      {"math Exp --column 1", "1,2\n3\n", {"line 2: 1 columns", "2"}},
      {"math Exp", "1\n\"2\n\n", {"line 2: a quote is opened"}},
      {"math Exp", "1\n\"2\"x\n", {"line 2: a quote within a cell, or text after the closing"}},
      {"math Exp", "1\n\"a\nb\"\n", {"line 2, column 1: 'a"}},
      {"math Exp,Hypot -c 1", "1\n", {"dExp", "dHypot", "different arguments"}},
      {"math Exp --append", "1\n", {"--append", "--column"}},
      {"math Exp --as x -c 1", "1\n", {"--as 'x'", "--append"}},
      {"math Modf -c 1 --append --as x", "1\n", {"--as 'x'", "1 names for 2"}},
      {"math Exp -o /no/such/file", "1\n", {"--output '/no/such/file'", "No such file"}},
      {"info Exq", "", {"'Exq'", "Exp"}},
      {"measure Sqr", "", {"dSqr", "Log1p"}},
      {"measure Exp -n 0", "", {"0", "1", "1000000"}},
  };
  for (const char* command : {"--help", "--version", "math --help", "math Exp", "info",
                              "info Exp --format json", "measure Exp --arguments 10 -n 10",
                              "random bits", "random int", "random list", "stats -"}) {
    mistakes.push_back({std::string(command) + " >/dev/full", "1\n", {"cannot write", "No space"}});
  }
  expect_mistakes([](const auto& arguments, const auto& in) { return orv(arguments, in); },
                  mistakes);
}

TEST(Info, TellsEveryFunction) {
  EXPECT_EQ(split(orv("info --format csv").out).size(), 1u + 164 * 3);
  expect_all_in(orv("info").out, {"\n164 functions", "zSqrt "});
  expect_all_in(orv("info dexp").out,
                {"dExp: e^x", "3 overflow", "orv_qem_kernel_dExp_G9HAynn", "AVX"});
  expect_all_in(orv("info dExp --format JSON").out, {"[\n{", "\"kernel\": \"G9EPnnn\""});
}

TEST(Measure, FindsTheErrorOfALevel) {
  const Outcome run = orv("measure Exp --arguments 5000 -n 10");
  const size_t ha = run.out.find("\nHA ");
  ASSERT_NE(ha, std::string::npos) << run.out << run.err;
  std::istringstream row(run.out.substr(ha));
  std::string level, kernel;
  double ulp = 0;
  row >> level >> kernel >> ulp;
  EXPECT_GT(ulp, 0.49) << run.out;  // the best of 5000 roundings is not better than that
  EXPECT_LT(ulp, 1.0) << run.out;
}

TEST(Command, HasHelpAndVersion) {
  expect_all_in(orv("--version").out, {"orv " ORV_VERSION " ("});
  for (const std::string command : {"", "math", "info", "measure", "random", "stats"}) {
    const Outcome run = orv(command + " --help");
    EXPECT_EQ(run.code, 0) << command;
    expect_all_in(run.out, {"Usage: "});
  }
}

}  // namespace
