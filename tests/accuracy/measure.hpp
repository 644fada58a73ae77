// SPDX-License-Identifier: MIT
// Runs kernels over input sets and judges what they give.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "inputs.hpp"
#include "support/kernels.hpp"

namespace orv_test {

/// The points of a function: an array of numbers for each operand, a complex number being two.
template <class R>
struct Points {
  int32_t n = 0;
  int width = 1;               // numbers of an operand
  int operands = 1;            // of the function
  bool scalar_second = false;  // the second operand is one number for a call: runs of equal ones
  std::vector<R> operand[2];

  const R* at(int j, int32_t i) const { return operand[j].data() + i * width; }
  std::string text(int32_t i) const;
};

template <class R>
Points<R> make_points(const Function& f, const Kernel& shape, uint64_t seed, int count);

/// Numbers of all results of a point.
inline int numbers_of(const Kernel& kernel) {
  return kernel.signature().results * kernel.signature().result_parts;
}

/// The results of a kernel at all points, in one call; those of a point side by side.
template <class R>
std::vector<R> results(const Kernel& kernel, const Points<R>& points);

/// Error routes off and denormals kept, whatever the environment says.
void quiet_mode();

/// The largest error seen, and where. At LA and EP that of a complex number is judged by its
/// norm, in units of the norm's epsilon, since parts may cancel; at HA each part stands for itself.
struct Worst {
  double ulp = -1;
  double relative = 0;
  std::string argument;
  int64_t points = 0;
  int64_t misrounded = 0;  // not the nearest number
  std::string misrounded_argument;

  void merge(const Worst& other);
};

/// The slots of one function of the library.
struct FunctionSlots {
  char type;
  std::string name;
  std::vector<Kernel> slots;

  std::string full_name() const { return type + name; }
  std::vector<Kernel> kernels() const { return distinct_kernels(slots); }
};
std::vector<FunctionSlots> ready_functions();

/// What each kernel reached, by its address.
using Reached = std::map<void (*)(), Worst>;

/// All kernels of a function against the truth at `count` random points and the structured ones.
Reached sample(const Function& f, const FunctionSlots& function, uint64_t seed, int count);

/// At all 2^32 arguments, for a float function with one operand.
Reached exhaust(const Function& f, const FunctionSlots& function);

/// What is wrong with a slot whose kernel reached `worst`, a line a fault.
std::vector<std::string> faults(const Kernel& slot, const Function& f, const Worst& worst);

/// A digest of each kernel's results over a fixed input set, which shows any change of a bit
/// between builds and processors: the lines of digests.txt, two words each.
using Digests = std::map<std::string, std::string>;
Digests compute_digests();

/// What printf prints.
[[gnu::format(printf, 1, 2)]] std::string printed(const char* format, ...);

/// "0.512": a figure for the record, rounded up to three digits.
std::string figure(double ulp);

}  // namespace orv_test
