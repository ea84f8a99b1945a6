#include "platform/qt/windows/client_area.h"

#include <QMenuBar>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "platform/qt/windows/keys.h"
#include "platform/qt/windows/queue.h"
#include "platform/qt/windows/window.h"

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

ClientArea::ClientArea(QWidget* parent, HWND owner, bool doubleClicks)
    : QWidget(parent), owner_(owner), doubleClicks_(doubleClicks) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_NoSystemBackground);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
}

void ClientArea::paintEvent(QPaintEvent* event) {
  if (owner_ != nullptr) {
    ShowPicture(*this, owner_->target.Picture(), event->region());
  }
}

// Who sends keys and clicks to a window sees it: where no window manager acts on the wish to be minimized,
// the window is not.
void ClientArea::NoteSeen() {
  if (window()->isMinimized()) {
    window()->setWindowState(window()->windowState() & ~Qt::WindowMinimized);
  }
}

// In a layout without Latin letters the toolkit finds no access key: the pull-down goes by the key's place.
void ClientArea::OpenPullDown(int letter) {
  auto* const bar = window()->findChild<QMenuBar*>();
  if (bar == nullptr) {
    return;
  }
  for (QAction* const action : bar->actions()) {
    const QString text = action->text();
    const qsizetype mark = text.indexOf(u'&');
    if (mark >= 0 && mark + 1 < text.size() && text.at(mark + 1).toUpper() == QChar(letter)) {
      bar->setActiveAction(action);
    }
  }
}

void ClientArea::keyPressEvent(QKeyEvent* event) {
  NoteSeen();
  const int key = VirtualKeyOf(*event);
  const int modifiers = ModifiersOf(event->modifiers());
  // Alt without Ctrl belongs to the menu bar.
  const bool forMenu = (modifiers & (kAltDown | kControlDown)) == kAltDown;
  if (forMenu && event->key() > 0xFF && key >= 'A' && key <= 'Z') {
    OpenPullDown(key);
    return;
  }
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
  if (event->button() == Qt::LeftButton && doubleClicks_) {
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

}  // namespace platform_qt
