// Commands from other programs, as the window starts and ends them.
#pragma once

#include "platform/win32.h"

// Begins to take commands; a box when that fails.
void StartService();

// Begins to take commands, or ceases to.
LRESULT IgnoreDdeCommand(UINT id);
