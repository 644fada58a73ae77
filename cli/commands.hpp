// SPDX-License-Identifier: MIT
// The subcommands of orv: each adds itself, its options and its action to the command line.
#pragma once

namespace CLI {
class App;
}

namespace orv_cli {

void add_math_command(CLI::App& app);
void add_impute_command(CLI::App& app);
void add_info_command(CLI::App& app);
void add_measure_command(CLI::App& app);
void add_random_command(CLI::App& app);
void add_stats_command(CLI::App& app);

}  // namespace orv_cli
