// The record behind HMENU: a list of items, the popups among them owned by it. The toolkit's menus are made
// from it when it becomes the bar of a window, and each pull-down is filled anew whenever it opens, so that
// the record alone holds the state.
#pragma once

#include <QMenuBar>
#include <memory>
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
};

namespace platform_qt {

// Makes the bar of `window` from its menu.
void BuildMenuBar(HWND window);
// Where the command stands, in the menu or in one of its popups; null when nowhere.
[[nodiscard]] MenuEntry* FindCommand(HMENU menu, UINT id);
// Position of the popup that holds the command, -1 when none does.
[[nodiscard]] int PopupOfCommand(HMENU menu, UINT id);
void DestroyMenuTree(HMENU menu);

}  // namespace platform_qt
