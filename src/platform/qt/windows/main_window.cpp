#include "platform/qt/windows/main_window.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QScreen>
#include <cassert>
#include <cmath>

#include "platform/qt/windows/cursor.h"
#include "platform/qt/windows/menu.h"
#include "platform/qt/windows/modal.h"
#include "platform/qt/windows/queue.h"

namespace platform_qt {

namespace {

// After so many appearances of bars without input in between, bars stay: a layout in which showing a bar
// makes it needless would otherwise never come to rest.
constexpr int kMostBarChanges = 16;

WPARAM StateOf(const QWidget& frame) {
  if (frame.isMinimized()) {
    return SIZE_MINIMIZED;
  }
  return frame.isMaximized() ? SIZE_MAXIMIZED : SIZE_RESTORED;
}

void LayOut(const MainWindow& window) {
  auto* const layout = new QGridLayout(window.frame);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->setSizeConstraint(QLayout::SetNoConstraint);
  layout->addWidget(window.client, 0, 0);
  layout->addWidget(window.bars[SB_VERT], 0, 1);
  layout->addWidget(window.bars[SB_HORZ], 1, 0);
  layout->addWidget(window.status, 2, 0, 1, 2);
  layout->setRowStretch(0, 1);
  layout->setColumnStretch(0, 1);
  layout->setMenuBar(window.menuBar);
}

}  // namespace

void Frame::closeEvent(QCloseEvent* event) {
  event->ignore();
  // A window that is not to be reached is not closed either.
  if (owner_ != nullptr && mayClose_) {
    AppendPosted(owner_, WM_CLOSE, 0, 0);
  }
}

MainWindow::MainWindow(const WindowClass& itsClass, DWORD style, HMENU itsMenu)
    : HWND__(itsClass.procedure), menu(itsMenu), classCursor(itsClass.cursor) {
  background = itsClass.background;
  frame = new Frame(this);
  client = new ClientArea(frame, this, (itsClass.style & CS_DBLCLKS) != 0);
  Attach(this, *client);
  menuBar = new MenuBar(frame, this);
  const auto wheel = [area = client](QWheelEvent* event) { area->TakeWheel(event); };
  bars[SB_VERT] = new ScrollBar(frame, this, SB_VERT, wheel);
  bars[SB_HORZ] = new ScrollBar(frame, this, SB_HORZ, wheel);
  status = new StatusBar(frame, this);
  status->hide();
  LayOut(*this);
  frame->setFocusProxy(client);
  bars[SB_VERT]->setVisible((style & WS_VSCROLL) != 0);
  bars[SB_HORZ]->setVisible((style & WS_HSCROLL) != 0);
  if (menu != nullptr) {
    menu->changed = [this] { ShowMenu(); };
    ShowMenu();
  } else {
    menuBar->hide();
  }
  if (itsClass.icon != nullptr) {
    frame->setWindowIcon(itsClass.icon->icon);
  }
  ShowCursor(*client, classCursor);
}

MainWindow::~MainWindow() {
  client->Disown();
  frame->Disown();
  bars[SB_HORZ]->Disown();
  bars[SB_VERT]->Disown();
  status->Disown();
  frame->hide();
  frame->deleteLater();
  if (menu != nullptr) {
    DestroyMenuTree(menu);
  }
}

void MainWindow::SetText(const char* text) {
  caption = text;
  ShowTitle(*frame, caption);
}

void MainWindow::TakeFocus() {
  frame->activateWindow();
  client->setFocus();
}

// The frame itself stays enabled: dialogs of the window are among its children.
bool MainWindow::Enable(bool wanted) {
  const bool wasEnabled = client->isEnabledTo(frame);
  for (QWidget* const part :
       std::initializer_list<QWidget*>{client, menuBar, bars[SB_HORZ], bars[SB_VERT], status}) {
    part->setEnabled(wanted);
  }
  frame->LetClose(wanted);
  return wasEnabled;
}

void MainWindow::SyncSize() {
  if (!shown || destroyed) {
    return;
  }
  const bool resized = ResizePicture(this);
  const WPARAM state = StateOf(*frame);
  if (sizeTold_ && !resized && state == toldState_) {
    return;
  }
  sizeTold_ = true;
  toldState_ = state;
  const QSize size = target.Picture().Bounds().size();
  const LPARAM packed = state == SIZE_MINIMIZED
                            ? 0
                            : MAKELPARAM(static_cast<UINT>(size.width()), static_cast<UINT>(size.height()));
  CallProcedure(this, WM_SIZE, state, packed);
}

bool MainWindow::MayPaint() const {
  // A minimized window was told the size 0 and would paint nothing; its update region waits.
  return shown && toldState_ != SIZE_MINIMIZED;
}

void MainWindow::NoteInput(const MSG& message) {
  barChanges_ = 0;
  const bool scroll = message.message == WM_VSCROLL || message.message == WM_HSCROLL;
  if (scroll && LOWORD(message.wParam) == SB_ENDSCROLL) {
    bars[message.message == WM_VSCROLL ? SB_VERT : SB_HORZ]->DropIsOver();
  }
}

bool MainWindow::Destroy() {
  ++running;
  EndModalsOf(this);
  DestroyOwned(this);
  CallProcedure(this, WM_DESTROY, 0, 0);
  destroyed = true;
  frame->hide();
  ForgetWindow(this);
  if (--running == 0) {
    Reap();
  }
  return true;
}

void MainWindow::SetBarShown(int bar, bool wanted) {
  ScrollBar& itsBar = *bars[bar];
  if (itsBar.isHidden() != wanted || (!wanted && barChanges_ > kMostBarChanges)) {
    return;
  }
  ++barChanges_;
  itsBar.setVisible(wanted);
  frame->layout()->activate();
  SyncSize();
}

void MainWindow::SetStatusShown(bool wanted) {
  if (status->isHidden() != wanted) {
    return;
  }
  status->setVisible(wanted);
  frame->layout()->activate();
  SyncSize();
}

void MainWindow::ShowMenu() {
  FillMenuBar(*menuBar, this, menu);
}

MainWindow* MainWindowOf(HWND window) {
  return IsWindowAlive(window) ? dynamic_cast<MainWindow*>(window) : nullptr;
}

std::vector<MainWindow*> MainWindows() {
  std::vector<MainWindow*> windows;
  for (HWND window : AllWindows()) {
    if (MainWindow* const main = MainWindowOf(window)) {
      windows.push_back(main);
    }
  }
  return windows;
}

}  // namespace platform_qt
