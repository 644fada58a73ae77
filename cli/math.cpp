// SPDX-License-Identifier: MIT
// orv math: a vector function applied to columns of a file.
#include <fmt/format.h>
#include <orv/qem.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <memory>

#include "columns.hpp"
#include "commands.hpp"
#include "complex_text.hpp"
#include "error.hpp"
#include "functions.hpp"
#include "output.hpp"
#include "progress.hpp"

namespace orv_cli {
namespace {

/// A number that a kernel takes by value, in the order of a shape's.
struct ScalarOption {
  const char* option;
  std::string_view shape;
  const char* otherwise;  // the number if it is not given; null: it must be
  const char* help;
};
constexpr ScalarOption scalar_options[] = {
    {"--arg", "ScalarSecond", nullptr,
     "The second argument of all elements, as that of Powx; for a complex\n"
     "function 2.5, 1+2i or 1,2"},
    {"--scalea", "FractionalLinear", "1",
     "Of LinearFrac, (scalea a + shifta)/(scaleb b + shiftb): a and b are\n"
     "--column and --second, the latter not where scaleb is 0 (default 1)"},
    {"--shifta", "FractionalLinear", "0", "Likewise (default 0)"},
    {"--scaleb", "FractionalLinear", "0", "Likewise (default 0)"},
    {"--shiftb", "FractionalLinear", "1", "Likewise (default 1)"},
};

struct Options {
  std::string functions, level, type, column, second, mode, as, output;
  InputOptions input;
  std::string missing;
  std::string scalars[std::size(scalar_options)];
  bool errors = false, append = false;
};

/// Elements that one call of a kernel gets; a power of two, see local_index.
constexpr int32_t chunk_size = 1 << 15;

template <class T>
struct Chunk {
  std::vector<T> in[2];           // complex: real and imaginary parts in turn
  std::vector<int64_t> lines;     // of each element
  std::vector<char> missing;      // likewise, whether it was
  std::vector<std::string> rows;  // likewise, where columns are to be appended to them
  int64_t start = 0;              // its first element's place among all

  int32_t size() const { return static_cast<int32_t>(lines.size()); }
};

/// A function of a run, and its results.
template <class T>
struct Applied {
  const Function* function;
  orv_call::Kernel kernel;
  std::vector<double> scalars;
  std::vector<T> out[2];

  int results() const { return kernel.signature.results; }
  size_t parts() const { return static_cast<size_t>(kernel.signature.result_parts); }
};

/// Shortest text that reads back as the same number.
template <class T>
std::string text_of(T value) {
  return std::isnan(value) ? "nan" : fmt::format("{}", value);
}

// ---- Mode ---------------------------------------------------------------------------------------

/// The mode word as the environment would set it, by the library's own reader.
void set_mode(const std::string& tokens) {
  setenv("ORV_QEM_MODE", tokens.c_str(), 1);
  if (orv_qem_kernel_ReadEnvVarMode() != -1) return;
  throw Error(
      "--mode {}: allowed is a list such as QEM_LA,QEM_ERRMODE_STDERR of QEM_LA, QEM_HA, "
      "QEM_EP, QEM_DEFAULT_PRECISION, QEM_FLOAT_CONSISTENT, QEM_DOUBLE_CONSISTEN, "
      "QEM_RESTORE, QEM_ERRMODE_ followed by IGNORE, ERRNO, STDERR, EXCEPT, CALLBACK or "
      "DEFAULT",
      in_quotes(tokens));
}

/// The slot of the kernel tables that options and environment choose.
int32_t choose_slot(const Options& options) {
  if (!options.mode.empty()) set_mode(options.mode);
  if (options.level == "la") orv_qem_kernel_SetMode(QEM_LA);
  if (options.level == "ha") orv_qem_kernel_SetMode(QEM_HA);
  if (options.level == "ep") orv_qem_kernel_SetMode(QEM_EP);
  const int32_t slot = orv_qem_kernel_GetTTableIndex();
  if (slot < 0) {
    throw Error(
        "mode word {:#x} chooses no accuracy; add QEM_LA, QEM_HA or QEM_EP to it, or give "
        "--level la, ha or ep",
        orv_qem_kernel_GetMode());
  }
  return slot;
}

// ---- Error reports ------------------------------------------------------------------------------

const char* word_of(int32_t code) {
  static constexpr const char* words[] = {"ok", "domain", "singularity", "overflow", "underflow"};
  return code >= 0 && code <= 4 ? words[code] : "other";
}

/// What list_error needs to know and the record doesn't tell.
struct Reporting {
  const Function* function;
  int64_t start = 0;
  const std::vector<int64_t>* lines = nullptr;
} reporting;

/// The place in the chunk of an index that counts from the first element of all. The library counts
/// in 32 bits and may have wrapped around; what lies below the chunk's size is right all the same.
size_t local_index(int32_t index) {
  return static_cast<size_t>((index - reporting.start) & (chunk_size - 1));
}

int32_t list_error(QemErrorContext* record) {
  const Function& f = *reporting.function;
  const orv_call::Signature& signature = f.table[LA].signature;
  const auto show = [&](int parts, double re, double im) {
    const auto text = [&](double x) {
      return signature.is_float ? text_of(static_cast<float>(x)) : text_of(x);
    };
    return parts == 2 ? text(re) + "," + text(im) : text(re);
  };
  const size_t local = local_index(record->index);
  // func_name goes by reference to a packed record: take it as a plain address
  const char* name = reinterpret_cast<const char*>(record) + offsetof(QemErrorContext, func_name);
  const std::string line = fmt::format(
      "{}: code {} ({}), index {}, line {}, argument {}, result {}\n", name, record->code,
      word_of(record->code), reporting.start + local, (*reporting.lines)[local],
      show(signature.input_parts, record->arg1, record->arg1_im),
      show(signature.result_parts, record->res1, record->res1_im));
  std::fputs(line.c_str(), stderr);
  return 0;  // the other routes of the mode word run, too
}

/// Says that something was reported, if no route has told the user.
void note_status() {
  const QemMode routes = orv_qem_kernel_GetMode() & QEM_ERRMODE_MASK;
  const int32_t status = orv_qem_kernel_GetErrStatus();
  if (status == 0 || routes == QEM_ERRMODE_IGNORE || (routes & QEM_ERRMODE_STDERR) != 0) return;
  fmt::print(stderr,
             "orv: note: elements were reported, the last with code {} ({}); --errors "
             "lists them\n",
             status, word_of(status));
}

// ---- Numbers taken by value ---------------------------------------------------------------------

template <class T>
double scalar(std::string_view text, std::string_view option) {
  T value;
  if (!parse(text, value)) {
    throw Error("{} {}: not a number; allowed are 2, -0.5, 1e-3, 0x1p-3, inf, nan", option,
                in_quotes(text));
  }
  if (std::isinf(value) && text.find_first_of("iI") == text.npos) {  // not spelled out
    throw Error("{} {}: out of range; the largest {} is {}", option, in_quotes(text),
                sizeof(T) == 4 ? "float" : "double", std::numeric_limits<T>::max());
  }
  return value;
}

/// An option that no function of the run takes is a mistake.
void expect_scalars_of(const std::vector<const Function*>& run, const Options& options) {
  for (size_t k = 0; k < std::size(scalar_options); ++k) {
    const ScalarOption& o = scalar_options[k];
    if (options.scalars[k].empty() || std::ranges::count(run, o.shape, &Function::shape) > 0)
      continue;
    throw Error("{} {}: {} takes no such number; {} does", o.option, in_quotes(options.scalars[k]),
                run[0]->full_name(),
                std::ranges::find(functions(), o.shape, &Function::shape)->name);
  }
}

/// The function's scalars from their options.
template <class T>
std::vector<double> scalars_of(const Function& f, const Options& options) {
  std::vector<double> scalars;
  for (size_t k = 0; k < std::size(scalar_options); ++k) {
    const ScalarOption& o = scalar_options[k];
    if (f.shape != o.shape) continue;
    std::string text = options.scalars[k];
    if (text.empty() && o.otherwise == nullptr) {
      throw Error("{} takes one second argument for all elements; give {}, such as {} 2.5",
                  f.full_name(), o.option, o.option);
    }
    if (text.empty()) text = o.otherwise;
    if (T re, im; f.is_complex() && has_both_parts(text) && parse_complex(text, re, im)) {
      scalars.insert(scalars.end(), {re, im});
      continue;
    }
    scalars.push_back(scalar<T>(text, o.option));
    if (f.is_complex()) scalars.push_back(0);
  }
  return scalars;
}

// ---- The run ------------------------------------------------------------------------------------

template <class T>
void apply(Applied<T>& f, const Chunk<T>& chunk) {
  const orv_call::Signature& signature = f.kernel.signature;
  reporting = {f.function, chunk.start, &chunk.lines};
  for (int j = 0; j < f.results(); ++j) {
    f.out[j].resize(static_cast<size_t>(chunk.size()) * f.parts());
  }
  const T* a = chunk.in[0].data();
  // The library counts from this base. It is an address to compare with, never read.
  const uintptr_t before = static_cast<uintptr_t>(chunk.start) * signature.input_parts * sizeof(T);
  orv_qem_kernel_SetInterfInputVectorPointer(
      reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(a) - before));
  f.kernel({.n = chunk.size(),
            .inputs = {a, chunk.in[1].data()},
            .results = {f.out[0].data(), f.out[1].data()},
            .scalars = f.scalars.data()});
  orv_qem_kernel_SetInterfInputVectorPointer(nullptr);
}

/// The element in a cell, as many numbers as it has parts.
template <class T>
void add_element(const ColumnReader& reader, const Cell& cell, int parts, std::vector<T>& numbers) {
  T re, im;
  if (parts == 1 || !parse_complex(cell.text, re, im)) re = reader.number<T>(cell);
  if (std::isnan(re) && !has_both_parts(cell.text)) im = re;
  numbers.push_back(re);
  if (parts == 2) numbers.push_back(im);
}

/// The imaginary part that follows a real one in a list.
template <class T>
T following_part(ColumnReader& reader, const Cell& real) {
  std::vector<Cell> next;
  if (!reader.next(next) || next[0].line != real.line || has_both_parts(next[0].text)) {
    throw Error(
        "line {}: a real part without its imaginary part beside it; allowed are 3+4i, 3,4 "
        "or, for a real number, 3+0i",
        real.line);
  }
  return reader.number<T>(next[0]);
}

/// The element of a row: of one or two vectors, or of a complex one in parts.
template <class T>
void add_row(ColumnReader& reader, const std::vector<Cell>& cells,
             const orv_call::Signature& signature, bool list, Chunk<T>& chunk) {
  const int parts = signature.input_parts;
  const bool in_parts = parts == 2 && signature.inputs == 1 && cells.size() == 2;
  if (list && parts == 2 && !has_both_parts(cells[0].text)) {
    chunk.in[0].push_back(reader.number<T>(cells[0]));
    chunk.in[0].push_back(following_part<T>(reader, cells[0]));
    return;
  }
  add_element(reader, cells[0], in_parts ? 1 : parts, chunk.in[0]);
  if (cells.size() < 2) return;
  add_element(reader, cells[1], in_parts ? 1 : parts, chunk.in[in_parts ? 0 : 1]);
}

/// Cells as they would stand in a file.
template <class Cells>
std::string row_text(const Cells& cells, char delimiter) {
  std::string text;
  for (const auto& cell : cells) {
    if (!text.empty() || &cell != &*cells.begin()) text += delimiter;
    text += csv_cell(cell, delimiter);
  }
  return text;
}

/// Fills the chunk behind the one before; false if nothing is left.
template <class T>
bool read(ColumnReader& reader, const orv_call::Signature& signature, const Options& options,
          Chunk<T>& chunk) {
  const bool list = options.column.empty();
  const char delimiter = reader.table().delimiter();
  chunk.start += chunk.size();
  chunk.in[0].clear(), chunk.in[1].clear(), chunk.lines.clear();
  chunk.missing.clear(), chunk.rows.clear();
  for (std::vector<Cell> cells; chunk.size() < chunk_size && reader.next(cells);) {
    chunk.lines.push_back(cells[0].line);
    chunk.missing.push_back(std::ranges::any_of(cells, &Cell::missing));
    if (options.append) chunk.rows.push_back(row_text(reader.row().cells, delimiter));
    add_row(reader, cells, signature, list, chunk);
  }
  return chunk.size() > 0;
}

/// Calls use(function, result, part) for each column of results.
template <class T, class Use>
void for_each_result(const std::vector<Applied<T>>& list, Use use) {
  for (const Applied<T>& f : list) {
    for (int j = 0; j < f.results(); ++j) {
      for (size_t part = 0; part < f.parts(); ++part) use(f, j, part);
    }
  }
}

/// A line for each element, with the parts of all results.
template <class T>
void print(const Chunk<T>& chunk, const std::vector<Applied<T>>& list, const Table& table,
           bool leave_empty) {
  fmt::memory_buffer text;
  const char delimiter = table.delimiter() == ' ' ? ',' : table.delimiter();
  const char decimal = table.format().decimal();
  for (size_t i = 0; i < chunk.lines.size(); ++i) {
    if (!chunk.rows.empty()) text.append(chunk.rows[i]);
    bool first = chunk.rows.empty();
    for_each_result(list, [&](const Applied<T>& f, int j, size_t part) {
      if (!first) text.push_back(chunk.rows.empty() ? delimiter : table.delimiter());
      first = false;
      if (leave_empty && chunk.missing[i] != 0) return;
      std::string number = text_of(f.out[j][i * f.parts() + part]);
      if (decimal != '.') std::ranges::replace(number, '.', decimal);
      text.append(number);
    });
    text.push_back('\n');
  }
  write(text.data(), text.size());
}

/// The names above a table with appended results.
template <class T>
void print_names(const Table& table, const std::vector<Applied<T>>& list, const Options& options) {
  std::vector<std::string> names;
  const std::string of =
      options.second.empty() ? options.column : options.column + "," + options.second;
  for_each_result(list, [&](const Applied<T>& f, int j, size_t part) {
    std::string name = fmt::format("{}({})", f.function->name, of);
    if (f.results() > 1) name += fmt::format(".{}", j + 1);
    if (f.parts() > 1) name += part == 0 ? ".re" : ".im";
    names.push_back(std::move(name));
  });
  if (!options.as.empty()) {
    const std::vector<std::string> given = parts_of(options.as);
    if (given.size() != names.size()) {
      throw Error("--as {}: {} names for {} new columns", in_quotes(options.as), given.size(),
                  names.size());
    }
    names = given;
  }
  if (table.names().empty()) return;
  output("{}{}{}\n", row_text(table.names(), table.delimiter()), table.delimiter(),
         row_text(names, table.delimiter()));
}

/// The columns that the function's arguments are taken from; none means a list.
std::vector<std::string> argument_columns(const Function& f, const Options& options,
                                          const std::vector<double>& scalars) {
  const orv_call::Signature& signature = f.table[LA].signature;
  if (signature.moves_elements()) {
    throw Error(
        "{} moves elements from place to place; orv math applies functions that compute each "
        "result from the arguments at its own place",
        f.full_name());
  }
  const bool needs_b = f.shape != "FractionalLinear" || scalars[2] != 0;
  const bool two = signature.inputs == 2 && needs_b;
  if (two && (options.column.empty() || options.second.empty())) {
    throw Error("{} takes two columns; give --column and --second", f.full_name());
  }
  const bool may_have_second = signature.inputs == 2 || signature.input_parts == 2;
  if (!options.second.empty() && !may_have_second) {
    throw Error("--second {}: {} takes one column", in_quotes(options.second), f.full_name());
  }
  if (!options.second.empty() && options.column.empty()) {
    throw Error("--second {}: give --column, too", in_quotes(options.second));
  }
  if (options.column.empty()) return {};
  if (options.second.empty()) return {options.column};
  return {options.column, options.second};
}

Missing missing_of(const std::string& text) {
  return text == "skip" ? Missing::skip : text == "nan" ? Missing::nan : Missing::fail;
}

/// The functions of a run, which read the same arguments.
template <class T>
std::vector<Applied<T>> applied(const std::vector<const Function*>& functions, int32_t slot,
                                const Options& options) {
  std::vector<Applied<T>> list;
  const orv_call::Signature& first = functions[0]->table[slot].signature;
  for (const Function* f : functions) {
    const orv_call::Kernel& kernel = f->table[slot];
    const orv_call::Signature& other = kernel.signature;
    if (other.is_float != first.is_float || other.inputs != first.inputs ||
        other.input_parts != first.input_parts) {
      throw Error(
          "{} and {} take different arguments; functions of one run are of one type and "
          "number of arguments",
          functions[0]->full_name(), f->full_name());
    }
    list.push_back({f, kernel, scalars_of<T>(*f, options), {}});
  }
  return list;
}

template <class T>
void run(const std::vector<const Function*>& functions, int32_t slot, const Options& options) {
  std::vector<Applied<T>> list = applied<T>(functions, slot, options);
  std::vector<std::string> columns;
  for (const Applied<T>& f : list) columns = argument_columns(*f.function, options, f.scalars);
  // A table that is written whole has an empty cell where an argument is missing.
  const bool leave_empty = options.append && options.missing.empty();
  ColumnReader reader(input_of(options.input), columns,
                      leave_empty ? Missing::nan : missing_of(options.missing));
  if (options.append) print_names(reader.table(), list, options);
  Progress progress(reader.table().bytes_in_all());
  Chunk<T> chunk;
  while (read(reader, list[0].kernel.signature, options, chunk)) {
    for (Applied<T>& f : list) apply(f, chunk);
    print(chunk, list, reader.table(), leave_empty);
    progress.update(reader.table().bytes_read());
  }
  if (reader.texts() > 0) {
    fmt::print(stderr, "orv: note: {} cells with text are taken as missing; the first is {}{}\n",
               reader.texts(), reader.first_text(), reader.table().hint());
  }
  if (!reader.note().empty()) fmt::print(stderr, "orv: note: {}\n", reader.note());
}

void math(const Options& options) {
  std::vector<const Function*> functions;
  for (const std::string& name : parts_of(options.functions)) {
    functions.push_back(&find_function(name, options.type.empty() ? '\0' : options.type[0]));
  }
  if (options.append && options.column.empty()) {
    throw Error("--append: give --column; a list of numbers has no columns to append to");
  }
  if (!options.as.empty() && !options.append) {
    throw Error("--as {}: it names the columns of --append", in_quotes(options.as));
  }
  expect_scalars_of(functions, options);
  const int32_t slot = choose_slot(options);
  if (options.errors) orv_qem_kernel_SetErrorCallBack(list_error);
  if (!options.output.empty()) open_output(options.output);
  if (functions[0]->table[slot].signature.is_float) {
    run<float>(functions, slot, options);
  } else {
    run<double>(functions, slot, options);
  }
  close_output();
  if (!options.errors) note_status();
}

constexpr const char* footer =
    R"(
Without --column every number of the input is taken in the order read; white space or commas part
them. The words nan and inf are numbers. Complex numbers are 3+4i or, in quotes, "3,4";
those of a function's only argument may have a column for each part, and without --column two numbers
of a line are the parts of one.

Output: a result a line on standard output, with the fewest digits that read back as the same
number; the two numbers of a complex result, and several results, with a comma between them. With a
decimal comma or another delimiter in the input the output has them, too.

Levels: la below 4 ulp, ha below 1 ulp, ep about half the bits. ulp: unit in the last place.

Examples:
  orv math Ln --column Ozone --missing skip airquality.csv
  orv math Mul --column 3 --second 4 airquality.csv
  orv math log,sqrt -c Ozone airquality.csv --append -o with_logs.csv
  orv math Sqrt --type z --column re --second im points.csv
  echo 3+4i -1-0i | orv math Sqrt --type z
  orv math Modf --column Wind airquality.csv
  orv math Powx --arg 2.5 --column Wind airquality.csv
  orv math LinearFrac --scalea 5 --shifta -160 --shiftb 9 --column Temp airquality.csv
  echo 1 -1 710 | orv math sExp --level ep --errors)";

}  // namespace

void add_math_command(CLI::App& app) {
  auto* command = app.add_subcommand("math", "Apply a vector function to a column of a file");
  auto options = std::make_shared<Options>();
  const auto one_of = [](std::vector<std::string> words) {
    return CLI::IsMember(std::move(words), CLI::ignore_case);
  };
  const auto add = [&](const char* name, std::string& value, const char* help) {
    return command->add_option(name, value, help);
  };
  add("FUNCTION", options->functions,
      "Its name, such as Exp or, with its type, dExp, or those of several with\n"
      "commas between; 'orv info' lists all. Other programs' names such as log\n"
      "(the natural one), arcsin, square, pnorm are known, too")
      ->required()
      ->option_text(" ");
  command
      ->add_option("FILE", options->input.files, "Files to read; -, the default, is standard input")
      ->option_text(" ");
  add_input_options(*command, options->input);
  add("-l,--level", options->level, "Accuracy: la, ha or ep (default: that of the mode word)")
      ->transform(one_of({"la", "ha", "ep"}))
      ->option_text("LEVEL");
  add("-t,--type", options->type,
      "d double, s float, z and c complex of these (default: d, else z)")
      ->transform(one_of({"d", "s", "z", "c"}))
      ->option_text("TYPE");
  add("-c,--column", options->column,
      "Column of the argument, by its name or its number from 1, or of a\n"
      "complex one's real parts")
      ->option_text("NAME|K");
  add("-2,--second", options->second,
      "Column of the second argument, or of the imaginary parts of an only one")
      ->option_text("NAME|K");
  for (size_t k = 0; k < std::size(scalar_options); ++k) {
    add(scalar_options[k].option, options->scalars[k], scalar_options[k].help)
        ->option_text("NUMBER");
  }
  add("--missing", options->missing,
      "What to do about a missing cell: fail (default) stops there, skip\n"
      "passes its row over, nan computes with NaN")
      ->transform(one_of({"fail", "skip", "nan"}))
      ->option_text("WHAT");
  command->add_flag("-a,--append", options->append,
                    "Write the whole table with the results as new columns; where an\n"
                    "argument is missing their cells are empty, unless --missing is given");
  add("--as", options->as,
      "Names of the new columns, with commas between (default: Ln(x) and so on)")
      ->option_text("NAMES");
  add("-o,--output", options->output,
      "Write to this file in place of standard output; it appears\n"
      "when all is written, and may be the one that is read")
      ->option_text("FILE");
  command->add_flag("-e,--errors", options->errors,
                    "List each reported element on standard error, before the results\n"
                    "around it: code, index from 0 among the elements read, line of the\n"
                    "file, argument, result. Sets the callback route of the mode word");
  add("--mode", options->mode,
      "The mode word, in place of the environment's ORV_QEM_MODE: tokens\n"
      "such as QEM_LA,QEM_ERRMODE_STDERR\n"
      "(default: QEM_HA,QEM_ERRMODE_DEFAULT)")
      ->option_text("TOKENS");
  command->footer(std::string(input_help) + footer);
  command->callback([options] { math(*options); });
}

}  // namespace orv_cli
