#include "platform/qt/cursor.h"

#include <QImage>
#include <QPixmap>
#include <cassert>

#include "platform/qt/window.h"

namespace platform_qt {

namespace {

HICON StockCursor(Qt::CursorShape shape) {
  static HICON__ arrow{QCursor(Qt::ArrowCursor), QIcon(), true};
  static HICON__ wait{QCursor(Qt::WaitCursor), QIcon(), true};
  return shape == Qt::WaitCursor ? &wait : &arrow;
}

HCURSOR currentCursor = nullptr;

}  // namespace

void ShowCursor(HWND window, HCURSOR cursor) {
  const QCursor wanted = cursor != nullptr ? cursor->cursor : QCursor(Qt::ArrowCursor);
  if (window->client->cursor().shape() != wanted.shape()) {
    window->client->setCursor(wanted);
  }
}

}  // namespace platform_qt

using namespace platform_qt;

HCURSOR LoadCursorA(HINSTANCE, LPCSTR name) {
  assert(name == IDC_ARROW || name == IDC_WAIT);
  return StockCursor(name == IDC_WAIT ? Qt::WaitCursor : Qt::ArrowCursor);
}

HCURSOR SetCursor(HCURSOR cursor) {
  const HCURSOR former = currentCursor != nullptr ? currentCursor : StockCursor(Qt::ArrowCursor);
  currentCursor = cursor;
  for (HWND window : AllWindows()) {
    ShowCursor(window, cursor);
  }
  return former;
}

HICON CreateIcon(HINSTANCE, int width, int height, BYTE planes, BYTE bitsPixel, const BYTE*,
                 const BYTE* xorBits) {
  assert(planes == 1 && bitsPixel == 32);
  static_cast<void>(planes);
  static_cast<void>(bitsPixel);
  const QImage view(xorBits, width, height, qsizetype{4} * width, QImage::Format_ARGB32);
  return new HICON__{QCursor(), QIcon(QPixmap::fromImage(view.copy())), false};
}

BOOL DestroyIcon(HICON icon) {
  if (icon != nullptr && !icon->stock) {
    delete icon;
  }
  return TRUE;
}
