// SPDX-License-Identifier: MIT
// orv info: what functions there are, how accurate they are and what they need.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <algorithm>

#include "commands.hpp"
#include "functions.hpp"
#include "output.hpp"

namespace orv_cli {
namespace {

struct Options {
  std::string function;
  std::string format = "table";
};

using Functions = std::vector<const Function*>;

std::string error_text(const Function& f, Level level) {
  const auto ulp = recorded_error(f, level);
  return ulp ? fmt::format("{}", *ulp) : "-";
}

void print_table(const Functions& list) {
  constexpr const char* row = "{:<13}{:<17}{:<8} {:<8} {:<8} {:>23}   {:>21}\n";
  output(row, "function", "arguments", "LA", "HA", "EP", "costs LA, HA, EP", "largest error, ulp");
  for (const Function* f : list) {
    const auto& [la, ha, ep] = f->costs;
    output(row, f->full_name(), f->shape, f->kernels[LA], f->kernels[HA], f->kernels[EP],
           fmt::format("{:7} {:7} {:7}", la, ha, ep),
           fmt::format("{:>5} {:>5} {:>9}", error_text(*f, LA), error_text(*f, HA),
                       error_text(*f, EP)));
  }
}

void print_legend() {
  output(R"(
{} functions. Types: s float, d double, c and z complex of these. Levels: LA, HA, EP, a kernel each.
Kernels: the first two characters tell the instruction set: G9 AVX, N8 and P8 SSE4.1, V8 and T7
SSE3, W7 SSE2, PX scalar and x87; the next two tell the level the kernel was written for.
Costs are relative, for an element. Errors are the largest recorded, in units in the last place
(ulp) of the result; - where none is: exact or rounded once.
)",
         functions().size());
}

void print_details(const Function& f) {
  output("{}", f.full_name());
  if (const Description* d = description(f)) {
    output(": {}\n  status codes     {}\n", d->computes, d->status_codes);
  } else {
    output("\n");
  }
  output("  arguments        {}\n", f.shape);
  constexpr const char* row = "  {:<6} {:<28} {:<16} {:>8} {:>19}\n";
  output(row, "level", "kernel", "instruction set", "cost", "largest error, ulp");
  for (const Level level : levels) {
    output(row, level_names[level],
           fmt::format("orv_qem_kernel_{}_{}", f.full_name(), f.kernels[level]),
           instruction_set(f.kernels[level]), f.costs[level], error_text(f, level));
  }
}

/// A line for each function and level.
void print_records(const Functions& list, bool json) {
  if (!json) output("function,type,arguments,level,kernel,instruction_set,cost,ulp\n");
  constexpr const char* csv_row = "{},{},{},{},{},\"{}\",{},{}\n";
  constexpr const char* json_row =
      "{{\"function\": \"{}\", \"type\": \"{}\", \"arguments\": \"{}\", "
      "\"level\": \"{}\", \"kernel\": \"{}\", \"instruction_set\": \"{}\", \"cost\": {}, "
      "\"ulp\": {}}}";
  std::vector<std::string> records;
  for (const Function* f : list) {
    for (const Level level : levels) {
      const auto ulp = recorded_error(*f, level);
      records.push_back(fmt::format(fmt::runtime(json ? json_row : csv_row), f->name, f->type,
                                    f->shape, level_names[level], f->kernels[level],
                                    instruction_set(f->kernels[level]), f->costs[level],
                                    ulp    ? fmt::format("{}", *ulp)
                                    : json ? "null"
                                           : ""));
    }
  }
  if (json) {
    output("[\n{}\n]\n", fmt::join(records, ",\n"));
  } else {
    output("{}", fmt::join(records, ""));
  }
}

void info(const Options& options) {
  Functions list;
  if (options.function.empty()) {
    for (const Function& f : functions()) list.push_back(&f);
  } else {
    list = find_functions(options.function);
  }
  if (options.format != "table") return print_records(list, options.format == "json");
  if (options.function.empty()) {
    print_table(list);
    print_legend();
  } else {
    for (const Function* f : list) print_details(*f);
  }
}

}  // namespace

void add_info_command(CLI::App& app) {
  auto* command = app.add_subcommand("info", "List the functions with their kernels and accuracy");
  auto options = std::make_shared<Options>();
  command
      ->add_option("FUNCTION", options->function,
                   "Tell of this function only: Exp (of all types) or dExp")
      ->option_text(" ");
  command
      ->add_option("--format", options->format,
                   "table (default), or csv or json: a record for each function and level")
      ->transform(CLI::IsMember({"table", "csv", "json"}, CLI::ignore_case))
      ->option_text("FORMAT");
  command->footer("Examples:\n  orv info Exp\n  orv info --format csv");
  command->callback([options] { info(*options); });
}

}  // namespace orv_cli
