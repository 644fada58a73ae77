// A digest of each kernel's results over a fixed input set: any change of a bit between builds,
// compilers and word sizes shows.
#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "support/kernels.hpp"

namespace orv_test {

struct Digest {
  uint64_t value = 0;
  bool one_machine = false;  // the kernel uses a processor's own reciprocal estimate
};

struct Digests {
  std::string machine;  // for which those marked one_machine hold
  std::map<std::string, Digest> of;
  std::vector<std::string> faults;  // of the text they were read from
};

/// Of every kernel, as this build computes them.
Digests compute_digests();

/// Reads digests.txt. Lines that are malformed, double or zero, kernels that are missing, unknown
/// or marked unlike in `expected`, are faults.
Digests read_digests(std::istream& text, const Digests& expected);

void write_digests(const Digests& digests, std::ostream& text);

}  // namespace orv_test
