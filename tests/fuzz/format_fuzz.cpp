// One pass of a format routine over any slice, from any place, in any room: what FormatProc promises holds.
#include <algorithm>
#include <cstring>
#include <memory>

#include "engine/text_format.h"
#include "tests/fuzz/fuzz_inputs.h"

namespace {

constexpr std::int32_t kGuard = 32;
constexpr LineEntry kRubbish = {-9, -9, -9, -9, 9};

bool Same(const LineEntry& a, const LineEntry& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

// Lines and text as the routine finds them, `from` on or up to it free.
struct Room {
  Room(FuzzInput& input, bool forward) {
    const std::int32_t textSizes[] = {0, 1, 21, 22, 100, 1000, 29484, kViewText};
    text.Tlen = input.Chance(2) ? input.OneOf(textSizes) : input.Between(0, kViewText);
    text.Tend = input.Chance(2) ? input.Between(0, text.Tlen) : 0;
    const std::int32_t entryCounts[] = {1, 2, 5, 40, kViewLines};
    const std::int32_t count = input.OneOf(entryCounts);
    from = input.Chance(2) ? input.Between(0, count - 1) : forward ? 0 : count;
    cells.assign(static_cast<std::size_t>(text.Tlen + kGuard), U'#');
    entries.assign(static_cast<std::size_t>(count), kRubbish);
    clusters.resize(static_cast<std::size_t>(text.Tlen));
    text.Tbuf = cells.data();
    text.Tcluster = clusters.data();
  }
  [[nodiscard]] const LineEntry& At(std::int32_t line) const {
    return entries[static_cast<std::size_t>(line)];
  }
  // Nothing but the entries `first` to `behind` - 1 and the characters behind the former ones was written.
  void CheckUntouched(std::int32_t first, std::int32_t behind) const {
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(entries.size()); ++i)
      FUZZ_CHECK((i >= first && i < behind) || Same(At(i), kRubbish));
    const auto isGuard = [](Cell c) { return c == U'#'; };
    FUZZ_CHECK(std::all_of(cells.begin(), cells.begin() + text.Tend, isGuard));
    FUZZ_CHECK(std::all_of(cells.begin() + text.Tlen, cells.end(), isGuard));
  }
  std::vector<Cell> cells;
  std::vector<CellCluster> clusters;
  std::vector<LineEntry> entries;
  TextBuffer text{};
  std::int32_t from = 0;
};

// What the loader might say of the line that a pass starts in, the one of the byte at `at`: `yes` and `no`
// only where the bytes do not tell otherwise.
LongLine PossibleAnswer(FuzzInput& input, const Shown& known, FilePos at) {
  const LongLine answers[] = {LongLine::unknown, LongLine::no, LongLine::yes};
  const LongLine answer = input.OneOf(answers);
  if (known.At(at) < 0) return LongLine::unknown;
  FilePos first = at;
  FilePos behind = at;
  while (first > known.base && !known.BreakAt(first - 1))
    --first;
  while (behind < known.End() && !known.BreakAt(behind))
    ++behind;
  const bool fits = behind + 2 - first <= LongLineLimit(known.options);
  const bool seenWhole = (first > known.base || known.base == 0) && behind < known.End();
  const bool possible = answer == LongLine::no ? fits : !(fits && seenWhole);
  return possible ? answer : LongLine::unknown;
}

// Lines `first` to `behind` - 1: ascending, each with text of its own within the new text.
void CheckLines(const Room& room, const TextBuffer& text, const Shown& shown, std::int32_t first,
                std::int32_t behind, bool forward, FilePos end) {
  for (std::int32_t i = first; i < behind; ++i) {
    const LineEntry& line = room.At(i);
    FUZZ_CHECK(line.Ltext >= room.text.Tend && line.Ltext + line.Llen <= text.Tend && line.Lpage == 0);
    const bool last = i + 1 == behind;
    if (!last) {
      const LineEntry& below = room.At(i + 1);
      FUZZ_CHECK(below.Lpos > line.Lpos);
      FUZZ_CHECK(forward ? below.Ltext >= line.Ltext + line.Llen : line.Ltext >= below.Ltext + below.Llen);
    }
    // A text line made backward from a place inside it is made whole.
    const bool mayReachFurther = last && !forward && shown.format == 0;
    CheckLine(shown, line, last ? end : room.At(i + 1).Lpos, mayReachFurther ? LineEnd::open : LineEnd::exact,
              !forward && i == first && shown.base == 0);
  }
}

}  // namespace

void FuzzFormat(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const int format = input.Byte() % 3;
  const bool forward = input.Chance(2);
  const ViewOptions options = input.Options() | (input.Chance(2) ? input.Word() & VO_HEXDIGITS : 0U);
  const std::int32_t lineLen = input.LineLen();
  input.SetTabs();
  Room room(input, forward);
  const FilePos bases[] = {
      0, 1, 5, 4000, 0x7FFFFFF0, 0xFFFFFFF0, FilePos::At(1LL << 40), INTPTR_MAX - INT32_MAX - kSliceBytes};
  // Units of two bytes begin at even places, and so do slices of text and rows.
  const bool isUtf16 = format == 0 && (options & (VO_UTF16LE | VO_UTF16BE)) != 0;
  FilePos base = input.OneOf(bases);
  if (isUtf16) base = base - base.Offset() % 2;
  const int where = input.Byte() % 8;
  const std::uint32_t place = input.Word();
  const std::vector<std::uint8_t> bytes = input.FileBytes(kSliceBytes);

  // A copy of exactly the slice's size: the sanitizer sees a read outside, and a write into it shows.
  const auto length = static_cast<std::int32_t>(bytes.size());
  const auto copy = std::make_unique<std::uint8_t[]>(bytes.size());
  std::copy(bytes.begin(), bytes.end(), copy.get());
  std::int32_t off = static_cast<std::int32_t>(place % static_cast<std::uint32_t>(length + 1));
  if (where < 2) off = 0;
  if (where == 2 || where == 3) off = length;
  if (where == 4) off = length + static_cast<std::int32_t>(place >> 1) % (INT32_MAX - length);
  if (isUtf16) off -= off % 2;
  const FilePos pos = base + off;

  TextBuffer text = room.text;
  Shown shown = {bytes, base, format, options, lineLen, text.Tbuf};
  LineCursor cursor;
  cursor.Cline = room.entries.data();
  cursor.Ccnt = static_cast<std::int32_t>(room.entries.size());
  cursor.Ccur = room.from;
  cursor.Clong = isUtf16 ? LongLine::unknown : PossibleAnswer(input, shown, forward ? pos : pos - 1);
  const LineCursor given = cursor;
  const ViewStatus status = kFuzzRoutines[format]({copy.get(), length, off}, cursor, text, pos,
                                                  forward ? FILL_FORWARD : FILL_BACKWARD, options, lineLen);

  FUZZ_CHECK(text.Tclusters >= 0 && text.Tclusters <= text.Tlen);
  shown.clusters = text.Tclusters;
  FUZZ_CHECK(std::equal(bytes.begin(), bytes.end(), copy.get()));
  FUZZ_CHECK(cursor.Cline == given.Cline && cursor.Ccnt == given.Ccnt);
  FUZZ_CHECK(text.Tbuf == room.text.Tbuf && text.Tlen == room.text.Tlen);
  if ((status & VS_FAILED) != 0) {
    FUZZ_CHECK(format == 1 && lineLen < 22 + ColumnsOfHex(options).most && status == (VS_FAILED | VS_NARROW));
    FUZZ_CHECK(cursor.Ccur == room.from && text.Tend == room.text.Tend);
    room.CheckUntouched(0, 0);
    return;
  }
  FUZZ_CHECK(text.Tend >= room.text.Tend && text.Tend <= text.Tlen);
  if (forward) {
    FUZZ_CHECK(cursor.Ccur >= room.from && cursor.Ccur < cursor.Ccnt);
    const LineEntry& sentinel = room.At(cursor.Ccur);
    FUZZ_CHECK(Same(sentinel, SentinelAt(sentinel.Lpos)));
    FUZZ_CHECK(cursor.Cend >= pos && cursor.Cend <= sentinel.Lpos);
    FUZZ_CHECK(sentinel.Lpos <= std::max(pos, shown.End()));
    FUZZ_CHECK(format == 0 || cursor.Cend == sentinel.Lpos);
    FUZZ_CHECK(cursor.Ccur == room.from ? cursor.Cend == pos : room.At(room.from).Lpos == pos);
    room.CheckUntouched(room.from, cursor.Ccur + 1);
    CheckLines(room, text, shown, room.from, cursor.Ccur, forward, cursor.Cend);
  } else {
    FUZZ_CHECK(cursor.Ccur >= 0 && cursor.Ccur <= room.from);
    room.CheckUntouched(cursor.Ccur - 1, room.from);  // the entry above may hold a line that was given up
    FUZZ_CHECK(cursor.Ccur == room.from || room.At(room.from - 1).Lpos < pos);
    CheckLines(room, text, shown, cursor.Ccur, room.from, forward, std::min(pos, shown.End()));
  }
}
