// The dialog in which the user chooses a named setup, or removes one from the profile.
#pragma once

#include <optional>
#include <string>

#include "platform/win32.h"
#include "settings/profile_place.h"

// What the user wants of the setups. `section` is that of the current setup, and becomes empty when that one
// was removed. The section of the setup to load; none: the user gave up, or the dialog could not be shown.
std::optional<std::string> RunLoadSetup(HWND owner, const ProfilePlace& place, std::string& section);
