// The format "Text": lines end at line breaks (LF, CR, CR LF, LF CR), tabs expand, long lines wrap or are
// cut, and a form feed at a line start is a page mark.
//
// The hard idea is the long line: a line that does not fit (see LongLineLimit) cannot be made from its
// start in one go, so its rows must not depend on where a pass came from. A long line is shown in rows of
// lineLen characters, wrapped or not, measured from its first byte and anew from each multiple of
// LongLineStep behind it. So every row start is known from the bytes within one step, in both directions.
#pragma once

#include "engine/view_records.h"

// The tab interval that FormatText reads, 1 to 255 columns; the settings store it here.
extern std::int32_t TextTabLength;

// Whether a byte is a line break, and whether two bytes are one: LF CR and CR LF are, LF LF and CR CR are
// two.
constexpr bool IsLineBreak(std::uint8_t byte) {
  return byte == 10 || byte == 13;
}
constexpr bool IsBreakPair(std::uint8_t first, std::uint8_t second) {
  return IsLineBreak(first) && IsLineBreak(second) && first != second;
}

// A FormatProc that never fails. A lineLen below 1 counts as 1. With lines.Clong left unknown the pass
// starts as if no long line were there.
ViewStatus FormatText(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                      std::int32_t direction, ViewOptions options, std::int32_t lineLen);

// The most bytes that a line, its line break included, may have without being a long line.
[[nodiscard]] std::int32_t LongLineLimit(ViewOptions options);

// The distance in bytes of the places in a long line from which its rows are measured anew: a multiple of
// lineLen, at most kViewText.
[[nodiscard]] std::int32_t LongLineStep(std::int32_t lineLen);

// The start of the row of a long line that holds the byte at file offset `pos`. The slice must reach from
// the line's start, or from LongLineStep bytes before pos, to pos; `lineStart` is the line's first byte, or
// any earlier offset if that lies further back.
[[nodiscard]] FilePos LongLineRowStart(const FileSlice& slice, FilePos slicePos, FilePos lineStart,
                                       FilePos pos, ViewOptions options, std::int32_t lineLen);
