// What belongs to each command number: label, key text, whether it needs an open file, and the routine that
// does its work. The one table that the menu, the graying and the dispatch read. A command without a routine
// is not built yet: it is gray in the menu and does nothing.
#pragma once

#include <algorithm>
#include <iterator>

#include "resources/command_ids.h"
#include "window/command_handlers.h"

// Runs a command; the result is that of WM_COMMAND.
using CommandHandler = LRESULT (*)(UINT id);

enum class Needs { nothing, file };

struct Command {
  UINT id;
  const char* label;    // null: no menu item, or one whose text is made at run time
  const char* keyText;  // null: none
  Needs needs;
  CommandHandler handler;
};

inline constexpr Command kCommands[] = {
    {IDM_OPEN, "&Open...", "Ctrl+F12", Needs::nothing, OpenDialogCommand},
    {IDM_PRINT, "&Print...", "Ctrl+Sh+F12", Needs::file, nullptr},
    {IDM_PRINT_SETUP, "P&rint Setup...", nullptr, Needs::nothing, nullptr},
    {IDM_PAGE_SETUP, "Page Se&tup...", nullptr, Needs::nothing, nullptr},
    {IDM_PRINT_PAGE, "Print Pa&ge", "Ctrl+P", Needs::file, nullptr},
    {IDM_IGNORE_DDE, "Ignore &DDE", nullptr, Needs::nothing, nullptr},
    {IDM_EXIT, "E&xit", nullptr, Needs::nothing, ExitCommand},
    {IDM_PRINT_FILE, nullptr, nullptr, Needs::file, nullptr},
    {IDM_PRINT_TAGS, "Print T&ags...", nullptr, Needs::file, nullptr},
    {IDM_PRINT_TAGS_NOW, nullptr, nullptr, Needs::file, nullptr},
    {IDM_CLOSE, "&Close", nullptr, Needs::file, CloseFileCommand},
    {IDM_MARK_TOGGLE, "&Toggle", "Ctrl+F2", Needs::file, MarkToggleCommand},
    {IDM_MARK_NEXT, "&Next", "F2", Needs::file, MarkNextCommand},
    {IDM_UNMARK_ALL, "&Unmark All", "Ctrl+Sh+F2", Needs::file, UnmarkAllCommand},
    {IDM_MARK_SET, "&Set", nullptr, Needs::file, MarkSetCommand},
    {IDM_MARK_RESET, "&Reset", nullptr, Needs::file, MarkResetCommand},
    {IDM_FREEZE_TITLE, "&Freeze Title", nullptr, Needs::file, FreezeTitleCommand},
    {IDM_CLEAR_TITLE, "&Clear Title", nullptr, Needs::file, ClearTitleCommand},
    {IDM_FREEZE_COLUMNS, "Fre&eze Columns...", nullptr, Needs::nothing, FreezeColumnsCommand},
    {IDM_CLEAR_COLUMNS, "Cle&ar Columns", nullptr, Needs::nothing, ClearColumnsCommand},
    {IDM_HELP_CONTENTS, "&Contents", "Ctrl+F1", Needs::nothing, HelpCommand},
    {IDM_HELP_KEYBOARD, "&Keyboard", "F1", Needs::nothing, HelpCommand},
    {IDM_HELP_ON_HELP, "&Help on help", nullptr, Needs::nothing, nullptr},
    {IDM_ABOUT, "&About...", nullptr, Needs::nothing, AboutCommand},
    {IDM_FIND_TEXT, "&Find Text...", "Shift+F3", Needs::file, FindDialogCommand},
    {IDM_FIND_HEX, "Find &Hex...", "Ctrl+F3", Needs::file, FindDialogCommand},
    {IDM_FIND_NEXT, "Find &Next", "F3", Needs::file, FindNextCommand},
    {IDM_FIND_MARK_ALL, nullptr, nullptr, Needs::file, FindMarkAllCommand},
    {IDM_GOTO, "&Go To...", "F5", Needs::file, GoToCommand},
    {IDM_OPTIONS, "&Options...", "Ctrl+O", Needs::nothing, nullptr},
    {IDM_FONT, "&Font...", nullptr, Needs::nothing, FontCommand},
    {IDM_COLORS, "Co&lor...", nullptr, Needs::nothing, ColorsCommand},
    {IDM_SAVE_OPTIONS, "S&ave Options...", nullptr, Needs::nothing, SaveOptionsCommand},
    {IDM_SAVE_SETUP, "Sa&ve Setup...", nullptr, Needs::nothing, nullptr},
    {IDM_LOAD_SETUP, "Loa&d Setup...", nullptr, Needs::nothing, nullptr},
    {IDM_RELOAD_SETUP, nullptr, nullptr, Needs::nothing, ReloadSetupCommand},
    {IDM_COPY, "&Copy", "Ctrl+C", Needs::file, CopyCommand},
    {IDM_SELECT_ALL, "&Select All", nullptr, Needs::file, SelectAllCommand},
    {IDM_UNSELECT, "&Unselect", nullptr, Needs::file, UnselectCommand},
    {IDM_RECENT1, nullptr, nullptr, Needs::nothing, OpenRecentCommand},
    {IDM_RECENT2, nullptr, nullptr, Needs::nothing, OpenRecentCommand},
    {IDM_RECENT3, nullptr, nullptr, Needs::nothing, OpenRecentCommand},
    {IDM_RECENT4, nullptr, nullptr, Needs::nothing, OpenRecentCommand},
    {IDM_TEXT, "&Text", "Ctrl+T", Needs::nothing, FormatCommand},
    {IDM_HEX, "&Hex", "Ctrl+H", Needs::nothing, FormatCommand},
    {IDM_RAW, "&Raw Text", "Ctrl+R", Needs::nothing, FormatCommand},
    {IDM_WRAP, "&Wrap", "Ctrl+W", Needs::nothing, WrapCommand},
    {IDM_ON_TOP, "Alwa&ys on Top", nullptr, Needs::nothing, OnTopCommand},
    {IDM_ON_TOP_SET, nullptr, nullptr, Needs::nothing, OnTopCommand},
    {IDM_ZOOM_IN, "Zoom &In", "Ctrl+Sh+Z", Needs::nothing, ZoomCommand},
    {IDM_ZOOM_OUT, "Zoom &Out", "Ctrl+Z", Needs::nothing, ZoomCommand},
    {IDM_ZOOM_RESET, "&Reset Zoom", "Ctrl+Alt+Z", Needs::nothing, ZoomCommand},
};

[[nodiscard]] constexpr bool IsCommand(UINT id) {
  return std::ranges::count(kCommands, id, &Command::id) > 0;
}

// The row of a command; null for a number that is no command.
[[nodiscard]] constexpr const Command* FindCommand(UINT id) {
  const auto* row = std::ranges::find(kCommands, id, &Command::id);
  return row == std::end(kCommands) ? nullptr : row;
}
