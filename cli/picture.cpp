// SPDX-License-Identifier: MIT
#include "picture.hpp"

#include <fmt/format.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>

#include "error.hpp"

namespace orv_cli {

std::string picture_text(const std::string& text) {
  std::string result = "'";
  for (const char c : one_line(text, 40)) result.append(c == '\'' ? 2 : 1, c);
  return result + "' noenhanced";
}

void expect_picture(const std::string& path, const std::string& option) {
  if (!path.ends_with(".svg") && !path.ends_with(".png")) {
    throw Error("{} {}: allowed are files that end in .svg or .png, and -, for characters", option,
                in_quotes(path));
  }
  if (std::system("command -v gnuplot >/dev/null 2>&1") != 0) {
    throw Error("{} {}: pictures need gnuplot, which is not installed; - draws with characters",
                option, in_quotes(path));
  }
}

void draw_picture(const std::string& path, const std::string& option, int width, int height,
                  const std::string& script) {
  expect_picture(path, option);
  std::FILE* const gnuplot = popen("gnuplot >/dev/null 2>&1", "w");
  if (gnuplot == nullptr) throw Error("{} {}: gnuplot doesn't start", option, in_quotes(path));
  const char* const terminal = path.ends_with(".svg") ? "svg" : "pngcairo";
  std::string quoted;
  for (const char c : path) quoted.append(c == '\'' ? 2 : 1, c);
  const std::string whole = fmt::format(
      "set terminal {} size {},{}\nset output '{}'\nset style fill solid 0.5 border -1\nunset key\n"
      "{}\nunset output\n",
      terminal, width, height, quoted, script);
  std::fwrite(whole.data(), 1, whole.size(), gnuplot);
  const int status = pclose(gnuplot);
  if (status == 0) return;
  throw Error("{} {}: gnuplot could not draw it, and ended with code {}; can the file be written?",
              option, in_quotes(path), WEXITSTATUS(status));
}

}  // namespace orv_cli
