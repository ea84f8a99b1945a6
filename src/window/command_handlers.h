// The routines behind the commands that no other unit of the window owns. Each takes the command's number
// and returns the result of WM_COMMAND.
#pragma once

#include "platform/win32.h"
#include "window/clipboard.h"
#include "window/columns.h"
#include "window/files/opening.h"
#include "window/find_commands.h"
#include "window/fonts.h"
#include "window/go_to.h"
#include "window/marking.h"
#include "window/printing/page_setup.h"
#include "window/printing/print_file.h"
#include "window/printing/print_job.h"
#include "window/reading/status.h"
#include "window/service/service.h"
#include "window/setups.h"
#include "window/titles.h"

LRESULT ExitCommand(UINT id);

LRESULT AboutCommand(UINT id);

// The help book at its contents, its page of keys, or the page that tells how to use it.
LRESULT HelpCommand(UINT id);

// The Display Formatting dialog, then a new layout. The dialog's result.
LRESULT OptionsCommand(UINT id);

// The Color Selection dialog, then a repaint. The dialog's result.
LRESULT ColorsCommand(UINT id);

// Switches to the format of the command; each format keeps an option word of its own.
LRESULT FormatCommand(UINT id);

LRESULT WrapCommand(UINT id);
LRESULT NextCodeCommand(UINT id);

// The code of the command.
LRESULT CodeCommand(UINT id);

// Reads the file anew at the same place.
LRESULT ReloadCommand(UINT id);

// Toggles "always on top", or sets it.
LRESULT OnTopCommand(UINT id);

// When items of the menu are live.
[[nodiscard]] bool FileIsOpen();
[[nodiscard]] bool SearchCanGoOn();
[[nodiscard]] bool TagsAreSet();
[[nodiscard]] bool ProfileMayBeWritten();

// When items of the menu are ticked.
[[nodiscard]] bool IgnoresDde();
[[nodiscard]] bool ShowsText();
[[nodiscard]] bool ShowsHex();
[[nodiscard]] bool ShowsRaw();
[[nodiscard]] bool Wraps();
[[nodiscard]] bool UsesAutomatic();
[[nodiscard]] bool UsesAnsi();
[[nodiscard]] bool UsesAscii();
[[nodiscard]] bool UsesEbcdic();
[[nodiscard]] bool UsesUtf8();
[[nodiscard]] bool UsesUtf16Le();
[[nodiscard]] bool UsesUtf16Be();
[[nodiscard]] bool StaysOnTop();
[[nodiscard]] bool IsLarger();
[[nodiscard]] bool IsSmaller();
