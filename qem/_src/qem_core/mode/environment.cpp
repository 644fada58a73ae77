// SPDX-License-Identifier: MIT
// The environment variable that seeds a thread's mode word.
#include <orv/qem.h>

#include <stdlib.h>
#include <string.h>

namespace {

constexpr char variable[] = "ORV_QEM_MODE";
constexpr char prefix[] = "QEM_";
constexpr unsigned prefix_length = 4;
constexpr unsigned text_limit = 256;  // a token must end before this offset

struct ModeToken {
  const char* text;
  uint32_t length;
  uint64_t value;
};

constexpr ModeToken mapModeS_N[] = {
    {"LA", 2, QEM_LA},
    {"HA", 2, QEM_HA},
    {"EP", 2, QEM_EP},
    {"DEFAULT_PRECISION", 17, 0},
    {"FLOAT_CONSISTENT", 16, QEM_FLOAT_CONSISTENT},
    {"DOUBLE_CONSISTEN", 16, QEM_DOUBLE_CONSISTENT},  // this spelling is the accepted one
    {"RESTORE", 7, QEM_RESTORE},
    {"ERRMODE_IGNORE", 14, QEM_ERRMODE_IGNORE},
    {"ERRMODE_ERRNO", 13, QEM_ERRMODE_ERRNO},
    {"ERRMODE_STDERR", 14, QEM_ERRMODE_STDERR},
    {"ERRMODE_EXCEPT", 14, QEM_ERRMODE_EXCEPT},
    {"ERRMODE_CALLBACK", 16, QEM_ERRMODE_CALLBACK},
    {"ERRMODE_DEFAULT", 15, QEM_ERRMODE_DEFAULT},
};

/// The first row whose text stands at `value[position]`. strncmp stops at the value's end.
const ModeToken* token_at(const char* value, unsigned position) {
  for (const ModeToken& token : mapModeS_N) {
    if (position + token.length >= text_limit) continue;
    if (strncmp(value + position, token.text, token.length) == 0) return &token;
  }
  return nullptr;
}

}  // namespace

int64_t orv_qem_kernel_ReadEnvVarMode() {
  const char* value = getenv(variable);
  if (value == nullptr) return -1;
  int64_t mode = 0;
  for (unsigned position = 0;;) {
    if (strncmp(value + position, prefix, prefix_length) != 0) return -1;
    const ModeToken* token = token_at(value, position + prefix_length);
    if (token == nullptr) return -1;
    position += prefix_length + token->length;
    const char end = value[position++];
    if (end != ',' && end != '\0') return -1;
    mode |= static_cast<int64_t>(token->value);
    if (end == '\0') return mode;
  }
}
