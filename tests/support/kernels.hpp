// SPDX-License-Identifier: MIT
// Every kernel of the functions, as data.
#pragma once

#include <orv/qem.h>

#include <optional>
#include <string>
#include <vector>

#include "qem/_bt_gen_ia32/call.hpp"

namespace orv_test {

enum Slot { LA = 0, HA = 1, EP = 2 };
inline constexpr const char* slot_name[] = {"LA", "HA", "EP"};

/// A slot of a function's table.
struct Kernel {
  char type;             // s, d, c, z
  std::string function;  // "Exp"
  Slot slot;
  std::string kernel;  // "G9HAynn"
  orv_call::Kernel call;
  float cost;
  std::string frame, environment;  // "guarded", "mode"
  std::optional<double> ulp;  // recorded largest error, for kernels with roundings of their own
  bool first;                 // no earlier slot of the function has the kernel

  std::string name() const { return type + function + "_" + slot_name[slot]; }  // "dExp_HA"
  const orv_call::Signature& signature() const { return call.signature; }
  bool in_float() const { return type == 's' || type == 'c'; }
  /// Calls f with a number of the type of the elements' parts.
  template <class F>
  auto in_its_type(F f) const {
    return in_float() ? f(float{}) : f(double{});
  }
  /// Numbers of an input vector, and of a result, with n elements.
  size_t input_size(size_t n) const { return n * signature().input_parts; }
  size_t result_size(size_t n) const { return n * signature().result_parts; }
};

inline constexpr double usual_scalars[] = {0.75, -1.5, 2.25, 3.5};

/// What a call on n elements takes besides vectors: ordinary scalars, and places or masks that
/// leave every element where it is. It lasts until the thread's next such call.
orv_call::Arguments usual_arguments(const Kernel& kernel, int64_t n);

/// All slots of all functions.
std::vector<Kernel> all_slots();
/// Each kernel once.
std::vector<Kernel> distinct_kernels(std::vector<Kernel> slots = all_slots());

}  // namespace orv_test
