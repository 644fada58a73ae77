#include "harness.hpp"

#include <math.h>
#include <sys/mman.h>
#include <unistd.h>

#include <limits>
#include <random>

namespace orv_test {
namespace {

struct Domain {
  const char *types, *function;
  double low, high;
};
constexpr Domain domains[] = {
    {"sdcz", "Abs", -1e15, 1e15}, {"sdcz", "Add", -1e15, 1e15}, {"sdcz", "Conj", -1e15, 1e15},
    {"sdcz", "Mul", -1e15, 1e15}, {"sdcz", "Sqr", -1e15, 1e15}, {"sdcz", "Sub", -1e15, 1e15},
    {"d", "Exp", -690, 690},      {"s", "Exp", -86, 86},        {"d", "Expm1", -700, 700},
    {"s", "Expm1", -86, 86},      {"sd", "Ln", 0, 1e30},        {"sd", "Log10", 0, 1e30},
    {"sd", "Log1p", -0.9, 1e30},
};

Domain domain_of(const Kernel& kernel) {
  for (const Domain& domain : domains) {
    if (kernel.function == domain.function && strchr(domain.types, kernel.type)) return domain;
  }
  return {"", "", 0.3, 0.8};
}

/// Magnitudes even on a logarithmic scale, or even on the interval where it is short.
double draw(const Domain& domain, double tiny, std::mt19937& random) {
  const auto uniform = [&] { return random() / 4294967296.0; };
  if (domain.low > 0) return domain.low + (domain.high - domain.low) * uniform();
  const bool negative = domain.low < 0 && random() % 2 == 0;
  const double top = negative ? -domain.low : domain.high;
  const double magnitude = tiny * pow(top / tiny, uniform());
  return negative ? -magnitude : magnitude;
}

template <class T>
int32_t code_of(const std::string& f, T x, T exp_lowest, T exp_largest) {
  const bool logarithm = f == "Ln" || f == "Log10" || f == "Log1p";
  const T pole = f == "Log1p" ? -1 : 0;
  if (logarithm && x < pole) return QEM_STATUS_DOMAIN;
  if (logarithm && x == pole) return QEM_STATUS_SINGULARITY;
  if (isinf(x)) return QEM_STATUS_OK;
  if ((f == "Exp" || f == "Expm1") && x > exp_largest) return QEM_STATUS_OVERFLOW;
  if (f == "Exp" && x < exp_lowest) return QEM_STATUS_UNDERFLOW;
  const bool denormal = x != 0 && fabs(x) < std::numeric_limits<T>::min();
  if (f == "Expm1" && denormal) return QEM_STATUS_UNDERFLOW;
  return QEM_STATUS_OK;
}

template <class T>
std::vector<SpecialValue> special_values_of(const std::string& function, T small, T exp_lowest,
                                            T exp_zero, T exp_largest) {
  using Limits = std::numeric_limits<T>;
  const T inf = Limits::infinity();
  std::vector<SpecialValue> list = {{Limits::quiet_NaN(), QEM_STATUS_OK}};
  for (const T magnitude : {T(0), Limits::denorm_min(), Limits::min(), small, nextafter(T(1), T(0)),
                            T(1), nextafter(T(1), T(2)), T(2), T(60), T(1000), Limits::max(), inf,
                            exp_largest, nextafter(exp_largest, inf), T(1.0001) * exp_largest,
                            -exp_lowest, nextafter(-exp_lowest, inf), -exp_zero}) {
    for (const T x : {magnitude, -magnitude}) {
      list.push_back({x, code_of(function, x, exp_lowest, exp_largest)});
    }
  }
  return list;
}

thread_local std::vector<Report> heard;

int32_t log_report(QemErrorContext* c) {
  const bool clear = upper_halves_clear();
  heard.push_back({c->code, c->index, c->arg1, c->arg2, c->res1, c->res2,
                   std::string(c->func_name, static_cast<size_t>(c->func_name_len)), clear});
  return 0;
}

}  // namespace

bool frameless(const Kernel& kernel) {
  return kernel.function == "Conj" || (kernel.function == "Abs" && strchr("sd", kernel.type));
}

template <class T>
std::vector<T> ordinary(const Kernel& kernel, int count, uint32_t seed) {
  std::vector<T> x(count);
  const auto fill = [&](auto* parts, double tiny) {
    std::mt19937 random(seed);
    for (size_t i = 0; i < x.size() * sizeof(T) / sizeof *parts; ++i) {
      parts[i] = static_cast<std::remove_reference_t<decltype(*parts)>>(
          draw(domain_of(kernel), tiny, random));
    }
  };
  if (kernel.type == 's' || kernel.type == 'c') {
    fill(reinterpret_cast<float*>(x.data()), 1e-15);
  } else {
    fill(reinterpret_cast<double*>(x.data()), 1e-100);
  }
  return x;
}
template std::vector<float> ordinary(const Kernel&, int, uint32_t);
template std::vector<double> ordinary(const Kernel&, int, uint32_t);
template std::vector<QemComplexFloat> ordinary(const Kernel&, int, uint32_t);
template std::vector<QemComplexDouble> ordinary(const Kernel&, int, uint32_t);

std::vector<SpecialValue> special_values(const Kernel& kernel) {
  // The last arguments at which Exp is normal and finite, and one at which it is 0.
  if (kernel.type == 's') {
    return special_values_of(kernel.function, 1e-15f, -87.33654022216797f, -104.5f,
                             88.72283172607422f);
  }
  return special_values_of(kernel.function, 1e-100, -708.3964185322641, -745.2, 709.782712893384);
}

GuardedBytes::GuardedBytes(size_t least) {
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  const size_t bytes = (least + page - 1) / page * page;
  void* all = mmap(nullptr, bytes + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (all == MAP_FAILED) abort();
  begin_ = static_cast<char*>(all) + page;
  end_ = begin_ + bytes;
  if (mprotect(begin_, bytes, PROT_READ | PROT_WRITE) != 0) abort();
}

GuardedBytes::~GuardedBytes() {
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  munmap(begin_ - page, static_cast<size_t>(end_ - begin_) + 2 * page);
}

bool upper_halves_clear() {
  constexpr int registers = sizeof(void*) == 8 ? 16 : 8;
  unsigned char upper[registers][16];
#define ORV_UPPER(k) "vextractf128 $1, %%ymm" #k ", 16*" #k "(%0)\n\t"
  asm volatile(ORV_UPPER(0) ORV_UPPER(1) ORV_UPPER(2) ORV_UPPER(3) ORV_UPPER(4) ORV_UPPER(5)
                   ORV_UPPER(6) ORV_UPPER(7)
#ifdef __x86_64__
                       ORV_UPPER(8) ORV_UPPER(9) ORV_UPPER(10) ORV_UPPER(11) ORV_UPPER(12)
                           ORV_UPPER(13) ORV_UPPER(14) ORV_UPPER(15)
#endif
               :
               : "r"(upper)
               : "memory");
#undef ORV_UPPER
  static constexpr unsigned char zeros[sizeof upper] = {};
  return memcmp(upper, zeros, sizeof upper) == 0;
}

#ifdef __i386__
void call_off_balance(void (*function)(), const std::vector<const void*>& arguments, int shift) {
  const void* const* first = arguments.data();
  size_t count = arguments.size();
  asm volatile(
      "movl %%esp, %%esi\n\t"
      "andl $-16, %%esp\n\t"
      "subl %%ecx, %%esp\n"
      "1:\tpushl -4(%%edx,%%edi,4)\n\t"
      "decl %%edi\n\t"
      "jnz 1b\n\t"
      "call *%%eax\n\t"
      "movl %%esi, %%esp"
      : "+a"(function), "+c"(shift), "+d"(first), "+D"(count)
      :
      : "esi", "memory", "cc", "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7");
}
#endif

std::vector<Report>& reports() { return heard; }

void listen() {
  heard.clear();
  orv_qem_kernel_SetErrorCallBack(log_report);
  orv_qem_kernel_SetMode(QEM_ERRMODE_CALLBACK);
}

Codes codes_heard() {
  Codes list;
  for (const Report& report : heard) list.emplace_back(report.code, report.index);
  return list;
}

}  // namespace orv_test
