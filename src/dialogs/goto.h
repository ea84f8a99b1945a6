// The Go To dialog. What the choices mean and where they lead is places/goto_logic.
#pragma once

#include <optional>

#include "places/goto_logic.h"
#include "platform/win32.h"

// Asks where to go; none: the user canceled, or the dialog could not be shown.
std::optional<GoToAnswer> RunGoTo(HWND owner, const GoToLimits& limits);
