// SPDX-License-Identifier: MIT
// The scalar entries of CdfNormInv and ErfcInv: one element, returning a status code and reporting
// nothing. Tail entries take an argument within the domain.
#include "../../cdfnorminv/cdfnorminv.hpp"
#include "../../cdfnorminv/tables/cdfnorminv_tail_tables.hpp"
#include "../../erfcinv/erfcinv.hpp"
#include "../../erfcinv/tables/erfcinv_tail_tables.hpp"
#include "inverse_error_tail.hpp"

namespace {

using namespace orv;

struct CdfNormInvTail {
  static constexpr const auto& near = dCdfNormInv_near;
  static constexpr const auto& rows = dCdfNormInv_P3N128D12P50DS;
};
struct ErfcInvTail {
  static constexpr const auto& near = dErfcInv_near;
  static constexpr const auto& rows = dErfcInv_P3N128D12P50DS;
};

}  // namespace

double dCdfNormInv_Tail(double x) {
  const double d = 2 * x - 1;
  if (__builtin_fabs(d) <= within_series) return near_zero<CdfNormInvTail>(d);
  if (d > 0) return far_from_zero<CdfNormInvTail>({2 - 2 * x, 0});
  const Scaled w = normalised(x);
  return -far_from_zero<CdfNormInvTail>({w.x, w.shift - 1});
}

double dErfcInv_Tail(double x) {
  const double d = 1 - x;
  if (__builtin_fabs(d) <= within_series) return near_zero<ErfcInvTail>(d);
  if (d < 0) return -far_from_zero<ErfcInvTail>({2 - x, 0});
  return far_from_zero<ErfcInvTail>(normalised(x));
}

int32_t dCdfNormInv_SC(const double* a, double* r) {
  return inverse_error_element(a, r, 1.0, 1, dCdfNormInv_EP_Table, dCdfNormInv_Tail);
}
int32_t sCdfNormInv_SC(const float* a, float* r) {
  return inverse_error_element(a, r, 1.0f, 1, sCdfNormInv_EP_Table, dCdfNormInv_Tail);
}
int32_t dErfcInv_SC(const double* a, double* r) {
  return inverse_error_element(a, r, 2.0, 0, dErfcInv_EP_Table, dErfcInv_Tail);
}
int32_t sErfcInv_SC(const float* a, float* r) {
  return inverse_error_element(a, r, 2.0f, 0, sErfcInv_EP_Table, dErfcInv_Tail);
}
