// What belongs to each command number: its textual name, label and keys, whether it needs an open file, when
// its menu item is live and when it is ticked, and the routine that does its work. The one table that menu,
// accelerators, graying and dispatch read.
#pragma once

#include <algorithm>
#include <iterator>
#include <string>

#include "resources/command_ids.h"
#include "window/command_handlers.h"

// Runs a command; the result is that of WM_COMMAND.
using CommandHandler = LRESULT (*)(UINT id);
using CommandState = bool (*)();

enum class Needs { nothing, file };

// A key as an accelerator table has it: with FVIRTKEY a virtual key, else a typed control character. A key of
// 0 is none.
struct CommandKey {
  BYTE modifiers = 0;
  WORD key = 0;
};

struct Command {
  UINT id;
  const char* name;    // unique, for those who name a command in words
  const char* label;   // null: no menu item, or one whose text is made at run time
  CommandKey keys[5];  // the first stands in the menu
  Needs needs;
  CommandState isLive;    // the menu item is not gray; null: always
  CommandState isTicked;  // null: never
  CommandHandler handler;

  // How the menu writes the first key; empty: there is none.
  [[nodiscard]] std::string KeyText() const;
};

// How the menu writes a key, as "Ctrl+Sh+F2".
[[nodiscard]] std::string KeyTextOf(const CommandKey& key);

namespace command_keys {
constexpr CommandKey Ctrl(char letter) {
  return {0, static_cast<WORD>(letter - '@')};
}
constexpr CommandKey Key(int modifiers, int key) {
  return {static_cast<BYTE>(FVIRTKEY | modifiers), static_cast<WORD>(key)};
}
}  // namespace command_keys

namespace command_table {
using command_keys::Ctrl;
using command_keys::Key;

// clang-format off
inline constexpr Command kRows[] = {
    {IDM_OPEN, "open", "&Open...", {Key(FCONTROL, VK_F12)}, Needs::nothing, nullptr, nullptr, OpenDialogCommand},
    {IDM_PRINT, "print", "&Print...", {Key(FCONTROL | FSHIFT, VK_F12)}, Needs::file, FileIsOpen, nullptr, PrintCommand},
    {IDM_PRINT_SETUP, "print-setup", "P&rint Setup...", {}, Needs::nothing, nullptr, nullptr, PrintSetupCommand},
    {IDM_PAGE_SETUP, "page-setup", "Page Se&tup...", {}, Needs::nothing, nullptr, nullptr, PageSetupCommand},
    {IDM_PRINT_PAGE, "print-page", "Print Pa&ge", {Ctrl('P')}, Needs::file, FileIsOpen, nullptr, PrintCommand},
    {IDM_IGNORE_DDE, "ignore-dde", "Ignore &DDE", {}, Needs::nothing, nullptr, IgnoresDde, IgnoreDdeCommand},
    {IDM_EXIT, "exit", "E&xit", {Ctrl('Q')}, Needs::nothing, nullptr, nullptr, ExitCommand},
    {IDM_PRINT_FILE, "print-file", nullptr, {}, Needs::file, nullptr, nullptr, PrintCommand},
    {IDM_PRINT_TAGS, "print-tags", "Print T&ags...", {}, Needs::file, TagsAreSet, nullptr, PrintCommand},
    {IDM_PRINT_TAGS_NOW, "print-tags-now", nullptr, {}, Needs::file, nullptr, nullptr, PrintCommand},
    {IDM_CLOSE, "close", "&Close", {}, Needs::file, FileIsOpen, nullptr, CloseFileCommand},
    {IDM_MARK_TOGGLE, "mark-toggle", "&Toggle", {Key(FCONTROL, VK_F2), Key(0, VK_F11)}, Needs::file, FileIsOpen, nullptr, MarkToggleCommand},
    {IDM_MARK_NEXT, "mark-next", "&Next", {Key(0, VK_F2)}, Needs::file, FileIsOpen, nullptr, MarkNextCommand},
    {IDM_UNMARK_ALL, "unmark-all", "&Unmark All", {Key(FCONTROL | FSHIFT, VK_F2)}, Needs::file, FileIsOpen, nullptr, UnmarkAllCommand},
    {IDM_MARK_SET, "mark-set", "&Set", {}, Needs::file, FileIsOpen, nullptr, MarkSetCommand},
    {IDM_MARK_RESET, "mark-reset", "&Reset", {}, Needs::file, FileIsOpen, nullptr, MarkResetCommand},
    {IDM_FREEZE_TITLE, "freeze-title", "&Freeze Title", {}, Needs::file, FileIsOpen, nullptr, FreezeTitleCommand},
    {IDM_CLEAR_TITLE, "clear-title", "&Clear Title", {}, Needs::file, FileIsOpen, nullptr, ClearTitleCommand},
    {IDM_FREEZE_COLUMNS, "freeze-columns", "Fre&eze Columns...", {}, Needs::nothing, FileIsOpen, nullptr, FreezeColumnsCommand},
    {IDM_CLEAR_COLUMNS, "clear-columns", "Cle&ar Columns", {}, Needs::nothing, FileIsOpen, nullptr, ClearColumnsCommand},
    {IDM_HELP_CONTENTS, "help-contents", "&Contents", {Key(FCONTROL, VK_F1)}, Needs::nothing, nullptr, nullptr, HelpCommand},
    {IDM_HELP_KEYBOARD, "help-keyboard", "&Keyboard", {Key(0, VK_F1)}, Needs::nothing, nullptr, nullptr, HelpCommand},
    {IDM_HELP_ON_HELP, "help-on-help", "&Help on help", {}, Needs::nothing, nullptr, nullptr, HelpCommand},
    {IDM_ABOUT, "about", "&About...", {}, Needs::nothing, nullptr, nullptr, AboutCommand},
    {IDM_FIND_TEXT, "find-text", "&Find Text...", {Key(FSHIFT, VK_F3), Ctrl('F')}, Needs::file, FileIsOpen, nullptr, FindDialogCommand},
    {IDM_FIND_HEX, "find-hex", "Find &Hex...", {Key(FCONTROL, VK_F3)}, Needs::file, FileIsOpen, nullptr, FindDialogCommand},
    {IDM_FIND_NEXT, "find-next", "Find &Next", {Key(0, VK_F3)}, Needs::file, SearchCanGoOn, nullptr, FindNextCommand},
    {IDM_FIND_MARK_ALL, "find-mark-all", nullptr, {}, Needs::file, nullptr, nullptr, FindMarkAllCommand},
    {IDM_GOTO, "goto", "&Go To...", {Key(0, VK_F5), Ctrl('G')}, Needs::file, FileIsOpen, nullptr, GoToCommand},
    {IDM_OPTIONS, "options", "&Options...", {Ctrl('O')}, Needs::nothing, nullptr, nullptr, OptionsCommand},
    {IDM_FONT, "font", "&Font...", {}, Needs::nothing, nullptr, nullptr, FontCommand},
    {IDM_COLORS, "colors", "Co&lor...", {}, Needs::nothing, nullptr, nullptr, ColorsCommand},
    {IDM_SAVE_OPTIONS, "save-options", "S&ave Options...", {}, Needs::nothing, ProfileMayBeWritten, nullptr, SaveOptionsCommand},
    {IDM_SAVE_SETUP, "save-setup", "Sa&ve Setup...", {}, Needs::nothing, ProfileMayBeWritten, nullptr, SaveSetupCommand},
    {IDM_LOAD_SETUP, "load-setup", "Loa&d Setup...", {}, Needs::nothing, nullptr, nullptr, LoadSetupCommand},
    {IDM_RELOAD_SETUP, "reload-setup", nullptr, {}, Needs::nothing, nullptr, nullptr, LoadSetupCommand},
    {IDM_COPY, "copy", "&Copy", {Ctrl('C'), Key(FCONTROL, VK_INSERT)}, Needs::file, FileIsOpen, nullptr, CopyCommand},
    {IDM_SELECT_ALL, "select-all", "&Select All", {Ctrl('A')}, Needs::file, FileIsOpen, nullptr, SelectAllCommand},
    {IDM_UNSELECT, "unselect", "&Unselect", {}, Needs::file, FileIsOpen, nullptr, UnselectCommand},
    {IDM_RECENT1, "recent1", nullptr, {}, Needs::nothing, nullptr, nullptr, OpenRecentCommand},
    {IDM_RECENT2, "recent2", nullptr, {}, Needs::nothing, nullptr, nullptr, OpenRecentCommand},
    {IDM_RECENT3, "recent3", nullptr, {}, Needs::nothing, nullptr, nullptr, OpenRecentCommand},
    {IDM_RECENT4, "recent4", nullptr, {}, Needs::nothing, nullptr, nullptr, OpenRecentCommand},
    {IDM_TEXT, "text", "&Text", {Ctrl('T')}, Needs::nothing, nullptr, ShowsText, FormatCommand},
    {IDM_HEX, "hex", "&Hex", {Ctrl('H')}, Needs::nothing, nullptr, ShowsHex, FormatCommand},
    {IDM_RAW, "raw", "&Raw Text", {Ctrl('R')}, Needs::nothing, nullptr, ShowsRaw, FormatCommand},
    {IDM_WRAP, "wrap", "&Wrap", {Ctrl('W')}, Needs::nothing, nullptr, Wraps, WrapCommand},
    {IDM_NEXT_CODE, "next-code", "Next C&ode", {Ctrl('U')}, Needs::nothing, nullptr, nullptr, NextCodeCommand},
    {IDM_CODE_AUTOMATIC, "code-automatic", "A&utomatic", {}, Needs::nothing, nullptr, UsesAutomatic, CodeCommand},
    {IDM_CODE_ANSI, "code-ansi", "&ANSI", {}, Needs::nothing, nullptr, UsesAnsi, CodeCommand},
    {IDM_CODE_ASCII, "code-ascii", "A&SCII", {}, Needs::nothing, nullptr, UsesAscii, CodeCommand},
    {IDM_CODE_EBCDIC, "code-ebcdic", "&EBCDIC", {}, Needs::nothing, nullptr, UsesEbcdic, CodeCommand},
    {IDM_CODE_UTF8, "code-utf8", "UTF-&8", {}, Needs::nothing, nullptr, UsesUtf8, CodeCommand},
    {IDM_CODE_UTF16LE, "code-utf16le", "UTF-16&LE", {}, Needs::nothing, nullptr, UsesUtf16Le, CodeCommand},
    {IDM_CODE_UTF16BE, "code-utf16be", "UTF-16&BE", {}, Needs::nothing, nullptr, UsesUtf16Be, CodeCommand},
    {IDM_FORMAT_LIST, "format-list", nullptr, {}, Needs::nothing, nullptr, nullptr, FormatListCommand},
    {IDM_CODE_LIST, "code-list", nullptr, {}, Needs::nothing, nullptr, nullptr, CodeListCommand},
    {IDM_RELOAD, "reload", "Re&load", {Key(FCONTROL, VK_F5)}, Needs::file, FileIsOpen, nullptr, ReloadCommand},
    {IDM_STATUS_LINE, "status-line", "&Status Line", {}, Needs::nothing, nullptr, StatusLineShown, StatusLineCommand},
    {IDM_ON_TOP, "on-top", "Alwa&ys on Top", {}, Needs::nothing, nullptr, StaysOnTop, OnTopCommand},
    {IDM_ON_TOP_SET, "on-top-set", nullptr, {}, Needs::nothing, nullptr, nullptr, OnTopCommand},
    {IDM_ZOOM_IN, "zoom-in", "Zoom &In", {Key(FCONTROL | FSHIFT, 'Z'), Key(FCONTROL, VK_OEM_PLUS), Key(FCONTROL | FSHIFT, VK_OEM_PLUS), Key(FCONTROL, VK_ADD)}, Needs::nothing, nullptr, IsLarger, ZoomCommand},
    {IDM_ZOOM_OUT, "zoom-out", "Zoom &Out", {Key(FCONTROL, 'Z'), Key(FCONTROL, VK_OEM_MINUS), Key(FCONTROL, VK_SUBTRACT)}, Needs::nothing, nullptr, IsSmaller, ZoomCommand},
    {IDM_ZOOM_RESET, "zoom-reset", "&Reset Zoom", {Key(FCONTROL | FALT, 'Z'), Key(FCONTROL, '0')}, Needs::nothing, nullptr, nullptr, ZoomCommand},
};
// clang-format on
}  // namespace command_table

inline constexpr auto& kCommands = command_table::kRows;

[[nodiscard]] constexpr bool IsCommand(UINT id) {
  return std::ranges::count(kCommands, id, &Command::id) > 0;
}

// The row of a command; null for a number that is no command.
[[nodiscard]] constexpr const Command* FindCommand(UINT id) {
  const auto* row = std::ranges::find(kCommands, id, &Command::id);
  return row == std::end(kCommands) ? nullptr : row;
}
