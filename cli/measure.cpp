// SPDX-License-Identifier: MIT
// orv measure: accuracy and speed of a function's levels, found then and there.
#include <fmt/format.h>
#include <orv/qem.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <type_traits>

#include "commands.hpp"
#include "error.hpp"
#include "functions.hpp"
#include "output.hpp"

namespace orv_cli {
namespace {

struct Options {
  std::string function;
  int32_t arguments = 1'000'000;
  int32_t elements = 1000;
};

/// What a function is held against: the C library's 80-bit form for the error, its form of the same
/// type for the speed. Arguments come from the interval, evenly.
struct Reference {
  std::string_view name, c_name;
  long double (*extended)(long double);
  double (*plain_d)(double);
  float (*plain_s)(float);
  double low_d, high_d, low_s, high_s;
};

constexpr Reference references[] = {
    {"Exp", "exp", expl, exp, expf, -708, 709, -87, 88},
    {"Expm1", "expm1", expm1l, expm1, expm1f, -40, 709, -20, 88},
    {"Ln", "log", logl, log, logf, 0, 1000, 0, 1000},
    {"Log10", "log10", log10l, log10, log10f, 0, 1000, 0, 1000},
    {"Log1p", "log1p", log1pl, log1p, log1pf, -1, 1000, -1, 1000},
};

const Reference& reference_of(const Function& f) {
  for (const Reference& reference : references) {
    if (reference.name == f.name && !f.is_complex()) return reference;
  }
  throw Error("{} has nothing to be measured against; Exp, Expm1, Ln, Log10, Log1p have",
              f.full_name());
}

template <class T>
struct Measurement {
  std::string level, kernel;
  std::function<void(int32_t, const T*, T*)> compute;
  double ulp = 0;
  double relative = 0;
  double ns = std::numeric_limits<double>::infinity();
};

template <class T>
std::vector<T> even_arguments(int32_t n, double low, double high) {
  std::mt19937_64 generator(20240229);
  std::uniform_real_distribution<double> law(low, high);
  std::vector<T> x(n);
  for (T& value : x) value = static_cast<T>(law(generator));
  return x;
}

/// Weight of the last bit of a result of this size.
template <class T>
long double last_place(long double value) {
  int exponent;
  std::frexp(value, &exponent);
  const int least = std::numeric_limits<T>::min_exponent;
  return std::ldexp(1.0L, std::max(exponent, least) - std::numeric_limits<T>::digits);
}

template <class T>
void measure_errors(std::vector<Measurement<T>>& list, const Reference& reference,
                    const std::vector<T>& x) {
  std::vector<long double> exact(x.size());
  std::ranges::transform(x, exact.begin(), reference.extended);
  std::vector<T> r(x.size());
  for (Measurement<T>& m : list) {
    m.compute(static_cast<int32_t>(x.size()), x.data(), r.data());
    for (size_t i = 0; i < x.size(); ++i) {
      if (!std::isfinite(exact[i]) || exact[i] == 0) continue;
      const long double error = std::fabs(static_cast<long double>(r[i]) - exact[i]);
      m.ulp = std::max(m.ulp, static_cast<double>(error / last_place<T>(exact[i])));
      m.relative = std::max(m.relative, static_cast<double>(error / std::fabs(exact[i])));
    }
  }
}

constexpr int rounds = 40;

/// The best of the rounds, the candidates in turn within each.
template <class T>
void measure_speed(std::vector<Measurement<T>>& list, const std::vector<T>& x, int32_t n) {
  using Clock = std::chrono::steady_clock;
  constexpr int64_t elements_a_round = 400'000;
  const int64_t calls = std::max<int64_t>(1, elements_a_round / n);
  std::vector<T> r(n);
  for (int round = 0; round < rounds; ++round) {
    for (Measurement<T>& m : list) {
      const auto begin = Clock::now();
      for (int64_t i = 0; i < calls; ++i) m.compute(n, x.data(), r.data());
      const std::chrono::duration<double, std::nano> time = Clock::now() - begin;
      m.ns = std::min(m.ns, time.count() / static_cast<double>(calls * n));
    }
  }
}

/// The three levels, then the C library.
template <class T>
std::vector<Measurement<T>> candidates(const Function& f, const Reference& reference) {
  std::vector<Measurement<T>> list;
  for (const Level level : levels) {
    list.push_back({std::string(level_names[level]), std::string(f.kernels[level]),
                    [kernel = f.table[level]](int32_t n, const T* a, T* r) {
                      kernel({.n = n, .inputs = {a}, .results = {r}});
                    }});
  }
  const auto add = [&](auto plain, const char* suffix) {
    list.push_back({"", fmt::format("C library {}{}", reference.c_name, suffix),
                    [plain](int32_t n, const T* a, T* r) {
                      for (int32_t i = 0; i < n; ++i) r[i] = plain(a[i]);
                    }});
  };
  if constexpr (std::is_same_v<T, float>) {
    add(reference.plain_s, "f");
  } else {
    add(reference.plain_d, "");
  }
  return list;
}

template <class T>
void print_rows(const std::vector<Measurement<T>>& list) {
  output("{:<7}{:<16}{:>18}{:>18}{:>14}{:>12}\n", "level", "kernel", "largest error",
         "relative error", "ns/element", "C library");
  for (const Measurement<T>& m : list) {
    const int decimals = m.ulp >= 100 ? 0 : 3;
    output("{:<7}{:<16}{:>14.{}f} ulp{:>13}2^{:<5.1f}{:>12.2f}{:>10.1f} x\n", m.level, m.kernel,
           m.ulp, decimals, "", std::log2(m.relative), m.ns, list.back().ns / m.ns);
  }
}

template <class T>
void measure_as(const Function& f, const Reference& reference, const Options& options) {
  constexpr bool single = std::is_same_v<T, float>;
  const double low = single ? reference.low_s : reference.low_d;
  const double high = single ? reference.high_s : reference.high_d;
  const std::vector<T> x =
      even_arguments<T>(std::max(options.arguments, options.elements), low, high);
  output(
      "{} on {} random arguments in [{}, {}]; error against the C library's 80-bit {}l;\n"
      "speed with vectors of {} elements from half that interval, best of {} rounds.\n",
      f.full_name(), x.size(), low, high, reference.c_name, options.elements, rounds);
  auto list = candidates<T>(f, reference);
  measure_errors(list, reference, x);
  // Away from the ends, where elements leave the lanes.
  std::vector<T> halves(x.begin(), x.begin() + options.elements);
  for (T& value : halves) value /= 2;
  measure_speed(list, halves, options.elements);
  print_rows(list);
}

void measure(const Options& options) {
  const Function& f = find_function(options.function, '\0');
  const Reference& reference = reference_of(f);
  orv_qem_kernel_SetMode(QEM_ERRMODE_IGNORE);
  if (f.type == 's') {
    measure_as<float>(f, reference, options);
  } else {
    measure_as<double>(f, reference, options);
  }
}

}  // namespace

void add_measure_command(CLI::App& app) {
  auto* command = app.add_subcommand(
      "measure", "Measure accuracy and speed of a function's levels beside the C library");
  auto options = std::make_shared<Options>();
  command
      ->add_option("FUNCTION", options->function,
                   "Exp, Expm1, Ln, Log10 or Log1p; sExp and so on for floats")
      ->required()
      ->option_text(" ");
  command
      ->add_option("--arguments", options->arguments,
                   "Number of random arguments for the error, 1 to 100000000 "
                   "(default 1000000)")
      ->check(CLI::Range(1, 100'000'000))
      ->option_text("N");
  command
      ->add_option("-n,--elements", options->elements,
                   "Elements of a vector for the speed, 1 to 1000000 (default 1000)")
      ->check(CLI::Range(1, 1'000'000))
      ->option_text("N");
  command->footer(
      R"(Errors are the largest that occurred, in units in the last place (ulp) of the result and relative
to it; the 80-bit reference is itself good to about 0.001 ulp of a double. Times are of one thread
on this machine at this moment, in nanoseconds an element; the last column is the C library's time
divided by the row's.

Examples:
  orv measure Exp
  orv measure sLn -n 64)");
  command->callback([options] { measure(*options); });
}

}  // namespace orv_cli
