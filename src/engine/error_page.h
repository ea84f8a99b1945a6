// The page that stands in the view when a load has failed: the status and the numbers of the records, made
// in the view's own buffers, so that it needs nothing that may have failed.
#pragma once

#include "engine/view_records.h"

// Replaces the run by the error page; the file stays open. Result 0.
ViewStatus ShowErrorPage(ViewStatus status, const ViewFile& file, LineArray& lines, TextBuffer& text);

// Appends one line, made from a printf format and its values, at Acur. Never writes outside the text
// buffer: a line that does not fit is cut. VS_FAILED, with nothing done, if Acur lies outside 0 to Acnt - 1
// or Tend outside 0 to Tlen - 1; else 0.
[[gnu::format(printf, 3, 4)]] ViewStatus AddErrorLine(LineArray& lines, TextBuffer& text, const char* format,
                                                      ...);
