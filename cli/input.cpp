// SPDX-License-Identifier: MIT
#include "input.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

#include "error.hpp"

namespace orv_cli {
namespace {

struct Delimiter {
  char c;
  const char *name, *shown;
};
constexpr Delimiter delimiters[] = {
    {',', "comma", "','"}, {';', "semicolon", "';'"}, {'\t', "tab", "tab"},
    {'|', "pipe", "'|'"},  {' ', "blank", "blank"},
};

constexpr std::string_view no_delimiters = "\"\r\n.+-_0123456789";

char delimiter_of(const std::string& text) {
  if (text == "\\t") return '\t';
  const auto* named = std::ranges::find_if(delimiters, [&](auto& d) { return text == d.name; });
  if (named != std::end(delimiters)) return named->c;
  if (text.size() == 1 && no_delimiters.find(text[0]) == no_delimiters.npos) return text[0];
  throw Error(
      "--delimiter {}: allowed are a character such as ';' or '|', and tab, comma, semicolon, pipe "
      "and blank, which stands for any number of blanks and tabs",
      in_quotes(text));
}

char decimal_of(const std::string& text) {
  if (text == "." || text == ",") return text[0];
  if (text == "comma") return ',';
  throw Error("--decimal {}: allowed are . and ,", in_quotes(text));
}

char comment_of(const std::string& text, char delimiter) {
  if (text.empty()) return 0;
  if (text.size() == 1 && text[0] != delimiter && text[0] != '"' && text[0] != ' ') return text[0];
  throw Error("--comment {}: allowed is a character such as #, not the delimiter", in_quotes(text));
}

/// How often the delimiter stands in a line, outside of quotes.
size_t count_outside_quotes(std::string_view line, char delimiter) {
  size_t count = 0;
  bool quoted = false;
  for (const char c : line) {
    quoted ^= c == '"';
    count += !quoted && c == delimiter;
  }
  return count;
}

/// Lines of the text that hold cells, but a last one that is cut off.
std::vector<std::string_view> lines_of(std::string_view text, char comment) {
  std::vector<std::string_view> lines;
  for (size_t end; (end = text.find_first_of("\r\n")) != text.npos; text.remove_prefix(end + 1)) {
    if (end > 0 && text[0] != comment) lines.push_back(text.substr(0, end));
  }
  if (lines.empty() && !text.empty()) lines.push_back(text);
  return lines;
}

}  // namespace

const char* const input_help =
    R"(Input: files of cells with commas between, or what --delimiter tells; -, the default, is standard
input. Several files must have the same columns, and are read as one. What gzip or zstd packed is
unpacked. Cells may stand in double quotes; lines end in LF or CR LF; blanks around cells and blank
lines are passed over. A first row without a number is taken as a header, and so is one that differs
in kind from the columns below it, such as country,2020,2021; a note tells of a doubt. Columns are
given by name or by number from 1; a list of them may have ranges such as 2-4 and x:z.)";

Header header_of(std::string_view text) {
  return text == "yes" ? Header::yes : text == "no" ? Header::no : Header::automatic;
}

void add_input_options(CLI::App& command, InputOptions& options) {
  const auto add = [&](const char* name, auto& value, const char* text, const char* help) {
    return command.add_option(name, value, help)->option_text(text)->group("Input");
  };
  add("-d,--delimiter", options.delimiter, "CHAR",
      "What parts the cells: a character, or tab, comma, semicolon, pipe,\n"
      "blank (default: comma; semicolon with a decimal comma)");
  add("--decimal", options.decimal, "CHAR", "The decimal point of numbers: . (default) or ,");
  add("--na", options.missing_words, "WORDS",
      "Words for a missing cell, with commas between (default:\n"
      "NA,N/A,NaN,NULL,null,None,.,-); an empty cell always is one");
  add("--comment", options.comment, "CHAR", "Lines that begin with this character are passed over");
  add("--header", options.header, "WHETHER",
      "Whether the first row is a header: auto (default), yes or no")
      ->transform(CLI::IsMember({"auto", "yes", "no"}, CLI::ignore_case));
}

Input input_of(const InputOptions& options) {
  const char decimal = decimal_of(options.decimal);
  CsvFormat csv = {decimal == ',' ? ';' : ',', 0};
  if (!options.delimiter.empty()) csv.delimiter = delimiter_of(options.delimiter);
  if (csv.delimiter == decimal) {
    throw Error("--decimal {}: commas part the cells, too; give another --delimiter, such as ';'",
                in_quotes(options.decimal));
  }
  csv.comment = comment_of(options.comment, csv.delimiter);
  Input input = {options.files, csv, CellFormat(options.missing_words, decimal),
                 header_of(options.header)};
  if (input.files.empty()) input.files.emplace_back("-");
  if (std::ranges::count(input.files, "-") > 1) {
    throw Error("FILE '-' is given twice; standard input can be read once");
  }
  return input;
}

std::string format_hint(std::string_view text, const CsvFormat& format) {
  const auto lines = lines_of(text, format.comment);
  if (lines.empty()) return "";
  if (format.comment == 0 && lines[0].starts_with('#')) {
    return "; lines begin with #: --comment '#' passes them over";
  }
  const auto parts_all = [&](const Delimiter& d) {
    const size_t count = count_outside_quotes(lines[0], d.c);
    if (d.c == ' ' && count_outside_quotes(lines[0], format.delimiter) > 0) return false;
    return d.c != format.delimiter && count > 0 && std::ranges::all_of(lines, [&](auto line) {
             return count_outside_quotes(line, d.c) == count;
           });
  };
  const auto* found = std::ranges::find_if(delimiters, parts_all);
  if (found == std::end(delimiters)) return "";
  return fmt::format("; {} seems to part the cells: give --delimiter {}", found->shown,
                     found->c == '\t' || found->c == ' ' ? found->name : found->shown);
}

}  // namespace orv_cli
