// SPDX-License-Identifier: MIT
// The extension module orv._core. What it offers is for the package's own Python modules, which
// check what people give them; nothing here does.
#define ORV_IMPORTS_NUMPY
#include "python.hpp"

#include <orv/version.h>

#include <initializer_list>

namespace orv_python {
namespace {

PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, "orv._core", nullptr, -1, nullptr, nullptr, nullptr, nullptr, nullptr};

PyObject* make_module() {
  import_array();
  import_umath();
  Ref module(PyModule_Create(&definition));
  if (!module) return nullptr;
  for (PyMethodDef* methods : {ufunc_methods, report_methods, stream_methods, task_methods}) {
    if (PyModule_AddFunctions(module.get(), methods) < 0) return nullptr;
  }
  if (PyModule_AddStringConstant(module.get(), "version", orv_version()) < 0 ||
      !add_stream_constants(module.get()) || !add_task_constants(module.get())) {
    return nullptr;
  }
  return module.release();
}

}  // namespace
}  // namespace orv_python

PyMODINIT_FUNC PyInit__core() { return orv_python::make_module(); }
