#include "window/find_dialogs.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "resources/dialogs/find_hex_dialog.h"
#include "resources/dialogs/find_text_dialog.h"
#include "search/search_key.h"
#include "window/dialog_routing.h"
#include "window/field_boxes.h"
#include "window/main_window_state.h"

namespace {

constexpr const char* kHistorySection = "MRU Search";

// A list is read when its dialog opens for the first time.
void LoadHistory(const char* stem, char (&list)[kRecentStrings][kRecentStringBytes], std::int32_t& count) {
  const MainWindowState& state = MainState;
  if (count >= 0) return;
  count = state.MruSearch == 0 ? 0
                               : LoadRecentStrings(state.ProfilePath, kHistorySection, stem, list[0],
                                                   kRecentStrings, kRecentStringBytes);
}

void AddRow(HWND dialog, int id, const std::string& text) {
  SendDlgItemMessageA(dialog, id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

// The first of the rows is what the dialog starts with.
void ChooseFirstRow(HWND dialog, int id, std::int32_t count) {
  const int row = count > 0 ? 0 : -1;
  SendDlgItemMessageA(dialog, id, CB_SETCURSEL, static_cast<WPARAM>(static_cast<LONG_PTR>(row)), 0);
}

std::int32_t ChosenRow(HWND dialog, int id) {
  return static_cast<std::int32_t>(SendDlgItemMessageA(dialog, id, CB_GETCURSEL, 0, 0));
}

void Tick(HWND dialog, int id, std::uint16_t flag) {
  const bool on = (MainState.Search.SearchFlags & flag) != 0;
  CheckDlgButton(dialog, id, on ? BST_CHECKED : BST_UNCHECKED);
}

std::uint16_t FlagOf(HWND dialog, int id, std::uint16_t flag) {
  return IsDlgButtonChecked(dialog, id) == BST_CHECKED ? flag : std::uint16_t{0};
}

// Ends a dialog by the button that asked for the search.
void EndWithSearch(HWND dialog, std::uint16_t flags, bool markAll) {
  if (markAll) flags |= SEARCH_MARK_ALL;
  MainState.Search.SearchFlags = flags;
  EndDialog(dialog, 1);
}

// --- Find Text -------------------------------------------------------------------------------------------

INT_PTR StartFindText(HWND dialog, LPARAM /*param*/) {
  MainWindowState& state = MainState;
  constexpr int id = find_text_dialog::kKey;
  LoadHistory("Text", state.RecentTexts, state.RecentTextCount);
  SendDlgItemMessageA(dialog, id, CB_LIMITTEXT, kSearchChars, 0);
  for (int row = 0; row < state.RecentTextCount; ++row) {
    const char* entry = state.RecentTexts[row];
    const auto length = static_cast<std::int32_t>(std::strlen(entry));
    AddRow(dialog, id, KeyDisplayText(entry, length, state.FormatFlags));
  }
  ChooseFirstRow(dialog, id, state.RecentTextCount);
  Tick(dialog, find_text_dialog::kCaseSensitive, SEARCH_CASE);
  Tick(dialog, find_text_dialog::kFromTop, SEARCH_FROM_TOP);
  SetFocus(GetDlgItem(dialog, id));
  return FALSE;
}

// A chosen entry stands for its bytes, whatever they look like; only typed text is converted.
void TakeTextKey(const std::string& text, std::int32_t row) {
  MainWindowState& state = MainState;
  char key[kSearchKeyBytes] = {};
  if (row < 0) std::snprintf(key, sizeof key, "%s", TextKeyOf(text, state.FormatFlags).c_str());
  state.Search.SearchKeyLen =
      TouchSearchHistory(state.RecentTexts, state.RecentTextCount, state.RecentTextsTouched, row, key);
  std::memcpy(state.Search.SearchKey, key, sizeof key);
}

void FinishFindText(HWND dialog, bool markAll) {
  constexpr int id = find_text_dialog::kKey;
  const std::string text = FieldText(dialog, id);
  const std::int32_t row = ChosenRow(dialog, id);
  const bool fromHistory = row >= 0 && !text.empty();
  if (!fromHistory && !CheckField(dialog, id, CheckTextKey(text))) {
    MessageBeep(MB_ICONASTERISK);
    return;
  }
  TakeTextKey(text, row);
  const int flags = SEARCH_TEXT | FlagOf(dialog, find_text_dialog::kCaseSensitive, SEARCH_CASE) |
                    FlagOf(dialog, find_text_dialog::kFromTop, SEARCH_FROM_TOP);
  EndWithSearch(dialog, static_cast<std::uint16_t>(flags), markAll);
}

void ActInFindText(HWND dialog, int control, UINT /*notification*/) {
  switch (control) {
    case IDOK:
    case find_text_dialog::kMarkAll:
      FinishFindText(dialog, control != IDOK);
      break;
    case IDCANCEL:
      EndDialog(dialog, 0);
      break;
    default:
      break;
  }
}

// --- Find Hex --------------------------------------------------------------------------------------------

void ShowKey(HWND dialog) {
  const SearchState& search = MainState.Search;
  const std::string text = KeyDisplayText(search.SearchKey, search.SearchKeyLen, MainState.FormatFlags);
  SetDlgItemTextA(dialog, find_hex_dialog::kText, text.c_str());
}

void TakeHexKey(const HexKey& key) {
  SearchState& search = MainState.Search;
  std::copy(std::begin(key.bytes), std::end(key.bytes), search.SearchKey);
  search.SearchKeyLen = key.count;
}

INT_PTR StartFindHex(HWND dialog, LPARAM /*param*/) {
  MainWindowState& state = MainState;
  constexpr int id = find_hex_dialog::kKey;
  LoadHistory("Hex", state.RecentHex, state.RecentHexCount);
  SendDlgItemMessageA(dialog, id, CB_LIMITTEXT, kSearchChars, 0);
  for (int row = 0; row < state.RecentHexCount; ++row)
    AddRow(dialog, id, state.RecentHex[row]);
  ChooseFirstRow(dialog, id, state.RecentHexCount);
  TakeHexKey(ReadHexKey(state.RecentHex[0], 0));
  ShowKey(dialog);
  Tick(dialog, find_hex_dialog::kFromTop, SEARCH_FROM_TOP);
  SetDlgItemTextA(dialog, find_hex_dialog::kError, " ");
  SetFocus(GetDlgItem(dialog, id));
  return FALSE;
}

std::string HexText(HWND dialog) {
  const std::int32_t row = ChosenRow(dialog, find_hex_dialog::kKey);
  return row >= 0 ? MainState.RecentHex[row] : FieldText(dialog, find_hex_dialog::kKey);
}

// Makes the text of `least` characters or more the key, or shows what is wrong with it; the key stays the
// last good one then.
bool CheckHexKey(HWND dialog, std::int32_t least) {
  constexpr int id = find_hex_dialog::kKey;
  const HexKey key = ReadHexKey(HexText(dialog), least);
  SetDlgItemTextA(dialog, find_hex_dialog::kError, key.error.c_str());
  if (key.badAt >= 0) {
    const auto at = static_cast<UINT>(key.badAt);
    SetFocus(GetDlgItem(dialog, id));  // it may be on the button that was pressed
    SendDlgItemMessageA(dialog, id, CB_SETEDITSEL, 0, MAKELPARAM(at, at + 1));
  }
  if (!CheckField(dialog, id, key.length) || !key.IsGood()) {
    MessageBeep(MB_ICONASTERISK);
    return false;
  }
  TakeHexKey(key);
  ShowKey(dialog);
  return true;
}

void FinishFindHex(HWND dialog, bool markAll) {
  MainWindowState& state = MainState;
  if (!CheckHexKey(dialog, 1)) return;
  char text[kRecentStringBytes] = {};
  std::snprintf(text, sizeof text, "%s", HexText(dialog).c_str());
  const std::int32_t row = ChosenRow(dialog, find_hex_dialog::kKey);
  TouchSearchHistory(state.RecentHex, state.RecentHexCount, state.RecentHexTouched, row, text);
  const int flags = SEARCH_TEXT | SEARCH_CASE | FlagOf(dialog, find_hex_dialog::kFromTop, SEARCH_FROM_TOP);
  EndWithSearch(dialog, static_cast<std::uint16_t>(flags), markAll);
}

void ActInFindHex(HWND dialog, int control, UINT notification) {
  switch (control) {
    case find_hex_dialog::kKey:
      // The arrow keys choose without opening the list.
      if (notification == CBN_EDITCHANGE || notification == CBN_CLOSEUP || notification == CBN_SELCHANGE) {
        CheckHexKey(dialog, 0);
      }
      break;
    case IDOK:
    case find_hex_dialog::kMarkAll:
      FinishFindHex(dialog, control != IDOK);
      break;
    case IDCANCEL:
      EndDialog(dialog, 0);
      break;
    default:
      break;
  }
}

INT_PTR CALLBACK FindTextDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  return RouteDialog({StartFindText, ActInFindText}, dialog, message, wParam, lParam);
}

INT_PTR CALLBACK FindHexDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  return RouteDialog({StartFindHex, ActInFindHex}, dialog, message, wParam, lParam);
}

}  // namespace

INT_PTR RunFindText(HWND owner) {
  return RunDialog(find_text_dialog::kTemplate, owner, FindTextDlgProc, 0);
}

INT_PTR RunFindHex(HWND owner) {
  return RunDialog(find_hex_dialog::kTemplate, owner, FindHexDlgProc, 0);
}
