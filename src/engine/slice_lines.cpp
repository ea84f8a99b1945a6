#include "engine/slice_lines.h"

#include "engine/byte_columns.h"
#include "engine/line_probe.h"
#include "engine/text_format.h"

namespace {

// The first byte that decides what stands in the row which begins at `pos`.
FilePos FirstNeeded(FilePos pos, const LineStyle& style) {
  const bool decides = style.format != FormatText && (style.options & VO_UNICODE) != 0;
  return decides ? std::max<FilePos>(pos - kColumnReach, 0) : pos;
}

// One pass over the bytes from `pos` to `reach`.
ViewStatus FormatPiece(ByteSource& source, FilePos pos, FilePos reach, LineCursor& lines, TextBuffer& text,
                       const LineStyle& style, bool& cut) {
  const std::int32_t first = lines.Ccur;
  const ByteView view = source.View(FirstNeeded(pos, style), reach);
  if (source.Failure() != 0) return VS_FAILED;
  const bool last = view.End() >= source.Length();
  const auto off = static_cast<std::int32_t>(std::min<ByteCount>(pos - view.from, view.count));
  const ViewStatus status = style.format({view.bytes, view.count, off, last}, lines, text, pos, FILL_FORWARD,
                                         style.options, style.lineLen);
  if ((status & VS_FAILED) != 0) return status;
  if (lines.Cend == kNoPosition) lines.Cend = lines.Cline[lines.Ccur].Lpos;
  const bool full = lines.Ccur >= lines.Ccnt - 1 || text.Tlen - text.Tend <= style.lineLen;
  cut = !last && (lines.Cend >= view.End() || !full);
  const bool mayBeCut = lines.Cend >= view.End() ? !last : text.Tend >= text.Tlen;
  if (mayBeCut && lines.Ccur > first) {
    const LineEntry& dropped = lines.Cline[--lines.Ccur];
    DropText(dropped, text);
    lines.Cend = dropped.Lpos;
  }
  lines.Cline[lines.Ccur] = SentinelAt(lines.Cend);
  return status;
}

}  // namespace

ViewStatus FormatSlice(ByteSource& source, FilePos pos, FilePos reach, LineCursor& lines, TextBuffer& text,
                       const LineStyle& style, bool& cut) {
  const std::int32_t first = lines.Ccur;
  cut = false;
  if (style.format == FormatText && pos < source.Length()) {
    lines.Clong = FindLine(source, pos, style.options).isLong ? LongLine::yes : LongLine::no;
  }
  for (;; reach = BlockEnd(reach)) {
    const ViewStatus status = FormatPiece(source, pos, reach, lines, text, style, cut);
    if ((status & VS_FAILED) != 0 || !cut || lines.Ccur > first) return status;
    // Not one line ended in front of `reach`, unless the whole of the largest line was there.
    if (reach - pos >= kLargestView - kBlockBytes) return status;
  }
}
