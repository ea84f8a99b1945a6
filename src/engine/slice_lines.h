// One slice of the file as lines, going forward: the step that the loader, the clipboard copy and the print
// job repeat. Sees to it that the lines of one step and of the next are neighbours.
#pragma once

#include "engine/view_records.h"

// Reads a slice from `pos` on into `work` (kSliceBytes bytes) and formats it into `lines` and `text`. A line
// that the slice cut, and not the file's end, is left out if another line was made or `hasLines` says that
// there are some; `cut` tells that the slice's end was reached and the file goes on. On return lines.Cend is
// the place behind the last line, where the next step starts, and the sentinel says the same. Result 0 or
// further bits of the format; VS_FAILED when the read or the format failed.
[[nodiscard]] ViewStatus FormatSlice(ViewFile& file, std::uint8_t* work, FilePos pos, bool hasLines,
                                     LineCursor& lines, TextBuffer& text, FormatProc format,
                                     ViewOptions options, std::int32_t lineLen, bool& cut);

// The longest line, in characters, of which a text buffer of `textSize` characters holds at least one,
// beside the tenth that a load reserves for the lines above.
[[nodiscard]] constexpr std::int32_t LongestLine(std::int32_t textSize) {
  return std::max(textSize - textSize / 10 - 1, 1);
}
