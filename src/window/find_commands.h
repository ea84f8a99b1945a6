// The search commands: a dialog or the stored search on one side, the selection, the tags and the view on the
// other.
#pragma once

#include "engine/file_pos.h"
#include "platform/win32.h"

// Runs the Find dialog of the command and has its search follow. The dialog's result.
LRESULT FindDialogCommand(UINT id);

// Shows the next hit of the stored search as the selection, without a word to the user. The result of
// SearchFile.
[[nodiscard]] FilePos FindNextQuietly();

// Shows the next hit of the stored search as the selection. Result 0.
LRESULT FindNextCommand(UINT id);

// Tags every hit of the stored search and shows the first. Result 0.
LRESULT FindMarkAllCommand(UINT id);
