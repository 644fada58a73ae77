// orv random: numbers from a random stream, and the list of generators.
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <orv/zok.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

#include "commands.hpp"
#include "error.hpp"
#include "output.hpp"
#include "progress.hpp"
#include "random_streams.hpp"

namespace orv_cli {
namespace {

struct Options {
  std::string kind;
  std::string brng = "MT19937", seed = "1";
  std::string count = "10";
  std::vector<std::string> range;
  std::optional<std::string> skip, leapfrog, save, load;
  std::string type = "d";
  std::string format = "text";
};

// ---- Ranges -------------------------------------------------------------------------------------

template <class T>
struct Range {
  T a, b;
};

template <class T>
constexpr const char* number_of = std::is_same_v<T, float> ? "float" : "double";

template <class T>
T bound(const std::string& what, const std::string& text) {
  if constexpr (std::is_integral_v<T>) {
    using Limits = std::numeric_limits<T>;
    return static_cast<T>(whole_number(what, text, Limits::min(), Limits::max()));
  } else {
    T value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value)) {
      throw Error("{}: {} is not a number that a {} holds; allowed are 2, -0.5, 1e-3", what,
                  in_quotes(text), number_of<T>);
    }
    return value;
  }
}

template <class T>
Range<T> range_of(const Options& options, Range<T> by_default) {
  if (options.range.empty()) return by_default;
  const std::string what =
      fmt::format("--range {} {}", one_line(options.range[0]), one_line(options.range[1]));
  const Range<T> range = {bound<T>(what, options.range[0]), bound<T>(what, options.range[1])};
  if (!(range.a < range.b)) throw Error("{}: A is to be below B", what);
  if (std::is_same_v<T, double> && !std::isfinite(range.b - range.a)) {
    throw Error("{}: B - A is to be a double, {} at most", what, std::numeric_limits<T>::max());
  }
  return range;
}

// ---- Drawing ------------------------------------------------------------------------------------

/// Elements that one call of the library draws.
constexpr int32_t block_size = 1 << 15;

/// `words` numbers make a line.
template <class T>
void append_text(fmt::memory_buffer& text, std::span<const T> numbers, size_t words) {
  for (size_t i = 0; i < numbers.size(); ++i) {
    fmt::format_to(std::back_inserter(text), "{}{}", numbers[i], (i + 1) % words ? ' ' : '\n');
  }
}

/// Draws n elements of `words` numbers each with draw(count, numbers) and prints them.
template <class T, class Draw>
void print_all(int64_t n, int32_t words, bool binary, Draw draw) {
  Progress progress(n);
  std::vector<T> block(static_cast<size_t>(std::min<int64_t>(n, block_size)) * words);
  fmt::memory_buffer text;
  for (int64_t done = 0; done < n;) {
    const auto count = static_cast<int32_t>(std::min<int64_t>(n - done, block_size));
    check(draw(count, block.data()), "drawing");
    const std::span<const T> numbers(block.data(), static_cast<size_t>(count) * words);
    if (binary) {
      write(numbers.data(), numbers.size_bytes());
    } else {
      text.clear();
      append_text(text, numbers, words);
      write(text.data(), text.size());
    }
    done += count;
    progress.update(done);
  }
}

template <class T, class Source>
void print_uniform(const Options& options, StreamState* stream, int64_t n, Range<T> by_default,
                   int32_t method, Source source) {
  const Range<T> range = range_of(options, by_default);
  print_all<T>(n, 1, options.format == "binary", [&](int32_t count, T* r) {
    return source(method, stream, count, r, range.a, range.b);
  });
}

void print_bits(const Options& options, StreamState* stream, int64_t n) {
  BrngProperties properties;
  check(__zokGetBrngProperties(__zokGetStreamStateBrng(stream), &properties), "drawing");
  const auto words = properties.WordSize / static_cast<int32_t>(sizeof(uint32_t));
  print_all<uint32_t>(n, words, options.format == "binary", [&](int32_t count, uint32_t* r) {
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

void print_numbers(const Options& options) {
  const auto n = whole_number("-n", options.count, 0, std::numeric_limits<int64_t>::max());
  const Stream stream =
      options.load ? load_stream(*options.load) : new_stream(options.brng, options.seed);
  if (options.skip) skip_ahead(stream.get(), *options.skip);
  if (options.leapfrog) leapfrog(stream.get(), *options.leapfrog);
  if (options.save) expect_writable(*options.save);
  if (options.kind == "bits") {
    print_bits(options, stream.get(), n);
  } else if (options.kind == "int") {
    print_uniform<int32_t>(options, stream.get(), n, {0, 100}, 0, draw_integers);
  } else if (options.type == "s") {
    print_uniform<float>(options, stream.get(), n, {0, 1}, RNG_ACCURATE, _zoksRngUniform);
  } else {
    print_uniform<double>(options, stream.get(), n, {0, 1}, RNG_ACCURATE, _zokdRngUniform);
  }
  if (options.save) save_stream(stream.get(), *options.save);
}

// ---- The list -----------------------------------------------------------------------------------

void print_list() {
  constexpr const char* row = "{:<10}{:>8}  {:<26}{:>10}{:>6}   {:<9} {:<5} {}\n";
  fmt::memory_buffer text;
  const auto out = std::back_inserter(text);
  fmt::format_to(out, row, "name", "members", "period", "word size", "bits", "leapfrog", "skip",
                 "state");
  const auto yes_if = [](int32_t status) { return status >= 0 ? "yes" : "no"; };
  for (const Generator& g : generators()) {
    const BrngProperties p = g.properties();
    const Stream stream = first_stream(g);  // asked itself what it can do
    fmt::format_to(out, row, g.name, g.members(), g.period, p.WordSize, p.NumBits,
                   stream ? yes_if(__zokLeapfrogStream(stream.get(), 0, 1)) : "-",
                   stream ? yes_if(__zokSkipAheadStream(stream.get(), 0)) : "-",
                   stream ? "ready" : "planned");
  }
  fmt::format_to(out, R"(
Members of a family are chosen with --brng NAME:OFFSET, OFFSET from 0 on.
Word size: bytes of an element that 'orv random bits' prints; bits: the significant
ones of an element, for WH of each of its words.
)");
  write(text.data(), text.size());
}

// ---- The command --------------------------------------------------------------------------------

/// No option is passed over in silence.
void refuse_options(const CLI::App& command, const std::string& kind) {
  const auto takes = [&](const std::string& name) {
    if (kind == "list") return false;
    if (name == "--range") return kind != "bits";
    if (name == "--type") return kind == "uniform";
    return true;
  };
  for (const CLI::Option* option : command.get_options()) {
    const std::string name = option->get_name();
    if (option->count() > 0 && name != "KIND" && !takes(name)) {
      throw Error("{} {}: orv random {} doesn't take it", name,
                  in_quotes(fmt::format("{}", fmt::join(option->results(), " "))), kind);
    }
  }
}

constexpr const char* footer =
    R"(Kinds: uniform prints numbers from A on and below B, where rounding may reach B: on 0 1 for some
3 floats in 10^8, and for a double of MCG59 only, once in 2^54; oftener where B is large beside
B - A. int prints whole numbers from A to B - 1; bits prints elements as the generator makes them,
one of several words with spaces between; list tells of the generators, without options.

Numbers are printed one a line with the fewest digits that read back as the same number, or with
--format binary as they are in memory: doubles, floats, 32-bit integers or words, little-endian.

How a sequence is cut up makes no difference: what follows --load continues it exactly, for either
word size. --skip and --leapfrog count elements, of which uniform and int take one a number; --skip
comes first. --save replaces what FILE held when all of the new is written.

Examples:
  orv random uniform -n 1000 --range -1 1 --save state
  orv random uniform -n 1000 --range -1 1 --load state
  orv random bits --brng MT19937 --seed 0x123,0x234,0x345,0x456
  orv random int --brng WH:7 --leapfrog 0/4 --range 1 7)";

}  // namespace

void add_random_command(CLI::App& app) {
  auto* command = app.add_subcommand("random", "Print random numbers, or list the generators");
  auto options = std::make_shared<Options>();
  const auto one_of = [](std::vector<std::string> words) {
    return CLI::IsMember(std::move(words), CLI::ignore_case);
  };
  const auto add = [&](const char* name, auto& value, const char* help, const char* text) {
    return command->add_option(name, value, help)->option_text(text);
  };
  add("KIND", options->kind, "uniform, bits, int or list", " ")
      ->required()
      ->transform(one_of({"uniform", "bits", "int", "list"}));
  auto* brng = add("--brng", options->brng, "The generator (default: MT19937)", "NAME[:OFFSET]");
  auto* seed = add("--seed", options->seed,
                   "Seed words with commas between, 0 to 4294967295 each, decimal\n"
                   "or 0x...; the generator takes those it has room for (default: 1)",
                   "WORDS");
  add("-n", options->count, "How many elements, 0 or more (default: 10)", "N");
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
  add("--type", options->type, "For uniform: d double (default) or s float", "d|s")
      ->transform(one_of({"d", "s"}));
  add("--format", options->format, "text (default) or binary", "FORMAT")
      ->transform(one_of({"text", "binary"}));
  command->footer(footer);
  command->callback([command, options] {
    refuse_options(*command, options->kind);
    if (options->kind == "list") return print_list();
    print_numbers(*options);
  });
}

}  // namespace orv_cli
