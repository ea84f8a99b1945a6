// The Find Hex dialog: carries hex text and its box between the controls and search/set_search, and shows
// what the digits spell. The search itself runs in the command that follows.
#pragma once

#include "platform/win32.h"
#include "search/set_search.h"

// Runs the dialog. 1: Find or Mark All was pressed, and `search` is new. 0: Cancel; the key is live and
// follows the text from the moment on that the dialog opens, so it may be another one. -1: the dialog could
// not be shown. `code` is the option word that names the file's character code; the history must have been
// read.
INT_PTR RunFindHex(HWND owner, ViewOptions code, RecentSearchLists& recent, SearchState& search);
