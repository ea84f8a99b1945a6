// What the testing library hooks into. All hooks are empty in the program itself, and then they cost a
// comparison with null at the places that call them.
#pragma once

#include <vector>

#include "platform/win32.h"

class QColorDialog;
class QFileDialog;
class QFontDialog;
class QMessageBox;

namespace platform_testing {
struct DrawCall;
}

namespace platform_qt {

struct Hooks {
  std::vector<platform_testing::DrawCall>* drawing = nullptr;
  // Called when the dialog stands on the screen and before its loop runs.
  void (*boxShown)(QMessageBox& box, const char* text, const char* caption, UINT style) = nullptr;
  void (*fileDialogShown)(QFileDialog& dialog, const OPENFILENAMEA& open) = nullptr;
  void (*fontDialogShown)(QFontDialog& dialog) = nullptr;
  void (*colorDialogShown)(QColorDialog& dialog) = nullptr;
  void (*programDialogShown)(HWND dialog) = nullptr;
  void (*beeped)(UINT type) = nullptr;
  bool timersStandStill = false;
};

inline Hooks hooks;

}  // namespace platform_qt
