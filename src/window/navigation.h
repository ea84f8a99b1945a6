// Moves of the window's view: what a move asks for, what is drawn anew behind it, and what is said when it
// fails. Which line becomes the top line is decided by engine/view_moves.h; nothing else changes Acur but the
// error page. A move that fails, or that the user gives up, leaves the screen as it is.
#pragma once

#include <cstdint>

#include "platform/win32.h"
#include "window/view_loading.h"

// Rows of text that the client area holds below the titles; 0 if there is none.
[[nodiscard]] std::int32_t TextRows();

// Rows that show something, the cut one at the bottom included.
[[nodiscard]] std::int32_t VisibleRows();

// Keeps TextRows, but at least 1, in LinesPerScreen.
void UpdateLinesPerScreen();

// WM_VIEW_LOAD, WM_VIEW_MOVE and WM_VIEW_GOTO: moves by `delta` lines, or with `position` 0 or more to the
// line that holds that file offset. The messages differ in when they load: always; only if the lines at hand
// do not serve; always and from that very byte. Result 0.
LRESULT MoveView(UINT message, WPARAM delta, LPARAM position);

// The view shows what a load has made. Painting is up to the caller.
void ShowLoaded(LoadOutcome&& outcome);

// Recomputes rows, line width and scroll steps. Posts a load and returns 1 if the lines must be formatted
// anew; else 0. A resized window asks less often for it than a change of options: `resized`.
LRESULT LayoutView(bool resized);

// After a change of options: lays out, and rebuilds the lines from the same top line, exactly once.
void ReformatView();

// WM_SIZE. True when the default procedure is to have the message.
[[nodiscard]] bool ResizeView(WPARAM kind, LPARAM size);
