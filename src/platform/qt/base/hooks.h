// What the testing library may put into the layer. All of it is empty in the program itself, and then costs
// a comparison with null at the few places that look. It knows nothing of who looks on, and nothing of tests.
#pragma once

#include <cstddef>

#include "platform/win32.h"

class QDialog;

namespace platform_qt {

// One call that draws or moves pixels.
struct Drawn {
  enum class Kind { text, fillText, line, rectangle, invert, scroll } kind{};
  int x = 0, y = 0;  // text origin; start of a line; distance of a scroll
  RECT rect{};       // opaque rectangle, rectangle, inverted or scrolled rectangle; both ends of a line
  const char* text = nullptr;
  std::size_t length = 0;
  COLORREF color = 0;       // text, pen
  COLORREF background = 0;  // text background, brush
  int penStyle = PS_SOLID;
};

struct Hooks {
  void (*drawn)(const Drawn& call) = nullptr;
  // A dialog or box stands on the screen, and its loop is about to run.
  void (*dialogShown)(QDialog& dialog) = nullptr;
  void (*beeped)(UINT type) = nullptr;
  bool timersStandStill = false;
};

inline Hooks hooks;

}  // namespace platform_qt
