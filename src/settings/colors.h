// The colors of the screen and the shades of printed pages: one table of slots. Most screen colors
// begin as the desktop's own. Knows no window; who changes a slot repaints.
#pragma once

#include <iterator>

#include "platform/file.h"
#include "platform/win32.h"

// Slots of the table. Window colors come first, print shades behind them.
enum ColorSlot : int {
  WindowText,
  WindowBgnd,
  TagText,
  TagBgnd,
  HeadingText,
  HeadingBgnd,
  MessageText,
  MessageBgnd,
  CommentText,
  CommentBgnd,
  Background,
  HitText,
  HitBgnd,
  OtherHitText,
  OtherHitBgnd,
  PrintText,
  PrintTextB,
  PrintTag,
  PrintTagB,
  PrintHead,
  PrintHeadB,
  PrintCmnt,
  PrintCmntB,
  PrintBgnd,
  kColorSlots
};
inline constexpr int kWindowColors = PrintText;

// What belongs to a slot: its profile key, its name in the color dialog (null for the shades), and its
// default, which is a system color where `systemColor` is not kNoSystemColor and else `value`.
inline constexpr int kNoSystemColor = -1;
struct ColorSlotInfo {
  const char* key;
  const char* name;
  int systemColor;
  COLORREF value;
};
inline constexpr ColorSlotInfo kColorSlotInfos[] = {
    {"WindowText", "Text line", COLOR_WINDOWTEXT, 0},
    {"WindowBgnd", "Text background", COLOR_WINDOW, 0},
    {"TagText", "Tagged line", COLOR_HIGHLIGHTTEXT, 0},
    {"TagBgnd", "Tagged background", COLOR_HIGHLIGHT, 0},
    {"HeadingText", "Title line", COLOR_MENUTEXT, 0},
    {"HeadingBgnd", "Title background", COLOR_MENU, 0},
    {"MessageText", "Error message", kNoSystemColor, 0x000000},
    {"MessageBgnd", "Error background", kNoSystemColor, 0x0000FF},
    {"CommentText", "Information text", kNoSystemColor, 0x000000},
    {"CommentBgnd", "Information background", kNoSystemColor, 0x00FF00},
    {"Background", "Window background", COLOR_APPWORKSPACE, 0},
    {"HitText", "Hit of a search", kNoSystemColor, 0x000000},
    {"HitBgnd", "Hit background", kNoSystemColor, 0x00A5FF},
    {"OtherHitText", "Other hit", kNoSystemColor, 0x000000},
    {"OtherHitBgnd", "Other hit background", kNoSystemColor, 0xA0F0FF},
    {"PrintText", nullptr, kNoSystemColor, 0x000000},
    {"PrintTextB", nullptr, kNoSystemColor, 0xFFFFFF},
    {"PrintTag", nullptr, kNoSystemColor, 0x000000},
    {"PrintTagB", nullptr, kNoSystemColor, 0xC0C0C0},
    {"PrintHead", nullptr, kNoSystemColor, 0x000000},
    {"PrintHeadB", nullptr, kNoSystemColor, 0xE0E0E0},
    {"PrintCmnt", nullptr, kNoSystemColor, 0xFFFFFF},
    {"PrintCmntB", nullptr, kNoSystemColor, 0x000000},
    {"PrintBgnd", nullptr, kNoSystemColor, 0xE0E0E0},
};
static_assert(std::size(kColorSlotInfos) == kColorSlots);

// Colors are 0 to this; of a number in the profile, the bits above it do not count.
inline constexpr COLORREF kMostColor = 0xFFFFFF;

extern COLORREF ColorTable[kColorSlots];

// Selectors of ResetColors beside the single slots.
inline constexpr int COLORS_WINDOW = -1;
inline constexpr int COLORS_PRINT = -2;

// The desktop's colors have changed: the window colors of `table` that are still what `defaults` says become
// the defaults of this moment, and so does `defaults`.
void FollowDesktopColors(COLORREF* table, COLORREF* defaults);

// Load and save of a group in a section of the profile: the slots of ColorTable, as decimal numbers. A key
// is written only for a slot that differs from its default of this moment, and deleted else, so that a color
// left at the desktop's own goes on following it; a load gives every slot of the group a value. A load gives
// 1; a save 0, or why it failed.
int LoadWindowColors(const char* profile, const char* section);
int LoadPrintShades(const char* profile, const char* section);
[[nodiscard]] FileError SaveWindowColors(const char* profile, const char* section);
[[nodiscard]] FileError SavePrintShades(const char* profile, const char* section);

// Puts the defaults of this moment into `table` (kColorSlots entries): one slot, or a group. Result 1.
int ResetColors(int selector, COLORREF* table);
