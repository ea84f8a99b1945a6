// The Go To dialog and its command. What the choices mean and where they lead is search/goto_logic.
#pragma once

#include "platform/win32.h"

// Asks where to go, and goes there. The dialog's result.
LRESULT GoToCommand(UINT id);
