// Every kernel of the functions that are ready, as data.
#pragma once

#include <orv/qem.h>

#include <optional>
#include <string>
#include <vector>

namespace orv_test {

enum class Shape { Unary, Binary };
enum Slot { LA = 0, HA = 1, EP = 2 };
inline constexpr const char* slot_name[] = {"LA", "HA", "EP"};

template <class T>
using UnaryKernel = void (*)(int32_t n, const T* a, T* r);
template <class T>
using BinaryKernel = void (*)(int32_t n, const T* a, const T* b, T* r);

/// A slot of a function's table.
struct Kernel {
  char type;             // s, d, c, z
  std::string function;  // "Exp"
  Shape shape;
  Slot slot;
  std::string kernel;  // "G9HAynn"
  void (*address)();
  float cost;
  std::optional<double> ulp;  // recorded largest error, for kernels with roundings of their own

  std::string name() const { return type + function + "_" + slot_name[slot]; }  // "dExp_HA"
  std::string tag() const { return kernel.substr(0, 2); }

  /// T is the function's element type: float, double, QemComplexFloat, QemComplexDouble.
  template <class T>
  UnaryKernel<T> unary() const {
    return reinterpret_cast<UnaryKernel<T>>(address);
  }
  template <class T>
  BinaryKernel<T> binary() const {
    return reinterpret_cast<BinaryKernel<T>>(address);
  }
};

/// All slots of all ready functions, or only slots whose kernel no earlier slot of the function
/// has.
std::vector<Kernel> all_slots();
std::vector<Kernel> distinct_kernels();

}  // namespace orv_test
