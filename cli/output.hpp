// Results on standard output.
#pragma once

#include <cstddef>

namespace orv_cli {

/// Writes at once. Throws an Error where that fails, on a full disk for instance.
void write(const void* data, size_t size);

}  // namespace orv_cli
