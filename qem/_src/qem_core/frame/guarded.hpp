// The frame of kernels with a slow path: blocks of lanes without a branch on data, and a slow path
// for each element that the lane formula does not serve.
//
// An operation tells what is its own:
//
//   struct Op {
//     using T = double;                                    // element type
//     static constexpr int block = 8;                      // elements a pass
//     static constexpr char _QEM_THISFUNC_NAME[] = "vdExp";
//     static constexpr Environment environment = {};       // control words, see control_words.hpp
//     V lane(V x) const;                                   // the formula, for any vector type
//     int rare(V x) const;                                 // mask of lanes for the slow path
//     int slow(const T* x, T* y) const;                    // one element; returns a status code
//   };
//
// With two inputs, lane and rare take both and slow takes both addresses; with two results, lane is
// `void lane(V x, V& y1, V& y2)` and slow takes both addresses. Scalar arguments are members.
#pragma once

#include "../simd/vectors.hpp"
#include "control_words.hpp"
#include "report.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Op, int inputs, int outputs>
class Guarded {
 public:
  using T = typename Op::T;

  Guarded(const Op& op, const T* const (&a)[inputs], T* const (&r)[outputs]) : op_(op) {
    for (int j = 0; j < inputs; ++j) a_[j] = a[j];
    for (int j = 0; j < outputs; ++j) r_[j] = r[j];
  }

  [[gnu::flatten]] void run(int32_t n) const {
    ControlWords words(Op::environment);
    const int32_t blocks_end = n > 0 ? n & ~(Op::block - 1) : 0;
    int32_t i = 0;
    for (; i < blocks_end; i += Op::block) pass<Wide<T>, Op::block>(i);
    for (; i < n; ++i) pass<Narrow<T>, 1>(i);
  }

 private:
  /// `count` elements from index `i` on. A single one fills all lanes of its vector.
  template <class V, int count>
  void pass(int32_t i) const {
    constexpr int step = count < lanes<V> ? count : lanes<V>;
    constexpr int vectors = count / step;
    V x[inputs][vectors], y[outputs][vectors];
    int mask = 0;
#pragma GCC unroll 8
    for (int k = 0; k < vectors; ++k) {
      for (int j = 0; j < inputs; ++j) x[j][k] = fetch<V, step>(a_[j] + i + k * step);
      mask |= compute(x, y, k) << (k * step);
    }
    if constexpr (step == 1) mask &= 1;
    if (__builtin_expect(mask != 0, false)) {
      spill_and_repair<count>(i, mask, x, y);
      return;
    }
#pragma GCC unroll 8
    for (int k = 0; k < vectors; ++k) {
      for (int j = 0; j < outputs; ++j) put<V, step>(r_[j] + i + k * step, y[j][k]);
    }
  }

  template <class V, int vectors>
  int compute(V (&x)[inputs][vectors], V (&y)[outputs][vectors], int k) const {
    if constexpr (inputs == 2) {
      y[0][k] = op_.lane(x[0][k], x[1][k]);
      return op_.rare(x[0][k], x[1][k]);
    } else {
      if constexpr (outputs == 2) {
        op_.lane(x[0][k], y[0][k], y[1][k]);
      } else {
        y[0][k] = op_.lane(x[0][k]);
      }
      return op_.rare(x[0][k]);
    }
  }

  template <class V, int step>
  static V fetch(const T* p) {
    if constexpr (step == 1) {
      return splat<V>(load_one(p));
    } else {
      return load<V>(p);
    }
  }

  template <class V, int step>
  static void put(T* p, V v) {
    if constexpr (step == 1) {
      store_low(p, v);
    } else {
      store(p, v);
    }
  }

  /// The copies keep the vectors of the ordinary path out of memory.
  template <int count, class V, int vectors>
  void spill_and_repair(int32_t i, int mask, const V (&x)[inputs][vectors],
                        const V (&y)[outputs][vectors]) const {
    constexpr int room = vectors * lanes<V>;
    alignas(V) T xs[inputs][room], ys[outputs][room];
#pragma GCC unroll 8
    for (int k = 0; k < vectors; ++k) {
      for (int j = 0; j < inputs; ++j) store(&xs[j][k * lanes<V>], x[j][k]);
      for (int j = 0; j < outputs; ++j) store(&ys[j][k * lanes<V>], y[j][k]);
    }
    repair<count>(i, mask, xs, ys);
  }

  /// Sends the elements under `mask` through the slow path and stores the block. A handler may have
  /// replaced a reported result in the caller's vector, so that is read back.
  template <int count, int room>
  [[gnu::noinline, gnu::cold]] void repair(int32_t i, int mask, const T (&x)[inputs][room],
                                           T (&y)[outputs][room]) const {
    for (int k = 0; k < 32; ++k) {
      if ((mask >> k & 1) == 0) continue;
      const int code = slow(x, y, k);
      if (code == 0) continue;
      for (int j = 0; j < outputs; ++j) memcpy(r_[j] + i + k, &y[j][k], sizeof(T));
      report(code, i + k, a_[0], r_[0], r_[outputs - 1], Op::_QEM_THISFUNC_NAME);
      for (int j = 0; j < outputs; ++j) memcpy(&y[j][k], r_[j] + i + k, sizeof(T));
    }
    for (int j = 0; j < outputs; ++j) memcpy(r_[j] + i, y[j], count * sizeof(T));
  }

  template <int room>
  int slow(const T (&x)[inputs][room], T (&y)[outputs][room], int k) const {
    if constexpr (inputs == 2) {
      return op_.slow(&x[0][k], &x[1][k], &y[0][k]);
    } else if constexpr (outputs == 2) {
      return op_.slow(&x[0][k], &y[0][k], &y[1][k]);
    } else {
      return op_.slow(&x[0][k], &y[0][k]);
    }
  }

  Op op_;
  const T* a_[inputs];
  T* r_[outputs];
};

/// r[i] = f(a[i])
template <class Op>
void guarded(const Op& op, int32_t n, const typename Op::T* a, typename Op::T* r) {
  Guarded<Op, 1, 1>(op, {a}, {r}).run(n);
}

/// r[i] = f(a[i], b[i])
template <class Op>
void guarded_binary(const Op& op, int32_t n, const typename Op::T* a, const typename Op::T* b,
                    typename Op::T* r) {
  Guarded<Op, 2, 1>(op, {a, b}, {r}).run(n);
}

/// r1[i], r2[i] = f(a[i])
template <class Op>
void guarded_two_results(const Op& op, int32_t n, const typename Op::T* a, typename Op::T* r1,
                         typename Op::T* r2) {
  Guarded<Op, 1, 2>(op, {a}, {r1, r2}).run(n);
}

}  // namespace ORV_TAG
}  // namespace orv
