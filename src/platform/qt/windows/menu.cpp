#include "platform/qt/windows/menu.h"

#include "platform/qt/base/unknown.h"

namespace platform_qt {

MenuEntry* FindCommand(HMENU menu, UINT id) {
  for (MenuEntry& entry : menu->entries) {
    if ((entry.flags & MF_POPUP) != 0) {
      if (MenuEntry* const found = FindCommand(entry.popup, id)) {
        return found;
      }
    } else if ((entry.flags & MF_SEPARATOR) == 0 && entry.id == id) {
      return &entry;
    }
  }
  return nullptr;
}

int PopupOfCommand(HMENU menu, UINT id) {
  for (std::size_t i = 0; i < menu->entries.size(); ++i) {
    const MenuEntry& entry = menu->entries[i];
    if ((entry.flags & MF_POPUP) != 0 && FindCommand(entry.popup, id) != nullptr) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

void DestroyMenuTree(HMENU menu) {
  for (const MenuEntry& entry : menu->entries) {
    if (entry.popup != nullptr) {
      DestroyMenuTree(entry.popup);
    }
  }
  delete menu;
}

namespace {

// Removes the first entry with the command in the menu or below it. Result: whether there was one.
bool DeleteCommand(HMENU menu, UINT id) {
  for (std::size_t i = 0; i < menu->entries.size(); ++i) {
    const MenuEntry& entry = menu->entries[i];
    if ((entry.flags & MF_POPUP) != 0) {
      if (DeleteCommand(entry.popup, id)) {
        return true;
      }
    } else if ((entry.flags & MF_SEPARATOR) == 0 && entry.id == id) {
      menu->entries.erase(menu->entries.begin() + static_cast<std::ptrdiff_t>(i));
      return true;
    }
  }
  return false;
}

const MenuEntry* EntryAt(HMENU menu, int position) {
  const bool exists =
      menu != nullptr && position >= 0 && static_cast<std::size_t>(position) < menu->entries.size();
  return exists ? &menu->entries[static_cast<std::size_t>(position)] : nullptr;
}

// Changes one state bit of an item; the result as CheckMenuItem and EnableMenuItem give it.
DWORD ChangeState(HMENU menu, UINT id, UINT flags, UINT bit) {
  ReportUnknownBits("menu item state", flags, MF_BYPOSITION | bit);
  MenuEntry* entry = nullptr;
  if ((flags & MF_BYPOSITION) == 0) {
    entry = FindCommand(menu, id);
  } else if (id < menu->entries.size()) {
    entry = &menu->entries[id];
  }
  if (entry == nullptr) {
    return static_cast<DWORD>(-1);
  }
  const UINT former = entry->flags & bit;
  entry->flags = (entry->flags & ~bit) | (flags & bit);
  return former;
}

void TellOfChange(HMENU menu) {
  if (menu->changed) {
    menu->changed();
  }
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

HMENU CreateMenu() {
  return new HMENU__;
}

HMENU CreatePopupMenu() {
  return new HMENU__;
}

BOOL AppendMenuA(HMENU menu, UINT flags, UINT_PTR idOrPopup, LPCSTR text) {
  ReportUnknownBits("AppendMenuA", flags, MF_POPUP | MF_SEPARATOR | MF_GRAYED | MF_CHECKED);
  MenuEntry entry;
  entry.flags = flags;
  if ((flags & MF_SEPARATOR) == 0) {
    entry.text = text;
    if ((flags & MF_POPUP) != 0) {
      entry.popup = reinterpret_cast<HMENU>(idOrPopup);
    } else {
      entry.id = static_cast<UINT>(idOrPopup);
    }
  }
  menu->entries.push_back(entry);
  TellOfChange(menu);
  return TRUE;
}

BOOL DeleteMenu(HMENU menu, UINT item, UINT flags) {
  ReportUnknownBits("DeleteMenu", flags, MF_BYPOSITION);
  if ((flags & MF_BYPOSITION) == 0) {
    return DeleteCommand(menu, item) ? TRUE : FALSE;
  }
  if (item >= menu->entries.size()) {
    return FALSE;
  }
  const HMENU popup = menu->entries[item].popup;
  menu->entries.erase(menu->entries.begin() + static_cast<std::ptrdiff_t>(item));
  TellOfChange(menu);
  if (popup != nullptr) {
    DestroyMenuTree(popup);
  }
  return TRUE;
}

DWORD CheckMenuItem(HMENU menu, UINT id, UINT flags) {
  return ChangeState(menu, id, flags, MF_CHECKED);
}

BOOL EnableMenuItem(HMENU menu, UINT id, UINT flags) {
  return static_cast<BOOL>(ChangeState(menu, id, flags, MF_GRAYED));
}

HMENU GetSubMenu(HMENU menu, int position) {
  const MenuEntry* const entry = EntryAt(menu, position);
  return entry != nullptr ? entry->popup : nullptr;
}

int GetMenuItemCount(HMENU menu) {
  return menu != nullptr ? static_cast<int>(menu->entries.size()) : -1;
}

UINT GetMenuItemID(HMENU menu, int position) {
  const MenuEntry* const entry = EntryAt(menu, position);
  return entry != nullptr && entry->popup == nullptr ? entry->id : static_cast<UINT>(-1);
}

int GetMenuStringA(HMENU menu, UINT position, LPSTR text, int size, UINT flags) {
  ReportUnknownBits("GetMenuStringA", flags ^ MF_BYPOSITION, 0);
  const MenuEntry* const entry = EntryAt(menu, static_cast<int>(position));
  if (entry == nullptr || size < 1) {
    return 0;
  }
  const std::size_t length = entry->text.copy(text, static_cast<std::size_t>(size) - 1);
  text[length] = '\0';
  return static_cast<int>(length);
}
