// The controls that both Find dialogs have.
#pragma once

#include <string>
#include <vector>

#include "dialogs/fields.h"
#include "search/search_engine.h"

// Fills a combo box with the rows of a history, and chooses the first.
inline void FillHistory(HWND dialog, int id, const std::vector<std::string>& rows) {
  SendDlgItemMessageA(dialog, id, CB_LIMITTEXT, kFieldChars, 0);
  for (const std::string& row : rows)
    SendDlgItemMessageA(dialog, id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row.c_str()));
  const LONG_PTR first = rows.empty() ? -1 : 0;
  SendDlgItemMessageA(dialog, id, CB_SETCURSEL, static_cast<WPARAM>(first), 0);
}

// The row of the history that stands in the box; -1: the text was typed.
[[nodiscard]] inline std::int32_t ChosenRow(HWND dialog, int id) {
  return static_cast<std::int32_t>(SendDlgItemMessageA(dialog, id, CB_GETCURSEL, 0, 0));
}

[[nodiscard]] inline bool IsTicked(HWND dialog, int id) {
  return IsDlgButtonChecked(dialog, id) == BST_CHECKED;
}

[[nodiscard]] inline bool StartsFromTop(const SearchState& search) {
  return (search.SearchFlags & SEARCH_FROM_TOP) != 0;
}
