// A top-level window: the frame with menu bar, client area and scroll bars, and the state that WM_SIZE tells
// of. It knows nothing of what is drawn, and nothing of dialogs but that those of a window go with it.
#pragma once

#include <string>
#include <vector>

#include "platform/qt/windows/client_area.h"
#include "platform/qt/windows/menu_bar.h"
#include "platform/qt/windows/scroll_bar.h"
#include "platform/qt/windows/status_bar.h"
#include "platform/qt/windows/window.h"

namespace platform_qt {

class Frame : public QWidget {
 public:
  explicit Frame(HWND owner) : owner_(owner) {}
  // Whether the user may close the window.
  void LetClose(bool may) { mayClose_ = may; }
  void Disown() { owner_ = nullptr; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  HWND owner_;
  bool mayClose_ = true;
};

struct WindowClass {
  std::string name;
  UINT style = 0;
  WNDPROC procedure = nullptr;
  HICON icon = nullptr;
  HCURSOR cursor = nullptr;
  HBRUSH background = nullptr;
};

struct MainWindow : HWND__ {
  MainWindow(const WindowClass& itsClass, DWORD style, HMENU itsMenu);
  ~MainWindow() override;
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  [[nodiscard]] std::string Text() const override { return caption; }
  void SetText(const char* text) override;
  [[nodiscard]] QWidget& Whole() override { return *frame; }
  void TakeFocus() override;
  bool Enable(bool wanted) override;
  // Brings picture, update region and program (WM_SIZE) up to date with the present size and state.
  void SyncSize() override;
  [[nodiscard]] bool MayPaint() const override;
  void NoteInput(const MSG& message) override;
  bool Destroy() override;
  void Reap() override { delete this; }

  // Shows or hides a bar, and sends WM_SIZE if that changed the client area.
  void SetBarShown(int bar, bool wanted);
  // The same of the status line.
  void SetStatusShown(bool wanted);
  // The menu as it stands now becomes the bar.
  void ShowMenu();

  Frame* frame;
  ClientArea* client;
  QMenuBar* menuBar;
  ScrollBar* bars[2];  // by SB_HORZ, SB_VERT
  StatusBar* status;
  HMENU menu;
  HCURSOR classCursor;
  std::string caption;
  int toldDotsPerInch = 0;  // what the program knows; 0: it has not been told of another than the first

 private:
  // What the last WM_SIZE said.
  bool sizeTold_ = false;
  WPARAM toldState_ = SIZE_RESTORED;
  int barChanges_ = 0;  // since the last input: see SetBarShown
};

// The top-level window behind a handle; null when it is none, or destroyed.
[[nodiscard]] MainWindow* MainWindowOf(HWND window);
// Those that are alive.
[[nodiscard]] std::vector<MainWindow*> MainWindows();

}  // namespace platform_qt
