// SPDX-License-Identifier: MIT
// Random streams: the price of an Asian call option by simulation, on several threads, the same for
// any number of them; and a stream as the generator of the C++ library's algorithms.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <orv/orv.hpp>
#include <thread>
#include <vector>

namespace {

constexpr double spot = 100, strike = 100, rate = 0.03, volatility = 0.2, years = 1;
constexpr size_t steps = 50, parts = 8, paths_of_part = 4000;

/// What the option pays on each path, discounted.
std::vector<double> payoffs(orv::stream& stream) {
  constexpr double dt = years / steps;
  const orv::normal step{.mean = (rate - volatility * volatility / 2) * dt,
                         .sd = volatility * std::sqrt(dt)};
  std::vector<double> logarithm(paths_of_part), price(paths_of_part), move(paths_of_part);
  std::vector<double> sum(paths_of_part);
  for (size_t k = 0; k < steps; ++k) {
    orv::sample(stream, step, move);
    orv::add(logarithm, move, logarithm);
    orv::exp(logarithm, price);
    orv::add(sum, price, sum);
  }
  for (double& x : sum) {
    x = std::exp(-rate * years) * std::max(spot * x / steps - strike, 0.0);
  }
  return sum;
}

/// Each part has a stream of its own: who simulates it does not matter.
orv::accumulator simulate(size_t thread_count) {
  std::vector<orv::stream> streams = orv::streams_for_threads(parts, orv::mt2203(), 42);
  std::vector<orv::accumulator> of_part(parts, orv::accumulator(1));
  std::vector<std::thread> threads;
  for (size_t t = 0; t < thread_count; ++t) {
    threads.emplace_back([&, t] {
      for (size_t k = t; k < parts; k += thread_count) {
        of_part[k].add(orv::table(payoffs(streams[k]), 1));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (size_t k = 1; k < parts; ++k) of_part[0].merge(of_part[k]);
  return of_part[0];
}

}  // namespace

int main() {
  const orv::accumulator one = simulate(1), three = simulate(3);
  const double error = one.standard_deviation()[0] / std::sqrt(static_cast<double>(one.count()));
  std::printf("%llu paths: price %.3f +- %.3f, with three threads %s\n",
              static_cast<unsigned long long>(one.count()), one.mean()[0], error,
              one.bytes() == three.bytes() ? "the same to the bit" : "another one");

  orv::stream stream(orv::mrg32k3a, 7);
  std::vector<int> cards(52);
  std::iota(cards.begin(), cards.end(), 0);
  std::shuffle(cards.begin(), cards.end(), stream);
  const orv::stream saved = stream;  // goes on by itself
  stream.skip(1000000000000);
  std::printf(
      "first card %d, a number %.6f, another far away %.6f\n", cards[0],
      [](orv::stream s) { return orv::sample(s, orv::uniform{}); }(saved),
      orv::sample(stream, orv::uniform{}));
  try {
    orv::sample(stream, orv::gamma{.shape = -1});
  } catch (const orv::error& e) {
    std::printf("%s (status %d)\n", e.what(), e.status());
  }
}
