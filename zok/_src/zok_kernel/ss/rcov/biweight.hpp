// SPDX-License-Identifier: MIT
// The translated biweight (D. M. Rocke 1996): distances up to M have their full weight, from M to
// M + c less and less, and beyond it none.
#pragma once

#include <stdint.h>

namespace orv {
inline namespace ORV_TAG {

struct Biweight {
  double M, c;
};

/// The biweight of p variables with breakdown point b, that gives no weight to the part a of normal
/// data. Where none has both, c is 0 and M the root of the chi-square quantile 1 - a.
Biweight _vSSInitTBSMethod(int64_t p, double b, double a);

}  // namespace ORV_TAG
}  // namespace orv
