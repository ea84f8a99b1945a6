// The program's operations on top-level windows and their classes.
#include <QGuiApplication>
#include <QLayout>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cassert>
#include <cmath>

#include "platform/qt/base/unknown.h"
#include "platform/qt/drawing/device_context.h"
#include "platform/qt/windows/cursor.h"
#include "platform/qt/windows/main_window.h"
#include "platform/scroll.h"

namespace platform_qt {

namespace {

std::vector<WindowClass>& Classes() {
  static std::vector<WindowClass> classes;
  return classes;
}

const WindowClass* FindClass(const char* name) {
  const auto found = std::find_if(Classes().begin(), Classes().end(),
                                  [name](const WindowClass& entry) { return entry.name == name; });
  return found != Classes().end() ? &*found : nullptr;
}

// Where the program leaves the size to the system: most of the screen, and at least what 80 columns and 30
// rows of ordinary text take.
QSize PleasantSize() {
  const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
  return QSize(screen * 2 / 3).expandedTo({700, 560}).boundedTo(screen);
}

void PlaceFrame(QWidget& frame, int x, int y, int width, int height) {
  const double ratio = frame.devicePixelRatioF();
  const auto logical = [ratio](int pixels) { return static_cast<int>(std::lround(pixels / ratio)); };
  frame.resize(width == CW_USEDEFAULT ? PleasantSize() : QSize(logical(width), logical(height)));
  if (x != CW_USEDEFAULT) {
    frame.move(logical(x), logical(y));
  }
  frame.layout()->activate();
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

ATOM RegisterClassA(const WNDCLASSA* windowClass) {
  ReportUnknownBits("RegisterClassA", windowClass->style, CS_DBLCLKS);
  if (FindClass(windowClass->lpszClassName) != nullptr || windowClass->lpfnWndProc == nullptr) {
    return 0;
  }
  Classes().push_back({windowClass->lpszClassName, windowClass->style, windowClass->lpfnWndProc,
                       windowClass->hIcon, windowClass->hCursor, windowClass->hbrBackground});
  return static_cast<ATOM>(Classes().size());
}

BOOL UnregisterClassA(LPCSTR className, HINSTANCE) {
  const auto erased =
      std::erase_if(Classes(), [className](const WindowClass& entry) { return entry.name == className; });
  return erased != 0 ? TRUE : FALSE;
}

HWND CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR caption, DWORD style, int x, int y, int width,
                     int height, HWND parent, HMENU menu, HINSTANCE, LPVOID) {
  ReportUnknownBits("CreateWindowExA", exStyle, 0);
  ReportUnknownBits("CreateWindowExA", style,
                    WS_OVERLAPPEDWINDOW | WS_HSCROLL | WS_VSCROLL | WS_CLIPCHILDREN);
  assert(parent == nullptr && "windows are top-level windows");
  static_cast<void>(parent);
  const WindowClass* const windowClass = FindClass(className);
  if (windowClass == nullptr) {
    return nullptr;
  }
  auto* const window = new MainWindow(*windowClass, style, menu);
  window->SetText(caption);
  PlaceFrame(*window->frame, x, y, width, height);
  ResizePicture(window);
  if (CallProcedure(window, WM_CREATE, 0, 0) == -1 && IsWindowAlive(window)) {
    DestroyWindow(window);
  }
  return IsWindowAlive(window) ? window : nullptr;
}

BOOL ShowWindow(HWND window, int show) {
  MainWindow* const main = MainWindowOf(window);
  if (main == nullptr) {
    return FALSE;
  }
  Frame& frame = *main->frame;
  const bool wasShown = window->shown;
  const Qt::WindowStates state = frame.windowState();
  switch (show) {
    case SW_SHOWNORMAL:
    case SW_SHOWDEFAULT:
      frame.setWindowState(state & ~(Qt::WindowMinimized | Qt::WindowMaximized));
      break;
    case SW_RESTORE:
      // A minimized window returns to what it was; a maximized one to its own size.
      frame.setWindowState(
          state & ~(state.testFlag(Qt::WindowMinimized) ? Qt::WindowMinimized : Qt::WindowMaximized));
      break;
    case SW_SHOWMINIMIZED:
    case SW_MINIMIZE:
      frame.setWindowState(state | Qt::WindowMinimized);
      break;
    case SW_MAXIMIZE:
      frame.setWindowState((state & ~Qt::WindowMinimized) | Qt::WindowMaximized);
      break;
    default:
      ReportUnknown("ShowWindow", static_cast<std::uint64_t>(show));
      break;
  }
  window->shown = true;
  frame.show();
  main->client->setFocus();
  main->SyncSize();
  return wasShown ? TRUE : FALSE;
}

BOOL IsIconic(HWND window) {
  const MainWindow* const main = MainWindowOf(window);
  return main != nullptr && main->frame->isMinimized() ? TRUE : FALSE;
}

BOOL SetWindowPos(HWND window, HWND after, int, int, int, int, UINT flags) {
  assert((flags & (SWP_NOMOVE | SWP_NOSIZE)) == (SWP_NOMOVE | SWP_NOSIZE));
  ReportUnknownBits("SetWindowPos", flags, SWP_NOMOVE | SWP_NOSIZE);
  MainWindow* const main = MainWindowOf(window);
  if (main == nullptr) {
    return FALSE;
  }
  Frame& frame = *main->frame;
  if (after == HWND_TOP) {
    frame.raise();
    return TRUE;
  }
  const bool topmost = after == HWND_TOPMOST;
  // The widget's own setter makes the native window anew, and with it place and focus get lost; the native
  // window can change the flag as it stands.
  frame.overrideWindowFlags(frame.windowFlags().setFlag(Qt::WindowStaysOnTopHint, topmost));
  frame.winId();
  frame.windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topmost);
  if (topmost) {
    frame.raise();
  }
  return TRUE;
}

BOOL GetWindowRect(HWND window, RECT* rect) {
  const MainWindow* const main = MainWindowOf(window);
  if (main == nullptr) {
    return FALSE;
  }
  const QWidget& frame = *main->frame;
  const double ratio = frame.devicePixelRatioF();
  const auto pixels = [ratio](int logical) { return static_cast<LONG>(std::lround(logical * ratio)); };
  *rect = {pixels(frame.x()), pixels(frame.y()), pixels(frame.x()) + pixels(frame.width()),
           pixels(frame.y()) + pixels(frame.height())};
  return TRUE;
}

ULONG_PTR SetClassLongPtrA(HWND window, int index, LONG_PTR value) {
  if (index != GCLP_HCURSOR) {
    ReportUnknown("SetClassLongPtrA", static_cast<std::uint64_t>(index));
    return 0;
  }
  MainWindow* const main = MainWindowOf(window);
  if (main == nullptr) {
    return 0;
  }
  const HCURSOR former = main->classCursor;
  main->classCursor = reinterpret_cast<HCURSOR>(value);
  ShowCursor(*main->client, main->classCursor);
  return reinterpret_cast<ULONG_PTR>(former);
}

HCURSOR SetCursor(HCURSOR cursor) {
  static HCURSOR current = LoadCursorA(nullptr, IDC_ARROW);
  const HCURSOR former = current;
  current = cursor != nullptr ? cursor : LoadCursorA(nullptr, IDC_ARROW);
  for (MainWindow* window : MainWindows()) {
    ShowCursor(*window->client, cursor);
  }
  return former;
}

HMENU GetMenu(HWND window) {
  const MainWindow* const main = MainWindowOf(window);
  return main != nullptr ? main->menu : nullptr;
}

BOOL DrawMenuBar(HWND window) {
  MainWindow* const main = MainWindowOf(window);
  if (main == nullptr || main->menu == nullptr) {
    return FALSE;
  }
  main->ShowMenu();
  return TRUE;
}

void SetScrollBar(HWND window, int bar, std::int64_t top, std::int64_t position, std::int64_t page) {
  if (MainWindow* const main = MainWindowOf(window)) {
    main->bars[bar]->Set(top, position, page);
    main->SetBarShown(bar, top > 0);
  }
}

std::int64_t ScrollBarTop(HWND window, int bar) {
  const MainWindow* const main = MainWindowOf(window);
  return main != nullptr ? main->bars[bar]->Top() : 0;
}

std::int64_t ScrollBarThumb(HWND window, int bar) {
  const MainWindow* const main = MainWindowOf(window);
  return main != nullptr ? main->bars[bar]->Thumb() : 0;
}

void SetStatusLine(HWND window, const StatusLine* line) {
  MainWindow* const main = MainWindowOf(window);
  if (main == nullptr) return;
  if (line != nullptr) main->status->Set(*line);
  main->SetStatusShown(line != nullptr);
}
