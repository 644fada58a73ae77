// SPDX-License-Identifier: MIT
// NumPy's universal functions over the kernels: one inner loop, and for each shape how it is
// called.
#include <orv/qem.h>
#include <stdint.h>
#include <string.h>

#include <algorithm>

#include "python.hpp"
#include "reports.hpp"
#include "unreported.hpp"

namespace orv_python {
namespace {

constexpr int most_operands = 7;
constexpr int most_bytes = 16;         // of an element
constexpr npy_intp buffered = 512;     // elements that are gathered at a time
constexpr npy_intp looked_at = 4096;   // elements whose results are looked at while they are near
constexpr npy_intp longest = 1 << 30;  // elements of one call of a kernel
constexpr int mode_level = -1;         // that of the thread's mode
constexpr const char* level_names[] = {"la", "ha", "ep"};  // in the order of the tables

// ---- Kernels ------------------------------------------------------------------------------------

/// Calls the kernel of a table for n elements, whose operands' first ones are given.
using Call = void (*)(const void* table, int level, int32_t n, char* const* operand);

template <class T>
T* at(char* operand) {
  return reinterpret_cast<T*>(operand);
}
template <class Kernel>
Kernel kernel_of(const void* table, int level) {
  return static_cast<const Kernel*>(table)[level];
}

template <class T, class R>
struct Calls {
  static void Unary(const void* table, int level, int32_t n, char* const* o) {
    using Kernel = void (*)(int32_t, const T*, T*);
    kernel_of<Kernel>(table, level)(n, at<T>(o[0]), at<T>(o[1]));
  }
  static void Binary(const void* table, int level, int32_t n, char* const* o) {
    using Kernel = void (*)(int32_t, const T*, const T*, T*);
    kernel_of<Kernel>(table, level)(n, at<T>(o[0]), at<T>(o[1]), at<T>(o[2]));
  }
  static void ScalarSecond(const void* table, int level, int32_t n, char* const* o) {
    using Kernel = void (*)(int32_t, const T*, T, T*);
    kernel_of<Kernel>(table, level)(n, at<T>(o[0]), *at<T>(o[1]), at<T>(o[2]));
  }
  static void TwoResults(const void* table, int level, int32_t n, char* const* o) {
    using Kernel = void (*)(int32_t, const T*, T*, T*);
    kernel_of<Kernel>(table, level)(n, at<T>(o[0]), at<T>(o[1]), at<T>(o[2]));
  }
  static void TwoResultsExchanged(const void* table, int level, int32_t n, char* const* o) {
    using Kernel = void (*)(int32_t, const T*, T*, T*);
    kernel_of<Kernel>(table, level)(n, at<T>(o[0]), at<T>(o[2]), at<T>(o[1]));
  }
  static void ComplexToReal(const void* table, int level, int32_t n, char* const* o) {
    using Kernel = void (*)(int32_t, const T*, R*);
    kernel_of<Kernel>(table, level)(n, at<T>(o[0]), at<R>(o[1]));
  }
  static void RealToComplex(const void* table, int level, int32_t n, char* const* o) {
    using Kernel = void (*)(int32_t, const R*, T*);
    kernel_of<Kernel>(table, level)(n, at<R>(o[0]), at<T>(o[1]));
  }
  static void FractionalLinear(const void* table, int level, int32_t n, char* const* o) {
    using Kernel = void (*)(int32_t, const T*, const T*, T, T, T, T, T*);
    kernel_of<Kernel>(table, level)(n, at<T>(o[0]), at<T>(o[1]), *at<T>(o[2]), *at<T>(o[3]),
                                    *at<T>(o[4]), *at<T>(o[5]), at<T>(o[6]));
  }
};
using Calls_s = Calls<float, float>;
using Calls_d = Calls<double, double>;
using Calls_c = Calls<QemComplexFloat, float>;
using Calls_z = Calls<QemComplexDouble, double>;

/// Vectors in, single numbers in, results.
struct Shape {
  int vectors, scalars, results;
};
constexpr Shape shape_Unary = {1, 0, 1}, shape_Binary = {2, 0, 1}, shape_ScalarSecond = {1, 1, 1},
                shape_TwoResults = {1, 0, 2}, shape_ComplexToReal = {1, 0, 1},
                shape_RealToComplex = {1, 0, 1}, shape_FractionalLinear = {2, 4, 1};

/// What a loop of a universal function runs, one element type of a function.
struct Row {
  Shape shape;
  Call call;
  const void* table;
  const char* types;  // NumPy's letters of all operands
  bool hardware_flags;
  bool is_silent;  // of overflow, see unreported.hpp

  int inputs() const { return shape.vectors + shape.scalars; }
  int operands() const { return inputs() + shape.results; }
  bool is_complex(int operand) const { return types[operand] == 'F' || types[operand] == 'D'; }
  int bytes(int operand) const {
    return (types[operand] == 'f' || types[operand] == 'F' ? 4 : 8) << int{is_complex(operand)};
  }
};

constexpr bool same_text(const char* a, const char* b) {
  for (; *a == *b; ++a, ++b) {
    if (*a == 0) return true;
  }
  return false;
}

/// NumPy's modf gives the fractional part first.
template <class C>
constexpr Call two_results(const char* function) {
  return same_text(function, "Modf") ? C::TwoResultsExchanged : C::TwoResults;
}
#define ORV_CALL_Unary(C, f) C::Unary
#define ORV_CALL_Binary(C, f) C::Binary
#define ORV_CALL_ScalarSecond(C, f) C::ScalarSecond
#define ORV_CALL_TwoResults(C, f) two_results<C>(#f)
#define ORV_CALL_ComplexToReal(C, f) C::ComplexToReal
#define ORV_CALL_RealToComplex(C, f) C::RealToComplex
#define ORV_CALL_FractionalLinear(C, f) C::FractionalLinear

/// The rows of one function after the other, an empty one behind each function's.
#define ORV_LOOP(shape, type, function, types, hardware_flags, is_silent) \
  {shape_##shape,                                                         \
   ORV_CALL_##shape(Calls_##type, function),                              \
   static_cast<const void*>(orv_qem_kernel_##type##function##_ttab),      \
   types,                                                                 \
   hardware_flags,                                                        \
   is_silent},
#define ORV_UFUNC(name, identity, documentation) {},
const Row rows[] = {
#include "functions.inc"
};
#undef ORV_LOOP
#undef ORV_UFUNC

struct Function {
  const char* name;
  int identity;
  const char* documentation;
};
#define ORV_LOOP(shape, type, function, types, hardware_flags, is_silent)
#define ORV_UFUNC(name, identity, documentation) {#name, identity, documentation},
constexpr Function all_functions[] = {
#include "functions.inc"
};
#undef ORV_LOOP
#undef ORV_UFUNC

// ---- The inner loop -----------------------------------------------------------------------------

/// What NumPy hands to the loop.
struct Task {
  const Row* row;
  const char* name;
  int level;
};

int level_of(const Task& task) {
  if (task.level != mode_level) return task.level;
  constexpr int high_accuracy = 1;
  const int level = orv_qem_kernel_GetTTableIndex();
  return level < 0 ? high_accuracy : level;
}

template <class Unit>
void copy_steps(npy_intp n, const char* from, npy_intp from_step, char* to, npy_intp to_step) {
  for (npy_intp i = 0; i < n; ++i) {
    Unit element;
    memcpy(&element, from + i * from_step, sizeof element);
    memcpy(to + i * to_step, &element, sizeof element);
  }
}
void copy(int bytes, npy_intp n, const char* from, npy_intp from_step, char* to, npy_intp to_step) {
  struct Pair {
    uint64_t a, b;
  };
  switch (bytes) {
    case 4:
      return copy_steps<uint32_t>(n, from, from_step, to, to_step);
    case 8:
      return copy_steps<uint64_t>(n, from, from_step, to, to_step);
    default:
      return copy_steps<Pair>(n, from, from_step, to, to_step);
  }
}

/// A loop's operands, and how they are taken through the kernel.
class Run {
 public:
  Run(const Row& row, char** operands, const npy_intp* steps, npy_intp n) : row_(row), n_(n) {
    for (int k = 0; k < row.operands(); ++k) {
      operand_[k] = operands[k];
      step_[k] = steps[k];
    }
  }

  /// Elements that may go to the kernel at a time: one, where an element's result is another's
  /// argument (as in sums along an axis) or where the kernel's single numbers change.
  npy_intp together() const {
    if (n_ <= 1) return is_needed_after(0) || is_needed_after(1) ? buffered : 1;
    for (int k = row_.shape.vectors; k < row_.inputs(); ++k) {
      if (step_[k] != 0) return 1;
    }
    for (int r = row_.inputs(); r < row_.operands(); ++r) {
      if (step_[r] == 0) return 1;
      for (int k = 0; k < row_.inputs(); ++k) {
        if (depends(k, r)) return 1;
      }
    }
    return !all_dense() ? buffered : row_.is_silent ? looked_at : longest;
  }

  void go(const Task& task, npy_intp together) {
    const int level = level_of(task);
    Elements elements = {.name = task.name,
                         .is_complex = row_.is_complex(0),
                         .gives_complex = row_.is_complex(row_.inputs()),
                         .are_floats = row_.types[0] == 'f' || row_.types[0] == 'F',
                         .second = nullptr,
                         .second_step = is_scalar(1) ? 0 : row_.bytes(0),
                         .result = nullptr,
                         .step = step_[row_.inputs()],
                         .before = elements_done};
    Reporting reporting(row_.hardware_flags);
    reporting.about(elements);
    const bool gathers = together == buffered;
    if (gathers) repeat_single_elements(std::min(n_, together));
    for (npy_intp i = 0; i < n_; i += together) {
      const npy_intp count = std::min(together, n_ - i);
      char* direct[most_operands];
      for (int k = 0; k < row_.operands(); ++k) {
        direct[k] = gathers && !passes(k) ? buffer_[k] : operand_[k] + i * step_[k];
      }
      elements.result = operand_[row_.inputs()] + i * step_[row_.inputs()];
      if (row_.inputs() > 1) elements.second = direct[1];
      if (gathers) gather(i, count);
      row_.call(row_.table, level, static_cast<int32_t>(count), direct);
      if (row_.is_silent) report_unreported(static_cast<int>(count), direct, reporting);
      if (gathers) scatter(i, count);
      elements.before += count;
    }
    elements_done = elements.before;
  }

 private:
  bool is_scalar(int k) const { return k >= row_.shape.vectors && k < row_.inputs(); }
  bool dense(int k) const { return step_[k] == row_.bytes(k); }
  /// Is overwritten by the result, and yet has to be looked at beside it.
  bool is_needed_after(int k) const {
    return row_.is_silent && k < row_.inputs() && operand_[k] == operand_[row_.inputs()];
  }
  /// Goes to the kernel as it lies.
  bool passes(int k) const { return is_scalar(k) || (dense(k) && !is_needed_after(k)); }
  bool all_dense() const {
    for (int k = 0; k < row_.operands(); ++k) {
      if (!passes(k)) return false;
    }
    return true;
  }

  /// An input shares bytes with a result without being the same vector.
  bool depends(int input, int result) const {
    if (operand_[input] == operand_[result] && step_[input] == step_[result]) return false;
    const auto [a, a_end] = extent(input);
    const auto [r, r_end] = extent(result);
    return a < r_end && r < a_end;
  }
  std::pair<uintptr_t, uintptr_t> extent(int k) const {
    const auto first = reinterpret_cast<uintptr_t>(operand_[k]);
    const auto last = first + static_cast<uintptr_t>((n_ - 1) * step_[k]);
    return {std::min(first, last), std::max(first, last) + static_cast<uintptr_t>(row_.bytes(k))};
  }

  void repeat_single_elements(npy_intp n) {
    for (int k = 0; k < row_.inputs(); ++k) {
      if (!passes(k) && step_[k] == 0)
        copy(row_.bytes(k), n, operand_[k], 0, buffer_[k], row_.bytes(k));
    }
  }
  void gather(npy_intp i, npy_intp n) {
    for (int k = 0; k < row_.inputs(); ++k) {
      if (passes(k) || step_[k] == 0) continue;
      copy(row_.bytes(k), n, operand_[k] + i * step_[k], step_[k], buffer_[k], row_.bytes(k));
    }
  }
  void scatter(npy_intp i, npy_intp n) {
    for (int k = row_.inputs(); k < row_.operands(); ++k) {
      if (passes(k)) continue;
      copy(row_.bytes(k), n, buffer_[k], row_.bytes(k), operand_[k] + i * step_[k], step_[k]);
    }
  }

  void report_unreported(int n, char* const* o, const Reporting& reporting) const {
    const int result = row_.inputs();
    const auto look = [&]<class T>(const T* a) {
      const T* b = result > 1 ? at<T>(o[1]) : nullptr;
      const T* r = at<T>(o[result]);
      find_unreported(n, a, b, int{!is_scalar(1)}, r,
                      [&](int code, int i) { reporting.add(code, i, a[i], r[i]); });
    };
    row_.types[0] == 'f' ? look(at<float>(o[0])) : look(at<double>(o[0]));
  }

  const Row& row_;
  const npy_intp n_;
  char* operand_[most_operands];
  npy_intp step_[most_operands];
  alignas(64) char buffer_[most_operands][buffered * most_bytes];
};

void loop(char** operands, const npy_intp* dimensions, const npy_intp* steps, void* data) {
  const auto& task = *static_cast<const Task*>(data);
  if (dimensions[0] <= 0) return;
  Run run(*task.row, operands, steps, dimensions[0]);
  run.go(task, run.together());
}

// ---- The functions ------------------------------------------------------------------------------

vectorcallfunc call_of_numpy;

bool names_argument(PyObject* names, const char* name) {
  const Py_ssize_t count = names == nullptr ? 0 : PyTuple_GET_SIZE(names);
  for (Py_ssize_t k = 0; k < count; ++k) {
    if (PyUnicode_CompareWithASCIIString(PyTuple_GET_ITEM(names, k), name) == 0) return true;
  }
  return false;
}

/// A call from Python. Only here is the array known whose elements reports are about.
PyObject* call(PyObject* self, PyObject* const* arguments, size_t count, PyObject* names) {
  if (!collecting()) return call_of_numpy(self, arguments, count, names);
  elements_done = 0;
  PyObject* result = call_of_numpy(self, arguments, count, names);
  hand_over({.arguments = arguments,
             .inputs = reinterpret_cast<PyUFuncObject*>(self)->nin,
             .in_order = !names_argument(names, "where") && !names_argument(names, "order"),
             .result = result});
  return result;
}

/// Makes one function. Its arrays live as long as the process, as NumPy wants them.
PyObject* make(const Function& function, const Row* first, int level) {
  int types = 0;
  while (first[types].call != nullptr) ++types;
  const int operands = first->operands();
  auto* loops = new (std::nothrow) PyUFuncGenericFunction[types];
  auto* tasks = new (std::nothrow) Task[types];
  auto* data = new (std::nothrow) void*[types];
  auto* letters = new (std::nothrow) char[types * operands];
  if (loops == nullptr || tasks == nullptr || data == nullptr || letters == nullptr) {
    return PyErr_NoMemory();
  }
  for (int t = 0; t < types; ++t) {
    loops[t] = loop;
    tasks[t] = {first + t, function.name, level};
    data[t] = tasks + t;
    for (int k = 0; k < operands; ++k) {
      const char letter = first[t].types[k];
      letters[t * operands + k] = letter == 'f'   ? NPY_FLOAT
                                  : letter == 'd' ? NPY_DOUBLE
                                  : letter == 'F' ? NPY_CFLOAT
                                                  : NPY_CDOUBLE;
    }
  }
  PyObject* made =
      PyUFunc_FromFuncAndData(loops, data, letters, types, first->inputs(), first->shape.results,
                              function.identity, function.name, function.documentation, 0);
  if (made == nullptr) return nullptr;
  auto* ufunc = reinterpret_cast<PyUFuncObject*>(made);
  call_of_numpy = ufunc->vectorcall;
  ufunc->vectorcall = call;
  return made;
}

// ufuncs(level) -> {name: function}, of a level or, for None, of the level of the thread's mode
PyObject* ufuncs(PyObject*, PyObject* name) {
  int level = mode_level;
  for (int k = 0; k < 3 && name != Py_None; ++k) {
    if (PyUnicode_CompareWithASCIIString(name, level_names[k]) == 0) level = k;
  }
  Ref made(PyDict_New());
  if (!made) return nullptr;
  const Row* row = rows;
  for (const Function& function : all_functions) {
    Ref one(make(function, row, level));
    if (!one || PyDict_SetItemString(made.get(), function.name, one.get()) < 0) return nullptr;
    while (row->call != nullptr) ++row;
    ++row;
  }
  return made.release();
}

// set_mode(bits) -> the mode word of this thread before
PyObject* set_mode(PyObject*, PyObject* bits) {
  const unsigned long mode = PyLong_AsUnsignedLong(bits);
  if (PyErr_Occurred()) return nullptr;
  return PyLong_FromUnsignedLong(orv_qem_kernel_SetMode(static_cast<QemMode>(mode)));
}

}  // namespace

PyMethodDef ufunc_methods[] = {
    {"ufuncs", ufuncs, METH_O, nullptr},
    {"set_mode", set_mode, METH_O, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace orv_python
