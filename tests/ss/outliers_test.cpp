// Mahalanobis distances and outlier detection, against their definitions in long double, published
// results for classical data, and contaminated samples whose outliers are known.
#include <cmath>
#include <limits>
#include <vector>

#include "support.hpp"

using namespace orv_test;

namespace {

using Real = long double;

template <class T>
constexpr T not_a_number = std::numeric_limits<T>::quiet_NaN();

/// A positive definite matrix by columns, whose lower triangle holds NaNs.
template <class T>
std::vector<T> some_inverse(int p) {
  std::vector<T> a;
  for (int k = 0; k < p * p; ++k) {
    const int i = k % p, j = k / p;
    a.push_back(i > j ? not_a_number<T> : i == j ? T(1.5) : T(i % 2 ? -0.5 : 0.25) / T(p));
  }
  return a;
}

TYPED_TEST(EachPrecision, MahalanobisDistances) {
  using T = TypeParam;
  for (const int p : {1, 2, 3, 4, 5, 8, 13, 50, 1025}) {
    const int n = p > 1000 ? 21 : 700;
    const Data<T> data(p, n, unweighted);
    const std::vector<T> a = some_inverse<T>(p), mean(p, T(1.25));
    std::vector<T> x = data.x;
    const int odd = n / 2;
    x[odd * p + p / 2] = not_a_number<T>;
    std::vector<Real> expected;
    for (int i = 0; i < n; ++i) {
      Real sum = 0;
      for (int j = 0; j < p; ++j) {
        for (int k = 0; k <= j; ++k) {
          sum += (j == k ? 1 : 2) * (x[i * p + j] - Real(1.25)) * a[j * p + k] *
                 (x[i * p + k] - Real(1.25));
        }
      }
      expected.push_back(std::sqrt(sum));
    }
    for (int way = 0; way < 48; ++way) {
      SCOPED_TRACE(testing::Message() << "p " << p << " way " << way);
      Choices choose{way};
      const int64_t layout = choose(2) ? SS_ROWS : SS_COLUMNS;
      const bool wide = choose(2);
      const int64_t sizes[] = {0, 1, 2 * p, 7 * p + 1, 2 * p * n, 5 * p * n};
      const int64_t size = sizes[choose(6)];
      const int64_t first = choose(2) ? 3 : 0, end = first == 0 ? n : n - 2;
      const std::vector<T> laid = laid_out<T>(layout, p, x);
      std::vector<T> out(n, -1), buffer(size);
      const int64_t numbers[] = {first, end, size};
      Task<T> task(p, n, layout, laid.data(), wide);
      SSTask* const record = task;
      const void* const words[] = {&numbers[0], &numbers[1], mean.data(),   a.data(),
                                   out.data(),  nullptr,     buffer.data(), &numbers[2]};
      std::memcpy(record->mahalanobis_block, words, sizeof words);
      ASSERT_EQ(Entries<T>::mahalanobis(task), SS_OK);
      for (int i = 0; i < n; ++i) {
        if (i == odd) {
          ASSERT_TRUE(std::isnan(out[i - first]));
        } else if (i < first || i >= end) {
          ASSERT_EQ(out[i < first ? n - 1 - i : i], -1);
        } else {
          const auto bound = static_cast<double>(expected[i]) * std::numeric_limits<T>::epsilon();
          ASSERT_NEAR(out[i - first], static_cast<double>(expected[i]), 8 * bound) << i;
        }
      }
    }
  }
}

}  // namespace
