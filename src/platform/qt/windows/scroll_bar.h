// A scroll bar whose range is a file: 64-bit range and position behind a toolkit's bar of `int`. What the
// user does with it goes to the input queue as WM_VSCROLL or WM_HSCROLL; the bar itself moves only when the
// program sets it, except that a dragged thumb stays where the user left it until then. Of its window it
// knows the handle alone.
#pragma once

#include <QScrollBar>
#include <cstdint>
#include <functional>

#include "platform/win32.h"

namespace platform_qt {

class ScrollBar : public QScrollBar {
 public:
  // `wheel` gets what the user turns over the bar.
  ScrollBar(QWidget* parent, HWND owner, int which, std::function<void(QWheelEvent*)> wheel);
  void Disown() { owner_ = nullptr; }

  void Set(std::int64_t top, std::int64_t position, std::int64_t page);
  [[nodiscard]] std::int64_t Top() const { return top_; }
  [[nodiscard]] std::int64_t Position() const { return position_; }
  [[nodiscard]] std::int64_t Thumb() const;
  // Called when SB_ENDSCROLL has left the queue: from now on the program's settings move the thumb again.
  void DropIsOver();
  // The toolkit's value for a position.
  [[nodiscard]] int ValueOf(std::int64_t position) const;

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void TakeAction(int action);
  void Append(int code);
  void Apply();

  HWND owner_;
  int which_;
  std::function<void(QWheelEvent*)> wheel_;
  std::int64_t top_ = 0;
  std::int64_t position_ = 0;
  std::int64_t page_ = 0;
  int shownValue_ = 0;      // what Apply set last
  bool userMoved_ = false;  // the thumb stands where the user put it
  bool dropWaits_ = false;  // a finished drag that the program has not seen yet
  bool acted_ = false;      // something was sent since the button went down
};

}  // namespace platform_qt
