#include "platform/qt/windows/keys.h"

#include "platform/qt/windows/queue.h"

namespace platform_qt {

namespace {

struct KeyPair {
  int toolkit;
  int virtualKey;
};

constexpr int kVkTab = 0x09;
constexpr int kVkReturn = 0x0D;
constexpr int kVkSpace = 0x20;
constexpr int kVkDelete = 0x2E;
constexpr int kVkNumpad0 = 0x60;

constexpr KeyPair kKeys[] = {
    {Qt::Key_Backspace, VK_BACK}, {Qt::Key_Tab, kVkTab},       {Qt::Key_Backtab, kVkTab},
    {Qt::Key_Return, kVkReturn},  {Qt::Key_Enter, kVkReturn},  {Qt::Key_Escape, VK_ESCAPE},
    {Qt::Key_Space, kVkSpace},    {Qt::Key_PageUp, VK_PRIOR},  {Qt::Key_PageDown, VK_NEXT},
    {Qt::Key_End, VK_END},        {Qt::Key_Home, VK_HOME},     {Qt::Key_Left, VK_LEFT},
    {Qt::Key_Up, VK_UP},          {Qt::Key_Right, VK_RIGHT},   {Qt::Key_Down, VK_DOWN},
    {Qt::Key_Insert, VK_INSERT},  {Qt::Key_Delete, kVkDelete}, {Qt::Key_Shift, VK_SHIFT},
    {Qt::Key_Control, VK_CONTROL}};

// Places of the letters on a keyboard, in the key codes of X11 and Wayland.
constexpr quint32 kFirstRow = 24;
constexpr quint32 kSecondRow = 38;
constexpr quint32 kThirdRow = 52;
constexpr char kRows[3][11] = {"QWERTYUIOP", "ASDFGHJKL", "ZXCVBNM"};

int LetterByPlace(quint32 code) {
  constexpr quint32 kStarts[] = {kFirstRow, kSecondRow, kThirdRow};
  for (int row = 0; row < 3; ++row) {
    const auto length = static_cast<quint32>(std::char_traits<char>::length(kRows[row]));
    if (code >= kStarts[row] && code - kStarts[row] < length) {
      return kRows[row][code - kStarts[row]];
    }
  }
  return 0;
}

}  // namespace

int ModifiersOf(Qt::KeyboardModifiers modifiers) {
  return ((modifiers & Qt::ShiftModifier) != 0 ? kShiftDown : 0) |
         ((modifiers & Qt::ControlModifier) != 0 ? kControlDown : 0) |
         ((modifiers & Qt::AltModifier) != 0 ? kAltDown : 0);
}

UINT MouseKeysOf(Qt::KeyboardModifiers modifiers, Qt::MouseButtons buttons) {
  return (buttons.testFlag(Qt::LeftButton) ? 0x0001U : 0U) |
         (buttons.testFlag(Qt::RightButton) ? 0x0002U : 0U) |
         (modifiers.testFlag(Qt::ShiftModifier) ? static_cast<UINT>(MK_SHIFT) : 0U) |
         (modifiers.testFlag(Qt::ControlModifier) ? static_cast<UINT>(MK_CONTROL) : 0U);
}

int VirtualKeyOf(const QKeyEvent& event) {
  const int key = event.key();
  if (key >= Qt::Key_A && key <= Qt::Key_Z) {
    return 'A' + (key - Qt::Key_A);
  }
  if (key >= Qt::Key_0 && key <= Qt::Key_9) {
    const int first = event.modifiers().testFlag(Qt::KeypadModifier) ? kVkNumpad0 : '0';
    return first + (key - Qt::Key_0);
  }
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
    return VK_F1 + (key - Qt::Key_F1);
  }
  const bool pad = event.modifiers().testFlag(Qt::KeypadModifier);
  if (key == Qt::Key_Plus || key == Qt::Key_Equal) {
    return pad ? VK_ADD : VK_OEM_PLUS;
  }
  if (key == Qt::Key_Minus || key == Qt::Key_Underscore) {
    return pad ? VK_SUBTRACT : VK_OEM_MINUS;
  }
  for (const KeyPair& pair : kKeys) {
    if (pair.toolkit == key) {
      return pair.virtualKey;
    }
  }
  return key > 0xFF ? LetterByPlace(event.nativeScanCode()) : 0;
}

bool IsAltGrText(const QKeyEvent& event) {
  const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::AltModifier;
  const QString text = event.text();
  // A letter of another script goes by its place, as it does with Ctrl alone.
  if (text.isEmpty() || (event.key() > 0xFF && text.at(0).isLetter())) {
    return false;
  }
  return (event.modifiers() & both) == both && text.at(0).isPrint();
}

}  // namespace platform_qt
