#include <QCloseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/qt/input.h"
#include "platform/qt/queue.h"
#include "platform/qt/window.h"

namespace platform_qt {

namespace {

// A message carries coordinates as signed 16-bit numbers.
UINT PackedCoordinate(double logical, double ratio) {
  const double pixel = std::clamp(std::floor(logical * ratio), -32768.0, 32767.0);
  return static_cast<UINT>(static_cast<WORD>(static_cast<std::int16_t>(pixel)));
}

LPARAM PackedPoint(const QPointF& point, double ratio) {
  return MAKELPARAM(PackedCoordinate(point.x(), ratio), PackedCoordinate(point.y(), ratio));
}

}  // namespace

ClientArea::ClientArea(QWidget* parent, HWND owner) : QWidget(parent), owner_(owner) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_NoSystemBackground);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
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

void ClientArea::paintEvent(QPaintEvent* event) {
  if (owner_ != nullptr) {
    ShowPicture(*this, owner_->surface, event->region());
  }
}

// Who sends keys and clicks to a window sees it: where no window manager acts on the wish to be minimized,
// the window is not.
void ClientArea::NoteSeen() {
  if (window()->isMinimized()) {
    window()->setWindowState(window()->windowState() & ~Qt::WindowMinimized);
  }
}

void ClientArea::keyPressEvent(QKeyEvent* event) {
  NoteSeen();
  const int key = VirtualKeyOf(*event);
  const int modifiers = ModifiersOf(event->modifiers());
  // Alt without Ctrl belongs to the menu bar.
  const bool forMenu = (modifiers & (kAltDown | kControlDown)) == kAltDown;
  if (owner_ == nullptr || key == 0 || forMenu || IsAltGrText(*event)) {
    event->ignore();
    return;
  }
  constexpr LPARAM kWasDown = 1 << 30;
  AppendInput(owner_, WM_KEYDOWN, static_cast<WPARAM>(key), 1 | (event->isAutoRepeat() ? kWasDown : 0),
              modifiers);
}

void ClientArea::AppendMouse(UINT message, const QMouseEvent* event) {
  if (owner_ != nullptr) {
    AppendInput(owner_, message, MouseKeysOf(event->modifiers(), event->buttons()),
                PackedPoint(event->position(), devicePixelRatioF()), ModifiersOf(event->modifiers()));
  }
}

void ClientArea::mousePressEvent(QMouseEvent* event) {
  NoteSeen();
  if (event->button() == Qt::LeftButton) {
    AppendMouse(WM_LBUTTONDOWN, event);
  } else if (event->button() == Qt::RightButton) {
    AppendMouse(WM_RBUTTONDOWN, event);
  }
}

void ClientArea::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    AppendMouse(WM_LBUTTONUP, event);
  }
}

void ClientArea::mouseDoubleClickEvent(QMouseEvent* event) {
  const bool asked = owner_ != nullptr && (owner_->windowClass.style & CS_DBLCLKS) != 0;
  if (event->button() == Qt::LeftButton && asked) {
    AppendMouse(WM_LBUTTONDBLCLK, event);
  } else {
    mousePressEvent(event);
  }
}

void ClientArea::mouseMoveEvent(QMouseEvent* event) {
  AppendMouse(WM_MOUSEMOVE, event);
}

void ClientArea::wheelEvent(QWheelEvent* event) {
  TakeWheel(event);
}

void ClientArea::TakeWheel(QWheelEvent* event) {
  event->accept();
  if (owner_ == nullptr) {
    return;
  }
  // The toolkit turns a wheel sideways while Alt is down; the program knows no such rule.
  QPoint turn = event->angleDelta();
  if (event->modifiers().testFlag(Qt::AltModifier) && turn.y() == 0) {
    turn = turn.transposed();
  }
  const UINT keys = MouseKeysOf(event->modifiers(), event->buttons());
  const LPARAM point = PackedPoint(event->globalPosition(), devicePixelRatioF());
  const int modifiers = ModifiersOf(event->modifiers());
  const auto append = [&](UINT message, int delta) {
    const int limited = std::clamp(delta, -32768, 32767);
    AppendInput(owner_, message, MAKEWPARAM(keys, static_cast<WORD>(limited)), point, modifiers);
  };
  if (turn.y() != 0) {
    append(WM_MOUSEWHEEL, turn.y());
  }
  if (turn.x() != 0) {
    append(WM_MOUSEHWHEEL, -turn.x());  // to the right is positive here, and negative there
  }
}

void Frame::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (owner_ != nullptr) {
    PostMessageA(owner_, WM_CLOSE, 0, 0);
  }
}

}  // namespace platform_qt
