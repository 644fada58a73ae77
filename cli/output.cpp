// SPDX-License-Identifier: MIT
#include "output.hpp"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "error.hpp"

namespace orv_cli {
namespace {

/// What is written to in place of standard output, under a name of its own until it is whole.
struct OutputFile {
  std::FILE* file = nullptr;
  std::string path, unfinished;

  ~OutputFile() {
    if (file == nullptr) return;
    std::fclose(file);
    unlink(unfinished.c_str());
  }
} opened;

/// Of the file that an interrupt takes away; null if there is none.
const char* volatile unfinished_path = nullptr;

void on_interrupt(int signal) {
  if (unfinished_path != nullptr) unlink(unfinished_path);
  constexpr char end_of_bar[] = "\r\033[K";  // see Progress
  if (isatty(STDERR_FILENO) != 0 && ::write(STDERR_FILENO, end_of_bar, sizeof end_of_bar - 1) < 0) {
    _exit(128 + signal);
  }
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

}  // namespace

bool may_colour(int file) {
  const char* const no_colour = std::getenv("NO_COLOR");
  const char* const terminal = std::getenv("TERM");
  return isatty(file) != 0 && (no_colour == nullptr || *no_colour == '\0') && terminal != nullptr &&
         std::strcmp(terminal, "dumb") != 0;
}

void end_cleanly_on_signals() {
  std::signal(SIGPIPE, SIG_DFL);  // the caller may have had it ignored
  std::signal(SIGINT, on_interrupt);
  std::signal(SIGTERM, on_interrupt);
}

void write(const void* data, size_t size) {
  std::FILE* const to = opened.file != nullptr ? opened.file : stdout;
  const bool written = std::fwrite(data, 1, size, to) == size;
  if (written && (opened.file != nullptr || std::fflush(to) == 0)) return;
  throw Error("cannot write the results to {}: {}",
              opened.file != nullptr ? in_quotes(opened.path) : "standard output",
              std::strerror(errno));
}

void open_output(const std::string& path) {
  opened.path = path;
  opened.unfinished = path + ".unfinished";
  opened.file = std::fopen(opened.unfinished.c_str(), "we");
  if (opened.file == nullptr) {
    throw Error("--output {}: cannot write {}: {}", in_quotes(path), in_quotes(opened.unfinished),
                std::strerror(errno));
  }
  unfinished_path = opened.unfinished.c_str();
}

void close_output() {
  if (opened.file == nullptr) return;
  unfinished_path = nullptr;
  const bool written = std::fclose(opened.file) == 0;
  opened.file = nullptr;
  if (written && std::rename(opened.unfinished.c_str(), opened.path.c_str()) == 0) return;
  const int error = errno;
  unlink(opened.unfinished.c_str());
  throw Error("--output {}: {}", in_quotes(opened.path), std::strerror(error));
}

}  // namespace orv_cli
