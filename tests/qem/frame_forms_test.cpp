// SPDX-License-Identifier: MIT
// Forms of the frames that no kernel uses yet, with toy operations, and what simd/ adds to the
// vector types, for both vector widths. This unit is compiled for AVX.
#include <math.h>
#include <qem/_src/qem_core/frame/guarded.hpp>
#include <qem/_src/qem_core/frame/scalar_call.hpp>
#include <qem/_src/qem_core/simd/lookup.hpp>

#include <random>

#include "harness.hpp"

using namespace orv_test;

namespace {

/// Two results, x + 1 and 2 x. Slow when x > 100: x - 1 and -x, with a code.
template <class Element>
struct Split {
  using T = Element;
  static constexpr int block = 16;
  static constexpr char _QEM_THISFUNC_NAME[] = "vxSplit";
  static constexpr orv::Environment environment = orv::environment_toward_zero;

  template <class V>
  static void lane(V x, V& y1, V& y2) {
    y1 = x + 1;
    y2 = x * 2;
  }
  template <class V>
  static int rare(V x) {
    return orv::mask_of(orv::greater(x, orv::splat<V>(100)));
  }
  static int slow(const T* x, T* y1, T* y2) {
    *y1 = *x - 1;
    *y2 = -*x;
    return QEM_STATUS_OVERFLOW;
  }
};

int32_t mend_both(QemErrorContext* record) {
  EXPECT_EQ(record->res1, 199);
  EXPECT_EQ(record->res2, -200);
  record->res1 = 5, record->res2 = 6;
  return 0;
}

TEST(Forms, BothResultsCanBeMended) {
  const auto check = []<class T>(T) {
    in_fresh_thread([] {
      orv_qem_kernel_SetErrorCallBack(mend_both);
      orv_qem_kernel_SetMode(QEM_ERRMODE_CALLBACK);
      for (int n = 0; n <= longest; ++n) {
        std::vector<T> x(n), r1(n + 1, 77), r2(n + 1, 77), e1(n + 1, 77), e2(n + 1, 77);
        for (int i = 0; i < n; ++i) {
          const bool slow = i % 3 == n % 3;
          x[i] = slow ? 200 : i, e1[i] = slow ? 5 : i + 1, e2[i] = slow ? 6 : 2 * i;
        }
        orv::guarded(Split<T>{}, n, x.data(), r1.data(), r2.data());
        EXPECT_EQ(r1, e1);
        EXPECT_EQ(r2, e2);
      }
    });
  };
  check(float{});
  check(double{});
}

/// z - s w, and a code for a real part of 0.
struct Combined {
  using T = QemComplexDouble;
  static constexpr char _QEM_THISFUNC_NAME[] = "vzCombined";
  static constexpr orv::Environment environment = orv::environment_extended;
  static inline Words inside;
  double s;

  int call(const T* z, const T* w, T* r) const {
    inside = words_now();
    *r = {z->re - s * w->re, z->im - s * w->im};
    return z->re == 0 ? QEM_STATUS_SINGULARITY : QEM_STATUS_OK;
  }
  int call(const T* z, T* r) const { return call(z, z, r); }
};

TEST(Forms, ScalarCallsWorkOnCopies) {
  in_fresh_thread([] {
    const Words before{sse_usual | 0x2000, 0x27F};
    for (const int n : {-3, 0, 1, 5}) {
      for (const bool two : {false, true}) {
        std::vector<char> room(5 * sizeof(QemComplexDouble) + 1);  // begins at an odd byte
        auto* z = reinterpret_cast<QemComplexDouble*>(room.data() + 1);
        for (int i = 0; i < 5; ++i) {
          const QemComplexDouble element = {i % 2 * 1.0, i + 1.0};
          memcpy(reinterpret_cast<char*>(z + i), &element, sizeof element);
        }
        listen();
        const Combined op{2};
        const Words after = under(before, [&] {
          two ? orv::scalar_calls(op, n, z, z, z) : orv::scalar_calls(op, n, z, z);
        });
        EXPECT_EQ(after, before);
        for (int i = 0; i < 5; ++i) {
          EXPECT_EQ(orv::load_one(orv::parts_of(z + i) + 1), i < n ? -(i + 1.0) : i + 1.0);
        }
        EXPECT_EQ(codes_heard().size(), n > 0 ? (n + 1) / 2 : 0);
        if (n > 0) {
          EXPECT_EQ(Combined::inside.x87 & 0xF00, orv::x87_extended);
          EXPECT_EQ(Combined::inside.sse & ~sse_flags, before.sse & ~0xE040);
        }
      }
    }
  });
}

// ---- Vectors -----------------------------------------------------------------------------------

template <class T, class V>
std::vector<T> numbers_of(const V& v) {
  std::vector<T> x(sizeof v / sizeof(T));
  memcpy(x.data(), &v, sizeof v);
  return x;
}

template <class V>
void check_arithmetic(std::mt19937_64& random) {
  using T = orv::Lane<V>;
  constexpr int count = orv::lanes<V>;
  std::vector<T> a(2 * count), b(2 * count);
  for (int i = 0; i < 2 * count; ++i) {
    a[i] = static_cast<T>(random() % 1000) / 7, b[i] = static_cast<T>(random() % 3) - a[i];
  }
  const V x = orv::load<V>(a.data()), y = orv::load<V>(b.data());
  V even, odd, first, second;
  orv::deinterleave(x, orv::load<V>(&a[count]), even, odd);
  orv::interleave(even, odd, first, second);
  EXPECT_EQ(numbers_of<T>(first), numbers_of<T>(x));
  const V infinite_or_x = orv::select(orv::greater(x, y), orv::splat<V>(INFINITY), x);
  for (int i = 0; i < count; ++i) {
    EXPECT_EQ(numbers_of<T>(orv::square_root(x))[i], std::sqrt(a[i]));
    EXPECT_EQ(numbers_of<T>(even)[i], a[2 * i]);
    EXPECT_EQ(numbers_of<T>(odd)[i], a[2 * i + 1]);
    EXPECT_EQ(numbers_of<T>(infinite_or_x)[i], a[i] > b[i] ? INFINITY : a[i]);
  }
}

template <class V>
void check_doubles(std::mt19937_64& random) {
  constexpr int count = orv::lanes<V>;
  std::vector<uint64_t> a(count);
  for (uint64_t& word : a) word = random();
  orv::Int<V> x;
  memcpy(&x, a.data(), sizeof x);
  const auto arithmetic = numbers_of<int64_t>(orv::shift_right<V, 13>(x));
  const auto logical = numbers_of<uint64_t>(orv::shift_right_logical<V, 13>(x));
  for (int i = 0; i < count; ++i) {
    EXPECT_EQ(arithmetic[i], static_cast<int64_t>(a[i]) >> 13);
    EXPECT_EQ(logical[i], a[i] >> 13);
  }

  static orv::Quad<double> quads[64];
  static orv::Triple<double> triples[64];
  for (int i = 0; i < 64; ++i) {
    for (int j = 0; j < 4; ++j) quads[i].number[j] = i * 4 + j;
    for (int j = 0; j < 3; ++j) triples[i].number[j] = i * 4 + j;
  }
  for (uint64_t& word : a) word = word % 64 << 52 | 5;  // the index stands in the exponent field
  const V indexed = orv::load<V>(reinterpret_cast<const double*>(a.data()));
  const orv::IndicesInHighWord<V, 20> indices(indexed);
  V four[4], three[3];
  orv::lookup(quads, indices, four);
  orv::lookup(triples, indices, three);
  for (int i = 0; i < count; ++i) {
    for (int j = 0; j < 4; ++j) EXPECT_EQ(numbers_of<double>(four[j])[i], (a[i] >> 52) * 4 + j);
    for (int j = 0; j < 3; ++j) EXPECT_EQ(numbers_of<double>(three[j])[i], (a[i] >> 52) * 4 + j);
  }
}

TEST(Vectors, DoAsTheirLanesWould) {
  std::mt19937_64 random(5);
  for (int round = 0; round < 100; ++round) {
    check_arithmetic<__m128>(random);
    check_arithmetic<__m128d>(random);
    check_arithmetic<__m256>(random);
    check_arithmetic<__m256d>(random);
    check_doubles<__m128d>(random);
    check_doubles<__m256d>(random);
  }
}

/// Words that a frame asks for: SSE rounding and flushing, x87 precision; what it found comes back.
TEST(Forms, ControlWords) {
  in_fresh_thread([] {
    for (const QemMode denormals : {DENORMALS_KEPT, DENORMALS_FLUSHED}) {
      orv_qem_kernel_SetMode(denormals);
      for (const uint32_t sse : {0x1F80u, 0x5FA4u, 0xFFC0u}) {
        for (const uint16_t x87 : {0x37F, 0x27F, 0xC7F, 0x072}) {
          for (const orv::Environment& wanted :
               {orv::environment_none, orv::environment_mode, orv::environment_nearest,
                orv::environment_toward_zero, orv::environment_x87_double,
                orv::environment_x87_extended, orv::environment_extended}) {
            const Words before{sse, x87};
            Words inside;
            const Words after = under(before, [&] {
              const orv::ControlWords words(wanted);
              inside = words_now();
            });
            const bool flush = denormals == DENORMALS_FLUSHED && wanted.follows_mode;
            const uint32_t asked = (sse & ~0xE040u) | wanted.sse | (flush ? 0x8040u : 0);
            EXPECT_EQ(inside.sse, wanted.keeps_sse ? sse : asked);
            EXPECT_EQ(inside.x87, wanted.x87 == 0 ? x87 : (x87 & ~0xF00) | wanted.x87);
            EXPECT_EQ(after, before);
          }
        }
      }
    }
  });
}

}  // namespace
