// Sobol's sequence of points in up to 40 dimensions, or as many as a user has direction numbers for
// (I. Sobol, USSR Computational Mathematics and Mathematical Physics 7, 1967). A request delivers
// point after point, the coordinates of each in their order, 2^32 - 2 points at most.
#include "../_quasi/fractions.hpp"
#include "../_quasi/gray_code.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr int32_t most_dims = 40;
constexpr uint32_t chunk_id = 9;

struct State {
  Progress at;
  uint32_t X[most_dims];                     // the current point
  uint32_t V[most_dims][fraction_bits + 1];  // direction numbers, from the first bit on
  uint32_t VT[fraction_bits][most_dims];     // the same, transposed
};
static_assert(sizeof(StreamState) + sizeof(State) == 10592);

/// A copy of a state leaves its last 40 words out, the row of VT for the last bit. These are taken
/// from V.
constexpr int transposed_bits = fraction_bits - 1;

// ---- Direction numbers --------------------------------------------------------------------------

/// What direction numbers are made of.
struct Source {
  int32_t dim;
  int32_t first = 1;                      // the first dimension that has a polynomial
  const uint32_t* polynomials = nullptr;  // null: those that are built in
  const uint32_t* initial = nullptr;      // rows of initial numbers; null: those that are built in
  uint64_t initial_row = 0;
  const uint32_t* numbers = nullptr;  // all direction numbers, nothing to be made
  bool keeps_chunk = false;

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

/// Takes the user's data from seed words, if they are of a form that there is and long enough.
bool read_user_form(Source* source, uint64_t nseeds, const uint32_t* seeds) {
  const auto dim = static_cast<uint64_t>(source->dim);
  const bool fits = dim <= most_dims;
  const auto rows = [&](uint64_t count, uint64_t length_at) {
    if (nseeds <= length_at) return false;
    source->initial = seeds + length_at + 1;
    source->initial_row = seeds[length_at];
    return count * source->initial_row + length_at + 1 <= nseeds;
  };
  if (nseeds < 4 || seeds[1] != 1) return false;
  const uint32_t form = seeds[2];
  if (form != 2) source->polynomials = seeds + 3;
  source->keeps_chunk = form > 2;
  switch (form) {
    case 1:
      return fits && dim + 2 <= nseeds;
    case 2:
      return fits && rows(dim - 1, 3);
    case 3:
      return rows(dim - 1, dim + 2);
    case 11:
      source->first = 0;
      return rows(dim, dim + 3);
    case 4:
      source->numbers = seeds + 3;
      return fraction_bits * dim + 3 <= nseeds;
    default:
      return false;
  }
}

Source read_seeds(int32_t nseeds, const uint32_t* seeds) {
  const auto asked = nseeds < 1 ? 1 : static_cast<int32_t>(seeds[0]);
  Source source = {.dim = asked < 1 ? 1 : asked};
  if (nseeds > 0 && read_user_form(&source, static_cast<uint64_t>(nseeds), seeds)) return source;
  return {.dim = source.dim > most_dims ? 1 : source.dim};
}

// ---- Where tables lie ---------------------------------------------------------------------------

/// The tables of a user's dimensions in a chunk: the direction numbers, then the current point and
/// the transposed numbers in rows that may be read beyond their end.
struct ChunkLayout {
  explicit ChunkLayout(uint64_t dim)
      : point(fraction_bits * dim), row(dim + 32 - (4 * dim & 31)), transposed(point + row) {}

  uint64_t bytes() const { return 4 * (transposed + fraction_bits * row); }

  uint64_t point, row, transposed;  // in words
};

Sequence in_record(State& state) {
  return {&state.at,         static_cast<int32_t>(state.at.Dim),
          state.X,           state.V[0],
          fraction_bits + 1, state.VT[0],
          most_dims,         transposed_bits};
}

Sequence in_chunk(State& state, uint32_t* words) {
  const ChunkLayout layout(state.at.Dim);
  return {&state.at,
          static_cast<int32_t>(state.at.Dim),
          words + layout.point,
          words,
          fraction_bits,
          words + layout.transposed,
          static_cast<size_t>(layout.row),
          transposed_bits};
}

/// Fills the tables of a sequence that stands at its first point.
void fill(const Source& source, const Sequence& s) {
  auto* const v = const_cast<uint32_t*>(s.v);
  auto* const transposed = const_cast<uint32_t*>(s.transposed);
  for (int32_t d = 0; d < s.dim; ++d) {
    uint32_t* const numbers = v + static_cast<size_t>(d) * s.row;
    source.make(d, numbers);
    for (int j = 0; j < fraction_bits; ++j) {
      transposed[static_cast<size_t>(j) * s.transposed_row + d] = numbers[j];
    }
    s.x[d] = numbers[0];
  }
}

struct Sobol {
  /// Up to 40 dimensions the record has all that is needed, chunk or not: other uses of a stream
  /// may delete its chunks.
  static int32_t open(StreamState* stream, Sequence* s) {
    auto& state = state_of<State>(stream);
    if (!is_sound(state.at)) return RNG_BAD_FILE_FORMAT;
    if (state.at.Dim <= most_dims) {
      *s = in_record(state);
      return RNG_OK;
    }
    uint32_t* words;
    const uint64_t bytes = ChunkLayout(state.at.Dim).bytes();
    const int32_t status = open_chunk(stream, chunk_id, bytes, &words);
    if (status == RNG_OK) *s = in_chunk(state, words);
    return status;
  }

  static int32_t seed(StreamState* stream, int32_t nseeds, const uint32_t* seeds) {
    const Source source = read_seeds(nseeds, seeds);
    auto& state = state_of<State>(stream);
    memset(&state, 0, sizeof state);
    state.at = at_first_point(static_cast<uint32_t>(source.dim));
    if (source.dim <= most_dims) fill(source, in_record(state));
    if (!source.keeps_chunk) return RNG_OK;
    uint32_t* words;
    const uint64_t bytes = ChunkLayout(state.at.Dim).bytes();
    const int32_t status = add_chunk(stream, chunk_id, bytes, &words);
    if (status == RNG_OK) fill(source, in_chunk(state, words));
    return status;
  }
};

}  // namespace
}  // namespace ORV_TAG
}  // namespace orv

using namespace orv;

int32_t __zokBRngSobolInitStream(int32_t method, StreamState* stream, int32_t n,
                                 const uint32_t* params) {
  return begin_sequence<Sobol>(method, stream, n, params);
}

int32_t __zoksBRngSobol(StreamState* stream, int32_t n, float* r, float a, float b) {
  return draw<Sobol>(stream, n, Fractions<float, Halved>(r, a, b));
}

int32_t __zokdBRngSobol(StreamState* stream, int32_t n, double* r, double a, double b) {
  return draw<Sobol>(stream, n, Fractions<double, Halved>(r, a, b));
}

int32_t __zokiBRngSobol(StreamState* stream, int32_t n, uint32_t* r) {
  return draw<Sobol>(stream, n, PlainWords(r));
}
