// The four entry stubs of every function that is ready: each calls through one slot of the table.
#include <orv/qem.h>

#define ORV_TYPE_s float
#define ORV_TYPE_d double
#define ORV_TYPE_c QemComplexFloat
#define ORV_TYPE_z QemComplexDouble

#define ORV_PARAMETERS_Unary(T) (int32_t n, const T* a, T* r)
#define ORV_ARGUMENTS_Unary (n, a, r)
#define ORV_PARAMETERS_Binary(T) (int32_t n, const T* a, const T* b, T* r)
#define ORV_ARGUMENTS_Binary (n, a, b, r)

#define ORV_LA_SUFFIX_s _21
#define ORV_LA_SUFFIX_d _50
#define ORV_LA_SUFFIX_c _21
#define ORV_LA_SUFFIX_z _50
#define ORV_EP_SUFFIX_s _11
#define ORV_EP_SUFFIX_d _26
#define ORV_EP_SUFFIX_c _11
#define ORV_EP_SUFFIX_z _26

#define ORV_JOIN(a, b) ORV_JOIN_EXPANDED(a, b)
#define ORV_JOIN_EXPANDED(a, b) a##b

#define ORV_STUB(name, slot, t, F, shape)                     \
  void name ORV_PARAMETERS_##shape(ORV_TYPE_##t) {            \
    orv_qem_kernel_##t##F##_ttab[slot] ORV_ARGUMENTS_##shape; \
  }

#define ORV_READY(t, F, shape, ...)                                 \
  ORV_STUB(ORV_JOIN(_qem##t##F, ORV_LA_SUFFIX_##t), 0, t, F, shape) \
  ORV_STUB(_qem##t##F##_HA, 1, t, F, shape)                         \
  ORV_STUB(_qem##t##F, 1, t, F, shape)                              \
  ORV_STUB(ORV_JOIN(_qem##t##F, ORV_EP_SUFFIX_##t), 2, t, F, shape)
#define ORV_PLANNED(...)
#include "functions.def"
