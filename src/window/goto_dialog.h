// The Go To dialog and its command. What the choices mean and where they lead is search/goto_logic.
#pragma once

#include "platform/win32.h"

// `lParam` of WM_INITDIALOG points at the GoToLimits. The dialog's result is 1 for OK, 0 for Cancel.
INT_PTR CALLBACK GoToDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// Asks where to go, and goes there. The dialog's result.
LRESULT GoToCommand(UINT id);
