// Options in force as the window's commands save and load them: by group, and as named setups.
#pragma once

#include <string_view>

#include "platform/file.h"
#include "platform/win32.h"
#include "setups/setups.h"

// Saves and resets what `choice` says, in one replacement of the profile. 0, or why it failed; then the
// profile is as it was.
[[nodiscard]] FileError SaveOptions(const SaveChoice& choice);

// Makes the setup of `section` the current one. False, and nothing happens, when the name is too long.
bool NameSetup(std::string_view section);

// A line on stderr when the profile does not hold the current setup. It loads all the same, as defaults.
void TellOfUnknownSetup();

// The commands, with their dialogs. Result 1, also when the user gives up.
LRESULT SaveOptionsCommand(UINT id);
LRESULT SaveSetupCommand(UINT id);

// Loads a setup, and applies what is in force then, also when the user gives up: IDM_LOAD_SETUP asks which
// one, and results in 1 when one was loaded; IDM_RELOAD_SETUP takes the current one. Nothing happens when
// there is no memory for titles, after the user has been told.
LRESULT LoadSetupCommand(UINT id);
