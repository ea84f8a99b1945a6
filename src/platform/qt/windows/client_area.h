// The widget that a top-level window is drawn on: it shows the window's picture, and turns keys, mouse and
// wheel into messages of the input queue. It knows its window by the common record alone.
#pragma once

#include <QWidget>

#include "platform/win32.h"

namespace platform_qt {

class ClientArea : public QWidget {
 public:
  ClientArea(QWidget* parent, HWND owner, bool doubleClicks);
  void Disown() { owner_ = nullptr; }
  // Wheel events of the scroll bars come here too.
  void TakeWheel(QWheelEvent* event);

 protected:
  bool focusNextPrevChild(bool) override { return false; }  // Tab is a key like any other
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void NoteSeen();
  void OpenPullDown(int letter);
  void AppendMouse(UINT message, const QMouseEvent* event);

  HWND owner_;
  bool doubleClicks_;
};

}  // namespace platform_qt
