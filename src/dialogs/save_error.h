// How a dialog answers a save that failed: it says why, and stays open.
#pragma once

#include <string>

#include "platform/file.h"
#include "platform/win32.h"

// True when `error` is 0. Else the user is shown a beep and a box, both of a stop sign: what could not be
// saved, in which profile, and the system's reason.
bool CheckSave(HWND dialog, const char* what, const char* caption, const std::string& profile,
               FileError error);
