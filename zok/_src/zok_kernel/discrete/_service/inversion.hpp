// SPDX-License-Identifier: MIT
// Inversion by a table of cumulative probabilities: the smallest k with at(k) > u.
#pragma once

#include "results.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Cumulative probabilities of 0, 1, ... up to the last number that counts, whose entry is
/// infinite: a walk ends there at the latest, for every u. A guide tells for each 1/1024 of the
/// range of u where its walks begin, most often where they end (Chen and Asau 1974).
///
/// A table may come from a file: whatever it holds, no walk leaves it.
class CumulativeTable {
 public:
  static constexpr int32_t last = 255;

  /// From terms proportional to the probabilities: the first is 1, the one after k is that of k
  /// times ratio(k). They have to rise to one top and fall, to nothing well before the last entry.
  template <class Ratio>
  void make(const Ratio& ratio) {
    const int32_t count = add_up(1, ratio);
    for (int32_t k = 0; k < last; ++k) at_[k] = at_[k] / at_[last - 1];
    finish(count);
  }

  /// From the first probability itself. Returns what is left beyond the table, for which its last
  /// entry stands: 0 where all that counts has a place.
  template <class Ratio>
  double make_part(double first, const Ratio& ratio) {
    const int32_t count = add_up(first, ratio);
    const double left = count < last ? 0 : 1 - at_[last - 1];
    finish(count < last ? count : last + 1);
    return left;
  }

  int32_t find(double u) const {
    const uint32_t cell = static_cast<uint32_t>(_mm_cvttsd_si32(_mm_set_sd(u * cells)));
    int32_t k = guide_[cell < cells ? cell : cells];
    while (k < last && !(at_[k] > u)) ++k;
    return k;
  }

  double operator[](int32_t k) const { return at_[k]; }

 private:
  static constexpr uint32_t cells = 1024;

  /// Adds terms from the small end until they no longer count, and returns how many there are.
  template <class Ratio>
  int32_t add_up(double first, const Ratio& ratio) {
    constexpr double negligible = 0x1p-64;
    double term[last], greatest = 0;
    int32_t count = 0;
    for (double f = first; count < last && f > negligible * greatest; f = f * ratio(count++)) {
      term[count] = f;
      greatest = f > greatest ? f : greatest;
    }
    double above = 0;
    for (int32_t k = last - 1; k >= 0; --k) {
      at_[k] = above;
      if (k < count) above += term[k];
    }
    for (int32_t k = 0; k < last; ++k) at_[k] = above - at_[k];
    return count;
  }

  void finish(int32_t count) {
    for (int32_t k = count > 0 ? count - 1 : 0; k <= last; ++k) at_[k] = __builtin_inf();
    int32_t k = 0;
    for (uint32_t cell = 0; cell <= cells; ++cell) {
      while (!(at_[k] * cells > cell)) ++k;
      guide_[cell] = static_cast<uint8_t>(k);
    }
  }

  double at_[last + 1];
  uint8_t guide_[cells + 8];
};

/// A number of the table from each uniform.
inline int32_t by_inversion(StreamState* stream, int32_t n, int32_t* r,
                            const CumulativeTable& table, const Image& image) {
  return with_uniforms(stream, n, [&](int32_t count, const double* u) {
    for (int32_t i = 0; i < count; ++i) r[i] = image(table.find(u[i]));
    r += count;
  });
}

}  // namespace ORV_TAG
}  // namespace orv
