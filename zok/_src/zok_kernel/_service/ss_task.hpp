// SPDX-License-Identifier: MIT
// What every compute entry reads from a task: integers of either width, layouts, matrix storage.
// And what it asks for: threads, work buffers.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include "orv/serv.h"
#include "orv/ss.h"

namespace orv {
inline namespace ORV_TAG {

/// Integers behind a task's address: words, or pairs of words with the low one first.
class Integers {
 public:
  Integers(const SSTask& task, const void* p)
      : words_(static_cast<const int32_t*>(p)), step_(task.int_is_64 != 0 ? 2 : 1) {}

  explicit operator bool() const { return words_ != nullptr; }

  int64_t operator[](intptr_t i) const {
    const int32_t* word = words_ + i * step_;
    if (step_ == 1) return *word;
    return static_cast<int64_t>(static_cast<uint64_t>(static_cast<uint32_t>(word[1])) << 32 |
                                static_cast<uint32_t>(word[0]));
  }

 private:
  const int32_t* words_;
  intptr_t step_;
};

/// The integer behind one of the task's addresses; 0 where there is none, which as a storage code
/// stands for a full matrix.
inline int64_t integer(const SSTask& task, const void* p) {
  return p != nullptr ? Integers(task, p)[0] : 0;
}

/// The variables that the mask selects: all without a mask.
class Selection {
 public:
  explicit Selection(const SSTask& task) : mask_(task, task.variable_mask) {}
  bool all() const { return !mask_; }
  bool operator[](intptr_t variable) const { return all() || mask_[variable] != 0; }

 private:
  Integers mask_;
};

inline bool is_rows(int64_t layout) { return (layout & SS_ROWS) != 0; }
inline bool is_layout(int64_t layout) { return (layout & (SS_ROWS | SS_COLUMNS)) != 0; }

/// No array has more elements.
inline constexpr int64_t most_elements = PTRDIFF_MAX / sizeof(float);

inline int32_t check_dimension(const SSTask& task, int64_t most = most_elements) {
  const int64_t p = integer(task, task.dimension);
  return p < 1 || p > most ? SS_BAD_DIMENSION : SS_OK;
}

/// The sizes of the data, and whether there are any. Every entry that reads them comes here when
/// all else that it looks for is there: an editor takes any address, and counts change behind it.
inline int32_t check_data(const SSTask& task, int64_t most = most_elements) {
  const int32_t status = check_dimension(task, most);
  if (status != SS_OK) return status;
  const int64_t n = integer(task, task.observation_count);
  if (n < 1 || n > most) return SS_BAD_OBSERVATION_COUNT;
  return task.observations != nullptr ? SS_OK : SS_NULL_OBSERVATIONS;
}

/// What the services offer, of whom an answer below 1 is not expected.
inline int32_t usable_threads(const SSThreadServices& services) {
  const int32_t threads = services.max_threads();
  return threads < 1 ? 1 : threads;
}

/// Where the elements of a symmetric p by p matrix stand.
class MatrixStorage {
 public:
  MatrixStorage(int64_t code, intptr_t p) : code_(code), p_(p) {}

  bool full() const { return (code_ & (SS_MATRIX_LOWER_PACKED | SS_MATRIX_UPPER_PACKED)) == 0; }

  /// Number of elements.
  intptr_t size() const { return full() ? p_ * p_ : p_ * (p_ + 1) / 2; }

  /// The place of element (i, j), i not above j; in full storage that of the upper triangle.
  intptr_t place(intptr_t i, intptr_t j) const {
    if (full()) return i * p_ + j;
    if ((code_ & SS_MATRIX_LOWER_PACKED) != 0) return j * (j + 1) / 2 + i;
    return i * p_ - i * (i - 1) / 2 + (j - i);
  }

  /// Writes value(i, j), i not above j, to every place where both variables are selected. The
  /// diagonal element of a row comes after its others, which a value in place may depend on.
  template <class T, class Selected, class Value>
  void write(T* matrix, const Selected& selected, Value value) const {
    for (intptr_t i = 0; i < p_; ++i) {
      if (!selected[i]) continue;
      for (intptr_t j = p_ - 1; j >= i; --j) {
        if (!selected[j]) continue;
        const T x = value(i, j);
        matrix[place(i, j)] = x;
        if (full()) matrix[j * p_ + i] = x;
      }
    }
  }

 private:
  int64_t code_;
  intptr_t p_;
};

/// Work buffers of statistics are aligned to two cache lines.
inline constexpr size_t work_alignment = 128;

/// A number of elements. Sums and products that wrap around become one that nobody can allocate.
struct Count {
  constexpr Count(intptr_t n) : value(static_cast<size_t>(n)) {}
  size_t value;
};

constexpr Count operator+(Count a, Count b) {
  if (__builtin_add_overflow(a.value, b.value, &a.value)) a.value = SIZE_MAX;
  return a;
}
constexpr Count operator*(Count a, Count b) {
  if (__builtin_mul_overflow(a.value, b.value, &a.value)) a.value = SIZE_MAX;
  return a;
}

/// An array, or null. Release with orv_serv_deallocate.
template <class T>
T* allocate(Count count) {
  const size_t bytes = (count * sizeof(T)).value;
  if (bytes > PTRDIFF_MAX) return nullptr;
  return static_cast<T*>(orv_serv_allocate(bytes, work_alignment));
}

/// The same, of zeros.
template <class T>
T* allocate_zeros(Count count) {
  T* const array = allocate<T>(count);
  if (array != nullptr) memset(array, 0, count.value * sizeof(T));
  return array;
}

}  // namespace ORV_TAG
}  // namespace orv
