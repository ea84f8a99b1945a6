#include "engine/page_padding.h"

#include <algorithm>

namespace {

constexpr std::int32_t kUnknownRow = -1;  // until the first page begins

constexpr bool IsWhite(Cell c) {
  return c == U' ' || (c >= U'\t' && c <= U'\r');
}

bool IsBlank(const LineEntry& line, const TextBuffer& text) {
  return std::ranges::all_of(LineCells(line, text), IsWhite);
}

constexpr bool BeginsPage(const LineEntry& line) {
  return (line.Lflags & (LF_PAGEMARK | LF_PAGEGAP)) != 0;
}

void NumberRows(const LineArray& lines) {
  std::int32_t row = kUnknownRow;
  for (LineEntry* line = lines.Aline + lines.Afirst; line < lines.Aline + lines.Alast; ++line) {
    if (row != kUnknownRow) ++row;
    if ((line->Lflags & LF_PAGEGAP) != 0) row = 0;
    if ((line->Lflags & LF_PAGEMARK) != 0 || line->Lpos == 0) row = 1;
    line->Lpage = row;
  }
}

// Makes room for one more line at the end of a full array. Where no line lies above the top one, the last
// line drops out instead, and the run no longer ends with the file: false.
bool FreeLastEntry(LineArray& lines) {
  if (lines.Acur == 0) {
    if (lines.Alast > 1) --lines.Alast;
    lines.Aline[lines.Alast] = SentinelAt(lines.Aline[lines.Alast].Lpos);
    return false;
  }
  const std::int32_t first = std::max<std::int32_t>(lines.Afirst, 1);
  std::copy(lines.Aline + first, lines.Aline + lines.Alast, lines.Aline + first - 1);
  lines.Afirst = static_cast<std::int16_t>(first - 1);
  --lines.Acur;
  --lines.Alast;
  return true;
}

// The end of the file: blank lines give way to one line that stands for the page break.
void TrimEnd(LineArray& lines, const TextBuffer& text, FilePos fileLength) {
  const FilePos end = lines.Aline[lines.Alast].Lpos;
  if (end < fileLength) return;
  std::int32_t at = lines.Alast;
  std::uint32_t tags = 0;
  while (at - 1 > lines.Afirst && IsBlank(lines.Aline[at - 1], text))
    tags |= lines.Aline[--at].Lflags & LF_TAGMASK;
  LineEntry gap = {lines.Aline[at].Lpos, 0, 0, 0, LF_PAGEGAP | tags};
  if (at == lines.Alast) {  // no blank line, no byte
    gap.Lflags = LF_PAGEGAP | LF_PADDING;
    if (at == lines.Acnt - 1 && !FreeLastEntry(lines)) return;
    at = lines.Alast;
  }
  lines.Aline[at] = gap;
  lines.Aline[at + 1] = SentinelAt(end);
  lines.Alast = static_cast<std::int16_t>(at + 1);
  lines.Acur = std::min<std::int16_t>(lines.Acur, static_cast<std::int16_t>(at));
}

// The run as it will lie in the array. The rows of the lines that are kept follow from their numbers alone,
// so everything is counted before anything moves.
class Padding {
 public:
  Padding(LineArray& lines, std::int32_t pageLength)
      : lines_(lines),
        pageLength_(pageLength),
        above_(Distance(lines.Afirst, lines.Acur)),
        below_(Distance(lines.Acur, lines.Alast - 1)) {}

  void Place() {
    PlaceTop();
    DropEnds();
    MoveTop();
    SpreadAbove();
    SpreadBelow();
    lines_.Afirst = static_cast<std::int16_t>(top_ - above_);
    lines_.Acur = static_cast<std::int16_t>(top_);
    lines_.Alast = static_cast<std::int16_t>(top_ + below_ + 1);
  }

 private:
  [[nodiscard]] std::int32_t RowsBetween(const LineEntry& line, const LineEntry& next) const {
    if (!BeginsPage(next) || line.Lpage == kUnknownRow) return 0;
    return std::max(pageLength_ - line.Lpage, 0);
  }
  // From entry i to the next one.
  [[nodiscard]] std::int32_t Step(std::int32_t i) const {
    return 1 + RowsBetween(lines_.Aline[i], lines_.Aline[i + 1]);
  }
  [[nodiscard]] std::int32_t Distance(std::int32_t from, std::int32_t to) const;
  void PlaceTop();
  void DropEnds();
  void MoveTop();
  void SpreadAbove();
  void SpreadBelow();

  LineArray& lines_;
  std::int32_t pageLength_;
  std::int32_t above_;    // rows from the first line to the top one
  std::int32_t below_;    // rows from the top line to the last one
  std::int32_t top_ = 0;  // the entry where the top line will be
};

std::int32_t Padding::Distance(std::int32_t from, std::int32_t to) const {
  std::int32_t rows = 0;
  for (std::int32_t i = from; i < to; ++i)
    rows += Step(i);
  return rows;
}

// The top line keeps its entry, or moves as little as lets all rows find room. Where they cannot, both sides
// share the array, and the shorter one leaves to the other what it does not need.
void Padding::PlaceTop() {
  const std::int32_t lowest = above_;
  const std::int32_t highest = lines_.Acnt - 2 - below_;
  top_ = lowest <= highest ? std::clamp<std::int32_t>(lines_.Acur, lowest, highest)
                           : std::clamp((lines_.Acnt - 2) / 2, highest, lowest);
}

void Padding::DropEnds() {
  while (above_ > top_)
    above_ -= Step(lines_.Afirst++);
  const std::int32_t room = lines_.Acnt - 2 - top_;
  // A last row that spans no byte takes the line above it along: the sentinel must tell that something is
  // left behind it.
  const auto endsShort = [this] { return (lines_.Aline[lines_.Alast].Lflags & LF_PADDING) != 0; };
  while (below_ > room || (below_ > 0 && endsShort())) {
    --lines_.Alast;
    below_ -= Step(lines_.Alast - 1);
  }
  lines_.Aline[lines_.Alast] = SentinelAt(lines_.Aline[lines_.Alast].Lpos);
}

// Moves the lines, as close together as they are, so that the top line comes to its entry.
void Padding::MoveTop() {
  LineEntry* first = lines_.Aline + lines_.Afirst;
  LineEntry* behind = lines_.Aline + lines_.Alast + 1;
  const std::int32_t by = top_ - lines_.Acur;
  if (by < 0) std::copy(first, behind, first + by);
  if (by > 0) std::copy_backward(first, behind, behind + by);
  lines_.Afirst = static_cast<std::int16_t>(lines_.Afirst + by);
  lines_.Alast = static_cast<std::int16_t>(lines_.Alast + by);
}

// Lines above the top one move toward the start of the array, the first of them first.
void Padding::SpreadAbove() {
  LineEntry* to = lines_.Aline + top_ - above_;
  for (std::int32_t i = lines_.Afirst; i < top_; ++i) {
    const LineEntry line = lines_.Aline[i];
    const LineEntry& next = lines_.Aline[i + 1];
    const std::int32_t rows = RowsBetween(line, next);
    *to++ = line;
    for (std::int32_t row = 1; row <= rows; ++row)
      *to++ = {next.Lpos, 0, 0, line.Lpage + row, LF_PADDING};
  }
}

// Lines below the top one move toward the end of the array, the sentinel and the last of them first.
void Padding::SpreadBelow() {
  LineEntry* to = lines_.Aline + top_ + below_ + 1;
  *to = lines_.Aline[lines_.Alast];
  for (std::int32_t i = lines_.Alast - 1; i > top_; --i) {
    const LineEntry line = lines_.Aline[i];
    const LineEntry& before = lines_.Aline[i - 1];
    const std::int32_t rows = RowsBetween(before, line);
    *--to = line;
    for (std::int32_t row = rows; row > 0; --row)
      *--to = {line.Lpos, 0, 0, before.Lpage + row, LF_PADDING};
  }
}

}  // namespace

void PadPages(LineArray& lines, const TextBuffer& text, FilePos fileLength, std::int32_t pageLength) {
  if (lines.Afirst >= lines.Alast) return;
  NumberRows(lines);
  TrimEnd(lines, text, fileLength);
  Padding(lines, std::min(pageLength, LongestPaddedPage(lines))).Place();
}

void DropUnknownPage(LineArray& lines, std::int32_t pageLength) {
  std::int32_t first = lines.Afirst;
  while (first < lines.Acur && lines.Aline[first].Lpage == kUnknownRow)
    ++first;
  const bool known = lines.Afirst < lines.Alast && lines.Aline[first].Lpage != kUnknownRow;
  const std::int32_t full = std::min(pageLength, LongestPaddedPage(lines));
  if (known && first - lines.Afirst < full) lines.Afirst = static_cast<std::int16_t>(first);
}
