// SPDX-License-Identifier: MIT
// Generators of other libraries, that ours are timed beside.
#pragma once

#include <stdint.h>

#include <functional>
#include <string>
#include <vector>

namespace orv_bench {

/// One sequence of numbers, written to arrays of any even length from 1000 on.
struct Filler {
  std::string name;  // "std/mt19937_words"
  int32_t element_bytes;
  std::function<void(int32_t n, void* r)> fill;
};

struct RandomPeer {
  Filler filler;
  bool verified;  // it gives what its authors published, or what a second form of it gives
};

/// The peers that this program has been built with.
std::vector<RandomPeer> random_peers();

/// Those that are not installed for this word size.
std::vector<std::string> missing_random_peers();

}  // namespace orv_bench
