#include "engine/line_probe.h"

#include "engine/text_format.h"

namespace {

TextPiece PieceOf(const ByteView& view, const ByteSource& source, TextUnit unit) {
  return {view.bytes, view.count, view.from == 0, view.End() == source.Length(), unit};
}

}  // namespace

FilePos CharacterAt(ByteSource& source, FilePos at, const LineStyle& style) {
  const ViewOptions code = style.options & VO_UNICODE;
  if (style.format != FormatText || code == 0 || at <= 0 || at >= source.Length()) return at;
  const ByteCount odd = code == VO_UTF8 ? 0 : at.Offset() % 2;
  const FilePos from = std::max<FilePos>(at - odd - kLongestCharacter, 0);
  const ByteView view = source.View(from, at + kLongestCharacter);
  const auto index = static_cast<std::int32_t>(at - view.from);
  if (index >= view.count) return at;
  const auto start = code == VO_UTF8      ? CharacterStart<Utf8>
                     : code == VO_UTF16LE ? CharacterStart<Utf16Le>
                                          : CharacterStart<Utf16Be>;
  return view.from + start(view.bytes, view.count, index);
}

LineAround FindLine(ByteSource& source, FilePos at, ViewOptions options) {
  const std::int32_t limit = LongLineLimit(options);
  const TextUnit unit = TextUnitOf(options);
  ByteView view = source.ViewAround(at, at + 1);
  std::int32_t start = 0;
  while (view.count > 0) {
    TextPiece piece = PieceOf(view, source, unit);
    start = piece.LineStart(static_cast<std::int32_t>(at - view.from));
    if (piece.KnowsStart(start)) break;
    if (at - view.from > std::max(limit, kLongestLine)) return {view.from, true};
    view = source.ViewAround(view.from - 1, at + 1);
  }
  while (view.count > 0) {
    const FilePos lineStart = view.from + start;
    const LongLine judgement = PieceOf(view, source, unit).Judge(start, limit);
    if (judgement != LongLine::unknown) return {lineStart, judgement == LongLine::yes};
    view = source.ViewAround(lineStart, view.End() + 1);
    start = static_cast<std::int32_t>(lineStart - view.from);
  }
  return {};
}

FilePos FindRow(ByteSource& source, FilePos at, ViewOptions options, std::int32_t lineLen, bool& isLong) {
  const LineAround line = FindLine(source, at, options);
  isLong = line.isLong;
  // With a gap, a form feed at the line's start is a row of its own.
  const bool oneRow = (options & (VO_WRAP | VO_PAGEGAP)) == 0 && !isLong;
  if (oneRow || source.Failure() != 0) return line.start;
  // Rows of a long line are measured from a place at most one step in front of the line's last character.
  const FilePos from =
      isLong ? std::max<FilePos>(line.start, at - LongLineStep(lineLen) - kCutMargin) : line.start;
  const ByteView view = source.ViewAround(std::max<FilePos>(from, 0), at + kLongestCharacter);
  if (view.count == 0) return line.start;
  const FileSlice slice{view.bytes, view.count, 0, view.End() == source.Length()};
  return TextRowStart(slice, view.from, line.start, at, isLong, options, lineLen);
}
