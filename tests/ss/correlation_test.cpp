// SPDX-License-Identifier: MIT
// Repair of correlation matrices, against the spectrum that a plain Jacobi iteration finds in long
// double.
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "support.hpp"

using namespace orv_test;

namespace {

using Real = long double;

/// Eigenvalues of a symmetric matrix, and its eigenvectors as columns.
struct Spectrum {
  std::vector<Real> values, vectors;
};

Spectrum spectrum_of(size_t p, std::vector<Real> a) {
  std::vector<Real> v(p * p);
  for (size_t i = 0; i < p; ++i) v[i * p + i] = 1;
  for (int sweep = 0; sweep < 30; ++sweep) {
    for (size_t i = 0; i < p; ++i) {
      for (size_t j = i + 1; j < p; ++j) {
        if (a[i * p + j] == 0) continue;
        const Real angle = std::atan2(2 * a[i * p + j], a[j * p + j] - a[i * p + i]) / 2;
        const Real c = std::cos(angle), s = std::sin(angle);
        const auto rotate = [&](Real& x, Real& y) {
          const Real old = x;
          x = c * old - s * y, y = s * old + c * y;
        };
        for (size_t k = 0; k < p; ++k) rotate(a[k * p + i], a[k * p + j]);
        for (size_t k = 0; k < p; ++k) rotate(a[i * p + k], a[j * p + k]);
        for (size_t k = 0; k < p; ++k) rotate(v[k * p + i], v[k * p + j]);
      }
    }
  }
  Spectrum spectrum = {{}, v};
  for (size_t i = 0; i < p; ++i) spectrum.values.push_back(a[i * p + i]);
  return spectrum;
}

/// The matrix with a unit diagonal and eigenvalues raised to the limit.
std::vector<Real> repaired(size_t p, const std::vector<Real>& a, Real limit) {
  const Spectrum spectrum = spectrum_of(p, a);
  if (std::ranges::min(spectrum.values) >= limit) return a;
  std::vector<Real> c(p * p);
  for (size_t i = 0; i < p * p; ++i) {
    for (size_t k = 0; k < p; ++k) {
      c[i] += spectrum.vectors[i / p * p + k] * std::max(limit, spectrum.values[k]) *
              spectrum.vectors[i % p * p + k];
    }
  }
  std::vector<Real> result(p * p);
  for (size_t i = 0; i < p * p; ++i) {
    result[i] = c[i] / std::sqrt(c[i / p * (p + 1)] * c[i % p * (p + 1)]);
  }
  return result;
}

template <class T>
int32_t parametrize(int64_t p, const std::vector<T>& from, int64_t from_storage, std::vector<T>& to,
                    int64_t to_storage, bool wide = false) {
  Task<T> task(p, 1, SS_ROWS, nullptr, wide);
  task.set(SS_PARAM_COR, from).set(SS_PARAM_PARAMETRIZED_COR, to);
  task.set(SS_PARAM_COR_STORAGE, {from_storage});
  task.set(SS_PARAM_PARAMETRIZED_COR_STORAGE, {to_storage});
  return Entries<T>::parametrize(task, 0, SS_METHOD_SPECTRAL_DECOMP, orv_threads_serial());
}

template <class T>
std::vector<T> stored(int64_t storage, int64_t p, const std::vector<T>& full) {
  std::vector<T> result;
  for_each_stored(storage, p, [&](int64_t i, int64_t j) { result.push_back(full[i * p + j]); });
  return result;
}

/// Correlations of which none fits the others where `indefinite`, with a diagonal of anything.
template <class T>
std::vector<T> some_correlations(int p, bool indefinite) {
  std::mt19937 random(static_cast<unsigned>(2 * p));
  std::vector<T> a(p * p);
  for (int i = 0; i < p; ++i) {
    a[i * p + i] = T(3);
    for (int j = 0; j < i; ++j) {
      const double u = static_cast<double>(random()) * 0x1p-31 - 1;
      a[i * p + j] = a[j * p + i] = static_cast<T>(indefinite ? 0.98 * u : u / (2 * p));
    }
  }
  return a;
}

TYPED_TEST(EachPrecision, CorrelationsMadePositive) {
  using T = TypeParam;
  constexpr Real limit = sizeof(T) == 8 ? 1e-14L : 1e-6L;
  for (const int p : {1, 2, 3, 4, 7, 20, 45}) {
    for (const bool indefinite : {false, true}) {
      SCOPED_TRACE(testing::Message() << "p " << p << " indefinite " << indefinite);
      const std::vector<T> a = some_correlations<T>(p, indefinite);
      std::vector<Real> exact(a.begin(), a.end());
      for (int i = 0; i < p; ++i) exact[i * (p + 1)] = 1;
      const std::vector<Real> expected = repaired(p, exact, limit);
      EXPECT_EQ(expected != exact, indefinite && p > 2);
      for (int way = 0; way < 36; ++way) {
        Choices choose{way};
        const int64_t from = choose(3), to = choose(3);
        const bool in_place = choose(2), wide = choose(2);
        const std::vector<T> given = stored(from, p, a), want = stored(to, p, std::vector<T>(a));
        std::vector<T> found = in_place ? given : std::vector<T>(want.size(), -7);
        const auto& source = in_place ? found : given;
        const int32_t status = parametrize<T>(p, source, from, found, to, wide);
        if (in_place && from != SS_MATRIX_FULL && to == SS_MATRIX_FULL) {
          ASSERT_EQ(status, SS_BAD_STORAGE);
          ASSERT_EQ(found, given);
          continue;
        }
        ASSERT_EQ(status, SS_OK);
        size_t k = 0;
        for_each_stored(to, p, [&](int64_t i, int64_t j) {
          const Real x = expected[i * p + j];
          if (i == j) {
            ASSERT_EQ(found[k], 1);
          } else if (expected == exact) {
            ASSERT_EQ(found[k], a[i * p + j]);
          } else {
            const auto bound = static_cast<double>(16 * p * std::numeric_limits<T>::epsilon());
            ASSERT_NEAR(found[k], static_cast<double>(x), bound) << i << " " << j;
          }
          ++k;
        });
      }
      if (expected == exact) continue;
      std::vector<T> result(p * p);
      ASSERT_EQ(parametrize<T>(p, a, 0, result, 0), SS_OK);
      const Spectrum spectrum = spectrum_of(p, {result.begin(), result.end()});
      EXPECT_GT(std::ranges::min(spectrum.values), -p * std::numeric_limits<T>::epsilon());
    }
  }
}

// Nothing is left of a matrix that holds what is no number, of any size and at any place.
TYPED_TEST(EachPrecision, CorrelationsThatAreNotFinite) {
  using T = TypeParam;
  using Limits = std::numeric_limits<T>;
  for (const int p : {2, 3, 4, 9}) {
    for (const T odd : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()}) {
      for (int place = 0; place < p * p; ++place) {
        std::vector<T> a = some_correlations<T>(p, true), result(p * p, -7);
        a[place] = a[place % p * p + place / p] = odd;
        const bool on_diagonal = place % (p + 1) == 0;  // that is taken for 1
        ASSERT_EQ(parametrize<T>(p, a, 0, result, 0), on_diagonal ? SS_OK : SS_NOT_POSITIVE);
        ASSERT_EQ(result[1] == -7, !on_diagonal);
      }
    }
  }
}

}  // namespace
