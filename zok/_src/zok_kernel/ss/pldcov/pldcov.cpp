// SPDX-License-Identifier: MIT
// Means and covariances of groups of observations, and the pooled ones.
//
// A group is one item of work. Its thread's sums are added to the pooled ones in the order of the
// groups, so that results don't depend on the number of threads.
#include <string.h>

#include "kernel.hpp"

using namespace orv;

namespace {

/// More variables are worth more than one thread.
constexpr intptr_t variables_for_one_thread = 10;

/// Sums are kept for each thread, the other figures for each group.
template <class T>
struct Arguments {
  const SSTask* task;
  const SSThreadServices* services;
  GroupedData<T> data;
  bool pooled, single;  // what is asked: pooled results, those of single groups
  T* thread_sums;
  intptr_t sums_size;
  intptr_t *members, *group_end;  // observations sorted by group, and where each group ends there
  int32_t* place;                 // of a group's results among those that are wanted, or -1
  T *a, *b;                       // W and W - W2 / W
  GroupSums<T> total;
  T total_a, total_b;

  GroupSums<T> sums_of(int32_t thread) const {
    return GroupSums<T>(thread_sums + thread * sums_size, data.p);
  }
};

/// Writes results number `place`, made of sums by two functions, for the selected variables. Means
/// stand at their variables' places and so does a full matrix; the selected elements of a packed
/// one follow each other without gaps.
template <class T, class OfMean, class OfMatrix>
void write_results(const SSTask& task, const GroupSums<T>& sums, const void* storage_code,
                   void* all_means, void* all_matrices, intptr_t place, OfMean of_mean,
                   OfMatrix of_matrix) {
  const auto p = static_cast<intptr_t>(integer(task, task.dimension));
  const int64_t code = integer(task, storage_code);
  const MatrixStorage storage(code, p);
  const Selection selected(task);
  const bool full = storage.full(), lower = !full && (code & SS_MATRIX_LOWER_PACKED) != 0;
  T* const means = static_cast<T*>(all_means) + place * p;
  T* const matrix = static_cast<T*>(all_matrices) + place * storage.size();
  intptr_t next = 0;
  for (intptr_t i = 0; i < p; ++i) {
    if (!selected[i]) continue;
    means[i] = of_mean(sums.mean[i]);
    for (intptr_t j = full || lower ? 0 : i; j < (lower ? i + 1 : p); ++j) {
      if (!selected[j]) continue;
      matrix[full ? i * p + j : next++] = of_matrix(sums.matrix[i * sums.stride + j]);
    }
  }
}

template <class T>
void _vSSPldCovThreaderOrdered(int32_t group, int32_t thread, int32_t, void* args) {
  auto& a = *static_cast<Arguments<T>*>(args);
  const GroupSums<T> sums = a.sums_of(thread);
  for (intptr_t i = 0; i < sums.size(); ++i) a.total.mean[i] += sums.mean[i];
  a.total_a += a.a[group];
  a.total_b += a.b[group];
}

template <class T>
void _vSSPldCovThreader(int32_t group, int32_t thread, int32_t threads, void* args) {
  const auto& a = *static_cast<const Arguments<T>*>(args);
  GroupSums<T> sums = a.sums_of(thread);
  sums.clear();
  const intptr_t begin = group == 0 ? 0 : a.group_end[group - 1];
  _vSSPldCovKernel(a.data, a.members + begin, a.group_end[group] - begin, &sums);
  for (intptr_t j = 0; j < a.data.p; ++j) sums.mean[j] *= sums.w;
  const T weight = a.a[group] = sums.w;
  const T degrees = a.b[group] = sums.w - sums.w2 / sums.w;
  if (a.single && a.place[group] >= 0) {
    write_results(
        *a.task, sums, a.task->group_cov_storage, a.task->group_means, a.task->group_cov,
        a.place[group], [=](T sum) { return sum / weight; },
        [=, scale = 1 / degrees](T scatter) { return scatter * scale; });
  }
  if (a.pooled) {
    a.services->run_in_order(group, thread, threads, args, _vSSPldCovThreaderOrdered<T>);
  }
}

/// The number of groups, or a negative status.
int64_t count_groups(const SSTask& task, intptr_t n) {
  const Integers group(task, task.group_indices), wanted(task, task.group_output_indices);
  int64_t largest = -1;
  for (intptr_t i = 0; i < n; ++i) {
    const int64_t g = group[i];
    if (g < 0) return SS_BAD_GROUP_INDICES;
    if (g > largest) largest = g;
  }
  for (int64_t g = 0; wanted && g <= largest; ++g) {
    const int64_t flag = wanted[static_cast<intptr_t>(g)];
    if (flag != 0 && flag != 1) return SS_BAD_GROUP_INDICES;
  }
  if (largest >= INT32_MAX) return SS_NO_MEMORY;  // an item's number has 32 bits
  return largest + 1;
}

/// Sorts the observations by group, in their order within each, and numbers the wanted results.
template <class T>
void sort_by_group(const SSTask& task, int32_t groups, const Arguments<T>& a) {
  const Integers group(task, task.group_indices), wanted(task, task.group_output_indices);
  memset(a.group_end, 0, static_cast<size_t>(groups) * sizeof *a.group_end);
  for (intptr_t i = 0; i < a.data.n; ++i) ++a.group_end[group[i]];
  intptr_t begin = 0;
  int32_t results = 0;
  for (int32_t g = 0; g < groups; ++g) {
    const intptr_t count = a.group_end[g];
    a.group_end[g] = begin;
    begin += count;
    a.place[g] = wanted && wanted[g] != 0 ? results++ : -1;
  }
  for (intptr_t i = 0; i < a.data.n; ++i) a.members[a.group_end[group[i]]++] = i;
}

template <class T>
int32_t allocate_all(int32_t groups, int32_t threads, Arguments<T>* a) {
  using Sums = GroupSums<T>;
  const intptr_t p = a->data.p;
  const Count sums_size = Count(Sums::vectors(p)) * Sums::stride_of(p);
  a->sums_size = static_cast<intptr_t>(sums_size.value);
  a->thread_sums = allocate_zeros<T>(sums_size * (threads + (a->pooled ? 1 : 0)));
  a->members = allocate<intptr_t>(a->data.n);
  a->group_end = allocate<intptr_t>(groups);
  a->place = allocate<int32_t>(groups);
  a->a = allocate<T>(groups);
  a->b = allocate<T>(groups);
  if (a->thread_sums == nullptr || a->members == nullptr || a->group_end == nullptr ||
      a->place == nullptr || a->a == nullptr || a->b == nullptr) {
    return SS_NO_MEMORY;
  }
  if (a->pooled) a->total = a->sums_of(threads);
  return SS_OK;
}

template <class T>
void release_all(const Arguments<T>& a) {
  orv_serv_deallocate(a.thread_sums);
  orv_serv_deallocate(a.members);
  orv_serv_deallocate(a.group_end);
  orv_serv_deallocate(a.place);
  orv_serv_deallocate(a.a);
  orv_serv_deallocate(a.b);
}

int32_t check(const SSTask& task, bool pooled, bool single, uint64_t method) {
  if (!is_layout(integer(task, task.observation_storage))) return SS_BAD_STORAGE;
  if (task.group_indices == nullptr) return SS_NULL_GROUP_INDICES;
  if (pooled) {
    if (task.pooled_cov_storage == nullptr) return SS_NULL_STORAGE;
    if (task.pooled_cov == nullptr) return SS_NULL_POOLED_COV;
    if (task.pooled_mean == nullptr) return SS_NULL_POOLED_MEAN;
  }
  if (single) {
    if (task.group_cov_storage == nullptr) return SS_NULL_STORAGE;
    if (task.group_output_indices == nullptr) return SS_NULL_GROUP_INDICES;
    if (task.group_cov == nullptr) return SS_NULL_GROUP_COV;
    if (task.group_means == nullptr) return SS_NULL_GROUP_MEANS;
  }
  return (method & SS_METHOD_ONE_PASS) != 0 ? check_data(task) : SS_BAD_METHOD;
}

template <class T>
int32_t pooled_covariance(const SSTask& task, uint64_t estimates, uint64_t method,
                          const SSThreadServices* services) {
  Arguments<T> a = {};
  a.pooled = (estimates & SS_EST_POOLED) != 0;
  a.single = (estimates & SS_EST_GROUP) != 0;
  if (const int32_t status = check(task, a.pooled, a.single, method); status < 0) return status;
  a.task = &task;
  a.services = services;
  a.data = {static_cast<intptr_t>(integer(task, task.observation_count)),
            static_cast<intptr_t>(integer(task, task.dimension)),
            static_cast<const T*>(task.observations), static_cast<const T*>(task.weights),
            is_rows(integer(task, task.observation_storage))};
  const int64_t groups = count_groups(task, a.data.n);
  if (groups < 0) return static_cast<int32_t>(groups);

  const auto items = static_cast<int32_t>(groups);
  int32_t threads = a.data.p > variables_for_one_thread ? usable_threads(*services) : 1;
  if (threads > items) threads = items;  // no more have a use for sums of their own
  const int32_t status = allocate_all(items, threads, &a);
  if (status == SS_OK) {
    sort_by_group(task, items, a);
    services->run_ascending(items, threads, &a, _vSSPldCovThreader<T>);
    if (a.pooled) {
      write_results(
          task, a.total, task.pooled_cov_storage, task.pooled_mean, task.pooled_cov, 0,
          [&](T sum) { return sum / a.total_a; }, [&](T sum) { return sum / a.total_b; });
    }
  }
  release_all(a);
  return status;
}

}  // namespace

int32_t _zokdSSPooledCovariance(SSTask* task, uint64_t estimates, uint64_t method,
                                const SSThreadServices* services) {
  return pooled_covariance<double>(*task, estimates, method, services);
}

int32_t _zoksSSPooledCovariance(SSTask* task, uint64_t estimates, uint64_t method,
                                const SSThreadServices* services) {
  return pooled_covariance<float>(*task, estimates, method, services);
}
