// SPDX-License-Identifier: MIT
// Powers modulo m by binary exponentiation, for generators that leapfrog or skip ahead. A 64-bit
// exponent comes as two words; exponent 0 gives 1 whatever the base and the modulus.
#include <orv/zok.h>
#include <string.h>

namespace orv {
namespace {

uint64_t join(uint32_t low, uint32_t high) { return static_cast<uint64_t>(high) << 32 | low; }

/// base^n, `result` being the one of the multiplication `product`.
template <class T, class Product>
T power(T base, uint64_t n, T result, Product product) {
  for (; n != 0; n >>= 1) {
    if ((n & 1) != 0) result = product(result, base);
    if (n > 1) base = product(base, base);
  }
  return result;
}

struct Matrix {
  uint32_t row[3][3];
};

Matrix product(const Matrix& a, const Matrix& b, uint32_t m) {
  Matrix c;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      uint64_t sum = 0;
      for (int k = 0; k < 3; ++k) {
        sum = (sum + static_cast<uint64_t>(a.row[i][k]) * b.row[k][j] % m) % m;
      }
      c.row[i][j] = static_cast<uint32_t>(sum);
    }
  }
  return c;
}

}  // namespace
}  // namespace orv

using namespace orv;

uint32_t __zokiPowMod(uint32_t a, uint32_t n_low, uint32_t n_high, uint32_t m) {
  const auto multiply = [m](uint32_t x, uint32_t y) {
    return static_cast<uint32_t>(static_cast<uint64_t>(x) * y % m);
  };
  return power<uint32_t>(a, join(n_low, n_high), 1, multiply);
}

uint32_t __zokiPowMod2P31M1(uint32_t a, uint32_t n_low, uint32_t n_high) {
  return __zokiPowMod(a, n_low, n_high, 0x7FFFFFFF);
}

uint64_t __zokiPowMod2P59(uint32_t a_low, uint32_t a_high, uint32_t n_low, uint32_t n_high) {
  const auto multiply = [](uint64_t x, uint64_t y) { return x * y & ((1ull << 59) - 1); };
  return power<uint64_t>(join(a_low, a_high), join(n_low, n_high), 1, multiply);
}

void __zokiVect3PowMod(uint32_t* v, const uint32_t* c, uint32_t m, uint32_t n_low,
                       uint32_t n_high) {
  const uint32_t one = 1 % m;
  const Matrix identity = {{{one, 0, 0}, {0, one, 0}, {0, 0, one}}};
  const Matrix base = {{{0, one, 0}, {0, 0, one}, {c[2] % m, c[1] % m, c[0] % m}}};
  const Matrix result = power(base, join(n_low, n_high), identity,
                              [m](const Matrix& a, const Matrix& b) { return product(a, b, m); });
  const Matrix column = {{{v[0] % m, 0, 0}, {v[1] % m, 0, 0}, {v[2] % m, 0, 0}}};
  const Matrix image = product(result, column, m);
  for (int i = 0; i < 3; ++i) v[i] = image.row[i][0];
}
