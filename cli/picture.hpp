// SPDX-License-Identifier: MIT
// Pictures, drawn by gnuplot.
#pragma once

#include <string>

namespace orv_cli {

/// Throws an Error unless the path ends in .svg or .png and gnuplot is installed.
void expect_picture(const std::string& path, const std::string& option);

/// Runs the script, which needs to set neither terminal nor output; the size is in pixels.
void draw_picture(const std::string& path, const std::string& option, int width, int height,
                  const std::string& script);

/// A text in gnuplot's quotes, as it stands.
std::string picture_text(const std::string& text);

}  // namespace orv_cli
