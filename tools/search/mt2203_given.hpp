// SPDX-License-Identifier: MIT
// The rows of the table that are given, by their numbers.
#pragma once

#include "mt2203.hpp"

namespace orv_search {

struct GivenMt2203Row {
  int number;
  Mt2203Row row;
};

constexpr GivenMt2203Row given_mt2203_rows[] = {
    {0, {0xAF81055F, 0xDD7EEF80, 0xEFD78000}},
    {1, {0x832604E1, 0x66AD7F80, 0xEBD58000}},
    {2, {0x92F70739, 0x656D7780, 0xEFC50000}},
    {1023, {0xE1B6093F, 0x9D326E80, 0xEFD58000}},
};

}  // namespace orv_search
