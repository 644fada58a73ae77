// SPDX-License-Identifier: MIT
// What is made from the commands' own descriptions: manual pages and completion for shells.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace orv_cli {

/// A page for man, of the program or one of its commands.
std::string manual_page(const CLI::App& command);

/// A script for bash, zsh or fish.
std::string completion(const CLI::App& program, const std::string& shell);

/// help, man and completion.
void add_page_commands(CLI::App& program);

/// What to say about an argument that no option takes, or nothing.
std::string unknown_argument(const CLI::App& program);

}  // namespace orv_cli
