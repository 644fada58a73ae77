// SPDX-License-Identifier: MIT
// Every function of the C++ face against the kernel that it stands for, and what is refused.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>
#include <orv/math.hpp>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <functional>
#include <limits>
#include <numeric>
#include <set>

#include "support/kernels.hpp"

namespace {

constexpr size_t n = 37;  // blocks and a tail

template <class T>
constexpr char type_letter = std::is_same_v<T, float>                 ? 's'
                             : std::is_same_v<T, double>              ? 'd'
                             : std::is_same_v<T, std::complex<float>> ? 'c'
                                                                      : 'z';

/// Ordinary numbers among such as some function reports.
template <class T>
std::vector<T> arguments(double scale) {
  const double special[] = {0, -1, 1000, -1000, 2, 1e300 * 1e300, 1};
  std::vector<T> x;
  for (size_t i = 0; i < n; ++i) {
    const double v = i % 5 == 1 ? special[i / 5 % 7] : scale * (0.03 + 0.025 * i);
    x.push_back(static_cast<T>(v));
  }
  return x;
}

/// Bits, without those of NaNs' signs.
template <class T>
std::string bits(std::vector<T> y) {
  using Part = decltype(std::abs(T()));
  auto* parts = reinterpret_cast<Part*>(y.data());
  for (size_t i = 0; i < y.size() * sizeof(T) / sizeof(Part); ++i) {
    if (parts[i] != parts[i]) parts[i] = std::numeric_limits<Part>::quiet_NaN();
  }
  return {reinterpret_cast<const char*>(y.data()), y.size() * sizeof(T)};
}

/// The library's kernel under the face's name; for cis, by the type of its argument.
const orv_test::Kernel* find_kernel(std::string_view name, char type, int slot) {
  static const std::vector<orv_test::Kernel> all = orv_test::all_slots();
  if (name == "cis") type = type == 's' ? 'c' : 'z';
  for (const orv_test::Kernel& kernel : all) {
    std::string lower = kernel.function;
    for (char& c : lower) c = static_cast<char>(std::tolower(c));
    if (lower == name && kernel.type == type && kernel.slot == slot) return &kernel;
  }
  return nullptr;
}

template <template <class> class Form, class F>
constexpr bool is = std::is_base_of_v<Form<F>, F>;

/// The bits of a function's results, in its form. Moves leave every element where it is.
template <class T, class F>
std::array<std::string, 2> call(F f, const std::vector<T>& a, const std::vector<T>& b, T number,
                                const std::vector<int32_t>& places, orv::level level) {
  using namespace orv::detail;
  std::vector<T> y(n);
  if constexpr (is<two_results, F>) {
    const auto [r1, r2] = f(a, level);
    return {bits(r1), bits(r2)};
  } else if constexpr (is<one_argument, F>) {
    return {bits(f(a, level))};
  } else if constexpr (is<two_arguments, F>) {
    return {bits(f(a, b, level))};
  } else if constexpr (is<second_number, F>) {
    return {bits(f(a, number, level))};
  } else if constexpr (is<linear_fraction, F>) {
    f(a, b, number, number, number, number, y, level);
  } else if constexpr (is<strided_pack, F> || is<strided_unpack, F>) {
    f(a, 1, y);
  } else {
    f(a, places, y);
  }
  return {bits(y)};
}

/// The same from the kernel.
std::array<std::string, 2> call(const orv_test::Kernel& kernel, const void* a, const void* b,
                                const std::vector<int32_t>& places) {
  const double scalars[] = {2.5, 2.5, 2.5, 2.5};  // a complex number takes two
  std::vector<double> r[2] = {std::vector<double>(2 * n), std::vector<double>(2 * n)};
  kernel.call({.n = n,
               .inputs = {a, b},
               .results = {r[0].data(), r[1].data()},
               .scalars = scalars,
               .indices = places.data()});
  std::array<std::string, 2> found;
  kernel.in_its_type([&]<class Part>(Part) {
    for (int k = 0; k < kernel.signature().results; ++k) {
      std::vector<Part> y(kernel.result_size(n));
      std::memcpy(y.data(), r[k].data(), y.size() * sizeof(Part));
      found[k] = bits(y);
    }
  });
  return found;
}

struct Tried {
  int functions = 0;
  std::set<int32_t> codes;
};

/// Compares results, facts, and reported codes.
template <class T, class F>
void try_function(F f, Tried& tried) {
  const std::vector<T> a = arguments<T>(1), b = arguments<T>(3);
  T number = 2.5;
  if constexpr (!std::is_floating_point_v<T>) number = {2.5, 2.5};
  std::vector<int32_t> places(n);
  std::iota(places.begin(), places.end(), F::name.ends_with('m') ? 1 : 0);
  constexpr orv::function_facts facts = F::template facts<T>();
  for (const orv::level level : {orv::la, orv::ha, orv::ep}) {
    const orv_test::Kernel* const kernel =
        find_kernel(F::name, type_letter<T>, static_cast<int>(level));
    ASSERT_NE(kernel, nullptr) << F::name;
    std::vector<orv::report> reports;
    const orv::collect collecting(reports);
    EXPECT_EQ(call(f, a, b, number, places, level), call(*kernel, a.data(), b.data(), places))
        << kernel->name();
    EXPECT_EQ(facts.error(level), kernel->ulp.value_or(0)) << kernel->name();
    for (const orv::report& report : reports) {
      EXPECT_TRUE(facts.reports(report.code)) << kernel->name() << " reported " << report.code;
      tried.codes.insert(report.code);
    }
  }
  ++tried.functions;
}

TEST(CppMath, EveryFunctionIsItsKernelAndReportsWhatItsFactsTell) {
  Tried tried;
  orv::for_each_function([&]<class F>(F f) {
    if constexpr (F::template exists_for<float>) try_function<float>(f, tried);
    if constexpr (F::template exists_for<double>) try_function<double>(f, tried);
    if constexpr (F::template exists_for<std::complex<float>>) {
      try_function<std::complex<float>>(f, tried);
    }
    if constexpr (F::template exists_for<std::complex<double>>) {
      try_function<std::complex<double>>(f, tried);
    }
  });
  EXPECT_EQ(tried.functions, 164);
  EXPECT_EQ(tried.codes, (std::set<int32_t>{1, 2, 3, 4}));
}

static_assert(orv::ln.facts<double>().reports(QEM_STATUS_DOMAIN));
static_assert(!orv::ln.facts<double>().reports(QEM_STATUS_OVERFLOW));
static_assert(orv::exp.facts<float>().error(orv::ha) < 1);
static_assert(!orv::ln.exists_for<int>);

TEST(CppMath, TakesWhateverHasElements) {
  const double c_array[] = {1, 4, 9};
  std::array<double, 3> array{};
  orv::sqrt(c_array, array);
  EXPECT_EQ(array, (std::array<double, 3>{1, 2, 3}));
  std::vector<double> v(c_array, c_array + 3);
  orv::sqrt(std::span<const double>(v), std::span<double>(v));  // in place
  EXPECT_EQ(v, (std::vector<double>{1, 2, 3}));
  orv::mul(v, array, v);
  EXPECT_EQ(v, (std::vector<double>{1, 4, 9}));
  EXPECT_TRUE(orv::exp(std::vector<float>()).empty());
}

TEST(CppMath, MovesElementsByStepsIndicesAndMasks) {
  const std::vector<double> a{10, 11, 12, 13, 14};
  using V = std::vector<double>;
  EXPECT_EQ(orv::packi(a, 2), (V{10, 12, 14}));
  EXPECT_EQ(orv::packi(a, -3), (V{14, 11}));
  EXPECT_EQ(orv::packi(a, 7), (V{10}));
  V y(7, 0);
  orv::unpacki(V{1, 2, 3}, 3, y);
  EXPECT_EQ(y, (V{1, 0, 0, 2, 0, 0, 3}));
  orv::unpacki(V{4, 5}, -2, y);
  EXPECT_EQ(y, (V{1, 0, 0, 2, 5, 0, 4}));
  V same(3);
  orv::packi(a, 0, same);
  EXPECT_EQ(same, (V{10, 10, 10}));
  const std::vector<int64_t> wide{4, 0, 3};
  const std::vector<int32_t> narrow{4, 0, 3}, mask{0, 7, 0, -1, 1};
  const std::vector<int64_t> wide_mask{0, int64_t{1} << 40, 0, 1, 1};
  EXPECT_EQ(orv::packv(a, wide), (V{14, 10, 13}));
  EXPECT_EQ(orv::packv(a, narrow), (V{14, 10, 13}));
  V z(5, 0), w(5, 0);
  orv::unpackv(V{1, 2, 3}, wide, z);
  orv::unpackv(V{1, 2, 3}, narrow, w);
  EXPECT_EQ(z, (V{2, 0, 0, 3, 1}));
  EXPECT_EQ(w, z);
  EXPECT_EQ(orv::packm(a, mask), (V{11, 13, 14}));
  EXPECT_EQ(orv::packm(a, wide_mask), (V{11, 13, 14}));
  orv::unpackm(V{1, 2, 3}, mask, z);
  EXPECT_EQ(z, (V{2, 1, 0, 2, 3}));
}

TEST(CppMath, RefusesWhatDoesNotFitAndWritesNothing) {
  const std::vector<double> x(4, 0.5), shorter(3, 0.5);
  std::vector<double> y(4, -7), y3(3, -7);
  const std::vector<int32_t> beyond{0, 4}, negative{0, -1}, mask{1, 1, 0, 0};
  const struct {
    const char* text;
    std::function<void()> call;
  } rows[] = {
      {"orv::exp: the result has 3 elements; it needs 4", [&] { orv::exp(x, y3); }},
      {"orv::pow: the second argument has 3 elements; it needs 4",
       [&] { orv::pow(x, shorter, y); }},
      {"orv::pow: the second argument has 3 elements; it needs 4", [&] { orv::pow(x, shorter); }},
      {"orv::sincos: the second result has 3 elements; it needs 4", [&] { orv::sincos(x, y, y3); }},
      {"orv::packi: 4 elements at steps of 2 don't fit into 4", [&] { orv::packi(x, 2, y); }},
      {"orv::unpacki: 3 elements at steps of -2 don't fit into 4",
       [&] { orv::unpacki(shorter, -2, y); }},
      {"orv::packi: a step of 0 needs a result", [&] { orv::packi(x, 0); }},
      {"orv::packv: index 4 at 1; the vector has 4 elements", [&] { orv::packv(x, beyond); }},
      {"orv::packv: index -1 at 1; the vector has 4 elements", [&] { orv::packv(x, negative); }},
      {"orv::unpackv: the vector of indices has 2 elements; it needs 4",
       [&] { orv::unpackv(x, beyond, y); }},
      {"orv::packm: the result has 3 elements; it needs 2", [&] { orv::packm(x, mask, y3); }},
      {"orv::packm: the mask has 4 elements; it needs 3", [&] { orv::packm(shorter, mask); }},
      {"orv::unpackm: the argument has 3 elements; it needs 2",
       [&] { orv::unpackm(shorter, mask, y); }},
  };
  for (const auto& row : rows) {
    try {
      row.call();
      ADD_FAILURE() << row.text << ": not refused";
    } catch (const orv::error& e) {
      EXPECT_STREQ(e.what(), row.text);
      EXPECT_EQ(e.status(), QEM_STATUS_BAD_ARGUMENT);
      EXPECT_EQ(std::string(row.text).find(e.function() + ": "), 5u);
    }
    EXPECT_EQ(y, std::vector<double>(4, -7));
    EXPECT_EQ(y3, std::vector<double>(3, -7));
  }
}

#if SIZE_MAX > 0xFFFFFFFF
/// One megabyte of memory, seen again and again.
template <class T>
class Repeated {
 public:
  static constexpr size_t part = size_t{1} << 20;
  explicit Repeated(size_t size) : bytes_(size * sizeof(T)) {
    const int file = memfd_create("repeated", 0);
    EXPECT_EQ(ftruncate(file, part), 0);
    base_ = static_cast<char*>(mmap(nullptr, bytes_ + part, PROT_NONE,
                                    MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0));
    for (size_t at = 0; at < bytes_; at += part) {
      EXPECT_NE(mmap(base_ + at, part, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file, 0),
                MAP_FAILED);
    }
    close(file);
  }
  Repeated(const Repeated&) = delete;
  Repeated& operator=(const Repeated&) = delete;
  ~Repeated() { munmap(base_, bytes_ + part); }
  std::span<T> span() { return {reinterpret_cast<T*>(base_), bytes_ / sizeof(T)}; }

 private:
  size_t bytes_;
  char* base_;
};

TEST(CppMath, CountsBeyond32Bits) {
  const size_t size = (size_t{1} << 31) + 5, every = Repeated<float>::part / sizeof(float);
  Repeated<float> x(size), y(size);
  std::fill_n(x.span().begin(), every, 4.0f);
  x.span()[3] = -1;
  std::vector<orv::report> reports;
  {
    const orv::collect collecting(reports);
    orv::sqrt(x.span(), y.span());
  }
  ASSERT_EQ(reports.size(), size / every + 1);
  for (size_t k = 0; k < reports.size(); ++k) ASSERT_EQ(reports[k].index, k * every + 3);
  EXPECT_EQ(y.span()[size - 1], 2);
}
#endif

}  // namespace
