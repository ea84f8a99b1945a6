// The private messages of the main window. `wParam` is a signed count of lines and `lParam` a file position
// or -1 where a message moves the view; `lParam` points to a zero-terminated path where it opens a file.
// The numbers 1035 to 1038 are those of the page index.
#pragma once

#include "pageindex/page_index.h"
#include "platform/win32.h"

inline constexpr UINT WM_VIEW_LOAD = 1025;      // move, and always load
inline constexpr UINT WM_VIEW_MOVE = 1026;      // move, and load if the lines at hand do not serve
inline constexpr UINT WM_VIEW_LAYOUT = 1027;    // recompute the layout; result 1 if a load was posted
inline constexpr UINT WM_VIEW_FONT = 1028;      // build and measure the view font
inline constexpr UINT WM_FILE_TRY = 1029;       // open if it can be found; wParam 1: else ask. Result 1 or 0
inline constexpr UINT WM_FILE_OPEN = 1030;      // make it the file of the view
inline constexpr UINT WM_FILE_START = 1031;     // open the first file or end the program. Result 1 or 0
inline constexpr UINT WM_VIEW_SELECT = 1032;    // begin a selection: mouse keys, point
inline constexpr UINT WM_VIEW_EXTEND = 1033;    // extend the selection: mouse keys, point
inline constexpr UINT WM_VIEW_UNSELECT = 1034;  // forget the selection
inline constexpr UINT WM_FILE_PLACE = 1040;     // show what the command line asks for in the first file
inline constexpr UINT WM_VIEW_GOTO = 1039;      // load at the exact position
inline constexpr UINT WM_VIEW_CODE = 1041;      // tell the user which code was chosen
