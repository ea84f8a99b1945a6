// The record behind HMENU: a list of items, the popups among them owned by it. It alone holds the state; it
// knows no window and nothing of the toolkit's menus, which are made from it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/win32.h"

struct MenuEntry {
  UINT flags = 0;  // MF_SEPARATOR, MF_POPUP, MF_GRAYED, MF_CHECKED
  UINT id = 0;
  HMENU popup = nullptr;
  std::string text;
};

struct HMENU__ {
  std::vector<MenuEntry> entries;
  std::function<void()> changed;  // called when items of this menu itself come or go; may be empty
};

namespace platform_qt {

// Where the command stands, in the menu or in one of its popups; null when nowhere.
[[nodiscard]] MenuEntry* FindCommand(HMENU menu, UINT id);
// Position of the popup that holds the command, -1 when none does.
[[nodiscard]] int PopupOfCommand(HMENU menu, UINT id);
void DestroyMenuTree(HMENU menu);

}  // namespace platform_qt
