// SPDX-License-Identifier: MIT
// Niederreiter's sequence of points in up to 318 dimensions, or as many as a user has polynomials
// or direction numbers for (H. Niederreiter, Journal of Number Theory 30, 1988; the matrices as in
// P. Bratley, B. Fox and H. Niederreiter, ACM Transactions on Modeling and Computer Simulation 2,
// 1992). A request delivers point after point, the coordinates of each in their order, 2^32 - 2
// points at most.
#include "../_quasi/fractions.hpp"
#include "../_quasi/quasi_stream.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr int32_t most_dims = 318;

struct Record {
  Progress at;
  uint32_t X[most_dims];                     // the current point
  uint32_t V[most_dims][fraction_bits + 1];  // direction numbers, from the first bit on
};
static_assert(sizeof(StreamState) + sizeof(Record) == 43280);

// ---- What a copy of a state leaves out ----------------------------------------------------------

/// A copy leaves the last 318 words out, and with them the numbers from this one on. The words that
/// close the rows before, one for each, hold them as well.
constexpr int32_t first_uncopied = 308 * fraction_bits + 12;
constexpr int32_t uncopied = most_dims * fraction_bits - first_uncopied;
constexpr int32_t whole_rows = first_uncopied / fraction_bits;
static_assert(uncopied <= whole_rows);

/// Calls f(number, its second place) for each of them.
template <class F>
void for_uncopied(Record& state, F f) {
  for (int32_t i = 0; i < uncopied; ++i) {
    const int32_t place = first_uncopied + i;
    f(state.V[place / fraction_bits][place % fraction_bits], state.V[i][fraction_bits]);
  }
}

// ---- Direction numbers --------------------------------------------------------------------------

int degree_of(uint32_t polynomial) { return fraction_bits - 1 - __builtin_clz(polynomial); }

/// Without carries; the product has at most 64 bits.
uint64_t multiply(uint64_t a, uint32_t b) {
  uint64_t product = 0;
  for (; b != 0; b &= b - 1) product ^= a << __builtin_ctz(b);
  return product;
}

/// v(0), v(1), ... from the lowest bit on, for the power b of degree m that follows one of degree
/// `before`: zeros, ones from `before` on, and then what b makes of the m entries before.
uint64_t recurrent_bits(uint64_t b, int before, int m, int count) {
  uint64_t v = (uint64_t{1} << m) - (uint64_t{1} << before);
  const uint64_t low = b ^ uint64_t { 1 } << m;
  for (int r = 0; r + m < count; ++r) {
    v |= static_cast<uint64_t>(__builtin_parityll(v >> r & low)) << (r + m);
  }
  return v;
}

/// Bit r of row j becomes bit 31 - j of column r (H. Warren, Hacker's Delight).
void transpose(uint32_t* rows) {
  for (int j = 0; j < fraction_bits / 2; ++j) {
    const uint32_t row = rows[j];
    rows[j] = rows[fraction_bits - 1 - j];
    rows[fraction_bits - 1 - j] = row;
  }
  uint32_t mask = 0x0000FFFF;
  for (int width = 16; width != 0; width >>= 1, mask ^= mask << width) {
    for (int j = 0; j < fraction_bits; j = ((j | width) + 1) & ~width) {
      const uint32_t swapped = (rows[j] >> width ^ rows[j | width]) & mask;
      rows[j | width] ^= swapped;
      rows[j] ^= swapped << width;
    }
  }
}

/// The numbers of one dimension, from its polynomial of degree 1 to 31.
void make_numbers(uint32_t polynomial, uint32_t* v) {
  const int degree = degree_of(polynomial);
  uint64_t b = 1, bits = 0;
  int before = 0;
  for (int j = 0; j < fraction_bits; ++j) {
    const int remainder = j % degree;
    if (remainder == 0) {
      b = multiply(b, polynomial);
      bits = recurrent_bits(b, before, before + degree, degree + fraction_bits - 1);
      before += degree;
    }
    v[j] = static_cast<uint32_t>(bits >> remainder);
  }
  transpose(v);
}

/// What direction numbers are made of.
struct Maker {
  int32_t dim;
  const uint32_t* polynomials = uNiederrIrredPoly;
  const uint32_t* numbers = nullptr;  // all direction numbers, nothing to be made
  static constexpr bool keeps_chunk = false;

  /// Takes the user's data from seed words, if they are of a form that there is, long enough, and
  /// polynomials of degree 1 at least.
  bool read(uint64_t nseeds, const uint32_t* seeds) {
    const auto dims = static_cast<uint64_t>(dim);
    if (nseeds < 3 || seeds[1] != 1) return false;
    switch (seeds[2]) {
      case 1:
        polynomials = seeds + 3;
        return dims + 3 <= nseeds && all_have_degrees();
      case 4:
        numbers = seeds + 3;
        return fraction_bits * dims + 3 <= nseeds;
      default:
        return false;
    }
  }

  void make(int32_t d, uint32_t* v) const {
    if (numbers == nullptr) return make_numbers(polynomials[d], v);
    memcpy(v, numbers + static_cast<size_t>(d) * fraction_bits, fraction_bits * sizeof *v);
  }

 private:
  bool all_have_degrees() const {
    for (int32_t d = 0; d < dim; ++d) {
      if (polynomials[d] < 2) return false;
    }
    return true;
  }
};

// ---- Where tables lie ---------------------------------------------------------------------------

struct Tables {
  using State = Record;
  using Source = Maker;
  static constexpr int32_t most_dims = orv::most_dims;
  static constexpr uint32_t chunk_id = 10;

  /// Direction numbers, then the current point.
  static uint64_t chunk_bytes(uint64_t dim) { return uint64_t{4} * (fraction_bits + 1) * dim; }

  static Sequence in_record(Record& state) {
    return sequence(state, state.X, state.V[0], fraction_bits + 1);
  }
  static Sequence in_chunk(Record& state, uint32_t* words) {
    return sequence(state, words + size_t{fraction_bits} * state.at.Dim, words, fraction_bits);
  }

  static void filled(Record& state) {
    for_uncopied(state, [](uint32_t number, uint32_t& second) { second = number; });
  }
  static void opened(Record& state) {
    if (state.at.Dim <= whole_rows) return;
    for_uncopied(state, [](uint32_t& number, uint32_t second) { number = second; });
  }

 private:
  static Sequence sequence(Record& state, uint32_t* x, uint32_t* v, size_t row) {
    return {.at = &state.at,
            .dim = static_cast<int32_t>(state.at.Dim),
            .x = x,
            .v = v,
            .row = row,
            .transposed = nullptr,
            .transposed_row = 0,
            .transposed_bits = 0};
  }
};

}  // namespace
}  // namespace ORV_TAG
}  // namespace orv

using namespace orv;

int32_t __zokBRngNiederrInitStream(int32_t method, StreamState* stream, int32_t n,
                                   const uint32_t* params) {
  return begin_sequence<Tables>(method, stream, n, params);
}

int32_t __zoksBRngNiederr(StreamState* stream, int32_t n, float* r, float a, float b) {
  return draw<Tables>(stream, n, Fractions<float, Whole>(r, a, b));
}

int32_t __zokdBRngNiederr(StreamState* stream, int32_t n, double* r, double a, double b) {
  return draw<Tables>(stream, n, Fractions<double, Whole>(r, a, b));
}

int32_t __zokiBRngNiederr(StreamState* stream, int32_t n, uint32_t* r) {
  return draw<Tables>(stream, n, PlainWords(r));
}
