// The messages that the controls of a dialog understand.
#pragma once

#include "platform/win32.h"

namespace platform_qt {

// The procedure of every control.
LRESULT CALLBACK ControlProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace platform_qt
