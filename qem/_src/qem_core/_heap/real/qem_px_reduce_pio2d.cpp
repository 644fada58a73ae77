// Reduction of any finite double by pi/2 (M. Payne and R. Hanek, 1983): the significand times those
// bits of 2/pi that matter for its exponent. Bits further up make whole turns, bits further down
// change nothing: no double comes closer to a multiple of pi/2 than 2^-62 of its quadrant, and 190
// bits behind the point are computed.
#include <orv/qem.h>
#include <stdint.h>

#include "../../simd/exact.hpp"
#include "tables/two_over_pi.hpp"

using namespace orv;

namespace {

constexpr int words = 6;
constexpr int padding = 64;  // zeros in front of the table's bits

/// 192 bits, the lowest word first.
struct Fixed {
  uint32_t word[words];
};

/// 192 bits of the table, `first` being the place of the uppermost one.
Fixed bits_from(int first) {
  Fixed bits;
  const int index = first / 32, shift = first % 32;
  for (int k = 0; k < words; ++k) {
    const uint64_t two =
        static_cast<uint64_t>(two_over_pi[index + k]) << 32 | two_over_pi[index + k + 1];
    bits.word[words - 1 - k] = static_cast<uint32_t>(two << shift >> 32);
  }
  return bits;
}

/// The low 192 bits of a product.
Fixed product(const Fixed& a, uint64_t m) {
  Fixed r = {};
  for (int part = 0; part < 2; ++part) {
    const uint64_t factor = static_cast<uint32_t>(m >> 32 * part);
    uint64_t carry = 0;
    for (int k = 0; k + part < words; ++k) {
      carry += a.word[k] * factor + r.word[k + part];
      r.word[k + part] = static_cast<uint32_t>(carry);
      carry >>= 32;
    }
  }
  return r;
}

Fixed negated(const Fixed& a) {
  Fixed r;
  uint64_t carry = 1;
  for (int k = 0; k < words; ++k) {
    carry += static_cast<uint32_t>(~a.word[k]);
    r.word[k] = static_cast<uint32_t>(carry);
    carry >>= 32;
  }
  return r;
}

/// An unsigned fraction of 2^192, in two parts.
TwoParts<double> as_fraction(const Fixed& a) {
  TwoParts<double> f = {0, 0};
  double unit = 0x1p-32;
  for (int k = words - 1; k >= 0; --k, unit *= 0x1p-32) {
    const TwoParts<double> s = exact_sum_ordered(f.hi, a.word[k] * unit);
    f = {s.hi, f.lo + s.lo};
  }
  return exact_sum_ordered(f.hi, f.lo);
}

}  // namespace

int32_t orv_qem_kernel_reduce_pio2d(double x, double* out) {
  constexpr TwoParts<double> pio2 = {0x1.921FB54442D18p0, 0x1.1A62633145C07p-54};
  const uint64_t bits = bits_of(x) & ~0ull >> 1;
  const int exponent = static_cast<int>(bits >> 52) - 1075;  // of the significand's lowest bit
  const uint64_t significand = (bits & ~0ull >> 12) | 1ull << 52;
  // The product has two bits before the point, the quadrant, when the uppermost bit taken of 2/pi
  // is the one that makes 2 with the lowest bit of the significand.
  Fixed turn = product(bits_from(padding + exponent - 2), significand);
  uint32_t quadrant = turn.word[words - 1] >> 30;
  for (int k = words - 1; k > 0; --k) turn.word[k] = turn.word[k] << 2 | turn.word[k - 1] >> 30;
  turn.word[0] <<= 2;
  const bool past_half = turn.word[words - 1] >> 31 != 0;  // then the next quadrant is nearer
  if (past_half) turn = negated(turn), ++quadrant;

  const TwoParts<double> f = as_fraction(turn);
  const TwoParts<double> p = exact_product(Halves(f.hi), Halves(pio2.hi));
  const TwoParts<double> r = exact_sum_ordered(p.hi, p.lo + (f.hi * pio2.lo + f.lo * pio2.hi));
  const bool negative = bits_of(x) >> 63 != 0;
  const double sign = past_half != negative ? -1 : 1;
  out[0] = sign * r.hi, out[1] = sign * r.lo;
  return static_cast<int32_t>((negative ? 0 - quadrant : quadrant) & 3);
}
