// The update region of a window, and what paints it.
#include <cassert>

#include "platform/qt/base/hooks.h"
#include "platform/qt/drawing/device_context.h"
#include "platform/qt/windows/window.h"

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
  paint->hdc = OpenDc(window->target, region);
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
  return IsWindowAlive(window) ? OpenDc(window->target, window->target.Picture().Bounds()) : nullptr;
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
  window->Invalidate(rect, erase != FALSE);
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
  const QRect bounds = window->target.Picture().Bounds();
  const QRect from = scroll != nullptr ? RectOf(*scroll) & bounds : bounds;
  const QRect within = clip != nullptr ? RectOf(*clip) & bounds : bounds;
  const QRect target = from.translated(dx, dy) & within;
  if (hooks.drawn != nullptr) [[unlikely]] {
    hooks.drawn({Drawn::Kind::scroll, dx, dy, RectOf(from)});
  }
  if (!target.isEmpty()) {
    window->target.Move(target.translated(-dx, -dy), dx, dy);
  }
  // What was to be painted anew in the moved part is to be painted where it stands now.
  const QRegion moved = (window->update & from).translated(dx, dy) & within;
  window->update = (window->update - from) + moved + (QRegion(from & within) - target);
  window->target.HandOver();
  return TRUE;
}
