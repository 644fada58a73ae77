// SPDX-License-Identifier: MIT
// What kernels report on this thread, and where the elements are that they report.
#pragma once

#include <orv/qem.h>

#include "python.hpp"

namespace orv_python {

/// The elements of a kernel's call, as the callback needs them.
struct Elements {
  const char* name;    // of the function, for reports
  bool is_complex;     // arguments have imaginary parts
  bool gives_complex;  // so have results
  bool are_floats;     // of single precision
  const char* second;  // the second argument's elements, one after the other; null if there is none
  npy_intp second_step;  // from one to the next, in bytes
  const char* result;    // the first result's first element, in its array or a buffer
  npy_intp step;
  npy_intp before;  // elements that the loop has had done before
};

/// For its lifetime reported elements of this thread come here, and the mode's own routes rest. At
/// its end the floating-point flags are those from before, those of reported elements, and, if they
/// are the function's own, those that its instructions left.
class Reporting {
 public:
  explicit Reporting(bool keeps_hardware_flags);
  ~Reporting();
  Reporting(const Reporting&) = delete;
  Reporting& operator=(const Reporting&) = delete;

  /// To be told before each kernel's call.
  void about(const Elements& elements);

  /// Reports an element of that call, a real number of a real one.
  void add(int code, int index, double argument, double result) const;

 private:
  const bool keeps_hardware_flags_;
  const unsigned saved_csr_;
  const QemMode saved_mode_;
  const QemErrorCallBack saved_callback_;
};

/// Whether somebody collects reports on this thread.
bool collecting();

/// Of the elements of one call from Python, those that loops have done.
extern thread_local npy_intp elements_done;

/// A call from Python of which there are reports; null results after an exception.
struct FinishedCall {
  PyObject* const* arguments;
  int inputs;
  bool in_order;  // the loops had all elements, in the order of NumPy's iterator
  PyObject* result;
};

/// Gives the reports of a call to the collector, with their places in its result. The error that is
/// set, if any, stays.
void hand_over(const FinishedCall& call);

}  // namespace orv_python
