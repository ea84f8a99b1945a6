// The setup of printed pages, as a command with its dialog.
#pragma once

#include "platform/win32.h"

// Result 1, or 0 when the user cancels.
LRESULT PageSetupCommand(UINT id);
