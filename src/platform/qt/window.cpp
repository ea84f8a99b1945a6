#include "platform/qt/window.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstring>

#include "platform/qt/cursor.h"
#include "platform/qt/menu.h"
#include "platform/qt/modal.h"
#include "platform/qt/program_dialog.h"
#include "platform/qt/queue.h"
#include "platform/qt/unknown.h"

namespace platform_qt {

namespace {

// After so many appearances of bars without input in between, bars stay: a layout in which showing a bar
// makes it needless would otherwise never come to rest.
constexpr int kMostBarChanges = 16;

std::vector<WindowClass>& Classes() {
  static std::vector<WindowClass> classes;
  return classes;
}

std::vector<HWND>& Windows() {
  static std::vector<HWND> windows;
  return windows;
}

std::vector<HWND>& DialogParts() {
  static std::vector<HWND> parts;
  return parts;
}

const WindowClass* FindClass(const char* name) {
  const auto found = std::find_if(Classes().begin(), Classes().end(),
                                  [name](const WindowClass& entry) { return entry.name == name; });
  return found != Classes().end() ? &*found : nullptr;
}

WPARAM StateOf(HWND window) {
  if (window->frame->isMinimized()) {
    return SIZE_MINIMIZED;
  }
  return window->frame->isMaximized() ? SIZE_MAXIMIZED : SIZE_RESTORED;
}

void BuildFrame(HWND window, DWORD style) {
  window->frame = new Frame(window);
  window->client = new ClientArea(window->frame, window);
  window->widget = window->client;
  window->menuBar = new QMenuBar(window->frame);
  window->bars[SB_VERT] = new ScrollBar(window->frame, window, SB_VERT);
  window->bars[SB_HORZ] = new ScrollBar(window->frame, window, SB_HORZ);
  auto* const layout = new QGridLayout(window->frame);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->setSizeConstraint(QLayout::SetNoConstraint);
  layout->addWidget(window->client, 0, 0);
  layout->addWidget(window->bars[SB_VERT], 0, 1);
  layout->addWidget(window->bars[SB_HORZ], 1, 0);
  layout->setRowStretch(0, 1);
  layout->setColumnStretch(0, 1);
  layout->setMenuBar(window->menuBar);
  window->frame->setFocusProxy(window->client);
  window->bars[SB_VERT]->setVisible((style & WS_VSCROLL) != 0);
  window->bars[SB_HORZ]->setVisible((style & WS_HSCROLL) != 0);
}

// Where the program leaves the size to the system: most of the screen, and at least what 80 columns and 30
// rows of ordinary text take.
QSize PleasantSize() {
  const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
  return QSize(screen * 2 / 3).expandedTo({700, 560}).boundedTo(screen);
}

void PlaceFrame(HWND window, int x, int y, int width, int height) {
  const double ratio = window->frame->devicePixelRatioF();
  const auto logical = [ratio](int pixels) { return static_cast<int>(std::lround(pixels / ratio)); };
  window->frame->resize(width == CW_USEDEFAULT ? PleasantSize() : QSize(logical(width), logical(height)));
  if (x != CW_USEDEFAULT) {
    window->frame->move(logical(x), logical(y));
  }
  window->frame->layout()->activate();
}

void Reap(HWND window) {
  window->client->Disown();
  window->frame->Disown();
  window->bars[SB_HORZ]->Disown();
  window->bars[SB_VERT]->Disown();
  window->surface.ClosePainter();
  window->frame->hide();
  window->frame->deleteLater();
  if (window->menu != nullptr) {
    DestroyMenuTree(window->menu);
  }
  std::erase(Windows(), window);
  delete window;
}

}  // namespace

bool IsMainWindow(HWND window) {
  return std::find(Windows().begin(), Windows().end(), window) != Windows().end() && !window->destroyed;
}

bool IsWindowAlive(HWND window) {
  return IsMainWindow(window) ||
         std::find(DialogParts().begin(), DialogParts().end(), window) != DialogParts().end();
}

const std::vector<HWND>& AllWindows() {
  return Windows();
}

const std::vector<HWND>& AllDialogParts() {
  return DialogParts();
}

void AddDialogPart(HWND window) {
  DialogParts().push_back(window);
}

void RemoveDialogPart(HWND window) {
  std::erase(DialogParts(), window);
}

LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (!IsWindowAlive(window)) {
    return 0;
  }
  if (message == kHeldInput) {
    return DeliverHeld(window, lParam);
  }
  ++window->running;
  const LRESULT result = window->windowClass.procedure(window, message, wParam, lParam);
  if (--window->running == 0 && window->destroyed) {
    Reap(window);
  }
  return result;
}

QSize ClientSize(HWND window) {
  const double ratio = window->widget->devicePixelRatioF();
  return {static_cast<int>(std::lround(window->widget->width() * ratio)),
          static_cast<int>(std::lround(window->widget->height() * ratio))};
}

void SyncSize(HWND window) {
  if (!window->shown || window->destroyed) {
    return;
  }
  const QSize size = ClientSize(window);
  const QRect before = window->surface.Bounds();
  const bool resized = size != before.size();
  if (resized) {
    window->surface.Resize(size.width(), size.height(), BackgroundPixel(window));
    window->update &= window->surface.Bounds();
    window->unshown &= window->surface.Bounds();
    const QRegion uncovered = QRegion(window->surface.Bounds()) - before;
    if (!uncovered.isEmpty()) {
      window->update += uncovered;
      window->eraseWanted = true;
    }
  }
  const WPARAM state = StateOf(window);
  if (window->sizeTold && !resized && state == window->toldState) {
    return;
  }
  window->sizeTold = true;
  window->toldState = state;
  const LPARAM packed = state == SIZE_MINIMIZED
                            ? 0
                            : MAKELPARAM(static_cast<UINT>(size.width()), static_cast<UINT>(size.height()));
  CallProcedure(window, WM_SIZE, state, packed);
}

void SetBarShown(HWND window, int bar, bool shown) {
  ScrollBar* const widget = window->bars[bar];
  if (widget->isHidden() != shown || (!shown && window->barChanges > kMostBarChanges)) {
    return;
  }
  ++window->barChanges;
  widget->setVisible(shown);
  window->frame->layout()->activate();
  SyncSize(window);
}

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
  const HWND window = new HWND__;
  window->windowClass = *windowClass;
  window->classCursor = windowClass->cursor;
  window->menu = menu;
  Windows().push_back(window);
  BuildFrame(window, style);
  if (menu != nullptr) {
    BuildMenuBar(window);
  } else {
    window->menuBar->hide();
  }
  if (windowClass->icon != nullptr) {
    window->frame->setWindowIcon(windowClass->icon->icon);
  }
  ShowCursor(window, windowClass->cursor);
  SetWindowTextA(window, caption);
  PlaceFrame(window, x, y, width, height);
  const QSize size = ClientSize(window);
  window->surface.Resize(size.width(), size.height(), BackgroundPixel(window));
  window->update = window->surface.Bounds();
  window->eraseWanted = true;
  if (CallProcedure(window, WM_CREATE, 0, 0) == -1 && IsWindowAlive(window)) {
    DestroyWindow(window);
  }
  return IsWindowAlive(window) ? window : nullptr;
}

BOOL DestroyWindow(HWND window) {
  if (!IsMainWindow(window)) {
    return FALSE;
  }
  ++window->running;
  EndModalsOf(window);
  CallProcedure(window, WM_DESTROY, 0, 0);
  window->destroyed = true;
  window->frame->hide();
  ForgetWindow(window);
  if (--window->running == 0) {
    Reap(window);
  }
  return TRUE;
}

BOOL ShowWindow(HWND window, int show) {
  if (!IsMainWindow(window)) {
    return FALSE;
  }
  Frame& frame = *window->frame;
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
  window->client->setFocus();
  SyncSize(window);
  return wasShown ? TRUE : FALSE;
}

BOOL IsIconic(HWND window) {
  return IsMainWindow(window) && window->frame->isMinimized() ? TRUE : FALSE;
}

BOOL SetWindowTextA(HWND window, LPCSTR text) {
  if (!IsWindowAlive(window)) {
    return FALSE;
  }
  if (window->control != nullptr) {
    SetTextOf(*window->control, text);
    return TRUE;
  }
  window->caption = text;
  // The toolkit takes "[*]" for its own mark, and its doubling for the characters themselves.
  window->widget->window()->setWindowTitle(QString::fromStdString(window->caption).replace("[*]", "[*][*]"));
  return TRUE;
}

int GetWindowTextA(HWND window, LPSTR text, int size) {
  if (!IsWindowAlive(window) || size <= 0) {
    return 0;
  }
  const std::string whole = window->control != nullptr ? TextOf(*window->control) : window->caption;
  std::size_t length = std::min(whole.size(), static_cast<std::size_t>(size) - 1);
  // Cut between characters.
  while (length < whole.size() && length > 0 && (static_cast<unsigned char>(whole[length]) & 0xC0) == 0x80) {
    --length;
  }
  std::memcpy(text, whole.data(), length);
  text[length] = '\0';
  return static_cast<int>(length);
}

BOOL SetWindowPos(HWND window, HWND after, int, int, int, int, UINT flags) {
  assert((flags & (SWP_NOMOVE | SWP_NOSIZE)) == (SWP_NOMOVE | SWP_NOSIZE));
  ReportUnknownBits("SetWindowPos", flags, SWP_NOMOVE | SWP_NOSIZE);
  if (!IsMainWindow(window)) {
    return FALSE;
  }
  Frame& frame = *window->frame;
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

HWND SetFocus(HWND window) {
  HWND former = nullptr;
  for (HWND other : AllWindows()) {
    if (other->client->hasFocus()) {
      former = other;
    }
  }
  for (HWND other : AllDialogParts()) {
    if (other->widget->hasFocus()) {
      former = other;
    }
  }
  if (IsMainWindow(window)) {
    window->frame->activateWindow();
    window->client->setFocus();
  } else if (IsWindowAlive(window)) {
    window->widget->setFocus();
  }
  return former;
}

BOOL GetWindowRect(HWND window, RECT* rect) {
  if (!IsMainWindow(window)) {
    return FALSE;
  }
  const QWidget& frame = *window->frame;
  const double ratio = frame.devicePixelRatioF();
  const auto pixels = [ratio](int logical) { return static_cast<LONG>(std::lround(logical * ratio)); };
  *rect = {pixels(frame.x()), pixels(frame.y()), pixels(frame.x()) + pixels(frame.width()),
           pixels(frame.y()) + pixels(frame.height())};
  return TRUE;
}

BOOL GetClientRect(HWND window, RECT* rect) {
  if (!IsWindowAlive(window)) {
    return FALSE;
  }
  const QSize size = IsIconic(window) != FALSE ? QSize(0, 0) : ClientSize(window);
  *rect = {0, 0, size.width(), size.height()};
  return TRUE;
}

ULONG_PTR SetClassLongPtrA(HWND window, int index, LONG_PTR value) {
  if (index != GCLP_HCURSOR) {
    ReportUnknown("SetClassLongPtrA", static_cast<std::uint64_t>(index));
    return 0;
  }
  if (!IsMainWindow(window)) {
    return 0;
  }
  const HCURSOR former = window->classCursor;
  window->classCursor = reinterpret_cast<HCURSOR>(value);
  ShowCursor(window, window->classCursor);
  return reinterpret_cast<ULONG_PTR>(former);
}

LRESULT CALLBACK DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_CLOSE:
      DestroyWindow(window);
      return 0;
    case WM_PAINT: {
      PAINTSTRUCT paint{};
      BeginPaint(window, &paint);
      EndPaint(window, &paint);
      return 0;
    }
    case WM_ERASEBKGND: {
      if (!IsWindowAlive(window) || window->windowClass.background == nullptr) {
        return 0;
      }
      FillThrough(reinterpret_cast<HDC>(wParam), window->surface.Bounds(), BackgroundPixel(window));
      return 1;
    }
    default:
      return 0;
  }
}
