// SPDX-License-Identifier: MIT
// What a thread keeps for vector kernels, set aside while the library itself calls them.
#pragma once

#include "qem/_src/qem_core/mode/thread_cells.hpp"

namespace orv {
inline namespace ORV_TAG {

/// While it lives, kernels of this thread keep denormals and report to `callback` alone, or to
/// nobody. At its end the thread has the mode word, the callback and the status that it had, and a
/// mode word that was yet to be taken from the environment still is.
///
/// The words are put into their cells: the exported operations can't take a field back to 0.
class QuietKernels {
 public:
  explicit QuietKernels(QemErrorCallBack callback = nullptr) {
    const QemMode route = callback != nullptr ? QEM_ERRMODE_CALLBACK : QEM_ERRMODE_IGNORE;
    *mode_.cell = route | DENORMALS_KEPT;
    *callback_.cell = callback;
  }
  ~QuietKernels() {
    *mode_.cell = mode_.word;
    *callback_.cell = callback_.word;
    *status_.cell = status_.word;
  }
  QuietKernels(const QuietKernels&) = delete;
  QuietKernels& operator=(const QuietKernels&) = delete;

 private:
  template <class Word>
  struct Kept {
    explicit Kept(Word* c) : cell(c), word(*c) {}

    Word* const cell;
    const Word word;
  };

  const Kept<QemMode> mode_{_GetMode()};
  const Kept<QemErrorCallBack> callback_{_GetCallBack()};
  const Kept<int32_t> status_{_GetErrStatus()};
};

}  // namespace ORV_TAG
}  // namespace orv
