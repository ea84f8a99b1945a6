// Steps of a script for the next dialog: what a user does in it, and looks at the controls in between.
#pragma once

#include "platform/testing.h"

namespace dialog_steps {

using platform_testing::DialogStep;

inline constexpr int kEnter = 0x0D;

inline DialogStep Type(const std::string& text) {
  return [text](HWND dialog) { platform_testing::TypeText(dialog, text); };
}
inline DialogStep Press(int key) {
  return [key](HWND dialog) { platform_testing::PressDialogKey(dialog, key, 0); };
}
inline DialogStep Click(int id) {
  return [id](HWND dialog) { platform_testing::ClickControl(dialog, id); };
}
inline DialogStep Choose(int id, int row) {
  return [id, row](HWND dialog) { platform_testing::ChooseRow(dialog, id, row); };
}
inline DialogStep Look(int id, platform_testing::ControlState& state) {
  return [id, &state](HWND dialog) { state = platform_testing::StateOfControl(dialog, id); };
}

}  // namespace dialog_steps
