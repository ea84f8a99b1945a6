#include "engine/view_loader.h"

#include <memory>
#include <new>

#include "engine/file_slice.h"
#include "engine/line_probe.h"
#include "engine/slice_lines.h"
#include "engine/text_format.h"

namespace {

// Bytes of a row beyond its characters: the line break, and tabs that write nothing.
constexpr std::int32_t kRowSlack = 64;

// One run of LoadView: its arguments, and the one work buffer.
class Loader {
 public:
  Loader(std::uint8_t* work, std::int32_t rows, std::int32_t lineLen, ViewFile& file, LineArray& lines,
         TextBuffer& text, FormatProc format, ViewOptions options)
      : work_(work),
        rows_(rows),
        lineLen_(lineLen),
        file_(file),
        lines_(lines),
        text_(text),
        format_(format),
        options_(options) {}

  // Makes the run around `pos`; a backward run ends with the line that ends at `pos`, `below` lines below
  // the top line.
  ViewStatus Run(FilePos pos, bool forward, std::int32_t below);

 private:
  ViewStatus ReadAround(FilePos pos, std::int32_t before);
  ViewStatus SettleStart(FilePos& pos, LongLine& isLong, bool forward);
  ViewStatus FillForward(FilePos pos, std::int32_t from, LongLine isLong, std::int32_t wanted,
                         std::int32_t& end);
  ViewStatus FillBackward(FilePos pos, std::int32_t from, LongLine isLong, std::int32_t wanted,
                          std::int32_t& first);
  [[nodiscard]] bool HasRoom() const { return working_.Tlen - working_.Tend > lineLen_; }
  [[nodiscard]] bool KnowsLongLines() const { return format_ == FormatText; }

  std::uint8_t* work_;
  std::int32_t rows_;
  std::int32_t lineLen_;
  ViewFile& file_;
  LineArray& lines_;
  TextBuffer& text_;
  FormatProc format_;
  ViewOptions options_;
  TextBuffer working_;
  FileSlice slice_;  // what the last read gave
};

// Reads the largest slice around `pos`, `before` bytes of it in front.
ViewStatus Loader::ReadAround(FilePos pos, std::int32_t before) {
  file_.Fcur = pos;
  return ReadFileSlice(file_, FileSlice{work_, kSliceBytes, before}, slice_);
}

// Finds out whether the place that a load starts from touches a long line, and moves a place inside one to
// the start of its row, so that rows are the same wherever a load started.
ViewStatus Loader::SettleStart(FilePos& pos, LongLine& isLong, bool forward) {
  isLong = LongLine::no;
  if (!KnowsLongLines() || (!forward && pos == 0)) return 0;
  LineAround line;
  ViewStatus status = FindLine(file_, work_, forward ? pos : pos - 1, options_, line);
  if ((status & VS_FAILED) != 0) return status;
  if (!line.isLong) return 0;
  if (pos >= file_.Flen) {
    if (!forward && pos == file_.Flen) isLong = LongLine::yes;
    return 0;
  }
  isLong = LongLine::yes;
  if (!forward) {
    // The long line may end in front of pos: then a pass upward starts there as it is.
    LineAround below;
    status = FindLine(file_, work_, pos, options_, below);
    if ((status & VS_FAILED) != 0) return status;
    if (below.start == pos) return 0;
  }
  status = ReadAround(pos, kSliceBytes / 2);
  if ((status & VS_FAILED) != 0) return status;
  const FilePos slicePos = pos - slice_.Soff;
  pos = LongLineRowStart(slice_, slicePos, std::max(line.start, slicePos), pos, options_, lineLen_);
  return 0;
}

// Fills entries upward from index `from` with the lines from `pos` on, and writes the sentinel. Reads on,
// slice by slice, until `wanted` lines are there or nothing more fits. `end` becomes the sentinel's index.
ViewStatus Loader::FillForward(FilePos pos, std::int32_t from, LongLine isLong, std::int32_t wanted,
                               std::int32_t& end) {
  end = from;
  for (;;) {
    LineCursor cursor{lines_.Aline, lines_.Acnt, end, isLong};
    bool cut = false;
    ViewStatus status =
        FormatSlice(file_, work_, pos, end > from, cursor, working_, format_, options_, lineLen_, cut);
    if ((status & VS_FAILED) != 0) return status;
    const bool progress = cursor.Ccur > end && cursor.Cend > pos;
    end = cursor.Ccur;
    if (!cut || !progress || end - from >= wanted || end >= lines_.Acnt - 1 || !HasRoom()) return 0;
    pos = cursor.Cend;
    status = SettleStart(pos, isLong, true);
    if ((status & VS_FAILED) != 0) return status;
    if (pos != cursor.Cend) return 0;
  }
}

// Fills entries downward from index `from` - 1 with the lines that end at `pos`. Reads on, slice by slice,
// until `wanted` lines are there or nothing more fits. `first` becomes the topmost line's index.
ViewStatus Loader::FillBackward(FilePos pos, std::int32_t from, LongLine isLong, std::int32_t wanted,
                                std::int32_t& first) {
  first = from;
  // A wrapped row that begins in front of `pos` may end behind it: the slice must hold its end.
  const bool wraps = KnowsLongLines() && (options_ & VO_WRAP) != 0;
  const std::int32_t ahead = wraps ? std::min(lineLen_ + kRowSlack, kSliceBytes / 4) : 0;
  for (;;) {
    ViewStatus status = ReadAround(pos, kSliceBytes - ahead);
    if ((status & VS_FAILED) != 0) return status;
    LineCursor cursor{lines_.Aline, lines_.Acnt, first, isLong};
    status = format_(slice_, cursor, working_, pos, FILL_BACKWARD, options_, lineLen_);
    if ((status & VS_FAILED) != 0) return status;
    const bool progress = cursor.Ccur < first;
    first = cursor.Ccur;
    if (!KnowsLongLines() || !progress || from - first >= wanted || first == 0 || !HasRoom()) return 0;
    pos = lines_.Aline[first].Lpos;
    if (pos <= 0) return 0;
    LineAround line;
    status = FindLine(file_, work_, pos - 1, options_, line);
    if ((status & VS_FAILED) != 0) return status;
    isLong = line.isLong ? LongLine::yes : LongLine::no;
  }
}

ViewStatus Loader::Run(FilePos pos, bool forward, std::int32_t below) {
  const auto count = static_cast<std::int32_t>(lines_.Acnt);
  std::int32_t top = (count - rows_) / 2;
  if (pos > 0 && pos >= file_.Flen) {
    // The end of a file that changes is where it is now.
    const FilePos length = FileLength(file_.Fname);
    if (length > 0) {
      pos = pos == file_.Flen ? length : std::min(pos, length);
      file_.Flen = length;
    }
  }
  if (pos == file_.Flen) {
    forward = false;
    below = 0;
    top = count - 1;
  }
  if (pos == 0) {
    forward = true;
    below = 0;
    top = 0;
  }
  std::int32_t from = top + below;  // the entry at which the first pass starts
  const std::int32_t reserve = std::min(3 * lineLen_, text_.Tlen / 10);
  working_ = TextBuffer{text_.Tbuf, text_.Tlen - reserve, 0};
  const FilePos asked = pos;
  LongLine isLong = LongLine::no;
  ViewStatus status = SettleStart(pos, isLong, forward);
  if ((status & VS_FAILED) != 0) return status;
  if (!forward && pos == 0) return Run(0, true, 0);  // the first row of the file is the one to go up to
  std::int32_t first = top;
  std::int32_t last = top;
  if (forward) {
    status = FillForward(pos, from, isLong, rows_ + 1, last);
    if ((status & VS_FAILED) != 0) return status;
    if (asked > file_.Flen) return VS_SHORT;  // the file has shrunk below the place: the caller goes on
    top = std::min(top, last);
    first = top;
    if (pos > 0) {
      if (last > from) pos = lines_.Aline[++from].Lpos;
      working_.Tlen = text_.Tlen;
      // The line at the top is made anew, and the lines above it.
      status = FillBackward(pos, from, isLong, 2, first);
      if ((status & VS_FAILED) != 0) return status;
      first = std::min(first, top);
    }
  } else {
    status = FillBackward(pos, from, isLong, std::max(below, 2), first);
    if ((status & VS_FAILED) != 0) return status;
    if (asked > file_.Flen) return VS_SHORT;
    top = std::max(top, first);
    const FilePos topmost = lines_.Aline[first].Lpos;
    const bool remade = pos < file_.Flen && first < from;
    if (remade) pos = lines_.Aline[--from].Lpos;
    working_.Tlen = text_.Tlen;
    if (first == from) {  // nothing above: the line below may begin another kind of line
      status = SettleStart(pos, isLong, true);
      if ((status & VS_FAILED) != 0) return status;
    }
    status = FillForward(pos, from, isLong, rows_ + 1, last);
    if ((status & VS_FAILED) != 0) return status;
    // Very long lines: the line to be made anew found no room behind those above it.
    if (remade && last == from) return Run(topmost, true, 0);
    last = std::max(last, top);
    first = std::min(first, top);
  }
  text_.Tend = working_.Tend;
  if (top >= last && first < top) top = last - 1;
  lines_.Afirst = static_cast<std::int16_t>(first);
  lines_.Acur = static_cast<std::int16_t>(top);
  lines_.Alast = static_cast<std::int16_t>(last);
  return 0;
}

}  // namespace

ViewStatus LoadView(FilePos pos, std::int32_t cur, std::int32_t rows, std::int32_t lineLen, ViewFile& file,
                    LineArray& lines, TextBuffer& text, TagList& tags, FormatProc format,
                    ViewOptions options) {
  const std::unique_ptr<std::uint8_t[]> work(new (std::nothrow) std::uint8_t[kSliceBytes]);
  if (!work) return VS_FAILED;
  rows = std::clamp<std::int32_t>(rows, 1, lines.Acnt - 2);
  lineLen = std::clamp(lineLen, 1, LongestLine(text.Tlen));

  bool forward = true;
  std::int32_t below = 0;
  if (pos < 0) {
    forward = cur >= lines.Afirst;
    const std::int32_t anchor =
        std::clamp<std::int32_t>(forward ? cur : cur + rows, lines.Afirst, lines.Alast);
    if (!forward) below = std::min(anchor - cur, rows);
    pos = lines.Aline[anchor].Lpos;
  }
  Loader loader(work.get(), rows, lineLen, file, lines, text, format, options);
  ViewStatus status = loader.Run(pos, forward, below);
  // A file that has shrunk below the place is shown at its end, as it now is.
  for (int tries = 0; status == VS_SHORT && tries < 3; ++tries)
    status = loader.Run(file.Flen, false, 0);
  if ((status & VS_FAILED) != 0) return status;
  if (status == VS_SHORT) return VS_FAILED | VS_SHORT;
  if (tags.count > 0) MarkLines(lines, tags);
  return 0;
}

void MarkLines(LineArray& lines, TagList& tags) {
  tags.entries[tags.count].position = kBehindEveryPosition;
  const TagEntry* tag = tags.entries;
  while (tag->position < lines.Aline[lines.Afirst].Lpos)
    ++tag;
  for (std::int32_t i = lines.Afirst; i < lines.Alast; ++i) {
    lines.Aline[i].Lflags &= ~LF_TAGMASK;
    for (; tag->position < lines.Aline[i + 1].Lpos; ++tag)
      lines.Aline[i].Lflags |= tag->flags & LF_TAGMASK;
  }
}
