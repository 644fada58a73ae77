// SPDX-License-Identifier: MIT
#include "orv/ss.h"

using T = float;
#define ENTRY(name) __zoksSS##name
#include "editors.inc"
