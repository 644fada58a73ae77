// Niederreiter's sequence of points in up to 318 dimensions, or as many as a user has polynomials
// or direction numbers for (H. Niederreiter, Journal of Number Theory 30, 1988; the matrices as in
// P. Bratley, B. Fox and H. Niederreiter, ACM Transactions on Modeling and Computer Simulation 2,
// 1992). A request delivers point after point, the coordinates of each in their order, 2^32 - 2
// points at most.
#include "../_quasi/fractions.hpp"
#include "../_quasi/gray_code.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr int32_t most_dims = 318;
constexpr uint32_t chunk_id = 10;

struct State {
  Progress at;
  uint32_t X[most_dims];                     // the current point
  uint32_t V[most_dims][fraction_bits + 1];  // direction numbers, from the first bit on
};
static_assert(sizeof(StreamState) + sizeof(State) == 43280);

// ---- What a copy of a state leaves out ----------------------------------------------------------

/// A copy leaves the last 318 words out, and with them the numbers from this one on. The words that
/// close the rows before, one for each, hold them as well.
constexpr int32_t first_uncopied = 308 * fraction_bits + 12;
constexpr int32_t uncopied = most_dims * fraction_bits - first_uncopied;
constexpr int32_t whole_rows = first_uncopied / fraction_bits;
static_assert(uncopied <= whole_rows);

/// Calls f(number, its second place) for each of them.
template <class F>
void for_uncopied(State& state, F f) {
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
struct Source {
  int32_t dim;
  const uint32_t* polynomials = uNiederrIrredPoly;
  const uint32_t* numbers = nullptr;  // all direction numbers, nothing to be made

  void make(int32_t d, uint32_t* v) const {
    if (numbers == nullptr) return make_numbers(polynomials[d], v);
    memcpy(v, numbers + static_cast<size_t>(d) * fraction_bits, fraction_bits * sizeof *v);
  }
};

/// Takes the user's data from seed words, if they are of a form that there is, long enough, and
/// polynomials of degree 1 at least.
bool read_user_form(Source* source, uint64_t nseeds, const uint32_t* seeds) {
  const auto dim = static_cast<uint64_t>(source->dim);
  if (nseeds < 3 || seeds[1] != 1) return false;
  switch (seeds[2]) {
    case 1:
      if (dim + 3 > nseeds) return false;
      source->polynomials = seeds + 3;
      for (int32_t d = 0; d < source->dim; ++d) {
        if (source->polynomials[d] < 2) return false;
      }
      return true;
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

/// The chunk of more dimensions: their direction numbers, then the current point.
uint64_t chunk_bytes(uint64_t dim) { return 4 * (fraction_bits + 1) * dim; }

Sequence sequence_in(State& state, uint32_t* x, uint32_t* v, size_t row) {
  return {&state.at, static_cast<int32_t>(state.at.Dim), x, v, row, nullptr, 0, 0};
}
Sequence in_record(State& state) {
  return sequence_in(state, state.X, state.V[0], fraction_bits + 1);
}
Sequence in_chunk(State& state, uint32_t* words) {
  return sequence_in(state, words + size_t{fraction_bits} * state.at.Dim, words, fraction_bits);
}

/// Fills the tables of a sequence that stands at its first point.
void fill(const Source& source, const Sequence& s) {
  auto* const v = const_cast<uint32_t*>(s.v);
  for (int32_t d = 0; d < s.dim; ++d) {
    uint32_t* const numbers = v + static_cast<size_t>(d) * s.row;
    source.make(d, numbers);
    s.x[d] = numbers[0];
  }
}

struct Niederr {
  static int32_t open(StreamState* stream, Sequence* s) {
    auto& state = state_of<State>(stream);
    if (!is_sound(state.at)) return RNG_BAD_FILE_FORMAT;
    if (state.at.Dim <= most_dims) {
      if (state.at.Dim > whole_rows) {
        for_uncopied(state, [](uint32_t& number, uint32_t second) { number = second; });
      }
      *s = in_record(state);
      return RNG_OK;
    }
    uint32_t* words;
    const int32_t status = open_chunk(stream, chunk_id, chunk_bytes(state.at.Dim), &words);
    if (status == RNG_OK) *s = in_chunk(state, words);
    return status;
  }

  static int32_t seed(StreamState* stream, int32_t nseeds, const uint32_t* seeds) {
    const Source source = read_seeds(nseeds, seeds);
    auto& state = state_of<State>(stream);
    memset(&state, 0, sizeof state);
    state.at = at_first_point(static_cast<uint32_t>(source.dim));
    if (source.dim <= most_dims) {
      fill(source, in_record(state));
      for_uncopied(state, [](uint32_t number, uint32_t& second) { second = number; });
      return RNG_OK;
    }
    uint32_t* words;
    const int32_t status = add_chunk(stream, chunk_id, chunk_bytes(state.at.Dim), &words);
    if (status == RNG_OK) fill(source, in_chunk(state, words));
    return status;
  }
};

}  // namespace
}  // namespace ORV_TAG
}  // namespace orv

using namespace orv;

int32_t __zokBRngNiederrInitStream(int32_t method, StreamState* stream, int32_t n,
                                   const uint32_t* params) {
  return begin_sequence<Niederr>(method, stream, n, params);
}

int32_t __zoksBRngNiederr(StreamState* stream, int32_t n, float* r, float a, float b) {
  return draw<Niederr>(stream, n, Fractions<float, Whole>(r, a, b));
}

int32_t __zokdBRngNiederr(StreamState* stream, int32_t n, double* r, double a, double b) {
  return draw<Niederr>(stream, n, Fractions<double, Whole>(r, a, b));
}

int32_t __zokiBRngNiederr(StreamState* stream, int32_t n, uint32_t* r) {
  return draw<Niederr>(stream, n, PlainWords(r));
}
