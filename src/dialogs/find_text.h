// The Find Text dialog: carries a text and its boxes between the controls and search/set_search. The search
// itself runs in the command that follows.
#pragma once

#include "platform/win32.h"
#include "search/set_search.h"

// Runs the dialog. 1: Find or Mark All was pressed, and `search` is new. 0: Cancel, and nothing has changed.
// -1: the dialog could not be shown. `code` is the option word that names the file's character code; the
// history must have been read.
INT_PTR RunFindText(HWND owner, ViewOptions code, RecentSearchLists& recent, SearchState& search);
