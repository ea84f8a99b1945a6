#include "dialogs/help.h"

#include "platform/win32.h"

void ShowHelp(int /*context*/) {
  MessageBeep(MB_ICONEXCLAMATION);
}
