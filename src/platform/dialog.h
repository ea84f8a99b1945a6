// Dialogs from templates that are data. Win32 takes a template as a resource or as packed words, so opening
// one is an operation of this layer's own; all that happens inside the dialog is Win32's (win32.h).
#pragma once

#include <cstdint>
#include <span>

#include "platform/win32.h"

enum class ControlKind : std::uint8_t {
  label,  // & marks a mnemonic that leads to the next control that takes the focus
  edit,
  readOnlyEdit,
  button,
  defaultButton,
  checkBox,
  threeState,
  radio,  // those from one kGroupStart to the next exclude each other
  comboBox,
  simpleCombo,  // an edit field with its list below it, always open
  dropDownList,
  listBox,     // of one choice
  ownerDrawn,  // a button that the program draws at WM_DRAWITEM
  icon,        // shows what STM_SETICON gives it
  group,       // a frame around other controls; its mnemonic leads to the next one that takes the focus
};

// Style bits of a control.
inline constexpr unsigned kGroupStart = 1;
inline constexpr unsigned kDisabled = 2;
inline constexpr unsigned kNoTabStop = 4;  // of a kind that would have one

// The id of a control that the program never asks for.
inline constexpr int kNoId = 0xFFFF;

// Places and sizes are dialog units: a quarter of the average width, and an eighth of the height, of a
// character of the dialog's font, which is the desktop's. In `text`, & marks a mnemonic.
struct ControlTemplate {
  ControlKind kind;
  int id;
  const char* text;
  std::int16_t x, y, width, height;
  unsigned style = 0;
};

// The controls stand in tab order. Without a default button, Enter does nothing.
struct DialogTemplate {
  const char* name;
  const char* caption;
  std::int16_t width, height;
  std::span<const ControlTemplate> controls;
};

// Runs a dialog, modal to `owner` (may be null), until its procedure calls EndDialog; the layer's message
// loop runs behind it. The result is that of EndDialog; -1 when the dialog could not be shown, or the program
// ends meanwhile.
INT_PTR RunDialog(const DialogTemplate& dialog, HWND owner, DLGPROC procedure, LPARAM param);

// Opens a dialog beside `owner` (may be null), which goes on taking input, and shows it. Keys work in it by
// themselves. Its procedure ends it by DestroyWindow, and gets WM_DESTROY then; it also goes with its owner.
// Null when the procedure has ended it already. Differs: while a modal dialog of the owner is up, the user
// cannot turn to this one.
HWND StartDialog(const DialogTemplate& dialog, HWND owner, DLGPROC procedure, LPARAM param);
