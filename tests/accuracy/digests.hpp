// A digest of each kernel's results over a fixed input set: any change of a bit between builds,
// compilers and word sizes shows.
#pragma once

#include <map>
#include <string>

namespace orv_test {

/// The lines of digests.txt, first word and rest: the kernels' digests, and the "machine" for which
/// those with this mark hold, since they use a processor's own reciprocal estimate.
using Digests = std::map<std::string, std::string>;

/// As this build computes them.
Digests compute_digests();

}  // namespace orv_test
