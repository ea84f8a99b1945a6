// Scroll bars, keys and the wheel: what the user's hand asks for becomes moves of the view, posted one by
// one so that a burst of keys is worked off in order. Sideways nothing is formatted: lines are longer than
// the screen is wide.
#pragma once

#include <cstdint>

#include "platform/win32.h"

// WM_VSCROLL and WM_HSCROLL. VerticalScroll is false for a code that is the default procedure's.
[[nodiscard]] bool VerticalScroll(UINT code);
LRESULT HorizontalScroll(UINT code);

// Esc has just ended something else than the program: for half a second another one does nothing.
void NoteEscape();

// WM_KEYDOWN. False for a key that is the default procedure's.
[[nodiscard]] bool KeyDown(WPARAM key);

// WM_MOUSEWHEEL and WM_MOUSEHWHEEL: a notch scrolls as many lines as the desktop says, or with Shift, and
// on the second wheel, as many columns; with Ctrl it zooms. Parts of a notch add up. Result 0.
LRESULT TurnWheel(UINT message, WPARAM wParam);

// Moves sideways so that the columns `first` to `end` - 1 are to be seen, if they are not.
void ShowColumns(std::int32_t first, std::int32_t end);

// Sets both bars, at the end of each paint.
void UpdateScrollBars();
