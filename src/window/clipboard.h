// The clipboard commands of the Edit menu: copy, select all, unselect.
#pragma once

#include "platform/win32.h"

LRESULT CopyCommand(UINT id);
LRESULT SelectAllCommand(UINT id);
LRESULT UnselectCommand(UINT id);
