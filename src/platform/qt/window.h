// A top-level window: the frame with menu bar, client area and scroll bars, its picture, its update region,
// and the record behind HWND. It knows nothing of what is drawn.
//
// The hard idea: Qt's handlers never call the window procedure. They append to the input queue, and a
// change of size is found out by comparing (SyncSize) when the message loop comes by; so the program never
// runs from inside the toolkit, except for WM_INITMENUPOPUP, which must run before a pull-down shows.
#pragma once

#include <QGridLayout>
#include <QMenuBar>
#include <QWidget>
#include <string>

#include "platform/qt/gdi.h"
#include "platform/qt/scroll_bar.h"
#include "platform/qt/surface.h"
#include "platform/win32.h"

namespace platform_qt {

class ProgramDialog;
struct Control;

class ClientArea : public QWidget {
 public:
  ClientArea(QWidget* parent, HWND owner);
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
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void NoteSeen();
  void AppendMouse(UINT message, const QMouseEvent* event);

  HWND owner_;
};

class Frame : public QWidget {
 public:
  explicit Frame(HWND owner) : owner_(owner) {}
  void Disown() { owner_ = nullptr; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  HWND owner_;
};

struct WindowClass {
  std::string name;
  UINT style = 0;
  WNDPROC procedure = nullptr;
  HICON icon = nullptr;
  HCURSOR cursor = nullptr;
  HBRUSH background = nullptr;
};

}  // namespace platform_qt

// A top-level window, a dialog, or a control of a dialog.
struct HWND__ {
  platform_qt::WindowClass windowClass;
  QWidget* widget = nullptr;                     // the client area, the dialog, or the control
  platform_qt::ProgramDialog* dialog = nullptr;  // of a dialog
  platform_qt::Control* control = nullptr;       // of a control
  LONG_PTR userData = 0;                         // of a dialog: DWLP_USER

  // Of a top-level window alone.
  platform_qt::Frame* frame = nullptr;
  platform_qt::ClientArea* client = nullptr;
  QMenuBar* menuBar = nullptr;
  platform_qt::ScrollBar* bars[2] = {};  // by SB_HORZ, SB_VERT
  HMENU menu = nullptr;
  std::string caption;

  platform_qt::Surface surface;
  QRegion update;
  bool eraseWanted = false;
  QRegion unshown;  // drawn since the last hand-over to the toolkit

  HCURSOR classCursor = nullptr;
  // What the last WM_SIZE said.
  bool sizeTold = false;
  WPARAM toldState = SIZE_RESTORED;
  int barChanges = 0;  // since the last input: see SetBarShown

  bool shown = false;
  bool destroyed = false;
  int running = 0;  // procedure calls under way
};

namespace platform_qt {

// Of any kind.
[[nodiscard]] bool IsWindowAlive(HWND window);
// A top-level window that is alive.
[[nodiscard]] bool IsMainWindow(HWND window);
// The top-level windows.
[[nodiscard]] const std::vector<HWND>& AllWindows();
// The dialogs that are up, and their controls.
[[nodiscard]] const std::vector<HWND>& AllDialogParts();
void AddDialogPart(HWND window);
void RemoveDialogPart(HWND window);

// Calls the window procedure; the record outlives the call. 0 when there is no such window.
LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Size of the client area in device pixels, as it is now.
[[nodiscard]] QSize ClientSize(HWND window);
// Brings picture, update region and program (WM_SIZE) up to date with the present size and state.
void SyncSize(HWND window);

// Shows or hides a bar, and sends WM_SIZE if that changed the client area.
void SetBarShown(HWND window, int bar, bool shown);

// The pixel that the class background has.
[[nodiscard]] Pixel BackgroundPixel(HWND window);
// Copies a picture of device pixels to the widget that shows it.
void ShowPicture(QWidget& widget, const Surface& picture, const QRegion& region);
// Tells the toolkit what was drawn since the last time.
void HandOver(HWND window);
// Sends WM_PAINT when something is pending. Result: whether it was.
[[nodiscard]] bool PaintPending(HWND window);

}  // namespace platform_qt
