// The two Find dialogs: they carry a key between their controls and the search state. What a key may be, and
// how it comes from what was typed, is search/search_key; the search itself runs in the command that follows.
#pragma once

#include "platform/win32.h"

// Run the dialog. 1: Find or Mark All was pressed, and key and flags of the search are new. 0: Cancel; then a
// text search is as it was, whereas the key of a hex search is live and follows the text from the moment on
// that its dialog opens. -1: the dialog could not be shown.
INT_PTR RunFindText(HWND owner);
INT_PTR RunFindHex(HWND owner);
