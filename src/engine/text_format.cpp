#include "engine/text_format.h"

#include <array>
#include <cassert>
#include <cstring>
#include <type_traits>

#include "codes/characters.h"
#include "codes/decoders.h"
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

// Bytes that are a character each.
struct OneByte {
  static constexpr TextUnit kText = TextUnit::byte;
  static constexpr std::int32_t kUnit = 1;
  static constexpr std::int32_t kReach = 0;
};
struct Utf8Text : Utf8 {
  static constexpr TextUnit kText = TextUnit::byte;
};
struct Utf16LeText : Utf16Le {
  static constexpr TextUnit kText = TextUnit::utf16le;
};
struct Utf16BeText : Utf16Be {
  static constexpr TextUnit kText = TextUnit::utf16be;
};

// One call of FormatText. The file offset of the byte at index i of the slice is `base` + i all through the
// call, so that only the index runs.
template <typename Code>
class TextPass {
 public:
  TextPass(const FileSlice& slice, FilePos base, ViewOptions options, std::int32_t lineLen)
      : bytes_(slice.Sbuf),
        size_(slice.Slen),
        ahead_(slice.Sahead),
        known_(slice.Slast || slice.Sahead > 0),
        piece_(slice.Sbuf, slice.Slen, base == 0, slice.Slast, Code::kText),
        base_(base),
        options_(options),
        wraps_((options & VO_WRAP) != 0),
        lineLen_(std::max(lineLen, 1)),
        tabLength_(std::max(TextTabLength, 1)),
        limit_(LongLineLimit(options)),
        step_(LongLineStep(lineLen)),
        map_(GetCellMap(options)),
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
  static constexpr bool kOneByte = std::is_same_v<Code, OneByte>;
  static constexpr std::int32_t kUnit = Code::kUnit;

  // How much of the text is in use.
  struct TextMark {
    std::int32_t cells, clusters;
  };

  void UseText(const TextBuffer& text) {
    out_ = text.Tbuf;
    textEnd_ = text.Tend;
    textLimit_ = text.Tlen;
    clusters_ = text.Tcluster;
    clusterEnd_ = text.Tclusters;
  }
  void ReturnText(TextBuffer& text) const {
    text.Tend = textEnd_;
    text.Tclusters = clusterEnd_;
  }
  [[nodiscard]] TextMark Mark() const { return {textEnd_, clusterEnd_}; }
  void Rewind(const TextMark& mark) {
    textEnd_ = mark.cells;
    clusterEnd_ = mark.clusters;
  }
  [[nodiscard]] std::uint32_t UnitAt(std::int32_t index) const {
    if constexpr (Code::kText == TextUnit::byte) return bytes_[index];
    return piece_.UnitAt(index);
  }
  [[nodiscard]] ByteClass ClassAt(std::int32_t index) const {
    const std::uint32_t unit = UnitAt(index);
    if constexpr (kUnit > 1) {
      if (unit > 0xFF) return ByteClass::plain;
    }
    return classes_[unit];
  }
  // The first index at or behind `index`, which is in the data, at which a character begins.
  [[nodiscard]] std::int32_t CharacterFrom(std::int32_t index) const {
    if constexpr (kOneByte) {
      return index;
    } else {
      const std::int32_t start = CharacterStart<Code>(bytes_, size_, index);
      if (start == index) return index;
      const std::int32_t length = Code::Decode(bytes_ + start, bytes_ + size_).length;
      return length == 0 ? size_ : std::min(start + length, size_);
    }
  }
  // Where the stretch of a long line begins that holds the character at file offset `pos`: at a cut, or at
  // the first character behind it. As an index, which may lie in front of the slice.
  [[nodiscard]] ByteCount StretchStart(FilePos pos) const {
    const FilePos cut = RoundDown(pos, step_);
    const ByteCount start = AtCut(cut);
    return base_ + start > pos ? AtCut(cut - step_) : start;
  }
  [[nodiscard]] ByteCount AtCut(FilePos cut) const {
    const ByteCount index = cut - base_;
    return index < 0 || index >= size_ ? index : CharacterFrom(static_cast<std::int32_t>(index));
  }
  [[nodiscard]] FilePos PosAt(std::int32_t index) const { return base_ + index; }
  // The index behind `index` where a row of a long line must end, at most the data's end.
  [[nodiscard]] std::int32_t NextCut(std::int32_t index) const {
    return static_cast<std::int32_t>(
        std::min<ByteCount>(AtCut(RoundDown(PosAt(index), step_) + step_), size_));
  }
  void PassLineBreak();
  bool PassFormFeed(LineEntry& line);
  std::int32_t CopyPlain(std::int32_t room, Cell* out) const;
  template <bool kWrite>
  void CopyBytes(std::int32_t stop, LineEntry& line);
  template <bool kWrite>
  bool CopyCharacters(std::int32_t stop, LineEntry& line);
  template <bool kWrite>
  bool PutCell(Cell cell, std::int32_t columns, LineEntry& line);
  bool AddMark(char32_t mark);
  template <bool kWrite>
  bool MakeCharacters(std::int32_t stop, bool wraps, LineEntry& line);
  [[nodiscard]] bool WideIsNext(std::int32_t columns) const;
  template <bool kWrite>
  bool MakeRow(std::int32_t stop, bool wraps, LineEntry& line);
  bool RowsBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start, bool mayCut);
  bool SingleRowBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start, bool mayCut);
  bool LongRowsBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start);
  std::size_t MeasureRows(std::int32_t from, std::int32_t start, std::int32_t stop, bool isLong);
  bool PutRows(LineCursor& lines, std::size_t count, std::int32_t stop, bool isLong);

  const std::uint8_t* bytes_;
  std::int32_t size_;
  std::int32_t ahead_;
  bool known_;  // where the slice ends, it is known what the last bytes are
  TextPiece piece_;
  FilePos base_;
  ViewOptions options_;
  bool wraps_;
  std::int32_t lineLen_;
  std::int32_t tabLength_;
  std::int32_t limit_;
  std::int32_t step_;
  const Cell* map_;
  const ByteClass* classes_;

  Cell* out_ = nullptr;
  std::int32_t textEnd_ = 0;
  std::int32_t textLimit_ = 0;
  CellCluster* clusters_ = nullptr;
  std::int32_t clusterEnd_ = 0;
  std::int32_t headCell_ = 0;  // of the character that takes marks
  std::int32_t marks_ = 0;     // that it has
  std::int32_t off_ = 0;
  bool broke_ = false;  // the row just made ended at a line break
  ViewStatus status_ = 0;
  std::array<Row, kRing> ring_;
};

template <typename Code>
void TextPass<Code>::PassLineBreak() {
  if (off_ < size_ - kUnit && IsBreakPair(UnitAt(off_), UnitAt(off_ + kUnit))) off_ += kUnit;
  off_ += kUnit;
  if (piece_.IsEndMark(off_)) off_ += kUnit;
  broke_ = true;
}

// At the start of a row: true when a form feed makes the row an empty one of its own.
template <typename Code>
bool TextPass<Code>::PassFormFeed(LineEntry& line) {
  if (UnitAt(off_) != kPageCharacter || (options_ & VO_FORMFEED) == 0) return false;
  off_ += kUnit;
  if ((options_ & VO_PAGEGAP) != 0) {
    line.Lflags |= LF_PAGEGAP;
    return true;
  }
  line.Lflags |= LF_PAGEMARK;
  return false;
}

// Copies plain bytes, at most `room` of them, through the map; the number copied.
template <typename Code>
std::int32_t TextPass<Code>::CopyPlain(std::int32_t room, Cell* out) const {
  const std::uint8_t* from = bytes_ + off_;
  std::int32_t n = 0;
  while (n < room && classes_[from[n]] == ByteClass::plain) {
    out[n] = map_[from[n]];
    ++n;
  }
  return n;
}

// Plain bytes of one row that are a character each.
template <typename Code>
template <bool kWrite>
void TextPass<Code>::CopyBytes(std::int32_t stop, LineEntry& line) {
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
}

// Adds a cell that takes `columns` columns. False, with the text full, when there is no room for it.
template <typename Code>
template <bool kWrite>
bool TextPass<Code>::PutCell(Cell cell, std::int32_t columns, LineEntry& line) {
  if constexpr (kWrite) {
    if (textLimit_ - textEnd_ < columns) {
      textEnd_ = textLimit_;
      return false;
    }
    headCell_ = textEnd_;
    out_[textEnd_] = cell;
    if (columns > 1) out_[textEnd_ + 1] = kWideTail;
    textEnd_ += columns;
  }
  line.Llen += columns;
  return true;
}

// Adds a mark to the last character. False, with the text full, when there is no room for it.
template <typename Code>
bool TextPass<Code>::AddMark(char32_t mark) {
  Cell& cell = out_[headCell_];
  if ((cell & kCellKinds) != kClusterCell) {
    if (clusterEnd_ >= textLimit_) {
      textEnd_ = textLimit_;
      return false;
    }
    clusters_[clusterEnd_] = {cell, {}};
    cell = kClusterCell | static_cast<Cell>(clusterEnd_++);
  }
  clusters_[cell & ~kCellKinds].marks[static_cast<std::size_t>(marks_)] = mark;
  return true;
}

// Characters of one row, with their marks, as far as there are no tabs and line breaks. True when the row is
// full and the next character belongs to another one.
template <typename Code>
template <bool kWrite>
bool TextPass<Code>::CopyCharacters(std::int32_t stop, LineEntry& line) {
  constexpr auto kFullMarks = static_cast<std::int32_t>(CellCluster::kMostMarks);
  marks_ = kFullMarks;  // nothing is there that takes marks
  while (off_ < stop) {
    if constexpr (Code::kText == TextUnit::byte) {
      // Most text is ASCII, and needs none of what follows.
      std::int32_t room = std::min(stop - off_, lineLen_ - line.Llen);
      if constexpr (kWrite) room = std::min(room, textLimit_ - textEnd_);
      const std::uint8_t* from = bytes_ + off_;
      std::int32_t n = 0;
      for (; n < room && from[n] >= 0x20 && from[n] < 0x7F; ++n) {
        if constexpr (kWrite) out_[textEnd_ + n] = from[n];
      }
      if (n > 0) {
        if constexpr (kWrite) headCell_ = (textEnd_ += n) - 1;
        line.Llen += n;
        off_ += n;
        marks_ = 0;
        if (off_ >= stop) break;
      }
    }
    if (ClassAt(off_) != ByteClass::plain) return false;
    Decoded next = Code::Decode(bytes_ + off_, bytes_ + size_ + ahead_);
    if ((next.length == 0 && !known_) ||
        next.length > size_ - off_) {  // how it goes on, the slice does not tell
      off_ = size_;
      return false;
    }
    if (next.length == 0) next = {kNoCharacter, std::min(kUnit, size_ - off_)};
    Cell cell = next.character;
    std::int32_t columns = 1;
    std::int32_t marks = kFullMarks;
    if (next.character == kNoCharacter) {
      cell = kBadCell | (next.length < kUnit ? bytes_[off_] : UnitAt(off_));
    } else {
      switch (KnownKind(next.character)) {
        case CharacterKind::mark:
          if (marks_ < kFullMarks) {
            if constexpr (kWrite) {
              if (!AddMark(next.character)) return false;
            }
            ++marks_;
            off_ += next.length;
            continue;
          }
          cell = 0;  // it stands alone
          marks = 0;
          break;
        case CharacterKind::control:
          if (cell == kPageCharacter) {
            if ((options_ & VO_KEEPFF) == 0) cell = kPageSign;
          } else if (cell != kTab) {
            cell = kControlSign;
          }
          break;
        case CharacterKind::format:
          break;
        case CharacterKind::wide:
          columns = 2;
          [[fallthrough]];
        case CharacterKind::narrow:
          marks = 0;
          break;
      }
    }
    const std::int32_t room = lineLen_ - line.Llen;
    if (room < columns && (room == 0 || lineLen_ > 1)) return true;
    if (!PutCell<kWrite>(cell, std::min(columns, room), line)) return false;
    marks_ = marks;
    if (cell == 0) {
      if constexpr (kWrite) {
        if (!AddMark(next.character)) return false;
      }
      marks_ = 1;
    }
    off_ += next.length;
  }
  return false;
}

// The characters of one row, from off_ on: true when the row is complete. It ends at a line break, at
// `stop`, or when it is full; data and text may end earlier. Without kWrite it only measures.
template <typename Code>
template <bool kWrite>
bool TextPass<Code>::MakeCharacters(std::int32_t stop, bool wraps, LineEntry& line) {
  bool done = false;
  while (!done && off_ < size_ && (!kWrite || textEnd_ < textLimit_)) {
    const ByteClass kind = ClassAt(off_);
    bool full = false;
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
        std::fill_n(out_ + textEnd_, blanks, U' ');
        textEnd_ += blanks;
      }
      line.Llen += blanks;
      off_ += kUnit;
    } else if constexpr (kOneByte) {
      full = line.Llen >= lineLen_;
      if (!full) CopyBytes<kWrite>(stop, line);
    } else {
      full = CopyCharacters<kWrite>(stop, line);
    }
    if (full && wraps) {
      done = true;
    } else if (full) {
      off_ = FindLineBreak(bytes_, off_, size_, Code::kText);
      line.Lflags |= LF_TRUNCATED;
      if constexpr (kWrite) status_ |= VS_TRUNCATED;
    }
  }
  return done || line.Llen >= lineLen_ || (wraps && WideIsNext(line.Llen));
}

// Whether the data ends in front of a wide character for which the row has no room.
template <typename Code>
bool TextPass<Code>::WideIsNext(std::int32_t columns) const {
  if constexpr (!kOneByte) {
    if (off_ < size_ || ahead_ == 0 || columns != lineLen_ - 1 || columns == 0) return false;
    const Decoded next = Code::Decode(bytes_ + size_, bytes_ + size_ + ahead_);
    return next.character != kNoCharacter && KnownKind(next.character) == CharacterKind::wide;
  }
  return false;
}

// One row from off_ on, with its entry: true when it is complete.
template <typename Code>
template <bool kWrite>
bool TextPass<Code>::MakeRow(std::int32_t stop, bool wraps, LineEntry& line) {
  line = LineEntry{PosAt(off_), textEnd_, 0, 0, 0};
  broke_ = false;
  if (PassFormFeed(line)) return true;
  return MakeCharacters<kWrite>(stop, wraps, line);
}

template <typename Code>
ViewStatus TextPass<Code>::Forward(std::int32_t start, LineCursor& lines, TextBuffer& text) {
  UseText(text);
  off_ = start;
  lines.Cend = PosAt(off_);
  bool isLong = lines.Clong == LongLine::yes;
  bool judged = lines.Clong != LongLine::no;  // whether isLong holds for the physical line at hand
  bool more = off_ < size_ && textEnd_ < textLimit_;
  while (lines.Ccur < lines.Ccnt - 1 && more) {
    LineEntry& line = lines.Cline[lines.Ccur];
    const std::int32_t rowStart = off_;
    const TextMark rowText = Mark();
    const ViewStatus before = status_;
    bool done = MakeRow<true>(isLong ? NextCut(rowStart) : size_, wraps_ || isLong, line);
    if (!judged && (!broke_ || off_ - rowStart > limit_)) {
      const LongLine judgement = piece_.Judge(rowStart, limit_);
      judged = true;
      isLong = judgement == LongLine::yes;
      if (judgement != LongLine::no) {
        off_ = rowStart;
        Rewind(rowText);
        status_ = before;
        if (!isLong) break;
        // Make the row anew, as one of a long line.
        done = MakeRow<true>(NextCut(rowStart), true, line);
      }
    }
    // A row that fills the text to its last character may have lost the line break behind it.
    if (lines.Clong != LongLine::unknown && textEnd_ >= textLimit_ && !broke_) {
      Rewind(rowText);
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
      Rewind(rowText);  // given up
    }
    if (broke_) {
      isLong = false;
      judged = lines.Clong == LongLine::unknown;
    }
  }
  lines.Cline[lines.Ccur] = SentinelAt(PosAt(off_));
  ReturnText(text);
  return status_;
}

template <typename Code>
ViewStatus TextPass<Code>::Backward(std::int32_t start, LineCursor& lines, TextBuffer& text) {
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
  ReturnText(text);
  return status_;
}

// The rows of the physical line from index `lineStart` that begin in front of `start`. False when the pass
// must end. `mayCut`: a line that the text has no room for is kept in part.
template <typename Code>
bool TextPass<Code>::RowsBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start,
                                  bool mayCut) {
  const bool gap =
      (options_ & VO_PAGEGAP) != 0 && (options_ & VO_FORMFEED) != 0 && UnitAt(lineStart) == kPageCharacter;
  if (!gap && !wraps_) return SingleRowBackward(lines, lineStart, start, mayCut);
  const std::size_t count = MeasureRows(lineStart, start, size_, false);
  if (count == 1) return SingleRowBackward(lines, lineStart, start, mayCut);
  return PutRows(lines, count, size_, false);
}

template <typename Code>
bool TextPass<Code>::SingleRowBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start,
                                       bool mayCut) {
  const TextMark textStart = Mark();
  off_ = lineStart;
  LineEntry line{PosAt(off_), textEnd_, 0, 0, 0};
  bool done = PassFormFeed(line);
  if (!done && off_ < start) done = MakeCharacters<true>(size_, wraps_, line);
  bool more = true;
  if (textEnd_ >= textLimit_) {
    more = false;
    if (!mayCut) {
      Rewind(textStart);
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
template <typename Code>
bool TextPass<Code>::LongRowsBackward(LineCursor& lines, std::int32_t lineStart, std::int32_t start) {
  const bool cutBySlice = lineStart == 0 && base_ > 0;
  std::int32_t stretchEnd = piece_.BreakStart(start - 1);
  if (!IsLineBreak(UnitAt(stretchEnd))) stretchEnd = start;
  if (stretchEnd == lineStart && cutBySlice) return false;
  for (std::int32_t end = start; stretchEnd > lineStart; stretchEnd = end) {
    // A character may reach over the cut from what the slice does not hold.
    const ByteCount from = StretchStart(PosAt(stretchEnd) - 1);
    if (cutBySlice && from < lineStart + Code::kReach) return false;
    const auto stretch = static_cast<std::int32_t>(std::max<ByteCount>(from, lineStart));
    const std::size_t count = MeasureRows(stretch, end, stretchEnd, true);
    if (!PutRows(lines, count, stretchEnd, true)) return false;
    end = stretch;
  }
  return true;
}

// Measures the rows from index `from` that begin in front of `start` and end at `stop` at the latest. The
// result is their number; the ring holds the last of them.
template <typename Code>
std::size_t TextPass<Code>::MeasureRows(std::int32_t from, std::int32_t start, std::int32_t stop,
                                        bool isLong) {
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
template <typename Code>
bool TextPass<Code>::PutRows(LineCursor& lines, std::size_t count, std::int32_t stop, bool isLong) {
  const std::size_t kept = std::min(count, kRing);
  for (std::size_t i = 0; i < kept; ++i) {
    const Row row = ring_[(count - 1 - i) % kRing];
    if (lines.Ccur == 0 || row.length >= textLimit_ - textEnd_) return false;
    LineEntry& line = lines.Cline[--lines.Ccur];
    off_ = row.start;
    const bool done = MakeRow<true>(stop, wraps_ || isLong, line);
    const bool atCut = isLong && AtCut(RoundDown(PosAt(off_), step_)) == off_;
    if (!done && off_ >= size_ && !atCut) line.Lflags |= LF_INCOMPLETE;
  }
  return kept == count;
}

template <typename Code>
FilePos TextPass<Code>::RowStart(FilePos lineStart, FilePos pos, bool isLong) {
  FilePos from = lineStart;
  if (isLong) {
    const std::int32_t breakStart = piece_.BreakStart(static_cast<std::int32_t>(pos - base_));
    const FilePos character = IsLineBreak(UnitAt(breakStart)) ? PosAt(breakStart) - 1 : pos;
    from = std::max(from, base_ + StretchStart(character));
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

// Calls `use` with a pass in the code that the options name.
template <typename Use>
auto WithPass(const FileSlice& slice, FilePos base, ViewOptions options, std::int32_t lineLen, Use use) {
  switch (options & VO_UNICODE) {
    case VO_UTF8:
      return use(TextPass<Utf8Text>(slice, base, options, lineLen));
    case VO_UTF16LE:
      return use(TextPass<Utf16LeText>(slice, base, options, lineLen));
    case VO_UTF16BE:
      return use(TextPass<Utf16BeText>(slice, base, options, lineLen));
    default:
      return use(TextPass<OneByte>(slice, base, options, lineLen));
  }
}

}  // namespace

ViewStatus FormatText(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                      std::int32_t direction, ViewOptions options, std::int32_t lineLen) {
  return WithPass(slice, pos - slice.Soff, options, lineLen, [&](auto&& pass) {
    return direction == FILL_FORWARD ? pass.Forward(slice.Soff, lines, text)
                                     : pass.Backward(slice.Soff, lines, text);
  });
}

TextUnit TextUnitOf(ViewOptions options) {
  switch (options & VO_UNICODE) {
    case VO_UTF16LE:
      return TextUnit::utf16le;
    case VO_UTF16BE:
      return TextUnit::utf16be;
    default:
      return TextUnit::byte;
  }
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
  return WithPass(slice, slicePos, options, lineLen,
                  [&](auto&& pass) { return pass.RowStart(lineStart, pos, isLong); });
}
