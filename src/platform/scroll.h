// The vertical scroll bar over a whole file: range, position and thumb are file positions at full width,
// scaled inside the layer to what the toolkit holds, so that a drag reaches any place of a huge file.
// Operations of this layer's own; the horizontal bar takes the same road with smaller numbers. A range of
// 0 takes a bar off the screen.
#pragma once

#include <cstdint>

#include "platform/win32.h"

// `bar` is SB_VERT or SB_HORZ. Sets the range 0 to `top` and the position (at most `top`) of a bar of
// `window`, and shows or hides it. `page` is the part of the range that one screen shows, for the size of
// the thumb; 0 leaves it to the toolkit.
void SetScrollBar(HWND window, int bar, std::int64_t top, std::int64_t position, std::int64_t page);

// The upper bound of the bar's range, 0 when the bar is off the screen.
[[nodiscard]] std::int64_t ScrollBarTop(HWND window, int bar);

// Where the thumb stands, 0 to ScrollBarTop: what SB_THUMBPOSITION and SB_THUMBTRACK speak of.
[[nodiscard]] std::int64_t ScrollBarThumb(HWND window, int bar);
