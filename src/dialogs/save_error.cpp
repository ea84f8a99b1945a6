#include "dialogs/save_error.h"

bool CheckSave(HWND dialog, const char* what, const char* caption, const std::string& profile,
               FileError error) {
  if (error == 0) return true;
  const std::string text =
      "Cannot save the " + std::string(what) + " in\n" + profile + "\n" + FileErrorText(error) + ".";
  MessageBeep(MB_ICONHAND);
  MessageBoxA(dialog, text.c_str(), caption, MB_ICONHAND);
  return false;
}
