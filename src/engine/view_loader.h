// Makes the run of lines around a place in the file: two passes of a format routine over two slices, one in
// the direction of travel and one the other way, so that the user finds lines on both sides of the top line.
#pragma once

#include "engine/view_records.h"

// Rebuilds `lines` and `text`. `pos`, if 0 or more, is the file offset to go to; if negative, line `cur` of
// the present run is to be the top line (it may lie below Afirst by up to `rows` lines; where that leaves no
// line of the run to start from, the nearest one is taken). `rows` is the number of text rows of the view,
// `lineLen` the longest line in characters. On success 0: Acur is the top line, 0 <= Afirst <= Acur <=
// Alast < Acnt, Acur < Alast unless no line could be made, and the sentinel ends the last line. On failure
// VS_FAILED with further bits, and the run is half-built.
[[nodiscard]] ViewStatus LoadView(FilePos pos, std::int32_t cur, std::int32_t rows, std::int32_t lineLen,
                                  ViewFile& file, LineArray& lines, TextBuffer& text, TagList& tags,
                                  FormatProc format, ViewOptions options);

// Copies the tags onto the lines: each line gets the flags of every tag from its first byte up to the next
// line's first byte.
void MarkLines(LineArray& lines, TagList& tags);
