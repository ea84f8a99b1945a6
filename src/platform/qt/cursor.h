// The record behind HCURSOR and HICON.
#pragma once

#include <QCursor>
#include <QIcon>

#include "platform/win32.h"

struct HICON__ {
  QCursor cursor;  // of a cursor
  QIcon icon;      // of an icon
  bool stock = false;
};

namespace platform_qt {

// Shows the cursor over the client area; null is the arrow.
void ShowCursor(HWND window, HCURSOR cursor);

}  // namespace platform_qt
