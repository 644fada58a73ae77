// SPDX-License-Identifier: MIT
#include <orv/version.h>

const char* orv_version() { return ORV_VERSION; }
