// WM_COMMAND: every user action is a command number, from the menu, a key, another command or another
// program alike, and is carried out here.
#pragma once

#include "platform/win32.h"

// Runs a command. A number that is no command, a command that needs a file while none is open, and one that
// is not built yet do nothing and give 0.
LRESULT RunCommand(UINT id);
