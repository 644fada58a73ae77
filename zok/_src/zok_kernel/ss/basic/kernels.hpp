// SPDX-License-Identifier: MIT
// One pass over the data, with running weighted means (West 1979). Per observation, with weight w,
// W the weights before it, r = 1 / (w + W) and f = W (w r):
//
//   S(j,k) += f (x_j - mean_j) (x_k - mean_k)   for j up to k, from the means before
//   mean_j  = r (W mean_j + w x_j)              and so for the raw moments, with x_j^2 to x_j^4
//
// Every element goes through these operations in this order, whatever the shape of the loops: its
// result does not depend on layout, on the number of variables or on the vectors' width.
//
// Observations go in blocks that stay in the nearest cache. Of a block, first the coefficients are
// computed, then the moments of a tile of variables at a time, which stay in registers, and last
// the cross-products, from the deviations that the mean's update leaves behind.
#pragma once

#include <string.h>

#include <type_traits>
#include <utility>

#include "../../../zok_sub_kernel/_service/lanes.hpp"
#include "kernel_table.hpp"

namespace orv {
inline namespace ORV_TAG {

inline constexpr intptr_t block_observations = 96;
/// Most elements of a block, but that it has one observation at least.
inline constexpr intptr_t block_elements = 4096;

/// The weights of a block's observations, and what follows from them.
template <class T>
struct Coefficients {
  using L = Lanes<T>;

  const T* w;  // where weights are not all 1
  alignas(32) T W[block_observations];
  alignas(32) T r[block_observations];
  alignas(32) T f[block_observations];

  /// All weights are 1. f is for cross-products.
  template <bool cross>
  void fill(intptr_t count, T* acc) {
    if (counts_exactly(acc, static_cast<T>(count))) {
      auto before = L::all(acc[0]) + L::steps();
      for (intptr_t i = 0; i < count; i += L::count, before += L::all(L::count)) {
        L::store(W + i, before);
        L::store(r + i, L::all(1) / (L::all(1) + before));
      }
      for (int k = 0; k < 4; ++k) acc[k] += static_cast<T>(count);
    } else {
      for (intptr_t i = 0; i < count; ++i) {
        W[i] = acc[0];
        for (int k = 0; k < 4; ++k) acc[k] += 1;
        r[i] = 1 / acc[0];
      }
    }
    for (intptr_t i = 0; cross && i < count; i += L::count) {
      L::store(f + i, L::load(r + i) * L::load(W + i));
    }
  }

  void fill(const T* weights, intptr_t count, T* acc) {
    w = weights;
    for (intptr_t i = 0; i < count; ++i) {
      const T weight = w[i], square = weight * weight;
      W[i] = acc[0];
      acc[0] += weight;
      acc[1] += square;
      acc[2] += square * weight;
      acc[3] += square * square;
      r[i] = 1 / acc[0];
      f[i] = W[i] * (weight * r[i]);
    }
  }

 private:
  /// Whether adding 1 to each sum, `count` times, makes no rounding error.
  static bool counts_exactly(const T* acc, T count) {
    constexpr T limit = sizeof(T) == 8 ? T(0x1p53) : T(0x1p24);
    for (int k = 0; k < 4; ++k) {
      const bool in_range = acc[k] >= 0 && acc[k] <= limit - count;
      if (!in_range || acc[k] != static_cast<T>(static_cast<int64_t>(acc[k]))) return false;
    }
    return true;
  }
};

/// A variable's deviation from its mean and f times it, for the observations of a block, one after
/// another; variables padded to whole vectors.
template <class T>
struct Deviations {
  intptr_t stride;
  alignas(32) T plain[block_elements];
  alignas(32) T scaled[block_elements];
};
/// Nothing, for kernels without cross-products.
struct NoDeviations {};

/// The running means of one tile: mean, raw 2, 3, 4.
template <class T>
struct Moments {
  T* of[4];
  Moments at(intptr_t variable) const {
    Moments moved = *this;
    for (T*& m : moved.of) m = m == nullptr ? m : m + variable;
    return moved;
  }
};

constexpr bool has_moment(unsigned parts, int which) { return (parts >> (3 - which)) & 1; }

/// Vectors of a tile, such that its moments stay in registers.
constexpr int tile_vectors(unsigned parts) {
#ifdef __x86_64__
  constexpr int for_moments[] = {4, 4, 3, 3, 3};
#else
  constexpr int for_moments[] = {3, 3, 2, 1, 1};
#endif
  return for_moments[__builtin_popcount(parts & all_moments)];
}

/// Some variables of a block of observations.
template <class T>
struct Tile {
  intptr_t count;   // observations
  const T* x;       // the first one
  intptr_t stride;  // from an observation to the next
  intptr_t ahead;   // to that of the next block, which is prefetched
  Moments<T> moments;
  intptr_t offset;  // of the first variable
};

/// Updates the moments of V vectors, the last with `width` lanes in use.
template <class T, unsigned parts, int V, class D>
[[gnu::noinline]] void update_tile(intptr_t width, const Coefficients<T>& c, const Tile<T>& tile,
                                   [[maybe_unused]] D& deviations) {
  using L = Lanes<T>;
  using Vector = typename L::Vector;
  constexpr bool cross = parts & cross_products;
  const __m256i last = L::first(width);
  const auto load = [&](const T* p, int v) {
    return v + 1 < V ? L::load(p + v * L::count) : L::load(p + v * L::count, last);
  };

  Vector m[4][V];
  for (int k = 0; k < 4; ++k) {
    if (!has_moment(parts, k) && !(cross && k == 0)) continue;
    for (int v = 0; v < V; ++v) m[k][v] = load(tile.moments.of[k], v);
  }
  const T* x = tile.x;
  const intptr_t count = tile.count, stride = tile.stride, ahead = tile.ahead;
  for (intptr_t i = 0; i < count; ++i, x += stride) {
    for (int v = 0; v < V; v += 2) _mm_prefetch(x + ahead + v * L::count, _MM_HINT_T0);
    const Vector W = L::broadcast(c.W + i), r = L::broadcast(c.r + i);
    const auto update = [&](Vector& moment, Vector power) {
      if (parts & weighted) power = L::broadcast(c.w + i) * power;
      moment = r * (W * moment + power);
    };
    for (int v = 0; v < V; ++v) {
      const Vector first = load(x, v);
      if constexpr (cross) {
        const intptr_t place = i * deviations.stride + tile.offset + v * L::count;
        const Vector d = first - m[0][v];
        L::store(deviations.plain + place, d);
        L::store(deviations.scaled + place, L::broadcast(c.f + i) * d);
      }
      const Vector second = first * first;
      if (has_moment(parts, 0)) update(m[0][v], first);
      if (has_moment(parts, 1)) update(m[1][v], second);
      if (has_moment(parts, 2)) update(m[2][v], second * first);
      if (has_moment(parts, 3)) update(m[3][v], second * second);
    }
  }
  for (int k = 0; k < 4; ++k) {
    if (!has_moment(parts, k)) continue;
    for (int v = 0; v + 1 < V; ++v) L::store(tile.moments.of[k] + v * L::count, m[k][v]);
    L::store(tile.moments.of[k] + (V - 1) * L::count, last, m[k][V - 1]);
  }
}

/// The same for `variables` that V vectors hold.
template <class T, unsigned parts, int V, class D>
void update_narrow_tile(intptr_t variables, const Coefficients<T>& c, const Tile<T>& tile,
                        D& deviations) {
  constexpr intptr_t others = (V - 1) * Lanes<T>::count;
  if constexpr (V > 1) {
    if (variables <= others) {
      return update_narrow_tile<T, parts, V - 1>(variables, c, tile, deviations);
    }
  }
  update_tile<T, parts, V>(variables - others, c, tile, deviations);
}

/// Adds a block's cross-products to a tile of S: V vectors of j from j0 on by K columns from k0 on.
template <class T, int V, int K>
void add_cross_tile(const Deviations<T>& d, intptr_t count, intptr_t j0, intptr_t k0,
                    intptr_t variables, intptr_t p, T* S) {
  using L = Lanes<T>;
  typename L::Vector sum[K][V];
  __m256i mask[K][V];
  T* place[K];
  for (int k = 0; k < K; ++k) {
    // The upper triangle only; columns beyond the matrix have no lane.
    const intptr_t column = k0 + k, lanes = column < variables ? column + 1 - j0 : 0;
    place[k] = S + (column < variables ? column * p + j0 : 0);
    for (int v = 0; v < V; ++v) {
      mask[k][v] = L::first(lanes - v * L::count);
      sum[k][v] = L::load(place[k] + v * L::count, mask[k][v]);
    }
  }
  const T* scaled = d.scaled + j0;
  const T* plain = d.plain + k0;
  for (intptr_t i = 0; i < count; ++i, scaled += d.stride, plain += d.stride) {
    typename L::Vector s[V];
    for (int v = 0; v < V; ++v) s[v] = L::load(scaled + v * L::count);
    for (int k = 0; k < K; ++k) {
      const auto other = L::broadcast(plain + k);
      for (int v = 0; v < V; ++v) sum[k][v] += s[v] * other;
    }
  }
  for (int k = 0; k < K; ++k) {
    for (int v = 0; v < V; ++v) L::store(place[k] + v * L::count, mask[k][v], sum[k][v]);
  }
}

template <class T>
[[gnu::noinline]] void add_cross_products(const Deviations<T>& d, intptr_t count,
                                          intptr_t variables, intptr_t p, T* S) {
#ifdef __x86_64__
  constexpr int V = 2;
#else
  constexpr int V = 1;
#endif
  constexpr int K = 4;  // divides the padding
  constexpr intptr_t lanes = Lanes<T>::count;
  for (intptr_t k0 = 0; k0 < variables; k0 += K) {
    const intptr_t end = k0 + K < variables ? k0 + K : variables;  // rows j of these columns
    intptr_t j0 = 0;
    for (; j0 + V * lanes <= end; j0 += V * lanes) {
      add_cross_tile<T, V, K>(d, count, j0, k0, variables, p, S);
    }
    for (; j0 < end; j0 += lanes) add_cross_tile<T, 1, K>(d, count, j0, k0, variables, p, S);
  }
}

/// The cross-products of one observation of more variables than a block holds. step: from variable
/// to variable.
template <class T>
void add_wide_cross_products(T f, const T* x, intptr_t step, const T* mean, intptr_t variables,
                             intptr_t p, T* S) {
  for (intptr_t k = 0; k < variables; ++k) {
    const T other = x[k * step] - mean[k];
    for (intptr_t j = 0; j <= k; ++j) S[k * p + j] += f * (x[j * step] - mean[j]) * other;
  }
}

/// Whole vectors of either precision, and whole tiles of columns.
constexpr intptr_t padded(intptr_t variables) { return (variables + 7) / 8 * 8; }

/// Observations of a block, where a row of it has `stride` elements.
inline intptr_t block_length(intptr_t stride) {
  const intptr_t fitting = block_elements / stride;
  return fitting < 1 ? 1 : fitting < block_observations ? fitting : block_observations;
}

template <class T, unsigned parts>
int32_t basic_kernel(intptr_t first, intptr_t end, intptr_t n, intptr_t first_variable,
                     intptr_t end_variable, intptr_t p, const T* x, const T* weights, void*, T* acc,
                     T* mean, T* raw2, T* raw3, T* raw4, T* S) {
  constexpr bool cross = parts & cross_products, columns = parts & column_layout;
  constexpr unsigned update = parts & ~unsigned(column_layout);
  if (parts & weighted) {
    while (first < end && !(weights[first] > 0)) ++first;
  }
  if constexpr (update == 0) {
    for (int k = 0; k < 4; ++k) acc[k] += static_cast<T>(end - first);
    return 0;
  }

  // From observation to observation, and from variable to variable.
  const intptr_t step = columns ? p : 1, variable_step = columns ? 1 : n;
  const intptr_t variables = end_variable - first_variable, stride = padded(variables);
  constexpr intptr_t tile = tile_vectors(parts) * Lanes<T>::count;
  const intptr_t block = block_length(stride);
  const bool wide = stride > block_elements;

  Coefficients<T> c;
  std::conditional_t<cross, Deviations<T>, NoDeviations> deviations;
  if constexpr (cross) deviations.stride = stride;
  alignas(32) T gathered[columns ? 1 : block_observations * tile];
  T sums[4] = {acc[0], acc[1], acc[2], acc[3]};
  x += first_variable * variable_step;
  S += cross ? first_variable * (p + 1) : 0;
  const Moments<T> moments = Moments<T>{{mean, raw2, raw3, raw4}}.at(first_variable);

  for (; first < end; first += block) {
    const intptr_t count = end - first < block ? end - first : block;
    if (parts & weighted) {
      c.fill(weights + first, count, sums);
    } else {
      c.template fill<cross>(count, sums);
    }
    const T* const block_x = x + first * step;
    if (cross && wide) {
      add_wide_cross_products(c.f[0], block_x, variable_step, moments.of[0], variables, p, S);
    }
    for (intptr_t j = 0; j < variables; j += tile) {
      const intptr_t width = variables - j < tile ? variables - j : tile;
      const T* tile_x = block_x + j;
      if (!columns) {
        gather_rows(block_x + j * n, n, width, count, gathered, tile);
        tile_x = gathered;
      }
      const Tile<T> t{count,         tile_x, columns ? step : tile, columns ? block * step : 0,
                      moments.at(j), j};
      if (cross && wide) {
        NoDeviations none;
        update_narrow_tile<T, update & ~unsigned(cross_products), tile_vectors(parts)>(width, c, t,
                                                                                       none);
      } else {
        update_narrow_tile<T, update, tile_vectors(parts)>(width, c, t, deviations);
      }
    }
    if constexpr (cross) {
      if (!wide) add_cross_products(deviations, count, variables, p, S);
    }
  }
  memcpy(acc, sums, sizeof sums);
  return 0;
}

template <class T>
struct KernelTable {
  Kernel<T> kernel[kernel_count];
};

template <class T, unsigned... parts>
constexpr KernelTable<T> make_kernels(std::integer_sequence<unsigned, parts...>) {
  return {{basic_kernel<T, parts>...}};
}

}  // namespace ORV_TAG
}  // namespace orv
