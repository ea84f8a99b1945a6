// The record behind HCURSOR and HICON. It knows nothing of windows.
#pragma once

#include <QCursor>
#include <QIcon>

#include "platform/win32.h"

struct HICON__ {
  QCursor cursor;  // of a cursor
  QIcon icon;      // of an icon
  bool stock = false;
};

class QWidget;

namespace platform_qt {

// Shows the cursor over a widget; null is the arrow.
void ShowCursor(QWidget& widget, HCURSOR cursor);

}  // namespace platform_qt
