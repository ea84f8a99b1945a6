// The tag commands of the Mark menu: the lines of the view and the selection on one side, the tag list on
// the other.
#pragma once

#include "platform/win32.h"

// Says that there is no room for another tag, if there is none.
void TellFullTags();

LRESULT MarkToggleCommand(UINT id);
LRESULT MarkNextCommand(UINT id);
LRESULT UnmarkAllCommand(UINT id);
LRESULT MarkSetCommand(UINT id);
LRESULT MarkResetCommand(UINT id);
