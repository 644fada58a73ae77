// SPDX-License-Identifier: MIT
// What all units of the extension module share: the headers in their order, and references.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>
#define NPY_NO_DEPRECATED_API NPY_1_21_API_VERSION
#define PY_ARRAY_UNIQUE_SYMBOL orv_array_api
#define PY_UFUNC_UNIQUE_SYMBOL orv_ufunc_api
#ifndef ORV_IMPORTS_NUMPY
#define NO_IMPORT_ARRAY
#define NO_IMPORT_UFUNC
#endif
#include <numpy/arrayobject.h>
#include <numpy/ufuncobject.h>

struct StreamState;

namespace orv_python {

/// Owns a reference; null after an error.
class Ref {
 public:
  Ref() = default;
  explicit Ref(PyObject* object) : object_(object) {}
  Ref(const Ref&) = delete;
  Ref& operator=(const Ref&) = delete;
  ~Ref() { Py_XDECREF(object_); }

  PyObject* get() const { return object_; }
  PyObject* release() {
    PyObject* object = object_;
    object_ = nullptr;
    return object;
  }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  PyObject* object_ = nullptr;
};

/// Lets other threads of Python run for its lifetime.
class WithoutLock {
 public:
  WithoutLock() : state_(PyEval_SaveThread()) {}
  ~WithoutLock() { PyEval_RestoreThread(state_); }
  WithoutLock(const WithoutLock&) = delete;
  WithoutLock& operator=(const WithoutLock&) = delete;

 private:
  PyThreadState* state_;
};

/// The functions that a unit gives to the module.
extern PyMethodDef ufunc_methods[], report_methods[], stream_methods[], task_methods[];

/// The stream of a capsule, where its next draw begins; null with an error if there is none.
StreamState* stream_of(PyObject* capsule);

bool add_stream_constants(PyObject* module);
bool add_task_constants(PyObject* module);

}  // namespace orv_python
