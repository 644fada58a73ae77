// SPDX-License-Identifier: MIT
#include "standard_handlers.hpp"

#include <errno.h>
#include <orv/serv.h>
#include <string.h>

namespace orv {
namespace {

void _qemStdErrorHandlerErrno(const QemErrorContext* record) {
  switch (record->code) {
    case QEM_STATUS_OK:
      errno = 0;
      break;
    case QEM_STATUS_BAD_ARGUMENT:
      errno = EINVAL;
      break;
    case QEM_STATUS_BAD_POINTER:
      errno = EACCES;
      break;
    case QEM_STATUS_DOMAIN:
      errno = EDOM;
      break;
    case QEM_STATUS_SINGULARITY:
    case QEM_STATUS_OVERFLOW:
    case QEM_STATUS_UNDERFLOW:
      errno = ERANGE;
      break;
    default:
      errno = EFAULT;
      break;
  }
}

/// Prints the arguments and results of the element, each under a key of its own.
void print_values(const QemErrorContext* record) {
  const bool two_arguments = !(record->arg1 == record->arg2 || record->arg2 == 0.0);
  const bool two_results = !(record->res1 == record->res2 || record->res2 == 0.0);
  constexpr int first_key[2][2] = {{742, 744}, {747, 750}};
  int key = first_key[two_arguments][two_results];
  const auto print = [&](double value) { orv_serv_orv_print(1, key++, 2, record->index, value); };
  print(record->arg1);
  if (two_arguments) print(record->arg2);
  print(record->res1);
  if (two_results) print(record->res2);
}

void _qemStdErrorHandlerStderr(const QemErrorContext* record) {
  switch (record->code) {
    case QEM_STATUS_OK:
      return;
    case QEM_STATUS_BAD_ARGUMENT:
      orv_serv_orv_print(1, 735, 2, record->func_name, record->index);
      return;
    case QEM_STATUS_BAD_POINTER:
      orv_serv_orv_print(1, 736, 1, record->func_name);
      return;
    case QEM_STATUS_DOMAIN:
    case QEM_STATUS_SINGULARITY:
    case QEM_STATUS_OVERFLOW:
    case QEM_STATUS_UNDERFLOW:
      orv_serv_orv_print(1, 736 + record->code, 1, record->func_name);
      break;
    default:
      orv_serv_orv_print(1, 741, 1, record->func_name);
      break;
  }
  print_values(record);
}

double from_bits(uint64_t bits) {
  double value;
  memcpy(&value, &bits, sizeof value);
  return value;
}

// On the x87 unit, so that the exception does not depend on the SSE control word. The store to a
// 64-bit local is what underflows. An exception that the program does not mask traps at the next
// instruction of the unit, which is to be here.
void divide(double a, double b) {
  double result;
  asm volatile("fldl %1\n\tfdivl %2\n\tfstpl %0\n\tfwait" : "=m"(result) : "m"(a), "m"(b) : "st");
}

void square(double a) {
  double result;
  asm volatile("fldl %1\n\tfmull %1\n\tfstpl %0\n\tfwait" : "=m"(result) : "m"(a) : "st");
}

// Three of the constants have their two halves exchanged against the values they were meant to be
// (1.0, the largest finite value, just above the smallest normal). The effects below are the
// interface: code 3 squares a quiet NaN and raises nothing.
void _qemStdErrorHandlerExcept(const QemErrorContext* record) {
  switch (record->code) {
    case QEM_STATUS_DOMAIN:
      divide(0.0, 0.0);
      break;
    case QEM_STATUS_SINGULARITY:
      divide(from_bits(0x000000003FF00000), 0.0);
      break;
    case QEM_STATUS_OVERFLOW:
      square(from_bits(0xFFFFFFFF7FEFFFFF));
      break;
    case QEM_STATUS_UNDERFLOW:
      square(from_bits(0x0000000100100000));
      break;
    default:
      break;
  }
}

}  // namespace

void _qemStdErrorHandler(const QemErrorContext* record) {
  const QemMode mode = orv_qem_kernel_GetMode();
  if (mode & QEM_ERRMODE_ERRNO) _qemStdErrorHandlerErrno(record);
  if (mode & QEM_ERRMODE_STDERR) {
    const int error_number = errno;  // a message that cannot be written changes it
    _qemStdErrorHandlerStderr(record);
    errno = error_number;
  }
  if (mode & QEM_ERRMODE_EXCEPT) _qemStdErrorHandlerExcept(record);
}

}  // namespace orv
