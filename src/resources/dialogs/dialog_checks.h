// What must hold of every dialog template, checked when it is compiled.
#pragma once

#include "platform/dialog.h"

namespace dialog_checks {

constexpr char MnemonicOf(const char* text) {
  for (; text[0] != '\0'; ++text) {
    if (text[0] == '&' && text[1] != '&') return text[1] >= 'a' ? static_cast<char>(text[1] - 32) : text[1];
    if (text[0] == '&') ++text;
  }
  return '\0';
}

// Ids and mnemonics stand once, there is one default button, the first radio button begins a group, and each
// control lies within the dialog.
constexpr bool IsSound(const DialogTemplate& dialog) {
  int defaults = 0;
  bool group = false;
  for (std::size_t i = 0; i < dialog.controls.size(); ++i) {
    const ControlTemplate& control = dialog.controls[i];
    if (control.kind == ControlKind::defaultButton) ++defaults;
    if ((control.style & kGroupStart) != 0) group = true;
    if (control.kind == ControlKind::radio && !group) return false;
    if (control.x < 0 || control.x + control.width > dialog.width) return false;
    if (control.y < 0 ||
        (control.kind != ControlKind::dropDownList && control.y + control.height > dialog.height)) {
      return false;
    }
    for (std::size_t k = 0; k < i; ++k) {
      const ControlTemplate& other = dialog.controls[k];
      if (control.id == other.id && control.id != kNoId) return false;
      const char mnemonic = MnemonicOf(control.text);
      if (mnemonic != '\0' && mnemonic == MnemonicOf(other.text)) return false;
    }
  }
  return defaults == 1;
}

}  // namespace dialog_checks
