// A menu that stands by itself, at a place of the window or at the pointer. An operation of this layer's own.
#pragma once

#include "platform/win32.h"

// Shows `popup` and returns at once; what the user chooses is posted to the window as WM_COMMAND. `place`, in
// pixels of the client area, is the upper left corner; null: the pointer's place. The menu is the layer's
// from now on, and is destroyed when it has gone.
void ShowPopupMenu(HWND window, HMENU popup, const POINT* place);
