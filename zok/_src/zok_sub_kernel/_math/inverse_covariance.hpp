// SPDX-License-Identifier: MIT
// Inverses, in place, of covariance matrices. Of a matrix stored by columns they read and write the
// upper triangle only.
#pragma once

#include <stdint.h>

namespace orv {
inline namespace ORV_TAG {

/// In closed form, of one to three variables. A singular matrix gives infinities.
void dInvCov1(double* c);
void dInvCov2(double* c);
void dInvCov3(double* c);
void sInvCov1(float* c);
void sInvCov2(float* c);
void sInvCov3(float* c);

/// __zokdInvCov for a matrix that stays its owner's whatever happens.
int32_t invert_covariance(int32_t p, double* c);
int32_t invert_covariance(int32_t p, float* c);

}  // namespace ORV_TAG
}  // namespace orv
