// SPDX-License-Identifier: MIT
// Continuous distributions beside their law: sequences however a request is split, what a number
// costs, state that waits in a stream, ends of the uniform numbers, failures.
#include <math.h>

#include <algorithm>
#include <numeric>

#include "distributions.hpp"

using namespace orv_test;

namespace {

template <class T>
class Continuous : public testing::Test {};
using Types = testing::Types<double, float>;
TYPED_TEST_SUITE(Continuous, Types);

template <class T>
std::vector<T> numbers(const Draw<T>& draw, StreamState* stream, int32_t n) {
  std::vector<T> r(n, T(77));
  EXPECT_EQ(draw(stream, n, r.data()), RNG_OK);
  return r;
}

/// n numbers in parts of the sizes given, over and over.
template <class T>
std::vector<T> in_parts(const Draw<T>& draw, StreamState* stream, int32_t n,
                        const std::vector<int32_t>& sizes) {
  std::vector<T> r(n);
  size_t part = 0;
  for (int32_t done = 0; done < n; ++part) {
    const int32_t count = std::min(n - done, sizes[part % sizes.size()]);
    EXPECT_EQ(draw(stream, count, r.data() + done), RNG_OK);
    done += count;
  }
  return r;
}

/// FNV-1a of the numbers' bits.
template <class T>
uint64_t digest_of(const std::vector<T>& r) {
  uint64_t hash = 14695981039346656037u;
  for (size_t i = 0; i < sizeof(T) * r.size(); ++i) {
    hash = (hash ^ reinterpret_cast<const unsigned char*>(r.data())[i]) * 1099511628211u;
  }
  return hash;
}

TYPED_TEST(Continuous, ASplitChangesNothing) {
  using T = TypeParam;
  const std::vector<int32_t> splits[] = {{1}, {7}, {1000}, {1, 2048, 3, 512, 1024, 5}};
  for (const auto& [name, draw] : continuous_draws<T>()) {
    for (const int32_t brng : generators) {
      const bool makes_one_of_none = brng == BRNG_MCG31M1 || brng == BRNG_R250;
      if (name == "laplace" && makes_one_of_none) continue;  // as the header says
      const std::vector<T> whole = numbers<T>(draw, Stream(brng), 5000);
      for (const std::vector<int32_t>& sizes : splits) {
        ASSERT_EQ(in_parts<T>(draw, Stream(brng), 5000, sizes), whole) << name << ' ' << brng;
      }
      std::vector<T> unaligned(5001);  // elements at an odd place give the same bits
      Stream stream(brng);
      ASSERT_EQ(draw(stream, 5000, unaligned.data() + 1), RNG_OK);
      ASSERT_TRUE(std::equal(whole.begin(), whole.end(), unaligned.begin() + 1)) << name;
    }
  }
}

/// The numbers of some seed are the same in every build.
TYPED_TEST(Continuous, BitsAreTheSameEverywhere) {
  using T = TypeParam;
  uint64_t all = 0;
  testing::Message each;
  for (const auto& [name, draw] : continuous_draws<T>()) {
    const uint64_t digest = digest_of(numbers<T>(draw, Stream(BRNG_MT19937), 3000));
    each << name << ' ' << std::hex << digest << '\n';
    all = all * 31 + digest;
  }
  EXPECT_EQ(all, sizeof(T) == 8 ? 0x8cdcb004d0d1de8au : 0x4fced35c7e197a63u) << each;
}

/// Uniforms that n numbers take, where that doesn't depend on their values.
TYPED_TEST(Continuous, CostAsManyUniformsAsTheHeaderSays) {
  using T = TypeParam;
  const auto cost = [](const std::string& name, int32_t n) {
    const bool in_twos = name == "gaussian by pairs" || name == "lognormal";
    if (in_twos) return n + n % 2;
    return name == "laplace" || name == "gaussian by sines" ? 2 * n : n;
  };
  for (const auto& [name, draw] : continuous_draws<T>()) {
    const bool rejects = name.starts_with("gamma") || name.starts_with("beta");
    const bool inverts = name == "gamma 1.000000" || name == "beta 1.000000 3.000000" ||
                         name == "beta 3.000000 1.000000";
    if (rejects && !inverts) continue;
    for (const int32_t n : {1, 2, 1023, 1024, 2049}) {
      Stream stream(BRNG_MT19937), expected(BRNG_MT19937);
      numbers<T>(draw, stream, n);
      uniform<T>(0, expected, cost(name, n), std::vector<T>(3 * n).data(), 0, 1);
      EXPECT_EQ(draw_words(stream, 1), draw_words(expected, 1)) << name << ' ' << n;
    }
  }
}

TYPED_TEST(Continuous, NoneIsDrawnForNone) {
  using T = TypeParam;
  for (const auto& [name, draw] : continuous_draws<T>()) {
    for (const int32_t n : {0, -1, -1024}) {
      Stream stream(BRNG_MT19937);
      T r = 77;
      EXPECT_EQ(draw(stream, n, &r), RNG_OK) << name;
      EXPECT_EQ(r, 77) << name;
      EXPECT_EQ(draw_words(stream, 5), draw_words(Stream(BRNG_MT19937), 5)) << name;
      const bool asks = !name.starts_with("gamma") && !name.starts_with("beta") &&
                        name != "gaussian by sines" && name != "gaussian by pairs" &&
                        name != "lognormal";
      Stream burning(BRNG_MCG31M1), expected(BRNG_MCG31M1);
      draw(burning, n, &r);
      if (asks) draw_words(expected, 1);
      EXPECT_EQ(draw_words(burning, 5), draw_words(expected, 5)) << name << ' ' << n;
    }
  }
  // Laplace asks for none behind each whole block.
  Stream stream(BRNG_MCG31M1), expected(BRNG_MCG31M1);
  numbers(bound<T>(ORV_ENTRY(T, Laplace), 0, 0, 1), stream, 1024);
  draw_words(expected, 2049);
  EXPECT_EQ(draw_words(stream, 1), draw_words(expected, 1));
}

/// Draws that leave something in the stream, with the chunk it is in.
template <class T>
struct Waiting {
  Draw<T> draw;
  int32_t chunk;
};
template <class T>
std::vector<Waiting<T>> waiting() {
  constexpr bool is_double = sizeof(T) == 8;
  return {{bound<T>(ORV_ENTRY(T, Gaussian), RNG_GAUSSIAN_BOXMULLER2, 2, 3), is_double ? 2 : 1},
          {bound<T>(ORV_ENTRY(T, Lognormal), 0, 0, 1, 2, 3), is_double ? 2 : 1},
          {bound<T>(ORV_ENTRY(T, Gamma), 0, 3, 0, 1), is_double ? 7 : 8}};
}

TYPED_TEST(Continuous, WhatWaitsGoesIntoCopiesAndFiles) {
  using T = TypeParam;
  for (const auto& [draw, chunk] : waiting<T>()) {
    for (const int32_t before : {1, 2, 333, 1027}) {
      Stream stream(BRNG_MT19937), copy, loaded, other(BRNG_MT19937, {9});
      numbers<T>(draw, stream, before);
      EXPECT_EQ(__zokGetNumChunks(stream), 1);
      EXPECT_NE(__zokSearchChunk(stream, chunk), nullptr);
      ASSERT_EQ(__zokCopyStream(&copy, stream), RNG_OK);
      const std::string name = memory_file();
      ASSERT_EQ(save(stream, name), RNG_OK);
      ASSERT_EQ(load(&loaded, name), RNG_OK);
      ASSERT_EQ(__zokCopyStreamState(other, stream), RNG_OK);
      const std::vector<T> expected = numbers<T>(draw, stream, 20);
      EXPECT_EQ(numbers<T>(draw, copy, 20), expected) << chunk << ' ' << before;
      EXPECT_EQ(numbers<T>(draw, loaded, 20), expected) << chunk << ' ' << before;
      EXPECT_EQ(numbers<T>(draw, other, 20), expected) << chunk << ' ' << before;
    }
  }
}

/// The sine of a pair, then its cosine in the next call; both precisions keep pairs of their own.
TYPED_TEST(Continuous, PairsAreFinishedInTheNextCall) {
  using T = TypeParam;
  const auto draw = bound<T>(ORV_ENTRY(T, Gaussian), RNG_GAUSSIAN_BOXMULLER2, 0, 1);
  Stream stream(BRNG_MT19937), uniforms(BRNG_MT19937);
  const std::vector<T> u = orv_test::draw<T>(uniforms, 2);
  const std::vector<T> first = numbers<T>(draw, stream, 1);
  const auto* const pending =
      static_cast<const T*>(__zokSearchChunk(stream, sizeof(T) == 8 ? 2 : 1));
  EXPECT_EQ((std::vector<T>{pending[0], pending[1]}), u);
  EXPECT_EQ(draw_words(Stream(uniforms->Brng), 1).size(), 1u);
  const std::vector<T> second = numbers<T>(draw, stream, 1);
  EXPECT_EQ((std::vector<T>{pending[0], pending[1]}), (std::vector<T>{-1, -1}));
  const double rho = sqrt(-2 * log(double{u[0]})), angle = 2 * M_PI * u[1];
  EXPECT_NEAR(first[0], rho * sin(angle), 1e-6);
  EXPECT_NEAR(second[0], rho * cos(angle), 1e-6);
  EXPECT_EQ(draw_words(stream, 1), draw_words(uniforms, 1)) << "the second costs nothing";
}

/// A failing generator: its status, and what waited still waits.
TYPED_TEST(Continuous, AFailureKeepsWhatWaits) {
  using T = TypeParam;
  for (const auto& [draw, chunk] : waiting<T>()) {
    const Given<T> stream({T(0.5), T(0.25), T(0.75), T(0.125)});
    T r[2000];
    numbers<T>(draw, stream, 1);
    const T* const data = static_cast<const T*>(__zokSearchChunk(stream, chunk));
    const std::vector<T> before(data, data + 2);
    EXPECT_GE(before[0], 0);
    static_cast<StreamState*>(stream)->Brng = BRNG_IABSTRACT;  // which has words only
    EXPECT_EQ(draw(stream, 2000, r), RNG_ABSTRACT_BAD_FLAVOUR) << chunk;
    EXPECT_EQ(std::vector<T>(data, data + 2), before) << chunk;
  }
}

/// Mean and deviation come in at the end, which a failure does not reach.
TYPED_TEST(Continuous, AFailureLeavesStandardDeviates) {
  using T = TypeParam;
  const Given<T> stream({T(0.5), T(0.25)});
  T r[2] = {77, 77};
  numbers<T>(bound<T>(ORV_ENTRY(T, Gaussian), RNG_GAUSSIAN_BOXMULLER2, 2, 3), stream, 1);
  static_cast<StreamState*>(stream)->Brng = BRNG_IABSTRACT;
  EXPECT_EQ(ORV_ENTRY(T, Gaussian)(RNG_GAUSSIAN_BOXMULLER2, stream, 2, r, 2, 3),
            RNG_ABSTRACT_BAD_FLAVOUR);
  EXPECT_NEAR(r[0], sqrt(2 * M_LN2) * cos(M_PI / 2), 1e-6);
  EXPECT_EQ(r[1], 77);
}

/// What the ends of the uniform numbers become: finite, and as the law has it.
TYPED_TEST(Continuous, EndsOfTheUniformsAreFinite) {
  using T = TypeParam;
  constexpr bool is_double = sizeof(T) == 8;
  const double ln_of_zero = is_double ? -744.4400719213812 : -103.2789306640625;
  const double none = is_double ? -55 * M_LN2 : -26 * M_LN2;
  const double rho = sqrt(-2 * ln_of_zero);
  const struct {
    const char* what;
    Draw<T> draw;
    std::vector<double> uniforms, expected;
  } rows[] = {
      {"exponential",
       bound<T>(ORV_ENTRY(T, Exponential), 0, 2, 3),
       {0, 1},
       {2 - 3 * ln_of_zero, 2}},
      {"laplace",
       bound<T>(ORV_ENTRY(T, Laplace), 0, 2, 3),
       {0, 0.5, 0, 0.75, 1, 0},
       {2 - 3 * ln_of_zero, 2 + 3 * ln_of_zero, 2}},
      {"rayleigh",
       bound<T>(ORV_ENTRY(T, Rayleigh), 0, 2, 3),
       {0, 1},
       {2 + 3 * sqrt(-ln_of_zero), 2}},
      {"weibull",
       bound<T>(ORV_ENTRY(T, Weibull), 0, T(0.5), 2, 3),
       {0, 1},
       {2 + 3 * ln_of_zero * ln_of_zero, 2}},
      {"gumbel",
       bound<T>(ORV_ENTRY(T, Gumbel), 0, 2, 3),
       {0, 1},
       {2 + 3 * log(-ln_of_zero), 2 + 3 * none}},
      {"sines",
       bound<T>(ORV_ENTRY(T, Gaussian), RNG_GAUSSIAN_BOXMULLER, 2, 3),
       {0, 0.25, 1, 0.25},
       {2 + 3 * rho, 2}},
      {"pairs",
       bound<T>(ORV_ENTRY(T, Gaussian), RNG_GAUSSIAN_BOXMULLER2, 2, 3),
       {0, 0.25, 0, 0.5},
       {2 + 3 * rho, 2, 2, 2 - 3 * rho}},
      {"inversion",
       bound<T>(ORV_ENTRY(T, Gaussian), RNG_GAUSSIAN_ICDF, 2, 3),
       {0, 0.5, 1},
       {2 - 3 * (is_double ? 1.0847752 : 1.5326492), 2,
        2 + 3 * (is_double ? 8.2923608 : 5.4199834)}},
      // Twice a weight of nothing, then one that is kept.
      {"gamma 0.6", bound<T>(ORV_ENTRY(T, Gamma), 0, T(0.6), 2, 3), {1, 0}, {2}},
      {"gamma 0.3", bound<T>(ORV_ENTRY(T, Gamma), 0, T(0.3), 2, 3), {1, 0.5, 0, 0.5}, {2}},
      {"cheng", bound<T>(ORV_ENTRY(T, Beta), 0, 3, 3, 2, 3), {1, 0.5, 0, 0.5, 0.5, 0.25}, {3.5}},
      {"johnk",
       bound<T>(ORV_ENTRY(T, Beta), 0, T(0.25), T(0.25), 2, 3),
       {0, 0, 1, 0, 0, 1},
       {3.5, 5, 2}},
      {"atkinson 1",
       bound<T>(ORV_ENTRY(T, Beta), 0, T(0.75), T(0.75), 2, 3),
       {0, 0.5, 1, 0.5},
       {2, 5}},
      {"atkinson 2", bound<T>(ORV_ENTRY(T, Beta), 0, T(0.5), 2, 2, 3), {0, 0.5}, {2}},
      {"turned", bound<T>(ORV_ENTRY(T, Beta), 0, 2, T(0.5), 2, 3), {0, 0.5}, {5}},
      {"inverse", bound<T>(ORV_ENTRY(T, Beta), 0, 1, 1, 2, 3), {0, 1}, {5, 2}},
      {"power", bound<T>(ORV_ENTRY(T, Beta), 0, T(0.25), 1, 2, 3), {0, 1}, {2, 5}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const Given<T> stream(std::vector<T>(row.uniforms.begin(), row.uniforms.end()));
    const auto n = static_cast<int32_t>(row.expected.size());
    const std::vector<T> r = numbers<T>(row.draw, stream, n);
    for (int32_t i = 0; i < n; ++i) {
      EXPECT_NEAR(r[i], row.expected[i], 4e-6 * fmax(1, fabs(row.expected[i]))) << i;
    }
  }
}

/// No call goes on for ever.
TYPED_TEST(Continuous, WhereNoNumberComesItEnds) {
  using T = TypeParam;
  constexpr T inf = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
  const Stream good(BRNG_MT19937);
  const Given<T> ones({1});
  const struct {
    StreamState* stream;
    Draw<T> draw;
  } rows[] = {
      {good, bound<T>(ORV_ENTRY(T, Gamma), 0, nan, 0, 1)},
      {good, bound<T>(ORV_ENTRY(T, Gamma), 0, inf, 0, 1)},
      {good, bound<T>(ORV_ENTRY(T, Beta), 0, inf, inf, 0, 1)},
      {ones, bound<T>(ORV_ENTRY(T, Gamma), 0, T(0.8), 0, 1)},
      {ones, bound<T>(ORV_ENTRY(T, Beta), 0, 2, 3, 0, 1)},
      {ones, bound<T>(ORV_ENTRY(T, Beta), 0, T(0.3), T(0.3), 0, 1)},
  };
  for (const auto& row : rows) {
    T r[3];
    EXPECT_EQ(row.draw(row.stream, 3, r), RNG_BAD_ARGS) << &row - rows;
  }
}

// ---- Multivariate -------------------------------------------------------------------------------

template <class T>
struct Factor {
  std::vector<T> full, packed, diagonal, mean;
};

/// Above the diagonal of the full form stands what nobody may read.
template <class T>
Factor<T> factor_of(int32_t dim) {
  Factor<T> f;
  f.full.assign(static_cast<size_t>(dim) * dim, std::numeric_limits<T>::quiet_NaN());
  for (int32_t c = 0; c < dim; ++c) {
    for (int32_t j = c; j < dim; ++j) {
      f.full[j * dim + c] = T(1) / static_cast<T>(1 + j + 2 * c) - T(0.125);
      f.packed.push_back(f.full[j * dim + c]);
    }
    f.diagonal.push_back(f.full[c * dim + c]);
    f.mean.push_back(static_cast<T>(c) / 3);
  }
  return f;
}

/// From left to right.
template <class T>
std::vector<T> plain_product(const Factor<T>& f, int32_t dim, const std::vector<T>& x) {
  std::vector<T> y(x.size());
  for (size_t i = 0; i < x.size(); i += dim) {
    for (int32_t j = 0; j < dim; ++j) {
      T sum = f.full[j * dim] * x[i];
      for (int32_t c = 1; c <= j; ++c) sum = sum + f.full[j * dim + c] * x[i + c];
      y[i + j] = sum + f.mean[j];
    }
  }
  return y;
}

TYPED_TEST(Continuous, VectorsAreAPlainProductInEveryStorage) {
  using T = TypeParam;
  const auto entry = ORV_ENTRY(T, GaussianMV);
  for (const int32_t dim : {2, 3, 4, 5, 8, 10, 43, 129, 300, 1030}) {
    const Factor<T> f = factor_of<T>(dim);
    for (const int32_t n : dim < 100 ? std::vector{1, 2, 7, 8, 16, 17, 1000} : std::vector{1, 35}) {
      for (const int32_t method : {0, 1, 2}) {
        SCOPED_TRACE(testing::Message() << dim << " x " << n << " by " << method);
        const auto drawn = [&](int32_t storage, const std::vector<T>& t) {
          Stream stream(BRNG_MT19937);
          std::vector<T> r(static_cast<size_t>(n) * dim);
          EXPECT_EQ(entry(method, stream, n, r.data(), dim, storage, f.mean.data(), t.data()),
                    RNG_OK);
          return r;
        };
        const std::vector<T> x = numbers<T>(bound<T>(ORV_ENTRY(T, Gaussian), method, 0, 1),
                                            Stream(BRNG_MT19937), n * dim);
        const std::vector<T> product = plain_product(f, dim, x);
        EXPECT_TRUE(drawn(RNG_STORAGE_FULL, f.full) == product);
        EXPECT_TRUE(drawn(RNG_STORAGE_PACKED, f.packed) == product);
        const std::vector<T> independent = drawn(RNG_STORAGE_DIAGONAL, f.diagonal);
        for (size_t i = 0; i < x.size(); ++i) {
          ASSERT_EQ(independent[i], x[i] * f.diagonal[i % dim] + f.mean[i % dim]);
        }
        EXPECT_TRUE(drawn(3, {}) == x);
      }
    }
  }
  // A dimension of one is the plain distribution, whatever the storage; none has no numbers.
  const T a = 2, t = 3;
  const auto one = [&](StreamState* stream, int32_t n, T* r) {
    return entry(1, stream, n, r, 1, 77, &a, &t);
  };
  EXPECT_EQ(numbers<T>(one, Stream(BRNG_R250), 99),
            numbers<T>(bound<T>(ORV_ENTRY(T, Gaussian), 1, 2, 3), Stream(BRNG_R250), 99));
  EXPECT_EQ(entry(0, Stream(BRNG_R250), 5, nullptr, 0, 0, nullptr, nullptr), RNG_OK);
  EXPECT_EQ(entry(0, Stream(BRNG_R250), 0, nullptr, 5, 0, nullptr, nullptr), RNG_OK);
}

/// 2^32 numbers are not none.
TYPED_TEST(Continuous, VectorsAreCountedInMoreThan32Bits) {
  using T = TypeParam;
  const Stream failing(Spy::brng());
  Spy::answer = RNG_QRNG_EXHAUSTED;
  T r[1];
  for (const int32_t storage : {0, 1, 2, 3}) {
    EXPECT_EQ(ORV_ENTRY(T, GaussianMV)(0, failing, 65536, r, 65536, storage, nullptr, nullptr),
              RNG_QRNG_EXHAUSTED);
  }
  Spy::answer = RNG_OK;
}

}  // namespace
