// SPDX-License-Identifier: MIT
#include "functions.hpp"

#include <fmt/ranges.h>
#include <orv/qem.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "error.hpp"
#include "suggest.hpp"

namespace orv_cli {
namespace {

template <class Kernel>
std::array<orv_call::Kernel, 3> table_of(const Kernel (&table)[3]) {
  return {orv_call::of(table[LA]), orv_call::of(table[HA]), orv_call::of(table[EP])};
}

#define ORV_FUNCTION(t, F, shape, la, ha, ep, cost_la, cost_ha, cost_ep, frames) \
  {#t[0],                                                                        \
   #F,                                                                           \
   #shape,                                                                       \
   {#la, #ha, #ep},                                                              \
   {cost_la, cost_ha, cost_ep},                                                  \
   table_of(orv_qem_kernel_##t##F##_ttab)},
const Function all_functions[] = {
#include "qem/_bt_gen_ia32/functions.def"
};

#define ORV_DESCRIPTION(types, F, computes, status_codes) {#types, #F, computes, status_codes},
constexpr Description descriptions[] = {
#include "qem/_bt_gen_ia32/descriptions.def"
};

struct Figure {
  char type;
  std::string_view name;
  Level level;
  double ulp;
};
#define ORV_ACCURACY(t, F, level, figure) {#t[0], #F, level, figure},
constexpr Figure figures[] = {
#include "qem/_bt_gen_ia32/accuracy.def"
};

/// Names that other programs have for functions.
constexpr std::pair<std::string_view, std::string_view> other_names[] = {
    {"log", "Ln"},        {"arcsin", "Asin"},   {"arccos", "Acos"},      {"arctan", "Atan"},
    {"arctan2", "Atan2"}, {"arcsinh", "Asinh"}, {"arccosh", "Acosh"},    {"arctanh", "Atanh"},
    {"fabs", "Abs"},      {"power", "Pow"},     {"square", "Sqr"},       {"reciprocal", "Inv"},
    {"ceiling", "Ceil"},  {"pnorm", "CdfNorm"}, {"qnorm", "CdfNormInv"}, {"rsqrt", "InvSqrt"},
    {"subtract", "Sub"},  {"multiply", "Mul"},  {"divide", "Div"},       {"angle", "Arg"},
};

std::vector<std::string_view> names_if(auto&& wanted) {
  std::vector<std::string_view> names;
  for (const Function& f : functions()) {
    if (wanted(f) && std::ranges::find(names, f.name) == names.end()) names.push_back(f.name);
  }
  return names;
}

[[noreturn]] void throw_unknown(std::string_view text) {
  const auto close = names_if(
      [&](const Function& f) { return is_close(text, f.name) || is_close(text, f.full_name()); });
  if (!close.empty()) {
    throw Error("no function {}; did you mean {}? 'orv info' lists all", in_quotes(text),
                fmt::join(close, ", "));
  }
  throw Error("no function {}; there are {}; 'orv info' tells of them", in_quotes(text),
              fmt::join(names_if([](const Function&) { return true; }), ", "));
}

}  // namespace

std::span<const Function> functions() { return all_functions; }

std::vector<const Function*> find_functions(std::string_view text) {
  std::string wanted = lower(text);
  const auto* other = std::ranges::find(other_names, wanted, [](auto& row) { return row.first; });
  if (other != std::end(other_names)) wanted = lower(other->second);
  std::vector<const Function*> found;
  for (const Function& f : functions()) {
    if (lower(f.name) == wanted || lower(f.full_name()) == wanted) found.push_back(&f);
  }
  if (found.empty()) throw_unknown(text);
  return found;
}

const Function& find_function(std::string_view text, char type) {
  const auto found = find_functions(text);
  const auto with_type = [&](char t) { return std::ranges::find(found, t, &Function::type); };
  auto chosen = type != 0 ? with_type(type) : with_type('d');
  if (chosen == found.end() && type == 0) chosen = with_type('z');
  if (chosen == found.end() && type == 0) chosen = found.begin();
  if (chosen == found.end()) {
    std::string types;
    for (const Function* f : found) (types += types.empty() ? "" : ", ") += f->type;
    throw Error("--type {}: {} has type {}", type, in_quotes(text), types);
  }
  return **chosen;
}

const Description* description(const Function& f) {
  const auto* found = std::ranges::find_if(descriptions, [&](const Description& d) {
    return d.name == f.name && d.types.find(f.type) != d.types.npos;
  });
  return found == std::end(descriptions) ? nullptr : found;
}

std::optional<double> recorded_error(const Function& function, Level level) {
  for (const Figure& f : figures) {
    if (f.type == function.type && f.name == function.name && f.level == level) return f.ulp;
  }
  return std::nullopt;
}

std::string_view instruction_set(std::string_view kernel) {
  static constexpr std::pair<std::string_view, std::string_view> sets[] = {
      {"PX", "scalar, x87"}, {"W7", "SSE2"},   {"T7", "SSE3"}, {"V8", "SSE3"},
      {"N8", "SSE4.1"},      {"P8", "SSE4.1"}, {"G9", "AVX"}};
  for (const auto& [tag, set] : sets) {
    if (kernel.starts_with(tag)) return set;
  }
  return "?";
}

}  // namespace orv_cli
