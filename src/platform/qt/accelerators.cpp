#include <vector>

#include "platform/qt/menu.h"
#include "platform/qt/queue.h"
#include "platform/qt/unknown.h"
#include "platform/qt/window.h"

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
  if (window->menu != nullptr) {
    const int position = PopupOfCommand(window->menu, command);
    if (position >= 0) {
      SendMessageA(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(GetSubMenu(window->menu, position)),
                   MAKELPARAM(static_cast<UINT>(position), 0));
      if (!IsWindowAlive(window)) {
        return;
      }
      const MenuEntry* const entry = FindCommand(window->menu, command);
      if (entry != nullptr && (entry->flags & MF_GRAYED) != 0) {
        return;
      }
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

BOOL TranslateMessage(const MSG* message) {
  if (message->message != WM_KEYDOWN) {
    return FALSE;
  }
  const bool control = (MessageModifiers() & kControlDown) != 0;
  const bool alt = (MessageModifiers() & kAltDown) != 0;
  const WPARAM key = message->wParam;
  WPARAM character = 0;
  switch (key) {
    case VK_BACK:
      character = control ? 0x7F : 0x08;
      break;
    case 0x09:
      character = 0x09;
      break;
    case 0x0D:
      character = control ? 0x0A : 0x0D;
      break;
    case VK_ESCAPE:
      character = 0x1B;
      break;
    default:
      if (control && key >= 'A' && key <= 'Z') {
        character = key - 'A' + 1;
      }
      break;
  }
  if (character == 0 || alt) {
    return FALSE;
  }
  return PostMessageA(message->hwnd, WM_CHAR, character, message->lParam);
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
