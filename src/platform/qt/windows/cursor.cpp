#include "platform/qt/windows/cursor.h"

#include <QImage>
#include <QPixmap>
#include <QWidget>
#include <cassert>

namespace platform_qt {

namespace {

HICON StockCursor(Qt::CursorShape shape) {
  static HICON__ arrow{QCursor(Qt::ArrowCursor), QIcon(), true};
  static HICON__ wait{QCursor(Qt::WaitCursor), QIcon(), true};
  return shape == Qt::WaitCursor ? &wait : &arrow;
}

}  // namespace

void ShowCursor(QWidget& widget, HCURSOR cursor) {
  const QCursor wanted = cursor != nullptr ? cursor->cursor : QCursor(Qt::ArrowCursor);
  if (widget.cursor().shape() != wanted.shape()) {
    widget.setCursor(wanted);
  }
}

}  // namespace platform_qt

using namespace platform_qt;

HCURSOR LoadCursorA(HINSTANCE, LPCSTR name) {
  assert(name == IDC_ARROW || name == IDC_WAIT);
  return StockCursor(name == IDC_WAIT ? Qt::WaitCursor : Qt::ArrowCursor);
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
