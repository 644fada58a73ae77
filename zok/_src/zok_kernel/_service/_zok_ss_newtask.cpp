// SPDX-License-Identifier: MIT
// Making and deleting tasks.
#include <string.h>

#include "ss_task.hpp"

using namespace orv;

namespace {

/// What a task is made with.
struct Description {
  const void *p, *n, *x_storage;
  const void *x, *weights;
  const void* indices;
  int32_t int_is_64;
};

int32_t check(const SSTask& task, const Description& d) {
  if (d.p == nullptr || integer(task, d.p) < 1) return SS_BAD_DIMENSION;
  if (d.x == nullptr) return SS_OK;
  if (d.x_storage == nullptr) return SS_NULL_STORAGE;
  const int64_t layout = integer(task, d.x_storage);
  if (layout != SS_ROWS && layout != SS_COLUMNS) return SS_BAD_STORAGE;
  if (d.n == nullptr || integer(task, d.n) < 1) return SS_BAD_OBSERVATION_COUNT;
  return SS_OK;
}

int32_t new_task(SSTask** slot, int32_t is_double, const Description& d) {
  SSTask task;
  memset(&task, 0, sizeof task);
  task.int_is_64 = d.int_is_64;
  task.creation_tag = 2;
  task.is_double = is_double;
  const int32_t status = check(task, d);
  if (status != SS_OK) return status;

  task.dimension = d.p;
  task.observation_count = d.n;
  task.observations = d.x;
  task.weights = d.weights;
  task.observation_storage = d.x_storage;
  task.variable_mask = d.indices;
  *slot = allocate<SSTask>(1);
  if (*slot == nullptr) return SS_NO_MEMORY;
  **slot = task;
  return SS_OK;
}

}  // namespace

int32_t __zokdSSNewTask(SSTask** task, const void* p, const void* n, const void* x_storage,
                        const double* x, const double* weights, const void* indices,
                        int32_t int_is_64) {
  return new_task(task, 1, {p, n, x_storage, x, weights, indices, int_is_64});
}

int32_t __zoksSSNewTask(SSTask** task, const void* p, const void* n, const void* x_storage,
                        const float* x, const float* weights, const void* indices,
                        int32_t int_is_64) {
  return new_task(task, 0, {p, n, x_storage, x, weights, indices, int_is_64});
}

int32_t __zokSSDeleteTask(SSTask** slot) {
  if (slot == nullptr) return SS_NULL_TASK;
  SSTask* const task = *slot;
  if (task == nullptr) return SS_OK;
  for (int32_t i = 0; i < task->cleanup_count; ++i) task->cleanup_hooks[i](task);
  orv_serv_deallocate(task);
  *slot = nullptr;
  return SS_OK;
}
