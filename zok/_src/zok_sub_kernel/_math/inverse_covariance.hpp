// Inverses in closed form, in place, of covariance matrices of one to three variables. Of a matrix
// stored by columns they read and write the upper triangle only. A singular one gives infinities.
#pragma once

namespace orv {
inline namespace ORV_TAG {

void dInvCov1(double* c);
void dInvCov2(double* c);
void dInvCov3(double* c);
void sInvCov1(float* c);
void sInvCov2(float* c);
void sInvCov3(float* c);

}  // namespace ORV_TAG
}  // namespace orv
