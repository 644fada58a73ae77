// SPDX-License-Identifier: MIT
// The record that _zokdSSMahDistance reads, made for the statistics that call it.
#pragma once

#include "../../_service/ss_task.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Words of SSTask::mahalanobis_block. The sixth is not read.
enum MahalanobisWord {
  mah_first,           // integer: first observation
  mah_end,             // integer: end of the range
  mah_mean,            // p
  mah_inverse_cov,     // p by p, of which the upper triangle by columns is read
  mah_output,          // a distance for each observation of the range
  mah_buffer = 6,      // room for observations and as much again, or null
  mah_buffer_size = 7  // integer: its elements
};

template <class T>
int32_t mahalanobis_distances(SSTask* record);
template <>
inline int32_t mahalanobis_distances<double>(SSTask* record) {
  return _zokdSSMahDistance(record);
}
template <>
inline int32_t mahalanobis_distances<float>(SSTask* record) {
  return _zoksSSMahDistance(record);
}

/// Distances of a task's observations from a mean, in the measure of an inverse covariance. Each
/// thread has one of its own.
template <class T>
class MahalanobisDistances {
 public:
  MahalanobisDistances(const SSTask& data, const T* mean, const T* inverse_cov, T* buffer,
                       int64_t buffer_size)
      : p_(integer(data, data.dimension)),
        n_(integer(data, data.observation_count)),
        layout_(integer(data, data.observation_storage)),
        buffer_size_(buffer_size) {
    record_.int_is_64 = 1;
    record_.dimension = &p_;
    record_.observation_count = &n_;
    record_.observation_storage = &layout_;
    record_.observations = data.observations;
    const void* const words[] = {&first_, &end_,   mean,   inverse_cov,
                                 nullptr, nullptr, buffer, &buffer_size_};
    memcpy(record_.mahalanobis_block, words, sizeof words);
  }
  MahalanobisDistances(const MahalanobisDistances&) = delete;
  MahalanobisDistances& operator=(const MahalanobisDistances&) = delete;

  /// Of observations first to end - 1.
  int32_t operator()(int64_t first, int64_t end, T* distances) {
    first_ = first;
    end_ = end;
    record_.mahalanobis_block[mah_output] = distances;
    return mahalanobis_distances<T>(&record_);
  }

 private:
  int64_t p_, n_, layout_, first_ = 0, end_ = 0, buffer_size_;
  SSTask record_ = {};
};

}  // namespace ORV_TAG
}  // namespace orv
