#include "engine/text_format.h"

#include <array>
#include <cassert>
#include <cstring>
#include <limits>

#include "engine/char_map.h"

std::int32_t TextTabLength = 8;

namespace {

constexpr std::uint8_t kTab = 9;

// Rows of a long line start anew about this often.
constexpr std::int32_t kLongLineStretch = 16384;

enum class ByteClass : std::uint8_t { plain, tab, lineBreak };

constexpr std::array<ByteClass, 256> MakeClasses(bool expandTabs) {
  std::array<ByteClass, 256> classes{};
  if (expandTabs) classes[kTab] = ByteClass::tab;
  classes[10] = classes[13] = ByteClass::lineBreak;
  return classes;
}
constexpr std::array<ByteClass, 256> kClasses = MakeClasses(false);
constexpr std::array<ByteClass, 256> kClassesWithTabs = MakeClasses(true);

// The last place at or in front of `pos`, which is in the file, that is a multiple of `step`.
constexpr FilePos RoundDown(FilePos pos, std::int32_t step) {
  return pos - pos.Offset() % step;
}

// One call of FormatText. The file offset of the byte at index i of the slice is `base` + i all through the
// call, so that only the index runs.
class TextPass {
 public:
  TextPass(const FileSlice& slice, FilePos base, ViewOptions options, std::int32_t lineLen)
      : bytes_(slice.Sbuf),
        size_(slice.Slen),
        piece_(slice.Sbuf, slice.Slen, base == 0, slice.Slast),
        base_(base),
        options_(options),
        wraps_((options & VO_WRAP) != 0),
        lineLen_(std::max(lineLen, 1)),
        tabLength_(std::max(TextTabLength, 1)),
        limit_(LongLineLimit(options)),
        step_(LongLineStep(lineLen)),
        map_(GetCharMap(options)),
        classes_((options & VO_EXPANDTABS) != 0 ? kClassesWithTabs.data() : kClasses.data()) {}

  ViewStatus Forward(std::int32_t start, LineCursor& lines, TextBuffer& text);
  ViewStatus Backward(std::int32_t start, LineCursor& lines, TextBuffer& text);
  FilePos RowStart(FilePos lineStart, FilePos pos, bool isLong);

 private:
  struct Row {
    std::int32_t start;
    std::int32_t length;
  };
  // The last rows of a line, in a ring; what it does not hold, a further pass makes.
  static constexpr std::size_t kRing = 1024;

  void UseText(const TextBuffer& text) {
    out_ = text.Tbuf;
    textEnd_ = text.Tend;
    textLimit_ = text.Tlen;
  }
  [[nodiscard]] FilePos PosAt(std::int32_t index) const { return base_ + index; }
  // The index behind `index` where a row of a long line must end, at most the data's end.
  [[nodiscard]] std::int32_t NextCut(std::int32_t index) const {
    const ByteCount cut = RoundDown(PosAt(index), step_) + step_ - base_;
    return static_cast<std::int32_t>(std::min<ByteCount>(cut, size_));
  }
  void PassLineBreak();
  bool PassFormFeed(LineEntry& line);
  std::int32_t CopyPlain(std::int32_t room, Cell* out) const;
  template <bool kWrite>
  bool MakeCharacters(std::int32_t stop, bool wraps, LineEntry& line);
  template <bool kWrite>
  bool MakeRow(std::int32_t stop, bool wraps, LineEntry& line);
  bool RowsBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start, bool mayCut);
  bool SingleRowBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start, bool mayCut);
  bool LongRowsBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start);
  std::size_t MeasureRows(std::int32_t from, std::int32_t start, std::int32_t stop, bool isLong);
  bool PutRows(LineCursor& lines, std::size_t count, std::int32_t stop, bool isLong);

  const std::uint8_t* bytes_;
  std::int32_t size_;
  TextPiece piece_;
  FilePos base_;
  ViewOptions options_;
  bool wraps_;
  std::int32_t lineLen_;
  std::int32_t tabLength_;
  std::int32_t limit_;
  std::int32_t step_;
  const std::uint8_t* map_;
  const ByteClass* classes_;

  Cell* out_ = nullptr;
  std::int32_t textEnd_ = 0;
  std::int32_t textLimit_ = 0;
  std::int32_t off_ = 0;
  bool broke_ = false;  // the row just made ended at a line break
  ViewStatus status_ = 0;
  std::array<Row, kRing> ring_;
};

void TextPass::PassLineBreak() {
  if (off_ < size_ - 1 && IsBreakPair(bytes_[off_], bytes_[off_ + 1])) ++off_;
  ++off_;
  if (piece_.IsEndMark(off_)) ++off_;
  broke_ = true;
}

// At the start of a row: true when a form feed makes the row an empty one of its own.
bool TextPass::PassFormFeed(LineEntry& line) {
  if (bytes_[off_] != kPageCharacter || (options_ & VO_FORMFEED) == 0) return false;
  ++off_;
  if ((options_ & VO_PAGEGAP) != 0) {
    line.Lflags |= LF_PAGEGAP;
    return true;
  }
  line.Lflags |= LF_PAGEMARK;
  return false;
}

// Copies plain bytes, at most `room` of them, through the map; the number copied.
std::int32_t TextPass::CopyPlain(std::int32_t room, Cell* out) const {
  const std::uint8_t* from = bytes_ + off_;
  std::int32_t n = 0;
  while (n < room && classes_[from[n]] == ByteClass::plain) {
    out[n] = CellOf(map_[from[n]]);
    ++n;
  }
  return n;
}

// The characters of one row, from off_ on: true when the row is complete. It ends at a line break, at
// `stop`, or when it is full; data and text may end earlier. Without kWrite it only measures.
template <bool kWrite>
bool TextPass::MakeCharacters(std::int32_t stop, bool wraps, LineEntry& line) {
  bool done = false;
  while (!done && off_ < size_ && (!kWrite || textEnd_ < textLimit_)) {
    const ByteClass kind = classes_[bytes_[off_]];
    if (kind == ByteClass::lineBreak) {
      PassLineBreak();
      done = true;
    } else if (off_ >= stop) {  // a line break at the place to stop belongs to this row
      done = true;
    } else if (kind == ByteClass::tab) {
      const std::int32_t tabStop = std::min(line.Llen - line.Llen % tabLength_ + tabLength_, lineLen_);
      std::int32_t blanks = std::max(tabStop - line.Llen, 0);
      if constexpr (kWrite) {
        blanks = std::min(blanks, textLimit_ - textEnd_);
        std::fill_n(out_ + textEnd_, blanks, CellOf(' '));
        textEnd_ += blanks;
      }
      line.Llen += blanks;
      ++off_;
    } else if (line.Llen < lineLen_) {
      std::int32_t count = std::min(stop - off_, lineLen_ - line.Llen);
      if constexpr (kWrite) {
        count = CopyPlain(std::min(count, textLimit_ - textEnd_), out_ + textEnd_);
        textEnd_ += count;
      } else {
        std::int32_t n = 0;
        while (n < count && classes_[bytes_[off_ + n]] == ByteClass::plain)
          ++n;
        count = n;
      }
      line.Llen += count;
      off_ += count;
    } else if (wraps) {
      done = true;
    } else {
      off_ = FindLineBreak(bytes_, off_, size_);
      line.Lflags |= LF_TRUNCATED;
      if constexpr (kWrite) status_ |= VS_TRUNCATED;
    }
  }
  return done || line.Llen >= lineLen_;
}

// One row from off_ on, with its entry: true when it is complete.
template <bool kWrite>
bool TextPass::MakeRow(std::int32_t stop, bool wraps, LineEntry& line) {
  line = LineEntry{PosAt(off_), textEnd_, 0, 0, 0};
  broke_ = false;
  if (PassFormFeed(line)) return true;
  return MakeCharacters<kWrite>(stop, wraps, line);
}

ViewStatus TextPass::Forward(std::int32_t start, LineCursor& lines, TextBuffer& text) {
  UseText(text);
  off_ = start;
  lines.Cend = PosAt(off_);
  bool isLong = lines.Clong == LongLine::yes;
  bool judged = lines.Clong != LongLine::no;  // whether isLong holds for the physical line at hand
  bool more = off_ < size_ && textEnd_ < textLimit_;
  while (lines.Ccur < lines.Ccnt - 1 && more) {
    LineEntry& line = lines.Cline[lines.Ccur];
    const std::int32_t rowStart = off_;
    const std::int32_t rowText = textEnd_;
    const ViewStatus before = status_;
    bool done = MakeRow<true>(isLong ? NextCut(rowStart) : size_, wraps_ || isLong, line);
    if (!judged && (!broke_ || off_ - rowStart > limit_)) {
      const LongLine judgement = piece_.Judge(rowStart, limit_);
      judged = true;
      isLong = judgement == LongLine::yes;
      if (judgement != LongLine::no) {
        off_ = rowStart;
        textEnd_ = rowText;
        status_ = before;
        if (!isLong) break;
        // Make the row anew, as one of a long line.
        done = MakeRow<true>(NextCut(rowStart), true, line);
      }
    }
    // A row that fills the text to its last character may have lost the line break behind it.
    if (lines.Clong != LongLine::unknown && textEnd_ >= textLimit_ && !broke_) {
      textEnd_ = rowText;
      off_ = rowStart;
      break;
    }
    if (textEnd_ >= textLimit_ || off_ >= size_) more = false;
    if (!done && off_ >= size_) {
      status_ |= VS_SHORT;
      line.Lflags |= LF_INCOMPLETE;
      done = true;
    }
    if (done) {
      ++lines.Ccur;
      lines.Cend = PosAt(off_);
    } else {
      textEnd_ = rowText;  // given up
    }
    if (broke_) {
      isLong = false;
      judged = lines.Clong == LongLine::unknown;
    }
  }
  lines.Cline[lines.Ccur] = SentinelAt(PosAt(off_));
  text.Tend = textEnd_;
  return status_;
}

ViewStatus TextPass::Backward(std::int32_t start, LineCursor& lines, TextBuffer& text) {
  UseText(text);
  const bool known = lines.Clong != LongLine::unknown;
  bool isLong = lines.Clong == LongLine::yes;
  std::int32_t at = std::min(start, size_);
  bool more = at >= 1 && textEnd_ < textLimit_;
  bool first = true;
  while (lines.Ccur > 0 && more && at > 0) {
    const std::int32_t lineStart = piece_.LineStart(at - 1);
    if (!first) {
      isLong = known && at - lineStart > limit_;
      // The slice does not tell where this line begins, nor whether it is a long one.
      if (known && !isLong && !piece_.KnowsStart(lineStart)) break;
    }
    first = false;
    more = isLong ? LongRowsBackward(lines, lineStart, at) : RowsBackward(lines, lineStart, at, !known);
    at = lineStart;
  }
  text.Tend = textEnd_;
  return status_;
}

// The rows of the physical line from index `lineStart` that begin in front of `start`. False when the pass
// must end. `mayCut`: a line that the text has no room for is kept in part.
bool TextPass::RowsBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start, bool mayCut) {
  const bool gap =
      (options_ & VO_PAGEGAP) != 0 && (options_ & VO_FORMFEED) != 0 && bytes_[lineStart] == kPageCharacter;
  if (!gap && !wraps_) return SingleRowBackward(lines, lineStart, start, mayCut);
  const std::size_t count = MeasureRows(lineStart, start, size_, false);
  if (count == 1) return SingleRowBackward(lines, lineStart, start, mayCut);
  return PutRows(lines, count, size_, false);
}

bool TextPass::SingleRowBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start, bool mayCut) {
  const std::int32_t textStart = textEnd_;
  off_ = lineStart;
  LineEntry line{PosAt(off_), textEnd_, 0, 0, 0};
  bool done = PassFormFeed(line);
  if (!done && off_ < start) done = MakeCharacters<true>(size_, wraps_, line);
  bool more = true;
  if (textEnd_ >= textLimit_) {
    more = false;
    if (!mayCut) {
      textEnd_ = textStart;
      return false;
    }
    line.Lflags = LF_INCOMPLETE;
  }
  if (!done) line.Lflags |= LF_INCOMPLETE;
  lines.Cline[--lines.Ccur] = line;
  return more;
}

// Rows of a long line, stretch by stretch upward from `start`, as far as the slice tells where they begin.
// The line break belongs to the row in front of it, so it begins no stretch.
bool TextPass::LongRowsBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start) {
  const bool cutBySlice = lineStart == 0 && base_ > 0;
  std::int32_t stretchEnd = piece_.BreakStart(start - 1);
  if (!IsLineBreak(bytes_[stretchEnd])) stretchEnd = start;
  if (stretchEnd == lineStart && cutBySlice) return false;
  for (std::int32_t end = start; stretchEnd > lineStart; stretchEnd = end) {
    const ByteCount from = RoundDown(PosAt(stretchEnd) - 1, step_) - base_;
    if (from < lineStart && cutBySlice) return false;
    const auto stretch = static_cast<std::int32_t>(std::max<ByteCount>(from, lineStart));
    const std::size_t count = MeasureRows(stretch, end, stretchEnd, true);
    if (!PutRows(lines, count, stretchEnd, true)) return false;
    end = stretch;
  }
  return true;
}

// Measures the rows from index `from` that begin in front of `start` and end at `stop` at the latest. The
// result is their number; the ring holds the last of them.
std::size_t TextPass::MeasureRows(std::int32_t from, std::int32_t start, std::int32_t stop, bool isLong) {
  off_ = from;
  std::size_t count = 0;
  while (off_ < start) {
    const std::int32_t rowStart = off_;
    LineEntry row;
    MakeRow<false>(stop, wraps_ || isLong, row);
    ring_[count % kRing] = {rowStart, row.Llen};
    ++count;
    assert(off_ > rowStart);
  }
  return count;
}

// Makes the measured rows, the last one first, as long as there is room for entries and text. False when
// not all had room.
bool TextPass::PutRows(LineCursor& lines, std::size_t count, std::int32_t stop, bool isLong) {
  const std::size_t kept = std::min(count, kRing);
  for (std::size_t i = 0; i < kept; ++i) {
    const Row row = ring_[(count - 1 - i) % kRing];
    if (lines.Ccur == 0 || row.length >= textLimit_ - textEnd_) return false;
    LineEntry& line = lines.Cline[--lines.Ccur];
    off_ = row.start;
    const bool done = MakeRow<true>(stop, wraps_ || isLong, line);
    const bool atCut = isLong && PosAt(off_).Offset() % step_ == 0;
    if (!done && off_ >= size_ && !atCut) line.Lflags |= LF_INCOMPLETE;
  }
  return kept == count;
}

FilePos TextPass::RowStart(FilePos lineStart, FilePos pos, bool isLong) {
  FilePos from = lineStart;
  if (isLong) {
    const std::int32_t breakStart = piece_.BreakStart(static_cast<std::int32_t>(pos - base_));
    const FilePos character = IsLineBreak(bytes_[breakStart]) ? PosAt(breakStart) - 1 : pos;
    from = std::max(from, RoundDown(character, step_));
  }
  const ByteCount offset = from - base_;
  assert(offset >= 0 && offset <= size_ && pos >= from);
  off_ = static_cast<std::int32_t>(offset);
  FilePos rowStart = from;
  while (PosAt(off_) <= pos && off_ < size_) {
    rowStart = PosAt(off_);
    LineEntry row;
    MakeRow<false>(isLong ? NextCut(off_) : size_, wraps_ || isLong, row);
  }
  return rowStart;
}

}  // namespace

ViewStatus FormatText(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                      std::int32_t direction, ViewOptions options, std::int32_t lineLen) {
  TextPass pass(slice, pos - slice.Soff, options, lineLen);
  return direction == FILL_FORWARD ? pass.Forward(slice.Soff, lines, text)
                                   : pass.Backward(slice.Soff, lines, text);
}

std::int32_t LongLineLimit(ViewOptions options) {
  return (options & VO_WRAP) != 0 ? kViewText : kSliceBytes;
}

std::int32_t LongLineStep(std::int32_t lineLen) {
  const std::int32_t width = std::max(lineLen, 1);
  return width * std::max(kLongLineStretch / width, 1);
}

FilePos TextRowStart(const FileSlice& slice, FilePos slicePos, FilePos lineStart, FilePos pos, bool isLong,
                     ViewOptions options, std::int32_t lineLen) {
  return TextPass(slice, slicePos, options, lineLen).RowStart(lineStart, pos, isLong);
}
