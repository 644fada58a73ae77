// SPDX-License-Identifier: MIT
#include "orv/ss.h"

using T = double;
#define ENTRY(name) __zokdSS##name
#include "editors.inc"
