// The window procedure of the one main window: one flat switch that hands each message to the unit that
// owns it. Also the window's beginning and end: what WM_CREATE gets and WM_DESTROY gives back.
#pragma once

#include "platform/win32.h"

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
