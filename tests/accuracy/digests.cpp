#include "digests.hpp"

#include <cpuid.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <istream>
#include <ostream>
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
  if (operands_of(kernel) == 2) {
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

void read_line(const std::string& line, Digests& digests) {
  std::istringstream cells(line);
  std::string name, value, mark, more;
  cells >> name >> value >> mark >> more;
  const auto fault = [&](const char* what) { digests.faults.push_back(what + (": " + line)); };
  if (name == "machine" && !value.empty() && mark.empty()) {
    if (!digests.machine.empty()) fault("double");
    digests.machine = value;
    return;
  }
  Digest digest;
  int used = 0;
  const bool number = std::sscanf(value.c_str(), "%16llx%n",
                                  reinterpret_cast<unsigned long long*>(&digest.value), &used) == 1;
  digest.one_machine = mark == "machine";
  if (!number || used != 16 || value.size() != 16 || !more.empty() ||
      !(mark.empty() || digest.one_machine)) {
    return fault("malformed");
  }
  if (digest.value == 0) fault("zero");
  if (!digests.of.insert({name, digest}).second) fault("double");
}

}  // namespace

Digests compute_digests() {
  quiet_mode();
  Digests digests;
  digests.machine = machine_name();
  for (const Kernel& kernel : distinct_kernels()) {
    const Function* f = find_function(kernel.type, kernel.function);
    if (!f) continue;  // accuracy_test fails for it
    const bool in_float = kernel.type == 's' || kernel.type == 'c';
    Digest& digest = digests.of[kernel.type + kernel.function + '_' + kernel.kernel];
    digest.value = in_float ? digest_of<float>(kernel, *f) : digest_of<double>(kernel, *f);
    digest.one_machine = std::count(std::begin(estimate_users), std::end(estimate_users),
                                    kernel.type + kernel.function) != 0;
  }
  return digests;
}

Digests read_digests(std::istream& text, const Digests& expected) {
  Digests digests;
  for (std::string line; std::getline(text, line);) {
    if (!line.empty() && line[0] != '#') read_line(line, digests);
  }
  if (digests.machine.empty()) digests.faults.push_back("missing: machine");
  for (const auto& [name, digest] : expected.of) {
    const auto found = digests.of.find(name);
    if (found == digests.of.end()) {
      digests.faults.push_back("missing: " + name);
    } else if (found->second.one_machine != digest.one_machine) {
      digests.faults.push_back("marked wrongly: " + name);
    }
  }
  for (const auto& [name, digest] : digests.of) {
    if (!expected.of.count(name)) digests.faults.push_back("unknown: " + name);
  }
  return digests;
}

void write_digests(const Digests& digests, std::ostream& text) {
  text
      << "# Digests of each kernel's results over a fixed input set, the same in every build; "
         "those\n"
         "# marked \"machine\" use an estimate of the processor and hold for the one named below.\n"
         "# Made by: digests --write tests/accuracy/digests.txt\n"
      << "machine " << digests.machine << '\n';
  for (const auto& [name, digest] : digests.of) {
    char value[20];
    std::snprintf(value, sizeof value, "%016llx", static_cast<unsigned long long>(digest.value));
    text << name << ' ' << value << (digest.one_machine ? " machine" : "") << '\n';
  }
}

}  // namespace orv_test
