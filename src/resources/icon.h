// The program's icon, drawn by rule: a sheet of text lines on a dark ground, with a bright band where the
// window of the view stands.
#pragma once

#include "platform/win32.h"

inline constexpr int kIconSize = 32;

// Makes the icon; null when the system refuses. The caller destroys it.
[[nodiscard]] HICON MakeProgramIcon(HINSTANCE instance);
