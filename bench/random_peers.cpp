// SPDX-License-Identifier: MIT
// The C++ library's twister, a plain copy, and what the build has found for this word size:
// ORV_HAVE_DSFMT, ORV_HAVE_RANDOM123, ORV_HAVE_GSL and ORV_HAVE_BOOST are 1 or 0.
#include "random_peers.hpp"

#include <string.h>

#include <algorithm>
#include <memory>
#include <random>

#if ORV_HAVE_DSFMT
#define DSFMT_MEXP 19937
#define HAVE_SSE2 1
#include <dSFMT.h>
#endif
#if ORV_HAVE_RANDOM123
#include <Random123/philox.h>
#include <Random123/threefry.h>

#include <Random123/uniform.hpp>
#endif
#if ORV_HAVE_GSL
#include <gsl/gsl_qrng.h>
#include <gsl/gsl_rng.h>
#endif
#if ORV_HAVE_BOOST
#include <boost/random/niederreiter_base2.hpp>
#include <boost/random/sobol.hpp>
#endif
#include <orv/zok.h>

namespace orv_bench {
namespace {

using Peers = std::vector<RandomPeer>;

void add_copy(Peers* peers) {
  alignas(64) static uint32_t source[1000000];  // as the output
  for (uint32_t& word : source) word = 1;       // pages of its own
  peers->push_back(
      {{"memcpy/copy_words", 4,
        [](int32_t n, void* r) { memcpy(r, source, static_cast<size_t>(n) * sizeof *source); }},
       true});
}

void add_standard(Peers* peers) {
  std::mt19937 check;
  check.discard(9999);
  const bool verified = check() == 4123659995u;
  const auto twister = std::make_shared<std::mt19937>();
  peers->push_back({{"std/mt19937_words", 4,
                     [twister](int32_t n, void* r) {
                       auto* words = static_cast<uint32_t*>(r);
                       for (int32_t i = 0; i < n; ++i) {
                         words[i] = static_cast<uint32_t>((*twister)());
                       }
                     }},
                    verified});
  peers->push_back({{"std/mt19937_doubles", 8,
                     [twister](int32_t n, void* r) {
                       auto* numbers = static_cast<double*>(r);
                       for (int32_t i = 0; i < n; ++i) {
                         numbers[i] = static_cast<double>((*twister)()) * 0x1p-32;
                       }
                     }},
                    verified});
}

/// Whether the first dimensions of a thousand points are ours.
template <class T, class Next>
bool has_our_points(int32_t brng, uint32_t dims, uint32_t compared, const Next& next) {
  StreamState* stream = nullptr;
  bool same = __zokNewStreamEx(&stream, brng, 1, &dims) == RNG_OK;
  std::vector<T> theirs(dims), ours(dims);
  for (int i = 0; i < 1000 && same; ++i) {
    next(theirs.data());
    const auto n = static_cast<int32_t>(dims);
    if constexpr (sizeof(T) == 4) _zokiRngUniformBits(0, stream, n, ours.data());
    if constexpr (sizeof(T) == 8) _zokdRngUniform(0, stream, n, ours.data(), 0, 1);
    same = std::equal(ours.begin(), ours.begin() + compared, theirs.begin());
  }
  __zokDeleteStream(&stream);
  return same;
}

#if ORV_HAVE_DSFMT
/// An array fill against single draws from the same seed.
template <class Fill, class Draw>
void add_dsfmt(Peers* peers, const char* name, Fill fill, Draw draw) {
  constexpr int32_t n = 1000;
  const auto state = std::make_shared<dsfmt_t>(), single = std::make_shared<dsfmt_t>();
  dsfmt_init_gen_rand(state.get(), 1);
  dsfmt_init_gen_rand(single.get(), 1);
  struct alignas(16) {
    double x[n];
  } array;
  fill(state.get(), array.x, n);
  bool verified = true;
  for (const double x : array.x) verified = verified && x == draw(single.get());
  peers->push_back(
      {{name, 8, [=](int32_t m, void* r) { fill(state.get(), static_cast<double*>(r), m); }},
       verified});
}
#endif

#if ORV_HAVE_RANDOM123
/// Rounds of a counter, four words a block.
template <class Generator>
void add_counter(Peers* peers, const std::string& name, const typename Generator::ctr_type& zeros) {
  const bool verified = Generator()({}, {}) == zeros;
  const auto counter = std::make_shared<typename Generator::ctr_type>();
  peers->push_back({{name + "_words", 4,
                     [counter](int32_t n, void* r) {
                       auto* words = static_cast<uint32_t*>(r);
                       auto c = *counter;
                       for (int32_t i = 0; i < n; i += 4, ++c.v[0]) {
                         const auto block = Generator()(c, {});
                         memcpy(words + i, block.v, sizeof block.v);
                       }
                       *counter = c;
                     }},
                    verified});
  peers->push_back({{name + "_doubles", 8,
                     [counter](int32_t n, void* r) {
                       auto* numbers = static_cast<double*>(r);
                       auto c = *counter;
                       for (int32_t i = 0; i < n; i += 4, ++c.v[0]) {
                         const auto block = Generator()(c, {});
                         for (int k = 0; k < 4; ++k) numbers[i + k] = r123::u01<double>(block.v[k]);
                       }
                       *counter = c;
                     }},
                    verified});
}
#endif

#if ORV_HAVE_GSL
void add_gsl(Peers* peers) {
  const std::shared_ptr<gsl_rng> rng(gsl_rng_alloc(gsl_rng_mt19937), gsl_rng_free);
  gsl_rng_set(rng.get(), 5489);
  std::mt19937 standard;
  bool verified = true;
  for (int i = 0; i < 2000; ++i) verified = verified && gsl_rng_get(rng.get()) == standard();
  peers->push_back({{"gsl/mt19937_words", 4,
                     [rng](int32_t n, void* r) {
                       auto* words = static_cast<uint32_t*>(r);
                       for (int32_t i = 0; i < n; ++i) {
                         words[i] = static_cast<uint32_t>(gsl_rng_get(rng.get()));
                       }
                     }},
                    verified});
  peers->push_back({{"gsl/mt19937_doubles", 8,
                     [rng](int32_t n, void* r) {
                       auto* numbers = static_cast<double*>(r);
                       for (int32_t i = 0; i < n; ++i) numbers[i] = gsl_rng_uniform(rng.get());
                     }},
                    verified});
}

/// Whole points, as many as fit. In the first `compared` dimensions they are ours.
void add_gsl_points(Peers* peers, const std::string& name, const gsl_qrng_type* type, int32_t brng,
                    uint32_t dims, uint32_t compared) {
  const std::shared_ptr<gsl_qrng> points(gsl_qrng_alloc(type, dims), gsl_qrng_free);
  if (type == gsl_qrng_niederreiter_2) {
    std::vector<double> zero(dims);
    gsl_qrng_get(points.get(), zero.data());
  }
  const auto next = [points](double* x) { gsl_qrng_get(points.get(), x); };
  const bool verified = has_our_points<double>(brng, dims, compared, next);
  peers->push_back({{"gsl/" + name + std::to_string(dims) + "_doubles", 8,
                     [next, dims](int32_t n, void* r) {
                       auto* numbers = static_cast<double*>(r);
                       const auto step = static_cast<int32_t>(dims);
                       for (int32_t i = 0; i + step <= n; i += step) next(numbers + i);
                     }},
                    verified});
}
#endif

#if ORV_HAVE_BOOST
template <class Engine>
void add_boost_points(Peers* peers, const std::string& name, int32_t brng, uint32_t dims,
                      uint32_t compared) {
  const auto engine = std::make_shared<Engine>(dims);
  const auto fill = [engine](int32_t n, void* r) {
    auto* words = static_cast<uint32_t*>(r);
    for (int32_t i = 0; i < n; ++i) words[i] = (*engine)();
  };
  const auto next = [&](uint32_t* words) { fill(static_cast<int32_t>(dims), words); };
  const bool verified = has_our_points<uint32_t>(brng, dims, compared, next);
  peers->push_back({{"boost/" + name + std::to_string(dims) + "_words", 4, fill}, verified});
}
#endif

}  // namespace

std::vector<RandomPeer> random_peers() {
  Peers peers;
  add_copy(&peers);
  add_standard(&peers);
#if ORV_HAVE_DSFMT
  add_dsfmt(&peers, "dsfmt/close1_open2_doubles", dsfmt_fill_array_close1_open2,
            [](dsfmt_t* s) { return dsfmt_genrand_close1_open2(s); });
  add_dsfmt(&peers, "dsfmt/close_open_doubles", dsfmt_fill_array_close_open,
            [](dsfmt_t* s) { return dsfmt_genrand_close_open(s); });
#endif
#if ORV_HAVE_RANDOM123
  // What the authors' known-answer file gives for a counter and a key of zeros.
  add_counter<r123::Philox4x32>(&peers, "random123/philox4x32",
                                {{0x6627e8d5, 0xe169c58d, 0xbc57ac4c, 0x9b00dbd8}});
  add_counter<r123::Threefry4x32>(&peers, "random123/threefry4x32",
                                  {{0x9c6ca96a, 0xe17eae66, 0xfc10ecd4, 0x5256a7d8}});
#endif
#if ORV_HAVE_GSL
  add_gsl(&peers);
  // Its numbers are those of 1988; the first that has been mended since is of dimension 21.
  add_gsl_points(&peers, "sobol", gsl_qrng_sobol, BRNG_SOBOL, 10, 10);
  add_gsl_points(&peers, "sobol", gsl_qrng_sobol, BRNG_SOBOL, 40, 20);
  add_gsl_points(&peers, "niederr", gsl_qrng_niederreiter_2, BRNG_NIEDERR, 10, 10);
#endif
#if ORV_HAVE_BOOST
  for (const uint32_t dims : {10, 40}) {
    // Other initial numbers than ours, from dimension 3 on.
    add_boost_points<boost::random::sobol_engine<uint_least32_t, 32>>(&peers, "sobol", BRNG_SOBOL,
                                                                      dims, 2);
    add_boost_points<boost::random::niederreiter_base2_engine<uint_least32_t, 32>>(
        &peers, "niederr", BRNG_NIEDERR, dims, dims);
  }
#endif
  return peers;
}

std::vector<std::string> missing_random_peers() {
  std::vector<std::string> missing;
  if (!ORV_HAVE_DSFMT) missing.push_back("dSFMT (libdsfmt-dev)");
  if (!ORV_HAVE_RANDOM123) missing.push_back("Random123 (librandom123-dev)");
  if (!ORV_HAVE_BOOST) missing.push_back("Boost (libboost-dev)");
  if (!ORV_HAVE_GSL) missing.push_back("GSL (libgsl-dev)");
  return missing;
}

}  // namespace orv_bench
