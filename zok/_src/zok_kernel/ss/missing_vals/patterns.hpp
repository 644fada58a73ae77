// SPDX-License-Identifier: MIT
// Which values are missing, and a copy of the data that is sorted by it.
#pragma once

#include "../../_service/ss_task.hpp"

namespace orv {
inline namespace ORV_TAG {

inline bool is_missing(double x) {
  constexpr uint64_t sign_and_quiet = 0xFFF8000000000000;
  uint64_t bits;
  memcpy(&bits, &x, sizeof bits);
  return (bits & sign_and_quiet) == sign_and_quiet;
}
inline bool is_missing(float x) {
  constexpr uint32_t sign_and_quiet = 0xFFC00000;
  uint32_t bits;
  memcpy(&bits, &x, sizeof bits);
  return (bits & sign_and_quiet) == sign_and_quiet;
}

/// The data of a task.
template <class T>
struct Data {
  intptr_t n, p;
  bool rows;
  const T* x;

  T operator()(intptr_t i, intptr_t j) const { return x[rows ? j * n + i : i * p + j]; }

  /// Calls f(i, j) for each missing value, in the order of storage.
  template <class F>
  void for_each_missing(F f) const {
    for (intptr_t k = 0; k < n * p; ++k) {
      if (is_missing(x[k])) rows ? f(k % n, k / n) : f(k / p, k % p);
    }
  }
};

/// The observations in which the same variables are missing.
struct Pattern {
  const uint64_t* observed;  // bit j of word j / 64: variable j
  int32_t missing;           // variables
  intptr_t first, count;     // observations, among those sorted by pattern
  intptr_t first_cell;       // missing values, likewise
};

inline bool is_observed(const Pattern& pattern, intptr_t j) {
  return (pattern.observed[j / 64] >> (j % 64) & 1) != 0;
}

/// Observations sorted by pattern, patterns by their first observation; within each, observations
/// keep their order.
class Patterns {
 public:
  Patterns() = default;
  Patterns(const Patterns&) = delete;
  Patterns& operator=(const Patterns&) = delete;
  ~Patterns() {
    orv_serv_deallocate(bits_);
    orv_serv_deallocate(of_);
    orv_serv_deallocate(place_);
    orv_serv_deallocate(table_);
    orv_serv_deallocate(patterns_);
  }

  template <class T>
  int32_t find(const Data<T>& data) {
    const intptr_t words = (data.p + 63) / 64;
    if (data.n > (intptr_t{1} << (8 * sizeof(intptr_t) - 4))) return SS_NO_MEMORY;
    intptr_t slots = 2;
    while (slots < 2 * data.n) slots *= 2;
    bits_ = allocate_zeros<uint64_t>(Count(data.n) * words);
    of_ = allocate<intptr_t>(data.n);
    place_ = allocate<intptr_t>(data.n);
    table_ = allocate<intptr_t>(slots);
    if (bits_ == nullptr || of_ == nullptr || place_ == nullptr || table_ == nullptr) {
      return SS_NO_MEMORY;
    }
    mark_observed(data, words);
    number(data.n, words, slots);
    patterns_ = allocate_zeros<Pattern>(count_);
    if (patterns_ == nullptr) return SS_NO_MEMORY;
    describe(data.n, data.p, words);
    return SS_OK;
  }

  intptr_t count() const { return count_; }
  const Pattern& operator[](intptr_t k) const { return patterns_[k]; }
  const Pattern* begin() const { return patterns_; }
  const Pattern* end() const { return patterns_ + count_; }

  /// Where observation i stands, and the pattern it has.
  intptr_t place(intptr_t i) const { return place_[i]; }
  const Pattern& of(intptr_t i) const { return patterns_[of_[i]]; }

 private:
  /// All observations' bits, one after another, in the order of storage.
  template <class T>
  void mark_observed(const Data<T>& data, intptr_t words) {
    const intptr_t outer = data.rows ? data.p : data.n, inner = data.rows ? data.n : data.p;
    const T* x = data.x;
    for (intptr_t a = 0; a < outer; ++a) {
      for (intptr_t b = 0; b < inner; ++b, ++x) {
        const intptr_t i = data.rows ? b : a, j = data.rows ? a : b;
        bits_[i * words + j / 64] |= uint64_t{!is_missing(*x)} << (j % 64);
      }
    }
  }

  static uint64_t hash(const uint64_t* bits, intptr_t words) {
    uint64_t h = 0;
    for (intptr_t w = 0; w < words; ++w) {
      h = (h ^ bits[w]) * 0x9E3779B97F4A7C15;  // 2^64 over the golden ratio
      h ^= h >> 32;
    }
    return h;
  }

  /// Numbers the patterns by a table of their numbers, and moves each one's bits to the front.
  void number(intptr_t n, intptr_t words, intptr_t slots) {
    for (intptr_t s = 0; s < slots; ++s) table_[s] = -1;
    const size_t bytes = static_cast<size_t>(words) * sizeof *bits_;
    for (intptr_t i = 0; i < n; ++i) {
      const uint64_t* const bits = bits_ + i * words;
      auto slot = static_cast<intptr_t>(hash(bits, words) & static_cast<uint64_t>(slots - 1));
      while (table_[slot] >= 0 && memcmp(bits_ + table_[slot] * words, bits, bytes) != 0) {
        slot = (slot + 1) & (slots - 1);
      }
      if (table_[slot] < 0) {
        memmove(bits_ + count_ * words, bits, bytes);
        table_[slot] = count_++;
      }
      of_[i] = table_[slot];
    }
  }

  void describe(intptr_t n, intptr_t p, intptr_t words) {
    for (intptr_t i = 0; i < n; ++i) ++patterns_[of_[i]].count;
    intptr_t first = 0, cell = 0;
    for (intptr_t k = 0; k < count_; ++k) {
      Pattern& pattern = patterns_[k];
      pattern.observed = bits_ + k * words;
      for (intptr_t j = 0; j < p; ++j) pattern.missing += is_observed(pattern, j) ? 0 : 1;
      pattern.first = first;
      pattern.first_cell = cell;
      first += pattern.count;
      cell += pattern.count * pattern.missing;
    }
    for (intptr_t i = 0; i < n; ++i) place_[i] = patterns_[of_[i]].first++;
    for (intptr_t k = 0; k < count_; ++k) patterns_[k].first -= patterns_[k].count;
  }

  uint64_t* bits_ = nullptr;  // of observations, then of patterns
  intptr_t* of_ = nullptr;    // an observation's pattern
  intptr_t* place_ = nullptr;
  intptr_t* table_ = nullptr;
  Pattern* patterns_ = nullptr;
  intptr_t count_ = 0;
};

}  // namespace ORV_TAG
}  // namespace orv
