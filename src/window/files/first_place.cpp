#include "window/files/first_place.h"

#include <utility>

#include "places/place.h"
#include "platform/paths.h"
#include "resources/command_ids.h"
#include "search/set_search.h"
#include "window/go_to.h"
#include "window/main_window_state.h"
#include "window/view_loading.h"

namespace {

// Defines the search. False, and the user is told, when nothing can be found by it.
bool SetAskedKey(const std::string& key) {
  MainWindowState& state = MainState;
  const SearchWish wish{false, state.AskedPlace.empty(), false};
  FieldCheck check;
  if (state.KeyIsHex) {
    LoadHexHistory(state.ProfilePath, state.MruSearch, state);
    const HexKey hex = SetHexSearch(key, wish, state, state.Search);
    check = hex.length;
    if (check.accepted && !hex.IsGood()) check = {false, hex.error};
  } else {
    LoadTextHistory(state.ProfilePath, state.MruSearch, state);
    check = SetTextSearch(key, -1, wish, PresentOptions(), state, state.Search);
  }
  if (check.accepted) return true;
  MessageBeep(MB_ICONHAND);
  MessageBoxA(state.MainWindow, check.message.c_str(), kFieldCheckCaption, MB_ICONHAND);
  return false;
}

}  // namespace

std::string TakePlaceBehindName(const char* name) {
  const std::string whole = name;
  const std::size_t colon = whole.rfind(':');
  if (colon == std::string::npos || colon == 0 || !ParsePlace(whole.substr(colon + 1))) return whole;
  const std::string file = whole.substr(0, colon);
  if (FileExists(name) || !FileExists(file.c_str())) return whole;
  if (MainState.AskedPlace.empty()) MainState.AskedPlace = whole.substr(colon + 1);
  return file;
}

void ShowAskedPlace() {
  MainWindowState& state = MainState;
  if (!FileIsOpen()) return;
  const std::string key = std::exchange(state.AskedKey, {});
  const bool find = !key.empty() && SetAskedKey(key);
  if (const auto place = ParsePlace(std::exchange(state.AskedPlace, {})))
    GoTo(AnswerOf(*place, state.File.Flen));
  if (!find) return;
  if ((state.Search.SearchFlags & SEARCH_FROM_TOP) != 0) state.Search.SearchNext = 0;
  PostMessageA(state.MainWindow, WM_COMMAND, IDM_FIND_NEXT, 0);
}
