// SPDX-License-Identifier: MIT
// The scalar routines for floats: computed in doubles and narrowed. Both floats come as one word,
// the real part in its low half.
#include "complex.hpp"

using namespace orv;

namespace {

uint64_t narrowed(const QemComplexDouble& z) {
  constexpr float smallest_normal = 0x1p-126f;
  const QemComplexFloat narrow = {static_cast<float>(z.re), static_cast<float>(z.im)};
  const auto denormal = [](float x) { return x != 0 && __builtin_fabsf(x) < smallest_normal; };
  if (denormal(narrow.re) || denormal(narrow.im)) {
    volatile float tiny = smallest_normal;  // a denormal that is exact raises no underflow itself
    tiny = tiny * tiny;
  }
  uint64_t word;
  static_assert(sizeof word == sizeof narrow);
  memcpy(&word, &narrow, sizeof word);
  return word;
}

template <class... Parts>
uint64_t in_doubles(void (*routine)(QemComplexDouble*, Parts...), Parts... parts) {
  QemComplexDouble z;
  routine(&z, parts...);
  return narrowed(z);
}

}  // namespace

uint64_t _qem_cacosf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_cacos_scalar, re, im);
}
uint64_t _qem_cacoshf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_cacosh_scalar, re, im);
}
uint64_t _qem_casinf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_casin_scalar, re, im);
}
uint64_t _qem_casinhf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_casinh_scalar, re, im);
}
uint64_t _qem_catanf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_catan_scalar, re, im);
}
uint64_t _qem_catanhf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_catanh_scalar, re, im);
}
uint64_t _qem_ccosf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_ccos_scalar, re, im);
}
uint64_t _qem_ccoshf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_ccosh_scalar, re, im);
}
uint64_t _qem_clog10f_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_clog10_scalar, re, im);
}
uint64_t _qem_csinf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_csin_scalar, re, im);
}
uint64_t _qem_csinhf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_csinh_scalar, re, im);
}
uint64_t _qem_csqrtf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_csqrt_scalar, re, im);
}
uint64_t _qem_ctanf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_ctan_scalar, re, im);
}
uint64_t _qem_ctanhf_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_ctanh_scalar, re, im);
}
uint64_t _qem_cexpt_scalar(float re, float im) {
  return in_doubles<double, double>(orv_qem_kernel_cexp_scalar, re, im);
}
uint64_t _qem_cpowf_scalar(float x_re, float x_im, float y_re, float y_im) {
  return in_doubles<double, double, double, double>(orv_qem_kernel_cpow_scalar, x_re, x_im, y_re,
                                                    y_im);
}
