// SPDX-License-Identifier: MIT
// What surrounds the arithmetic of every kernel: lengths, ends of vectors, alignment, order of
// reports, control words, exception flags.
#include <sys/mman.h>
#include <unistd.h>

#include <cmath>
#include <limits>

#include "harness.hpp"

using namespace orv_test;

namespace {

/// Vectors for a call with reported arguments in many places, both ends among them, or in all; and
/// what calls of single elements make of it.
template <class R>
struct Case : Vectors<R> {
  Codes codes;

  Case(const Kernel& kernel, int n) : Vectors<R>(ordinary<R>(kernel, n)) {
    std::vector<SpecialValue> rows = special_values(kernel);
    std::erase_if(rows, [](const SpecialValue& row) { return row.code == 0; });
    for (int i = 0; i < n && !rows.empty(); ++i) {
      const bool reported = n % 4 == 0 || i == 0 || i % 5 == 2 || i == n - 1;
      if (reported) put(kernel, rows[i * 7 % rows.size()], *this, i);
    }
    expect(kernel, n);
  }

  void expect(const Kernel& kernel, int n) {
    listen();
    codes.clear();
    Vectors<R> one(kernel, 1);
    for (int i = 0; i < n; ++i) {
      reports().clear();
      this->copy_element(kernel, i, one, 0);
      one.call(kernel, 1);
      one.copy_element(kernel, 0, *this, i);
      for (const Report& report : reports()) codes.emplace_back(report.code, i);
    }
    reports().clear();
  }

  /// Results into fresh vectors.
  Vectors<R> run(const Kernel& kernel, int n) const {
    Vectors<R> v = *this;
    for (std::vector<R>& result : v.out) std::fill(result.begin(), result.end(), R{77});
    reports().clear();
    v.call(kernel, n);
    return v;
  }
};

TEST(Frame, CountsAtOrBelowZeroTouchNothing) {
  for_each_kernel([](const Kernel& kernel, auto) {
    listen();
    orv_qem_kernel_SetErrStatus(42);
    for (const int32_t n : {0, -1, -5, std::numeric_limits<int32_t>::min()}) {
      call(kernel, n, nullptr, nullptr, nullptr, nullptr);
    }
    EXPECT_EQ(orv_qem_kernel_GetErrStatus(), 42);
    EXPECT_TRUE(reports().empty());
  });
}

/// Whole pages for `least` bytes, without access right before begin and right at end.
struct GuardedBytes {
  explicit GuardedBytes(size_t least) {
    const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const size_t bytes = (least + page - 1) / page * page;
    void* all = mmap(nullptr, bytes + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    begin = static_cast<char*>(all) + page, end = begin + bytes;
    if (all == MAP_FAILED || mprotect(begin, bytes, PROT_READ | PROT_WRITE) != 0) abort();
  }
  char *begin, *end;
};

/// Where a call's vectors lie. A vector that the shape does not have is empty.
struct Places {
  char *in[2], *out[2];
};

/// A call on vectors at given places: the results are those of single calls, nothing around the
/// outputs changes, reports carry the places of their elements, the last status stays, and no upper
/// half of a register is left in use.
template <class R>
void check_at(const Kernel& kernel, const Case<R>& v, int n, const Places& p,
              const GuardedBytes (&outputs)[2]) {
  for (const GuardedBytes& output : outputs) memset(output.begin, 0xA5, output.end - output.begin);
  for (int j = 1; j >= 0; --j) {  // the first last: the second may lie in an output
    if (!v.in[j].empty()) memcpy(p.in[j], v.in[j].data(), v.in[j].size() * sizeof(R));
  }
  reports().clear();
  orv_qem_kernel_SetErrStatus(42);
  call(kernel, n, p.in[0], p.in[1], p.out[0], p.out[1]);
  const bool clear = upper_halves_clear();
  ASSERT_EQ(codes_heard(), v.codes) << "n " << n;
  ASSERT_EQ(orv_qem_kernel_GetErrStatus(), v.codes.empty() ? 42 : v.codes.back().first);
  ASSERT_TRUE(clear) << "upper halves of registers, after the call";
  for (const Report& report : reports()) ASSERT_TRUE(report.upper_halves_clear);
  for (int j = 0; j < 2; ++j) {
    const size_t bytes = v.out[j].size() * sizeof(R);
    if (bytes == 0) continue;
    ASSERT_EQ(memcmp(p.out[j], v.out[j].data(), bytes), 0) << "n " << n << " result " << j;
    memset(p.out[j], 0xA5, bytes);
    for (const char* c = outputs[j].begin; c < outputs[j].end; ++c) {
      ASSERT_EQ(*c, '\xA5') << "n " << n << ": wrote at " << c - p.out[j];
    }
  }
}

TEST(Frame, StaysWithinItsVectorsAtAnyAlignment) {
  for_each_kernel([](const Kernel& kernel, auto number) {
    using R = decltype(number);
    constexpr int places = 32;
    constexpr size_t most = 2 * longest * sizeof(R) + places;
    static const GuardedBytes in[2]{GuardedBytes(most), GuardedBytes(most)},
        out[2]{GuardedBytes(most), GuardedBytes(most)};
    const bool in_place = kernel.input_size(1) == kernel.result_size(1);
    for (int n = 1; n <= longest; ++n) {
      const Case<R> v(kernel, n);
      const size_t a = kernel.input_size(n) * sizeof(R), r = kernel.result_size(n) * sizeof(R);
      check_at(kernel, v, n, {{in[0].end - a, in[1].end - a}, {out[0].end - r, out[1].end - r}},
               out);
      if (in_place) {  // an output is an input
        check_at(kernel, v, n, {{out[0].begin, in[1].begin}, {out[0].begin, out[1].begin}}, out);
        check_at(kernel, v, n, {{in[0].begin, out[0].begin}, {out[0].begin, out[1].begin}}, out);
      }
      const bool anywhere = n == 3 || n == longest;
      for (int i = 0; i < (anywhere ? places * places : 1); ++i) {
        const int from = i / places, to = i % places, second = (from * 5 + to * 3) % places;
        SCOPED_TRACE(testing::Message() << "from byte " << from << " to byte " << to);
        check_at(kernel, v, n,
                 {{in[0].begin + from, in[1].begin + second},
                  {out[0].begin + to, out[1].begin + second}},
                 out);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  });
}

// ---- Control words -----------------------------------------------------------------------------

TEST(Frame, CallersWordsDoNotMatterAndComeBack) {
  for_each_kernel([](const Kernel& kernel, auto number) {
    using R = decltype(number);
    Case<R> v(kernel, longest);
    for (std::vector<R>& input : v.in) {
      for (size_t i = 3; i < input.size(); i += 5) {
        input[i] = std::numeric_limits<R>::denorm_min() * static_cast<R>(i + 1);
      }
    }
    v.expect(kernel, longest);

    for (const uint32_t rounding : {0u, 0x2000u, 0x4000u, 0x6000u}) {
      for (const uint32_t denormals : {0u, flush_to_zero, denormals_are_zero, 0x8040u}) {
        for (const uint16_t x87 : {0x37F, 0x27F, 0x07F, 0xF7F, 0x77F}) {
          for (const uint32_t flags : {0u, 0x24u}) {  // raised before the call
            const Words before{sse_usual | rounding | denormals | flags, x87};
            Vectors<R> r = v;
            const Words after = under(before, [&] { r = v.run(kernel, longest); });
            SCOPED_TRACE(testing::Message() << std::hex << "words " << before.sse << " " << x87);
            ASSERT_EQ(after.x87, before.x87);
            ASSERT_EQ(after.sse & ~sse_flags, before.sse & ~sse_flags);
            if (frameless(kernel)) continue;
            ASSERT_TRUE(r.same_results(v));
            ASSERT_EQ(codes_heard(), v.codes);
            ASSERT_EQ(after.sse & flags, flags);
            if ((rounding | denormals) != 0 && kernel.environment == "mode") {
              ASSERT_EQ(after.sse, before.sse) << "the flags are not those from before";
            }
          }
        }
      }
    }
  });
}

/// While a kernel reports, the control words are those that the function list names.
TEST(Frame, RunsUnderTheListedWords) {
  static Words inside;
  for_each_kernel([](const Kernel& kernel, auto number) {
    const Case<decltype(number)> v(kernel, longest);
    if (v.codes.empty()) return;
    orv_qem_kernel_SetErrorCallBack([](QemErrorContext*) {
      inside = words_now();
      return 0;
    });
    const Words callers{sse_usual | 0x2000 | denormals_are_zero, 0xC7F};
    under(callers, [&] { v.run(kernel, longest); });
    const std::string& e = kernel.environment;
    const bool keeps_sse = e == "none";
    EXPECT_EQ(inside.sse & 0xE040, keeps_sse ? callers.sse & 0xE040 : 0);
    const int x87 = e == "x87_double"                         ? 0x200
                    : e.starts_with("x87") || e == "extended" ? 0x300
                                                              : 0xC00;
    EXPECT_EQ(inside.x87 & 0xF00, x87);
  });
}

TEST(Frame, FlushedModeTakesDenormalsAsZero) {
  for_each_kernel([](const Kernel& kernel, auto number) {
    using R = decltype(number);
    const R tiny = std::numeric_limits<R>::denorm_min(), big = std::numeric_limits<R>::min() / 2;
    const std::vector<R> denormals = {tiny, -tiny, big, -big}, zeros = {0, -R{0}, 0, -R{0}};
    const auto run = [&](QemMode field, const std::vector<R>& x, int n) {
      listen();
      orv_qem_kernel_SetMode(field);
      Vectors<R> v(kernel, n);
      for (std::vector<R>& input : v.in) {
        for (size_t i = 0; i < input.size(); ++i) input[i] = x[i % 4];
      }
      const Words before = words_now();
      v.call(kernel, n);
      EXPECT_EQ(words_now().sse & ~sse_flags, before.sse & ~sse_flags);
      std::string bytes;
      for (std::vector<R>& result : v.out) {  // compilers choose the sign of a new NaN
        for (R& y : result) y = std::isnan(y) ? std::numeric_limits<R>::quiet_NaN() : y;
        bytes.append(reinterpret_cast<const char*>(result.data()), result.size() * sizeof(R));
      }
      return std::pair(bytes, codes_heard());
    };
    for (const int n : {1, 4, longest}) {
      const auto kept = run(DENORMALS_KEPT, denormals, n);
      const auto flushed = run(DENORMALS_FLUSHED, denormals, n);
      const bool follows_mode =
          !frameless(kernel) && kernel.environment != "nearest" && kernel.environment != "extended";
      EXPECT_EQ(flushed, follows_mode ? run(DENORMALS_KEPT, zeros, n) : kept);
      for (const QemMode other : {0x040000u, 0x080000u, 0x200000u, 0x380000u, 0x3C0000u}) {
        EXPECT_EQ(run(other, denormals, n), kept) << std::hex << other;
      }
    }
  });
}

// ---- Exception flags ---------------------------------------------------------------------------

TEST(Frame, OrdinaryArgumentsRaiseNothing) {
  for_each_kernel([](const Kernel& kernel, auto number) {
    for (int n = 1; n <= longest; ++n) {
      for (uint32_t seed = 1; seed < 20; ++seed) {
        auto v = ordinary<decltype(number)>(kernel, n, seed);
        ASSERT_EQ(flags_of([&] { v.call(kernel, n); }), 0) << "n " << n;
      }
    }
  });
}

TEST(Frame, FlagsOfASlowPathLastUnlessAWordIsPutBack) {
  constexpr int flag_of[] = {0, FE_INVALID, FE_DIVBYZERO, FE_OVERFLOW, FE_UNDERFLOW};
  for_each_kernel([&](const Kernel& kernel, auto number) {
    if (strchr("cz", kernel.type) || kernel.function == "Div") return;
    orv_qem_kernel_SetMode(QEM_ERRMODE_IGNORE);  // only the arithmetic raises flags
    for (const SpecialValue& row : special_values(kernel)) {
      for (const int n : {1, longest}) {
        if (row.code == 0) continue;
        SCOPED_TRACE(testing::Message() << "a = " << row.a[0] << ", n " << n);
        auto v = ordinary<decltype(number)>(kernel, n);
        put(kernel, row, v, n / 2);
        const auto run = [&] { v.call(kernel, n); };
        const bool pole_of_pow =
            kernel.function == "Pow" && row.a[0] == 0;  // reported as domain error
        EXPECT_NE(flags_of(run) & (pole_of_pow ? FE_DIVBYZERO : flag_of[row.code]), 0);
        EXPECT_EQ(flags_of([&] { under({sse_usual | 0x4000, x87_usual}, run); }), 0);
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

/// One of 2.5 and its neighbours is cut to another number in each rounding mode; flags are those of
/// the whole call.
template <class T>
void check_rint(void (*rint)(int32_t, const T*, T*), bool flags_inexact) {
  const struct {
    uint32_t rounding;
    T of_2_5, of_minus_2_5, of_tiny;
  } cases[] = {{0, 2, -2, 0}, {0x2000, 2, -3, 0}, {0x4000, 3, -2, 1}, {0x6000, 2, -2, 0}};
  for (const auto& c : cases) {
    for (int n = 1; n <= longest; ++n) {
      std::vector<T> a(n, 7), r(n, 77), expected(n, 7);
      const auto run = [&](uint32_t denormals) {
        return under({sse_usual | c.rounding | denormals, x87_usual},
                     [&] { rint(n, a.data(), r.data()); });
      };
      EXPECT_EQ(run(0).sse & sse_flags, 0u);  // whole numbers
      EXPECT_TRUE(same_bits(r, expected));
      for (const auto& [x, y] : {std::pair(T(2.5), c.of_2_5), {T(-2.5), c.of_minus_2_5}}) {
        a[n / 2] = x, expected[n / 2] = y;
        EXPECT_EQ(run(0).sse & sse_flags, flags_inexact ? 0x20u : 0u) << x;
        EXPECT_TRUE(same_bits(r, expected)) << x;
      }
      a[n / 2] = std::numeric_limits<T>::denorm_min(), expected[n / 2] = c.of_tiny;
      run(0);
      EXPECT_TRUE(same_bits(r, expected));
      expected[n / 2] = 0;
      run(denormals_are_zero);
      EXPECT_TRUE(same_bits(r, expected));
    }
  }
}

TEST(Frame, RintAndNearbyIntRunUnderTheCallersWords) {
  check_rint(_qemsRint, true);
  check_rint(_qemdRint, true);
  check_rint(_qemsNearbyInt, false);
  check_rint(_qemdNearbyInt, false);
}

// ---- Registers and stack -----------------------------------------------------------------------

#ifdef __i386__
TEST(Frame, TakesAStackAlignedToFourBytes) {
  int kernels = 0;
  for_each_kernel([&](const Kernel& kernel, auto number) {
    using R = decltype(number);
    if (kernel.signature().moves_elements() || kernel.signature().scalars != 0) return;
    ++kernels;
    const Case<R> v(kernel, longest);
    for (const int shift : {0, 4, 8, 12}) {
      Vectors<R> r(kernel, longest);
      reports().clear();
      std::vector<const void*> arguments = {reinterpret_cast<const void*>(longest)};
      for (const auto& input : v.in) {
        if (!input.empty()) arguments.push_back(input.data());
      }
      for (const auto& result : r.out) {
        if (!result.empty()) arguments.push_back(result.data());
      }
      call_off_balance(kernel.call.address, arguments, shift);
      EXPECT_TRUE(r.same_results(v)) << "shift " << shift;
      EXPECT_EQ(codes_heard(), v.codes) << "shift " << shift;
    }
  });
  EXPECT_GT(kernels, 40);
}
#endif

}  // namespace
