// SPDX-License-Identifier: MIT
// The library's vector functions as data, made from its own function list.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "qem/_bt_gen_ia32/call.hpp"

namespace orv_cli {

/// Slots of a function's tables.
enum Level { LA, HA, EP };
inline constexpr std::array levels = {LA, HA, EP};
inline constexpr std::array<std::string_view, 3> level_names = {"LA", "HA", "EP"};

struct Function {
  char type;  // s, d, c, z
  std::string_view name;
  std::string_view shape;  // "Unary", ...: the arguments of a kernel
  std::array<std::string_view, 3> kernels;
  std::array<float, 3> costs;
  std::array<orv_call::Kernel, 3> table;  // orv_qem_kernel_<t><F>_ttab

  std::string full_name() const { return type + std::string(name); }  // "dExp"
  bool is_complex() const { return type == 'c' || type == 'z'; }
};

struct Description {
  std::string_view types, name, computes, status_codes;
};

std::span<const Function> functions();

/// The types that have a function: "Exp" means all, "dExp" one; upper and lower case are the same.
/// Throws an Error that suggests names if there is none.
std::vector<const Function*> find_functions(std::string_view text);

/// The one of them with the given type; 0 takes d or z, else the first.
const Function& find_function(std::string_view text, char type);

const Description* description(const Function& function);

/// Largest error in ulp that is recorded for a level.
std::optional<double> recorded_error(const Function& function, Level level);

/// The lowest instruction set that runs a kernel.
std::string_view instruction_set(std::string_view kernel);

}  // namespace orv_cli
