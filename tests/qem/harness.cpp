// SPDX-License-Identifier: MIT
#include "rows.hpp"

#include <math.h>

#include <algorithm>
#include <limits>
#include <random>

namespace orv_test {
namespace {

struct Domain {
  const char *types, *function;
  double low, high;
  double smallest = 0;  // magnitude, where cubes or quotients underflow
};
constexpr Domain domains[] = {
    {"d", "Exp", -690, 690},
    {"s", "Exp", -86, 86},
    {"d", "Expm1", -700, 700},
    {"s", "Expm1", -86, 86},
    {"sd", "Ln", 0, 1e30},
    {"sd", "Log10", 0, 1e30},
    {"sd", "Log1p", -0.9, 1e30},
    {"sdcz", "CIS", -60000, 60000},
    {"sd", "Sqrt", 0, 1e30},
    {"s", "Cos", -10000, 10000},
    {"s", "Sin", -10000, 10000},
    {"s", "SinCos", -10000, 10000},
    {"s", "Tan", -10000, 10000},
    {"sd", "InvSqrt", 0, 1e30},
    {"sd", "Pow3o2", 0, 1e20},
    {"sd", "Pow", 0.5, 20},
    {"sd", "Powx", 0, 1e30},
    {"s", "Atan", -1e8, 1e8, 1e-12},
    {"sd", "Atan2", -1000, 1000, 0.001},
    {"d", "Cosh", -708, 708},
    {"s", "Cosh", -87, 87},
    {"d", "Sinh", -708, 708},
    {"s", "Sinh", -87, 87},
    {"sd", "Acos", -1, 1},
    {"sd", "Asin", -1, 1},
    {"sd", "Acosh", 1, 1000},
    {"sd", "Atanh", -0.9, 0.9},
    {"d", "Erfc", -26, 26},
    {"s", "Erfc", -9, 9},
    {"d", "CdfNorm", -37, 37},
    {"s", "CdfNorm", -12, 12},
    {"sd", "CdfNormInv", 0.001, 0.999},
    {"sd", "ErfcInv", 0.001, 1.999},
    {"sd", "ErfInv", 0.001, 0.999},
    {"cz", "Pow", 0.5, 4},
    {"cz", "Arg", -1000, 1000, 0.001},
    {"c", "Div", -1000, 1000, 0.001},  // squares at EP
    {"cz", "Exp", -60, 60, 0.001},
    {"cz", "Ln", -1000, 1000, 0.001},
    {"cz", "Cos", -80, 80},
    {"cz", "Cosh", -80, 80},
    {"cz", "Sin", -80, 80},
    {"cz", "Sinh", -80, 80},
    {"cz", "Tan", -10, 10},
    {"cz", "Tanh", -10, 10},
    {"cz", "Atan", -10, 10},
    {"cz", "Atanh", -10, 10},
};

/// Functions without a row of their own take numbers of either sign, far from over- and underflow.
Domain domain_of(const Kernel& kernel) {
  for (const Domain& domain : domains) {
    if (kernel.function == domain.function && strchr(domain.types, kernel.type)) return domain;
  }
  return {"", "", -1e15, 1e15};
}

/// Magnitudes even on a logarithmic scale, or even on the interval where it is short.
double draw(const Domain& domain, double tiny, std::mt19937& random) {
  const auto uniform = [&] { return random() / 4294967296.0; };
  if (domain.low > 0) return domain.low + (domain.high - domain.low) * uniform();
  const bool negative = domain.low < 0 && random() % 2 == 0;
  const double top = negative ? -domain.low : domain.high;
  const double smallest = domain.smallest > 0 ? domain.smallest : tiny;
  const double magnitude = smallest * pow(top / smallest, uniform());
  return negative ? -magnitude : magnitude;
}

template <class T>
int32_t code_of(const std::string& f, T x, T exp_lowest, T exp_largest) {
  const bool logarithm = f == "Ln" || f == "Log10" || f == "Log1p";
  const bool root = f == "Sqrt" || f == "InvSqrt" || f == "Pow3o2";
  const bool reciprocal = f == "Inv" || f == "InvCbrt" || f == "InvSqrt";
  const bool angle = f == "Sin" || f == "Cos" || f == "SinCos" || f == "Tan";
  const bool arc = f == "Acos" || f == "Asin";
  const T pole = f == "Log1p" ? -1 : 0;
  if (arc && fabs(x) > 1) return QEM_STATUS_DOMAIN;
  if (f == "CdfNormInv" || f == "ErfcInv" || f == "ErfInv") {
    const T low = f == "ErfInv" ? -1 : 0, high = f == "ErfcInv" ? 2 : 1;
    if (x < low || x > high) return QEM_STATUS_DOMAIN;
    return x == low || x == high ? QEM_STATUS_SINGULARITY : QEM_STATUS_OK;
  }
  if ((logarithm || root) && x < pole) return QEM_STATUS_DOMAIN;
  if ((logarithm || reciprocal) && x == pole) return QEM_STATUS_SINGULARITY;
  if (f == "Acosh" && x < 1) return QEM_STATUS_DOMAIN;
  if (f == "Atanh" && fabs(x) == 1) return QEM_STATUS_SINGULARITY;
  if (f == "Atanh" && fabs(x) > 1) return QEM_STATUS_DOMAIN;
  if (isinf(x)) return angle ? QEM_STATUS_DOMAIN : QEM_STATUS_OK;
  if (f == "Powx" && x < 0) return QEM_STATUS_DOMAIN;  // the exponent is a fraction
  if ((f == "Exp" || f == "Expm1") && x > exp_largest) return QEM_STATUS_OVERFLOW;
  if ((f == "Cosh" || f == "Sinh") && fabs(x) > exp_largest) return QEM_STATUS_OVERFLOW;
  if (f == "Exp" && x < exp_lowest) return QEM_STATUS_UNDERFLOW;
  if ((f == "Erfc" && x > 30) || (f == "CdfNorm" && x < -40)) return QEM_STATUS_UNDERFLOW;
  const bool denormal = x != 0 && fabs(x) < std::numeric_limits<T>::min();
  if (f == "Expm1" && denormal) return QEM_STATUS_UNDERFLOW;
  return QEM_STATUS_OK;
}

/// Arguments around which a real function of one argument has its branches.
template <class T>
std::vector<SpecialValue> unary_values(const std::string& function, T small, T exp_lowest,
                                       T exp_zero, T exp_largest) {
  using Limits = std::numeric_limits<T>;
  const T inf = Limits::infinity();
  std::vector<SpecialValue> list = {{{Limits::quiet_NaN()}, {}, QEM_STATUS_OK, {}}};
  for (const T magnitude : {T(0), Limits::denorm_min(), Limits::min(), small, nextafter(T(1), T(0)),
                            T(1), nextafter(T(1), T(2)), T(2), T(60), T(1000), Limits::max(), inf,
                            exp_largest, nextafter(exp_largest, inf), T(1.0001) * exp_largest,
                            -exp_lowest, nextafter(-exp_lowest, inf), -exp_zero}) {
    for (const T x : {magnitude, -magnitude}) {
      list.push_back({{x}, {}, code_of(function, x, exp_lowest, exp_largest), {}});
    }
  }
  return list;
}

/// The number that a row's constant stands for in the kernel's type.
double number_of(double x, bool in_float) {
  const auto of = [&](auto limits) -> double {
    if (fabs(x) >= largest && !isinf(x)) return copysign(limits.max(), x);
    if (x != 0 && fabs(x) <= 2 * tiny) return x / tiny * limits.denorm_min();
    return x;
  };
  return in_float ? of(std::numeric_limits<float>{}) : of(std::numeric_limits<double>{});
}

thread_local std::vector<Report> heard;

int32_t log_report(QemErrorContext* record) {
  const bool clear = upper_halves_clear();
  heard.push_back({*record, clear});
  return 0;
}

}  // namespace

void call(const Kernel& kernel, int64_t n, const void* a, const void* b, void* r1, void* r2) {
  orv_call::Arguments arguments = usual_arguments(kernel, n);
  arguments.inputs[0] = a, arguments.inputs[1] = b;
  arguments.results[0] = r1, arguments.results[1] = r2;
  kernel.call(arguments);
}

template <class R>
Vectors<R>::Vectors(const Kernel& kernel, int n) {
  for (int j = 0; j < kernel.signature().inputs; ++j) in[j].resize(kernel.input_size(n));
  for (int j = 0; j < kernel.signature().results; ++j) out[j].resize(kernel.result_size(n));
}

template <class R>
void Vectors<R>::copy_element(const Kernel& kernel, int i, Vectors& other, int to) const {
  const auto copy = [&](const std::vector<R>& from, std::vector<R>& into, size_t parts) {
    if (!from.empty()) memcpy(&into[to * parts], &from[i * parts], parts * sizeof(R));
  };
  for (int j = 0; j < 2; ++j) {
    copy(in[j], other.in[j], kernel.input_size(1));
    copy(out[j], other.out[j], kernel.result_size(1));
  }
}

template <class R>
Vectors<R> ordinary(const Kernel& kernel, int n, uint32_t seed) {
  Vectors<R> v(kernel, n);
  std::mt19937 random(seed);
  for (std::vector<R>& input : v.in) {
    for (R& x : input) {
      x = static_cast<R>(draw(domain_of(kernel), kernel.in_float() ? 1e-15 : 1e-100, random));
    }
  }
  return v;
}

std::vector<SpecialValue> special_values(const Kernel& kernel) {
  std::vector<SpecialValue> list;
  if (strchr("sd", kernel.type) && kernel.signature().inputs == 1) {
    // The last arguments at which Exp, or its half, is normal and finite, and one at which it is 0.
    const bool half = kernel.function == "Cosh" || kernel.function == "Sinh";
    list = kernel.type == 's' ? unary_values(kernel.function, 1e-15f, -87.33654022216797f, -104.5f,
                                             half ? 89.41598510742188f : 88.72283172607422f)
                              : unary_values(kernel.function, 1e-100, -708.3964185322641, -745.2,
                                             half ? 710.4758600739439 : 709.782712893384);
  }
  const bool complex = strchr("cz", kernel.type) != nullptr;
  const bool silent = kernel.name() == "sDiv_EP" ||
                      (complex && kernel.slot == EP && kernel.kernel.starts_with("W7EP"));
  std::vector<Row> all = real_rows();
  all.insert(all.end(), complex_rows().begin(), complex_rows().end());
  for (const auto& [function, row] : all) {
    if (function != kernel.function || kernel.input_size(1) != row.a.size()) continue;
    SpecialValue value = row;
    for (auto* numbers : {&value.a, &value.b, &value.r}) {
      for (double& x : *numbers) x = number_of(x, kernel.in_float());
    }
    if (silent) value.code = 0;
    list.push_back(value);
  }
  return list;
}

template <class R>
void put(const Kernel& kernel, const SpecialValue& row, Vectors<R>& v, int i) {
  const size_t parts = kernel.input_size(1);
  for (size_t part = 0; part < parts; ++part) {
    v.in[0][i * parts + part] = static_cast<R>(row.a[part]);
    if (!v.in[1].empty()) {
      // Compilers choose which of two NaNs comes out.
      const double alike = std::isnan(row.a[part]) ? 1 : -row.a[part];
      v.in[1][i * parts + part] = static_cast<R>(row.b.empty() ? alike : row.b[part]);
    }
  }
}

#define ORV_INSTANTIATE(R)                                    \
  template struct Vectors<R>;                                 \
  template Vectors<R> ordinary(const Kernel&, int, uint32_t); \
  template void put(const Kernel&, const SpecialValue&, Vectors<R>&, int);
ORV_INSTANTIATE(float)
ORV_INSTANTIATE(double)
#undef ORV_INSTANTIATE

bool upper_halves_clear() {
  constexpr int registers = sizeof(void*) == 8 ? 16 : 8;
  alignas(64) unsigned char area[832] = {}, *const upper = area + 576;  // as XSAVE lays them out
  asm volatile("xsave %0" : "+m"(area) : "a"(4), "d"(0));
  return std::all_of(upper, upper + 16 * registers, [](unsigned char byte) { return byte == 0; });
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
