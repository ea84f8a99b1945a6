// The menu bar as data: the pull-downs and the commands of their items. The labels are those of the command
// table; the recent files join the first pull-down at run time.
#pragma once

#include <span>

#include "resources/command_ids.h"

// An item that is no command but a line between groups.
inline constexpr UINT kSeparator = 0;

// Menus within menus stand among the items by numbers that no command has.
inline constexpr UINT kFormatsSubMenu = 1001;  // in no pull-down: it stands by itself
inline constexpr UINT kCodesSubMenu = 1002;

struct PullDown {
  const char* label;
  std::span<const UINT> items;
};

namespace menu_items {
inline constexpr UINT kFile[] = {IDM_OPEN,        IDM_CLOSE,      IDM_PRINT,      IDM_PAGE_SETUP,
                                 IDM_PRINT_SETUP, IDM_PRINT_PAGE, IDM_PRINT_TAGS, kSeparator,
                                 IDM_IGNORE_DDE,  kSeparator,     IDM_EXIT};
inline constexpr UINT kEdit[] = {IDM_COPY,     IDM_SELECT_ALL, IDM_UNSELECT, kSeparator, IDM_FIND_TEXT,
                                 IDM_FIND_HEX, IDM_FIND_NEXT,  kSeparator,   IDM_GOTO};
inline constexpr UINT kFormats[] = {IDM_TEXT, IDM_HEX, IDM_RAW, kSeparator, IDM_WRAP};
inline constexpr UINT kCodes[] = {IDM_CODE_AUTOMATIC, kSeparator,       IDM_CODE_ANSI,
                                  IDM_CODE_ASCII,     IDM_CODE_EBCDIC,  kSeparator,
                                  IDM_CODE_UTF8,      IDM_CODE_UTF16LE, IDM_CODE_UTF16BE};
inline constexpr UINT kView[] = {IDM_TEXT,      IDM_HEX,        IDM_RAW,    IDM_WRAP,        kCodesSubMenu,
                                 IDM_NEXT_CODE, kSeparator,     IDM_RELOAD, kSeparator,      IDM_ZOOM_OUT,
                                 IDM_ZOOM_IN,   IDM_ZOOM_RESET, kSeparator, IDM_STATUS_LINE, IDM_ON_TOP};
inline constexpr UINT kFormat[] = {IDM_OPTIONS,      IDM_FONT,       IDM_COLORS,    kSeparator,
                                   IDM_SAVE_OPTIONS, IDM_SAVE_SETUP, IDM_LOAD_SETUP};
inline constexpr UINT kMark[] = {IDM_MARK_TOGGLE, IDM_MARK_SET,  IDM_MARK_RESET,     IDM_UNMARK_ALL,
                                 kSeparator,      IDM_MARK_NEXT, kSeparator,         IDM_FREEZE_TITLE,
                                 IDM_CLEAR_TITLE, kSeparator,    IDM_FREEZE_COLUMNS, IDM_CLEAR_COLUMNS};
inline constexpr UINT kHelp[] = {IDM_HELP_CONTENTS, IDM_HELP_KEYBOARD, IDM_HELP_ON_HELP, kSeparator,
                                 IDM_ABOUT};
}  // namespace menu_items

struct SubMenu {
  UINT number;
  const char* label;
  std::span<const UINT> items;
};
inline constexpr SubMenu kSubMenus[] = {
    {kFormatsSubMenu, "&Format", menu_items::kFormats},
    {kCodesSubMenu, "&Character Code", menu_items::kCodes},
};

// Positions of the pull-downs in the bar.
inline constexpr int kFileMenu = 0;
inline constexpr int kEditMenu = 1;
inline constexpr int kViewMenu = 2;
inline constexpr int kFormatMenu = 3;
inline constexpr int kMarkMenu = 4;
inline constexpr int kHelpMenu = 5;

inline constexpr PullDown kMenuBar[] = {
    {"&File", menu_items::kFile},     {"&Edit", menu_items::kEdit}, {"&View", menu_items::kView},
    {"F&ormat", menu_items::kFormat}, {"&Mark", menu_items::kMark}, {"&Help", menu_items::kHelp},
};
