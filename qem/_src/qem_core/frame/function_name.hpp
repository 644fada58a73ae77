// SPDX-License-Identifier: MIT
#pragma once

#include <orv/qem.h>

namespace orv {

template <class T>
inline constexpr char type_letter = '?';
template <>
inline constexpr char type_letter<float> = 's';
template <>
inline constexpr char type_letter<double> = 'd';
template <>
inline constexpr char type_letter<QemComplexFloat> = 'c';
template <>
inline constexpr char type_letter<QemComplexDouble> = 'z';

/// "vdDiv": what error records call function "Div" of elements T.
template <class T>
struct FunctionName {
  char text[16] = {'v', type_letter<T>};

  template <int size>
  consteval FunctionName(const char (&function)[size]) {
    for (int i = 0; i < size; ++i) text[i + 2] = function[i];
  }
  operator const char*() const { return text; }
};

}  // namespace orv
