// The numbers of the commands: the program's one internal verb, whatever a command comes from (menu, key,
// another command, another program). What belongs to each number is the table in window/command_table.h.
#pragma once

#include "platform/win32.h"

inline constexpr UINT IDM_OPEN = 101;
inline constexpr UINT IDM_PRINT = 103;
inline constexpr UINT IDM_PRINT_SETUP = 104;
inline constexpr UINT IDM_PAGE_SETUP = 105;
inline constexpr UINT IDM_PRINT_PAGE = 106;
inline constexpr UINT IDM_IGNORE_DDE = 107;
inline constexpr UINT IDM_EXIT = 108;
inline constexpr UINT IDM_PRINT_FILE = 109;
inline constexpr UINT IDM_PRINT_TAGS = 110;
inline constexpr UINT IDM_PRINT_TAGS_NOW = 111;
inline constexpr UINT IDM_CLOSE = 112;
inline constexpr UINT IDM_MARK_TOGGLE = 131;
inline constexpr UINT IDM_MARK_NEXT = 132;
inline constexpr UINT IDM_UNMARK_ALL = 133;
inline constexpr UINT IDM_MARK_SET = 134;
inline constexpr UINT IDM_MARK_RESET = 135;
inline constexpr UINT IDM_FREEZE_TITLE = 136;
inline constexpr UINT IDM_CLEAR_TITLE = 137;
inline constexpr UINT IDM_FREEZE_COLUMNS = 138;
inline constexpr UINT IDM_CLEAR_COLUMNS = 139;
inline constexpr UINT IDM_HELP_CONTENTS = 141;
inline constexpr UINT IDM_HELP_KEYBOARD = 142;
inline constexpr UINT IDM_HELP_ON_HELP = 143;
inline constexpr UINT IDM_ABOUT = 144;
inline constexpr UINT IDM_FIND_TEXT = 151;
inline constexpr UINT IDM_FIND_HEX = 152;
inline constexpr UINT IDM_FIND_NEXT = 153;
inline constexpr UINT IDM_FIND_MARK_ALL = 154;
inline constexpr UINT IDM_GOTO = 155;
inline constexpr UINT IDM_OPTIONS = 161;
inline constexpr UINT IDM_FONT = 162;
inline constexpr UINT IDM_COLORS = 163;
inline constexpr UINT IDM_SAVE_OPTIONS = 164;
inline constexpr UINT IDM_SAVE_SETUP = 165;
inline constexpr UINT IDM_LOAD_SETUP = 166;
inline constexpr UINT IDM_RELOAD_SETUP = 167;
inline constexpr UINT IDM_COPY = 171;
inline constexpr UINT IDM_SELECT_ALL = 172;
inline constexpr UINT IDM_UNSELECT = 173;
inline constexpr UINT IDM_RECENT1 = 201;
inline constexpr UINT IDM_RECENT2 = 202;
inline constexpr UINT IDM_RECENT3 = 203;
inline constexpr UINT IDM_RECENT4 = 204;
inline constexpr UINT IDM_TEXT = 311;
inline constexpr UINT IDM_HEX = 312;
inline constexpr UINT IDM_RAW = 313;
inline constexpr UINT IDM_WRAP = 314;
inline constexpr UINT IDM_ON_TOP = 315;
inline constexpr UINT IDM_ON_TOP_SET = 316;
inline constexpr UINT IDM_ZOOM_IN = 317;
inline constexpr UINT IDM_ZOOM_OUT = 318;
inline constexpr UINT IDM_ZOOM_RESET = 319;
inline constexpr UINT IDM_NEXT_CODE = 320;
