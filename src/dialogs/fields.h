// Fields of dialogs: their texts, and the box that tells what is wrong with one. What a field may hold is
// settings/field_checks.
#pragma once

#include <string>

#include "platform/win32.h"
#include "settings/field_checks.h"

// Characters that a field takes. More than any key may have, so that what is too long is refused in words
// and not cut.
inline constexpr WPARAM kFieldChars = 1 << 24;

// The whole text of a control (UTF-8).
[[nodiscard]] std::string FieldText(HWND dialog, int id);

// Passes a check's outcome on. One that was not accepted is shown to the user first: a beep and a box, both
// of a stop sign, if it has a message, and the focus goes to the control; then a beep of information.
bool CheckField(HWND dialog, int id, const FieldCheck& check);
