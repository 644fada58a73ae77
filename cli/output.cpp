#include "output.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
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

}  // namespace

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
}

void close_output() {
  if (opened.file == nullptr) return;
  const bool written = std::fclose(opened.file) == 0;
  opened.file = nullptr;
  if (written && std::rename(opened.unfinished.c_str(), opened.path.c_str()) == 0) return;
  const int error = errno;
  unlink(opened.unfinished.c_str());
  throw Error("--output {}: {}", in_quotes(opened.path), std::strerror(error));
}

}  // namespace orv_cli
