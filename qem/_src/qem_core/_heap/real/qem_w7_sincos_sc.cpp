// SPDX-License-Identifier: MIT
// The scalar entries of SinCos and CIS: element i of a vector. The levels differ in the text that
// they report only; the complex entries of both types share theirs.
#include "../../frame/control_words.hpp"
#include "../../frame/elements.hpp"
#include "../../frame/report.hpp"
#include "sincos.hpp"

namespace {

template <class T>
void sincos_element(int32_t i, const T* a, T* r1, T* r2, const char* text) {
  const orv::ControlWords words(orv::environment_x87_double);
  T sine, cosine;
  const int code = orv::_dSinCos(orv::load_one(a + i), &sine, &cosine);
  memcpy(r1 + i, &sine, sizeof sine), memcpy(r2 + i, &cosine, sizeof cosine);
  if (code != 0) orv::report(code, i, a, r1, r2, text);
}

template <class T, class Complex>
void cis_element(int32_t i, const T* a, Complex* r, const char* text) {
  const orv::ControlWords words(orv::environment_x87_double);
  Complex z;
  const int code = orv::_dSinCos(orv::load_one(a + i), &z.im, &z.re);
  memcpy(r + i, &z, sizeof z);
  if (code != 0) orv::report(code, i, a, r, r, text);
}

}  // namespace

#define ORV_SINCOS(t, T, level)                                                     \
  void orv_qem_kernel_##t##SinCos_SC_##level(int32_t i, const T* a, T* r1, T* r2) { \
    sincos_element(i, a, r1, r2, #t "SinCos_" #level);                              \
  }
#define ORV_CIS(t, T, Complex, level)                                          \
  void orv_qem_kernel_##t##CIS_SC_##level(int32_t i, const T* a, Complex* r) { \
    cis_element(i, a, r, "zCIS_" #level);                                      \
  }
#define ORV_LEVEL(level)                    \
  ORV_SINCOS(s, float, level)               \
  ORV_SINCOS(d, double, level)              \
  ORV_CIS(c, float, QemComplexFloat, level) \
  ORV_CIS(z, double, QemComplexDouble, level)
ORV_LEVEL(HA)
ORV_LEVEL(LA)
ORV_LEVEL(A11)
