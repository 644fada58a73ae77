// Functions that are even or odd are so to the bit.
#include <map>

#include "harness.hpp"

using namespace orv_test;

namespace {

const std::map<std::string, int> parities = {
    {"Cosh", 1},
    {"Sinh", -1},
    {"Tanh", -1},
    {"Cbrt", -1},
};

TEST(Parity, IsExact) {
  size_t checked = 0;
  for_each_kernel([&](const Kernel& kernel, auto number) {
    using R = decltype(number);
    const auto parity = parities.find(kernel.function);
    if (parity == parities.end() || !strchr("sd", kernel.type)) return;
    ++checked;
    constexpr int n = 100000;
    Vectors<R> right = ordinary<R>(kernel, n), left = right;
    for (R& x : left.in[0]) x = -x;
    right.call(kernel, n);
    left.call(kernel, n);
    for (R& y : right.out[0]) y *= static_cast<R>(parity->second);
    EXPECT_TRUE(same_bits(left.out[0], right.out[0]));
  });
  EXPECT_GE(checked, 4 * parities.size());
}

}  // namespace
