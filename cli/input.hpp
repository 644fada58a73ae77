// SPDX-License-Identifier: MIT
// What a command is told about the tables that it reads.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cells.hpp"
#include "csv.hpp"

namespace CLI {
class App;
}

namespace orv_cli {

enum class Header { automatic, yes, no };

Header header_of(std::string_view text);  // "auto", "yes" or "no"

/// As they were given on the command line.
struct InputOptions {
  std::vector<std::string> files;  // none: standard input
  std::string delimiter, decimal = ".", missing_words = CellFormat::missing_by_default, comment;
  std::string header = "auto";
};

/// FILE and the options that all commands that read tables share.
void add_input_options(CLI::App& command, InputOptions& options);
extern const char* const input_help;  // of them, for a command's footer

/// Files of the same columns and how they are written.
struct Input {
  std::vector<std::string> files = {"-"};
  CsvFormat csv;
  CellFormat cells;
  Header header = Header::automatic;
};

Input input_of(const InputOptions& options);

/// What to say where a text seems to have another delimiter, or comments, than it is read with:
/// "; ..." or nothing. The text are a file's first lines.
std::string format_hint(std::string_view text, const CsvFormat& format);

}  // namespace orv_cli
