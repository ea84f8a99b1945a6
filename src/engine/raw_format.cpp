#include "engine/raw_format.h"

#include <cassert>
#include <cstring>

#include "engine/char_map.h"

namespace {

// Eight look-ups a step: with one, the loop's own work costs as much as the look-up.
void MapBytes(Cell* to, const std::uint8_t* from, std::int32_t count, const Cell* map) {
  std::int32_t i = 0;
  for (; i + 8 <= count; i += 8) {
    for (std::int32_t k = 0; k < 8; ++k)
      to[i + k] = map[from[i + k]];
  }
  for (; i < count; ++i)
    to[i] = map[from[i]];
}

void FillForward(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos, const Cell* map,
                 std::int32_t lineLen) {
  std::int32_t off = slice.Soff;
  while (lines.Ccur < lines.Ccnt - 1 && off < slice.Slen && text.Tend < text.Tlen) {
    const std::int32_t count = std::min({lineLen, slice.Slen - off, text.Tlen - text.Tend});
    lines.Cline[lines.Ccur++] = {pos, text.Tend, count, 0, 0};
    MapBytes(text.Tbuf + text.Tend, slice.Sbuf + off, count, map);
    off += count;
    pos += count;
    text.Tend += count;
  }
  lines.Cline[lines.Ccur] = SentinelAt(pos);
  lines.Cend = pos;
}

void FillBackward(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos, const Cell* map,
                  std::int32_t lineLen) {
  if (text.Tend >= text.Tlen) return;
  ByteCount off = slice.Soff;
  if (off > slice.Slen) {  // the file ends before pos: start from where it ends
    pos -= off - slice.Slen;
    off = slice.Slen;
  }
  while (lines.Ccur > 0 && off > 0) {
    off -= lineLen;
    pos -= lineLen;
    if (off < 0 && pos - off > 0) return;  // the line begins above the slice, but not above the file

    // A line that fills the text may lack its last bytes and is given up. Its entry is left alone: it may
    // hold the same line already, made by a pass in the other direction.
    if (lineLen >= text.Tlen - text.Tend) {
      text.Tend = text.Tlen;
      return;
    }
    const auto blanks = static_cast<std::int32_t>(std::max<ByteCount>(-off, 0));
    Cell* line = text.Tbuf + text.Tend;
    std::fill_n(line, blanks, U' ');
    MapBytes(line + blanks, slice.Sbuf + off + blanks, lineLen - blanks, map);

    lines.Cline[--lines.Ccur] = {std::max<FilePos>(pos, 0), text.Tend, lineLen, 0, 0};
    text.Tend += lineLen;
  }
}

}  // namespace

ViewStatus FormatRaw(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                     std::int32_t direction, ViewOptions options, std::int32_t lineLen) {
  assert(slice.Slen >= 0 && slice.Soff >= 0);
  const Cell* map = GetCellMap(options);
  lineLen = std::max(lineLen, 1);
  if (direction == FILL_FORWARD) {
    FillForward(slice, lines, text, pos, map, lineLen);
  } else {
    FillBackward(slice, lines, text, pos, map, lineLen);
  }
  return 0;
}
