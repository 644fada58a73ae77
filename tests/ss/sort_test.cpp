// SPDX-License-Identifier: MIT
// Sorting and selection in place: the arrangement they leave, on inputs of every shape.
#include <algorithm>
#include <bit>
#include <cmath>
#include <compare>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>

#include "support.hpp"

using namespace orv_test;

namespace {

/// Plain scans, as the textbook has them: what the library's blocks must not be told from. Leaves
/// elements lo to j - 1 not above those from i to hi.
template <class T>
std::pair<int, int> partition(T* a, int lo, int hi) {
  const auto order = [&](int x, int y) {
    if (a[x] > a[y]) std::swap(a[x], a[y]);
  };
  std::swap(a[lo + 1], a[(lo + hi) / 2]);
  order(lo, hi);
  order(lo + 1, hi);
  order(lo, lo + 1);
  const T pivot = a[lo + 1];
  int i = lo + 1, j = hi;
  for (;;) {
    while (pivot > a[++i]) continue;
    while (a[--j] > pivot) continue;
    if (j < i) break;
    std::swap(a[i], a[j]);
  }
  a[lo + 1] = a[j];
  a[j] = pivot;
  return {i, j};
}

template <class T>
void plain_sort(T* a, int lo, int hi) {
  if (hi - lo >= 7) {
    const auto [i, j] = partition(a, lo, hi);
    plain_sort(a, lo, j - 1);
    return plain_sort(a, i, hi);
  }
  for (int i = lo + 1; i <= hi; ++i) {
    for (int k = i; k > lo && a[k - 1] > a[k]; --k) std::swap(a[k - 1], a[k]);
  }
}

template <class T>
void plain_select(T* a, int n, int k) {
  int lo = 0, hi = n - 1;
  while (hi > lo + 1) {
    const auto [i, j] = partition(a, lo, hi);
    if (j >= k) hi = j - 1;
    if (j <= k) lo = i;
  }
  if (hi == lo + 1 && a[lo] > a[hi]) std::swap(a[lo], a[hi]);
}

template <class T>
std::map<std::string, std::function<T(int i, int n, std::mt19937& random)>> inputs() {
  using Limits = std::numeric_limits<T>;
  constexpr T tiny = Limits::denorm_min(), small = Limits::min(), large = Limits::max();
  constexpr T infinity = Limits::infinity(), nan = Limits::quiet_NaN();
  static const T odd[] = {0,  -T(0), tiny,     -tiny,     small, large, -large,
                          -1, 1,     infinity, -infinity, nan,   -nan};
  const auto now_and_then = [](int odd_count) {
    return [odd_count](int i, int, auto& r) {
      return r() % 8 == 0 ? odd[r() % odd_count] : static_cast<T>(i);
    };
  };
  return {{"random", [](int, int, auto& r) { return std::normal_distribution<T>()(r); }},
          {"one of three", [](int, int, auto& r) { return static_cast<T>(r() % 3); }},
          {"equal", [](int, int, auto&) { return T(-5); }},
          {"sorted", [](int i, int, auto&) { return static_cast<T>(i); }},
          {"reversed", [](int i, int n, auto&) { return static_cast<T>(n - i); }},
          {"organ pipe", [](int i, int n, auto&) { return static_cast<T>(i < n / 2 ? i : n - i); }},
          {"sawtooth", [](int i, int, auto&) { return static_cast<T>(i % 37); }},
          {"odd numbers", [](int, int, auto& r) { return odd[r() % 11]; }},
          {"odd numbers and NaNs", [](int, int, auto& r) { return odd[r() % 13]; }},
          {"odd numbers now and then", now_and_then(11)},
          {"and NaNs now and then", now_and_then(13)}};
}

constexpr int lengths[] = {0,   1,   2,   3,   4,   5,   6,   7,    8,    9,    10,
                           12,  15,  31,  33,  34,  35,  36,  63,   64,   65,   66,
                           67,  68,  69,  72,  97,  127, 128, 129,  130,  131,  133,
                           200, 255, 511, 512, 513, 514, 600, 1000, 2049, 5000, 20000};

/// Calls test(data with a margin, n) for every input.
template <class T, class Test>
void for_each(Test test) {
  std::mt19937 random(1);
  for (const auto& [name, element] : inputs<T>()) {
    for (const int n : lengths) {
      SCOPED_TRACE(name + ", n = " + std::to_string(n));
      std::vector<T> a;
      for (int i = 0; i < n; ++i) a.push_back(element(i, n, random));
      // The margin must stay, and would tempt a scan that leaves the data.
      for (int i = 0; i < 16; ++i) a.push_back(i % 2 == 0 ? T(-1e30) : T(1e30));
      test(a, n);
      if (testing::Test::HasFailure()) return;
    }
  }
}

template <class T>
bool has_nan(const std::vector<T>& a) {
  return std::ranges::any_of(a, [](T x) { return std::isnan(x); });
}

/// NaNs leave the order open, but everything must still be there.
template <class T>
void expect_same(const std::vector<T>& found, const std::vector<T>& expected) {
  auto x = bits(found), y = bits(expected);
  if (has_nan(expected)) {
    std::ranges::sort(x);
    std::ranges::sort(y);
  }
  EXPECT_EQ(x, y);
}

TYPED_TEST(EachPrecision, SortsLeaveTheTextbooksArrangement) {
  using T = TypeParam;
  for_each<T>([](const std::vector<T>& data, int n) {
    auto sorted = data, expected = data;
    Entries<T>::sort(n, sorted.data());
    if (!has_nan(data)) plain_sort(expected.data(), 0, n - 1);
    expect_same(sorted, expected);
    for (const int stride : {1, 3}) {
      std::vector<T> spaced(data.size() * stride, T(7)), expected_spaced = spaced;
      for (size_t i = 0; i < data.size(); ++i) {
        spaced[i * stride] = data[i];
        expected_spaced[i * stride] = expected[i];
      }
      Entries<T>::sort_step(n, spaced.data(), stride);
      expect_same(spaced, expected_spaced);
    }
  });
}

TYPED_TEST(EachPrecision, SelectionLeavesTheTextbooksArrangement) {
  using T = TypeParam;
  for_each<T>([&](const std::vector<T>& data, int n) {
    for (const int k : {0, 1, n / 3, n / 2, n - 2, n - 1}) {
      if (k < 0 || k >= n) continue;
      auto selected = data, expected = data;
      const T x = Entries<T>::select(n, selected.data(), k);
      plain_select(expected.data(), n, k);
      ASSERT_EQ(bits(selected), bits(expected)) << k;
      ASSERT_EQ(bits(std::vector{x}), bits(std::vector{selected[k]}));
      if (has_nan(data)) continue;
      std::sort(expected.begin(), expected.begin() + n);
      EXPECT_EQ(x, expected[k]) << k;
    }
  });
}

TYPED_TEST(EachPrecision, RadixOrdersByBits) {
  using T = TypeParam;
  using Word = typename Entries<T>::word;
  const auto check = [](std::vector<T> data, int n) {
    if (n == 0) return;
    auto expected = data;
    std::vector<T> work(data.size(), T(7));
    std::sort(expected.begin(), expected.begin() + n,
              [](const T& x, const T& y) { return std::strong_order(x, y) < 0; });
    EXPECT_EQ(Entries<T>::radix_sort(data.data(), work.data(), n), SORT_OK);
    EXPECT_EQ(bits(data), bits(expected));
    EXPECT_EQ(work[n], 7) << "written beyond the end of the work space";
  };
  for_each<T>(check);
  // Fewer digits that differ take fewer passes: the result must end in the data all the same.
  std::mt19937_64 random(2);
  constexpr int digits = 3 * sizeof(T) / 4;
  for (unsigned used = 0; used < 1u << digits; ++used) {
    SCOPED_TRACE("digits " + std::to_string(used));
    Word mask = 0;
    for (int d = 0; d < digits; ++d) {
      if ((used >> d & 1) == 0) continue;
      mask |= Word{d % 3 == 2 ? 0x3ffu : 0x7ffu} << (d / 3 * 32 + d % 3 * 11);
    }
    const Word rest = static_cast<Word>(random()) & ~mask;
    std::vector<T> data(301);
    for (T& x : data) x = std::bit_cast<T>(static_cast<Word>((random() & mask) | rest));
    check(data, 300);
  }
}

TEST(Sort, MoreFloatsThanAFloatCounts) {
  std::mt19937 random(3);
  std::vector<float> a((1 << 24) + 4099);
  for (auto& x : a) x = static_cast<float>(random());
  auto spaced = a;
  __zoksQSort(static_cast<int32_t>(a.size()), a.data());
  EXPECT_TRUE(std::ranges::is_sorted(a));
  __zoksQSortStep(static_cast<int32_t>(a.size()), spaced.data(), 1);
  EXPECT_TRUE(spaced == a);
}

TEST(Sort, RadixAndPrimitivesRefuse) {
  const auto expect_refusals = [](auto function, auto filler) {
    decltype(filler) a[] = {2, 1}, b[] = {5, 5};
    for (const int32_t n : {0, -1}) {
      EXPECT_EQ(function(nullptr, b, n), SORT_NULL_POINTER);
      EXPECT_EQ(function(a, nullptr, n), SORT_NULL_POINTER);
      EXPECT_EQ(function(a, b, n), SORT_BAD_LENGTH);
    }
    EXPECT_TRUE(a[0] == 2 && a[1] == 1 && b[0] == 5 && b[1] == 5);
  };
  expect_refusals(p8_tebsSortRadixAscend_32f_I, 0.f);
  expect_refusals(p8_tebsSortRadixAscend_64f_I, 0.);
  expect_refusals(p8_tebsCopy_32f, 0.f);
  int32_t word = 3;
  EXPECT_EQ(p8_tebsZero_32s(nullptr, 0), SORT_NULL_POINTER);
  for (const int32_t n : {0, -1}) EXPECT_EQ(p8_tebsZero_32s(&word, n), SORT_BAD_LENGTH);
  EXPECT_EQ(word, 3);
}

TEST(Sort, PrimitivesCopyAndZeroJustWhatTheyAreTold) {
  for (const int n : {1, 2, 15, 16, 17, 64, 65, 1000, 2900}) {
    std::vector<float> from(n, 7), to(n + 2, -1), copied(n + 2, 7);
    std::vector<int32_t> words(n + 2, 9), zeroed(n + 2, 0);
    copied.front() = copied.back() = -1, zeroed.front() = zeroed.back() = 9;
    EXPECT_EQ(p8_tebsCopy_32f(from.data(), &to[1], n), SORT_OK);
    EXPECT_EQ(p8_tebsZero_32s(&words[1], n), SORT_OK);
    EXPECT_EQ(to, copied);
    EXPECT_EQ(words, zeroed);
  }
}

}  // namespace
