#include "complex_add.hpp"

void orv_qem_kernel_zAdd_W7HAynn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b,
                                 QemComplexDouble* r) {
  orv::guarded(orv::ComplexAdd<QemComplexDouble>{}, n, a, b, r);
}
