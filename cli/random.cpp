// SPDX-License-Identifier: MIT
// orv random: numbers from a random stream, and lists of generators and distributions.
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <orv/zok.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

#include "commands.hpp"
#include "describe.hpp"
#include "distributions.hpp"
#include "error.hpp"
#include "multivariate.hpp"
#include "numbers.hpp"
#include "output.hpp"
#include "picture.hpp"
#include "points.hpp"
#include "poisson_means.hpp"
#include "print_numbers.hpp"
#include "random_kinds.hpp"
#include "random_streams.hpp"

namespace orv_cli {
namespace {

struct Options {
  std::string kind;
  std::string brng = "MT19937", seed = "1";
  std::string count = "10";
  std::vector<std::string> range;
  std::map<std::string_view, std::string> parameters;  // those given
  std::string method;
  MultivariateOptions multivariate;
  PoissonMeansOptions means;
  bool describe = false;
  std::optional<std::string> plot;  // a picture in place of numbers
  std::optional<std::string> dim, skip, leapfrog, save, load;
  std::string type = "d";
  std::string format = "text";
};

// ---- Ranges -------------------------------------------------------------------------------------

template <class T>
struct Range {
  T a, b;
};

template <class T>
Range<T> range_of(const Options& options, Range<T> by_default) {
  if (options.range.empty()) return by_default;
  const std::string what =
      fmt::format("--range {} {}", one_line(options.range[0]), one_line(options.range[1]));
  const Range<T> range = {number<T>(what, options.range[0]), number<T>(what, options.range[1])};
  if (!(range.a < range.b)) throw Error("{}: A is to be below B", what);
  if (std::is_same_v<T, double> && !std::isfinite(range.b - range.a)) {
    throw Error("{}: B - A is to be a double, {} at most", what, std::numeric_limits<T>::max());
  }
  return range;
}

Format format_of(const Options& options) {
  if (options.format == "csv") return Format::csv;
  return options.format == "binary" ? Format::binary : Format::text;
}

// ---- Drawing ------------------------------------------------------------------------------------

/// As numbers, or beside the law.
template <class T, class Draw>
void print_or_describe(const Options& options, int64_t n, const Law& law, Draw draw) {
  if (options.plot && *options.plot != "-") expect_picture(*options.plot, "--plot");
  if (!options.describe && !options.plot) return print_all<T>(n, 1, format_of(options), draw);
  Description description(law);
  draw_all<T>(n, 1, draw, [&](std::span<const T> numbers) {
    for (const T x : numbers) description.add(static_cast<double>(x));
  });
  const bool picture = options.plot && *options.plot != "-";
  if (picture) draw_picture(*options.plot, "--plot", 800, 500, description.picture());
  if (!picture || options.describe) output("{}", description.text());
}

template <class T, class Source>
void print_uniform(const Options& options, StreamState* stream, int64_t n, Range<T> by_default,
                   int32_t method, Source source) {
  const Range<T> range = range_of(options, by_default);
  const auto draw = [&](int32_t count, T* r) {
    return source(method, stream, count, r, range.a, range.b);
  };
  const double law_range[] = {static_cast<double>(range.a), static_cast<double>(range.b)};
  const Law law = std::is_integral_v<T> ? whole_uniform_law(law_range) : uniform_law(law_range);
  print_or_describe<T>(options, n, law, draw);
}

/// The parameter as it was given, in the type that the numbers have.
template <class T>
double parameter(const Parameter& p, const std::string& text) {
  using Number = std::conditional_t<std::is_same_v<T, float>, float, double>;
  const std::string what = fmt::format("--{}", p.name);
  const double value =
      is_whole(p.allowed) ? number<int32_t>(what, text) : number<Number>(what, text);
  if (is_allowed(p.allowed, value)) return value;
  throw Error("{} {}: allowed are {}", what, in_quotes(text), text_of(p.allowed));
}

/// Every parameter in the row's order: given, or by default.
template <class T>
std::vector<double> parameters_of(const Distribution& row, const Options& options) {
  std::vector<double> values;
  for (const Parameter& p : row.parameters) {
    const auto given = options.parameters.find(p.name);
    if (given == options.parameters.end()) {
      if (!p.by_default)
        throw Error("--{}: {} needs it; allowed are {}", p.name, row.name, text_of(p.allowed));
      values.push_back(*p.by_default);
      continue;
    }
    values.push_back(parameter<T>(p, given->second));
  }
  const std::string_view misfit = row.misfit == nullptr ? "" : row.misfit(values.data());
  if (!misfit.empty()) {
    throw Error("--{} {}: it is more than the {}", misfit,
                in_quotes(options.parameters.find(misfit)->second), row.parameters[0].name);
  }
  return values;
}

int32_t method_of(std::string_view kind, const std::vector<Method>& methods,
                  const std::string& name) {
  if (methods.empty()) return 0;
  if (name.empty()) return methods[0].number;
  const auto found = std::ranges::find(methods, name, &Method::name);
  if (found != methods.end()) return found->number;
  std::vector<std::string_view> names;
  for (const Method& method : methods) names.push_back(method.name);
  throw Error("--method {}: {} has {}", in_quotes(name), kind, fmt::join(names, ", "));
}

template <class T>
void print_distribution(const Distribution& row, const Options& options, StreamState* stream,
                        int64_t n) {
  const std::vector<double> parameters = parameters_of<T>(row, options);
  const int32_t method = method_of(row.name, row.methods, options.method);
  const Draw draw = std::is_integral_v<T>      ? row.integers
                    : std::is_same_v<T, float> ? row.floats
                                               : row.doubles;
  print_or_describe<T>(options, n, row.law(parameters.data()), [&](int32_t count, T* r) {
    return draw(method, stream, count, r, parameters.data());
  });
}

template <class T>
void print_vectors(const Options& options, StreamState* stream, int64_t n) {
  const auto vectors = multivariate<T>(options.multivariate, options.parameters);
  const int32_t method =
      method_of("gaussian-mv", find_distribution("gaussian")->methods, options.method);
  print_all<T>(n, vectors.dim, format_of(options),
               [&](int32_t count, T* r) { return vectors.draw(method, stream, count, r); });
}

void print_poisson_vectors(const Options& options, StreamState* stream, int64_t n) {
  const std::vector<double> means = poisson_means(options.means);
  const auto dim = static_cast<int32_t>(means.size());
  print_all<int32_t>(n, dim, format_of(options), [&](int32_t count, int32_t* r) {
    int32_t status = RNG_OK;
    for (int32_t i = 0; status >= 0 && i < count; ++i) {
      status = _zokiRngPoissonV(0, stream, dim, r + size_t(i) * dim, means.data());
    }
    return status;
  });
}

void print_bits(const Options& options, StreamState* stream, int64_t n) {
  BrngProperties properties;
  check(__zokGetBrngProperties(__zokGetStreamStateBrng(stream), &properties), "drawing");
  const auto words = properties.WordSize / static_cast<int32_t>(sizeof(uint32_t));
  print_all<uint32_t>(n, words, format_of(options), [&](int32_t count, uint32_t* r) {
    return _zokiRngUniformBits(0, stream, count, r);
  });
}

/// Each below b: the library's rounding may reach it.
int32_t draw_integers(int32_t method, StreamState* stream, int32_t n, int32_t* r, int32_t a,
                      int32_t b) {
  const int32_t status = _zokiRngUniform(method, stream, n, r, a, b);
  for (int32_t i = 0; status >= 0 && i < n; ++i) r[i] = std::min(r[i], b - 1);
  return status;
}

/// f(T{}) with the type that --type asks for.
template <class F>
void in_type(const Options& options, F f) {
  if (options.type == "s") return f(float{});
  f(double{});
}

void print_kind(const Options& options, StreamState* stream, int64_t n) {
  if (options.kind == "bits") return print_bits(options, stream, n);
  if (options.kind == "int") {
    return print_uniform<int32_t>(options, stream, n, {0, 100}, 0, draw_integers);
  }
  if (options.kind == "uniform" && options.type == "s") {
    return print_uniform<float>(options, stream, n, {0, 1}, RNG_ACCURATE, _zoksRngUniform);
  }
  if (options.kind == "uniform") {
    return print_uniform<double>(options, stream, n, {0, 1}, RNG_ACCURATE, _zokdRngUniform);
  }
  if (options.kind == poisson_vector_kind) return print_poisson_vectors(options, stream, n);
  const Distribution* const row = find_distribution(options.kind);
  if (row != nullptr && row->integers != nullptr) {
    return print_distribution<int32_t>(*row, options, stream, n);
  }
  in_type(options, [&]<class T>(T) {
    if (row == nullptr) return print_vectors<T>(options, stream, n);
    print_distribution<T>(*row, options, stream, n);
  });
}

void print_points(const Options& options, int64_t n) {
  const auto given = options.parameters.find("shift");
  const Points::Option shift = given == options.parameters.end() ? Points::Option() : given->second;
  Points points(options.kind, options.dim, shift, options.skip);
  in_type(options, [&]<class T>(T) {
    print_all<T>(n, points.dim(), format_of(options),
                 [&](int32_t count, T* r) { return points.draw(count, r); });
  });
}

void print_numbers(const Options& options) {
  const auto n = whole_number("-n", options.count, 0, std::numeric_limits<int64_t>::max());
  if (makes_points(options.kind)) return print_points(options, n);
  const Stream stream =
      options.load ? load_stream(*options.load) : new_stream(options.brng, options.seed);
  if (options.skip) skip_ahead(stream.get(), *options.skip);
  if (options.leapfrog) leapfrog(stream.get(), *options.leapfrog);
  if (options.save) expect_writable(*options.save);
  print_kind(options, stream.get(), n);
  if (options.save) save_stream(stream.get(), *options.save);
}

// ---- The list -----------------------------------------------------------------------------------

void print_generators() {
  constexpr const char* row = "{:<10}{:>8}  {:<26}{:>10}{:>6}   {:<9} {}\n";
  fmt::memory_buffer text;
  const auto out = std::back_inserter(text);
  fmt::format_to(out, row, "name", "members", "period", "word size", "bits", "leapfrog", "skip");
  const auto yes_if = [](int32_t status) { return status >= 0 ? "yes" : "no"; };
  for (const Generator& g : generators()) {
    const BrngProperties p = g.properties();
    const Stream stream = first_stream(g);  // asked itself what it can do
    fmt::format_to(out, row, g.name, g.members(), g.period, p.WordSize, p.NumBits,
                   yes_if(__zokLeapfrogStream(stream.get(), 0, 1)),
                   yes_if(__zokSkipAheadStream(stream.get(), 0)));
  }
  fmt::format_to(out, R"(
Members of a family are chosen with --brng NAME:OFFSET, OFFSET from 0 on.
Word size: bytes of an element that 'orv random bits' prints; bits: the significant
ones of an element, for WH of each of its words. The first seed word of Sobol and Niederr is
their number of dimensions.
)");
  write(text.data(), text.size());
}

std::string usage_of(const Distribution& row) {
  std::string text(row.name);
  for (const Parameter& p : row.parameters) {
    text += p.by_default ? fmt::format(" [--{} {}]", p.name, *p.by_default)
                         : fmt::format(" --{} ...", p.name);
  }
  return text;
}

void print_distributions() {
  std::string text = "\nDistributions, with parameters and what these are if not given:\n\n";
  for (const Distribution& row : distributions()) {
    text += fmt::format("{}\n    {}\n", usage_of(row), row.text);
    for (const Method& m : row.methods) {
      text += fmt::format("    --method {:<12}{}{}\n", m.name, m.text,
                          &m == &row.methods[0] ? " (default)" : "");
    }
  }
  text += multivariate_usage;
  text += poisson_vector_usage;
  text += points_usage;
  write(text.data(), text.size());
}

// ---- The command --------------------------------------------------------------------------------

bool takes_parameter(const std::string& kind, std::string_view name) {
  const Distribution* const row = find_distribution(kind);
  if (kind == multivariate_kind) return name == "mean";
  if (makes_points(kind)) return name == "shift";
  return row != nullptr && std::ranges::count(row->parameters, name, &Parameter::name) != 0;
}

bool takes(const std::string& kind, const std::string& option) {
  const Distribution* const row = find_distribution(kind);
  const bool vectors = kind == multivariate_kind, has_law = row != nullptr || kind == "int";
  const bool real = kind == "uniform" || (row != nullptr && row->doubles != nullptr);
  const bool points = makes_points(kind);
  if (kind == "list") return false;
  if (option == "--dim") return points;
  for (const char* stream_option : {"--brng", "--seed", "--leapfrog", "--save", "--load"}) {
    if (option == stream_option) return !points;
  }
  if (option == "--range") return kind == "uniform" || kind == "int";
  if (option == "--type") return real || vectors || points;
  if (option == "--describe" || option == "--plot") return real || has_law;
  for (const char* of_means : {"--means", "--means-file", "--column"}) {
    if (option == of_means) return kind == poisson_vector_kind;
  }
  if (option == "--method") return vectors || (row != nullptr && !row->methods.empty());
  if (option == "--covariance" || option == "--factor" || option == "--storage") return vectors;
  const bool is_parameter = std::ranges::any_of(distributions(), [&](const Distribution& d) {
    return takes_parameter(std::string(d.name), option.substr(2));
  });
  return !is_parameter || takes_parameter(kind, option.substr(2));
}

/// No option is passed over in silence.
void refuse_options(const CLI::App& command, const std::string& kind) {
  for (const CLI::Option* option : command.get_options()) {
    const std::string name = option->get_name();
    if (option->count() > 0 && name != "KIND" && !takes(kind, name)) {
      throw Error("{} {}: orv random {} doesn't take it", name,
                  in_quotes(fmt::format("{}", fmt::join(option->results(), " "))), kind);
    }
  }
}

constexpr const char* footer =
    R"(Kinds: uniform prints numbers from A on and below B, where rounding may reach B: on 0 1 for some
3 floats in 10^8, and for a double of MCG59 only, once in 2^54; oftener where B is large beside
B - A. int prints whole numbers from A to B - 1; bits prints elements as the generator makes them,
one of several words with spaces between; list tells of the generators, and of the distributions,
their parameters and methods. sobol and niederreiter print points of low discrepancy, for which -n
and --skip count points.

Numbers are printed one a line with the fewest digits that read back as the same number, or with
--format binary as they are in memory: doubles, floats, 32-bit integers or words, little-endian.
--format csv has commas between the numbers of a line.
--describe prints their moments and a histogram in place of them, beside the law's own.

How a sequence is cut up makes no difference: what follows --load continues it exactly, for either
word size; laplace with MCG31M1 or R250 is the exception. --skip and --leapfrog count elements, of
which uniform and int take one a number; --skip comes first. --save replaces what FILE held when all
of the new is written.

Examples:
  orv random gaussian --mean 20 --sd 0.5 -n 1e6 --describe
  orv random gamma --shape 2.5 --scale 3 -n 1000 --seed 7
  orv random binomial --trials 100 --p 0.3 -n 1e5 --describe
  orv random uniform -n 1000 --range -1 1 --save state
  orv random uniform -n 1000 --range -1 1 --load state
  orv random sobol --dim 5 -n 1000 --shift 7 --format csv
  orv random bits --brng MT19937 --seed 0x123,0x234,0x345,0x456
  orv random int --brng WH:7 --leapfrog 0/4 --range 1 7)";

/// One option for all distributions that have a parameter of the name.
void add_parameters(CLI::App& command, Options& options) {
  std::map<std::string_view, std::vector<std::string_view>> users;
  for (const Distribution& row : distributions()) {
    for (const Parameter& p : row.parameters) users[p.name].push_back(row.name);
  }
  for (const auto& [name, kinds] : users) {
    command
        .add_option_function<std::string>(
            fmt::format("--{}", name),
            [&options, name = name](const std::string& text) { options.parameters[name] = text; },
            fmt::format("For {}{}", fmt::join(kinds, ", "),
                        name == "shift" ? "; a seed for sobol, niederreiter" : ""))
        ->option_text("X")
        ->group("Parameters of distributions, see 'orv random list'");
  }
}

}  // namespace

std::vector<std::string> random_kinds() {
  std::vector<std::string> names = {"uniform", "bits", "int", "list"};
  for (const Distribution& row : distributions()) names.emplace_back(row.name);
  for (const std::string_view name :
       {multivariate_kind, poisson_vector_kind, sobol_kind, niederreiter_kind}) {
    names.emplace_back(name);
  }
  return names;
}

void add_random_command(CLI::App& app) {
  auto* command = app.add_subcommand("random", "Print random numbers, or list what there is");
  auto options = std::make_shared<Options>();
  const auto one_of = [](std::vector<std::string> words) {
    return CLI::IsMember(std::move(words), CLI::ignore_case);
  };
  const auto add = [&](const char* name, auto& value, const char* help, const char* text) {
    return command->add_option(name, value, help)->option_text(text);
  };
  add("KIND", options->kind, "uniform, bits, int, a distribution such as gaussian, or list", " ")
      ->required()
      ->transform(one_of(random_kinds()));
  auto* brng = add("--brng", options->brng, "The generator (default: MT19937)", "NAME[:OFFSET]");
  auto* seed = add("--seed", options->seed,
                   "Seed words with commas between, 0 to 4294967295 each, decimal\n"
                   "or 0x...; the generator takes those it has room for (default: 1)",
                   "WORDS");
  add("-n", options->count, "How many elements, 0 or more, such as 1e6 (default: 10)", "N");
  add("--range", options->range,
      "From A on and below B (default: 0 1; for int, whole numbers of 32\n"
      "bits: 0 100)",
      "A B")
      ->expected(2);
  add("--skip", options->skip, "Pass over the first N elements", "N");
  add("--leapfrog", options->leapfrog,
      "Take every N-th element, from the K-th on; K from 0 to N - 1", "K/N");
  add("--save", options->save, "Write the stream to FILE when all is printed", "FILE");
  add("--load", options->load, "Go on with the stream that was saved in FILE", "FILE")
      ->excludes(brng)
      ->excludes(seed);
  add("--type", options->type, "d double (default) or s float", "d|s")
      ->transform(one_of({"d", "s"}));
  auto* format = add("--format", options->format, "text (default), csv or binary", "FORMAT")
                     ->transform(one_of({"text", "csv", "binary"}));
  command->add_flag("--describe", options->describe, "Moments and a histogram, beside the law's")
      ->excludes(format);
  add("--plot", options->plot,
      "Draw a histogram and the law's density in place of numbers, by gnuplot,\n"
      "to a file .svg or .png; - does as --describe",
      "FILE")
      ->excludes(format);
  add("--method", options->method, "How a distribution's numbers are made", "NAME");
  add_parameters(*command, *options);
  auto* covariance = add("--covariance", options->multivariate.covariance,
                         "For gaussian-mv: a CSV file of the covariance", "FILE");
  add("--factor", options->multivariate.factor,
      "For gaussian-mv: a CSV file of a lower factor of the covariance", "FILE")
      ->excludes(covariance);
  add("--dim", options->dim, "For sobol, niederreiter: the dimensions (default: 2)", "N");
  add("--storage", options->multivariate.storage,
      "How the factor is stored: full (default), packed or diagonal", "NAME")
      ->transform(one_of({"full", "packed", "diagonal"}));
  auto* means =
      add("--means", options->means.list, "For poisson-v: the means, with commas between", "LIST");
  add("--means-file", options->means.file, "For poisson-v: a CSV file of them", "FILE")
      ->excludes(means);
  add("--column", options->means.column, "Its column; without, all its numbers", "NAME|K");
  command->footer(footer);
  command->callback([command, options] {
    refuse_options(*command, options->kind);
    if (options->kind == "list") {
      print_generators();
      return print_distributions();
    }
    print_numbers(*options);
  });
}

}  // namespace orv_cli
