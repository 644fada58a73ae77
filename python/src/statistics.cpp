// SPDX-License-Identifier: MIT
// Summary statistics: one function that makes a task of arrays and runs one of the library's
// entries. The package's Python knows what each entry needs and how large it is.
#include <orv/ss.h>
#include <orv/threads.h>
#include <string.h>

#include <utility>

#include "python.hpp"

namespace orv_python {
namespace {

using Compute = int32_t (*)(SSTask*, uint64_t, uint64_t, const SSThreadServices*);

/// An entry for doubles and its twin for floats.
struct Entry {
  const char* name;
  Compute doubles, floats;
};
#define ORV_ENTRY(name) \
  { #name, _zokdSS##name, _zoksSS##name }
constexpr Entry entries[] = {
    ORV_ENTRY(Basic),
    ORV_ENTRY(Minmax),
    ORV_ENTRY(Quantiles),
    ORV_ENTRY(WMedian),
    ORV_ENTRY(PooledCovariance),
    ORV_ENTRY(PartialCovariance),
    ORV_ENTRY(RobustCovariance),
    ORV_ENTRY(OutliersDetection),
    ORV_ENTRY(MissingValues),
};

const Entry* find_entry(const char* name) {
  for (const Entry& entry : entries) {
    if (strcmp(entry.name, name) == 0) return &entry;
  }
  PyErr_Format(PyExc_ValueError, "no entry %s", name);
  return nullptr;
}

/// A task of arrays of one type, and of int64.
class Task {
 public:
  explicit Task(bool doubles) : doubles_(doubles) {}
  ~Task() { __zokSSDeleteTask(&task_); }
  Task(const Task&) = delete;
  Task& operator=(const Task&) = delete;

  int32_t make(const int64_t* p, const int64_t* n, const int64_t* layout, const void* x,
               const void* weights) {
    constexpr int32_t int_is_64 = 1;
    return doubles_ ? __zokdSSNewTask(&task_, p, n, layout, static_cast<const double*>(x),
                                      static_cast<const double*>(weights), nullptr, int_is_64)
                    : __zoksSSNewTask(&task_, p, n, layout, static_cast<const float*>(x),
                                      static_cast<const float*>(weights), nullptr, int_is_64);
  }
  int32_t edit(int64_t parameter, PyArrayObject* array) {
    void* data = PyArray_DATA(array);
    if (PyArray_TYPE(array) == NPY_INT64) return __zokiSSEditTask(task_, parameter, data);
    return doubles_ ? __zokdSSEditTask(task_, parameter, static_cast<double*>(data))
                    : __zoksSSEditTask(task_, parameter, static_cast<float*>(data));
  }
  int32_t run(const Entry& entry, uint64_t estimates, uint64_t method) {
    const WithoutLock unlocked;
    return (doubles_ ? entry.doubles : entry.floats)(task_, estimates, method,
                                                     orv_threads_reproducible());
  }

  int32_t impute(StreamState* stream) {
    const WithoutLock unlocked;
    return doubles_ ? _zokdSSMissingValuesFrom(task_, stream)
                    : _zoksSSMissingValuesFrom(task_, stream);
  }

 private:
  const bool doubles_;
  SSTask* task_ = nullptr;
};

// compute(entry, estimates, method, x, shape, weights, parameters, stream) -> status
//
// x is a dense array of doubles or floats, shape an array of int64 with p, n and the layout,
// weights an array of x's type or None, parameters a dict from numbers to arrays of x's type or of
// int64.
PyObject* compute(PyObject*, PyObject* arguments) {
  const char* name;
  unsigned long long estimates, method;
  PyArrayObject *x, *shape;
  PyObject *weights, *parameters, *stream = Py_None;
  if (!PyArg_ParseTuple(arguments, "sKKO!O!OO!|O", &name, &estimates, &method, &PyArray_Type, &x,
                        &PyArray_Type, &shape, &weights, &PyDict_Type, &parameters, &stream)) {
    return nullptr;
  }
  const Entry* entry = find_entry(name);
  if (entry == nullptr) return nullptr;
  const auto* sizes = static_cast<const int64_t*>(PyArray_DATA(shape));
  const void* w =
      weights == Py_None ? nullptr : PyArray_DATA(reinterpret_cast<PyArrayObject*>(weights));
  Task task(PyArray_TYPE(x) == NPY_DOUBLE);
  int32_t status = task.make(sizes, sizes + 1, sizes + 2, PyArray_DATA(x), w);
  PyObject *key, *value;
  for (Py_ssize_t at = 0; status == SS_OK && PyDict_Next(parameters, &at, &key, &value);) {
    const long parameter = PyLong_AsLong(key);
    if (PyErr_Occurred()) return nullptr;
    status = task.edit(parameter, reinterpret_cast<PyArrayObject*>(value));
  }
  if (status == SS_OK && stream != Py_None) {
    StreamState* const numbers = stream_of(stream);
    if (numbers == nullptr) return nullptr;
    status = task.impute(numbers);
  } else if (status == SS_OK) {
    status = task.run(*entry, estimates, method);
  }
  return PyLong_FromLong(status);
}

// set_num_threads(count); 0 for what the environment tells
PyObject* set_num_threads(PyObject*, PyObject* count) {
  const long threads = PyLong_AsLong(count);
  if (PyErr_Occurred()) return nullptr;
  orv_threads_set_count(static_cast<int32_t>(threads));
  Py_RETURN_NONE;
}

}  // namespace

PyMethodDef task_methods[] = {
    {"compute", compute, METH_VARARGS, nullptr},
    {"set_num_threads", set_num_threads, METH_O, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

bool add_task_constants(PyObject* module) {
#define ORV_CONSTANT(name) \
  { #name, name }
  constexpr std::pair<const char*, int> constants[] = {
      ORV_CONSTANT(SS_ROWS),
      ORV_CONSTANT(SS_COLUMNS),
      ORV_CONSTANT(SS_EST_MEAN),
      ORV_CONSTANT(SS_EST_RAW2),
      ORV_CONSTANT(SS_EST_RAW3),
      ORV_CONSTANT(SS_EST_RAW4),
      ORV_CONSTANT(SS_EST_MIN),
      ORV_CONSTANT(SS_EST_MAX),
      ORV_CONSTANT(SS_EST_COV),
      ORV_CONSTANT(SS_EST_POOLED),
      ORV_CONSTANT(SS_EST_GROUP),
      ORV_CONSTANT(SS_EST_QUANTILES),
      ORV_CONSTANT(SS_EST_PARTIAL_COV),
      ORV_CONSTANT(SS_METHOD_FAST),
      ORV_CONSTANT(SS_METHOD_ONE_PASS),
      ORV_CONSTANT(SS_PARAM_MEAN),
      ORV_CONSTANT(SS_PARAM_RAW_MOMENT_2),
      ORV_CONSTANT(SS_PARAM_RAW_MOMENT_3),
      ORV_CONSTANT(SS_PARAM_RAW_MOMENT_4),
      ORV_CONSTANT(SS_PARAM_MINIMUM),
      ORV_CONSTANT(SS_PARAM_MAXIMUM),
      ORV_CONSTANT(SS_PARAM_COV),
      ORV_CONSTANT(SS_PARAM_COV_STORAGE),
      ORV_CONSTANT(SS_PARAM_ACCUMULATED_WEIGHTS),
      ORV_CONSTANT(SS_PARAM_QUANT_ORDER_COUNT),
      ORV_CONSTANT(SS_PARAM_QUANT_ORDERS),
      ORV_CONSTANT(SS_PARAM_QUANTILES),
      ORV_CONSTANT(SS_PARAM_GROUP_INDICES),
      ORV_CONSTANT(SS_PARAM_POOLED_MEAN),
      ORV_CONSTANT(SS_PARAM_POOLED_COV),
      ORV_CONSTANT(SS_PARAM_POOLED_COV_STORAGE),
      ORV_CONSTANT(SS_PARAM_GROUP_OUTPUT_INDICES),
      ORV_CONSTANT(SS_PARAM_GROUP_MEANS),
      ORV_CONSTANT(SS_PARAM_GROUP_COV),
      ORV_CONSTANT(SS_PARAM_GROUP_COV_STORAGE),
      ORV_CONSTANT(SS_PARAM_PARTIAL_INDEX_ARRAY),
      ORV_CONSTANT(SS_PARAM_PARTIAL_COV),
      ORV_CONSTANT(SS_PARAM_PARTIAL_COV_STORAGE),
      ORV_CONSTANT(SS_METHOD_TBS),
      ORV_CONSTANT(SS_METHOD_BACON),
      ORV_CONSTANT(SS_PARAM_ROBUST_PARAM_COUNT),
      ORV_CONSTANT(SS_PARAM_ROBUST_PARAMS),
      ORV_CONSTANT(SS_PARAM_ROBUST_MEAN),
      ORV_CONSTANT(SS_PARAM_ROBUST_COV),
      ORV_CONSTANT(SS_PARAM_ROBUST_COV_STORAGE),
      ORV_CONSTANT(SS_PARAM_OUTLIER_PARAM_COUNT),
      ORV_CONSTANT(SS_PARAM_OUTLIER_PARAMS),
      ORV_CONSTANT(SS_PARAM_OUTLIER_WEIGHTS),
      ORV_CONSTANT(SS_METHOD_MULTIPLE_IMPUTATION),
      ORV_CONSTANT(SS_PARAM_MISSING_PARAM_COUNT),
      ORV_CONSTANT(SS_PARAM_MISSING_PARAMS),
      ORV_CONSTANT(SS_PARAM_SIMULATED_COUNT),
      ORV_CONSTANT(SS_PARAM_SIMULATED_VALUES),
      ORV_CONSTANT(SS_NOT_CONVERGED),
      ORV_CONSTANT(SS_NO_POSITIVE_EIGENVALUE),
      ORV_CONSTANT(SS_EIGENVALUES_FAILED),
      ORV_CONSTANT(SS_NOT_POSITIVE_DEFINITE),
      ORV_CONSTANT(SS_SINGULAR),
      ORV_CONSTANT(SS_OK),
      ORV_CONSTANT(SS_NO_MEMORY),
  };
#undef ORV_CONSTANT
  for (const auto& [name, value] : constants) {
    if (PyModule_AddIntConstant(module, name, value) < 0) return false;
  }
  return true;
}

}  // namespace orv_python
