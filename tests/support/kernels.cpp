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

template <class KernelPointer>
void add(std::vector<Kernel>& list, char type, const char* function, Shape shape,
         const char* const (&kernels)[3], const KernelPointer (&table)[3],
         const float (&costs)[3]) {
  for (const Slot slot : {LA, HA, EP}) {
    list.push_back({type, function, shape, slot, kernels[slot],
                    reinterpret_cast<void (*)()>(table[slot]), costs[slot],
                    figure_of(type, function, slot)});
  }
}

}  // namespace

std::vector<Kernel> all_slots() {
  std::vector<Kernel> list;
#define ORV_READY(t, F, shape, la, ha, ep, ...)                                     \
  add(list, #t[0], #F, Shape::shape, {#la, #ha, #ep}, orv_qem_kernel_##t##F##_ttab, \
      orv_qem_kernel_##t##F##_ctab);
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
              other.address == slot.address;
    }
    if (!seen) list.push_back(slot);
  }
  return list;
}

}  // namespace orv_test
