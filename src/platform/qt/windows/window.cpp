#include "platform/qt/windows/window.h"

#include <QPainter>
#include <algorithm>
#include <cassert>
#include <cmath>

namespace platform_qt {

namespace {

std::vector<HWND>& Windows() {
  static std::vector<HWND> windows;
  return windows;
}

}  // namespace

int WindowTarget::DotsPerInch() const {
  return static_cast<int>(std::lround(widget_->logicalDpiY() * widget_->devicePixelRatioF()));
}

void WindowTarget::Finish() {
  SurfaceTarget::Finish();
  HandOver();
}

void WindowTarget::HandOver() {
  const QRegion drawn = TakeDrawn();
  if (drawn.isEmpty()) {
    return;
  }
  const double ratio = widget_->devicePixelRatioF();
  const QRect bounds = drawn.boundingRect();
  const QRectF logical(QPointF(bounds.topLeft()) / ratio, QSizeF(bounds.size()) / ratio);
  widget_->update(logical.toAlignedRect());
}

bool IsWindowAlive(HWND window) {
  return std::find(Windows().begin(), Windows().end(), window) != Windows().end() && !window->destroyed;
}

const std::vector<HWND>& AllWindows() {
  return Windows();
}

LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (!IsWindowAlive(window)) {
    return 0;
  }
  ++window->running;
  const LRESULT result = window->procedure(window, message, wParam, lParam);
  if (--window->running == 0 && window->destroyed) {
    window->Reap();
  }
  return result;
}

void DestroyOwned(HWND owner) {
  const std::vector<HWND> windows(AllWindows());  // others may go with them
  for (HWND window : windows) {
    if (IsWindowAlive(window) && window->owner == owner) {
      window->Destroy();
    }
  }
}

QSize ClientSize(HWND window) {
  const double ratio = window->widget->devicePixelRatioF();
  return {static_cast<int>(std::lround(window->widget->width() * ratio)),
          static_cast<int>(std::lround(window->widget->height() * ratio))};
}

void Attach(HWND window, QWidget& widget) {
  window->widget = &widget;
  window->target.ShowOn(widget);
}

bool ResizePicture(HWND window) {
  const QSize size = ClientSize(window);
  const QRect before = window->target.Picture().Bounds();
  if (size == before.size()) {
    return false;
  }
  window->target.Resize(size.width(), size.height(), BackgroundPixel(window));
  const QRect bounds = window->target.Picture().Bounds();
  window->update &= bounds;
  const QRegion uncovered = QRegion(bounds) - before;
  if (!uncovered.isEmpty()) {
    window->update += uncovered;
    window->eraseWanted = true;
  }
  return true;
}

bool PaintPending(HWND window) {
  return window->MayPaint() && !window->destroyed && !window->update.isEmpty();
}

Pixel BackgroundPixel(HWND window) {
  const auto brush = reinterpret_cast<std::uintptr_t>(window->background);
  return PixelOf(GetSysColor(brush != 0 ? static_cast<int>(brush) - 1 : COLOR_WINDOW));
}

void ShowTitle(QWidget& widget, const std::string& title) {
  // The toolkit takes "[*]" for its own mark, and its doubling for the characters themselves.
  widget.setWindowTitle(QString::fromStdString(title).replace("[*]", "[*][*]"));
}

void ShowPicture(QWidget& widget, const Surface& surface, const QRegion& region) {
  QPainter painter(&widget);
  // With a fractional scale the widget's corner need not lie on a pixel; the picture must, to stay sharp.
  const double ratio = widget.devicePixelRatioF();
  const QPointF corner = painter.deviceTransform().map(QPointF(0, 0));
  painter.translate((QPointF(std::round(corner.x()), std::round(corner.y())) - corner) / ratio);
  painter.scale(1 / ratio, 1 / ratio);
  const QImage picture = surface.View();
  for (const QRect& part : region) {
    const QRectF scaled(QPointF(part.topLeft()) * ratio, QSizeF(part.size()) * ratio);
    const QRect pixels = scaled.toAlignedRect() & picture.rect();
    painter.drawImage(pixels.topLeft(), picture, pixels);
  }
}

}  // namespace platform_qt

using namespace platform_qt;

HWND__::HWND__(WNDPROC itsProcedure) : procedure(itsProcedure) {
  Windows().push_back(this);
}

HWND__::~HWND__() {
  assert(running == 0 && "a window goes when its procedures have returned");
  std::erase(Windows(), this);
}

bool HWND__::Enable(bool wanted) {
  QWidget& whole = Whole();
  const bool wasEnabled = whole.isEnabledTo(whole.parentWidget());
  whole.setEnabled(wanted);
  return wasEnabled;
}

void HWND__::Invalidate(const RECT* rect, bool erase) {
  const QRect bounds = target.Picture().Bounds();
  const QRect area = rect != nullptr ? RectOf(*rect) & bounds : bounds;
  if (!area.isEmpty()) {
    update += area;
    eraseWanted = eraseWanted || erase;
  }
}

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return CallProcedure(window, message, wParam, lParam);
}
