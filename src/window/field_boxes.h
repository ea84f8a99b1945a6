// Fields of dialogs: their texts, and the box that tells what is wrong with one. What a field may hold is
// settings/field_checks.
#pragma once

#include <string>

#include "platform/win32.h"
#include "settings/field_checks.h"

// The text of a control (UTF-8), cut to 512 characters of four bytes.
[[nodiscard]] std::string FieldText(HWND dialog, int id);

// Passes a check's outcome on. One that was not accepted is shown to the user first, if it has a message: a
// beep and a box, both of a stop sign, and the focus goes to the control.
bool CheckField(HWND dialog, int id, const FieldCheck& check);
