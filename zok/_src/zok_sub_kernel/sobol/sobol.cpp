// SPDX-License-Identifier: MIT
// Sobol's sequence of points in up to 40 dimensions, or as many as a user has direction numbers for
// (I. Sobol, USSR Computational Mathematics and Mathematical Physics 7, 1967). A request delivers
// point after point, the coordinates of each in their order, 2^32 - 2 points at most.
#include "../_quasi/fractions.hpp"
#include "../_quasi/quasi_stream.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr int32_t most_dims = 40;

struct Record {
  Progress at;
  uint32_t X[most_dims];                     // the current point
  uint32_t V[most_dims][fraction_bits + 1];  // direction numbers, from the first bit on
  uint32_t VT[fraction_bits][most_dims];     // the same, transposed
};
static_assert(sizeof(StreamState) + sizeof(Record) == 10592);

/// A copy of a state leaves its last 40 words out, the row of VT for the last bit. These are taken
/// from V.
constexpr int transposed_bits = fraction_bits - 1;

// ---- Direction numbers --------------------------------------------------------------------------

/// What direction numbers are made of.
struct Maker {
  int32_t dim;
  int32_t first = 1;                      // the first dimension that has a polynomial
  const uint32_t* polynomials = nullptr;  // null: those that are built in
  const uint32_t* initial = nullptr;      // rows of initial numbers; null: those that are built in
  uint64_t initial_row = 0;
  const uint32_t* numbers = nullptr;  // all direction numbers, nothing to be made
  bool keeps_chunk = false;

  /// Takes the user's data from seed words, if they are of a form that there is and long enough.
  bool read(uint64_t nseeds, const uint32_t* seeds) {
    if (nseeds < 4 || seeds[1] != 1) return false;
    const uint32_t form = seeds[2];
    const auto dims = static_cast<uint64_t>(dim);
    const bool fits = dims <= most_dims;
    if (form != 2) polynomials = seeds + 3;
    keeps_chunk = form > 2;
    switch (form) {
      case 1:
        return fits && dims + 2 <= nseeds;
      case 2:
        return fits && read_rows(dims - 1, 3, nseeds, seeds);
      case 3:
        return read_rows(dims - 1, dims + 2, nseeds, seeds);
      case 11:
        first = 0;
        return read_rows(dims, dims + 3, nseeds, seeds);
      case 4:
        numbers = seeds + 3;
        return fraction_bits * dims + 3 <= nseeds;
      default:
        return false;
    }
  }

  /// The direction numbers of dimension d.
  void make(int32_t d, uint32_t* v) const {
    if (numbers != nullptr) {
      memcpy(v, numbers + static_cast<size_t>(d) * fraction_bits, fraction_bits * sizeof *v);
      return;
    }
    uint32_t m[fraction_bits];
    const uint32_t polynomial = d < first ? 1 : polynomial_of(d);
    const int degree = polynomial == 0 ? 0 : fraction_bits - 1 - __builtin_clz(polynomial);
    for (int j = 0; j < fraction_bits; ++j) {
      m[j] = j < degree ? initial_number(d, j) : follow(m + j, polynomial, degree);
      v[j] = m[j] << (fraction_bits - 1 - j);
    }
  }

 private:
  /// Rows of initial numbers, after the word that has their length.
  bool read_rows(uint64_t count, uint64_t length_at, uint64_t nseeds, const uint32_t* seeds) {
    if (nseeds <= length_at) return false;
    initial = seeds + length_at + 1;
    initial_row = seeds[length_at];
    return count * initial_row + length_at + 1 <= nseeds;
  }

  uint32_t polynomial_of(int32_t d) const {
    return polynomials != nullptr ? polynomials[d - first] : uSobolIrredPoly[d - 1];
  }

  /// Where a row ends early its numbers go on as 1, which is good for any bit.
  uint32_t initial_number(int32_t d, int j) const {
    if (initial != nullptr) {
      const uint64_t place =
          static_cast<uint64_t>(d - first) * initial_row + static_cast<uint64_t>(j);
      return static_cast<uint64_t>(j) < initial_row ? initial[place] : 1;
    }
    const bool given = d > 0 && j < iSobolIrredPolyDeg[d - 1];
    return given ? uSobolMInit[d - 1][j] : 1;
  }

  /// The number that follows those before m. Without a recurrence all are 1.
  static uint32_t follow(const uint32_t* m, uint32_t polynomial, int degree) {
    if (degree == 0) return 1;
    uint32_t next = m[-degree];
    for (int k = degree; k >= 1; --k) {
      if (polynomial >> (degree - k) & 1) next ^= m[-k] << k;
    }
    return next;
  }
};

// ---- Where tables lie ---------------------------------------------------------------------------

/// The tables of a user's dimensions in a chunk: the direction numbers, then rows of the current
/// point and of the transposed numbers, all padded alike.
struct ChunkLayout {
  explicit ChunkLayout(uint64_t dim)
      : point(fraction_bits * dim), row(dim + 32 - (4 * dim & 31)), transposed(point + row) {}

  uint64_t bytes() const { return 4 * (transposed + fraction_bits * row); }

  uint64_t point, row, transposed;  // in words
};

struct Tables {
  using State = Record;
  using Source = Maker;
  static constexpr int32_t most_dims = orv::most_dims;
  static constexpr uint32_t chunk_id = 9;

  static uint64_t chunk_bytes(uint64_t dim) { return ChunkLayout(dim).bytes(); }

  static Sequence in_record(Record& state) {
    return {.at = &state.at,
            .dim = static_cast<int32_t>(state.at.Dim),
            .x = state.X,
            .v = state.V[0],
            .row = fraction_bits + 1,
            .transposed = state.VT[0],
            .transposed_row = most_dims,
            .transposed_bits = transposed_bits};
  }

  static Sequence in_chunk(Record& state, uint32_t* words) {
    const ChunkLayout layout(state.at.Dim);
    return {.at = &state.at,
            .dim = static_cast<int32_t>(state.at.Dim),
            .x = words + layout.point,
            .v = words,
            .row = fraction_bits,
            .transposed = words + layout.transposed,
            .transposed_row = static_cast<size_t>(layout.row),
            .transposed_bits = transposed_bits};
  }

  static void filled(Record&) {}
  static void opened(Record&) {}
};

}  // namespace
}  // namespace ORV_TAG
}  // namespace orv

using namespace orv;

int32_t __zokBRngSobolInitStream(int32_t method, StreamState* stream, int32_t n,
                                 const uint32_t* params) {
  return begin_sequence<Tables>(method, stream, n, params);
}

int32_t __zoksBRngSobol(StreamState* stream, int32_t n, float* r, float a, float b) {
  return draw<Tables>(stream, n, Fractions<float, Halved>(r, a, b));
}

int32_t __zokdBRngSobol(StreamState* stream, int32_t n, double* r, double a, double b) {
  return draw<Tables>(stream, n, Fractions<double, Halved>(r, a, b));
}

int32_t __zokiBRngSobol(StreamState* stream, int32_t n, uint32_t* r) {
  return draw<Tables>(stream, n, PlainWords(r));
}
