// What surrounds the arithmetic of every kernel: lengths, ends of vectors, alignment, order of
// reports, control words, exception flags.
#include "harness.hpp"

#include <limits>

using namespace orv_test;

namespace {

template <class T>
constexpr bool is_real = std::is_floating_point_v<T>;

/// Vectors for a call with reported arguments in many places, both ends among them, or in all; and
/// what calls of single elements make of it.
template <class T>
struct Vectors {
  std::vector<T> a, b, r;
  Codes codes;

  Vectors(const Kernel& kernel, int n)
      : a(ordinary<T>(kernel, n, 1)), b(ordinary<T>(kernel, n, 2)), r(n) {
    if constexpr (is_real<T>) {
      std::vector<SpecialValue> rows = special_values(kernel);
      std::erase_if(rows, [](const SpecialValue& row) { return row.code == 0; });
      for (int i = 0; i < n && !rows.empty(); ++i) {
        const bool reported = n % 4 == 0 || i == 0 || i % 5 == 2 || i == n - 1;
        if (reported) a[i] = static_cast<T>(rows[i * 7 % rows.size()].a);
      }
    }
    expect(kernel);
  }

  void expect(const Kernel& kernel) {
    listen();
    codes.clear();
    for (size_t i = 0; i < a.size(); ++i) {
      reports().clear();
      call(kernel, 1, &a[i], &b[i], &r[i]);
      for (const Report& report : reports()) codes.emplace_back(report.code, static_cast<int>(i));
    }
    reports().clear();
  }
};

TEST(Frame, CountsAtOrBelowZeroTouchNothing) {
  for_each_kernel([](const Kernel& kernel, auto element) {
    using T = decltype(element);
    listen();
    orv_qem_kernel_SetErrStatus(42);
    for (const int32_t n : {0, -1, -5, std::numeric_limits<int32_t>::min()}) {
      call<T>(kernel, n, nullptr, nullptr, nullptr);
    }
    EXPECT_EQ(orv_qem_kernel_GetErrStatus(), 42);
    EXPECT_TRUE(reports().empty());
  });
}

/// A call on vectors at given places: the results are those of single calls, nothing around the
/// output changes, reports carry the places of their elements, the last status stays, and no upper
/// half of a register is left in use.
template <class T>
void check_in_place_of(const Kernel& kernel, const Vectors<T>& v, char* a, char* b, char* r,
                       const GuardedBytes& output) {
  const size_t n = v.a.size(), bytes = n * sizeof(T);
  memset(output.begin(), 0xA5, static_cast<size_t>(output.end() - output.begin()));
  if (kernel.shape == Shape::Binary) memcpy(b, v.b.data(), bytes);
  memcpy(a, v.a.data(), bytes);
  reports().clear();
  orv_qem_kernel_SetErrStatus(42);
  call(kernel, static_cast<int32_t>(n), reinterpret_cast<T*>(a), reinterpret_cast<T*>(b),
       reinterpret_cast<T*>(r));
  const bool clear = upper_halves_clear();
  ASSERT_EQ(memcmp(r, v.r.data(), bytes), 0) << "n " << n;
  ASSERT_EQ(codes_heard(), v.codes) << "n " << n;
  ASSERT_EQ(orv_qem_kernel_GetErrStatus(), v.codes.empty() ? 42 : v.codes.back().first);
  ASSERT_TRUE(clear) << "upper halves of registers, after the call";
  for (const Report& report : reports()) ASSERT_TRUE(report.upper_halves_clear);
  memset(r, 0xA5, bytes);
  for (const char* p = output.begin(); p < output.end(); ++p) {
    ASSERT_EQ(*p, '\xA5') << "n " << n << ": wrote at " << p - r;
  }
}

TEST(Frame, StaysWithinItsVectorsAtAnyAlignment) {
  for_each_kernel([](const Kernel& kernel, auto element) {
    using T = decltype(element);
    constexpr int places = 32;
    const GuardedBytes a(longest * sizeof(T) + places), b(longest * sizeof(T) + places),
        r(longest * sizeof(T) + places);
    for (int n = 1; n <= longest; ++n) {
      const Vectors<T> v(kernel, n);
      const size_t bytes = n * sizeof(T);
      check_in_place_of(kernel, v, a.end() - bytes, b.end() - bytes, r.end() - bytes, r);
      check_in_place_of(kernel, v, r.begin(), b.begin(), r.begin(), r);  // the output is an input
      check_in_place_of(kernel, v, a.begin(), r.begin(), r.begin(), r);
      const bool anywhere = n == 3 || n == longest;
      for (int i = 0; i < (anywhere ? places * places : 1); ++i) {
        const int from = i / places, to = i % places, second = (from * 5 + to * 3) % places;
        SCOPED_TRACE(testing::Message() << "from byte " << from << " to byte " << to);
        check_in_place_of(kernel, v, a.begin() + from, b.begin() + second, r.begin() + to, r);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  });
}

// ---- Control words -----------------------------------------------------------------------------

template <class T>
std::vector<T> with_denormals(std::vector<T> x) {
  if constexpr (is_real<T>) {
    for (size_t i = 3; i < x.size(); i += 5) x[i] = std::numeric_limits<T>::denorm_min() * (i + 1);
  }
  return x;
}

TEST(Frame, CallersWordsDoNotMatterAndComeBack) {
  for_each_kernel([](const Kernel& kernel, auto element) {
    using T = decltype(element);
    Vectors<T> v(kernel, longest);
    v.a = with_denormals(v.a), v.b = with_denormals(v.b);
    v.expect(kernel);

    for (const uint32_t rounding : {0u, 0x2000u, 0x4000u, 0x6000u}) {
      for (const uint32_t denormals : {0u, flush_to_zero, denormals_are_zero, 0x8040u}) {
        for (const uint16_t x87 : {0x37F, 0x27F, 0x07F, 0xF7F, 0x77F}) {
          for (const uint32_t flags : {0u, 0x24u}) {  // raised before the call
            const Words before{sse_usual | rounding | denormals | flags, x87};
            std::vector<T> r(longest);
            reports().clear();
            const Words after =
                under(before, [&] { call(kernel, longest, v.a.data(), v.b.data(), r.data()); });
            SCOPED_TRACE(testing::Message() << std::hex << "words " << before.sse << " " << x87);
            ASSERT_EQ(after.x87, before.x87);
            ASSERT_EQ(after.sse & ~sse_flags, before.sse & ~sse_flags);
            if (frameless(kernel)) continue;
            ASSERT_TRUE(same_bits(r, v.r));
            ASSERT_EQ(codes_heard(), v.codes);
            ASSERT_EQ(after.sse & flags, flags);
            if ((rounding | denormals) != 0) {
              ASSERT_EQ(after.sse, before.sse) << "the flags are not those from before";
            }
          }
        }
      }
    }
  });
}

TEST(Frame, FlushedModeTakesDenormalsAsZero) {
  for_each_kernel([](const Kernel& kernel, auto element) {
    using T = decltype(element);
    if constexpr (is_real<T>) {
      const T tiny = std::numeric_limits<T>::denorm_min(), big = std::numeric_limits<T>::min() / 2;
      const std::vector<T> denormals = {tiny, -tiny, big, -big}, zeros = {0, -T{0}, 0, -T{0}};
      const auto run = [&](QemMode field, const std::vector<T>& x, int n) {
        listen();
        orv_qem_kernel_SetMode(field);
        std::vector<T> a, r(n);
        for (int i = 0; i < n; ++i) a.push_back(x[i % 4]);
        const Words before = words_now();
        call(kernel, n, a.data(), a.data(), r.data());
        EXPECT_EQ(words_now().sse & ~sse_flags, before.sse & ~sse_flags);
        return std::pair(r, codes_heard());
      };
      for (const int n : {1, 4, longest}) {
        const auto kept = run(DENORMALS_KEPT, denormals, n);
        const auto flushed = run(DENORMALS_FLUSHED, denormals, n);
        const auto of_zeros = run(DENORMALS_KEPT, zeros, n);
        EXPECT_TRUE(same_bits(flushed.first, frameless(kernel) ? kept.first : of_zeros.first));
        EXPECT_EQ(flushed.second, frameless(kernel) ? kept.second : of_zeros.second);
        for (const QemMode other : {0x040000u, 0x080000u, 0x200000u, 0x380000u, 0x3C0000u}) {
          const auto as_kept = run(other, denormals, n);
          EXPECT_TRUE(same_bits(as_kept.first, kept.first)) << std::hex << other;
          EXPECT_EQ(as_kept.second, kept.second) << std::hex << other;
        }
      }
    }
  });
}

// ---- Exception flags ---------------------------------------------------------------------------

TEST(Frame, OrdinaryArgumentsRaiseNothing) {
  for_each_kernel([](const Kernel& kernel, auto element) {
    using T = decltype(element);
    for (int n = 1; n <= longest; ++n) {
      for (uint32_t seed = 1; seed < 40; seed += 2) {
        const std::vector<T> a = ordinary<T>(kernel, n, seed), b = ordinary<T>(kernel, n, seed + 1);
        std::vector<T> r(n);
        ASSERT_EQ(flags_of([&] { call(kernel, n, a.data(), b.data(), r.data()); }), 0) << "n " << n;
      }
    }
  });
}

struct Flag {
  const char* function;
  double a;
  int flag;
};
constexpr Flag slow_path_flags[] = {
    {"Exp", 1000, FE_OVERFLOW}, {"Exp", -1000, FE_UNDERFLOW}, {"Expm1", 1000, FE_OVERFLOW},
    {"Ln", 0, FE_DIVBYZERO},    {"Ln", -1, FE_INVALID},       {"Log10", 0, FE_DIVBYZERO},
    {"Log10", -1, FE_INVALID},  {"Log1p", -1, FE_DIVBYZERO},  {"Log1p", -2, FE_INVALID},
};

TEST(Frame, FlagsOfASlowPathLastUnlessAWordIsPutBack) {
  for_each_kernel([](const Kernel& kernel, auto element) {
    using T = decltype(element);
    if constexpr (is_real<T>) {
      orv_qem_kernel_SetMode(QEM_ERRMODE_IGNORE);  // only the arithmetic raises flags
      for (const Flag& row : slow_path_flags) {
        if (kernel.function != row.function) continue;
        for (const int n : {1, longest}) {
          SCOPED_TRACE(testing::Message() << "a = " << row.a << ", n " << n);
          std::vector<T> a = ordinary<T>(kernel, n), r(n);
          a[n / 2] = static_cast<T>(row.a);
          const auto run = [&] { call(kernel, n, a.data(), a.data(), r.data()); };
          EXPECT_NE(flags_of(run) & row.flag, 0);
          EXPECT_EQ(flags_of([&] { under({sse_usual | 0x4000, x87_usual}, run); }), 0);
        }
      }
    }
  });
}

/// Denormals count as zero where the caller's words say so; a signalling NaN raises its flag.
template <class T, class Bits>
void check_abs(void (*abs)(int32_t, const T*, T*), Bits signalling, Bits quiet) {
  for (int n = 1; n <= longest; ++n) {
    std::vector<T> a(n, -std::numeric_limits<T>::denorm_min()), r(n, 7);
    under({sse_usual | denormals_are_zero, x87_usual}, [&] { abs(n, a.data(), r.data()); });
    EXPECT_TRUE(same_bits(r, std::vector<T>(n)));
    std::vector<Bits> bits(n, signalling);
    memcpy(a.data(), bits.data(), n * sizeof(T));
    EXPECT_EQ(flags_of([&] { abs(n, a.data(), r.data()); }), FE_INVALID);
    memcpy(bits.data(), r.data(), n * sizeof(T));
    for (const Bits x : bits) EXPECT_EQ(x << 1, quiet << 1);  // of either sign
  }
}

TEST(Frame, AbsRunsUnderTheCallersWords) {
  check_abs<float, uint32_t>(_qemsAbs, 0xFF800001, 0x7FC00001);
  check_abs<double, uint64_t>(_qemdAbs, 0xFFF0000000000001, 0x7FF8000000000001);
}

// ---- Registers and stack -----------------------------------------------------------------------

#ifdef __i386__
TEST(Frame, TakesAStackAlignedToFourBytes) {
  for_each_kernel([](const Kernel& kernel, auto element) {
    using T = decltype(element);
    const Vectors<T> v(kernel, longest);
    for (const int shift : {0, 4, 8, 12}) {
      std::vector<T> r(longest);
      const auto n = reinterpret_cast<const void*>(longest);
      reports().clear();
      if (kernel.shape == Shape::Unary) {
        call_off_balance(kernel.address, {n, v.a.data(), r.data(), nullptr}, shift);
      } else {
        call_off_balance(kernel.address, {n, v.a.data(), v.b.data(), r.data()}, shift);
      }
      EXPECT_TRUE(same_bits(r, v.r)) << "shift " << shift;
      EXPECT_EQ(codes_heard(), v.codes) << "shift " << shift;
    }
  });
}
#endif

}  // namespace
