// SPDX-License-Identifier: MIT
#include "support/kernels.hpp"

#include <algorithm>
#include <numeric>

namespace orv_test {
namespace {

std::optional<double> figure_of(char type, const std::string& function, Slot slot) {
#define ORV_ACCURACY(t, F, level, figure) \
  if (type == #t[0] && function == #F && slot == level) return figure;
#include "qem/_bt_gen_ia32/accuracy.def"
#undef ORV_ACCURACY
  return std::nullopt;
}

/// The part of "guarded(mode)", or of "guarded(mode)/guarded(none)/guarded(mode)", that is a
/// slot's.
std::string frame_of(std::string frames, Slot slot) {
  for (int k = 0; k < slot && frames.find('/') != frames.npos; ++k) {
    frames.erase(0, frames.find('/') + 1);
  }
  return frames.substr(0, frames.find('/'));
}

template <class KernelPointer>
void add(std::vector<Kernel>& list, char type, const char* function,
         const char* const (&kernels)[3], const KernelPointer (&table)[3], const float (&costs)[3],
         const char* frames) {
  for (const Slot slot : {LA, HA, EP}) {
    const std::string frame = frame_of(frames, slot);
    const size_t open = frame.find('(');
    list.push_back({type, function, slot, kernels[slot], orv_call::of(table[slot]), costs[slot],
                    frame.substr(0, open), frame.substr(open + 1, frame.size() - open - 2),
                    figure_of(type, function, slot),
                    std::find(table, table + slot, table[slot]) == table + slot});
  }
}

}  // namespace

orv_call::Arguments usual_arguments(const Kernel& kernel, int64_t n) {
  thread_local std::vector<int32_t> numbers;  // from 0 on; from 1 on none of them is 0
  const size_t count = std::max<int64_t>(n, 0) + 1;
  if (numbers.size() < count) numbers.resize(count);
  std::iota(numbers.begin(), numbers.end(), 0);
  const bool masked = kernel.function.ends_with('M');
  return {.n = n, .scalars = usual_scalars, .indices = numbers.data() + masked};
}

std::vector<Kernel> all_slots() {
  std::vector<Kernel> list;
#define ORV_FUNCTION(t, F, shape, la, ha, ep, cost_la, cost_ha, cost_ep, frames) \
  add(list, #t[0], #F, {#la, #ha, #ep}, orv_qem_kernel_##t##F##_ttab,            \
      orv_qem_kernel_##t##F##_ctab, #frames);
#include "qem/_bt_gen_ia32/functions.def"
  return list;
}

std::vector<Kernel> distinct_kernels(std::vector<Kernel> slots) {
  std::erase_if(slots, [](const Kernel& slot) { return !slot.first; });
  return slots;
}

}  // namespace orv_test
