// SPDX-License-Identifier: MIT
// The message service: texts by key, written to standard error a line at a time.
#include <orv/serv.h>

#include <stdarg.h>
#include <stdio.h>

namespace {

struct Message {
  int key;
  const char* text;
};

constexpr Message catalogue[] = {
    // What happened. Arguments: the function's name; for 735 also the argument's number.
    {735, "%s: argument number %d is not valid"},
    {736, "%s: an argument holds a bad address"},
    {737, "%s: an argument is outside the function's domain"},
    {738, "%s: an argument is a pole of the function"},
    {739, "%s: the result is too large for its type"},
    {740, "%s: the result is too small for its type"},
    {741, "%s: an unknown error was reported"},
    // The values of the element. Arguments: its index and one value.
    {742, "  element %d: argument %.17g"},
    {743, "  element %d: result %.17g"},
    {744, "  element %d: argument %.17g"},
    {745, "  element %d: first result %.17g"},
    {746, "  element %d: second result %.17g"},
    {747, "  element %d: first argument %.17g"},
    {748, "  element %d: second argument %.17g"},
    {749, "  element %d: result %.17g"},
    {750, "  element %d: first argument %.17g"},
    {751, "  element %d: second argument %.17g"},
    {752, "  element %d: first result %.17g"},
    {753, "  element %d: second result %.17g"},
};

const char* text_of(int key) {
  for (const Message& message : catalogue) {
    if (message.key == key) return message.text;
  }
  return nullptr;
}

}  // namespace

void orv_serv_orv_print(int, int key, int count, ...) {
  const char* text = text_of(key);
  char line[256];
  if (text == nullptr) {
    snprintf(line, sizeof line, "orv: no text for message %d", key);
  } else {
    va_list arguments;
    va_start(arguments, count);
    vsnprintf(line, sizeof line, text, arguments);
    va_end(arguments);
  }
  fprintf(stderr, "%s\n", line);  // one call a line, so that threads do not mix within a line
}
