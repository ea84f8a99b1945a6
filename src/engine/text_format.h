// The format "Text": lines end at line breaks (LF, CR, CR LF, LF CR), tabs expand, long lines wrap or are
// cut, and a form feed at the start of a row is a page mark.
//
// The hard idea is the long line: a line that does not fit (see LongLineLimit) cannot be made from its
// start in one go, so its rows must not depend on where a pass came from. A long line is shown in rows of
// lineLen characters, wrapped or not, measured from its first byte and anew from each multiple of
// LongLineStep behind it. So every row start is known from the bytes within one step, in both directions.
// Where a character has several bytes, rows are measured anew from the first one that begins there or behind.
#pragma once

#include "engine/view_records.h"

// The tab interval that FormatText reads, 1 to 255 columns; the settings store it here.
extern std::int32_t TextTabLength;

// A FormatProc that never fails. A lineLen below 1 counts as 1. With lines.Clong left unknown the pass goes
// on as if no line were long. Otherwise it stops in front of a line of which the slice does not tell whether
// it is long.
ViewStatus FormatText(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                      std::int32_t direction, ViewOptions options, std::int32_t lineLen);

// The units that line breaks are found in, in the code that the options name.
[[nodiscard]] TextUnit TextUnitOf(ViewOptions options);

// The most bytes that a line, its line break included, may have without being a long line.
[[nodiscard]] std::int32_t LongLineLimit(ViewOptions options);

// The distance in bytes of the places in a long line from which its rows are measured anew: a multiple of
// lineLen, at most kLongestLine, or lineLen.
[[nodiscard]] std::int32_t LongLineStep(std::int32_t lineLen);

// The start of the row that holds the byte at file offset `pos`, in the line that begins at `lineStart`. The
// slice must reach from lineStart to pos; in a long line (`isLong`) LongLineStep bytes before pos are enough,
// and lineStart may be any earlier offset. Behind
// `pos` it must reach as far as the character there does.
[[nodiscard]] FilePos TextRowStart(const FileSlice& slice, FilePos slicePos, FilePos lineStart, FilePos pos,
                                   bool isLong, ViewOptions options, std::int32_t lineLen);
