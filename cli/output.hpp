// SPDX-License-Identifier: MIT
// Results on standard output, or in a file in its place.
#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <utility>

namespace orv_cli {

/// From here on results go to a file, which appears when it is closed, and only then; so it may be
/// one that is read.
void open_output(const std::string& path);
void close_output();

/// Whether a terminal is there that shows colours, and the user has not set NO_COLOR.
bool may_colour(int file);

/// From here on an interrupt takes away what is unfinished, and a reader that left is no mistake.
void end_cleanly_on_signals();

/// Writes at once. Throws an Error where that fails, on a full disk for instance. All that goes to
/// standard output goes through here, so that none of it is lost in silence.
void write(const void* data, size_t size);

template <class... Args>
void output(fmt::format_string<Args...> format, Args&&... args) {
  const std::string text = fmt::format(format, std::forward<Args>(args)...);
  write(text.data(), text.size());
}

}  // namespace orv_cli
