#include "complex_add.hpp"

void orv_qem_kernel_cAdd_W7HAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b,
                                 QemComplexFloat* r) {
  orv::guarded(orv::ComplexAdd<QemComplexFloat>{}, n, a, b, r);
}
