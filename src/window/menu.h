// The menu bar as the system's menu, made from the tables, and the state of its items. Nothing is kept: the
// items show what the last opening of their pull-down computed.
#pragma once

#include <string>

#include "platform/win32.h"
#include "settings/recent_lists.h"

// Makes the menu bar. Null when the system refuses.
[[nodiscard]] HMENU BuildMenuBar();

// Makes the accelerator table. Null when the system refuses.
[[nodiscard]] HACCEL BuildAccelerators();

// Deletes the pull-downs and items that the profile's keys DeleteMenu1 to DeleteMenu6 name by their access
// letters, and the separators that nothing is left to part. Keys go on working. Result 0 when the window has
// no menu, or a pull-down that a key names is none; else 1.
int TrimMenus(HWND window);

// Parts the recent files from the items above them.
void AppendRecentSeparator(HWND window);

// WM_INITMENUPOPUP: sets the items of the pull-down at `position` of the window's bar.
void UpdatePullDown(HWND window, int position);

// One of the menus within menus, to be shown by itself; its items are set.
[[nodiscard]] HMENU BuildPopup(UINT submenu);

// The label of recent file `number`, from 1 on: the number as the access key, and its base name, behind which
// its folder stands when another recent file has the same name. At most kRecentItemChars characters: what is
// longer is shortened in the middle. Each & is doubled so that it shows as itself.
inline constexpr std::size_t kRecentItemChars = 60;
[[nodiscard]] std::string RecentItemText(const RecentFileList& recent, int number);
