// SPDX-License-Identifier: MIT
// The distributions that `orv random` draws: their parameters, methods and laws.
#pragma once

#include <orv/zok.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "laws.hpp"

namespace orv_cli {

enum class Allowed { any, above_0, probability, probability_above_0, count, mean_of_counts };

struct Parameter {
  std::string_view name;  // its option is --name
  Allowed allowed;
  std::optional<double> by_default;  // must be given if there is none
};

struct Method {
  std::string_view name;
  int32_t number;
  std::string_view text;
};

/// A whole number of 32 bits.
inline bool is_whole(Allowed allowed) { return allowed == Allowed::count; }

/// Draws n numbers into r, a vector of what the function makes; parameters are in the row's order.
using Draw = int32_t (*)(int32_t method, StreamState* stream, int32_t n, void* r,
                         const double* parameters);

struct Distribution {
  std::string_view name, text;
  std::vector<Parameter> parameters;
  std::vector<Method> methods;  // the first one by default; none where there is no choice
  Draw doubles, floats;         // or
  Draw integers;
  Law (*law)(const double* parameters);
  /// The name of a parameter that does not go with the others, or nothing.
  std::string_view (*misfit)(const double* parameters) = nullptr;
};

std::span<const Distribution> distributions();

/// Null if there is none of that name.
const Distribution* find_distribution(std::string_view name);

/// "numbers above 0"
std::string_view text_of(Allowed allowed);
bool is_allowed(Allowed allowed, double x);

}  // namespace orv_cli
