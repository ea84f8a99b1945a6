#include "window/menu.h"

#include <array>
#include <cassert>
#include <cstring>
#include <string>

#include "resources/accelerators.h"
#include "resources/menu.h"
#include "window/command_table.h"
#include "window/main_window_state.h"

namespace {

void AppendItem(HMENU popup, UINT id) {
  if (id == kSeparator) {
    AppendMenuA(popup, MF_SEPARATOR, 0, nullptr);
    return;
  }
  const Command* command = FindCommand(id);
  assert(command != nullptr && command->label != nullptr);
  std::string text = command->label;
  if (command->keyText != nullptr) text += std::string("\t") + command->keyText;
  AppendMenuA(popup, MF_STRING | (command->handler == nullptr ? MF_GRAYED : MF_ENABLED), id, text.c_str());
}

void Enable(HMENU popup, UINT id, bool enabled) {
  const Command* command = FindCommand(id);
  const bool works = enabled && command != nullptr && command->handler != nullptr;
  EnableMenuItem(popup, id, MF_BYCOMMAND | (works ? MF_ENABLED : MF_GRAYED));
}

void Tick(HMENU popup, UINT id, bool ticked) {
  CheckMenuItem(popup, id, MF_BYCOMMAND | (ticked ? MF_CHECKED : MF_UNCHECKED));
}

void UpdateFileMenu(HMENU popup) {
  const MainWindowState& state = MainState;
  Tick(popup, IDM_IGNORE_DDE, state.DdeState != kDdeServing);
  if (state.MruFiles != 0) {
    for (int i = 1; i <= kRecentFiles; ++i) {
      const UINT id = IDM_RECENT1 + static_cast<UINT>(i) - 1;
      DeleteMenu(popup, id, MF_BYCOMMAND);
      if (i > state.RecentFileCount) continue;
      AppendMenuA(popup, MF_STRING, id, RecentItemText(i, state.RecentFiles[i - 1]).c_str());
    }
  }
  for (const UINT id : {IDM_CLOSE, IDM_PRINT, IDM_PRINT_PAGE})
    Enable(popup, id, FileIsOpen());
  Enable(popup, IDM_PRINT_TAGS, FileIsOpen() && state.Tags.count > 0);
}

void UpdateEditMenu(HMENU popup) {
  for (const UINT id : {IDM_COPY, IDM_SELECT_ALL, IDM_UNSELECT, IDM_FIND_TEXT, IDM_FIND_HEX, IDM_GOTO}) {
    Enable(popup, id, FileIsOpen());
  }
  Enable(popup, IDM_FIND_NEXT, FileIsOpen() && SearchIsDefined(MainState.Search));
}

void UpdateViewMenu(HMENU popup) {
  const MainWindowState& state = MainState;
  Tick(popup, IDM_TEXT, state.FormatIndex == kFormatText);
  Tick(popup, IDM_HEX, state.FormatIndex == kFormatHex);
  Tick(popup, IDM_RAW, state.FormatIndex == kFormatRaw);
  Tick(popup, IDM_WRAP, (state.FormatFlags & VO_WRAP) != 0);
  Tick(popup, IDM_ON_TOP, state.AlwaysOnTop != 0);
  Tick(popup, IDM_ZOOM_IN, state.ZoomLevel > 0);
  Tick(popup, IDM_ZOOM_OUT, state.ZoomLevel < 0);
}

void UpdateFormatMenu(HMENU popup) {
  for (const UINT id : {IDM_SAVE_OPTIONS, IDM_SAVE_SETUP}) {
    Enable(popup, id, MainState.ProfileReadOnly == 0);
  }
}

void UpdateMarkMenu(HMENU popup) {
  for (const UINT id : kMenuBar[kMarkMenu].items) {
    if (id != kSeparator) Enable(popup, id, FileIsOpen());
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

HMENU BuildMenuBar() {
  const HMENU bar = CreateMenu();
  if (bar == nullptr) return nullptr;
  for (const PullDown& pullDown : kMenuBar) {
    const HMENU popup = CreatePopupMenu();
    for (const UINT id : pullDown.items)
      AppendItem(popup, id);
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), pullDown.label);
  }
  return bar;
}

HACCEL BuildAccelerators() {
  std::array<ACCEL, std::size(kAccelerators)> entries;
  std::ranges::copy(kAccelerators, entries.begin());
  return CreateAcceleratorTableA(entries.data(), static_cast<int>(entries.size()));
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
  switch (MenuAt(bar, position)) {
    case kFileMenu:
      UpdateFileMenu(popup);
      break;
    case kEditMenu:
      UpdateEditMenu(popup);
      break;
    case kViewMenu:
      UpdateViewMenu(popup);
      break;
    case kFormatMenu:
      UpdateFormatMenu(popup);
      break;
    case kMarkMenu:
      UpdateMarkMenu(popup);
      break;
    default:
      break;
  }
}
