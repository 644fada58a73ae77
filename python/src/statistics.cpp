#include "python.hpp"
namespace orv_python {
PyMethodDef task_methods[] = {{nullptr, nullptr, 0, nullptr}};
bool add_task_constants(PyObject*) { return true; }
}  // namespace orv_python
