// The dialog that saves groups of options as a named setup. It stays open when they could not be saved.
#pragma once

#include <functional>
#include <string>

#include "platform/file.h"
#include "platform/win32.h"
#include "settings/profile_place.h"

// Runs the dialog. `section` is that of the current setup, `groups` the mask that its boxes begin with.
// `save` writes the setup of the section and with the groups that the user chose, and gives 0 or why it
// failed. The result of the dialog: 1 when it saved.
INT_PTR RunSaveSetup(HWND owner, const ProfilePlace& place, const char* section, std::int32_t groups,
                     const std::function<FileError(const std::string& section, std::int32_t groups)>& save);
