// Go To: moves the view to a place that a dialog, a key or another program names.
#pragma once

#include "places/goto_logic.h"
#include "platform/win32.h"

// Goes to a place in the open file. A page that is not known yet is searched for first, which the user may
// end; one that there is not is told in a box.
void GoTo(const GoToAnswer& answer);

// Asks where to go, and goes there. Result 1, or 0 when the user cancels.
LRESULT GoToCommand(UINT id);
