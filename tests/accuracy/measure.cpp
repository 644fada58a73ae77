// SPDX-License-Identifier: MIT
#include "measure.hpp"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <future>
#include <thread>

namespace orv_test {
namespace {

template <class R>
void shuffle(std::vector<R>& values, Random& random) {
  for (size_t i = values.size(); i > 1; --i) std::swap(values[i - 1], values[random.below(i)]);
}

/// The second operand: any other value, or a near one, or a special one for each special first one.
template <class R>
void pair_up(Points<R>& points, Random& random) {
  auto &a = points.operand[0], &b = points.operand[1];
  b = a;
  shuffle(b, random);
  for (size_t i = 0; i < a.size(); i += 4) {
    const R close = from_bits<R>(bits_of(a[i]) + random.below(5) - 2);
    b[i] = random.below(2) ? close : -close;
  }
  for (size_t i = 1; points.width == 2 && i + 1 < a.size(); i += 8) {  // parts of products cancel
    const size_t re = i & ~size_t{1};
    b[re] = a[re + 1], b[re + 1] = from_bits<R>(bits_of(a[re]) + random.below(3) - 1);
  }
  for (const R x : special_values<R>()) {
    for (const R y : special_values<R>()) a.push_back(x), b.push_back(y);
  }
}

/// Makes the second operand one of each run of 16 points.
template <class R>
void make_runs(Points<R>& points) {
  std::vector<R>& b = points.operand[1];
  const size_t run = 16 * points.width;
  for (size_t i = 0; i < b.size(); ++i) b[i] = b[i / run * run + i % points.width];
}

/// One call for each run.
template <class R>
void call_by_runs(const Kernel& kernel, const Points<R>& points, R* result) {
  const auto same = [&](int32_t i, int32_t k) {
    return std::memcmp(points.at(1, i), points.at(1, k), points.width * sizeof(R)) == 0;
  };
  for (int32_t first = 0, end = 0; first < points.n; first = end) {
    while (end < points.n && same(end, first)) ++end;
    double second[2];
    std::copy_n(points.at(1, first), points.width, second);
    kernel.call({.n = end - first,
                 .inputs = {points.at(0, first)},
                 .results = {result + first * points.width},
                 .scalars = second});
  }
}

/// Distance of a complex result from the truth as a part of the truth's norm, which counts as
/// normal.
template <class R>
double relative_error_of_norm(const R* y, const Reference<R>* f) {
  long double error = 0, norm = std::numeric_limits<R>::min();
  for (int part = 0; part < 2; ++part) {
    norm = std::hypot(norm, static_cast<long double>(f[part].value));
    if (bits_of(y[part]) == bits_of(nearest(f[part])) && std::isinf(y[part])) continue;
    const long double ulp = 1 / static_cast<long double>(per_ulp(f[part].value));
    const long double distance = static_cast<long double>(y[part]) - f[part].value;
    error = std::hypot(error, distance - f[part].rest * ulp);
  }
  return static_cast<double>(error == 0 ? 0 : error / norm);  // NaN counts as wrong
}

/// All numbers of a point are zero or in the middle half of the format's exponents.
template <class R>
bool in_middle(const Points<R>& points, int32_t i) {
  for (int j = 0; j < points.operands; ++j) {
    for (int part = 0; part < points.width; ++part) {
      const R x = points.at(j, i)[part];
      if (!std::isfinite(x)) return false;
      if (x != 0 && std::abs(std::ilogb(x)) > Format<R>::exponents / 8) return false;
    }
  }
  return true;
}

/// The reference serves the point.
template <class R>
bool covered(const Function& f, const Points<R>& points, int32_t i) {
  if (f.covers == nullptr) return true;
  double parts[4];
  for (int j = 0; j < points.operands; ++j) {
    std::copy_n(points.at(j, i), points.width, parts + j * points.width);
  }
  return f.covers(parts, points.operands * points.width);
}

/// Takes a kernel's results into `worst`.
template <class R>
void compare(const Kernel& kernel, const Function& function, const std::vector<R>& y,
             const std::vector<Reference<R>>& f, const Points<R>& points, Worst& worst) {
  constexpr double epsilon = std::numeric_limits<R>::epsilon();
  const size_t numbers = numbers_of(kernel);
  const std::string level = kernel.kernel.substr(2, 2);
  const bool ep = level == "EP";
  const bool by_norm = (level != "HA" || function.by_norm) && kernel.signature().result_parts == 2;
  for (size_t i = 0; i < y.size(); ++i) {
    const auto point = static_cast<int32_t>(i / numbers);
    const auto text = [&] { return points.text(point); };
    if (ep && function.ep_in_middle && !in_middle(points, point)) continue;
    if (!covered(function, points, point)) continue;
    if (i % numbers == 0) ++worst.points;
    if (by_norm) {
      if (i % 2 != 0) continue;
      const double relative = relative_error_of_norm(&y[i], &f[i]);
      if (relative <= worst.relative || std::isnan(worst.relative)) continue;
      worst.relative = relative, worst.ulp = relative / epsilon, worst.argument = text();
      continue;
    }
    const double ulps = ulp_error(y[i], f[i]);
    if (ulps > worst.ulp) worst.ulp = ulps, worst.argument = text();
    if (ulps * epsilon > worst.relative) {  // no need to divide for less
      worst.relative = std::max(worst.relative, relative_error(ulps, f[i]));
    }
    if (ulps >= 0.5 && bits_of(y[i]) != bits_of(nearest(f[i])) && worst.misrounded++ == 0) {
      worst.misrounded_argument = text();
    }
  }
}

template <class R>
std::vector<Reference<R>> true_values(const Function& f, const Points<R>& points, int numbers) {
  mpfr_t x[4], y[4];
  for (int i = 0; i < 4; ++i) {
    mpfr_init2(x[i], std::numeric_limits<R>::digits);
    mpfr_init2(y[i], reference_bits<R>);
  }
  std::vector<Reference<R>> truth;
  for (int32_t i = 0; i < points.n; ++i) {
    for (int j = 0; j < points.operands; ++j) {
      for (int part = 0; part < points.width; ++part) {
        mpfr_set_d(x[j * points.width + part], points.at(j, i)[part], MPFR_RNDN);
      }
    }
    if (covered(f, points, i)) f.exact(y, x);
    for (int k = 0; k < numbers; ++k) truth.push_back(reference<R>(y[k]));
  }
  for (int i = 0; i < 4; ++i) mpfr_clears(x[i], y[i], nullptr);
  return truth;
}

template <class R>
Reached sample_of(const Function& f, const FunctionSlots& function, uint64_t seed, int count) {
  const Kernel& shape = function.slots.front();
  const auto points = make_points<R>(f, shape, seed, count);
  const auto truth = true_values(f, points, numbers_of(shape));
  Reached reached;
  for (const Kernel& kernel : function.kernels()) {
    compare(kernel, f, results(kernel, points), truth, points, reached[kernel.call.address]);
  }
  return reached;
}

/// All floats with bit patterns from `first` to before `end`.
Reached exhaust_patterns(const Function& f, const FunctionSlots& function, uint64_t first,
                         uint64_t end) {
  quiet_mode();
  constexpr uint64_t most = 1 << 16;
  Reached reached;
  Points<float> points;
  std::vector<Reference<float>> truth;
  for (uint64_t base = first; base < end; base += most) {
    points.operand[0].clear();
    truth.clear();
    for (uint64_t pattern = base; pattern < std::min(base + most, end); ++pattern) {
      points.operand[0].push_back(from_bits<float>(static_cast<uint32_t>(pattern)));
      truth.push_back(reference(f.in_double(points.operand[0].back())));
    }
    points.n = static_cast<int32_t>(truth.size());
    for (const Kernel& kernel : function.kernels()) {
      compare(kernel, f, results(kernel, points), truth, points, reached[kernel.call.address]);
    }
  }
  return reached;
}

/// Some kernels are held to more than their level's bound.
double bound_of(const Kernel& slot) {
  if (slot.name() == "dExp_HA") return 0.53;
  if (slot.name() == "dLn_HA") return 0.6;
  return slot.slot == HA ? 1.0 : 4.0;
}

/// Fowler, Noll and Vo's hash 1a.
uint64_t fnv1a(const void* data, size_t size) {
  uint64_t hash = 0xCBF29CE484222325;
  for (size_t i = 0; i < size; ++i) {
    hash = (hash ^ static_cast<const unsigned char*>(data)[i]) * 0x100000001B3;
  }
  return hash;
}

template <class R>
uint64_t digest_of(const Kernel& kernel, const Function& f) {
  const auto points = make_points<R>(f, kernel, 3, 20000);
  std::vector<R> y = results(kernel, points);
  if (points.operands == 2 || points.width == 2) {
    // Of two NaNs the first operand's comes out, and compilers swap operands as they like; a new
    // one has the sign that the unit gives it, or the compiler.
    for (R& number : y) {
      if (std::isnan(number)) number = std::numeric_limits<R>::quiet_NaN();
    }
  }
  return fnv1a(y.data(), y.size() * sizeof(R));
}

}  // namespace

std::string printed(const char* format, ...) {
  char line[200];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(line, sizeof line, format, arguments);
  va_end(arguments);
  return line;
}

template <class R>
std::string Points<R>::text(int32_t i) const {
  std::string line;
  for (int j = 0; j < operands; ++j) {
    for (int part = 0; part < width; ++part) {
      line += printed("%s%a", line.empty() ? "" : ", ", static_cast<double>(at(j, i)[part]));
    }
  }
  return line;
}

template <class R>
Points<R> make_points(const Function& f, const Kernel& shape, uint64_t seed, int count) {
  Inputs<R> in(seed, count);
  f.inputs(in);
  Points<R> points;
  points.width = shape.signature().input_parts;
  points.scalar_second = shape.signature().inputs == 1 && shape.signature().scalars != 0;
  points.operands = points.scalar_second ? 2 : shape.signature().inputs;
  shuffle(in.values, in.random);
  points.operand[0] = std::move(in.values);
  const bool of_parts = points.width == 2;
  if (of_parts && points.operand[0].size() % 2 != 0) points.operand[0].push_back(0);
  for (const auto& [x, y] : in.pairs) {
    if (of_parts) points.operand[0].insert(points.operand[0].end(), {x, y});
  }
  if (points.operands == 2) pair_up(points, in.random);
  if (points.scalar_second) make_runs(points);
  for (const auto& [x, y] : in.pairs) {
    if (!of_parts) points.operand[0].push_back(x), points.operand[1].push_back(y);
  }
  points.n = static_cast<int32_t>(points.operand[0].size() / points.width);
  for (int j = 0; j < points.operands; ++j) points.operand[j].resize(points.n * points.width);
  return points;
}

template <class R>
std::vector<R> results(const Kernel& kernel, const Points<R>& points) {
  const size_t parts = kernel.signature().result_parts, count = kernel.signature().results;
  std::vector<R> out[2], y;
  for (std::vector<R>& result : out) {
    result.resize(kernel.result_size(points.n));
    std::memset(result.data(), 0xA5, result.size() * sizeof(R));  // rubbish, if one is left out
  }
  if (points.scalar_second) {
    call_by_runs(kernel, points, out[0].data());
    return out[0];
  }
  orv_call::Arguments arguments = usual_arguments(kernel, points.n);
  for (int j = 0; j < 2; ++j) {
    arguments.inputs[j] = points.operand[j].data();
    arguments.results[j] = out[j].data();
  }
  kernel.call(arguments);
  if (count == 1) return out[0];
  for (size_t i = 0; i < out[0].size(); i += parts) {
    for (const std::vector<R>& result : out) {
      y.insert(y.end(), result.begin() + i, result.begin() + i + parts);
    }
  }
  return y;
}

void quiet_mode() { orv_qem_kernel_SetMode(QEM_ERRMODE_IGNORE | DENORMALS_KEPT); }

void Worst::merge(const Worst& other) {
  if (other.ulp > ulp) ulp = other.ulp, argument = other.argument;
  relative = std::max(relative, other.relative);
  points += other.points;
  if (misrounded == 0) misrounded_argument = other.misrounded_argument;
  misrounded += other.misrounded;
}

Reached sample(const Function& f, const FunctionSlots& function, uint64_t seed, int count) {
  return function.slots.front().in_its_type(
      [&]<class R>(R) { return sample_of<R>(f, function, seed, count); });
}

Reached exhaust(const Function& f, const FunctionSlots& function) {
  constexpr uint64_t all = uint64_t{1} << 32;
  const uint64_t threads = std::max(1u, std::thread::hardware_concurrency());
  std::vector<std::future<Reached>> parts;
  for (uint64_t t = 0; t < threads; ++t) {
    parts.push_back(std::async(std::launch::async, exhaust_patterns, std::cref(f),
                               std::cref(function), all * t / threads, all * (t + 1) / threads));
  }
  Reached reached;
  for (auto& part : parts) {
    for (const auto& [kernel, worst] : part.get()) reached[kernel].merge(worst);
  }
  return reached;
}

std::vector<std::string> faults(const Kernel& slot, const Function& f, const Worst& worst) {
  std::vector<std::string> list;
  const auto add = [&](const std::string& what, const std::string& at) {
    list.push_back(slot.name() + " (" + slot.kernel + "): " + what + " at " + at);
  };
  if (f.grade == Grade::Rounded) {
    if (worst.misrounded > 0) {
      add(std::to_string(worst.misrounded) + " results are not the nearest, as",
          worst.misrounded_argument);
    }
    return list;
  }
  const double relative_bound = slot.in_float() ? 0x1p-11 : 0x1p-25;
  if (slot.slot == EP ? !(worst.relative < relative_bound) : !(worst.ulp < bound_of(slot))) {
    add(printed("%.4g ulp, 2^%.2f of the value, breaks its level's bound", worst.ulp,
                std::log2(worst.relative)),
        worst.argument);
  }
  const double recorded = slot.ulp.value_or(-1);
  if (worst.ulp > 1.02 * recorded || recorded > 1.25 * worst.ulp) {
    add(printed("%.4g ulp, recorded are %.4g: record ", worst.ulp, recorded) + figure(worst.ulp),
        worst.argument);
  }
  return list;
}

std::vector<FunctionSlots> ready_functions() {
  const std::vector<Kernel> all = all_slots();
  std::vector<FunctionSlots> list;
  for (auto slot = all.begin(); slot != all.end(); slot += 3) {
    list.push_back({slot->type, slot->function, {slot, slot + 3}});
  }
  return list;
}

std::string figure(double ulp) {
  if (!(ulp > 0) || std::isinf(ulp)) return printed("%.3g", ulp);
  const double unit = std::pow(10.0, std::floor(std::log10(ulp)) - 2);
  return printed("%.3g", std::ceil(ulp / unit) * unit);
}

Digests compute_digests() {
  quiet_mode();
  Digests digests;
  for (const Kernel& kernel : distinct_kernels()) {
    const Function* f = find_function(kernel.type, kernel.function);
    if (!f) continue;  // accuracy_test fails for it
    const uint64_t digest =
        kernel.in_its_type([&]<class R>(R) { return digest_of<R>(kernel, *f); });
    digests[kernel.type + kernel.function + '_' + kernel.kernel] =
        printed("%016llx", static_cast<unsigned long long>(digest));
  }
  return digests;
}

#define ORV_INSTANTIATE(R)                                                       \
  template struct Points<R>;                                                     \
  template Points<R> make_points(const Function&, const Kernel&, uint64_t, int); \
  template std::vector<R> results(const Kernel&, const Points<R>&);
ORV_INSTANTIATE(float)
ORV_INSTANTIATE(double)
#undef ORV_INSTANTIATE

}  // namespace orv_test
