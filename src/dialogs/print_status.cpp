#include "dialogs/print_status.h"

#include "platform/dialog.h"
#include "resources/dialogs/abort_print_dialog.h"
#include "settings/label_text.h"

namespace ids = abort_print_dialog;

namespace {

// What a line of the dialog has room for.
constexpr std::size_t kLineCharacters = 52;

std::string LineOf(const std::string& text) {
  return LiteralLabel(ShortenInMiddle(text, kLineCharacters));
}

INT_PTR CALLBACK AbortDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      SetWindowLongPtrA(dialog, DWLP_USER, lParam);
      SetFocus(dialog);
      return TRUE;
    case WM_CLOSE:
      PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wParam) != IDCANCEL) return FALSE;
      reinterpret_cast<PrintCanceled>(GetWindowLongPtrA(dialog, DWLP_USER))();
      DestroyWindow(dialog);
      return TRUE;
    default:
      return FALSE;
  }
}

}  // namespace

HWND StartPrintStatus(HWND owner, const std::string& document, const std::string& printer,
                      PrintCanceled canceled) {
  const HWND dialog = StartDialog(ids::kTemplate, owner, AbortDlgProc, reinterpret_cast<LPARAM>(canceled));
  if (dialog == nullptr) return nullptr;
  SetDlgItemTextA(dialog, ids::kDocument, LineOf(document).c_str());
  SetDlgItemTextA(dialog, ids::kPrinter, LineOf(printer).c_str());
  return dialog;
}

void ShowPrintStatus(HWND dialog, const std::string& status) {
  SetDlgItemTextA(dialog, ids::kStatus, status.c_str());
}
