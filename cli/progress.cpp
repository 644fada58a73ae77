// SPDX-License-Identifier: MIT
#include "progress.hpp"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace orv_cli {

Progress::Progress(int64_t whole, Results results) {
  const bool in_the_way = results == Results::along_the_way && isatty(STDOUT_FILENO);
  if (isatty(STDERR_FILENO) && !in_the_way) whole_ = whole;
}

void Progress::update(int64_t done) {
  if (whole_ == 0 || Clock::now() < next_) return;
  next_ = Clock::now() + std::chrono::milliseconds(100);
  shown_ = true;
  constexpr int width = 40;
  const double part = std::min(1.0, static_cast<double>(done) / static_cast<double>(whole_));
  fmt::print(stderr, "\r[{:-<{}}] {:3.0f} %", std::string(static_cast<size_t>(part * width), '#'),
             width, 100 * part);
  std::fflush(stderr);
}

Progress::~Progress() {
  if (shown_) std::fputs("\r\033[K", stderr);
}

}  // namespace orv_cli
