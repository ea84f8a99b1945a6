// What the dialog procedures of the program have in common: a procedure hands its messages on to two verbs of
// its unit, and deals itself only with what is peculiar to its dialog.
#pragma once

#include "platform/dialog.h"

struct DialogVerbs {
  // WM_INITDIALOG: fills the controls. TRUE leaves the focus to the first of them, FALSE when it was set.
  INT_PTR (*start)(HWND dialog, LPARAM param);
  // WM_COMMAND: what the user did to a control.
  void (*act)(HWND dialog, int control, UINT notification);
};

// The result of the dialog procedure. Closing the dialog's window posts a command for Cancel.
INT_PTR RouteDialog(const DialogVerbs& verbs, HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
