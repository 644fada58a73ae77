// SPDX-License-Identifier: MIT
// The spectral test of a row of the combined congruential family.
#pragma once

#include <cmath>

#include "wh_rows.hpp"

namespace orv_search {

/// A lattice in up to eight dimensions: an exact integer basis, with the Gram-Schmidt numbers in
/// long double. While entries are still large these are rough, which costs steps only; in the
/// reduced basis they are good to some 60 bits, as long as its entries stay below 2^63: no lattice
/// with a figure above 2^-14 breaks that.
class Lattice {
 public:
  using Integer = __int128;
  using Vector = std::array<Integer, 8>;

  /// Adds a vector and makes the basis reduced again (Lenstra, Lenstra and Lovasz).
  void extend(const Vector& v) {
    basis_.push_back(v);
    const int n = static_cast<int>(basis_.size());
    for (int i = 0; i < n; ++i) orthogonalise(i);
    for (int i = 1; i < n;) {
      size_reduce(i);
      if (square_[i] + mu_[i][i - 1] * mu_[i][i - 1] * square_[i - 1] >= 0.99L * square_[i - 1]) {
        ++i;
      } else {
        std::swap(basis_[i], basis_[i - 1]);
        orthogonalise(i - 1);
        orthogonalise(i);
        i = std::max(i - 1, 1);
      }
    }
  }

  long double shortest_length() const {
    long double least = norm(basis_[0]);
    std::array<long double, 8> coefficients{};
    enumerate(static_cast<int>(basis_.size()) - 1, coefficients, 0, least);
    return std::sqrt(least);
  }

 private:
  static long double dot(const Vector& a, const Vector& b) {
    long double sum = 0;
    for (size_t k = 0; k < a.size(); ++k)
      sum += static_cast<long double>(a[k]) * static_cast<long double>(b[k]);
    return sum;
  }

  static long double norm(const Vector& a) { return dot(a, a); }

  void orthogonalise(int i) {
    std::array<long double, 8> star{};  // the products with the orthogonal vectors
    square_[i] = norm(basis_[i]);
    for (int j = 0; j < i; ++j) {
      star[j] = dot(basis_[i], basis_[j]);
      for (int k = 0; k < j; ++k) star[j] -= mu_[j][k] * star[k];
      mu_[i][j] = star[j] / square_[j];
      square_[i] -= mu_[i][j] * star[j];
    }
    square_[i] = std::max(square_[i], 0x1p-62L * norm(basis_[i]));  // lost to cancellation
  }

  void size_reduce(int i) {
    for (bool changed = true; changed;) {
      changed = false;
      orthogonalise(i);
      for (int j = i - 1; j >= 0; --j) {
        if (std::abs(mu_[i][j]) <= 0.501L) continue;
        const long double q = std::round(mu_[i][j]);
        for (size_t k = 0; k < 8; ++k) basis_[i][k] -= static_cast<Integer>(q) * basis_[j][k];
        for (int k = 0; k < j; ++k) mu_[i][k] -= q * mu_[j][k];
        mu_[i][j] -= q;
        changed = true;
      }
    }
  }

  /// All vectors whose part beyond coordinate i is shorter than the best, up to the sign.
  void enumerate(int i, std::array<long double, 8>& c, long double part, long double& least) const {
    if (i < 0) {
      if (part > 0.5L) least = std::min(least, part);  // 0 is the zero vector
      return;
    }
    long double centre = 0;
    for (int j = i + 1; j < static_cast<int>(basis_.size()); ++j) centre -= c[j] * mu_[j][i];
    const long double reach = std::sqrt(std::max(0.0L, (least - part) / square_[i]));
    for (c[i] = std::ceil(centre - reach); c[i] <= centre + reach; ++c[i]) {
      const long double offset = c[i] - centre;
      enumerate(i - 1, c, part + offset * offset * square_[i], least);
    }
    c[i] = 0;
  }

  std::vector<Vector> basis_;
  std::array<std::array<long double, 8>, 8> mu_{};
  std::array<long double, 8> square_{};  // of the orthogonal vectors
};

/// The least of the normalised figures in dimensions 2 to 8: the length of the shortest vector of
/// the dual lattice over the largest that any lattice of this density can have (Hermite's
/// constants). The sum of the row's components is a single generator modulo the product of the
/// moduli, with the multiplier that the Chinese remainder theorem gives.
inline double worst_spectral_figure(const WhRow& row) {
  using Integer = Lattice::Integer;
  Integer modulus = 1;
  for (uint32_t m : row.m) modulus *= m;

  const auto power = [&](uint32_t n) {
    Integer sum = 0;
    for (int k = 0; k < 4; ++k) {
      const uint32_t m = row.m[k];
      const Integer others = modulus / m;
      const uint64_t inverse = power_mod(static_cast<uint32_t>(others % m), m - 2, m);
      sum += static_cast<Integer>(inverse * power_mod(row.a[k], n, m) % m) * others;
    }
    return sum % modulus;
  };

  const double hermite_power[] = {1, 4.0 / 3, 2, 4, 8, 64.0 / 3, 64, 256};  // gamma_t^t
  Lattice dual;
  dual.extend({modulus});
  double worst = 1;
  for (int t = 2; t <= 8; ++t) {
    Lattice::Vector v{-power(t - 1)};
    v[t - 1] = 1;
    dual.extend(v);
    const long double largest =
        std::pow(std::sqrt(hermite_power[t - 1]) * static_cast<long double>(modulus), 1.0L / t);
    worst = std::min(worst, static_cast<double>(dual.shortest_length() / largest));
  }
  return worst;
}

}  // namespace orv_search
