// SPDX-License-Identifier: MIT
// Times random distributions and their peers: seconds a number.
//
//   WHO/LAW/PRECISION/N    independent calls of N numbers
//
// WHO is "ours", on MT19937, "parts", which is what a law of ours is made of by itself (the
// generator, then each kernel at the level that is used, a pass each; for vectors the Gaussian
// numbers, then BLAS), "anew", which is ours without what earlier calls have left on the stream, or
// a peer, on its own MT19937. Mean and deviation are checked first, and a
// contender that has others is not timed.
#include <benchmark/benchmark.h>
#include <math.h>
#include <orv/qem.h>
#include <orv/zok.h>
#include <stdio.h>

#include <memory>

#include "distribution_peers.hpp"

namespace orv_bench {
namespace {

constexpr int32_t sizes[] = {1000, 1000000};
constexpr int32_t largest = 1000000;

/// Two arrays of numbers; their pages are made before a timing.
template <class T>
T* array(int which) {
  static std::vector<T> arrays[2] = {std::vector<T>(2 * largest, T(0.5)),
                                     std::vector<T>(2 * largest, T(0.5))};
  return arrays[which].data();
}

int faults = 0;

/// Whether many numbers have the mean and the deviation of the law, to a few deviations of these.
template <class T>
bool follows(const Contender<T>& contender, const Moments& law) {
  constexpr int32_t n = 200000;
  T* const r = array<T>(0);
  contender.fill(n, r);
  double sum = 0, squares = 0;
  for (int32_t i = 0; i < n; ++i) {
    const double z = (r[i] - law.mean) / law.deviation;
    sum += z;
    squares += z * z;
  }
  return fabs(sum) < 6 * sqrt(n) && fabs(squares / n - 1) < 0.1;
}

template <class T>
void add(const Contender<T>& contender, const Moments* law) {
  if (law != nullptr && !follows(contender, *law)) {
    fprintf(stderr, "%s is not timed: its numbers are wrong\n", contender.name.c_str());
    ++faults;
    return;
  }
  for (const int32_t n : sizes) {
    const char* const precision = std::is_integral_v<T> ? "/int/"
                                  : sizeof(T) == 8      ? "/double/"
                                                        : "/float/";
    const std::string name = contender.name + precision + std::to_string(n);
    benchmark::RegisterBenchmark(name.c_str(), [contender, n](benchmark::State& state) {
      for ([[maybe_unused]] auto _ : state) {
        contender.fill(n, array<T>(0));
        benchmark::ClobberMemory();
      }
      using benchmark::Counter;
      const double numbers = static_cast<double>(n) * static_cast<double>(state.iterations());
      state.counters["element"] = Counter(numbers, Counter::kIsRate | Counter::kInvert);
    });
  }
}

std::shared_ptr<StreamState> make_stream() {
  const uint32_t seed = 4711;
  StreamState* stream = nullptr;
  __zokNewStreamEx(&stream, BRNG_MT19937, 1, &seed);
  return {stream, [](StreamState* s) { __zokDeleteStream(&s); }};
}

template <class T, class D, class S>
auto pick(D d, S s) {
  if constexpr (sizeof(T) == 8) {
    return d;
  } else {
    return s;
  }
}
#define ORV_DRAW(name) pick<T>(_zokdRng##name, _zoksRng##name)
/// The slot that distributions use: EP for doubles, LA for floats.
#define ORV_PART(name) pick<T>(orv_qem_kernel_d##name##_ttab[2], orv_qem_kernel_s##name##_ttab[0])

/// n uniforms times `uniforms`, then kernels, each over n times its share.
template <class T>
struct Parts {
  using Kernel = void (*)(int32_t n, const T* x, T* r);
  struct Step {
    Kernel kernel;
    double share = 1;
  };
  int32_t uniforms;
  std::vector<Step> steps;
};

template <class T>
Filler<T> filler_of(const Parts<T>& parts) {
  return [parts, stream = make_stream()](int32_t n, T* r) {
    ORV_DRAW(Uniform)(0, stream.get(), parts.uniforms * n, r, 0, 1);
    for (const auto& step : parts.steps) {
      step.kernel(static_cast<int32_t>(n * step.share), r, array<T>(1));
    }
  };
}

template <class T>
void sin_cos(int32_t n, const T* x, T* r) {
  ORV_PART(SinCos)(n, x, r, r + n);
}
template <class T>
void power(int32_t n, const T* x, T* r) {
  ORV_PART(Powx)(n, x, static_cast<T>(1 / 2.5), r);
}

/// One of our laws, and its parts if those are all of its work.
template <class T, class Entry, class... Parameters>
void add_ours(const std::string& name, const Parts<T>& parts, Entry entry, int32_t method,
              Parameters... parameters) {
  const Moments* const law = moments_of(name);
  add<T>({"ours/" + name,
          [=, stream = make_stream()](int32_t n, T* r) {
            entry(method, stream.get(), n, r, static_cast<T>(parameters)...);
          }},
         law);
  if (parts.uniforms > 0) add<T>({"parts/" + name, filler_of(parts)}, nullptr);
}

extern "C" {
void dtrmm_(const char*, const char*, const char*, const char*, const int32_t*, const int32_t*,
            const double*, const double*, const int32_t*, double*, const int32_t*, size_t, size_t,
            size_t, size_t);
void strmm_(const char*, const char*, const char*, const char*, const int32_t*, const int32_t*,
            const float*, const float*, const int32_t*, float*, const int32_t*, size_t, size_t,
            size_t, size_t);
void openblas_set_num_threads(int threads);
}

/// Vectors of independent standard numbers, by a full factor, which is the unit matrix.
template <class T>
void add_vectors(int32_t dim) {
  std::vector<T> t(static_cast<size_t>(dim) * dim), a(dim);
  for (int32_t j = 0; j < dim; ++j) t[j * dim + j] = 1;
  const std::string name = "vectors_of_" + std::to_string(dim);
  const auto stream = make_stream();
  add<T>({"ours/" + name,
          [=](int32_t n, T* r) {
            ORV_DRAW(GaussianMV)
            (RNG_GAUSSIAN_BOXMULLER2, stream.get(), n / dim, r, dim, RNG_STORAGE_FULL, a.data(),
             t.data());
          }},
         moments_of(name));
  add<T>({"parts/" + name,
          [=](int32_t n, T* r) {
            const int32_t count = n / dim;
            const T one = 1;
            ORV_DRAW(Gaussian)(RNG_GAUSSIAN_BOXMULLER2, stream.get(), n, r, 0, 1);
            pick<T>(dtrmm_, strmm_)("L", "U", "T", "N", &dim, &count, &one, t.data(), &dim, r, &dim,
                                    1, 1, 1, 1);
          }},
         moments_of(name));
}

template <class T>
void add_all() {
  const typename Parts<T>::Step ln = {ORV_PART(Ln)}, root = {ORV_PART(Sqrt)}, exp = {ORV_PART(Exp)};
  const Parts<T> none = {};
  add_ours<T>("uniform", none, ORV_DRAW(Uniform), 0, 0, 1);
  add_ours<T>("exponential", {1, {ln}}, ORV_DRAW(Exponential), 0, 0, 1);
  add_ours<T>("laplace", {2, {ln}}, ORV_DRAW(Laplace), 0, 0, 1);
  add_ours<T>("weibull", {1, {ln, {power<T>}}}, ORV_DRAW(Weibull), 0, 2.5, 0, 1);
  add_ours<T>("cauchy", {1, {{ORV_PART(Tan)}}}, ORV_DRAW(Cauchy), 0, 0, 1);
  add_ours<T>("rayleigh", {1, {ln, root}}, ORV_DRAW(Rayleigh), 0, 0, 1);
  add_ours<T>("gumbel", {1, {ln, ln}}, ORV_DRAW(Gumbel), 0, 0, 1);
  const typename Parts<T>::Step half_ln = {ORV_PART(Ln), 0.5}, half_root = {ORV_PART(Sqrt), 0.5},
                                half_angles = {sin_cos<T>, 0.5};
  add_ours<T>("lognormal", {1, {half_angles, half_ln, half_root, exp}}, ORV_DRAW(Lognormal), 0, 0,
              0.5, 0, 1);
  add_ours<T>("gaussian_by_sines", {2, {{ORV_PART(Sin)}, ln, root}}, ORV_DRAW(Gaussian),
              RNG_GAUSSIAN_BOXMULLER, 0, 1);
  add_ours<T>("gaussian_by_pairs", {1, {half_angles, half_ln, half_root}}, ORV_DRAW(Gaussian),
              RNG_GAUSSIAN_BOXMULLER2, 0, 1);
  add_ours<T>("gaussian_by_inversion", {1, {{ORV_PART(ErfInv)}}}, ORV_DRAW(Gaussian),
              RNG_GAUSSIAN_ICDF, 0, 1);
  for (const double alpha : gamma_shapes) {
    add_ours<T>(name_of("gamma", {alpha}), none, ORV_DRAW(Gamma), 0, alpha, 0, 1);
  }
  for (const auto& [p, q] : beta_shapes) {
    add_ours<T>(name_of("beta", {p, q}), none, ORV_DRAW(Beta), 0, p, q, 0, 1);
  }
  for (const int32_t dim : {10, 100}) add_vectors<T>(dim);
  for (const NamedContender<T>& peer : distribution_peers<T>()) {
    add(peer.contender, moments_of(peer.law));
  }
}

/// An integer distribution.
template <class Entry, class... Parameters>
Contender<int32_t> of_integers(const std::string& name, Entry entry, int32_t method,
                               Parameters... parameters) {
  return {"ours/" + name, [=, stream = make_stream()](int32_t n, int32_t* r) {
            entry(method, stream.get(), n, r, parameters...);
          }};
}

/// One that keeps what it has made of its parameters; and without that.
template <class Entry, class... Parameters>
void add_integers(const std::string& name, Entry entry, Parameters... parameters) {
  add(of_integers(name, entry, 0, parameters...), moments_of(name));
  add<int32_t>({"anew/" + name,
                [=, stream = make_stream()](int32_t n, int32_t* r) {
                  __zokDeleteChunks(stream.get());
                  entry(0, stream.get(), n, r, parameters...);
                }},
               nullptr);
}

void add_all_integers() {
  const auto add_simple = [](const std::string& name, auto entry, auto... parameters) {
    add(of_integers(name, entry, parameters...), moments_of(name));
  };
  add_simple("bernoulli", _zokiRngBernoulli, 0, bernoulli_chance);
  add_simple("integers", _zokiRngUniform, 0, 0, integers_below);
  for (const double p : geometric_chances) {
    add_simple(name_of("geometric", {p}), _zokiRngGeometric, 0, p);
  }
  for (const double lambda : poisson_means) {
    add_integers(name_of("poisson", {lambda}), _zokiRngPoisson, lambda);
    add_simple(name_of("poisson_by_gaussians", {lambda}), _zokiRngPoisson, RNG_POISSON_POISNORM,
               lambda);
  }
  for (const auto& [n, p] : binomial_trials) {
    add_integers(name_of("binomial", {n, p}), _zokiRngBinomial, static_cast<int32_t>(n), p);
  }
  for (const auto& [lot, sample, marked] : hypergeometric_lots) {
    add_integers(name_of("hypergeometric", {lot, sample, marked}), _zokiRngHypergeometric,
                 static_cast<int32_t>(lot), static_cast<int32_t>(sample),
                 static_cast<int32_t>(marked));
  }
  for (const auto& [a, p] : negbinomial_shapes) {
    add_integers(name_of("negbinomial", {a, p}), _zokiRngNegbinomial, a, p);
  }
  for (const NamedContender<int32_t>& peer : distribution_peers<int32_t>()) {
    add(peer.contender, moments_of(peer.law));
  }
}

}  // namespace
}  // namespace orv_bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  orv_bench::openblas_set_num_threads(1);
  if (!ORV_HAVE_BOOST) fprintf(stderr, "left out, not installed: Boost (libboost-dev)\n");
  orv_bench::add_all<double>();
  orv_bench::add_all<float>();
  orv_bench::add_all_integers();
  benchmark::RunSpecifiedBenchmarks();
  return orv_bench::faults == 0 ? 0 : 1;
}
