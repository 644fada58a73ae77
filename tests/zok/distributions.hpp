// The distributions as tests call them: parameters bound, one form for all.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "stream_support.hpp"

namespace orv_test {

/// n numbers of a distribution with its parameters.
template <class T>
using Draw = std::function<int32_t(StreamState* stream, int32_t n, T* r)>;

template <class T>
struct NamedDraw {
  std::string name;
  Draw<T> draw;
};

/// Picks the precision's entry.
template <class T, class D, class S>
auto entry(D d, S s) {
  if constexpr (std::is_same_v<T, double>) {
    return d;
  } else {
    return s;
  }
}
#define ORV_ENTRY(T, name) orv_test::entry<T>(_zokdRng##name, _zoksRng##name)

/// Every continuous distribution, by each of its methods.
template <class T>
std::vector<NamedDraw<T>> continuous_draws() {
  return {
      {"exponential",
       [](auto s, auto n, auto r) { return ORV_ENTRY(T, Exponential)(0, s, n, r, 2, 3); }},
  };
}

/// A stream of the user's numbers: `numbers` over and over, which lie in [0, 1].
template <class T>
class Given {
 public:
  explicit Given(std::vector<T> numbers) : buffer_(std::move(numbers)) {
    const auto n = static_cast<int32_t>(buffer_.size());
    if constexpr (std::is_same_v<T, double>) {
      EXPECT_EQ(__zokdNewAbstractStream(&stream_, n, buffer_.data(), 0, 1, again), RNG_OK);
    } else {
      EXPECT_EQ(__zoksNewAbstractStream(&stream_, n, buffer_.data(), 0, 1, again), RNG_OK);
    }
  }
  operator StreamState*() const { return stream_; }

 private:
  /// What the buffer holds is what it held.
  static int32_t again(StreamState*, int32_t*, T*, int32_t*, int32_t* nmax, int32_t*) {
    return *nmax;
  }

  std::vector<T> buffer_;
  Stream stream_;
};

}  // namespace orv_test
