// orv: the library's services on the command line.
#include <fmt/format.h>

#include <CLI/CLI.hpp>

#include "commands.hpp"
#include "error.hpp"

namespace {

constexpr int user_error = 2;
constexpr int other_error = 1;

constexpr const char* word_size = sizeof(void*) == 8 ? "x86-64" : "32-bit x86";

[[noreturn]] void throw_no_command(const CLI::App& app) {
  const std::vector<std::string> given = app.remaining();
  throw orv_cli::Error(
      "{}; allowed are math, info, measure, random, stats, --help and --version",
      given.empty() ? "no command is given" : orv_cli::in_quotes(given[0]) + " is no command");
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app(
      "Vector mathematics, random numbers and statistics for x86 with AVX, on the command line.",
      "orv");
  app.set_version_flag("--version", fmt::format("orv {} ({})", ORV_VERSION, word_size));
  app.footer(
      "'orv COMMAND --help' tells more. Exit codes: 0 success, 2 a mistake in what was given.");
  orv_cli::add_math_command(app);
  orv_cli::add_info_command(app);
  orv_cli::add_measure_command(app);
  orv_cli::add_random_command(app);
  orv_cli::add_stats_command(app);
  app.require_subcommand(0, 1);
  app.allow_extras();  // an unknown command; the commands themselves allow no extras
  try {
    app.parse(argc, argv);
    if (app.get_subcommands().empty()) throw_no_command(app);
    return 0;
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return app.exit(error);  // help or version
    fmt::print(stderr, "orv: {}\n", error.what());
    return user_error;
  } catch (const orv_cli::Error& error) {
    fmt::print(stderr, "orv: {}\n", error.what());
    return user_error;
  } catch (const std::exception& error) {
    fmt::print(stderr, "orv: {}\n", error.what());
    return other_error;
  }
}
