// Moves of the view: for each one, whether the run of lines at hand will do or the loader must rebuild it.
// Nothing else changes Acur but the loader and the error page. The hard idea: a move is counted in lines,
// but its target line may lie outside the run, so a long move goes in steps, each from the line of the run
// that is nearest to the target, until the target line is at hand. A move on a readable file never ends on
// the error page.
#pragma once

#include <cstdint>

#include "platform/win32.h"

// Rows of text that the client area holds below the titles; 0 if there is none.
[[nodiscard]] std::int32_t TextRows();

// Keeps TextRows, but at least 1, in LinesPerScreen.
void UpdateLinesPerScreen();

// WM_VIEW_LOAD, WM_VIEW_MOVE and WM_VIEW_GOTO: moves by `delta` lines, or with `position` 0 or more to the
// line that holds that file offset. The messages differ in when they load: always; only if the lines at hand
// do not serve; always and from that very byte. Result 0.
LRESULT MoveView(UINT message, WPARAM delta, LPARAM position);

// Recomputes rows, line width and scroll steps. Posts a load and returns 1 if the lines must be formatted
// anew; else 0. A resized window asks less often for it than a change of options: `resized`.
LRESULT LayoutView(bool resized);

// After a change of options: lays out, and rebuilds the lines from the same top line, exactly once.
void ReformatView();

// WM_SIZE. True when the default procedure is to have the message.
[[nodiscard]] bool ResizeView(WPARAM kind, LPARAM size);
