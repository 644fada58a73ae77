// SPDX-License-Identifier: MIT
// What happens to a reported element: status, record, callback, standard routes, write-back.
#include <stddef.h>
#include <string.h>

#include "../mode/thread_cells.hpp"
#include "errors.hpp"
#include "standard_handlers.hpp"

using namespace orv;

namespace {

/// An element as the record holds it.
struct Wide {
  double re, im;
};

Wide widened(float x) { return {x, 0}; }
Wide widened(double x) { return {x, 0}; }
Wide widened(const QemComplexFloat& x) { return {x.re, x.im}; }
Wide widened(const QemComplexDouble& x) { return {x.re, x.im}; }

void narrow(Wide from, float& x) { x = static_cast<float>(from.re); }
void narrow(Wide from, double& x) { x = from.re; }
void narrow(Wide from, QemComplexFloat& x) {
  x = {static_cast<float>(from.re), static_cast<float>(from.im)};
}
void narrow(Wide from, QemComplexDouble& x) { x = {from.re, from.im}; }

// Vectors have any alignment.
template <class Element>
Wide read(const Element* p) {
  Element x;
  memcpy(&x, p, sizeof x);
  return widened(x);
}
template <class Element>
void write(Element* p, Wide value) {
  Element x;
  narrow(value, x);
  memcpy(p, &x, sizeof x);
}

constexpr int affix_limit = 8;
constexpr int name_limit = 64;

char* append(char* end, const char* text, int limit) {
  const size_t length = strnlen(text, limit);
  memcpy(end, text, length);
  return end + length;
}

/// Joins the three texts and returns the length. A name of 64 characters has its terminator in the
/// record's next field.
int32_t _qemCreateFuncNameStr(const char* prefix, const char* name, const char* suffix, char* out) {
  char* end = append(out, prefix, affix_limit);
  end = append(end, name, name_limit);
  end = append(end, suffix, affix_limit);
  *end = '\0';
  return static_cast<int32_t>(end - out);
}

/// Distance of a slice from the base that the user's vector has, in elements.
template <class Element>
int32_t index_shift(const Element* a) {
  const void* base = *_GetInputVectorPointer();
  if (base == nullptr) return 0;
  const intptr_t bytes = reinterpret_cast<intptr_t>(a) - reinterpret_cast<intptr_t>(base);
  return static_cast<int32_t>(bytes >> __builtin_ctz(sizeof(Element)));
}

template <class In, class Out>
void report_element(int32_t code, int32_t index, const In* a, const In* b, Out* r1, Out* r2,
                    const char* name) {
  *_GetErrStatus() = code;
  if ((orv_qem_kernel_GetMode() & QEM_ERRMODE_MASK) == QEM_ERRMODE_IGNORE) return;

  QemErrorContext record;
  record.code = code;
  record.index = index + index_shift(a);
  char* func_name = reinterpret_cast<char*>(&record) + offsetof(QemErrorContext, func_name);
  record.func_name_len = _qemCreateFuncNameStr("", name, "", func_name);
  const bool has_element = code != QEM_STATUS_BAD_ARGUMENT && code != QEM_STATUS_BAD_POINTER;
  if (has_element) {
    const Wide arg1 = read(a + index), arg2 = read(b + index);
    const Wide res1 = read(r1 + index), res2 = read(r2 + index);
    record.arg1 = arg1.re, record.arg1_im = arg1.im;
    record.arg2 = arg2.re, record.arg2_im = arg2.im;
    record.res1 = res1.re, record.res1_im = res1.im;
    record.res2 = res2.re, record.res2_im = res2.im;
  }

  constexpr QemMode callback_bits = 0xF000;
  const QemErrorCallBack callback = *_GetCallBack();
  if ((orv_qem_kernel_GetMode() & callback_bits) != 0 && callback != nullptr) {
    if (callback(&record) != 0) return;
  }
  constexpr QemMode standard_routes = 0xF00;
  if ((orv_qem_kernel_GetMode() & standard_routes) != 0) _qemStdErrorHandler(&record);

  if (has_element) {  // the second result first: with a single vector the first one stands last
    write(r2 + index, {record.res2, record.res2_im});
    write(r1 + index, {record.res1, record.res1_im});
  }
}

}  // namespace

void orv_qem_kernel_sError(int32_t code, int32_t index, const float* a, const float* b, float* r1,
                           float* r2, const char* name) {
  report_element(code, index, a, b, r1, r2, name);
}

void orv_qem_kernel_dError(int32_t code, int32_t index, const double* a, const double* b,
                           double* r1, double* r2, const char* name) {
  report_element(code, index, a, b, r1, r2, name);
}

void orv_qem_kernel_cError(int32_t code, int32_t index, const QemComplexFloat* a,
                           const QemComplexFloat* b, QemComplexFloat* r1, QemComplexFloat* r2,
                           const char* name) {
  report_element(code, index, a, b, r1, r2, name);
}

void orv_qem_kernel_zError(int32_t code, int32_t index, const QemComplexDouble* a,
                           const QemComplexDouble* b, QemComplexDouble* r1, QemComplexDouble* r2,
                           const char* name) {
  report_element(code, index, a, b, r1, r2, name);
}

#define ORV_MIXED(In, Out)                                                                     \
  void orv::report_mixed(int32_t code, int32_t index, const In* a, Out* r, const char* name) { \
    report_element(code, index, a, a, r, r, name);                                             \
  }
ORV_MIXED(float, QemComplexFloat)
ORV_MIXED(double, QemComplexDouble)
ORV_MIXED(QemComplexFloat, float)
ORV_MIXED(QemComplexDouble, double)
#undef ORV_MIXED
