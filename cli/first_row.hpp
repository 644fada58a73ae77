// SPDX-License-Identifier: MIT
// Whether the first row of a file holds names or numbers.
#pragma once

#include <deque>

#include "cells.hpp"
#include "csv.hpp"

namespace orv_cli {

/// The middle ones are a doubt, of which the user is to be told.
enum class FirstRow { data, rather_data, rather_names, names };

/// By its own cells and those below it. A row without numbers has names, and rather so has one
/// - with a text that stands above numbers only, or a number above texts only, or
/// - whose numbers all differ in kind from those below them, as years or other whole numbers above
///   fractions do, and that has a text, an empty corner, several years or column numbers.
FirstRow first_row_is(const CsvRow& first, const std::deque<CsvRow>& below,
                      const CellFormat& format);

}  // namespace orv_cli
