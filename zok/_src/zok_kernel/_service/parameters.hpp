// SPDX-License-Identifier: MIT
// The parameters of a task, by number.
#pragma once

#include <initializer_list>

#include "ss_task.hpp"

namespace orv {
inline namespace ORV_TAG {

enum class Content : uint8_t { integers, floats };

/// Sets the field of one parameter, which must be one of this content.
int32_t set_parameter(SSTask* task, int64_t parameter, Content content, const void* array);

struct Setting {
  int32_t parameter;
  const void* array;
};

/// Sets the fields of all parameters whose array is given.
int32_t set_given(SSTask* task, std::initializer_list<Setting> settings);

}  // namespace ORV_TAG
}  // namespace orv
