// SPDX-License-Identifier: MIT
// Radix sort of floats and doubles from the least significant digit. Numbers are turned into
// unsigned keys of the same order: the sign bit is flipped, and in negative numbers all others too.
// Each 32-bit word of a key has three digits, of 11, 11 and 10 bits.
#include <orv/sort.h>
#include <string.h>

#include <utility>

namespace {

template <class T>
struct Keys;

template <>
struct Keys<float> {
  using Bits = uint32_t;
  using SignedBits = int32_t;
};

template <>
struct Keys<double> {
  using Bits = uint64_t;
  using SignedBits = int64_t;
};

template <class T>
class RadixSorter {
 public:
  /// Sorts data[0 .. len).
  static void sort(T* data, T* work, int32_t len) {
    int32_t counters[digits / 3 * counters_per_word];
    p8_tebsZero_32s(counters, sizeof counters / sizeof *counters);
    make_keys(data, len, counters, std::make_integer_sequence<int32_t, digits>());
    sort_keys(data, work, len, counters, std::make_integer_sequence<int32_t, digits>());
  }

 private:
  using Bits = typename Keys<T>::Bits;
  using Scatter = void (*)(const T* from, T* to, int32_t len, int32_t* offset);

  static constexpr int32_t digits = 3 * sizeof(Bits) / sizeof(uint32_t);
  static constexpr int32_t counters_per_word = 2048 + 2048 + 1024;
  static constexpr Bits sign = Bits{1} << (8 * sizeof(Bits) - 1);

  /// So many keys ahead the place to write to is fetched, which halves the time of a pass.
  static constexpr int32_t ahead = 16;

  static constexpr int32_t size(int32_t digit) { return digit % 3 == 2 ? 1024 : 2048; }
  static constexpr int32_t first_counter(int32_t digit) {
    return digit / 3 * counters_per_word + digit % 3 * 2048;
  }

  static Bits load(const T* p) {
    Bits bits;
    memcpy(&bits, p, sizeof bits);
    return bits;
  }
  static void store(T* p, Bits bits) { memcpy(p, &bits, sizeof bits); }

  /// All ones if the sign bit is set.
  static Bits spread_sign(Bits x) {
    return static_cast<Bits>(static_cast<typename Keys<T>::SignedBits>(x) >> (8 * sizeof x - 1));
  }
  static Bits to_key(Bits x) { return x ^ (spread_sign(x) | sign); }
  static Bits to_number(Bits key) { return key ^ (~spread_sign(key) | sign); }

  template <int32_t d>
  static uint32_t digit(Bits key) {
    return static_cast<uint32_t>(key >> (d / 3 * 32 + d % 3 * 11)) & (size(d) - 1);
  }

  /// Turns numbers into keys and counts all digits, each in a table of its own.
  template <int32_t... d>
  static void make_keys(T* data, int32_t len, int32_t* counters,
                        std::integer_sequence<int32_t, d...>) {
    for (int32_t i = 0; i < len; ++i) {
      const Bits key = to_key(load(data + i));
      store(data + i, key);
      (++counters[first_counter(d) + digit<d>(key)], ...);
    }
  }

  /// Moves keys to where their digit's turn is, counted from one before; the last time as numbers.
  template <int32_t d, bool last>
  static void scatter(const T* from, T* to, int32_t len, int32_t* offset) {
    for (int32_t i = 0; i < len; ++i) {
      if (len - i > ahead) {
        __builtin_prefetch(to + 1 + offset[digit<d>(load(from + i + ahead))], 1);
      }
      const Bits key = load(from + i);
      store(to + ++offset[digit<d>(key)], last ? to_number(key) : key);
    }
  }

  /// Turns the counts of a digit's values into the place before the first key of each.
  static void sum_up(int32_t* counters, int32_t count) {
    int32_t place = -1;
    for (int32_t i = 0; i < count; ++i) place += std::exchange(counters[i], place);
  }

  /// A digit that all keys share is passed over.
  template <int32_t... d>
  static void sort_keys(T* data, T* work, int32_t len, int32_t* counters,
                        std::integer_sequence<int32_t, d...>) {
    static constexpr Scatter pass[] = {scatter<d, false>...}, last_pass[] = {scatter<d, true>...};
    const Bits key = load(data);
    const uint32_t first[] = {digit<d>(key)...};
    const auto differs = [&](int32_t i) { return counters[first_counter(i) + first[i]] != len; };
    int32_t last = digits - 1;
    while (last > 0 && !differs(last)) --last;

    T *from = data, *to = work;
    for (int32_t i = 0; i <= last; ++i) {
      if (i != last && !differs(i)) continue;
      sum_up(counters + first_counter(i), size(i));
      (i == last ? last_pass : pass)[i](from, to, len, counters + first_counter(i));
      std::swap(from, to);
    }
    if (from != data) copy(from, data, len);
  }

  static void copy(const float* from, float* to, int32_t len) { p8_tebsCopy_32f(from, to, len); }
  static void copy(const double* from, double* to, int32_t len) {
    p8_ownsCopy_8u(reinterpret_cast<const uint8_t*>(from), reinterpret_cast<uint8_t*>(to),
                   static_cast<size_t>(len) * sizeof *to);
  }
};

template <class T>
int32_t sort_checked(T* data, T* work, int32_t len) {
  if (data == nullptr || work == nullptr) return SORT_NULL_POINTER;
  if (len < 1) return SORT_BAD_LENGTH;
  RadixSorter<T>::sort(data, work, len);
  return SORT_OK;
}

}  // namespace

int32_t p8_tebsSortRadixAscend_32f_I(float* data, float* work, int32_t len) {
  return sort_checked(data, work, len);
}

int32_t p8_tebsSortRadixAscend_64f_I(double* data, double* work, int32_t len) {
  return sort_checked(data, work, len);
}
