// SPDX-License-Identifier: MIT
// Draws numbers block by block and prints them.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <vector>

#include "output.hpp"
#include "progress.hpp"
#include "random_streams.hpp"

namespace orv_cli {

/// Numbers that one call of the library draws, if an element has no more.
inline constexpr int32_t block_size = 1 << 15;

enum class Format { text, csv, binary };

/// Draws n elements of `words` numbers each with draw(count, numbers), a block at a time; each
/// block goes to use(span of its numbers).
template <class T, class Draw, class Use>
void draw_all(int64_t n, int32_t words, Draw draw, Use use) {
  Progress progress(n);
  const int64_t most = std::max(1, block_size / words);
  std::vector<T> block(static_cast<size_t>(std::min(n, most)) * words);
  for (int64_t done = 0; done < n;) {
    const auto count = static_cast<int32_t>(std::min(n - done, most));
    check(draw(count, block.data()), "drawing");
    use(std::span<const T>(block.data(), static_cast<size_t>(count) * words));
    done += count;
    progress.update(done);
  }
}

/// As text, `words` numbers a line with spaces or commas between, or as they are in memory.
template <class T, class Draw>
void print_all(int64_t n, int32_t words, Format format, Draw draw) {
  fmt::memory_buffer text;
  const char between = format == Format::csv ? ',' : ' ';
  draw_all<T>(n, words, draw, [&](std::span<const T> numbers) {
    if (format == Format::binary) return write(numbers.data(), numbers.size_bytes());
    text.clear();
    for (size_t i = 0; i < numbers.size(); ++i) {
      const char end = (i + 1) % static_cast<size_t>(words) ? between : '\n';
      fmt::format_to(std::back_inserter(text), "{}{}", numbers[i], end);
    }
    write(text.data(), text.size());
  });
}

}  // namespace orv_cli
