#include <algorithm>
#include <cstring>
#include <string>

#include "settings/profile_values.h"
#include "window/main_window_state.h"
#include "window/menu.h"

namespace {

constexpr std::size_t kLongestValue = 31;
constexpr int kCaptionBytes = 32;

char UpperCase(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

// The access letter of an item, in upper case; NUL for an item without one.
char HotLetter(HMENU popup, int position) {
  char caption[kCaptionBytes] = {};
  GetMenuStringA(popup, static_cast<UINT>(position), caption, sizeof caption, MF_BYPOSITION);
  const char* const mark = std::strchr(caption, '&');
  return mark != nullptr ? UpperCase(mark[1]) : '\0';
}

void DeleteItem(HMENU popup, int position) {
  DeleteMenu(popup, static_cast<UINT>(position), MF_BYPOSITION);
}

void DeleteLettered(HMENU popup, const std::string& letters) {
  for (int i = GetMenuItemCount(popup) - 1; i >= 0; --i) {
    const char hot = HotLetter(popup, i);
    const auto names = [hot](char letter) { return UpperCase(letter) == hot; };
    if (hot != '\0' && std::ranges::any_of(letters, names)) DeleteItem(popup, i);
  }
}

// No separator stands at an end of the pull-down or behind another.
void TidySeparators(HMENU popup) {
  bool needless = true;
  for (int i = GetMenuItemCount(popup) - 1; i >= 0; --i) {
    const bool separator = GetMenuItemID(popup, i) == 0;
    if (separator && (needless || i == 0)) DeleteItem(popup, i);
    needless = separator;
  }
  if (GetMenuItemCount(popup) > 0 && GetMenuItemID(popup, 0) == 0) DeleteItem(popup, 0);
}

}  // namespace

int TrimMenus(HWND window) {
  const HMENU bar = GetMenu(window);
  if (bar == nullptr) return 0;
  for (int i = GetMenuItemCount(bar) - 1; i >= 0; --i) {
    const std::string key = "DeleteMenu" + std::to_string(i + 1);
    const std::string value =
        ReadProfileText(MainState.ProfilePath, "Quorl Setup", key.c_str(), "", kLongestValue);
    if (value.empty()) continue;
    if (value[0] == '*') {
      DeleteItem(bar, i);
      continue;
    }
    const HMENU popup = GetSubMenu(bar, i);
    if (popup == nullptr) return 0;
    DeleteLettered(popup, value);
    TidySeparators(popup);
  }
  DrawMenuBar(window);
  return 1;
}
