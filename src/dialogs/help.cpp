#include "dialogs/help.h"

#include "platform/win32.h"

namespace {

constexpr const char* kBook = "QUORL.HLP";

}  // namespace

void ShowHelp(int context) {
  if (!WinHelpA(nullptr, kBook, HELP_CONTEXT, static_cast<ULONG_PTR>(context))) {
    MessageBeep(MB_ICONEXCLAMATION);
  }
}

void ShowHelpOnHelp() {
  WinHelpA(nullptr, kBook, HELP_HELPONHELP, 0);
}

void CloseHelp() {
  WinHelpA(nullptr, kBook, HELP_QUIT, 0);
}
