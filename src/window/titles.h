// Frozen titles as the window's commands use them. Where there is no memory for them the user is told.
#pragma once

#include "platform/win32.h"

// Begins a use of the titles' storage; false when there is no memory for it, after the user has been told.
// Ends with UnlockTitles.
[[nodiscard]] bool TakeTitles(bool reset);

// The titles that the window starts with: those of the profile, then those of the setup that was named.
void LoadFirstTitles();

// Makes the selected lines the titles; a beep, and the old titles stay, when nothing is selected.
LRESULT FreezeTitleCommand(UINT id);
LRESULT ClearTitleCommand(UINT id);
