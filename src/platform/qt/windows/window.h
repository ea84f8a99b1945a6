// The record behind HWND, as far as all windows are alike: a procedure, a widget, a picture with its update
// region. What a top-level window, a dialog or a control adds stands in a record of its own above this one,
// of which nothing is known here.
//
// The hard idea: Qt's handlers never call the window procedure. They append to the input queue, and a
// change of size is found out by comparing (SyncSize) when the message loop comes by; so the program never
// runs from inside the toolkit, except for WM_INITMENUPOPUP, which must run before a pull-down shows.
#pragma once

#include <QRegion>
#include <QWidget>
#include <string>
#include <vector>

#include "platform/qt/drawing/draw_target.h"
#include "platform/win32.h"

namespace platform_qt {

// The picture of a window. What is drawn on it is handed over to the widget that shows it.
class WindowTarget : public SurfaceTarget {
 public:
  void ShowOn(QWidget& widget) { widget_ = &widget; }
  [[nodiscard]] int DotsPerInch() const override;
  void Finish() override;
  // Tells the widget what was drawn since the last time.
  void HandOver();

 private:
  QWidget* widget_ = nullptr;
};

}  // namespace platform_qt

struct HWND__ {
  // Alive from now on, until it is destroyed or goes.
  explicit HWND__(WNDPROC itsProcedure);
  virtual ~HWND__();
  HWND__(const HWND__&) = delete;
  HWND__& operator=(const HWND__&) = delete;

  // What each kind of window does in its own way.
  [[nodiscard]] virtual std::string Text() const = 0;
  virtual void SetText(const char* text) = 0;
  // The widget that holds all that belongs to the window.
  [[nodiscard]] virtual QWidget& Whole() { return *widget; }
  virtual void TakeFocus() { widget->setFocus(); }
  // Lets the user reach the window, or keeps them from it. Whether they could reach it before.
  virtual bool Enable(bool wanted);
  // Adds to the update region; null is all of the window.
  virtual void Invalidate(const RECT* rect, bool erase);
  // Brings picture, update region and program up to date with the present size and state.
  virtual void SyncSize() {}
  [[nodiscard]] virtual bool MayPaint() const { return shown; }
  // An input message of the window has left the queue and comes next.
  virtual void NoteInput(const MSG& /*message*/) {}
  // Hands over an input that the window held: see kHeldInput in queue.h.
  virtual LRESULT DeliverHeld(LPARAM /*number*/) { return 0; }
  // False where the program may not do it.
  virtual bool Destroy() { return false; }
  // Called once the window is destroyed and none of its procedures runs any more.
  virtual void Reap() {}

  WNDPROC procedure;
  LONG_PTR userData = 0;        // of a dialog: DWLP_USER
  HBRUSH background = nullptr;  // a system color plus 1
  HWND owner = nullptr;         // with which it goes; null where that is settled otherwise
  QWidget* widget = nullptr;    // what shows the picture: the client area, the dialog, or the control
  platform_qt::WindowTarget target;
  QRegion update;
  bool eraseWanted = false;
  bool shown = false;
  bool destroyed = false;
  int running = 0;  // procedure calls under way
};

namespace platform_qt {

// Of any kind; those that are destroyed are not.
[[nodiscard]] bool IsWindowAlive(HWND window);
// The records of all windows, in the order in which they came.
[[nodiscard]] const std::vector<HWND>& AllWindows();

// Calls the window procedure; the record outlives the call. 0 when there is no such window.
LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Destroys the windows that go with `owner`.
void DestroyOwned(HWND owner);

// Size of the client area in device pixels, as it is now.
[[nodiscard]] QSize ClientSize(HWND window);
// Sets the widget that shows the picture.
void Attach(HWND window, QWidget& widget);
// Gives the picture the present size, and adds what was uncovered to the update region. False: it has it.
bool ResizePicture(HWND window);
// Whether a WM_PAINT is due.
[[nodiscard]] bool PaintPending(HWND window);

// The pixel that the window's background has.
[[nodiscard]] Pixel BackgroundPixel(HWND window);
// Gives a window of the toolkit its title, just as it is.
void ShowTitle(QWidget& widget, const std::string& title);
// Copies a picture of device pixels to the widget that shows it.
void ShowPicture(QWidget& widget, const Surface& picture, const QRegion& region);

}  // namespace platform_qt
