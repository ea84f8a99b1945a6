// The Save Options command and its dialog: each group of options is saved, reset to its defaults, or left as
// the profile holds it. The dialog ends only when all is saved; what fails it tells.
#pragma once

#include "platform/win32.h"

// Result 1, also when the user gives up.
LRESULT SaveOptionsCommand(UINT id);
