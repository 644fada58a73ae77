// SPDX-License-Identifier: MIT
#include "inputs.hpp"

namespace orv_test {

template <class R>
std::vector<R> special_values() {
  using L = std::numeric_limits<R>;
  std::vector<R> list = {L::quiet_NaN(), L::signaling_NaN()};
  for (const R x : {R{0}, L::infinity(), L::denorm_min(), L::min() - L::denorm_min(), L::min(),
                    R{1}, L::max() / 2, L::max()}) {
    list.push_back(x);
    list.push_back(-x);
  }
  return list;
}

template <class R>
void Inputs<R>::everywhere() {
  for (const R x : special_values<R>()) values.push_back(x);
  for (typename Format<R>::Bits e = 0; e < Format<R>::exponents; ++e) {
    const R power = from_bits<R>(e << (std::numeric_limits<R>::digits - 1));
    at(power, 2);
    at(-power, 2);
  }
  for (R x = std::numeric_limits<R>::denorm_min(); x < std::numeric_limits<R>::min(); x *= 2) {
    at(x, 1);
    at(-x, 1);
  }
  patterns_of_both_signs(0.02, 0, std::numeric_limits<R>::min());
  for (int i = 0; i < amount(0.1); ++i) {
    values.push_back(from_bits<R>(static_cast<typename Format<R>::Bits>(random.next())));
  }
}

template <class R>
void Inputs<R>::linear(double share, double lo, double hi) {
  for (int i = 0; i < amount(share); ++i) {
    values.push_back(static_cast<R>(lo + (hi - lo) * random.unit()));
  }
}

template <class R>
void Inputs<R>::patterns(double share, double lo, double hi) {
  const auto first = bits_of(static_cast<R>(lo)), end = bits_of(static_cast<R>(hi));
  for (int i = 0; i < amount(share); ++i) {
    values.push_back(
        from_bits<R>(static_cast<typename Format<R>::Bits>(first + random.below(end - first))));
  }
}

template <class R>
void Inputs<R>::patterns_of_both_signs(double share, double lo, double hi) {
  const size_t from = values.size();
  patterns(share, lo, hi);
  for (size_t i = from; i < values.size(); i += 2) values[i] = -values[i];
}

template <class R>
void Inputs<R>::near(double share, double center, double farthest) {
  const size_t from = values.size();
  patterns_of_both_signs(share, std::numeric_limits<R>::epsilon() / 4, farthest);
  for (size_t i = from; i < values.size(); ++i) values[i] = static_cast<R>(center + values[i]);
}

template <class R>
void Inputs<R>::at(double value, int reach) {
  for (int i = -reach; i <= reach; ++i) {
    values.push_back(from_bits<R>(bits_of(static_cast<R>(value)) + i));
  }
}

template <class R>
void Inputs<R>::seam(double value, int count) {
  using Bits = typename Format<R>::Bits;
  at(value, 1);
  const Bits bits = bits_of(static_cast<R>(value));
  for (int i = 0; i < 2 * count; ++i) {
    const Bits least = Bits{1} << random.below(std::numeric_limits<R>::digits - 4);
    const Bits ulps = least + static_cast<Bits>(random.below(least));
    values.push_back(from_bits<R>(i % 2 == 0 ? bits + ulps : bits - ulps));
  }
}

template <class R>
void Inputs<R>::seams(double share, double step, double lo, double hi) {
  constexpr int points = 11;  // of a seam
  const auto first = static_cast<int64_t>(lo / step),
             count = static_cast<int64_t>(hi / step) - first;
  const bool all = count * points <= amount(share);
  for (int64_t i = 0; i < (all ? count : amount(share) / points); ++i) {
    const int64_t k = first + (all ? i : static_cast<int64_t>(random.below(count)));
    seam(static_cast<double>(k) * step);
  }
}

template class Inputs<float>;
template class Inputs<double>;
template std::vector<float> special_values();
template std::vector<double> special_values();

}  // namespace orv_test
