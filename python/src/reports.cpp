// SPDX-License-Identifier: MIT
#include "reports.hpp"

#include <immintrin.h>
#include <string.h>

#include <cmath>
#include <new>
#include <optional>
#include <vector>

namespace orv_python {
namespace {

struct Report {
  const char* name;
  int code;
  bool has_second, is_complex, gives_complex;
  double arguments[4];
  double result[2];
  const char* place;  // of the result
  npy_intp position;  // in the order of the loops
};

constexpr FinishedCall no_call = {nullptr, 0, false, nullptr};

/// Of this thread: the innermost list that takes reports, and what waits to go there.
struct Collector {
  PyObject* list = nullptr;
  size_t room = 0;
  size_t total = 0;
  std::vector<Report> waiting;
};

constexpr unsigned sticky_flags = 0x3F;
enum : unsigned { flag_invalid = 0x01, flag_divide = 0x04, flag_over = 0x08, flag_under = 0x10 };

thread_local Collector collector;
thread_local const Elements* elements;
thread_local unsigned reported_flags;

/// As NumPy has it: what gives a NaN is invalid, what gives an infinity a division by zero.
unsigned flag_of(const QemErrorContext& context) {
  switch (context.code) {
    case QEM_STATUS_DOMAIN:
    case QEM_STATUS_SINGULARITY:
      return std::isinf(context.res1) || std::isinf(context.res1_im) ? flag_divide : flag_invalid;
    case QEM_STATUS_OVERFLOW:
      return flag_over;
    case QEM_STATUS_UNDERFLOW:
      return flag_under;
    default:
      return 0;
  }
}

/// The record has the first argument only.
void read_second(int32_t index, double* parts) {
  const char* place = elements->second + index * elements->second_step;
  for (int part = 0; part <= int{elements->is_complex}; ++part) {
    if (elements->are_floats) {
      float value;
      memcpy(&value, place + part * sizeof value, sizeof value);
      parts[part] = value;
    } else {
      memcpy(parts + part, place + part * sizeof *parts, sizeof *parts);
    }
  }
}

/// The kernels' callback. The result stays as the kernel has it, and no other route is taken.
int32_t take(QemErrorContext* context) {
  constexpr int32_t dealt_with = 1;
  reported_flags |= flag_of(*context);
  if (collector.list == nullptr) return dealt_with;
  ++collector.total;
  if (collector.waiting.size() >= collector.room) return dealt_with;
  try {
    Report report = {elements->name,
                     context->code,
                     elements->second != nullptr,
                     elements->is_complex,
                     elements->gives_complex,
                     {context->arg1, context->arg1_im},
                     {context->res1, context->res1_im},
                     elements->result + context->index * elements->step,
                     elements->before + context->index};
    if (report.has_second) read_second(context->index, report.arguments + 2);
    collector.waiting.push_back(report);
  } catch (const std::bad_alloc&) {
    collector.room = 0;
  }
  return dealt_with;
}

/// Status flags of the x87 unit, which kernels use inside, are no concern of the caller.
void clear_x87_flags() {
  unsigned short status;
  asm volatile("fnstsw %0" : "=m"(status));
  if (status & sticky_flags) asm volatile("fnclex");
}

/// The index that a place has in the array taken in C order, or -1 if it is not one of its
/// elements.
npy_intp index_in(PyArrayObject* array, const char* place) {
  const char* const data = PyArray_BYTES(array);
  const int dimensions = PyArray_NDIM(array);
  const npy_intp *const shape = PyArray_DIMS(array), *const strides = PyArray_STRIDES(array);
  bool done[NPY_MAXDIMS] = {};
  npy_intp at[NPY_MAXDIMS] = {};
  npy_intp distance = place - data;
  for (int k = 0; k < dimensions; ++k) {
    if (strides[k] < 0) distance -= strides[k] * (shape[k] - 1);
  }
  for (int round = 0; round < dimensions; ++round) {  // the axis of the widest steps first
    int widest = -1;
    for (int k = 0; k < dimensions; ++k) {
      if (!done[k] && (widest < 0 || Py_ABS(strides[k]) > Py_ABS(strides[widest]))) widest = k;
    }
    done[widest] = true;
    const npy_intp step = Py_ABS(strides[widest]);
    if (shape[widest] <= 1 || step == 0) continue;
    at[widest] = distance / step;
    if (distance < 0 || at[widest] >= shape[widest]) return -1;
    distance -= at[widest] * step;
    if (strides[widest] < 0) at[widest] = shape[widest] - 1 - at[widest];
  }
  if (distance != 0) return -1;
  npy_intp index = 0;
  for (int k = 0; k < dimensions; ++k) index = index * shape[k] + at[k];
  return index;
}

/// The order in which NumPy takes the elements of a call through its loops.
class Order {
 public:
  explicit Order(const FinishedCall& call, PyArrayObject* result) {
    constexpr int most = 8;
    PyArrayObject* operands[most];
    npy_uint32 flags[most];
    int count = 0;
    for (; count < call.inputs && count < most - 1; ++count) {
      operands[count] = reinterpret_cast<PyArrayObject*>(PyArray_FROM_O(call.arguments[count]));
      if (operands[count] == nullptr) break;
    }
    if (count == call.inputs) {
      Py_INCREF(result);
      operands[count++] = result;
      for (int k = 0; k < count; ++k) flags[k] = NPY_ITER_READONLY;
      iterator_ = NpyIter_MultiNew(count, operands, NPY_ITER_MULTI_INDEX | NPY_ITER_ZEROSIZE_OK,
                                   NPY_KEEPORDER, NPY_NO_CASTING, flags, nullptr);
    }
    for (int k = 0; k < count; ++k) Py_DECREF(operands[k]);
    if (iterator_ == nullptr || PyArray_NDIM(result) != NpyIter_GetNDim(iterator_)) return;
    multi_index_ = NpyIter_GetGetMultiIndex(iterator_, nullptr);
  }
  ~Order() {
    if (iterator_ != nullptr) NpyIter_Deallocate(iterator_);
  }
  Order(const Order&) = delete;
  Order& operator=(const Order&) = delete;

  /// The index in C order of the element at a position, or -1.
  npy_intp index_at(npy_intp position, const npy_intp* shape) {
    if (multi_index_ == nullptr || position >= NpyIter_GetIterSize(iterator_)) return -1;
    if (NpyIter_GotoIterIndex(iterator_, position) != NPY_SUCCEED) return -1;
    npy_intp at[NPY_MAXDIMS], index = 0;
    multi_index_(iterator_, at);
    for (int k = 0; k < NpyIter_GetNDim(iterator_); ++k) index = index * shape[k] + at[k];
    return index;
  }

 private:
  NpyIter* iterator_ = nullptr;
  NpyIter_GetMultiIndexFunc* multi_index_ = nullptr;
};

/// Finds the elements that reports are about in a call's first result.
class Places {
 public:
  explicit Places(const FinishedCall& call) : call_(call), result_(call.result) {
    if (result_ != nullptr && PyTuple_Check(result_)) result_ = PyTuple_GetItem(result_, 0);
  }

  /// None where it can't be told.
  PyObject* index_of(const Report& report) {
    npy_intp index = -1;
    if (result_ != nullptr && PyArray_Check(result_)) {
      auto* array = reinterpret_cast<PyArrayObject*>(result_);
      index = index_in(array, report.place);
      if (index < 0 && call_.in_order) {  // it went through a buffer
        if (!order_) order_.emplace(call_, array);
        index = order_->index_at(report.position, PyArray_DIMS(array));
      }
    } else if (result_ != nullptr && PyArray_CheckScalar(result_)) {
      index = 0;
    }
    if (index < 0) Py_RETURN_NONE;
    return PyLong_FromSsize_t(index);
  }

 private:
  const FinishedCall& call_;
  PyObject* result_;
  std::optional<Order> order_;
};

PyObject* number(const double* parts, bool is_complex) {
  return is_complex ? PyComplex_FromDoubles(parts[0], parts[1]) : PyFloat_FromDouble(parts[0]);
}

bool append(const Report& report, Places& places) {
  Ref first(number(report.arguments, report.is_complex));
  Ref second(report.has_second ? number(report.arguments + 2, report.is_complex) : nullptr);
  if (!first || (report.has_second && !second)) return false;
  Ref arguments(report.has_second ? PyTuple_Pack(2, first.get(), second.get())
                                  : PyTuple_Pack(1, first.get()));
  if (!arguments) return false;
  Ref tuple(Py_BuildValue("(siNNN)", report.name, report.code, places.index_of(report),
                          arguments.release(), number(report.result, report.gives_complex)));
  return tuple && PyList_Append(collector.list, tuple.get()) == 0;
}

void give(const FinishedCall& call) {
  Places places(call);
  for (const Report& report : collector.waiting) {
    if (!append(report, places)) return;
  }
}

// push_reports(list, room) -> what the thread had before, for pop_reports
PyObject* push_reports(PyObject*, PyObject* arguments) {
  PyObject* list;
  Py_ssize_t room;
  if (!PyArg_ParseTuple(arguments, "O!n", &PyList_Type, &list, &room)) return nullptr;
  hand_over(no_call);
  Ref before(Py_BuildValue("(Onn)", collector.list != nullptr ? collector.list : Py_None,
                           static_cast<Py_ssize_t>(collector.room),
                           static_cast<Py_ssize_t>(collector.total)));
  if (!before) return nullptr;
  Py_INCREF(list);
  Py_XDECREF(collector.list);
  collector.list = list;
  collector.room = static_cast<size_t>(room);
  collector.total = 0;
  return before.release();
}

// pop_reports(before) -> how many reports there were
PyObject* pop_reports(PyObject*, PyObject* before) {
  PyObject* list;
  Py_ssize_t room, total;
  if (!PyArg_ParseTuple(before, "Onn", &list, &room, &total)) return nullptr;
  hand_over(no_call);
  Ref count(PyLong_FromSize_t(collector.total));
  Py_XDECREF(collector.list);
  collector.list = list == Py_None ? nullptr : list;
  Py_XINCREF(collector.list);
  collector.room = static_cast<size_t>(room);
  collector.total = static_cast<size_t>(total);
  return count.release();
}

}  // namespace

Reporting::Reporting(bool keeps_hardware_flags)
    : keeps_hardware_flags_(keeps_hardware_flags),
      saved_csr_(_mm_getcsr()),
      saved_mode_(orv_qem_kernel_GetMode()),
      saved_callback_(orv_qem_kernel_GetErrorCallBack()) {
  reported_flags = 0;
  orv_qem_kernel_SetErrorCallBack(take);
  orv_qem_kernel_SetMode(QEM_ERRMODE_CALLBACK);
}

Reporting::~Reporting() {
  orv_qem_kernel_SetErrorCallBack(saved_callback_);
  orv_qem_kernel_SetMode(saved_mode_);
  clear_x87_flags();
  const unsigned hardware = keeps_hardware_flags_ ? _mm_getcsr() & sticky_flags : 0;
  _mm_setcsr(saved_csr_ | reported_flags | hardware);
}

void Reporting::about(const Elements& of_call) { elements = &of_call; }

void Reporting::add(int code, int index, double argument, double result) const {
  QemErrorContext context = {};
  context.code = code;
  context.index = index;
  context.arg1 = argument;
  context.res1 = result;
  take(&context);
}

thread_local npy_intp elements_done;

bool collecting() { return collector.list != nullptr; }

void hand_over(const FinishedCall& call) {
  if (collector.waiting.empty()) return;
  PyObject *type, *value, *traceback;
  PyErr_Fetch(&type, &value, &traceback);
  give(call);
  PyErr_Clear();
  collector.room -= collector.waiting.size();
  collector.waiting.clear();
  PyErr_Restore(type, value, traceback);
}

PyMethodDef report_methods[] = {
    {"push_reports", push_reports, METH_VARARGS, nullptr},
    {"pop_reports", pop_reports, METH_O, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace orv_python
