// What each function should give, a row a function: the true value through MPFR, and the inputs at
// which its kernels might fail.
#pragma once

#include <string>
#include <vector>

#include "inputs.hpp"

namespace orv_test {

/// How a function's kernels are judged.
enum class Grade {
  Rounded,      // exact or rounded once: every result is the number nearest to the true value
  Approximate,  // the level's bound, and the figure recorded for the kernel
};

struct Function {
  std::string types;  // those of s, d, c, z that the row serves
  std::string name;
  Grade grade;
  /// From all parts of the operands (a complex number has two) to all parts of the results. There
  /// are four of each to use.
  void (*exact)(mpfr_t* y, mpfr_t* x);
  /// The same in double for exhaustive runs over float, 0 if there is none.
  double (*in_double)(double x);
  void (*inputs_s)(Inputs<float>&);
  void (*inputs_d)(Inputs<double>&);

  /// EP forms products in its own range and so is held to its bound in the middle half of it.
  bool ep_in_middle = false;

  void inputs(Inputs<float>& in) const { inputs_s(in); }
  void inputs(Inputs<double>& in) const { inputs_d(in); }
};

const std::vector<Function>& functions();

/// The row that serves a function of the library, 0 if there is none.
const Function* find_function(char type, const std::string& name);

}  // namespace orv_test
