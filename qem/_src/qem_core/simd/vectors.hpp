// SPDX-License-Identifier: MIT
// What the compiler's vector types lack.
//
// Every unit that includes this is compiled for one instruction set, ORV_TAG, and its inline
// namespace keeps one unit's instances out of another's.
#pragma once

#include "bits.hpp"
#include "conversions.hpp"
#include "masks.hpp"
#include "types.hpp"
