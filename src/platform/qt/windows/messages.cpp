// The program's operations on the queue.
#include <algorithm>
#include <cassert>

#include "platform/qt/base/unknown.h"
#include "platform/qt/windows/queue.h"
#include "platform/qt/windows/window.h"

using namespace platform_qt;

BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last) {
  assert(window == nullptr && first == 0 && last == 0 && "messages are taken unfiltered");
  static_cast<void>(window);
  static_cast<void>(first);
  static_cast<void>(last);
  return TakeMessage(*message, true) == Taken::quit ? FALSE : TRUE;
}

BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT remove) {
  assert(window == nullptr && first == 0 && last == 0 && remove == PM_REMOVE &&
         "messages are taken unfiltered");
  static_cast<void>(window);
  static_cast<void>(first);
  static_cast<void>(last);
  static_cast<void>(remove);
  return TakeMessage(*message, false) == Taken::nothing ? FALSE : TRUE;
}

BOOL TranslateMessage(const MSG* message) {
  return PostCharacterOf(*message) ? TRUE : FALSE;
}

LRESULT DispatchMessageA(const MSG* message) {
  return Deliver(*message);
}

BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return AppendPosted(window, message, wParam, lParam) ? TRUE : FALSE;
}

void PostQuitMessage(int exitCode) {
  AppendQuit(exitCode);
}

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
  assert(procedure == nullptr && "timers come as WM_TIMER");
  static_cast<void>(procedure);
  if (!IsWindowAlive(window)) {
    return 0;
  }
  StartTimer(window, id, std::chrono::milliseconds(std::max(milliseconds, 1U)));
  return id;
}

BOOL KillTimer(HWND window, UINT_PTR id) {
  return StopTimer(window, id) ? TRUE : FALSE;
}

short GetKeyState(int virtualKey) {
  int bit = 0;
  switch (virtualKey) {
    case VK_SHIFT:
      bit = kShiftDown;
      break;
    case VK_CONTROL:
      bit = kControlDown;
      break;
    case VK_MENU:
      bit = kAltDown;
      break;
    default:
      ReportUnknown("GetKeyState", static_cast<std::uint64_t>(virtualKey));
      break;
  }
  return (MessageModifiers() & bit) != 0 ? static_cast<short>(-0x8000) : short{0};
}
