// SPDX-License-Identifier: MIT
// Multivariate Gaussian vectors T x + a, x being standard deviates and T a lower triangular factor
// of the covariance.
//
// The product is the library's own, not BLAS's, whose kernels and last bits are the processor's:
//
//   y(j) = (t(j, 0) x(0) + t(j, 1) x(1) + ... + t(j, j) x(j)) + a(j), from left to right,
//
// each operation rounded once. A tile of vectors is turned so that each lane holds one of them. A
// micro-kernel then makes `rows` elements of all its vectors in registers, from the last element
// up: the sums need what stands above only, so they may replace the x they are made of.
#include "../../../zok_sub_kernel/_service/chunk.hpp"
#include "../../../zok_sub_kernel/_service/lanes.hpp"
#include "../_service/entries.hpp"

using namespace orv;

namespace {

constexpr int32_t most_vectors = 2;      // of lanes in a tile
constexpr int32_t rows = 4;              // of the factor at a time
constexpr int64_t most_deviates = 1024;  // drawn at once, or a tile if that is more
constexpr int32_t local_dim = 1024;      // below this a tile has room on the stack

template <class T, int vectors = most_vectors>
inline constexpr int32_t tile_width = vectors* Lanes<T>::count;

/// Row by row; what stands above the diagonal is not read.
template <class T>
struct Full {
  const T* t;
  int64_t dim;

  /// The address of t(j, c), and the way from there to the next row and the next column.
  const T* at(int64_t j, int64_t c) const { return t + j * dim + c; }
  int64_t down() const { return dim; }
  int64_t right(int64_t) const { return 1; }
};

/// The lower triangle column by column.
template <class T>
struct Packed {
  const T* t;
  int64_t dim;

  const T* at(int64_t j, int64_t c) const { return t + c * dim - c * (c - 1) / 2 + (j - c); }
  int64_t down() const { return 1; }
  int64_t right(int64_t c) const { return dim - c - 1; }
};

/// Elements j to j + height - 1 of a tile's vectors, x and the result.
template <int vectors, int height, class T, class Factor>
void multiply_rows(const Factor& factor, int64_t j, T* tile, const T* a) {
  using L = Lanes<T>;
  constexpr int32_t width = tile_width<T, vectors>;
  typename L::Vector sum[height][vectors];
  const T* t = factor.at(j, 0);
  const int64_t down = factor.down();
  for (int v = 0; v < vectors; ++v) {
    const auto x = L::load(tile + v * L::count);
#pragma GCC unroll 4
    for (int i = 0; i < height; ++i) sum[i][v] = L::broadcast(t + i * down) * x;
  }
  t += factor.right(0);
  const T* x = tile + width;
  for (int64_t c = 1; c <= j; ++c, x += width) {
    typename L::Vector x_c[vectors];
#pragma GCC unroll 2
    for (int v = 0; v < vectors; ++v) x_c[v] = L::load(x + v * L::count);
#pragma GCC unroll 4
    for (int i = 0; i < height; ++i) {
      const auto t_ic = L::broadcast(t + i * down);
#pragma GCC unroll 2
      for (int v = 0; v < vectors; ++v) sum[i][v] = sum[i][v] + t_ic * x_c[v];
    }
    t += factor.right(c);
  }
  // The triangle under the diagonal.
  for (int64_t c = j + 1; c < j + height; ++c) {
    for (int64_t i = c - j; i < height; ++i) {
      const auto t_ic = L::broadcast(factor.at(j + i, c));
      for (int v = 0; v < vectors; ++v) {
        sum[i][v] = sum[i][v] + t_ic * L::load(tile + c * width + v * L::count);
      }
    }
  }
  for (int i = 0; i < height; ++i) {
    for (int v = 0; v < vectors; ++v) {
      L::store(tile + (j + i) * width + v * L::count, sum[i][v] + L::broadcast(a + j + i));
    }
  }
}

/// T x + a for the vectors of a tile.
template <int vectors, class T, class Factor>
void multiply_tile(const Factor& factor, T* tile, const T* a) {
  int64_t j = factor.dim;
  for (; j >= rows; j -= rows) multiply_rows<vectors, rows>(factor, j - rows, tile, a);
  for (; j > 0; --j) multiply_rows<vectors, 1>(factor, j - 1, tile, a);
}

/// Vectors to lanes: tile(c, v) = r(v, c). Lanes without a vector hold zeros.
template <int vectors, class T>
void turn_in(int64_t count, int64_t dim, const T* r, T* tile) {
  constexpr int width = tile_width<T, vectors>;
  int64_t c = 0;
  if (count == width) {
    for (; c <= dim - 4; c += 4) {
      for (int v = 0; v < width; v += 4) {
        transpose_four(r + v * dim + c, dim, tile + c * width + v, width);
      }
    }
  }
  for (; c < dim; ++c) {
    for (int v = 0; v < width; ++v) tile[c * width + v] = v < count ? r[v * dim + c] : 0;
  }
}

template <int vectors, class T>
void turn_back(int64_t count, int64_t dim, const T* tile, T* r) {
  constexpr int width = tile_width<T, vectors>;
  int64_t c = 0;
  if (count == width) {
    for (; c <= dim - 4; c += 4) {
      for (int v = 0; v < width; v += 4) {
        transpose_four(tile + c * width + v, width, r + v * dim + c, dim);
      }
    }
  }
  for (; c < dim; ++c) {
    for (int v = 0; v < count; ++v) r[v * dim + c] = tile[c * width + v];
  }
}

/// T x + a for up to a tile's vectors.
template <int vectors, class T, class Factor>
void through_tile(const Factor& factor, int64_t count, T* x, T* tile, const T* a) {
  turn_in<vectors>(count, factor.dim, x, tile);
  multiply_tile<vectors>(factor, tile, a);
  turn_back<vectors>(count, factor.dim, tile, x);
}

/// Standard deviates, as many as a 64-bit count says. Parts keep the sequence.
template <class T>
int32_t draw_standard(int32_t method, StreamState* stream, int64_t n, T* r) {
  constexpr int64_t most = int64_t{1} << 28;
  while (n > 0) {
    const auto count = static_cast<int32_t>(n < most ? n : most);
    const int32_t status = draw_gaussians(method, stream, count, r, T(0), T(1));
    if (status < 0) return status;
    r += count;
    n -= count;
  }
  return RNG_OK;
}

/// n vectors of standard deviates, through finish(count, part) while they are in the cache.
template <class T, class Finish>
int32_t in_parts_of_tiles(int32_t method, StreamState* stream, int64_t n, T* r, int64_t dim,
                          const Finish& finish) {
  const int64_t tile = tile_width<T> * dim;
  const int64_t most = tile_width<T> * (tile < most_deviates ? most_deviates / tile : 1);
  while (n > 0) {
    const int64_t count = n < most ? n : most;
    const int32_t status = draw_standard(method, stream, count * dim, r);
    if (status < 0) return status;
    finish(count, r);
    r += count * dim;
    n -= count;
  }
  return RNG_OK;
}

template <class T, class Factor>
int32_t through_tiles(int32_t method, StreamState* stream, int64_t n, T* r, const T* a,
                      const Factor& factor, T* tile) {
  const int64_t dim = factor.dim;
  return in_parts_of_tiles(method, stream, n, r, dim, [&](int64_t count, T* x) {
    while (count > 0) {
      const int64_t in_tile = clamp(static_cast<intptr_t>(count), tile_width<T>);
      if (in_tile > Lanes<T>::count) {
        through_tile<most_vectors>(factor, in_tile, x, tile, a);
      } else {
        through_tile<1>(factor, in_tile, x, tile, a);
      }
      x += in_tile * dim;
      count -= in_tile;
    }
  });
}

template <class T, class Factor>
int32_t triangular(int32_t method, StreamState* stream, int64_t n, T* r, const T* a,
                   const Factor& factor) {
  if (factor.dim < local_dim) {
    alignas(32) T tile[local_dim * tile_width<T>];
    return through_tiles(method, stream, n, r, a, factor, tile);
  }
  const int64_t bytes = factor.dim * tile_width<T> * static_cast<int64_t>(sizeof(T));
  T* const tile =
      bytes <= PTRDIFF_MAX ? static_cast<T*>(allocate_block(static_cast<size_t>(bytes))) : nullptr;
  if (tile == nullptr) {
    const int32_t status = draw_standard(method, stream, n * factor.dim, r);
    return status < 0 ? status : RNG_NO_MEMORY;
  }
  const int32_t status = through_tiles(method, stream, n, r, a, factor, tile);
  orv_serv_orv_free(tile);
  return status;
}

template <class T>
int32_t independent(int32_t method, StreamState* stream, int64_t n, T* r, int64_t dim, const T* a,
                    const T* t) {
  return in_parts_of_tiles(method, stream, n, r, dim, [=](int64_t count, T* x) {
    for (; count > 0; --count, x += dim) {
      for (int64_t j = 0; j < dim; ++j) x[j] = x[j] * t[j] + a[j];
    }
  });
}

template <class T>
int32_t gaussian_mv(int32_t method, StreamState* stream, int32_t n, T* r, int32_t dim,
                    int32_t mstorage, const T* a, const T* t) {
  if (dim == 1) return draw_gaussians(method, stream, n, r, a[0], t[0]);
  if (n < 1 || dim < 1) return RNG_OK;
  switch (mstorage) {
    case RNG_STORAGE_FULL:
      return triangular(method, stream, n, r, a, Full<T>{t, dim});
    case RNG_STORAGE_PACKED:
      return triangular(method, stream, n, r, a, Packed<T>{t, dim});
    case RNG_STORAGE_DIAGONAL:
      return independent(method, stream, n, r, dim, a, t);
    default:
      return draw_standard(method, stream, int64_t{n} * dim, r);
  }
}

}  // namespace

int32_t _zokdRngGaussianMV(int32_t method, StreamState* stream, int32_t n, double* r, int32_t dim,
                           int32_t mstorage, const double* a, const double* t) {
  return gaussian_mv(method, stream, n, r, dim, mstorage, a, t);
}

int32_t _zoksRngGaussianMV(int32_t method, StreamState* stream, int32_t n, float* r, int32_t dim,
                           int32_t mstorage, const float* a, const float* t) {
  return gaussian_mv(method, stream, n, r, dim, mstorage, a, t);
}
