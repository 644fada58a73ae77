// SPDX-License-Identifier: MIT
// orv: the library's services on the command line.
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <orv/version.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <new>
#include <sstream>

#include "commands.hpp"
#include "error.hpp"
#include "output.hpp"
#include "pages.hpp"
#include "suggest.hpp"

namespace orv_cli {
namespace {

constexpr int user_error = 2;
constexpr int other_error = 1;

constexpr const char* word_size = sizeof(void*) == 8 ? "x86-64" : "32-bit x86";

[[noreturn]] void throw_no_command(const CLI::App& app) {
  const std::vector<std::string> given = app.remaining();
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    names.push_back(command->get_name());
  }
  if (given.empty()) throw Error("no command is given; allowed are {}", fmt::join(names, ", "));
  throw Error("{} is no command{}; allowed are {}", in_quotes(given[0]),
              did_you_mean(given[0], names), fmt::join(names, ", "));
}

/// Kernels, streams and statistics would end in an illegal instruction.
void expect_avx() {
  if (__builtin_cpu_supports("avx")) return;
  throw Error("this processor or its operating system has no AVX, which the library is built for");
}

void run(int argc, char** argv) {
  CLI::App app(
      "Vector mathematics, random numbers and statistics for x86 with AVX, on the command line.",
      "orv");
  app.set_version_flag("--version", fmt::format("orv {} ({})", orv_version(), word_size));
  app.footer(
      "'orv help COMMAND' tells more. Exit codes: 0 success; 2 a mistake in what was given, or\n"
      "results that could not be written; 1 anything else.");
  add_math_command(app);
  add_impute_command(app);
  add_info_command(app);
  add_measure_command(app);
  add_random_command(app);
  add_stats_command(app);
  add_page_commands(app);
  app.require_subcommand(0, 1);
  app.allow_extras();  // an unknown command; the commands themselves allow no extras
  app.parse_complete_callback([&app] {  // before a command runs
    for (const char* command : {"info", "help", "man", "completion"}) {
      if (app.got_subcommand(command)) return;
    }
    expect_avx();
  });
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const std::string unknown = unknown_argument(app);
    if (error.get_exit_code() != 0) throw Error("{}", unknown.empty() ? error.what() : unknown);
    std::ostringstream page;  // help or version
    app.exit(error, page);
    return output("{}", page.str());
  }
  if (app.get_subcommands().empty()) throw_no_command(app);
}

}  // namespace
}  // namespace orv_cli

int main(int argc, char** argv) {
  const auto fail = [](int code, const char* what) {
    const bool colour = orv_cli::may_colour(STDERR_FILENO);
    fmt::print(stderr, "{}orv:{} {}\n", colour ? "\033[1;31m" : "", colour ? "\033[0m" : "", what);
    return code;
  };
  orv_cli::end_cleanly_on_signals();
  try {
    orv_cli::run(argc, argv);
    return 0;
  } catch (const orv_cli::Error& error) {
    return fail(orv_cli::user_error, error.what());
  } catch (const std::bad_alloc&) {
    return fail(orv_cli::other_error, "out of memory");
  } catch (const std::exception& error) {
    return fail(orv_cli::other_error, error.what());
  }
}
