// SPDX-License-Identifier: MIT
// The two recurrences of MRG32K3A, four consecutive elements a vector.
//
// A vector V(t) = (x(4 t), ..., x(4 t + 3)) is a combination of older vectors whose multipliers are
// small enough for doubles, found by lattice reduction and proven below by the compiler:
//
//   V(t) = c0 V(t - 8) + c1 V(t - 7) + c2 V(t - 6) + c3 V(t - 5) + c4 V(t - 4)  mod m
//
// So the last eight vectors are enough to go on with, and four of them can be made side by side.
#pragma once

#include <qem/_src/qem_core/simd/vectors.hpp>

namespace orv {
inline namespace ORV_TAG {

constexpr uint32_t m1 = 4294967087, m2 = 4294944443;

constexpr int window_vectors = 8;
constexpr int window_size = 4 * window_vectors;
constexpr int window_terms = 5;

struct X {
  static constexpr int64_t m = m1;
  static constexpr int64_t multiplier[] = {0, 1403580, -810728};  // of x(n - 1), x(n - 2), x(n - 3)
  static constexpr int64_t c[window_terms] = {-55355, -12290, 181015, 149941, -373068};
};
struct Y {
  static constexpr int64_t m = m2;
  static constexpr int64_t multiplier[] = {527612, 0, -1370589};
  static constexpr int64_t c[window_terms] = {-19511, -176784, -189550, -1261, 198498};
};

/// A sequence of order three obeys the combination everywhere if the three sequences that start
/// with a 1 among 0s obey it at their start. Doubles hold every sum before its reduction.
template <class Component>
constexpr bool combination_holds() {
  constexpr int64_t m = Component::m;
  int64_t size = 0;
  for (const int64_t c : Component::c) size += c < 0 ? -c : c;
  if (size * (m / 2 + 1) >= int64_t{1} << 53) return false;
  for (int start = 0; start < 3; ++start) {
    int64_t x[window_size + 1] = {start == 0, start == 1, start == 2};
    for (int n = 3; n <= window_size; ++n) {
      x[n] = 0;
      for (int k = 0; k < 3; ++k) x[n] = (x[n] + Component::multiplier[k] * x[n - 1 - k]) % m;
    }
    int64_t rest = x[window_size];
    for (int k = 0; k < window_terms; ++k) rest = (rest - Component::c[k] * x[4 * k]) % m;
    if (rest != 0) return false;
  }
  return true;
}
static_assert(combination_holds<X>() && combination_holds<Y>());

/// The residue of p that is within m / 2 of zero, up to rounding of the quotient.
template <class V>
V reduce(V p, V m, V inverse) {
  return p - nearest(p * inverse) * m;
}

/// From (-m, m) to [0, m).
inline __m128d not_negative(__m128d x, __m128d m) {
  return x + _mm_and_pd(_mm_cmplt_pd(x, _mm_setzero_pd()), m);
}
inline __m256d not_negative(__m256d x, __m256d m) {
  return x + _mm256_and_pd(_mm256_cmp_pd(x, _mm256_setzero_pd(), _CMP_LT_OQ), m);
}

/// The last eight vectors of a component, and the one before them.
template <class Component>
class Window {
 public:
  void set(int i, double x) { memcpy(at(i), &x, sizeof x); }
  /// Element i, from -4 on.
  double get(int i) const {
    double x;
    memcpy(&x, const_cast<Window*>(this)->at(i), sizeof x);
    return x;
  }
  double residue(int i) const {
    const double x = get(i);
    return x < 0 ? x + Component::m : x;
  }
  __m256d four(int k) const { return vectors_[1 + k]; }

  /// Replaces each vector by its successor, eight further on.
  void advance() {
    __m256d* const v = vectors_ + 1;
    vectors_[0] = v[window_vectors - 1];
#pragma GCC unroll 8
    for (int k = 0; k < window_vectors; ++k) {
      __m256d sum = v[k] * static_cast<double>(Component::c[0]);
#pragma GCC unroll 4
      for (int j = 1; j < window_terms; ++j) {
        sum += v[(k + j) % window_vectors] * static_cast<double>(Component::c[j]);
      }
      v[k] = reduce(sum, _mm256_set1_pd(Component::m), _mm256_set1_pd(1.0 / Component::m));
    }
  }

 private:
  char* at(int i) {
    return reinterpret_cast<char*>(vectors_ + 1) + i * static_cast<int>(sizeof(double));
  }

  __m256d vectors_[1 + window_vectors];
};

}  // namespace ORV_TAG
}  // namespace orv
