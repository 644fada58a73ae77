// SPDX-License-Identifier: MIT
// Random streams: as they are, as sources of distributions, and as what NumPy's generators draw
// from. The package's Python holds the lock of a stream around each of these calls.
#include <fcntl.h>
#include <numpy/random/bitgen.h>
#include <orv/zok.h>
#include <stdio.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

#include "python.hpp"

namespace orv_python {
namespace {

constexpr const char* capsule_name = "orv.stream";
constexpr npy_intp longest = 1 << 30;  // elements of one call of the library

// ---- Words for NumPy's generators ---------------------------------------------------------------

/// A stream, and words of 32 bits taken from it ahead. `settle` puts the stream to where it would
/// be had they been taken one by one: then it can be drawn from directly, copied and written.
class Source {
 public:
  explicit Source(StreamState* stream) : stream_(stream), brng_(stream->Brng) {
    BrngProperties properties;
    __zokGetBrngProperties(stream->Brng, &properties);
    state_bytes_ = static_cast<size_t>(properties.StateSize) - sizeof *stream;
    // Of generators of fewer bits two elements make a word.
    halves_ = properties.NumBits < 32 && properties.WordSize == 4;
  }
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  ~Source() { __zokDeleteStream(&stream_); }

  StreamState* settle() {
    if (next_ == taken_) {
      next_ = taken_ = 0;
      return stream_;
    }
    restore();
    const int elements = next_ << int{halves_};
    draw_elements(elements);
    next_ = taken_ = 0;
    return stream_;
  }

  /// Never changes: to be asked without the lock.
  int32_t brng() const { return brng_; }

  void replace(StreamState* stream) {
    __zokDeleteStream(&stream_);
    stream_ = stream;
    next_ = taken_ = 0;
  }

  uint32_t word() {
    if (next_ == taken_) take_ahead();
    return words_[next_++];
  }

 private:
  static constexpr int ahead = 512;

  void draw_elements(int n) { _zokdRngUniform(0, stream_, n, elements_, 0, 1); }

  void take_ahead() {
    saved_.resize(state_bytes_);
    memcpy(saved_.data(), stream_ + 1, state_bytes_);
    draw_elements(ahead << int{halves_});
    for (int i = 0; i < ahead; ++i) {
      words_[i] = halves_ ? bits(elements_[2 * i], 16) << 16 | bits(elements_[2 * i + 1], 16)
                          : bits(elements_[i], 32);
    }
    next_ = 0;
    taken_ = ahead;
  }
  void restore() { memcpy(stream_ + 1, saved_.data(), state_bytes_); }

  /// The leading bits of a fraction; a uniform number may be rounded to 1.
  static uint32_t bits(double fraction, int count) {
    const double all = static_cast<double>(uint64_t{1} << count);
    return static_cast<uint32_t>(std::min(fraction * all, all - 1));
  }

  StreamState* stream_;
  const int32_t brng_;
  size_t state_bytes_;
  bool halves_;
  int next_ = 0, taken_ = 0;
  std::vector<char> saved_;
  double elements_[2 * ahead];
  uint32_t words_[ahead];
};

uint32_t next_uint32(void* state) { return static_cast<Source*>(state)->word(); }
uint64_t next_uint64(void* state) {
  const uint64_t high = next_uint32(state);
  return high << 32 | next_uint32(state);
}
uint64_t next_raw(void* state) { return next_uint32(state); }
double next_double(void* state) {
  const uint32_t high = next_uint32(state) >> 5, low = next_uint32(state) >> 6;
  return (high * 0x1p26 + low) * 0x1p-53;
}

// ---- Capsules -----------------------------------------------------------------------------------

Source* source_of(PyObject* capsule) {
  return static_cast<Source*>(PyCapsule_GetPointer(capsule, capsule_name));
}
void delete_source(PyObject* capsule) { delete source_of(capsule); }

/// The caller's stream becomes the capsule's; if there is none, `status` is returned as a number.
PyObject* wrap(StreamState* stream, int32_t status) {
  if (status < 0) {
    __zokDeleteStream(&stream);
    return PyLong_FromLong(status);
  }
  auto* source = new (std::nothrow) Source(stream);
  if (source == nullptr) {
    __zokDeleteStream(&stream);
    return PyErr_NoMemory();
  }
  PyObject* capsule = PyCapsule_New(source, capsule_name, delete_source);
  if (capsule == nullptr) delete source;
  return capsule;
}

// stream_new(brng, words) -> stream or status; words is an array of uint32
PyObject* stream_new(PyObject*, PyObject* arguments) {
  int brng;
  PyArrayObject* words;
  if (!PyArg_ParseTuple(arguments, "iO!", &brng, &PyArray_Type, &words)) return nullptr;
  StreamState* stream = nullptr;
  const int32_t status = __zokNewStreamEx(&stream, brng, static_cast<int32_t>(PyArray_SIZE(words)),
                                          static_cast<const uint32_t*>(PyArray_DATA(words)));
  return wrap(stream, status);
}

// stream_copy(stream) -> stream or status
PyObject* stream_copy(PyObject*, PyObject* capsule) {
  Source* source = source_of(capsule);
  if (source == nullptr) return nullptr;
  StreamState* copy = nullptr;
  const int32_t status = __zokCopyStream(&copy, source->settle());
  return wrap(copy, status);
}

// stream_brng(stream) -> identifier
PyObject* stream_brng(PyObject*, PyObject* capsule) {
  Source* source = source_of(capsule);
  if (source == nullptr) return nullptr;
  return PyLong_FromLong(source->brng());
}

// stream_skip(stream, count) -> status
PyObject* stream_skip(PyObject*, PyObject* arguments) {
  PyObject* capsule;
  long long count;
  if (!PyArg_ParseTuple(arguments, "OL", &capsule, &count)) return nullptr;
  Source* source = source_of(capsule);
  if (source == nullptr) return nullptr;
  return PyLong_FromLong(__zokSkipAheadStream(source->settle(), count));
}

// stream_leapfrog(stream, k, streams) -> status
PyObject* stream_leapfrog(PyObject*, PyObject* arguments) {
  PyObject* capsule;
  int k, streams;
  if (!PyArg_ParseTuple(arguments, "Oii", &capsule, &k, &streams)) return nullptr;
  Source* source = source_of(capsule);
  if (source == nullptr) return nullptr;
  return PyLong_FromLong(__zokLeapfrogStream(source->settle(), k, streams));
}

// stream_replace(stream, other): the stream goes on as a copy of the other
PyObject* stream_replace(PyObject*, PyObject* arguments) {
  PyObject *capsule, *other;
  if (!PyArg_ParseTuple(arguments, "OO", &capsule, &other)) return nullptr;
  Source *source = source_of(capsule), *from = source_of(other);
  if (source == nullptr || from == nullptr) return nullptr;
  StreamState* copy = nullptr;
  const int32_t status = __zokCopyStream(&copy, from->settle());
  if (status == RNG_OK) source->replace(copy);
  return PyLong_FromLong(status);
}

/// A file in memory, which the library's functions can open by name.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("orv", MFD_CLOEXEC)) {
    snprintf(name_, sizeof name_, "/proc/self/fd/%d", descriptor_);
  }
  ~MemoryFile() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  const char* name() const { return name_; }
  bool put(const char* bytes, size_t size) const {
    return descriptor_ >= 0 && write(descriptor_, bytes, size) == static_cast<ssize_t>(size);
  }
  PyObject* bytes() const {
    const off_t size = lseek(descriptor_, 0, SEEK_END);
    if (size < 0) return PyErr_SetFromErrno(PyExc_OSError);
    Ref bytes(PyBytes_FromStringAndSize(nullptr, size));
    if (!bytes) return nullptr;
    if (pread(descriptor_, PyBytes_AS_STRING(bytes.get()), static_cast<size_t>(size), 0) != size) {
      return PyErr_SetFromErrno(PyExc_OSError);
    }
    return bytes.release();
  }

 private:
  int descriptor_;
  char name_[40];
};

// stream_save(stream) -> bytes as a file has them, or status
PyObject* stream_save(PyObject*, PyObject* capsule) {
  Source* source = source_of(capsule);
  if (source == nullptr) return nullptr;
  const MemoryFile file;
  const int32_t status = __zokSaveStreamF(source->settle(), file.name(), -1);
  return status < 0 ? PyLong_FromLong(status) : file.bytes();
}

// stream_load(bytes) -> stream or status
PyObject* stream_load(PyObject*, PyObject* object) {
  char* bytes;
  Py_ssize_t size;
  if (PyBytes_AsStringAndSize(object, &bytes, &size) < 0) return nullptr;
  const MemoryFile file;
  if (!file.put(bytes, static_cast<size_t>(size))) return PyErr_SetFromErrno(PyExc_OSError);
  StreamState* stream = nullptr;
  const int32_t status = __zokLoadStreamF(&stream, file.name(), -1);
  return wrap(stream, status);
}

// connect(stream, capsule): NumPy's generators that have the capsule draw from the stream
PyObject* connect(PyObject*, PyObject* arguments) {
  PyObject *capsule, *numpy_capsule;
  if (!PyArg_ParseTuple(arguments, "OO", &capsule, &numpy_capsule)) return nullptr;
  Source* source = source_of(capsule);
  auto* bitgen = static_cast<bitgen_t*>(PyCapsule_GetPointer(numpy_capsule, "BitGenerator"));
  if (source == nullptr || bitgen == nullptr) return nullptr;
  *bitgen = {source, next_uint64, next_uint32, next_double, next_raw};
  Py_RETURN_NONE;
}

// generator(brng) -> (bytes of an element, seeds), or None if there is none
PyObject* generator(PyObject*, PyObject* identifier) {
  const long brng = PyLong_AsLong(identifier);
  if (PyErr_Occurred()) return nullptr;
  BrngProperties properties;
  if (brng < 0 || __zokGetBrngProperties(static_cast<int32_t>(brng), &properties) < 0) {
    Py_RETURN_NONE;
  }
  return Py_BuildValue("(ii)", properties.WordSize, properties.NumSeeds);
}

// ---- Distributions ------------------------------------------------------------------------------

/// Draws n numbers in as many calls as it takes; parameters come as doubles.
using Draw = int32_t (*)(StreamState* stream, int32_t method, npy_intp n, void* r,
                         const double* parameters);

template <class T, class... P, size_t... k>
int32_t draw_by(int32_t (*entry)(int32_t, StreamState*, int32_t, T*, P...), StreamState* stream,
                int32_t method, npy_intp n, T* r, const double* p, std::index_sequence<k...>) {
  int32_t status = RNG_OK;
  for (npy_intp i = 0; i < n && status >= 0; i += longest) {
    const auto count = static_cast<int32_t>(std::min(longest, n - i));
    status = entry(method, stream, count, r + i, static_cast<P>(p[k])...);
  }
  return status;
}

template <class Entry>
struct Parameters;
template <class T, class... P>
struct Parameters<int32_t (*)(int32_t, StreamState*, int32_t, T*, P...)> {
  using Number = T;
  static constexpr int count = sizeof...(P);
};

template <auto entry>
int32_t draw(StreamState* stream, int32_t method, npy_intp n, void* r, const double* p) {
  using Of = Parameters<decltype(entry)>;
  return draw_by(entry, stream, method, n, static_cast<typename Of::Number*>(r), p,
                 std::make_index_sequence<Of::count>{});
}

struct Law {
  const char* name;
  int number;  // of NumPy's types
  int parameters;
  Draw draw;
};
#define ORV_LAW(name, entry, number) \
  { #name, number, Parameters < decltype(&entry)> ::count, draw < entry> }
#define ORV_CONTINUOUS(name, entry) \
  ORV_LAW(name, _zokd##entry, NPY_DOUBLE), ORV_LAW(name, _zoks##entry, NPY_FLOAT)
constexpr Law laws[] = {
    ORV_CONTINUOUS(uniform, RngUniform),
    ORV_CONTINUOUS(exponential, RngExponential),
    ORV_CONTINUOUS(laplace, RngLaplace),
    ORV_CONTINUOUS(weibull, RngWeibull),
    ORV_CONTINUOUS(cauchy, RngCauchy),
    ORV_CONTINUOUS(rayleigh, RngRayleigh),
    ORV_CONTINUOUS(lognormal, RngLognormal),
    ORV_CONTINUOUS(gumbel, RngGumbel),
    ORV_CONTINUOUS(normal, RngGaussian),
    ORV_CONTINUOUS(gamma, RngGamma),
    ORV_CONTINUOUS(beta, RngBeta),
    ORV_LAW(integers, _zokiRngUniform, NPY_INT32),
    ORV_LAW(bernoulli, _zokiRngBernoulli, NPY_INT32),
    ORV_LAW(geometric, _zokiRngGeometric, NPY_INT32),
    ORV_LAW(binomial, _zokiRngBinomial, NPY_INT32),
    ORV_LAW(poisson, _zokiRngPoisson, NPY_INT32),
    ORV_LAW(hypergeometric, _zokiRngHypergeometric, NPY_INT32),
    ORV_LAW(negative_binomial, _zokiRngNegbinomial, NPY_INT32),
    ORV_LAW(bits, _zokiRngUniformBits, NPY_UINT32),
};

const Law* find_law(const char* name, int number) {
  for (const Law& law : laws) {
    if (law.number == number && strcmp(law.name, name) == 0) return &law;
  }
  return nullptr;
}

// draw(stream, law, method, out, parameters, n) -> status; out is a dense array of n elements
PyObject* draw_law(PyObject*, PyObject* arguments) {
  PyObject *capsule, *parameters;
  const char* name;
  int method;
  PyArrayObject* out;
  Py_ssize_t n;
  if (!PyArg_ParseTuple(arguments, "OsiO!O!n", &capsule, &name, &method, &PyArray_Type, &out,
                        &PyTuple_Type, &parameters, &n)) {
    return nullptr;
  }
  Source* source = source_of(capsule);
  if (source == nullptr) return nullptr;
  const int type = PyArray_TYPE(out) == NPY_INT ? NPY_INT32 : PyArray_TYPE(out);
  const Law* law = find_law(name, type);
  if (law == nullptr || PyTuple_GET_SIZE(parameters) != law->parameters) {
    return PyErr_Format(PyExc_TypeError, "no law %s of this type and %zd parameters", name,
                        PyTuple_GET_SIZE(parameters));
  }
  double p[4];
  for (int k = 0; k < law->parameters; ++k) {
    p[k] = PyFloat_AsDouble(PyTuple_GET_ITEM(parameters, k));
  }
  if (PyErr_Occurred()) return nullptr;
  int32_t status;
  {
    const WithoutLock unlocked;
    status = law->draw(source->settle(), method, n, PyArray_DATA(out), p);
  }
  return PyLong_FromLong(status);
}

// draw_poisson_means(stream, out, means) -> status; dense arrays of int32 and float64, of one size
PyObject* draw_poisson_means(PyObject*, PyObject* arguments) {
  PyObject* capsule;
  PyArrayObject *out, *means;
  if (!PyArg_ParseTuple(arguments, "OO!O!", &capsule, &PyArray_Type, &out, &PyArray_Type, &means)) {
    return nullptr;
  }
  Source* source = source_of(capsule);
  if (source == nullptr) return nullptr;
  auto* r = static_cast<int32_t*>(PyArray_DATA(out));
  const auto* lambda = static_cast<const double*>(PyArray_DATA(means));
  const npy_intp n = PyArray_SIZE(out);
  int32_t status = RNG_OK;
  {
    const WithoutLock unlocked;
    StreamState* stream = source->settle();
    for (npy_intp i = 0; i < n && status >= 0; i += longest) {
      const auto count = static_cast<int32_t>(std::min(longest, n - i));
      status = _zokiRngPoissonV(0, stream, count, r + i, lambda + i);
    }
  }
  return PyLong_FromLong(status);
}

template <class T>
int32_t draw_vectors(int32_t (*entry)(int32_t, StreamState*, int32_t, T*, int32_t, int32_t,
                                      const T*, const T*),
                     StreamState* stream, int32_t method, PyArrayObject* out, npy_intp dim,
                     PyArrayObject* mean, PyArrayObject* factor) {
  const npy_intp n = PyArray_SIZE(out) / dim;
  auto* r = static_cast<T*>(PyArray_DATA(out));
  int32_t status = RNG_OK;
  for (npy_intp i = 0; i < n && status >= 0; i += longest) {
    status = entry(method, stream, static_cast<int32_t>(std::min(longest, n - i)), r + i * dim,
                   static_cast<int32_t>(dim), RNG_STORAGE_FULL,
                   static_cast<const T*>(PyArray_DATA(mean)),
                   static_cast<const T*>(PyArray_DATA(factor)));
  }
  return status;
}

// draw_normal_vectors(stream, method, out, mean, factor) -> status; dense arrays of one type
PyObject* draw_normal_vectors(PyObject*, PyObject* arguments) {
  PyObject* capsule;
  int method;
  PyArrayObject *out, *mean, *factor;
  if (!PyArg_ParseTuple(arguments, "OiO!O!O!", &capsule, &method, &PyArray_Type, &out,
                        &PyArray_Type, &mean, &PyArray_Type, &factor)) {
    return nullptr;
  }
  Source* source = source_of(capsule);
  if (source == nullptr) return nullptr;
  const npy_intp dim = PyArray_SIZE(mean);
  const bool doubles = PyArray_TYPE(out) == NPY_DOUBLE;
  int32_t status;
  {
    const WithoutLock unlocked;
    StreamState* stream = source->settle();
    status = doubles ? draw_vectors(_zokdRngGaussianMV, stream, method, out, dim, mean, factor)
                     : draw_vectors(_zoksRngGaussianMV, stream, method, out, dim, mean, factor);
  }
  return PyLong_FromLong(status);
}

}  // namespace

StreamState* stream_of(PyObject* capsule) {
  Source* source = source_of(capsule);
  return source == nullptr ? nullptr : source->settle();
}

PyMethodDef stream_methods[] = {
    {"stream_new", stream_new, METH_VARARGS, nullptr},
    {"stream_copy", stream_copy, METH_O, nullptr},
    {"stream_brng", stream_brng, METH_O, nullptr},
    {"stream_skip", stream_skip, METH_VARARGS, nullptr},
    {"stream_leapfrog", stream_leapfrog, METH_VARARGS, nullptr},
    {"stream_replace", stream_replace, METH_VARARGS, nullptr},
    {"stream_save", stream_save, METH_O, nullptr},
    {"stream_load", stream_load, METH_O, nullptr},
    {"connect", connect, METH_VARARGS, nullptr},
    {"generator", generator, METH_O, nullptr},
    {"draw", draw_law, METH_VARARGS, nullptr},
    {"draw_poisson_means", draw_poisson_means, METH_VARARGS, nullptr},
    {"draw_normal_vectors", draw_normal_vectors, METH_VARARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

bool add_stream_constants(PyObject* module) {
  constexpr std::pair<const char*, int> constants[] = {
      {"BRNG_MCG31M1", BRNG_MCG31M1},
      {"BRNG_MCG59", BRNG_MCG59},
      {"BRNG_MRG32K3A", BRNG_MRG32K3A},
      {"BRNG_R250", BRNG_R250},
      {"BRNG_WH", BRNG_WH},
      {"BRNG_MT19937", BRNG_MT19937},
      {"BRNG_MT2203", BRNG_MT2203},
      {"BRNG_SFMT19937", BRNG_SFMT19937},
      {"BRNG_SOBOL", BRNG_SOBOL},
      {"BRNG_NIEDERR", BRNG_NIEDERR},
      {"RNG_ACCURATE", RNG_ACCURATE},
      {"RNG_LEAPFROG_UNSUPPORTED", RNG_LEAPFROG_UNSUPPORTED},
      {"RNG_SKIPAHEAD_UNSUPPORTED", RNG_SKIPAHEAD_UNSUPPORTED},
      {"RNG_QRNG_EXHAUSTED", RNG_QRNG_EXHAUSTED},
      {"RNG_NO_MEMORY", RNG_NO_MEMORY},
  };
  for (const auto& [name, value] : constants) {
    if (PyModule_AddIntConstant(module, name, value) < 0) return false;
  }
  return true;
}

}  // namespace orv_python
