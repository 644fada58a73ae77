// SPDX-License-Identifier: MIT
// Blocks of candidates for rejection methods, and those of methods that have two ways of making
// them.
#pragma once

#include "uniforms.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Appends each of n candidates for which accept(k) holds to r, and returns how many did. There is
/// room for one more until the last.
template <class T, class Value, class Accept>
int32_t append_accepted(int32_t n, T* r, const Value& value, const Accept& accept) {
  int32_t accepted = 0;
  for (int32_t k = 0; k < n; ++k) {
    r[accepted] = value(k);
    accepted += accept(k);
  }
  return accepted;
}

/// A block's candidates. Those of a branch stand in a row, so that vector functions can go over
/// them; they are accepted in the order they were drawn.
template <class T>
class TwoBranches {
 public:
  static constexpr int32_t block = 512;

  struct Branch {
    int32_t count;
    alignas(32) T first[block];   // of a candidate's uniforms; its number in the end
    alignas(32) T second[block];  // its test, 0 or below to accept, in the end
  };

  /// The pairs u1, u2: those for which is_second(u1) holds go to the second branch.
  template <class IsSecond>
  void divide(int32_t n, const T* pairs, const IsSecond& is_second) {
    int32_t count[2] = {};
    for (int32_t k = 0; k < n; ++k) {
      const T u1 = pairs[2 * k], u2 = pairs[2 * k + 1];
      const int32_t b = is_second(u1);
      const int32_t place = count[b]++;
      branch[b].first[place] = u1;
      branch[b].second[place] = u2;
      tag_[k] = b;
    }
    branch[0].count = count[0];
    branch[1].count = count[1];
  }

  /// Appends what is accepted of the n candidates to r and returns how many are.
  int32_t merge(int32_t n, T* r) const {
    int32_t next[2] = {};
    int32_t accepted = 0;
    for (int32_t k = 0; k < n; ++k) {
      const int32_t b = tag_[k];
      const int32_t place = next[b]++;
      r[accepted] = branch[b].first[place];
      accepted += T(0) >= branch[b].second[place];
    }
    return accepted;
  }

  Branch branch[2];

 private:
  int32_t tag_[block];
};

/// An end for parameters or a stream that no number comes of: not a number, a uniform that is
/// always the same. Where one candidate in four is accepted this never happens.
class Barren {
 public:
  /// Whether to give up after a block that made so many numbers.
  bool after(int32_t made) {
    blocks_ = made > 0 ? 0 : blocks_ + 1;
    return blocks_ == most;
  }

 private:
  static constexpr int32_t most = 4096;

  int32_t blocks_ = 0;
};

/// Draws blocks of pairs of uniforms and hands them to work(count, pairs, r), which returns how
/// many numbers it has made of them in r, until there are n.
template <class T, class Work>
int32_t by_rejection(StreamState* stream, int32_t n, T* r, const Work& work) {
  constexpr int32_t block = 512;
  alignas(32) T pairs[2 * block];
  Barren barren;
  while (n > 0) {
    const int32_t count = n < block ? n : block;
    const int32_t status = draw_uniforms(stream, 2 * count, pairs);
    if (status < 0) return status;
    const int32_t made = work(count, pairs, r);
    if (barren.after(made)) return RNG_BAD_ARGS;
    r += made;
    n -= made;
  }
  return RNG_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
