#include "output.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "error.hpp"

namespace orv_cli {

void write(const void* data, size_t size) {
  if (std::fwrite(data, 1, size, stdout) != size || std::fflush(stdout) != 0) {
    throw Error("cannot write the results to standard output: {}", std::strerror(errno));
  }
}

}  // namespace orv_cli
