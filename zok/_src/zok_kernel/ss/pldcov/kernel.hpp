// SPDX-License-Identifier: MIT
// Mean and scatter of one group of observations, which lie anywhere in the data.
//
// Observations are gathered a few at a time. First all their means are updated, each from the one
// before, which gives the deviations; then each element of the scatter matrix takes up their
// products in the same order, so that the matrix passes through memory once for all of them.
#pragma once

#include <string.h>

#include "../../../zok_sub_kernel/_service/lanes.hpp"
#include "../../_service/ss_task.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The data of a task.
template <class T>
struct GroupedData {
  intptr_t n, p;
  const T* x;
  const T* weights;  // or null
  bool rows;
};

/// Sums over one group, and room for the observations that are being added. Vectors and rows of the
/// matrix are padded with zeros to `stride`, and the matrix to as many rows.
template <class T>
struct GroupSums {
  static constexpr intptr_t together = 16;      // observations that are added at once
  static constexpr intptr_t rows_together = 4;  // rows of the matrix that take them up at once

  /// Whole vectors, and whole blocks of rows.
  static intptr_t stride_of(intptr_t p) {
    constexpr intptr_t width = Lanes<T>::count;
    static_assert(width % rows_together == 0);
    return (p + width - 1) / width * width;
  }
  /// Number of padded vectors, which are whole cache lines in all: no two threads share one.
  static intptr_t vectors(intptr_t p) { return stride_of(p) + 2 * together + 4; }

  GroupSums() = default;
  /// In a block of that many vectors, zeros at first.
  GroupSums(T* block, intptr_t p)
      : stride(stride_of(p)),
        mean(block),
        matrix(mean + stride),
        deviations(matrix + stride * stride),
        factors(deviations + together * stride) {}

  /// Of the mean and of the matrix that follows it.
  intptr_t size() const { return stride * (stride + 1); }

  void clear() {
    memset(mean, 0, static_cast<size_t>(size()) * sizeof(T));
    w = w2 = 0;
  }

  intptr_t stride;
  T *mean, *matrix;
  T *deviations, *factors;  // a vector for each observation; deviations hold the data first
  T w, w2;                  // sums of weights and of their squares
};

/// Calls for observations that are needed next. Those in rows mostly come with the ones before.
template <class T>
void prefetch(const GroupedData<T>& data, const intptr_t* chosen, intptr_t count) {
  constexpr intptr_t line = 64 / sizeof(T);
  if (data.rows) return;
  for (intptr_t i = 0; i < count; ++i) {
    const T* x = data.x + chosen[i] * data.p;
    for (intptr_t j = 0; j < data.p; j += line) __builtin_prefetch(x + j);
  }
}

template <class T>
void gather(const GroupedData<T>& data, const intptr_t* chosen, intptr_t count, intptr_t stride,
            T* to) {
  if (!data.rows) {
    for (intptr_t i = 0; i < count; ++i) {
      const T* x = data.x + chosen[i] * data.p;
      for (intptr_t j = 0; j < data.p; ++j) to[i * stride + j] = x[j];
    }
    return;
  }
  for (intptr_t j = 0; j < data.p; ++j) {
    for (intptr_t i = 0; i < count; ++i) to[i * stride + j] = data.x[j * data.n + chosen[i]];
  }
}

/// One observation: its deviations from the mean so far, their factors, and the new mean.
template <class T>
void add_to_mean(GroupSums<T>* sums, T w, T* deviations, T* factors) {
  using V = typename Lanes<T>::Vector;
  const T r = 1 / (w + sums->w);
  const V vw = Lanes<T>::all(w), vsum = Lanes<T>::all(sums->w), vr = Lanes<T>::all(r);
  for (intptr_t k = 0; k < sums->stride; k += Lanes<T>::count) {
    const auto at = [k](T* p) { return reinterpret_cast<V*>(p + k); };
    const V x = *at(deviations), mean = *at(sums->mean), d = x - mean;
    *at(deviations) = d;
    *at(factors) = d * vsum * vw * vr;
    *at(sums->mean) = vr * (vsum * mean + vw * x);
  }
  sums->w += w;
  sums->w2 += w * w;
}

/// matrix(j, k) += factor j * deviation k, one observation after the other.
template <class T>
void add_to_matrix(const GroupSums<T>& sums, intptr_t p, intptr_t count) {
  using V = typename Lanes<T>::Vector;
  const intptr_t stride = sums.stride;
  for (intptr_t j = 0; j < p; j += sums.rows_together) {
    for (intptr_t k = 0; k < stride; k += Lanes<T>::count) {
      const auto row = [=, &sums](intptr_t r) {
        return reinterpret_cast<V*>(sums.matrix + (j + r) * stride + k);
      };
      V s0 = *row(0), s1 = *row(1), s2 = *row(2), s3 = *row(3);
      const T* factor = sums.factors + j;
      const T* deviation = sums.deviations + k;
      for (intptr_t i = 0; i < count; ++i, factor += stride, deviation += stride) {
        const V d = *reinterpret_cast<const V*>(deviation);
        s0 += Lanes<T>::broadcast(factor + 0) * d;
        s1 += Lanes<T>::broadcast(factor + 1) * d;
        s2 += Lanes<T>::broadcast(factor + 2) * d;
        s3 += Lanes<T>::broadcast(factor + 3) * d;
      }
      *row(0) = s0, *row(1) = s1, *row(2) = s2, *row(3) = s3;
    }
  }
}

/// Adds the observations that `members` names, in this order, from the first one of positive
/// weight.
template <class T>
void _vSSPldCovKernel(const GroupedData<T>& data, const intptr_t* members, intptr_t count,
                      GroupSums<T>* sums) {
  const intptr_t together = GroupSums<T>::together, stride = sums->stride;
  intptr_t first = 0;
  while (data.weights != nullptr && first < count && !(data.weights[members[first]] > 0)) ++first;
  const auto at_once = [=](intptr_t from) {
    return count - from < together ? count - from : together;
  };
  for (; first < count; first += together) {
    const intptr_t now = at_once(first);
    prefetch(data, members + first + now, at_once(first + now));
    gather(data, members + first, now, stride, sums->deviations);
    for (intptr_t i = 0; i < now; ++i) {
      const T w = data.weights != nullptr ? data.weights[members[first + i]] : T{1};
      add_to_mean(sums, w, sums->deviations + i * stride, sums->factors + i * stride);
    }
    add_to_matrix(*sums, data.p, now);
  }
}

}  // namespace ORV_TAG
}  // namespace orv
