#include "support/kernels.hpp"

namespace orv_test {
namespace {

struct Figure {
  char type;
  std::string function;
  Slot slot;
  double ulp;
};

const std::vector<Figure>& figures() {
  static const std::vector<Figure> list = {
#define ORV_ACCURACY(t, F, level, figure) {#t[0], #F, level, figure},
#include "qem/_bt_gen_ia32/accuracy.def"
#undef ORV_ACCURACY
  };
  return list;
}

std::optional<double> figure_of(char type, const std::string& function, Slot slot) {
  for (const Figure& f : figures()) {
    if (f.type == type && f.function == function && f.slot == slot) return f.ulp;
  }
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
                    figure_of(type, function, slot)});
  }
}

}  // namespace

std::vector<Kernel> all_slots() {
  std::vector<Kernel> list;
#define ORV_READY(t, F, shape, la, ha, ep, cost_la, cost_ha, cost_ep, frames) \
  add(list, #t[0], #F, {#la, #ha, #ep}, orv_qem_kernel_##t##F##_ttab,         \
      orv_qem_kernel_##t##F##_ctab, #frames);
#define ORV_PLANNED(...)
#include "qem/_bt_gen_ia32/functions.def"
  return list;
}

std::vector<Kernel> distinct_kernels() {
  std::vector<Kernel> list;
  for (const Kernel& slot : all_slots()) {
    bool seen = false;
    for (const Kernel& other : list) {
      seen |= other.type == slot.type && other.function == slot.function &&
              other.call.address == slot.call.address;
    }
    if (!seen) list.push_back(slot);
  }
  return list;
}

}  // namespace orv_test
