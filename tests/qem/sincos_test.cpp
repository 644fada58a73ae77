// SinCos gives the bits of Sin and of Cos, and both do not depend on which lanes, paths and blocks
// an argument meets: streams of random numbers rely on it.
#include <math.h>

#include <algorithm>
#include <limits>
#include <random>

#include "harness.hpp"

using namespace orv_test;

namespace {

/// Arguments of every magnitude, more of them where lanes work, each limit of the lanes among them.
template <class R>
std::vector<R> angles() {
  std::mt19937_64 random(7);
  std::vector<R> list = {0, R(-0.0), std::numeric_limits<R>::infinity(),
                         std::numeric_limits<R>::quiet_NaN(), std::numeric_limits<R>::max()};
  const double top = log2(static_cast<double>(std::numeric_limits<R>::max()));
  for (int i = 0; i < 400000; ++i) {
    const double unit = static_cast<double>(random() >> 11) * 0x1p-53;
    const double exponent = i % 2 == 0 ? 30 * unit - 8 : top * (2 * unit - 1);
    const auto x = static_cast<R>(exp2(exponent));
    list.push_back(random() % 2 == 0 ? x : -x);
  }
  for (const double limit : {0x1p16, 0x1p17, 0x1p23, 0x1p24, 10000.0, 128000.0}) {
    const auto x = static_cast<R>(limit);
    for (const R y : {std::nextafter(x, R(0)), x, std::nextafter(x, 2 * x)}) {
      list.push_back(y), list.push_back(-y);
    }
  }
  for (int k = 1; k < 50000; ++k) list.push_back(static_cast<R>(k * 0x1.921FB54442D18p-1));
  return list;
}

/// The kernel of another function in the same slot.
const Kernel& beside(const Kernel& kernel, const std::string& function,
                     const std::vector<Kernel>& all) {
  const auto same = [&](const Kernel& other) {
    return other.type == kernel.type && other.slot == kernel.slot && other.function == function;
  };
  return *std::find_if(all.begin(), all.end(), same);
}

template <class R>
void check_agreement(const Kernel& sine, const Kernel& cosine, const Kernel& both) {
  const std::vector<R> a = angles<R>();
  const auto n = static_cast<int>(a.size());
  std::vector<R> s(n), c(n), s2(n), c2(n);
  call(sine, n, a.data(), nullptr, s.data(), nullptr);
  call(cosine, n, a.data(), nullptr, c.data(), nullptr);
  call(both, n, a.data(), nullptr, s2.data(), c2.data());
  for (int i = 0; i < n; ++i) {
    ASSERT_TRUE(same_bits(&s[i], &s2[i], 1)) << a[i] << ": " << s[i] << ' ' << s2[i];
    ASSERT_TRUE(same_bits(&c[i], &c2[i], 1)) << a[i] << ": " << c[i] << ' ' << c2[i];
  }
  // The same numbers alone, which makes each a tail.
  for (int i = 0; i < n; i += 7) {
    R sine_alone, cosine_alone;
    call(both, 1, &a[i], nullptr, &sine_alone, &cosine_alone);
    ASSERT_TRUE(same_bits(&sine_alone, &s[i], 1) && same_bits(&cosine_alone, &c[i], 1)) << a[i];
  }
}

TEST(SinCos, AgreesWithSinAndCos) {
  const std::vector<Kernel> all = all_slots();
  int compared = 0;
  for (const Kernel& both : all) {
    if (both.function != "SinCos") continue;
    SCOPED_TRACE(both.name());
    const Kernel &sine = beside(both, "Sin", all), &cosine = beside(both, "Cos", all);
    in_fresh_thread([&] {
      listen();
      both.in_its_type([&]<class R>(R) { check_agreement<R>(sine, cosine, both); });
    });
    ++compared;
  }
  EXPECT_GE(compared, 3);
}

}  // namespace
