// Makes the run of lines around a place in the file: one pass of a format routine forward and one backward,
// so that the user finds lines on both sides of the top line. Rows do not depend on the place that a load
// started from: neighbouring rows are neighbouring bytes, and the row that holds a byte is always the same.
#pragma once

#include "engine/slice_lines.h"
#include "engine/view_records.h"

// What run is wanted.
struct LoadRequest {
  FilePos pos = 0;          // the place to go to; at or behind the file's end: the end
  std::int32_t below = -1;  // below 0: the row that holds `pos` is to be the top line. Else the top line is
                            // to be this many rows above `pos`, which begins a row
  std::int32_t rows = 1;    // rows of the screen, one that is cut at the bottom included
  std::int32_t above = 2;   // rows wanted above the top line, if the file has them
  LineStyle style;
};

// Rebuilds `lines` and `text` from the file that `source` has open. On success 0: Acur is the top line, 0 <=
// Afirst <= Acur <= Alast < Acnt, Acur < Alast unless the file shows no line, the sentinel ends the last
// line, and file.Flen and file.Fid say what the file is. Unless the file ends there, `rows` rows stand from
// the top line on. On failure VS_FAILED with further bits, and the run is half-built; the source knows the
// reason.
[[nodiscard]] ViewStatus LoadView(const LoadRequest& request, ByteSource& source, ViewFile& file,
                                  LineArray& lines, TextBuffer& text);
