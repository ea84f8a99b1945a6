// The window's side of the page index: has its steps run on the reader's thread while the program is idle,
// shows what went wrong, and finds pages for Go To. The timer is the window procedure's.
#pragma once

#include "pageindex/page_index.h"
#include "platform/win32.h"

// PG_START, PG_CONT, PG_STOP, PG_END. Result 0.
LRESULT RunPageIndex(UINT message);

// The user has done something: the next steps are the least ones.
void NotePageIndexInput();

// Begins anew when the code of the file has changed so that pages start elsewhere.
void MatchPageIndex();

// The pages that Go To can offer, in a file that now has the length File.Flen.
[[nodiscard]] PageIndexPages PagesToGoTo();

// Finds the place of a page in the file as it is now, with progress and Esc where it is not known yet. A
// place, or a negative result of PageIndexFind.
[[nodiscard]] FilePos FindPage(PageNumber page);
