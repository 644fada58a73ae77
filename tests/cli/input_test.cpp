// SPDX-License-Identifier: MIT
// How files are read: delimiters, decimal commas, missing words, packed and several files.
#include "command.hpp"

namespace {

const char* const means = "stats --figures mean --format csv ";

/// The mean of each column, as "a=1 b=2", whatever the file looks like.
TEST(Input, ReadsWhatPeopleHave) {
  const struct {
    const char *arguments, *input, *output;
    const char* said = "";
  } cases[] = {
      {"-d ';'", "a;b\n1;2\n3;4\n", "a,2\nb,3\n"},
      {"-d tab", "a\tb\n1\t2\n 3 \t4\n", "a,2\nb,3\n"},
      {"-d '\\t' --na '999,?'", "a\tb\n1\t999\n?\t4\n\t6\n", "a,1\nb,5\n"},
      {"-d '|'", "a|b\n\"1\"|2\n3|4", "a,2\nb,3\n"},
      {"-d blank", " a  b\n 1\t2 \n3 \"4\" \n", "a,2\nb,3\n"},
      {"--decimal ,", "a;b\n1,5;2\n2,5;-1e0\n", "a,2\nb,0.5\n"},
      {"-d tab --decimal ,", "a\tb\n1,5\t2\n2,5\t4\n", "a,2\nb,3\n"},
      {"--comment '#'", "# made by hand\na,b\n#1,2\n1,2\n3,4\n#", "a,2\nb,3\n"},
      {"", "a,b\nNA,N/A\nNaN,NULL\nnull,None\n.,-\n,nan\n1,2\n", "a,1\nb,2\n"},
      {"--na x", "a,b\nx,2\n1,x\n,4\n", "a,1\nb,3\n"},
      {"", "a,b\n1,2\nq,4\n", "a,1\nb,3\n",
       "missing: 1, the first in standard input, line 3, column 1 (a): 'q'"},
      {"", "1,2,3\nx,1,1\ny,2,2\n", "2,1.5\n3,1.5\n", "taken as a header"},
      {"", "0,1,2\n.5,.5,.5\n1.5,.5,.5\n", "0,1\n1,0.5\n2,0.5\n", "taken as a header"},
      {"--select 1-2,d:e", "a,b,c,d,e\n1,2,3,4,5\n", "a,1\nb,2\nd,4\ne,5\n"},
      {"--exclude b:d", "a,b,c,d,e\n1,2,3,4,5\n", "a,1\ne,5\n"},
      {"--select 1-4 --exclude c", "a,b,c,d,e\n1,2,3,4,5\n", "a,1\nb,2\nd,4\n"},
  };
  for (const auto& c : cases) {
    const Outcome run = orv(std::string(means) + c.arguments, c.input);
    EXPECT_EQ(run.out, std::string("column,mean\n") + c.output) << c.arguments << run.err;
    expect_all_in(run.err, {c.said});
    EXPECT_EQ(run.err.empty(), *c.said == '\0') << run.err;
  }
}

/// Cells that lie across the ends of buffers, of every length, quoted or not.
TEST(Input, ReadsCellsOfAnyLength) {
  std::string input = "text,x\n", plain = input;
  int64_t rows = 0;
  for (size_t size = 1; input.size() < 3'000'000; size = size * 5 / 4 + 1, ++rows) {
    input += "\"" + std::string(size, 'a') + "\"\"\n,\",1\n";
    plain += std::string(size, 'b') + " ," + std::to_string(size) + "\n";
    for (int i = 0; i < 3000; ++i, ++rows)
      input += std::string(static_cast<size_t>(i % 31), 'c') + ",1\n";
  }
  const std::string expected =
      "column,count,sum\nx," + std::to_string(rows) + "," + std::to_string(rows) + "\n";
  EXPECT_EQ(orv("stats --figures count,sum --format csv --select x", input).out, expected);
  const Outcome slow =
      orv("stats --figures count,sum --format csv --select x - ", input, "sh -c 'cat | \"$@\"' sh");
  EXPECT_EQ(slow.out, expected) << slow.err;
  EXPECT_EQ(orv("math Sqr --column x", plain + "q,0").code, 0);
}

TEST(Input, UnpacksAndJoinsFiles) {
  const std::string a = path_of("a.csv"), b = path_of("b.csv");
  std::ofstream(a) << "x,y\n1,2\n";
  std::ofstream(b) << "x,y\n3,4\n\n5,\n";
  const std::string all = std::string(means) + "--missing available ";
  const std::string expected = "column,mean\nx,3\ny,3\n";
  EXPECT_EQ(orv(all + a + " " + b).out, expected);
  EXPECT_EQ(std::system(("gzip -kf " + a + "; zstd -qf " + b).c_str()), 0);
  EXPECT_EQ(orv(all + a + ".gz " + b + ".zst").out, expected);
  EXPECT_EQ(
      std::system(("gzip -c " + a + " > " + b + ".gz; tail -n +2 " + b + " | gzip >> " + b + ".gz")
                      .c_str()),
      0);
  EXPECT_EQ(orv(all + b + ".gz").out, expected);
  EXPECT_EQ(orv("math Sqr --column x " + a + " " + b).out, "1\n9\n25\n");
  EXPECT_EQ(std::system(
                ("head -c 30 " + b + ".gz > " + a + ".gz; head -c 20 " + b + ".zst > " + a + ".zst")
                    .c_str()),
            0);
  std::ofstream(b) << "x,z\n3,4\n";
  expect_mistakes([](const auto& arguments, const auto& in) { return orv(arguments, in); },
                  {{"stats " + a + " " + b, "", {"b.csv, line 1", "x, y", "x, z"}},
                   {"stats " + a + ".gz", "", {"a.csv.gz", "cut off"}},
                   {"stats " + a + ".zst", "", {"a.csv.zst", "cut off"}},
                   {"stats " + a + " /no/such", "", {"'/no/such'", "No such file"}},
                   {"stats - -", "1\n", {"FILE '-'", "twice"}}});
  for (const std::string& path : {a, b}) {
    for (const char* end : {"", ".gz", ".zst"}) unlink((path + end).c_str());
  }
}

TEST(Input, MistakesSayWhatTheFileSeemsToBe) {
  expect_mistakes(
      [](const auto& arguments, const auto& in) { return orv(arguments, in); },
      {{"stats",
        "a;b\n1;2\n",
        {"no column of numbers", "';' seems to part the cells", "--delimiter ';'"}},
       {"stats --select b", "a\tb\n1\t2\n", {"no column 'b'", "--delimiter tab"}},
       {"stats", "a|b\n1,5|2\n1|2\n", {"line 2: 2 columns", "--delimiter '|'"}},
       {"stats", "# x\na,b\n1,2\n", {"line 2", "--comment '#'"}},
       {"math Sqr", "1;2\n3;4\n", {"'3;4'", "--delimiter ';'"}},
       {"math Sqr --column heigth", "height\n1\n", {"'heigth'", "did you mean height?"}},
       {"stats -d ab", "1", {"--delimiter 'ab'", "tab, comma"}},
       {"stats -d , --decimal ,", "1", {"--decimal ','", "commas part the cells"}},
       {"stats --decimal , -s a", "a;b\n1.5;2\n", {"line 2", "'1.5'", "-0,5"}},
       {"stats --comment ab", "1", {"--comment 'ab'"}},
       {"stats --missing fail", "a\n1\nq\n", {"line 3, column 1 (a): 'q'"}},
       {"stats", "\xFF\xFE\x61", {"UTF-16", "iconv"}},
       {"stats --select 3-1", "1,2,3\n", {"'3-1'", "ends before it begins"}}});
}

}  // namespace
