// SPDX-License-Identifier: MIT
// A shift register whose last N units are a stream's state, delivered to arrays of any length.
//
//   struct Recurrence {
//     using Unit = uint32_t;                  // what the register is made of
//     static constexpr int32_t length = 624;  // N
//     /// The first `count` <= N of the units that follow the N at `from`. `to` may be `from`.
//     void follow(Unit* to, const Unit* from, int32_t count) const;
//     /// Any number of units, to follow the N that stand before them in the array.
//     void extend(Unit* to, int32_t count) const;
//   };
//
// A request for more than N units makes the array itself the register, so that no unit goes through
// the table. The array may be one of doubles: units are touched by vectors and memcpy only.
#pragma once

#include <orv/zok.h>
#include <stdint.h>
#include <string.h>

#include "../_service/stream_state.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Recurrence>
class ShiftRegister {
 public:
  using Unit = typename Recurrence::Unit;
  static constexpr int32_t length = Recurrence::length;

  /// `position` is that of the table's next unused unit; anything past the table means used up.
  ShiftRegister(const Recurrence& recurrence, Unit* table, uint32_t position)
      : recurrence_(recurrence),
        table_(table),
        position_(position < length ? static_cast<int32_t>(position) : length) {}

  int32_t position() const { return position_; }

  void take(int32_t n, Unit* r) {
    if (n <= length) return take_from_table(n, r);
    fill_array(n, r);
    copy(table_, r + n - length, length);
    position_ = length;
  }

  /// One request for n + 1 units, the last of which has no place in the array.
  void take_and_one(int32_t n, Unit* r, Unit* last) {
    if (n < length) {
      take_from_table(n, r);
      return take_from_table(1, last);
    }
    fill_array(n, r);
    recurrence_.follow(last, r + n - length, 1);
    copy(table_, r + n - length + 1, length - 1);
    copy(table_ + length - 1, last, 1);
    position_ = length;
  }

 private:
  static void copy(Unit* to, const Unit* from, int32_t count) {
    memcpy(to, from, static_cast<size_t>(count) * sizeof(Unit));
  }

  void take_from_table(int32_t n, Unit* r) {
    const int32_t left = length - position_;
    if (n <= left) {
      copy(r, table_ + position_, n);
      position_ += n;
      return;
    }
    copy(r, table_ + position_, left);
    recurrence_.follow(table_, table_, length);
    copy(r + left, table_, n - left);
    position_ = n - left;
  }

  /// n >= N units. The table still holds what went before it and is to be replaced.
  void fill_array(int32_t n, Unit* r) const {
    const int32_t left = length - position_;
    copy(r, table_ + position_, left);
    recurrence_.follow(r + left, table_, position_);
    recurrence_.extend(r + length, n - length);
  }

  const Recurrence recurrence_;
  Unit* table_;
  int32_t position_;
};

/// Seed words as array seeding takes them: none at all stand for the single word 1.
class SeedWords {
 public:
  SeedWords(int32_t n, const uint32_t* words)
      : n_(n < 1 ? 1 : n), words_(n < 1 ? nullptr : words) {}

  int32_t count() const { return n_; }
  uint32_t operator[](int32_t i) const { return words_ == nullptr ? 1 : words_[i]; }

 private:
  int32_t n_;
  const uint32_t* words_;
};

}  // namespace ORV_TAG
}  // namespace orv
