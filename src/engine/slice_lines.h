// One piece of the file as lines, going forward: the step that the loader, the clipboard copy and the print
// job repeat. Sees to it that the lines of one step and of the next are neighbours.
#pragma once

#include "engine/view_records.h"

// How lines are made.
struct LineStyle {
  FormatProc format = nullptr;
  ViewOptions options = 0;
  std::int32_t lineLen = 1;  // characters of the longest line
};

// Formats the lines from `pos` on into `lines` and `text`, reading as far as `reach`, or further where that
// does not hold one line. `pos` must be the start of a row. A line that the piece cut, and not the file's
// end, is left out; `cut` tells that there was one. On return lines.Cend is the place behind the last line,
// where the next step starts, and the sentinel says the same. Result 0 or further bits of the format;
// VS_FAILED when the read or the format failed.
[[nodiscard]] ViewStatus FormatSlice(ByteSource& source, FilePos pos, FilePos reach, LineCursor& lines,
                                     TextBuffer& text, const LineStyle& style, bool& cut);

// The end of the block of the file that holds `pos`: a reach that costs one read.
[[nodiscard]] constexpr FilePos BlockEnd(FilePos pos) {
  return pos + (kBlockBytes - pos.Offset() % kBlockBytes);
}

// Rows above and below those of the screen for which a text buffer must have room.
inline constexpr std::int32_t kSpareRows = 6;

// The line length to work with: that asked for, but at least 1, and at most so long that a text buffer of
// `textSize` characters holds a screen of `rows` such lines.
[[nodiscard]] constexpr std::int32_t UsableLineLen(std::int32_t lineLen, std::int32_t rows,
                                                   std::int32_t textSize) {
  return std::clamp(lineLen, 1, std::clamp(textSize / (rows + kSpareRows), 1, kLongestLine));
}
