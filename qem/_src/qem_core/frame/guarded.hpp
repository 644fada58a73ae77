// SPDX-License-Identifier: MIT
// The frame of kernels with a slow path: blocks of lanes without a branch on data, and a slow path
// for each element that the lane formula does not serve.
//
// An operation tells what is its own:
//
//   struct Op {
//     using T = double;                                    // element type
//     static constexpr int block = 8;                      // elements a pass
//     static constexpr char _QEM_THISFUNC_NAME[] = "vdExp";
//     static constexpr Environment environment = environment_mode;  // see control_words.hpp
//     V lane(V x) const;                                   // the formula, for any vector type
//     int rare(V x) const;                                 // mask of lanes for the slow path
//     int slow(const T* x, T* y) const;                    // one element; returns a status code
//   };
//
// lane and rare take a vector for each part of each input. With one result of one part, lane
// returns it; otherwise a reference for each part of each result comes after the inputs. slow takes
// the address of each input, then of each result. Scalar arguments are members.
//
//   using In, Out             where the elements of inputs and results differ, in place of T
//   using Work = double;      lanes of another type than the inputs' parts
//   using PartsInTurn = void; complex elements as they lie in memory, for formulas that treat both
//                             parts alike: the two vectors of an element's parts follow each other
//                             there, and interleaved_mask makes the mask of elements
//   int pass(x, y) const;     in place of lane and rare, for masks that come from the formula and
//   for
//                             formulas that see a whole block: from inputs x[part][vector] to
//                             results y[part][vector]; returns the mask of all elements. See
//                             by_vector.
#pragma once

#include <utility>

#include "control_words.hpp"
#include "elements.hpp"
#include "report.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Op>
struct InOf {
  using type = typename Op::T;
};
template <class Op>
requires requires { typename Op::In; }
struct InOf<Op> {
  using type = typename Op::In;
};
template <class Op>
struct OutOf {
  using type = typename Op::T;
};
template <class Op>
requires requires { typename Op::Out; }
struct OutOf<Op> {
  using type = typename Op::Out;
};
template <class Op>
struct WorkOf {
  using type = Part<typename InOf<Op>::type>;
};
template <class Op>
requires requires { typename Op::Work; }
struct WorkOf<Op> {
  using type = typename Op::Work;
};
/// An operation's elements in and out, and the type of its lanes.
template <class Op>
using In = typename InOf<Op>::type;
template <class Op>
using Out = typename OutOf<Op>::type;
template <class Op>
using Work = typename WorkOf<Op>::type;

template <class Op>
inline constexpr bool parts_in_turn = requires {
  typename Op::PartsInTurn;
};

/// Runs f(k), which computes vector k of a pass and returns its mask; returns the mask of all.
template <class V, int vectors, class F>
int by_vector(F f) {
  int mask = 0;
#pragma GCC unroll 8
  for (int k = 0; k < vectors; ++k) mask |= f(k) << (k * lanes<V>);
  return mask;
}

template <class Op, int inputs, int outputs>
class Guarded {
 public:
  using I = In<Op>;
  using O = Out<Op>;

  Guarded(const Op& op, const I* const (&a)[inputs], O* const (&r)[outputs]) : op_(op) {
    for (int j = 0; j < inputs; ++j) a_[j] = a[j];
    for (int j = 0; j < outputs; ++j) r_[j] = r[j];
  }

  [[gnu::flatten]] void run(int32_t n) const {
    ControlWords words(Op::environment);
    const Guarded here = *this;  // no result can be stored over it, so it stays in registers
    const int32_t blocks_end = n > 0 ? n & ~(Op::block - 1) : 0;
    int32_t i = 0;
    for (; i < blocks_end; i += Op::block) here.template pass<Wide<Work<Op>>, Op::block>(i);
    for (; i < n; ++i) here.template pass<Narrow<Work<Op>>, 1>(i);
  }

 private:
  /// `count` elements from index `i` on. A single one fills all lanes of its vector.
  template <class V, int count>
  void pass(int32_t i) const {
    constexpr int step = count < lanes<V> ? count : lanes<V>;
    constexpr int vectors = count / step;
    V x[inputs * parts<I>][vectors], y[outputs * parts<O>][vectors];
#pragma GCC unroll 8
    for (int k = 0; k < vectors; ++k) {
      for (int j = 0; j < inputs; ++j) fetch<step>(a_[j] + i + k * step, &x[j * parts<I>], k);
    }
    int mask = compute(x, y);
    if constexpr (step == 1) mask &= 1;
    if (__builtin_expect(mask != 0, false)) {
      spill_and_repair<count, step>(i, mask, y);
      return;
    }
#pragma GCC unroll 8
    for (int k = 0; k < vectors; ++k) {
      for (int j = 0; j < outputs; ++j) put<step>(r_[j] + i + k * step, &y[j * parts<O>], k);
    }
  }

  template <class V, size_t in, size_t out, size_t vectors>
  int compute(const V (&x)[in][vectors], V (&y)[out][vectors]) const {
    if constexpr (requires { op_.pass(x, y); }) {
      return op_.pass(x, y);
    } else {
      return by_vector<V, vectors>([&](int k) {
        return lane_and_rare(x, y, k, std::make_index_sequence<in>{},
                             std::make_index_sequence<out>{});
      });
    }
  }

  template <class X, class Y, size_t... i, size_t... j>
  int lane_and_rare(const X& x, Y& y, int k, std::index_sequence<i...>,
                    std::index_sequence<j...>) const {
    if constexpr (sizeof...(j) == 1) {
      y[0][k] = op_.lane(x[i][k]...);
    } else {
      op_.lane(x[i][k]..., y[j][k]...);
    }
    return op_.rare(x[i][k]...);
  }

  template <int step, class V, int vectors>
  static void fetch(const I* p, V (*x)[vectors], int k) {
    if constexpr (step == 1) {
      fill_elements<parts_in_turn<Op>>(p, x, k);
    } else {
      load_elements<parts_in_turn<Op>>(p, x, k);
    }
  }

  template <int step, class V, int vectors>
  static void put(O* p, const V (*y)[vectors], int k) {
    if constexpr (step == 1) {
      store_first_element<parts_in_turn<Op>>(p, y, k);
    } else {
      store_elements<parts_in_turn<Op>>(p, y, k);
    }
  }

  /// The copies of the results keep the vectors of the ordinary path out of memory. Nothing of the
  /// pass is stored yet, so the inputs are still there.
  template <int count, int step, class V, int rows, int vectors>
  void spill_and_repair(int32_t i, int mask, const V (&y)[rows][vectors]) const {
    I xs[inputs][count];
    O ys[outputs][count];
    for (int j = 0; j < inputs; ++j) memcpy(xs[j], a_[j] + i, sizeof xs[j]);
#pragma GCC unroll 8
    for (int k = 0; k < vectors; ++k) {
      for (int j = 0; j < outputs; ++j) put<step>(ys[j] + k * step, &y[j * parts<O>], k);
    }
    const Guarded copy = *this;
    copy.repair(i, mask, xs, ys);
  }

  /// Sends the elements under `mask` through the slow path and stores the pass. A handler may have
  /// replaced a reported result in the caller's vector, so that is read back.
  template <int count>
  [[gnu::noinline, gnu::cold]] void repair(int32_t i, int mask, const I (&x)[inputs][count],
                                           O (&y)[outputs][count]) const {
    for (int k = 0; k < count; ++k) {
      if ((mask >> k & 1) == 0) continue;
      const int code = slow(x, y, k);
      if (code == 0) continue;
      for (int j = 0; j < outputs; ++j) memcpy(r_[j] + i + k, &y[j][k], sizeof(O));
      report(code, i + k, a_[0], r_[0], r_[outputs - 1], Op::_QEM_THISFUNC_NAME);
      for (int j = 0; j < outputs; ++j) memcpy(&y[j][k], r_[j] + i + k, sizeof(O));
    }
    for (int j = 0; j < outputs; ++j) memcpy(r_[j] + i, y[j], sizeof y[j]);
  }

  template <int count>
  int slow(const I (&x)[inputs][count], O (&y)[outputs][count], int k) const {
    if constexpr (inputs == 2) {
      return op_.slow(&x[0][k], &x[1][k], &y[0][k]);
    } else if constexpr (outputs == 2) {
      return op_.slow(&x[0][k], &y[0][k], &y[1][k]);
    } else {
      return op_.slow(&x[0][k], &y[0][k]);
    }
  }

  Op op_;
  const I* a_[inputs];
  O* r_[outputs];
};

/// r[i] = f(a[i])
template <class Op>
void guarded(const Op& op, int32_t n, const In<Op>* a, Out<Op>* r) {
  Guarded<Op, 1, 1>(op, {a}, {r}).run(n);
}

/// r[i] = f(a[i], b[i])
template <class Op>
void guarded(const Op& op, int32_t n, const In<Op>* a, const In<Op>* b, Out<Op>* r) {
  Guarded<Op, 2, 1>(op, {a, b}, {r}).run(n);
}

/// r1[i], r2[i] = f(a[i])
template <class Op>
void guarded(const Op& op, int32_t n, const In<Op>* a, Out<Op>* r1, Out<Op>* r2) {
  Guarded<Op, 1, 2>(op, {a}, {r1, r2}).run(n);
}

}  // namespace ORV_TAG
}  // namespace orv
