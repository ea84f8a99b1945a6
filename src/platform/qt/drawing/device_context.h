// The record behind HDC: a draw target, the part of it that may be drawn on, and what is selected for
// drawing. It lives from the call that opens it to the one that closes it.
#pragma once

#include <QRegion>

#include "platform/qt/drawing/draw_target.h"
#include "platform/qt/drawing/gdi_objects.h"
#include "platform/win32.h"

struct HDC__ {
  platform_qt::DrawTarget* target = nullptr;
  QRegion clip;  // within the target
  HFONT font = nullptr;
  HPEN pen = nullptr;
  HBRUSH brush = nullptr;
  COLORREF textColor = RGB(0, 0, 0);
  COLORREF background = RGB(255, 255, 255);
  POINT position{0, 0};
};

namespace platform_qt {

// A device context with the objects that a new one holds, and its end. The target must outlive it.
HDC OpenDc(DrawTarget& target, const QRegion& clip);
void CloseDc(HDC dc);

// Fills the part of `rect` that the device context may draw on.
void FillThrough(HDC dc, const QRect& rect, Pixel color);

}  // namespace platform_qt
