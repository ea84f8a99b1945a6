// Frozen columns: the dialog that sets their number, by typing or by a click into a line of the file or a
// ruler below it, and the command that gives them up.
#pragma once

#include "platform/win32.h"

LRESULT FreezeColumnsCommand(UINT id);
LRESULT ClearColumnsCommand(UINT id);
