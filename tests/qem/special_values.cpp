#include "special_values.hpp"

#include <math.h>

#include <limits>

namespace orv_test {
namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan_ = std::numeric_limits<double>::quiet_NaN();
constexpr double d_max = std::numeric_limits<double>::max();
constexpr double d_min = std::numeric_limits<double>::min();
constexpr double d_tiny = std::numeric_limits<double>::denorm_min();
constexpr double s_max = std::numeric_limits<float>::max();
constexpr double s_min = std::numeric_limits<float>::min();
constexpr double s_tiny = std::numeric_limits<float>::denorm_min();
constexpr int32_t ok = QEM_STATUS_OK, domain = QEM_STATUS_DOMAIN, pole = QEM_STATUS_SINGULARITY,
                  overflow = QEM_STATUS_OVERFLOW, underflow = QEM_STATUS_UNDERFLOW;

constexpr Expected exactly(double x) { return {Is::Exactly, x}; }
constexpr Expected exactly_at_ha(double x) { return {Is::ExactlyAtHA, x}; }
constexpr Expected near(double x) { return {Is::Near, x}; }
constexpr Expected nan() { return {Is::NaN, 0}; }
constexpr Expected zero() { return {Is::Zero, 0}; }  // of either sign
constexpr Expected subnormal() { return {Is::Subnormal, 0}; }

const std::vector<SpecialValue>& table() {
  static const std::vector<SpecialValue> rows = {
      {"sd", "Abs", -0.0, 0, exactly(0.0), ok},
      {"sd", "Abs", -inf, 0, exactly(inf), ok},
      {"sd", "Abs", nan_, 0, nan(), ok},
      {"d", "Abs", -d_tiny, 0, exactly(d_tiny), ok},
      {"s", "Abs", -s_tiny, 0, exactly(s_tiny), ok},

      {"sd", "Add", inf, -inf, nan(), ok},
      {"sd", "Add", nan_, 1, nan(), ok},
      {"sd", "Add", -0.0, -0.0, exactly(-0.0), ok},
      {"d", "Add", d_max, d_max, exactly(inf), ok},
      {"s", "Add", s_max, s_max, exactly(inf), ok},
      {"sd", "Sub", inf, inf, nan(), ok},
      {"sd", "Sub", 1, nan_, nan(), ok},
      {"d", "Sub", -d_max, d_max, exactly(-inf), ok},
      {"s", "Sub", -s_max, s_max, exactly(-inf), ok},
      {"sd", "Mul", inf, 0, nan(), ok},
      {"d", "Mul", d_max, -2, exactly(-inf), ok},
      {"s", "Mul", s_max, -2, exactly(-inf), ok},
      {"d", "Mul", d_min, 0.5, exactly(d_min / 2), ok},
      {"s", "Mul", s_min, 0.5, exactly(s_min / 2), ok},
      {"sd", "Sqr", -inf, 0, exactly(inf), ok},
      {"sd", "Sqr", nan_, 0, nan(), ok},
      {"d", "Sqr", d_max, 0, exactly(inf), ok},
      {"s", "Sqr", s_max, 0, exactly(inf), ok},

      {"sd", "Exp", nan_, 0, nan(), ok},
      {"sd", "Exp", inf, 0, exactly(inf), ok},
      {"sd", "Exp", -inf, 0, exactly(0.0), ok},
      {"sd", "Exp", 0, 0, exactly_at_ha(1), ok},
      {"sd", "Exp", -0.0, 0, exactly_at_ha(1), ok},
      {"d", "Exp", d_tiny, 0, exactly_at_ha(1), ok},
      {"s", "Exp", -s_tiny, 0, exactly_at_ha(1), ok},
      {"d", "Exp", 700, 0, near(exp(700.0)), ok},
      {"d", "Exp", 709.782712893384, 0, near(exp(709.782712893384)), ok},
      {"d", "Exp", nextafter(709.782712893384, inf), 0, exactly(inf), overflow},
      {"d", "Exp", 709.79, 0, exactly(inf), overflow},
      {"d", "Exp", d_max, 0, exactly(inf), overflow},
      {"d", "Exp", -708.3964185322641, 0, near(exp(-708.3964185322641)), ok},
      {"d", "Exp", -708.3964185322642, 0, subnormal(), underflow},
      {"d", "Exp", -740, 0, subnormal(), underflow},
      {"d", "Exp", -745.2, 0, exactly(0.0), underflow},
      {"d", "Exp", -d_max, 0, exactly(0.0), underflow},
      {"s", "Exp", 88.72283172607422, 0, near(exp(88.72283172607422)), ok},  // last below the limit
      {"s", "Exp", 88.72283935546875, 0, exactly(inf), overflow},            // and its neighbour
      {"s", "Exp", s_max, 0, exactly(inf), overflow},
      {"s", "Exp", -87.33654022216797, 0, near(exp(-87.33654022216797)), ok},
      {"s", "Exp", -87.33654785156250, 0, subnormal(), underflow},
      {"s", "Exp", -100, 0, subnormal(), underflow},
      {"s", "Exp", -104.5, 0, exactly(0.0), underflow},
      {"s", "Exp", -s_max, 0, exactly(0.0), underflow},

      {"sd", "Expm1", nan_, 0, nan(), ok},
      {"sd", "Expm1", inf, 0, exactly(inf), ok},
      {"sd", "Expm1", -inf, 0, exactly(-1), ok},
      {"sd", "Expm1", 0, 0, zero(), ok},
      {"sd", "Expm1", -0.0, 0, zero(), ok},
      {"sd", "Expm1", -60, 0, near(-1), ok},
      {"d", "Expm1", -1000, 0, near(-1), ok},
      {"d", "Expm1", 1e-100, 0, near(1e-100), ok},
      {"s", "Expm1", 1e-15, 0, near(1e-15), ok},
      {"d", "Expm1", 709.5, 0, near(exp(709.5)), ok},
      {"d", "Expm1", 709.79, 0, exactly(inf), overflow},
      {"d", "Expm1", d_max, 0, exactly(inf), overflow},
      {"s", "Expm1", 88.5, 0, near(exp(88.5)), ok},
      {"s", "Expm1", 89, 0, exactly(inf), overflow},
      {"s", "Expm1", s_max, 0, exactly(inf), overflow},

      {"sd", "Ln", nan_, 0, nan(), ok},
      {"sd", "Ln", inf, 0, exactly(inf), ok},
      {"sd", "Ln", -inf, 0, nan(), domain},
      {"sd", "Ln", -1, 0, nan(), domain},
      {"d", "Ln", -d_tiny, 0, nan(), domain},
      {"s", "Ln", -s_tiny, 0, nan(), domain},
      {"sd", "Ln", 0, 0, exactly(-inf), pole},
      {"sd", "Ln", -0.0, 0, exactly(-inf), pole},
      {"sd", "Ln", 1, 0, zero(), ok},
      {"d", "Ln", d_tiny, 0, near(log(d_tiny)), ok},
      {"s", "Ln", s_tiny, 0, near(log(s_tiny)), ok},
      {"d", "Ln", d_min, 0, near(log(d_min)), ok},
      {"s", "Ln", s_min, 0, near(log(s_min)), ok},
      {"d", "Ln", d_max, 0, near(log(d_max)), ok},
      {"s", "Ln", s_max, 0, near(log(s_max)), ok},

      {"sd", "Log10", nan_, 0, nan(), ok},
      {"sd", "Log10", inf, 0, exactly(inf), ok},
      {"sd", "Log10", -inf, 0, nan(), domain},
      {"sd", "Log10", -1, 0, nan(), domain},
      {"d", "Log10", -d_tiny, 0, nan(), domain},
      {"s", "Log10", -s_tiny, 0, nan(), domain},
      {"sd", "Log10", 0, 0, exactly(-inf), pole},
      {"sd", "Log10", -0.0, 0, exactly(-inf), pole},
      {"sd", "Log10", 1, 0, zero(), ok},
      {"d", "Log10", d_tiny, 0, near(log10(d_tiny)), ok},
      {"s", "Log10", s_tiny, 0, near(log10(s_tiny)), ok},
      {"d", "Log10", d_max, 0, near(log10(d_max)), ok},
      {"s", "Log10", s_max, 0, near(log10(s_max)), ok},

      {"sd", "Log1p", nan_, 0, nan(), ok},
      {"sd", "Log1p", inf, 0, exactly(inf), ok},
      {"sd", "Log1p", -inf, 0, nan(), domain},
      {"sd", "Log1p", -2, 0, nan(), domain},
      {"d", "Log1p", nextafter(-1.0, -2.0), 0, nan(), domain},
      {"s", "Log1p", nextafterf(-1.0f, -2.0f), 0, nan(), domain},
      {"sd", "Log1p", -1, 0, exactly(-inf), pole},
      {"d", "Log1p", nextafter(-1.0, 0.0), 0, near(log1p(nextafter(-1.0, 0.0))), ok},
      {"s", "Log1p", nextafterf(-1.0f, 0.0f), 0, near(log1p(nextafterf(-1.0f, 0.0f))), ok},
      {"sd", "Log1p", 0, 0, zero(), ok},
      {"sd", "Log1p", -0.0, 0, zero(), ok},
      {"d", "Log1p", 1e-100, 0, near(1e-100), ok},
      {"s", "Log1p", 1e-15, 0, near(1e-15), ok},
      {"d", "Log1p", d_max, 0, near(log(d_max)), ok},
      {"s", "Log1p", s_max, 0, near(log(s_max)), ok},
  };
  return rows;
}

bool is_for(const SpecialValue& row, const Kernel& kernel) {
  return row.function == kernel.function && row.types.find(kernel.type) != std::string::npos;
}

}  // namespace

std::vector<SpecialValue> special_values(const Kernel& kernel) {
  std::vector<SpecialValue> rows;
  for (const SpecialValue& row : table()) {
    if (is_for(row, kernel)) rows.push_back(row);
  }
  return rows;
}

}  // namespace orv_test
