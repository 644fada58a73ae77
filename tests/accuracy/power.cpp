#include "families.hpp"

namespace orv_test {
namespace {}  // namespace

std::vector<Function> power_functions() { return {}; }

}  // namespace orv_test
