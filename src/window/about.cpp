#include "window/about.h"

#include "resources/dialogs/about_dialog.h"
#include "window/dialog_routing.h"
#include "window/main_window_state.h"

namespace {

constexpr const char* kVersion = "Version 1.4   [Aug  8 1995, 22:28:36]";

INT_PTR StartDialog(HWND dialog, LPARAM /*param*/) {
  SetDlgItemTextA(dialog, about_dialog::kVersion, kVersion);
  SendDlgItemMessageA(dialog, about_dialog::kIcon, STM_SETICON, reinterpret_cast<WPARAM>(MainState.AppIcon),
                      0);
  return TRUE;
}

void Act(HWND dialog, int control, UINT /*notification*/) {
  if (control == IDOK) EndDialog(dialog, 1);
  if (control == IDCANCEL) EndDialog(dialog, 0);
}

INT_PTR CALLBACK AboutDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  return RouteDialog({StartDialog, Act}, dialog, message, wParam, lParam);
}

}  // namespace

LRESULT AboutCommand(UINT /*id*/) {
  return RunDialog(about_dialog::kTemplate, MainState.MainWindow, AboutDlgProc, 0);
}
