// The program's operations on windows of any kind.
#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/qt/base/unknown.h"
#include "platform/qt/drawing/device_context.h"
#include "platform/qt/windows/modal.h"
#include "platform/qt/windows/window.h"

using namespace platform_qt;

BOOL DestroyWindow(HWND window) {
  return IsWindowAlive(window) && window->Destroy() ? TRUE : FALSE;
}

BOOL SetWindowTextA(HWND window, LPCSTR text) {
  if (!IsWindowAlive(window)) {
    return FALSE;
  }
  window->SetText(text);
  return TRUE;
}

int GetWindowTextA(HWND window, LPSTR text, int size) {
  if (!IsWindowAlive(window) || size <= 0) {
    return 0;
  }
  const std::string whole = window->Text();
  std::size_t length = std::min(whole.size(), static_cast<std::size_t>(size) - 1);
  // Cut between characters.
  while (length < whole.size() && length > 0 && (static_cast<unsigned char>(whole[length]) & 0xC0) == 0x80) {
    --length;
  }
  std::memcpy(text, whole.data(), length);
  text[length] = '\0';
  return static_cast<int>(length);
}

HWND SetFocus(HWND window) {
  const std::vector<HWND>& windows = AllWindows();
  const auto former =
      std::find_if(windows.begin(), windows.end(), [](HWND other) { return other->widget->hasFocus(); });
  const HWND result = former != windows.end() ? *former : nullptr;
  if (IsWindowAlive(window)) {
    window->TakeFocus();
  }
  return result;
}

BOOL EnableWindow(HWND window, BOOL enable) {
  if (!IsWindowAlive(window)) {
    return FALSE;
  }
  return window->Enable(enable != FALSE) ? FALSE : TRUE;
}

BOOL IsWindowEnabled(HWND window) {
  return IsWindowAlive(window) && window->widget->isEnabled() && !HasModalOver(window) ? TRUE : FALSE;
}

BOOL GetClientRect(HWND window, RECT* rect) {
  if (!IsWindowAlive(window)) {
    return FALSE;
  }
  const QSize size = window->Whole().isMinimized() ? QSize(0, 0) : ClientSize(window);
  *rect = {0, 0, size.width(), size.height()};
  return TRUE;
}

LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value) {
  if (index != GWLP_WNDPROC && index != DWLP_USER) {
    ReportUnknown("SetWindowLongPtrA", static_cast<std::uint64_t>(index));
    return 0;
  }
  if (!IsWindowAlive(window)) {
    return 0;
  }
  if (index == DWLP_USER) {
    return std::exchange(window->userData, value);
  }
  return reinterpret_cast<LONG_PTR>(std::exchange(window->procedure, reinterpret_cast<WNDPROC>(value)));
}

LONG_PTR GetWindowLongPtrA(HWND window, int index) {
  if (index != DWLP_USER) {
    ReportUnknown("GetWindowLongPtrA", static_cast<std::uint64_t>(index));
    return 0;
  }
  return IsWindowAlive(window) ? window->userData : 0;
}

LRESULT CallWindowProcA(WNDPROC former, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return former(window, message, wParam, lParam);
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
      if (!IsWindowAlive(window) || window->background == nullptr) {
        return 0;
      }
      FillThrough(reinterpret_cast<HDC>(wParam), window->target.Picture().Bounds(), BackgroundPixel(window));
      return 1;
    }
    default:
      return 0;
  }
}
