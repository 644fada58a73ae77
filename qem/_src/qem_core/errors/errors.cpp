// What happens to a reported element: status, record, callback, standard routes, write-back.
#include <stddef.h>
#include <string.h>

#include "../mode/thread_cells.hpp"
#include "standard_handlers.hpp"

using namespace orv;

namespace {

double re(float x) { return x; }
double re(double x) { return x; }
double re(const QemComplexFloat& x) { return x.re; }
double re(const QemComplexDouble& x) { return x.re; }
double im(float) { return 0; }
double im(double) { return 0; }
double im(const QemComplexFloat& x) { return x.im; }
double im(const QemComplexDouble& x) { return x.im; }

void assign(float& x, double re, double) { x = static_cast<float>(re); }
void assign(double& x, double re, double) { x = re; }
void assign(QemComplexFloat& x, double re, double im) {
  x = {static_cast<float>(re), static_cast<float>(im)};
}
void assign(QemComplexDouble& x, double re, double im) { x = {re, im}; }

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

template <class Element>
void report(int32_t code, int32_t index, const Element* a, const Element* b, Element* r1,
            Element* r2, const char* name) {
  *_GetErrStatus() = code;
  if ((orv_qem_kernel_GetMode() & QEM_ERRMODE_MASK) == QEM_ERRMODE_IGNORE) return;

  QemErrorContext record;
  record.code = code;
  record.index = index + index_shift(a);
  char* func_name = reinterpret_cast<char*>(&record) + offsetof(QemErrorContext, func_name);
  record.func_name_len = _qemCreateFuncNameStr("", name, "", func_name);
  const bool has_element = code != QEM_STATUS_BAD_ARGUMENT && code != QEM_STATUS_BAD_POINTER;
  if (has_element) {
    record.arg1 = re(a[index]), record.arg1_im = im(a[index]);
    record.arg2 = re(b[index]), record.arg2_im = im(b[index]);
    record.res1 = re(r1[index]), record.res1_im = im(r1[index]);
    record.res2 = re(r2[index]), record.res2_im = im(r2[index]);
  }

  constexpr QemMode callback_bits = 0xF000;
  const QemErrorCallBack callback = *_GetCallBack();
  if ((orv_qem_kernel_GetMode() & callback_bits) != 0 && callback != nullptr) {
    if (callback(&record) != 0) return;
  }
  constexpr QemMode standard_routes = 0xF00;
  if ((orv_qem_kernel_GetMode() & standard_routes) != 0) _qemStdErrorHandler(&record);

  if (has_element) {  // the second result first: with a single vector the first one stands last
    assign(r2[index], record.res2, record.res2_im);
    assign(r1[index], record.res1, record.res1_im);
  }
}

}  // namespace

void orv_qem_kernel_sError(int32_t code, int32_t index, const float* a, const float* b, float* r1,
                           float* r2, const char* name) {
  report(code, index, a, b, r1, r2, name);
}

void orv_qem_kernel_dError(int32_t code, int32_t index, const double* a, const double* b,
                           double* r1, double* r2, const char* name) {
  report(code, index, a, b, r1, r2, name);
}

void orv_qem_kernel_cError(int32_t code, int32_t index, const QemComplexFloat* a,
                           const QemComplexFloat* b, QemComplexFloat* r1, QemComplexFloat* r2,
                           const char* name) {
  report(code, index, a, b, r1, r2, name);
}

void orv_qem_kernel_zError(int32_t code, int32_t index, const QemComplexDouble* a,
                           const QemComplexDouble* b, QemComplexDouble* r1, QemComplexDouble* r2,
                           const char* name) {
  report(code, index, a, b, r1, r2, name);
}
