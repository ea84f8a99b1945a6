#include "window/about.h"

#include "platform/dialog.h"
#include "resources/dialogs/about_dialog.h"
#include "window/main_window_state.h"

namespace {

constexpr const char* kVersion = "Version 1.4   [Aug  8 1995, 22:28:36]";

INT_PTR CALLBACK AboutDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM /*lParam*/) {
  switch (message) {
    case WM_INITDIALOG:
      SetDlgItemTextA(dialog, kAboutVersion, kVersion);
      SendDlgItemMessageA(dialog, kAboutIcon, STM_SETICON, reinterpret_cast<WPARAM>(MainState.AppIcon), 0);
      return TRUE;
    case WM_CLOSE:
      PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wParam) == IDOK) EndDialog(dialog, 1);
      if (LOWORD(wParam) == IDCANCEL) EndDialog(dialog, 0);
      return TRUE;
    default:
      return FALSE;
  }
}

}  // namespace

LRESULT AboutCommand(UINT /*id*/) {
  return RunDialog(kAboutDialog, MainState.MainWindow, AboutDlgProc, 0);
}
