// The Save Options dialog: which groups of options are saved, go back to their defaults at the next start, or
// stay as the profile holds them. It stays open when they could not be saved.
#pragma once

#include <functional>

#include "platform/file.h"
#include "platform/win32.h"
#include "setups/setups.h"

// Runs the dialog. `save` does what was chosen, and gives 0 or why it failed; `profile` is the file that it
// writes, for the words of the box. The result of the dialog: 1 when it saved.
INT_PTR RunSaveOptions(HWND owner, const std::string& profile,
                       const std::function<FileError(const SaveChoice&)>& save);
