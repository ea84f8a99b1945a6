// The routines behind the commands that no other unit of the window owns. Each takes the command's number
// and returns the result of WM_COMMAND.
#pragma once

#include "platform/win32.h"
#include "window/about.h"
#include "window/clipboard.h"
#include "window/color_dialog.h"
#include "window/columns.h"
#include "window/find_commands.h"
#include "window/fonts.h"
#include "window/goto_dialog.h"
#include "window/marking.h"
#include "window/opening.h"
#include "window/save_options.h"
#include "window/titles.h"

LRESULT ExitCommand(UINT id);

// Opens the help book at its contents, or at the keys.
LRESULT HelpCommand(UINT id);

// Switches to the format of the command; each format keeps an option word of its own.
LRESULT FormatCommand(UINT id);

LRESULT WrapCommand(UINT id);

// Toggles "always on top", or sets it.
LRESULT OnTopCommand(UINT id);

// Loads the setup that SetupSection names, without a dialog.
LRESULT ReloadSetupCommand(UINT id);
