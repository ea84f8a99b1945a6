#include <algorithm>
#include <cassert>
#include <cmath>

#include "platform/qt/hooks.h"
#include "platform/qt/program_dialog.h"
#include "platform/qt/window.h"
#include "platform/testing.h"

namespace platform_qt {

Pixel BackgroundPixel(HWND window) {
  // A class background is a system color plus 1.
  const auto brush = reinterpret_cast<std::uintptr_t>(window->windowClass.background);
  return PixelOf(GetSysColor(brush != 0 ? static_cast<int>(brush) - 1 : COLOR_WINDOW));
}

bool PaintPending(HWND window) {
  // A minimized window was told the size 0 and would paint nothing; its update region waits.
  const bool minimized = window->toldState == SIZE_MINIMIZED;
  return window->shown && !minimized && !window->destroyed && !window->update.isEmpty();
}

void HandOver(HWND window) {
  if (window->unshown.isEmpty()) {
    return;
  }
  const double ratio = window->widget->devicePixelRatioF();
  const QRect bounds = window->unshown.boundingRect();
  const QRectF logical(QPointF(bounds.topLeft()) / ratio, QSizeF(bounds.size()) / ratio);
  window->unshown = QRegion();
  window->widget->update(logical.toAlignedRect());
}

namespace {

void Invalidate(HWND window, const QRect& rect, bool erase) {
  const QRect area = rect & window->surface.Bounds();
  if (!area.isEmpty()) {
    window->update += area;
    window->eraseWanted = window->eraseWanted || erase;
  }
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

HDC BeginPaint(HWND window, PAINTSTRUCT* paint) {
  *paint = {};
  if (!IsWindowAlive(window)) {
    return nullptr;
  }
  const QRegion region = window->update;
  const bool erase = window->eraseWanted;
  window->update = QRegion();
  window->eraseWanted = false;
  paint->hdc = OpenDc(window, region);
  if (!region.isEmpty()) {
    paint->rcPaint = RectOf(region.boundingRect());
  }
  if (erase) {
    paint->fErase = SendMessageA(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(paint->hdc), 0) == 0;
  }
  return paint->hdc;
}

BOOL EndPaint(HWND, const PAINTSTRUCT* paint) {
  if (paint->hdc != nullptr) {
    CloseDc(paint->hdc);
  }
  return TRUE;
}

HDC GetDC(HWND window) {
  return IsWindowAlive(window) ? OpenDc(window, window->surface.Bounds()) : nullptr;
}

int ReleaseDC(HWND, HDC dc) {
  if (dc == nullptr) {
    return 0;
  }
  CloseDc(dc);
  return 1;
}

BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase) {
  if (!IsWindowAlive(window)) {
    return FALSE;
  }
  if (window->dialog != nullptr) {
    // A dialog as such has no picture; its controls have.
    assert(rect == nullptr && "a dialog is drawn anew as a whole");
    for (const Control& control : window->dialog->Controls()) {
      InvalidateRect(control.handle, nullptr, erase);
    }
    return TRUE;
  }
  Invalidate(window, rect != nullptr ? RectOf(*rect) : window->surface.Bounds(), erase != FALSE);
  return TRUE;
}

BOOL GetUpdateRect(HWND window, RECT* rect, BOOL erase) {
  assert(erase == FALSE && "the background is erased by BeginPaint");
  static_cast<void>(erase);
  const bool pending = IsWindowAlive(window) && !window->update.isEmpty();
  if (rect != nullptr) {
    *rect = pending ? RectOf(window->update.boundingRect()) : RECT{0, 0, 0, 0};
  }
  return pending ? TRUE : FALSE;
}

BOOL UpdateWindow(HWND window) {
  if (!IsWindowAlive(window)) {
    return FALSE;
  }
  if (PaintPending(window)) {
    SendMessageA(window, WM_PAINT, 0, 0);
  }
  return TRUE;
}

BOOL ScrollWindow(HWND window, int dx, int dy, const RECT* scroll, const RECT* clip) {
  if (!IsWindowAlive(window)) {
    return FALSE;
  }
  const QRect bounds = window->surface.Bounds();
  const QRect from = scroll != nullptr ? RectOf(*scroll) & bounds : bounds;
  const QRect within = clip != nullptr ? RectOf(*clip) & bounds : bounds;
  const QRect target = from.translated(dx, dy) & within;
  if (hooks.drawing != nullptr) {
    hooks.drawing->push_back({platform_testing::DrawCall::Kind::scroll, dx, dy, RectOf(from)});
  }
  if (!target.isEmpty()) {
    window->surface.Move(target.translated(-dx, -dy), dx, dy);
  }
  // What was to be painted anew in the moved part is to be painted where it stands now.
  const QRegion moved = (window->update & from).translated(dx, dy) & within;
  window->update = (window->update - from) + moved + (QRegion(from & within) - target);
  window->unshown += target;
  HandOver(window);
  return TRUE;
}
