#include "python.hpp"
namespace orv_python {
PyMethodDef stream_methods[] = {{nullptr, nullptr, 0, nullptr}};
bool add_stream_constants(PyObject*) { return true; }
}  // namespace orv_python
