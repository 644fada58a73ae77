// SPDX-License-Identifier: MIT
#include "points.hpp"

#include <orv/zok.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <type_traits>

#include "error.hpp"

namespace orv_cli {
namespace {

struct Kind {
  std::string_view name, generator;
  int32_t most_dims;
};
constexpr Kind point_kinds[] = {{sobol_kind, "Sobol", 40}, {niederreiter_kind, "Niederr", 318}};

const Kind* find_kind(std::string_view name) {
  const auto* found = std::ranges::find(point_kinds, name, &Kind::name);
  return found == std::end(point_kinds) ? nullptr : found;
}

int32_t uniform(StreamState* stream, int32_t n, double* r) {
  return _zokdRngUniform(RNG_ACCURATE, stream, n, r, 0, 1);
}
int32_t uniform(StreamState* stream, int32_t n, float* r) {
  return _zoksRngUniform(RNG_ACCURATE, stream, n, r, 0, 1);
}

}  // namespace

bool makes_points(std::string_view kind) { return find_kind(kind) != nullptr; }

Points::Points(std::string_view kind, const Option& dim, const Option& shift, const Option& skip) {
  constexpr int64_t most_skipped = 0xFFFFFFFD;
  const Kind& row = *find_kind(kind);
  dim_ = static_cast<int32_t>(whole_number("--dim", dim.value_or("2"), 1, row.most_dims));
  stream_ = new_stream(std::string(row.generator), std::to_string(dim_));
  if (skip) {
    const int64_t points = whole_number("--skip", *skip, 0, most_skipped);
    check(__zokSkipAheadStream(stream_.get(), points * dim_), "--skip " + in_quotes(*skip));
  }
  if (!shift) return;
  const int64_t seed = whole_number("--shift", *shift, 0, std::numeric_limits<uint32_t>::max());
  shift_.resize(static_cast<size_t>(dim_));
  const Stream source = new_stream("MT19937", std::to_string(seed));
  check(_zokiRngUniformBits(0, source.get(), dim_, shift_.data()), "--shift");
}

template <class T>
int32_t Points::draw(int32_t n, T* r) {
  const int32_t count = n * dim_;
  if (shift_.empty()) return uniform(stream_.get(), count, r);
  std::vector<uint32_t> words(static_cast<size_t>(count));
  const int32_t status = _zokiRngUniformBits(0, stream_.get(), count, words.data());
  for (size_t i = 0; i < words.size(); ++i) {
    r[i] = static_cast<T>((words[i] ^ shift_[i % shift_.size()]) * 0x1p-32);
  }
  return status;
}

template int32_t Points::draw(int32_t, double*);
template int32_t Points::draw(int32_t, float*);

}  // namespace orv_cli
