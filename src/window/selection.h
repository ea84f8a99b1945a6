// Selecting lines with the mouse. The selection is a byte range of the file, never rows, so that it survives
// scrolling and formatting anew; its ends are line starts. While the button is held near the top or the
// bottom of the text, a timer scrolls the view and the selection follows. The hard idea: a change of the
// selection is drawn by inverting the rows that changed, and a row must be inverted exactly when painting it
// anew would invert it.
#pragma once

#include "platform/win32.h"

// Timers of a drag: scrolling up and scrolling down. Only one of them runs.
inline constexpr UINT_PTR kScrollUpTimer = 1;
inline constexpr UINT_PTR kScrollDownTimer = 2;

// WM_VIEW_SELECT and WM_VIEW_EXTEND: begin the selection at the line under the point, and extend it to that
// line. `point` is packed as in the mouse messages. Result 0.
LRESULT SelectFrom(LPARAM point);
LRESULT ExtendSelection(LPARAM point);

// WM_VIEW_UNSELECT: forgets the selection; who had one on the screen repaints. Result 0.
LRESULT Unselect();

// The mouse messages. False when the default procedure is to have the message.
[[nodiscard]] bool LeftButtonDown(WPARAM keys, LPARAM point);
[[nodiscard]] bool MouseMoved(WPARAM keys, LPARAM point);
[[nodiscard]] bool DoubleClick(LPARAM point);
void LeftButtonUp();
void RightButtonDown();

// A tick of one of the timers of a drag.
void AutoScroll(UINT_PTR timer);
