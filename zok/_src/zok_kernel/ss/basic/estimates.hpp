// SPDX-License-Identifier: MIT
// Which results an estimate needs, and the estimates that follow from the raw moments.
#pragma once

#include <math.h>

#include "../../_service/ratios.hpp"
#include "../../_service/ss_task.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The basic estimates as bits, in the order in which missing results are reported.
enum BasicEstimate : uint32_t {
  est_mean = 1 << 0,
  est_raw_2 = 1 << 1,
  est_raw_3 = 1 << 2,
  est_raw_4 = 1 << 3,
  est_central_2 = 1 << 4,
  est_central_3 = 1 << 5,
  est_central_4 = 1 << 6,
  est_cov = 1 << 7,
  est_cor = 1 << 8,
  est_kurtosis = 1 << 9,
  est_skewness = 1 << 10,
  est_variation = 1 << 11,
};

struct EstimateRow {
  uint32_t asked;         // bit of SS_EST_
  uint32_t needs;         // results that must be there, its own among them
  void* SSTask::*result;  // its own
  int32_t missing_status;
};

/// One level deep: kurtosis needs the central moments, but does not ask for what they need.
inline constexpr EstimateRow estimate_rows[] = {
    {SS_EST_MEAN, est_mean, &SSTask::mean, SS_NULL_MEAN},
    {SS_EST_RAW2, est_raw_2, &SSTask::raw_moment_2, SS_NULL_RAW_MOMENT_2},
    {SS_EST_RAW3, est_raw_3, &SSTask::raw_moment_3, SS_NULL_RAW_MOMENT_3},
    {SS_EST_RAW4, est_raw_4, &SSTask::raw_moment_4, SS_NULL_RAW_MOMENT_4},
    {SS_EST_CEN2, est_mean | est_raw_2 | est_central_2, &SSTask::central_moment_2,
     SS_NULL_CENTRAL_MOMENT_2},
    {SS_EST_CEN3, est_mean | est_raw_2 | est_raw_3 | est_central_3, &SSTask::central_moment_3,
     SS_NULL_CENTRAL_MOMENT_3},
    {SS_EST_CEN4, est_mean | est_raw_2 | est_raw_3 | est_raw_4 | est_central_4,
     &SSTask::central_moment_4, SS_NULL_CENTRAL_MOMENT_4},
    {SS_EST_COV, est_mean | est_cov, &SSTask::cov, SS_NULL_COV},
    {SS_EST_COR, est_mean | est_cor, &SSTask::cor, SS_NULL_COR},
    {SS_EST_KURTOSIS, est_central_2 | est_central_4 | est_kurtosis, &SSTask::kurtosis,
     SS_NULL_KURTOSIS},
    {SS_EST_SKEWNESS, est_central_2 | est_central_3 | est_skewness, &SSTask::skewness,
     SS_NULL_SKEWNESS},
    {SS_EST_VARIATION, est_mean | est_central_2 | est_variation, &SSTask::variation,
     SS_NULL_VARIATION},
};
inline constexpr uint32_t estimate_count = sizeof estimate_rows / sizeof *estimate_rows;

/// Everything to be computed for the estimates asked for. Returns the status of the first result
/// that is missing.
inline int32_t work_for(const SSTask& task, uint64_t asked, uint32_t& work) {
  work = 0;
  for (const EstimateRow& row : estimate_rows) {
    if ((asked & row.asked) != 0) work |= row.needs;
  }
  for (uint32_t i = 0; i < estimate_count; ++i) {
    const bool missing = task.*estimate_rows[i].result == nullptr;
    if ((work >> i & 1) != 0 && missing) return estimate_rows[i].missing_status;
  }
  return SS_OK;
}

/// Central moments and what is made of them, for the selected variables. Only the second central
/// moment is corrected for bias, and the others are divided by it as it is. A raw moment that was
/// not asked for is read as it stands; one without a place counts as NaN.
template <class T>
void _vSSCenMomentDerEstimators(const SSTask& task, intptr_t p, uint32_t work, const T* acc) {
  constexpr uint32_t derived =
      est_central_2 | est_central_3 | est_central_4 | est_kurtosis | est_skewness | est_variation;
  if ((work & derived) == 0) return;
  const Selection selected(task);
  const T W = acc[0], W2 = acc[1];
  const auto read = [](const void* array, intptr_t j) {
    return array != nullptr ? static_cast<const T*>(array)[j] : static_cast<T>(NAN);
  };
  for (intptr_t j = 0; j < p; ++j) {
    if (!selected[j]) continue;
    const auto write = [&](uint32_t estimate, void* array, T x) {
      if ((work & estimate) != 0) static_cast<T*>(array)[j] = x;
    };
    const T m = read(task.mean, j), raw2 = read(task.raw_moment_2, j);
    const T raw3 = read(task.raw_moment_3, j), raw4 = read(task.raw_moment_4, j);
    const T c2 = (W * W / (W * W - W2)) * (raw2 - m * m);
    const T c3 = (0 - 3 * raw2 + 2 * (m * m)) * m + raw3;
    const T c4 = ((6 * raw2 - 3 * (m * m)) * m - 4 * raw3) * m + raw4;
    write(est_central_2, task.central_moment_2, c2);
    write(est_central_3, task.central_moment_3, c3);
    write(est_central_4, task.central_moment_4, c4);
    write(est_kurtosis, task.kurtosis, static_cast<T>(over_square(c4, c2) - 3));
    write(est_skewness, task.skewness, static_cast<T>(over_root_of_cube(c3, c2)));
    write(est_variation, task.variation, static_cast<T>(sqrt(c2)) / m);
  }
}

}  // namespace ORV_TAG
}  // namespace orv
