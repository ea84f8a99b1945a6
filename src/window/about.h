// The About box.
#pragma once

#include "platform/win32.h"

// Shows it; the result is the dialog's: 1 for OK, 0 for Cancel.
LRESULT AboutCommand(UINT id);
