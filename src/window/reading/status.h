// The line at the foot of the window: what the view shows, and what the program has to say.
#pragma once

#include <string>

#include "platform/win32.h"

// The line as the state is now, or none, as the user has it. Cheap: called behind each paint and each change
// of the selection.
void UpdateStatus();

// Says something that is no fault, until the next move. Without the line nothing is said.
void Say(const std::string& text);

// Shows the line, or takes it off.
LRESULT StatusLineCommand(UINT id);
[[nodiscard]] bool StatusLineShown();

// The list of the formats, or of the character codes, at the pointer.
LRESULT FormatListCommand(UINT id);
LRESULT CodeListCommand(UINT id);
