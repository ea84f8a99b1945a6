// The menu bar as the system's menu, made from the tables, and the state of its items. Nothing is kept: the
// items show what the last opening of their pull-down computed.
#pragma once

#include "platform/win32.h"

// Makes the menu bar. Null when the system refuses.
[[nodiscard]] HMENU BuildMenuBar();

// Makes the accelerator table. Null when the system refuses.
[[nodiscard]] HACCEL BuildAccelerators();

// Deletes the items that the profile's DeleteMenu keys name: none, as long as no profile is read. Result 0
// when the window has no menu; else 1.
int TrimMenus(HWND window);

// Parts the recent files from the items above them.
void AppendRecentSeparator(HWND window);

// WM_INITMENUPOPUP: sets the items of the pull-down at `position` of the bar.
void UpdatePullDown(HMENU popup, int position);
