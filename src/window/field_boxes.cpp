#include "window/field_boxes.h"

std::string FieldText(HWND dialog, int id) {
  char text[512 * 4 + 1];
  const UINT length = GetDlgItemTextA(dialog, id, text, static_cast<int>(sizeof text));
  return {text, length};
}

bool CheckField(HWND dialog, int id, const FieldCheck& check) {
  if (check.accepted || check.message.empty()) return check.accepted;
  MessageBeep(MB_ICONHAND);
  MessageBoxA(dialog, check.message.c_str(), kFieldCheckCaption, MB_ICONHAND);
  SetFocus(GetDlgItem(dialog, id));
  return false;
}
