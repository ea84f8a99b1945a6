#include "engine/view_loader.h"

#include "engine/byte_columns.h"
#include "engine/hex_format.h"
#include "engine/line_probe.h"
#include "engine/text_format.h"

namespace {

// Bytes that one pass of a format of fixed rows is given at most.
constexpr ByteCount kLargestPiece = kLargestView - kBlockBytes;
// A row of the hex dump has at most this many bytes.
constexpr ByteCount kWidestHexRow = 64;

// One run of LoadView: its arguments, and the text as far as it may be used by now.
class Loader {
 public:
  Loader(const LoadRequest& request, ByteSource& source, ViewFile& file, LineArray& lines, TextBuffer& text)
      : request_(request),
        style_(request.style),
        rows_(std::clamp<std::int32_t>(request.rows, 1, lines.Acnt - 2)),
        source_(source),
        file_(file),
        lines_(lines),
        text_(text) {
    style_.lineLen = UsableLineLen(style_.lineLen, rows_, text.Tlen);
  }

  ViewStatus Run();

 private:
  [[nodiscard]] bool IsText() const { return style_.format == FormatText; }
  [[nodiscard]] bool HasRoom() const { return working_.Tlen - working_.Tend > style_.lineLen; }
  void LimitFirstPass(std::int32_t wanted, std::int32_t wantedOther);
  void LimitSecondPass();
  ViewStatus RunForward(FilePos pos, std::int32_t top);
  ViewStatus RunBackward(FilePos pos, std::int32_t top, std::int32_t below);
  ViewStatus FillForward(FilePos pos, std::int32_t from, std::int32_t wanted, std::int32_t& end);
  ViewStatus FillBackward(FilePos pos, std::int32_t from, std::int32_t wanted, std::int32_t& first);
  ViewStatus BackwardPiece(FilePos pos, std::int32_t wanted, LineCursor& cursor);
  FilePos Settle(FilePos pos);
  void Finish(std::int32_t first, std::int32_t top, std::int32_t last);

  const LoadRequest& request_;
  LineStyle style_;
  std::int32_t rows_;
  ByteSource& source_;
  ViewFile& file_;
  LineArray& lines_;
  TextBuffer& text_;
  TextBuffer working_;
  std::int32_t furthest_ = 0;  // working_.Tlen at the most
};

// The start of the row that holds `pos`.
FilePos Loader::Settle(FilePos pos) {
  if (!IsText() || pos <= 0 || pos >= source_.Length()) return pos;
  bool isLong = false;
  return FindRow(source_, pos, style_.options, style_.lineLen, isLong);
}

// How far the text may be filled by the first of the two passes: as far as a small window needs, or, where
// that does not hold the lines wanted, so far that the other pass has room for those that it wants.
void Loader::LimitFirstPass(std::int32_t wanted, std::int32_t wantedOther) {
  const std::int32_t lineLen = style_.lineLen;
  const std::int32_t linesLeft = std::max(text_.Tlen / lineLen - wanted - 2, 2);
  furthest_ = text_.Tlen - std::min(std::max(wantedOther, 0) + 1, linesLeft) * lineLen;
  const std::int32_t reserve = std::min(3 * lineLen, kViewText / 10);
  working_.Tlen = std::min(std::min(text_.Tlen, kViewText) - reserve, furthest_);
}

void Loader::LimitSecondPass() {
  furthest_ = text_.Tlen;
  working_.Tlen = std::min(std::max(kViewText, working_.Tend), text_.Tlen);
}

// Fills entries upward from index `from` with the lines from `pos` on, and writes the sentinel. Takes what
// the first block gives, and goes on until `wanted` lines are there. `end` becomes the sentinel's index.
ViewStatus Loader::FillForward(FilePos pos, std::int32_t from, std::int32_t wanted, std::int32_t& end) {
  end = from;
  for (;;) {
    LineCursor cursor{lines_.Aline, lines_.Acnt, end};
    bool cut = false;
    const ViewStatus status = FormatSlice(source_, pos, BlockEnd(pos), cursor, working_, style_, cut);
    if ((status & VS_FAILED) != 0) return status;
    const bool progress = cursor.Ccur > end;
    end = cursor.Ccur;
    pos = cursor.Cend;
    if (end - from >= wanted || pos >= source_.Length() || end >= lines_.Acnt - 1) return 0;
    if (cut && progress) continue;
    if (working_.Tlen >= furthest_) return 0;
    working_.Tlen = furthest_;
  }
}

// One pass upward over the bytes in front of `pos`.
ViewStatus Loader::BackwardPiece(FilePos pos, std::int32_t wanted, LineCursor& cursor) {
  FilePos from = 0;
  const std::int32_t reach = (style_.options & VO_UNICODE) != 0 ? kLongestCharacter : 0;
  if (IsText()) {
    const LineAround line = FindLine(source_, pos - 1, style_.options);
    cursor.Clong = line.isLong ? LongLine::yes : LongLine::no;
    from = line.start;
    if (line.isLong) from = std::max<FilePos>(from, pos - LongLineStep(style_.lineLen) - kCutMargin);
  } else {
    from = pos - std::min<ByteCount>(std::int64_t{std::max(wanted, 1)} * style_.lineLen, kLargestPiece);
  }
  const ByteView around = source_.ViewAround(std::max<FilePos>(from - reach, 0), pos + reach);
  if (source_.Failure() != 0) return VS_FAILED;
  const auto off = static_cast<std::int32_t>(std::min(pos, around.End()) - around.from);
  const auto ahead = static_cast<std::int32_t>(std::min<ByteCount>(around.count - off, reach));
  const FileSlice slice{around.bytes, off, off, around.from + off == source_.Length(), ahead};
  return style_.format(slice, cursor, working_, around.from + off, FILL_BACKWARD, style_.options,
                       style_.lineLen);
}

// Fills entries downward from index `from` - 1 with the lines that end at `pos`. Takes what is at hand, and
// goes on until `wanted` lines are there. `first` becomes the topmost line's index.
ViewStatus Loader::FillBackward(FilePos pos, std::int32_t from, std::int32_t wanted, std::int32_t& first) {
  first = from;
  while (pos > 0 && first > 0) {
    LineCursor cursor{lines_.Aline, lines_.Acnt, first};
    const ViewStatus status = BackwardPiece(pos, wanted - (from - first), cursor);
    if ((status & VS_FAILED) != 0) return status;
    const bool progress = cursor.Ccur < first;
    first = cursor.Ccur;
    if (progress) pos = lines_.Aline[first].Lpos;
    if (from - first >= wanted) return 0;
    if (progress && HasRoom()) continue;
    if (working_.Tlen >= furthest_) return 0;
    working_.Tlen = furthest_;
  }
  return 0;
}

void Loader::Finish(std::int32_t first, std::int32_t top, std::int32_t last) {
  if (top >= last && first < top) top = last - 1;
  text_.Tend = working_.Tend;
  text_.Tclusters = working_.Tclusters;
  lines_.Afirst = static_cast<std::int16_t>(first);
  lines_.Acur = static_cast<std::int16_t>(top);
  lines_.Alast = static_cast<std::int16_t>(last);
}

ViewStatus Loader::RunForward(FilePos pos, std::int32_t top) {
  std::int32_t last = top;
  std::int32_t first = top;
  // One more than the screen shows, so that a step down always finds a line.
  LimitFirstPass(rows_ + 1, request_.above);
  ViewStatus status = FillForward(pos, top, rows_ + 1, last);
  if ((status & VS_FAILED) != 0) return status;
  LimitSecondPass();
  status = FillBackward(pos, top, request_.above, first);
  if ((status & VS_FAILED) == 0) Finish(first, top, last);
  return status;
}

// The lines that end at `pos`, the top line `below` rows above it, and the lines from there on.
ViewStatus Loader::RunBackward(FilePos pos, std::int32_t top, std::int32_t below) {
  const std::int32_t from = top + below;
  std::int32_t first = from;
  std::int32_t last = from;
  LimitFirstPass(below + request_.above, rows_ + 1 - below);
  ViewStatus status = FillBackward(pos, from, below + request_.above, first);
  if ((status & VS_FAILED) != 0) return status;
  LimitSecondPass();
  top = std::max(top, first);
  status = FillForward(pos, from, rows_ + 1 - (from - top), last);
  if ((status & VS_FAILED) == 0) Finish(first, top, last);
  return status;
}

ViewStatus Loader::Run() {
  const FilePos length = source_.Length();
  const bool atEnd = request_.pos >= length && request_.below < 0;
  FilePos pos = std::clamp<FilePos>(request_.pos, 0, length);
  pos = Settle(pos);
  if (source_.Failure() != 0) return VS_FAILED;
  file_.Fcur = pos;
  if (style_.format == FormatHex) {
    const FilePos furthest = std::min(length - 1, pos + lines_.Acnt * kWidestHexRow);
    style_.options =
        (style_.options & ~VO_HEXDIGITS) | HexAddressOptions(std::max<FilePos>(furthest, 0), length);
  }
  working_ = TextBuffer{text_.Tbuf, 0, 0, text_.Tcluster, 0};
  ViewStatus status = 0;
  if (pos == 0) {
    status = RunForward(0, 0);
  } else if (atEnd) {
    status = RunBackward(pos, lines_.Acnt - 1, 0);
  } else {
    const std::int32_t top = (lines_.Acnt - rows_) / 2;
    status =
        request_.below < 0 ? RunForward(pos, top) : RunBackward(pos, top, std::min(request_.below, rows_));
  }
  if (source_.Failure() != 0) status |= VS_FAILED;
  file_.Flen = source_.Length();
  file_.Fid = source_.Identity();
  return status;
}

}  // namespace

ViewStatus LoadView(const LoadRequest& request, ByteSource& source, ViewFile& file, LineArray& lines,
                    TextBuffer& text) {
  // A file that becomes shorter meanwhile is shown as it then is.
  for (int tries = 0;; ++tries) {
    const FilePos length = source.Length();
    const ViewStatus status = Loader(request, source, file, lines, text).Run();
    if ((status & VS_FAILED) != 0 || source.Length() == length || tries == 3)
      return status & VS_FAILED ? status : 0;
  }
}
