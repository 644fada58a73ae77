// SPDX-License-Identifier: MIT
// Calls that must go through an exported entry or through a table: this program puts its own in
// front of the library's, counts, and passes on.
#include <dlfcn.h>
#include <errno.h>
#include <orv/qem.h>
#include <orv/serv.h>
#include <stdarg.h>

#include <map>
#include <tuple>

#include "harness.hpp"

using namespace orv_test;

namespace {

std::map<std::string, int> count;

template <class F>
F* next(const char* name, F*) {
  ++count[name];
  return reinterpret_cast<F*>(dlsym(RTLD_NEXT, name));
}

struct Line {
  int channel, key, count;
  std::string name;
  int32_t index;
  double value;
  int error_number;
};
std::vector<Line> lines;

int32_t change_result(QemErrorContext* record) {
  record->res1 = 8;
  return 0;
}

// Tables whose kernels only note which slot was called with what.
template <class F>
struct Recorder;
template <class... A>
struct Recorder<void (*)(A...)> {
  static inline std::tuple<A...> arguments;
  static inline int slot = -1;

  template <int at>
  static void kernel(A... a) {
    arguments = {a...};
    slot = at;
  }

  /// Stubs have a type for the indices that kernels take at two widths.
  template <class T, class U>
  static bool same(const T& a, const U& b) {
    static_assert(sizeof a == sizeof b);
    return memcmp(&a, &b, sizeof a) == 0;
  }

  /// Calls `stub` with arguments that all differ. Those of moves add a last one of 1.
  template <class... S>
  static void check(void (*stub)(S...), int expected_slot) {
    unsigned char distinct = 0;
    const auto sample = [&distinct]<class T>(T x) {
      memset(&x, ++distinct, sizeof x);
      return x;
    };
    const std::tuple<S...> sent{sample(S{})...};
    slot = -1;
    std::apply(stub, sent);
    EXPECT_EQ(slot, expected_slot);
    [&]<size_t... i>(std::index_sequence<i...>) {
      EXPECT_TRUE((same(std::get<i>(arguments), std::get<i>(sent)) && ...));
    }
    (std::index_sequence_for<S...>{});
    if constexpr (sizeof...(S) < sizeof...(A)) {
      EXPECT_EQ(std::get<sizeof...(S)>(arguments), 1);
    }
  }
};

}  // namespace

#define ORV_FORWARD(result, name, parameters, ...) \
  result name parameters { return next(#name, &name)(__VA_ARGS__); }

extern "C" {
ORV_FORWARD(QemMode, orv_qem_kernel_GetMode, ())
ORV_FORWARD(QemMode, orv_qem_kernel_SetMode, (QemMode m), m)
ORV_FORWARD(int64_t, orv_qem_kernel_ReadEnvVarMode, ())
ORV_FORWARD(int32_t, orv_qem_kernel_GetErrStatus, ())
ORV_FORWARD(int32_t, orv_qem_kernel_SetErrStatus, (int32_t s), s)
ORV_FORWARD(int32_t, orv_qem_kernel_ClearErrStatus, ())
ORV_FORWARD(QemErrorCallBack, orv_qem_kernel_GetErrorCallBack, ())
ORV_FORWARD(QemErrorCallBack, orv_qem_kernel_SetErrorCallBack, (QemErrorCallBack c), c)
ORV_FORWARD(QemErrorCallBack, orv_qem_kernel_ClearErrorCallBack, ())
ORV_FORWARD(const void*, orv_qem_kernel_SetInterfInputVectorPointer, (const void* p), p)

#define ORV_ERROR(t, T)                                                                            \
  ORV_FORWARD(                                                                                     \
      void, orv_qem_kernel_##t##Error,                                                             \
      (int32_t code, int32_t index, const T* a, const T* b, T* r1, T* r2, const char* name), code, \
      index, a, b, r1, r2, name)
ORV_ERROR(s, float)
ORV_ERROR(d, double)
ORV_ERROR(c, QemComplexFloat)
ORV_ERROR(z, QemComplexDouble)

void orv_serv_orv_print(int channel, int key, int arguments, ...) {
  Line line{channel, key, arguments, "", 0, 0, errno};
  va_list list;
  va_start(list, arguments);
  if (key <= 741) line.name = va_arg(list, const char*);
  if (key == 735 || key > 741) line.index = va_arg(list, int32_t);
  if (key > 741) line.value = va_arg(list, double);
  va_end(list);
  lines.push_back(line);
  errno = EBADF;  // as if nobody could be told
}

#define ORV_FUNCTION(t, F, shape, ...)                                              \
  const Qem##shape##_##t orv_qem_kernel_##t##F##_ttab[3] = {                        \
      Recorder<Qem##shape##_##t>::kernel<0>, Recorder<Qem##shape##_##t>::kernel<1>, \
      Recorder<Qem##shape##_##t>::kernel<2>};
#include "qem/_bt_gen_ia32/functions.def"
#undef ORV_FUNCTION
}

namespace {

TEST(Entries, CallsGoThroughOtherEntries) {
  in_fresh_thread([] {
    static const double x = 0;
    const struct {
      const char* entry;
      int times;
      void (*call)();
    } cases[] = {
        {"ReadEnvVarMode", 1, [] { orv_qem_kernel_GetMode(); }},
        {"ReadEnvVarMode", 0, [] { orv_qem_kernel_GetMode(); }},
        {"GetMode", 1, [] { orv_qem_kernel_SetMode(2); }},
        {"GetMode", 1, [] { orv_qem_kernel_GetTTableIndex(); }},
        {"GetMode", 0, [] { orv_qem_kernel_GetTTableIndexM(0, 1); }},
        {"SetErrorCallBack", 1, [] { orv_qem_kernel_ClearErrorCallBack(); }},
        {"SetMode", 1, [] { orv_qem_kernel_ClearErrorCallBack(); }},
        {"GetMode", 1, [] { _qemGetMode(); }},
        {"SetMode", 1, [] { EXPECT_EQ(_qemSetMode(0x100), 0xA02u); }},
        {"SetErrStatus", 1, [] { EXPECT_EQ(_qemSetErrStatus(5), 0); }},
        {"GetErrStatus", 1, [] { EXPECT_EQ(_qemGetErrStatus(), 5); }},
        {"SetErrStatus", 1, [] { EXPECT_EQ(_qemSetErrStatus(-2), 5); }},
        {"ClearErrStatus", 1, [] { EXPECT_EQ(_qemClearErrStatus(), -2); }},
        {"GetErrStatus", 1, [] { EXPECT_EQ(_qemGetErrStatus(), 0); }},
        {"SetErrorCallBack", 1, [] { _qemSetErrorCallBack(change_result); }},
        {"GetErrorCallBack", 1, [] { EXPECT_EQ(_qemGetErrorCallBack(), change_result); }},
        {"ClearErrorCallBack", 1, [] { EXPECT_EQ(_qemClearErrorCallBack(), change_result); }},
        {"SetInterfInputVectorPointer", 1,
         [] { EXPECT_EQ(_qemSetInterfInputVectorPointer(&x), &x); }},
    };
    for (const auto& c : cases) {
      SCOPED_TRACE(testing::Message() << "case " << &c - cases << ", " << c.entry);
      count.clear();
      c.call();
      EXPECT_EQ(count[std::string("orv_qem_kernel_") + c.entry], c.times);
    }
  });
}

/// The stubs of all levels, of which `stub` is the plain one.
template <class Kernel, class Stub>
void check_stubs(const std::string& function, Stub* stub) {
  SCOPED_TRACE(function);
  Recorder<Kernel>::check(stub, 1);
  const bool in_float = function[0] == 's' || function[0] == 'c';
  const char* const suffixes[] = {in_float ? "_21" : "_50", "_HA", in_float ? "_11" : "_26"};
  for (const int slot : {0, 1, 2}) {
    void* const entry = dlsym(RTLD_DEFAULT, ("_qem" + function + suffixes[slot]).c_str());
    ASSERT_NE(entry, nullptr) << suffixes[slot];
    Recorder<Kernel>::check(reinterpret_cast<Stub*>(entry), slot);
  }
}

TEST(Entries, StubsCallTheirSlotOfTheTable) {
#define ORV_FUNCTION(t, F, shape, ...) check_stubs<Qem##shape##_##t>(#t #F, _qem##t##F);
#include "qem/_bt_gen_ia32/functions.def"
#undef ORV_FUNCTION
}

TEST(Entries, AFrameReadsTheModeOnce) {
  in_fresh_thread([] {
    alignas(16) char a[longest * 16], r[2][longest * 16];
    for (Kernel kernel : all_slots()) {  // by name, since the tables are this program's
      const std::string name =
          "orv_qem_kernel_" + (kernel.type + kernel.function + '_') + kernel.kernel;
      kernel.call.address = reinterpret_cast<void (*)()>(dlsym(RTLD_DEFAULT, name.c_str()));
      ASSERT_NE(kernel.call.address, nullptr) << name;
      // Below 1 in both types, or for the function without such arguments above it.
      memset(a, kernel.function == "Acosh" ? 0x40 : 0x3F, sizeof a);
      for (const int n : {1, longest / 2}) {
        count.clear();
        call(kernel, n, a, a, r[0], r[1]);
        const bool reads_it = kernel.environment != "none" && kernel.environment != "nearest" &&
                              kernel.environment != "extended";
        EXPECT_EQ(count["orv_qem_kernel_GetMode"], reads_it) << kernel.name();
      }
    }
  });
}

TEST(Entries, KernelsReportThroughTheErrorFunction) {
  in_fresh_thread([] {
    orv_qem_kernel_SetMode(QEM_ERRMODE_IGNORE);
    const auto check = [](auto exp, auto x, const char* error) {
      exp(1, &x, &x);
      EXPECT_EQ(count[error], 1);
    };
    count.clear();
    check(orv_qem_kernel_dExp_G9HAynn, 1000.0, "orv_qem_kernel_dError");
    check(orv_qem_kernel_sExp_G9HAynn, 1000.0f, "orv_qem_kernel_sError");
  });
}

// ---- Messages ----------------------------------------------------------------------------------

TEST(Messages, KeysAndValuesOfEachReport) {
  const double nan = __builtin_nan("");
  const struct {
    int32_t code;
    double a, b, r1, r2;
    std::vector<std::pair<int, double>> expected;  // key and value; a name has the value 0
  } cases[] = {
      {-1, 1, 2, 3, 4, {{735, 0}}},
      {-2, 1, 2, 3, 4, {{736, 0}}},
      {0, 1, 2, 3, 4, {}},
      {1, 1, 1, 3, 3, {{737, 0}, {742, 1}, {743, 3}}},
      {2, 1, 0, 3, 0, {{738, 0}, {742, 1}, {743, 3}}},
      {2, 1, -0.0, 3, -0.0, {{738, 0}, {742, 1}, {743, 3}}},
      {3, 1, 1, 3, 4, {{739, 0}, {744, 1}, {745, 3}, {746, 4}}},
      {4, 1, 2, 3, 3, {{740, 0}, {747, 1}, {748, 2}, {749, 3}}},
      {1, 1, 2, 3, 4, {{737, 0}, {750, 1}, {751, 2}, {752, 3}, {753, 4}}},
      {1, 0, 2, 0, 4, {{737, 0}, {750, 0}, {751, 2}, {752, 0}, {753, 4}}},
      {7, 1, 1, 3, 3, {{741, 0}, {742, 1}, {743, 3}}},
      {1, nan, nan, 3, 3, {{737, 0}, {747, nan}, {748, nan}, {749, 3}}},
      {1, 1, 1, nan, nan, {{737, 0}, {744, 1}, {745, nan}, {746, nan}}},
  };
  for (const auto& c : cases) {
    in_fresh_thread([&] {
      SCOPED_TRACE(testing::Message() << c.code << " " << c.a << " " << c.b);
      const double a[] = {9, 9, c.a}, b[] = {9, 9, c.b};
      double r1[] = {9, 9, c.r1}, r2[] = {9, 9, c.r2};
      orv_qem_kernel_SetMode(QEM_ERRMODE_STDERR | QEM_ERRMODE_ERRNO);
      const auto base = reinterpret_cast<uintptr_t>(a) - 10 * sizeof(double);
      orv_qem_kernel_SetInterfInputVectorPointer(reinterpret_cast<const void*>(base));
      lines.clear();
      errno = 99;
      orv_qem_kernel_dError(c.code, 2, a, b, r1, r2, "vdName");
      const int error_number = errno;
      EXPECT_TRUE(error_number != 99 && error_number != EBADF) << error_number;
      ASSERT_EQ(lines.size(), c.expected.size());
      EXPECT_TRUE(lines.empty() || lines[0].error_number == error_number);
      for (size_t i = 0; i < lines.size(); ++i) {
        const bool has_name = lines[i].key <= 741, has_index = !has_name || lines[i].key == 735;
        EXPECT_EQ(lines[i].channel, 1);
        EXPECT_EQ(lines[i].key, c.expected[i].first);
        EXPECT_EQ(lines[i].count, has_name + 2 * has_index - (has_name && has_index));
        EXPECT_EQ(lines[i].name, has_name ? "vdName" : "");
        EXPECT_EQ(lines[i].index, has_index ? 12 : 0);
        EXPECT_TRUE(same_bits(&lines[i].value, &c.expected[i].second, 1));
      }
    });
  }
}

TEST(Messages, ShowWhatTheCallbackLeft) {
  in_fresh_thread([] {
    const float a = 1;
    float r = 2;
    orv_qem_kernel_SetErrorCallBack(change_result);
    orv_qem_kernel_SetMode(QEM_ERRMODE_CALLBACK | QEM_ERRMODE_STDERR);
    lines.clear();
    orv_qem_kernel_sError(1, 0, &a, &a, &r, &r, "vsName");
    ASSERT_EQ(lines.size(), 4u);  // two results, since the callback changed the first alone
    EXPECT_EQ(lines[2].value, 8);
    EXPECT_EQ(r, 8);
  });
}

}  // namespace
