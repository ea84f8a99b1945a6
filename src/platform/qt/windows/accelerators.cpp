#include <vector>

#include "platform/qt/base/unknown.h"
#include "platform/qt/windows/menu.h"
#include "platform/qt/windows/queue.h"
#include "platform/qt/windows/window.h"

struct HACCEL__ {
  std::vector<ACCEL> entries;
};

namespace platform_qt {

namespace {

constexpr BYTE kModifierFlags = FSHIFT | FCONTROL | FALT;

BYTE FlagsOf(int modifiers) {
  return static_cast<BYTE>(((modifiers & kShiftDown) != 0 ? FSHIFT : 0) |
                           ((modifiers & kControlDown) != 0 ? FCONTROL : 0) |
                           ((modifiers & kAltDown) != 0 ? FALT : 0));
}

bool Matches(const ACCEL& entry, const MSG& message) {
  if (entry.key != message.wParam) {
    return false;
  }
  if ((entry.fVirt & FVIRTKEY) == 0) {
    return message.message == WM_CHAR;
  }
  return message.message == WM_KEYDOWN && (entry.fVirt & kModifierFlags) == FlagsOf(MessageModifiers());
}

// Sends the command as if it were chosen in the menu: its pull-down is brought up to date first, and a
// grayed item sends nothing.
void SendCommand(HWND window, UINT command) {
  const HMENU menu = GetMenu(window);
  const int position = menu != nullptr ? PopupOfCommand(menu, command) : -1;
  if (position >= 0) {
    SendMessageA(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(GetSubMenu(menu, position)),
                 MAKELPARAM(static_cast<UINT>(position), 0));
    if (!IsWindowAlive(window)) {
      return;
    }
    const MenuEntry* const entry = FindCommand(menu, command);
    if (entry != nullptr && (entry->flags & MF_GRAYED) != 0) {
      return;
    }
  }
  SendMessageA(window, WM_COMMAND, MAKEWPARAM(command, 1), 0);
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

HACCEL CreateAcceleratorTableA(ACCEL* entries, int count) {
  for (int i = 0; i < count; ++i) {
    ReportUnknownBits("CreateAcceleratorTableA", entries[i].fVirt, FVIRTKEY | FNOINVERT | kModifierFlags);
  }
  return new HACCEL__{std::vector<ACCEL>(entries, entries + count)};
}

BOOL DestroyAcceleratorTable(HACCEL table) {
  delete table;
  return TRUE;
}

int TranslateAcceleratorA(HWND window, HACCEL table, MSG* message) {
  if (table == nullptr || !IsWindowAlive(window) ||
      (message->message != WM_KEYDOWN && message->message != WM_CHAR)) {
    return 0;
  }
  for (const ACCEL& entry : table->entries) {
    if (Matches(entry, *message)) {
      SendCommand(window, entry.cmd);
      return 1;
    }
  }
  return 0;
}
