// SPDX-License-Identifier: MIT
// The table of parameters, and the integers' editor.
#include "parameters.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

struct Parameter {
  uint16_t offset;  // of the field
  Content content;
  int16_t null_status;
};

constexpr Parameter parameters[] = {
#define PARAMETER(name, field, content, status) {offsetof(SSTask, field), Content::content, status},
#include "parameters.def"
#undef PARAMETER
};
constexpr int32_t parameter_count = sizeof parameters / sizeof *parameters;
static_assert(parameter_count == SS_PARAM_STREAM_QUANTILES);

/// Whether each row stands at its parameter's number.
constexpr bool in_order() {
  int32_t row = 0;
  bool ordered = true;
#define PARAMETER(name, field, content, status) ordered = ordered && SS_PARAM_##name == ++row;
#include "parameters.def"
#undef PARAMETER
  return ordered;
}
static_assert(in_order());

void store(SSTask* task, const Parameter& parameter, const void* array) {
  *reinterpret_cast<const void**>(reinterpret_cast<char*>(task) + parameter.offset) = array;
}

}  // namespace

int32_t set_parameter(SSTask* task, int64_t parameter, Content content, const void* array) {
  if (task == nullptr) return SS_NULL_TASK;
  if (parameter < 1 || parameter > parameter_count) return SS_BAD_PARAMETER;
  const Parameter& row = parameters[parameter - 1];
  if (row.content != content) return SS_BAD_PARAMETER;
  if (array == nullptr) return row.null_status;
  store(task, row, array);
  return SS_OK;
}

int32_t set_given(SSTask* task, std::initializer_list<Setting> settings) {
  if (task == nullptr) return SS_NULL_TASK;
  for (const Setting& setting : settings) {
    if (setting.array != nullptr) store(task, parameters[setting.parameter - 1], setting.array);
  }
  return SS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv

int32_t __zokiSSEditTask(SSTask* task, int64_t parameter, const void* array) {
  return orv::set_parameter(task, parameter, orv::Content::integers, array);
}
