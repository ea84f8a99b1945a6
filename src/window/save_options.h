// Saving the options in force, as a verb and as the command with its dialog.
#pragma once

#include "platform/file.h"
#include "platform/win32.h"
#include "setups/setups.h"

// Saves and resets what `choice` says, in one replacement of the profile. 0, or why it failed; then the
// profile is as it was.
[[nodiscard]] FileError SaveOptions(const SaveChoice& choice);

// Result 1, also when the user gives up.
LRESULT SaveOptionsCommand(UINT id);
