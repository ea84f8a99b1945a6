// The window's side of the page index: runs its messages and shows what went wrong. The timer is the window
// procedure's.
#pragma once

#include "pageindex/page_index.h"
#include "platform/win32.h"

// Runs one message of the page index on the file at `path`, with `owner` for the boxes that have one. Result:
// the new phase.
PageIndexPhase PageIndexDispatch(UINT message, HWND owner, PageIndexState& state, const char* path);

// The beep and the box of a fault, which is not none, met by `message` or by a lookup.
void ShowPageIndexFault(PageIndexFault fault, UINT message, HWND owner, const char* path);
