// The line at the foot of a window: a text and fields beside it, drawn by the toolkit outside the client
// area. Operations of this layer's own. What is set shows within a few hundredths of a second, however often
// it is set, so that a move costs no more for it.
#pragma once

#include <string>
#include <vector>

#include "platform/win32.h"

// A field. A click on it posts WM_COMMAND with `command`, whose number 0 makes it one that takes no clicks.
struct StatusField {
  std::string text;  // UTF-8; empty: the field is not shown
  std::string hint;  // what a click does
  UINT command = 0;
  bool operator==(const StatusField&) const = default;
};

struct StatusLine {
  StatusField first;  // takes the room that the others leave, and is shortened in the middle to fit it
  // Those behind it, from left to right. In a narrow window the last ones go first.
  std::vector<StatusField> fields;
  bool operator==(const StatusLine&) const = default;
};

// Shows the line in a window, or takes it off (null). The client area changes its height with it: then
// WM_SIZE comes before the call returns.
void SetStatusLine(HWND window, const StatusLine* line);
