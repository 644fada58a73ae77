#include <cpuid.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sstream>

#include "measure.hpp"

namespace orv_test {
namespace {

/// Functions whose kernels call _mm_rcp_ps or _mm256_rcp_ps.
constexpr const char* estimate_users[] = {"dLn", "dLog10", "dLog1p", "sLog10", "sLog1p"};

constexpr int random_points = 20000;

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
  std::vector<R> y = results(kernel, make_points<R>(f, kernel, 3, random_points));
  if (numbers_of(kernel) == 2 || kernel.signature().inputs == 2) {
    // Of two NaNs the first operand's comes out, and compilers swap operands as they like.
    for (R& number : y) {
      if (std::isnan(number)) number = std::numeric_limits<R>::quiet_NaN();
    }
  }
  return fnv1a(y.data(), y.size() * sizeof(R));
}

/// Maker, family, model and stepping of the processor.
std::string machine_name() {
  unsigned eax = 0, registers[3] = {};
  __get_cpuid(0, &eax, &registers[0], &registers[2], &registers[1]);
  char maker[sizeof registers + 1] = {};
  std::memcpy(maker, registers, sizeof registers);
  unsigned ebx, ecx, edx;
  __get_cpuid(1, &eax, &ebx, &ecx, &edx);
  const unsigned family = (eax >> 8 & 15) + (eax >> 20 & 255);
  const unsigned model = (eax >> 4 & 15) | (eax >> 12 & 0xF0);
  std::ostringstream name;
  name << maker << '-' << family << '-' << model << '-' << (eax & 15);
  return name.str();
}

}  // namespace

Digests compute_digests() {
  quiet_mode();
  Digests digests = {{"machine", machine_name()}};
  for (const Kernel& kernel : distinct_kernels()) {
    const Function* f = find_function(kernel.type, kernel.function);
    if (!f) continue;  // accuracy_test fails for it
    const std::string function = kernel.type + kernel.function;
    const bool one_machine =
        std::count(std::begin(estimate_users), std::end(estimate_users), function) != 0;
    char text[40];
    std::snprintf(
        text, sizeof text, "%016llx%s",
        static_cast<unsigned long long>(kernel.in_float() ? digest_of<float>(kernel, *f)
                                                          : digest_of<double>(kernel, *f)),
        one_machine ? " machine" : "");
    digests[function + '_' + kernel.kernel] = text;
  }
  return digests;
}

}  // namespace orv_test
