// SPDX-License-Identifier: MIT
// Quantiles of a stream that comes in blocks, without keeping it. A variable is an item of work.
#include <math.h>

#include "summary.hpp"

using namespace orv;

namespace {

/// Observations first to first + n - 1 of a block.
template <class T>
struct Arguments {
  StreamSummary* stream;
  const T* observations;
  bool rows;
  intptr_t all, first, n;
  double epsilon;
  int32_t status;  // of any variable that failed
};

template <class T>
int32_t add_values(const Arguments<T>& a, intptr_t j, VariableSummary* v) {
  const intptr_t stride = a.rows ? 1 : a.stream->dimension;
  const T* x = a.observations + (a.rows ? j * a.all + a.first : a.first * stride + j);
  for (intptr_t left = a.n; left > 0;) {
    SegmentSummary* s = v->segments + v->current_segment;
    if (v->current_segment < 0 || s->seen == s->length) {
      if (const int32_t status = open_segment(v, a.epsilon); status != SS_OK) return status;
      s = v->segments + v->current_segment;
    }
    const int64_t rest = s->length - s->seen;
    const intptr_t count = left < rest ? left : static_cast<intptr_t>(rest);
    const auto copy = [=](T* to, int64_t from, int64_t values) {
      const auto k = static_cast<intptr_t>(values);
      const T* const source = x + static_cast<intptr_t>(from) * stride;
      if (stride == 1) {
        memcpy(to, source, static_cast<size_t>(k) * sizeof(T));
      } else {
        for (intptr_t i = 0; i < k; ++i) to[i] = source[i * stride];
      }
    };
    if (const int32_t status = add_to_segment<T>(s, count, copy); status != SS_OK) return status;
    x += count * stride;
    left -= count;
  }
  return SS_OK;
}

template <class T>
void _vSSSQuantilesAddDataThreader(int32_t variable, int32_t, int32_t, void* args) {
  auto& a = *static_cast<Arguments<T>*>(args);
  VariableSummary& v = a.stream->variables[variable];
  if (v.active == 0) return;
  const int32_t status = add_values(a, variable, &v);
  if (status != SS_OK) __atomic_store_n(&a.status, status, __ATOMIC_RELAXED);
}

/// Feeds a block of data in portions. Those of observations in columns are small enough that all
/// variables find them in the cache.
template <class T>
int32_t add_data(Arguments<T> a, const SSThreadServices& services) {
  constexpr intptr_t cached_bytes = 1 << 18, least = 64;
  const intptr_t p = a.stream->dimension;
  intptr_t portion = a.all;
  if (!a.rows && p > 1) {
    portion = cached_bytes / static_cast<intptr_t>(sizeof(T)) / p;
    if (portion < least) portion = least;
  }
  for (a.first = 0; a.first < a.all && a.status == SS_OK; a.first += a.n) {
    a.n = a.all - a.first < portion ? a.all - a.first : portion;
    services.run_items(static_cast<int32_t>(p), 0, &a, _vSSSQuantilesAddDataThreader<T>);
  }
  return a.status;
}

// ---- Queries ------------------------------------------------------------------------------------

/// The lists of one variable, merged two by two till one is left. They stand one after another in a
/// block, merged ones in a second block, and so on in turn.
template <class T>
class Query {
 public:
  Query() = default;
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;
  ~Query() { orv_serv_deallocate(block_); }

  /// All that the summary knows. No tuples where nothing was seen.
  int32_t gather(const VariableSummary& v) {
    Count room = 0, lists = 0;
    for_each_list(v, [&](const SegmentSummary&, int32_t, intptr_t count) {
      room = room + count;
      lists = lists + 1;
    });
    room = room + lists;  // with the neighbours' ranks
    const Count bytes = tuple_bytes<T>(room, 1);
    block_ = allocate<char>(2 * bytes + lists * sizeof(intptr_t));
    if (block_ == nullptr) return SS_NO_MEMORY;
    room_ = static_cast<intptr_t>(room.value);
    from_ = block_, to_ = block_ + bytes.value;
    counts_ = reinterpret_cast<intptr_t*>(to_ + bytes.value);
    copy_lists(v);
    while (lists_ > 1) merge_pairs();
    return SS_OK;
  }

  /// The value whose rank is nearest to the order's, in whole ranks; the least of several.
  T answer(double order) const {
    const Tuples<T> all = list(from_, 0, counts_[0]);
    const double target = static_cast<double>(seen_) * order;
    const auto middle = [&](intptr_t k) {
      return 0.5 * static_cast<double>(all.lowest[k] + all.highest[k]);
    };
    const auto distance = [&](intptr_t k) {
      return static_cast<int64_t>(fabs(middle(k) - target));
    };
    const intptr_t above = first_index(all.count, [&](intptr_t k) { return middle(k) >= target; });
    if (above < all.count && (above == 0 || distance(above) < distance(above - 1))) {
      return all.value[above];
    }
    const int64_t least = distance(above - 1);
    return all.value[first_index(above, [&](intptr_t k) { return distance(k) <= least; })];
  }

  int64_t seen() const { return seen_; }

 private:
  /// Calls f(segment, level, tuples) for all that hold any.
  template <class F>
  static void for_each_list(const VariableSummary& v, F f) {
    for (int32_t k = 0; k < v.segment_count; ++k) {
      const SegmentSummary& s = v.segments[k];
      if (s.fill > 0) f(s, 0, static_cast<intptr_t>(s.fill));
      for (int32_t level = 1; level <= s.top_level; ++level) {
        if (s.levels[level] != nullptr) f(s, level, s.tuples(level));
      }
    }
  }

  /// The first of n indices that meets a condition, which all after it meet, or n.
  template <class Condition>
  static intptr_t first_index(intptr_t n, Condition condition) {
    intptr_t first = 0;
    while (n > 0) {
      const intptr_t half = n / 2;
      if (condition(first + half)) {
        n = half;
      } else {
        first += half + 1;
        n -= half + 1;
      }
    }
    return first;
  }

  Tuples<T> list(char* block, intptr_t offset, intptr_t count) const {
    const Tuples<T> all = tuples_in<T>(block, room_, 0);
    return {all.value + offset, all.lowest + offset, all.highest + offset, count};
  }

  void copy_lists(const VariableSummary& v) {
    intptr_t offset = 0;
    for_each_list(v, [&](const SegmentSummary& s, int32_t level, intptr_t count) {
      Tuples<T> copy = list(from_, offset, count);
      if (level == 0) {  // sorted now that it is asked for, with the other block as scratch
        auto* const values = static_cast<T*>(s.values);
        sort_values(values, reinterpret_cast<T*>(to_), s.fill);
        make_tuples<1>(values, count, &copy);
      } else {
        const Tuples<T> held = tuples_in<T>(s.levels[level], s.most_tuples(), count);
        const auto n = static_cast<size_t>(count);
        memcpy(copy.value, held.value, n * sizeof *held.value);
        memcpy(copy.lowest, held.lowest, n * sizeof *held.lowest);
        memcpy(copy.highest, held.highest, n * sizeof *held.highest);
        copy.end(count);
      }
      offset += count + 1;
      counts_[lists_++] = count;
    });
    for (int32_t k = 0; k < v.segment_count; ++k) seen_ += v.segments[k].seen;
  }

  /// One that is left over is merged with none.
  void merge_pairs() {
    intptr_t from = 0, to = 0, merged = 0;
    for (intptr_t k = 0; k < lists_; k += 2) {
      const bool alone = k + 1 == lists_;
      const Tuples<T> a = list(from_, from, counts_[k]);
      from += a.count + 1;
      Tuples<T> b = list(from_, from, alone ? 0 : counts_[k + 1]);
      if (alone) b.end(0);
      from += b.count + 1;
      Tuples<T> result = list(to_, to, 0);
      merge<1>(a, b, &result);
      to += result.count + 1;
      counts_[merged++] = result.count;
    }
    lists_ = merged;
    char* const block = from_;
    from_ = to_;
    to_ = block;
  }

  char* block_ = nullptr;
  char *from_ = nullptr, *to_ = nullptr;
  intptr_t* counts_ = nullptr;  // of tuples in each list
  intptr_t room_ = 0, lists_ = 0;
  int64_t seen_ = 0;
};

/// Answers stand one after another for the variables that take part.
template <class T>
int32_t answer_all(const SSTask& task, const StreamSummary& stream) {
  const auto* const orders = static_cast<const T*>(task.stream_orders);
  const auto count = static_cast<intptr_t>(integer(task, task.stream_order_count));
  auto* results = static_cast<T*>(task.stream_quantiles);
  for (intptr_t j = 0; j < stream.dimension; ++j) {
    if (stream.variables[j].active == 0) continue;
    if (stream.variables[j].segment_count > 0) {
      Query<T> query;
      if (const int32_t status = query.gather(stream.variables[j]); status != SS_OK) return status;
      for (intptr_t i = 0; i < count; ++i) results[i] = query.answer(orders[i]);
    }
    results += count;
  }
  return SS_OK;
}

// ---- The entry ----------------------------------------------------------------------------------

StreamSummary* summary_of(const SSTask& task) {
  return static_cast<StreamSummary*>(task.stream_state);
}

void __zokSQuantilesFreeBuffers(SSTask* task) {
  StreamSummary* const stream = summary_of(*task);
  for (intptr_t j = 0; j < stream->dimension; ++j) release(&stream->variables[j]);
  orv_serv_deallocate(stream);
  task->stream_state = nullptr;
}

int32_t begin_stream(SSTask* task) {
  const auto p = static_cast<intptr_t>(integer(*task, task->dimension));
  const Count bytes = Count(sizeof(StreamSummary)) + Count(p) * sizeof(VariableSummary);
  auto* const stream = reinterpret_cast<StreamSummary*>(allocate_zeros<char>(bytes));
  if (stream == nullptr) return SS_NO_MEMORY;
  stream->dimension = p;
  const Selection selected(*task);
  for (intptr_t j = 0; j < p; ++j) {
    stream->variables[j].active = selected[j] ? 1 : 0;
    stream->variables[j].current_segment = -1;
  }
  task->stream_state = stream;
  task->cleanup_hooks[task->cleanup_count++] = __zokSQuantilesFreeBuffers;
  return SS_OK;
}

/// Whether a later call asks for what the first one began with.
int32_t check_stream(const SSTask& task, const StreamSummary& stream) {
  const int64_t p = integer(task, task.dimension);
  const Selection selected(task);
  if (!selected.all() && p < 1) return SS_BAD_MASK;
  if (p != stream.dimension) return SS_BAD_DIMENSION;
  bool any = selected.all();
  for (intptr_t j = 0; j < stream.dimension && !selected.all(); ++j) {
    if (!selected[j]) continue;
    if (stream.variables[j].active == 0) return SS_BAD_MASK;
    any = true;
  }
  return any ? SS_OK : SS_BAD_MASK;
}

int32_t check_block(const SSTask& task) {
  const int64_t n = integer(task, task.observation_count);
  if (task.observation_count == nullptr || n < 0) return SS_BAD_OBSERVATION_COUNT;
  if (n == 0) return SS_OK;
  if (task.observations == nullptr) return SS_NULL_OBSERVATIONS;
  if (task.observation_storage == nullptr) return SS_NULL_STORAGE;
  return is_layout(integer(task, task.observation_storage)) ? SS_OK : SS_BAD_STORAGE;
}

template <class T>
int32_t check_question(const SSTask& task) {
  if (task.stream_quantiles == nullptr) return SS_NULL_STREAM_QUANTILES;
  if (task.stream_orders == nullptr) return SS_NULL_STREAM_ORDERS;
  const int64_t count = integer(task, task.stream_order_count);
  if (task.stream_order_count == nullptr || count < 0) return SS_BAD_STREAM_ORDERS;
  if (task.stream_param_count == nullptr) return SS_NULL_STREAM_PARAM_COUNT;
  if (integer(task, task.stream_param_count) != 1) return SS_BAD_STREAM_PARAM_COUNT;
  const auto* const orders = static_cast<const T*>(task.stream_orders);
  for (intptr_t i = 0; i < count; ++i) {
    if (!(orders[i] >= 0 && orders[i] <= 1)) return SS_BAD_STREAM_ORDERS;
  }
  return task.stream_params == nullptr ? SS_NULL_STREAM_PARAMS : SS_OK;
}

template <class T>
int32_t stream_quantiles(SSTask* task, uint64_t method, const SSThreadServices& services) {
  int32_t status = check_block(*task);
  if (status == SS_OK) status = check_question<T>(*task);
  if (status != SS_OK) return status;
  if ((method & (SS_METHOD_STREAM_QUERY | SS_METHOD_STREAM_ADD)) == 0) return SS_BAD_METHOD;
  const T epsilon = *static_cast<const T*>(task->stream_params);
  if (!(epsilon > 0 && epsilon <= 1)) return SS_BAD_STREAM_EPSILON;
  const int64_t n = integer(*task, task->observation_count);
  if (task->stream_state != nullptr) {
    status = check_stream(*task, *summary_of(*task));
  } else {
    status = check_dimension(*task, INT32_MAX);  // so far items count
  }
  if (status == SS_OK && n > most_elements) status = SS_BAD_OBSERVATION_COUNT;
  if (status == SS_OK && task->stream_state == nullptr) status = begin_stream(task);
  if (status != SS_OK) return status;

  const StreamSummary& stream = *summary_of(*task);
  if (n > 0) {
    Arguments<T> a = {};
    a.stream = summary_of(*task);
    a.observations = static_cast<const T*>(task->observations);
    a.rows = is_rows(integer(*task, task->observation_storage));
    a.all = static_cast<intptr_t>(n);
    a.epsilon = static_cast<double>(epsilon);
    status = add_data(a, services);
  }
  if (status != SS_OK || (method & SS_METHOD_STREAM_QUERY) == 0) return status;
  return answer_all<T>(*task, stream);
}

}  // namespace

int32_t _zokdSSStreamQuantiles(SSTask* task, uint64_t, uint64_t method,
                               const SSThreadServices* services) {
  return stream_quantiles<double>(task, method, *services);
}

int32_t _zoksSSStreamQuantiles(SSTask* task, uint64_t, uint64_t method,
                               const SSThreadServices* services) {
  return stream_quantiles<float>(task, method, *services);
}
