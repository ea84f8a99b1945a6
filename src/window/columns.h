// Frozen columns: characters at the left of each line that stay in place while the rest moves sideways.
#pragma once

#include <cstdint>

#include "platform/win32.h"

// Freezes `count` columns, 0 to 255; 0 gives them up.
void FreezeColumns(std::int32_t count);

// Asks for the number and freezes them. Result 1, or 0 when the user cancels.
LRESULT FreezeColumnsCommand(UINT id);
LRESULT ClearColumnsCommand(UINT id);
