#include "dialogs/fields.h"

std::string FieldText(HWND dialog, int id) {
  std::string text(1024, '\0');
  for (;;) {
    const auto size = static_cast<int>(text.size());
    const UINT length = GetDlgItemTextA(dialog, id, text.data(), size);
    if (length + 1 < text.size()) {
      text.resize(length);
      return text;
    }
    text.resize(text.size() * 4);
  }
}

bool CheckField(HWND dialog, int id, const FieldCheck& check) {
  if (check.accepted) return true;
  if (!check.message.empty()) {
    MessageBeep(MB_ICONHAND);
    MessageBoxA(dialog, check.message.c_str(), kFieldCheckCaption, MB_ICONHAND);
    SetFocus(GetDlgItem(dialog, id));
  }
  MessageBeep(MB_ICONASTERISK);
  return false;
}
