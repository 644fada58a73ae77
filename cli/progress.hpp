// SPDX-License-Identifier: MIT
// A bar on standard error for a job that takes more than a second.
#pragma once

#include <chrono>
#include <cstdint>

namespace orv_cli {

/// Silent unless standard error is a terminal and the whole is known, and where results that are
/// printed along the way go to a terminal, too: the bar would cut through them.
class Progress {
 public:
  enum class Results { along_the_way, at_the_end };

  explicit Progress(int64_t whole, Results results = Results::along_the_way);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void update(int64_t done);

 private:
  using Clock = std::chrono::steady_clock;

  int64_t whole_ = 0;
  Clock::time_point next_ = Clock::now() + std::chrono::seconds(1);
  bool shown_ = false;
};

}  // namespace orv_cli
