#include "window/menu.h"

#include <cassert>
#include <cstring>
#include <string>
#include <vector>

#include "resources/menu.h"
#include "settings/label_text.h"
#include "window/command_table.h"
#include "window/main_window_state.h"

namespace {

bool Works(const Command& command) {
  return command.isLive == nullptr || command.isLive();
}

const SubMenu* FindSubMenu(UINT number) {
  const auto* const found = std::ranges::find(kSubMenus, number, &SubMenu::number);
  return found == std::end(kSubMenus) ? nullptr : found;
}

void AppendItems(HMENU popup, std::span<const UINT> items);

void AppendItem(HMENU popup, UINT id) {
  if (id == kSeparator) {
    AppendMenuA(popup, MF_SEPARATOR, 0, nullptr);
    return;
  }
  if (const SubMenu* const within = FindSubMenu(id)) {
    const HMENU menu = CreatePopupMenu();
    AppendItems(menu, within->items);
    AppendMenuA(popup, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), within->label);
    return;
  }
  const Command* command = FindCommand(id);
  assert(command != nullptr && command->label != nullptr);
  std::string text = command->label;
  if (const std::string key = command->KeyText(); !key.empty()) text += '\t' + key;
  AppendMenuA(popup, MF_STRING | MF_ENABLED, id, text.c_str());
}

void AppendItems(HMENU popup, std::span<const UINT> items) {
  for (const UINT id : items)
    AppendItem(popup, id);
}

// The recent files stand behind the items of the File menu.
void UpdateRecentFiles(HMENU popup) {
  const MainWindowState& state = MainState;
  if (state.MruFiles == 0) return;
  for (int i = 1; i <= kRecentFiles; ++i) {
    const UINT id = IDM_RECENT1 + static_cast<UINT>(i) - 1;
    DeleteMenu(popup, id, MF_BYCOMMAND);
    if (i > state.RecentFileCount) continue;
    AppendMenuA(popup, MF_STRING, id, RecentItemText(state, i).c_str());
  }
}

void UpdateItems(HMENU popup, std::span<const UINT> items) {
  for (const UINT id : items) {
    if (const SubMenu* const within = FindSubMenu(id)) UpdateItems(popup, within->items);
    const Command* command = FindCommand(id);
    if (command == nullptr) continue;
    EnableMenuItem(popup, id, MF_BYCOMMAND | (Works(*command) ? MF_ENABLED : MF_GRAYED));
    if (command->isTicked == nullptr) continue;
    CheckMenuItem(popup, id, MF_BYCOMMAND | (command->isTicked() ? MF_CHECKED : MF_UNCHECKED));
  }
}

// Which of the pull-downs stands at a position of the bar, from which the profile may have taken some; -1 for
// none of them.
int MenuAt(HMENU bar, int position) {
  char text[32] = {};
  GetMenuStringA(bar, static_cast<UINT>(position), text, sizeof text, MF_BYPOSITION);
  const auto same = [&text](const PullDown& pullDown) { return std::strcmp(pullDown.label, text) == 0; };
  const auto* const found = std::ranges::find_if(kMenuBar, same);
  return found == std::end(kMenuBar) ? -1 : static_cast<int>(found - std::begin(kMenuBar));
}

}  // namespace

std::string RecentItemText(const RecentFileList& recent, int number) {
  const char* const path = recent.RecentFiles[number - 1];
  const std::string name = BaseName(path);
  const auto sameName = [&name](const char* other) { return name == BaseName(other); };
  std::string shown = name;
  if (std::count_if(recent.RecentFiles, recent.RecentFiles + recent.RecentFileCount, sameName) > 1) {
    shown += " - " + std::string(path, static_cast<std::size_t>(BaseName(path) - path));
  }
  return "&" + std::to_string(number) + " " + LiteralLabel(ShortenInMiddle(shown, kRecentItemChars));
}

HMENU BuildMenuBar() {
  const HMENU bar = CreateMenu();
  if (bar == nullptr) return nullptr;
  for (const PullDown& pullDown : kMenuBar) {
    const HMENU popup = CreatePopupMenu();
    AppendItems(popup, pullDown.items);
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), pullDown.label);
  }
  return bar;
}

HACCEL BuildAccelerators() {
  std::vector<ACCEL> entries;
  for (const Command& command : kCommands) {
    for (const CommandKey& key : command.keys) {
      if (key.key != 0) entries.push_back({key.modifiers, key.key, static_cast<WORD>(command.id)});
    }
  }
  return CreateAcceleratorTableA(entries.data(), static_cast<int>(entries.size()));
}

std::string KeyTextOf(const CommandKey& key) {
  if (key.key == 0) return {};
  if ((key.modifiers & FVIRTKEY) == 0) return std::string("Ctrl+") + static_cast<char>(key.key + '@');
  const bool control = (key.modifiers & FCONTROL) != 0;
  std::string text = control ? "Ctrl+" : "";
  if ((key.modifiers & FALT) != 0) text += "Alt+";
  if ((key.modifiers & FSHIFT) != 0) text += control ? "Sh+" : "Shift+";
  if (key.key == VK_OEM_PLUS || key.key == VK_ADD) return text + "Plus";
  if (key.key == VK_OEM_MINUS || key.key == VK_SUBTRACT) return text + "Minus";
  if (key.key >= VK_F1) return text + 'F' + std::to_string(key.key - VK_F1 + 1);
  return text + (key.key == VK_INSERT ? std::string("Ins") : std::string(1, static_cast<char>(key.key)));
}

std::string Command::KeyText() const {
  return KeyTextOf(keys[0]);
}

void AppendRecentSeparator(HWND window) {
  const HMENU bar = GetMenu(window);
  for (int i = 0; i < GetMenuItemCount(bar); ++i) {
    if (MenuAt(bar, i) == kFileMenu) AppendMenuA(GetSubMenu(bar, i), MF_SEPARATOR, 0, nullptr);
  }
}

void UpdatePullDown(HWND window, int position) {
  const HMENU bar = GetMenu(window);
  const HMENU popup = GetSubMenu(bar, position);
  const int menu = MenuAt(bar, position);
  if (menu < 0) return;
  if (menu == kFileMenu) UpdateRecentFiles(popup);
  UpdateItems(popup, kMenuBar[menu].items);
}

HMENU BuildPopup(UINT submenu) {
  const HMENU popup = CreatePopupMenu();
  const SubMenu* const menu = FindSubMenu(submenu);
  AppendItems(popup, menu->items);
  UpdateItems(popup, menu->items);
  return popup;
}
