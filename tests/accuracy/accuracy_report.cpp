// SPDX-License-Identifier: MIT
// Measures every kernel and prints what to record.
//
//   accuracy_report [options] [FUNCTION ...]      all functions, or those named ("dExp")
//
//   --rounds N     samples with other seeds, a million random points each (1)
//   --exhaustive   float functions of one operand at all 2^32 arguments instead
//   --write FILE   puts the table into FILE, between its markers
//   --check        exit code 1 if a kernel breaks its level's bound or its record
//   --digests      the digests of this build and nothing else, for tests/accuracy/digests.txt
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>

#include "measure.hpp"

namespace orv_test {
namespace {

constexpr int points_a_round = 1000000;

struct Options {
  int rounds = 1;
  bool exhaustive = false;
  bool check = false;
  bool digests = false;
  std::string file;
  std::vector<std::string> names;
};

[[noreturn]] void stop(const std::string& why) {
  std::cerr << "accuracy_report: " << why << '\n';
  std::exit(2);
}

Options parse(int argc, char** argv) {
  Options options;
  const std::map<std::string, bool*> switches = {{"--exhaustive", &options.exhaustive},
                                                 {"--check", &options.check},
                                                 {"--digests", &options.digests}};
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (switches.contains(word)) {
      *switches.at(word) = true;
    } else if (word[0] != '-') {
      options.names.push_back(word);
    } else if (++i == argc) {
      stop("no option " + word + ", or it needs a value");
    } else if (word == "--write") {
      options.file = argv[i];
    } else if (word != "--rounds" || (options.rounds = std::atoi(argv[i])) < 1) {
      stop("no option " + word + ", or --rounds without a number from 1 on");
    }
  }
  return options;
}

Reached measure(const Function& f, const FunctionSlots& function, const Options& options) {
  if (options.exhaustive) return exhaust(f, function);
  Reached reached;
  for (int round = 0; round < options.rounds; ++round) {
    for (const auto& [kernel, worst] : sample(f, function, 10 + round, points_a_round)) {
      reached[kernel].merge(worst);
    }
  }
  return reached;
}

/// A row of the table for each slot, and the lines for the record.
struct Report {
  std::ostringstream table, record;
  std::vector<std::string> faults;

  void add(const Kernel& slot, const Function& f, const Worst& worst) {
    table << "| " << slot.name() << " | " << slot.kernel << " | "
          << printed("%.3g", static_cast<double>(worst.points)) << " | ";
    if (f.grade == Grade::Rounded) {
      table << (worst.misrounded == 0 ? "none but the one rounding"
                                      : std::to_string(worst.misrounded) + " misrounded")
            << " | | | |\n";
    } else {
      table << figure(worst.ulp) << printed(" | 2^%.2f | ", std::log2(worst.relative))
            << worst.argument << " | " << (slot.ulp ? printed("%.3g", *slot.ulp) : "none")
            << " |\n";
      record << printed("ORV_ACCURACY(%c, %-7s %s, ", slot.type, (slot.function + ',').c_str(),
                        slot_name[slot.slot])
             << figure(worst.ulp) << ")\n";
    }
    for (const std::string& fault : orv_test::faults(slot, f, worst)) this->faults.push_back(fault);
  }
};

/// Replaces what stands between the two markers of a section.
void write_section(const std::string& path, const std::string& section, const std::string& text) {
  std::stringstream whole;
  whole << std::ifstream(path).rdbuf();
  std::string page = whole.str();
  const std::string begin = "<!-- " + section + " -->\n", end = "<!-- end of " + section + " -->";
  const size_t from = page.find(begin), to = page.find(end);
  if (from == page.npos || to == page.npos || to < from) {
    stop(path + " has no markers of a section \"" + section + "\"");
  }
  page.replace(from + begin.size(), to - from - begin.size(), "\n" + text + "\n");
  std::ofstream(path) << page;
}

int run(const Options& options) {
  if (options.digests) {
    for (const auto& [name, digest] : compute_digests()) std::cout << name << ' ' << digest << '\n';
    return 0;
  }
  quiet_mode();
  Report report;
  report.table
      << "| level | kernel | points | largest error, ulp | of the value | at | recorded |\n"
         "|---|---|---|---|---|---|---|\n";
  std::string skipped;
  for (const FunctionSlots& function : ready_functions()) {
    const auto& names = options.names;
    if (!names.empty() && std::ranges::count(names, function.full_name()) == 0) continue;
    const Function* f = find_function(function.type, function.name);
    if (!f) stop(function.full_name() + " has no row in tests/accuracy/functions.cpp");
    if (options.exhaustive && (function.type != 's' || !f->in_double)) {
      skipped.append(" ").append(function.full_name());
      continue;
    }
    std::cerr << "measuring " << function.full_name() << '\n';
    const Reached reached = measure(*f, function, options);
    for (const Kernel& slot : function.slots) report.add(slot, *f, reached.at(slot.call.address));
  }
  std::cout << report.record.str() << '\n' << report.table.str();
  if (!skipped.empty()) std::cout << "\nnot exhaustively:" << skipped << '\n';
  for (const std::string& fault : report.faults) std::cout << "FAULT " << fault << '\n';
  if (!options.file.empty()) {
    write_section(options.file, options.exhaustive ? "exhaustive" : "sampled", report.table.str());
  }
  return options.check && !report.faults.empty() ? 1 : 0;
}

}  // namespace
}  // namespace orv_test

int main(int argc, char** argv) { return orv_test::run(orv_test::parse(argc, argv)); }
