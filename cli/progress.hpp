// A bar on standard error for a job that takes more than a second.
#pragma once

#include <chrono>
#include <cstdint>

namespace orv_cli {

/// Silent unless standard error is a terminal, standard output is not (the bar would cut through
/// the results) and the whole is known.
class Progress {
 public:
  explicit Progress(int64_t whole);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void update(int64_t done);

 private:
  using Clock = std::chrono::steady_clock;

  int64_t whole_;
  Clock::time_point next_ = Clock::now() + std::chrono::seconds(1);
  bool shown_ = false;
};

}  // namespace orv_cli
