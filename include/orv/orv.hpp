// SPDX-License-Identifier: MIT
// The C++ face: all of it. Header-only, over the C interface; link with orv::cpp.
//
//   orv/math.hpp           vector functions, levels
//   orv/mode.hpp           the thread's mode, callbacks, collected reports
//   orv/stream.hpp         random streams
//   orv/distributions.hpp  what to draw from them
//   orv/dataset.hpp        statistics of data in memory
//   orv/accumulator.hpp    statistics of data in blocks
//   orv/task.hpp           the rest of the statistics, as templates
//
// docs/cpp.md is a guide.
#pragma once

#include <orv/version.h>
#include <orv/accumulator.hpp>
#include <orv/dataset.hpp>
#include <orv/distributions.hpp>
#include <orv/error.hpp>
#include <orv/math.hpp>
#include <orv/mode.hpp>
#include <orv/stream.hpp>
#include <orv/task.hpp>
