#include "engine/raw_format.h"

#include <cassert>
#include <cstring>

#include "engine/byte_columns.h"

namespace {

template <typename Columns>
void FillForward(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                 const Columns& columns, std::int32_t lineLen) {
  std::int32_t off = slice.Soff;
  while (lines.Ccur < lines.Ccnt - 1 && off < slice.Slen && text.Tend < text.Tlen) {
    const std::int32_t count = std::min({lineLen, slice.Slen - off, text.Tlen - text.Tend});
    if (!columns.Knows(off, off + count)) break;
    lines.Cline[lines.Ccur++] = {pos, text.Tend, count, 0, 0};
    columns.Write(text.Tbuf + text.Tend, off, count);
    off += count;
    pos += count;
    text.Tend += count;
  }
  lines.Cline[lines.Ccur] = SentinelAt(pos);
  lines.Cend = pos;
}

template <typename Columns>
void FillBackward(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                  const Columns& columns, std::int32_t lineLen) {
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
    if (!columns.Knows(off, off + lineLen)) return;

    // A line that fills the text may lack its last bytes and is given up. Its entry is left alone: it may
    // hold the same line already, made by a pass in the other direction.
    if (lineLen >= text.Tlen - text.Tend) {
      text.Tend = text.Tlen;
      return;
    }
    const auto blanks = static_cast<std::int32_t>(std::max<ByteCount>(-off, 0));
    Cell* line = text.Tbuf + text.Tend;
    std::fill_n(line, blanks, U' ');
    columns.Write(line + blanks, static_cast<std::int32_t>(off) + blanks, lineLen - blanks);

    lines.Cline[--lines.Ccur] = {std::max<FilePos>(pos, 0), text.Tend, lineLen, 0, 0};
    text.Tend += lineLen;
  }
}

}  // namespace

ViewStatus FormatRaw(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                     std::int32_t direction, ViewOptions options, std::int32_t lineLen) {
  assert(slice.Slen >= 0 && slice.Soff >= 0);
  lineLen = std::max(lineLen, 1);
  WithByteColumns(slice, pos, options, [&](const auto& columns) {
    if (direction == FILL_FORWARD) {
      FillForward(slice, lines, text, pos, columns, lineLen);
    } else {
      FillBackward(slice, lines, text, pos, columns, lineLen);
    }
  });
  return 0;
}
