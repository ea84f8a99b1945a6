// A button that the program draws: it shows the picture of its window, and asks for it by WM_DRAWITEM.
#pragma once

#include <QAbstractButton>

#include "platform/qt/windows/window.h"

namespace platform_qt {

QAbstractButton* MakeOwnerDrawn(QWidget* parent, HWND control);
// Has `dialog` draw the control, which begins with `font`.
void DrawItem(HWND control, int id, HWND dialog, HFONT font);

}  // namespace platform_qt
