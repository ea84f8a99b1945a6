#include "window/dialog_routing.h"

INT_PTR RouteDialog(const DialogVerbs& verbs, HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      return verbs.start(dialog, lParam);
    case WM_COMMAND:
      verbs.act(dialog, LOWORD(wParam), HIWORD(wParam));
      return TRUE;
    case WM_CLOSE:
      PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
      return TRUE;
    default:
      return FALSE;
  }
}
