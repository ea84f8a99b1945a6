// One pass of a format routine over any slice, from any place, in any room: what FormatProc promises holds.
#include <cstring>
#include <memory>

#include "engine/text_format.h"
#include "tests/fuzz/fuzz_inputs.h"

namespace {

constexpr std::int32_t kGuard = 32;

struct Room {
  Room(FuzzInput& input, std::int32_t direction) {
    const std::int32_t textSizes[] = {0, 1, 21, 22, 100, 1000, 29484, kViewText};
    text = TextBuffer{nullptr, input.OneOf(textSizes), 0};
    if (input.Chance(2)) text.Tlen = input.Between(0, kViewText);
    if (input.Chance(2)) text.Tend = input.Between(0, text.Tlen);
    const std::int32_t entryCounts[] = {1, 2, 5, 40, kViewLines};
    count = input.OneOf(entryCounts);
    const bool ends = input.Chance(2);
    if (direction == FILL_FORWARD) {
      from = ends ? 0 : input.Between(0, count - 1);
    } else {
      from = ends ? count : input.Between(0, count);
    }
    characters = std::vector<char>(static_cast<std::size_t>(text.Tlen + kGuard), '#');
    entries = std::vector<LineEntry>(static_cast<std::size_t>(count), LineEntry{-9, -9, -9, -9, 9});
    text.Tbuf = characters.data();
  }
  std::vector<char> characters;
  std::vector<LineEntry> entries;
  TextBuffer text;
  std::int32_t count = 0;
  std::int32_t from = 0;
};

bool Same(const LineEntry& a, const LineEntry& b) {
  return a.Lpos == b.Lpos && a.Ltext == b.Ltext && a.Llen == b.Llen && a.Lpage == b.Lpage &&
         a.Lflags == b.Lflags;
}

void CheckUntouched(const Room& room, std::int32_t first, std::int32_t behind) {
  const LineEntry rubbish = {-9, -9, -9, -9, 9};
  for (std::int32_t i = 0; i < room.count; ++i) {
    if (i >= first && i < behind) continue;
    FUZZ_CHECK(Same(room.entries[static_cast<std::size_t>(i)], rubbish));
  }
  const auto isGuard = [](char c) { return c == '#'; };
  FUZZ_CHECK(std::all_of(room.characters.begin(), room.characters.begin() + room.text.Tend, isGuard));
  FUZZ_CHECK(std::all_of(room.characters.begin() + room.text.Tlen, room.characters.end(), isGuard));
}

// What the loader might say of the line that a pass starts in: `yes` and `no` only where the bytes do not
// tell otherwise.
LongLine PossibleAnswer(FuzzInput& input, const KnownBytes& known, FilePos pos, std::int32_t direction,
                        ViewOptions options) {
  const LongLine answers[] = {LongLine::unknown, LongLine::no, LongLine::yes};
  const LongLine answer = input.OneOf(answers);
  const FilePos at = direction == FILL_FORWARD ? pos : pos - 1;
  if (answer == LongLine::unknown || at < known.base || at >= known.End()) return LongLine::unknown;
  const auto isBreak = [&](FilePos place) { return known.At(place) == 10 || known.At(place) == 13; };
  FilePos first = at;
  FilePos behind = at;
  while (first > known.base && !isBreak(first - 1))
    --first;
  while (behind < known.End() && !isBreak(behind))
    ++behind;
  const std::int32_t limit = LongLineLimit(options);
  const bool seenWhole = (first > known.base || known.base == 0) && behind < known.End();
  if (answer == LongLine::no) return behind + 2 - first <= limit ? answer : LongLine::unknown;
  return seenWhole && behind + 2 - first <= limit ? LongLine::unknown : answer;
}

// Lines `first` to `behind` - 1: ascending, each with text of its own within the new text.
void CheckLines(const Room& room, const TextBuffer& text, const LineCheck& check, const KnownBytes& known,
                std::int32_t first, std::int32_t behind, std::int32_t direction, FilePos end) {
  for (std::int32_t i = first; i < behind; ++i) {
    const LineEntry& line = room.entries[static_cast<std::size_t>(i)];
    FUZZ_CHECK(line.Ltext >= room.text.Tend && line.Ltext + line.Llen <= text.Tend && line.Lpage == 0);
    const bool last = i + 1 == behind;
    if (!last) {
      const LineEntry& below = room.entries[static_cast<std::size_t>(i + 1)];
      FUZZ_CHECK(below.Lpos > line.Lpos);
      FUZZ_CHECK(direction == FILL_FORWARD ? below.Ltext >= line.Ltext + line.Llen
                                           : line.Ltext >= below.Ltext + below.Llen);
    }
    const FilePos next = last ? end : room.entries[static_cast<std::size_t>(i + 1)].Lpos;
    // A text line made backward from a place inside it is made whole.
    const bool mayReachFurther = last && direction == FILL_BACKWARD && check.format == 0;
    CheckLine(check, known, line, next, mayReachFurther ? LineEnd::open : LineEnd::exact,
              direction == FILL_BACKWARD && i == first && known.base == 0);
  }
}

}  // namespace

void FuzzFormat(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const int format = input.Byte() % 3;
  const std::int32_t direction = input.Chance(2) ? FILL_FORWARD : FILL_BACKWARD;
  const ViewOptions options = FuzzOptions(input);
  const std::int32_t lineLen = FuzzLineLen(input);
  const std::int32_t tabs[] = {8, 1, 4, 255};
  TextTabLength = input.OneOf(tabs);
  const Room room(input, direction);
  const FilePos bases[] = {
      0, 1, 5, 4000, 0x7FFFFFF0, 0xFFFFFFF0, FilePos{1} << 40, INTPTR_MAX - INT32_MAX - kSliceBytes};
  const FilePos base = input.OneOf(bases);
  const int where = input.Byte() % 4;
  const std::uint32_t place = input.Word();
  const std::vector<std::uint8_t> bytes = FuzzBytes(input, kSliceBytes);

  // A copy of exactly the slice's size: the sanitizer sees a read outside, and a write into it shows.
  const auto length = static_cast<std::int32_t>(bytes.size());
  const auto copy = std::make_unique<std::uint8_t[]>(bytes.size());
  if (length > 0) std::memcpy(copy.get(), bytes.data(), bytes.size());
  std::int32_t off = static_cast<std::int32_t>(place % static_cast<std::uint32_t>(length + 1));
  if (where == 0) off = 0;
  if (where == 1) off = length;
  if (where == 2 && place % 4 == 0)
    off = length + static_cast<std::int32_t>(place >> 1) % (INT32_MAX - length);
  const FileSlice slice = {copy.get(), length, off};
  const FilePos pos = base + off;

  Room made = room;
  made.text.Tbuf = made.characters.data();
  LineCursor cursor;
  cursor.Cline = made.entries.data();
  cursor.Ccnt = made.count;
  cursor.Ccur = made.from;
  cursor.Clong = PossibleAnswer(input, {bytes, base}, pos, direction, options);
  TextBuffer text = made.text;
  const ViewStatus status = FuzzRoutine(format)(slice, cursor, text, pos, direction, options, lineLen);

  FUZZ_CHECK(length == 0 || std::memcmp(copy.get(), bytes.data(), bytes.size()) == 0);
  FUZZ_CHECK(cursor.Cline == made.entries.data() && cursor.Ccnt == made.count);
  FUZZ_CHECK(text.Tbuf == made.text.Tbuf && text.Tlen == made.text.Tlen);
  if ((status & VS_FAILED) != 0) {
    FUZZ_CHECK(format == 1 && lineLen < 22 && status == (VS_FAILED | VS_NARROW));
    FUZZ_CHECK(cursor.Ccur == made.from && text.Tend == made.text.Tend);
    CheckUntouched(made, 0, 0);
    return;
  }
  FUZZ_CHECK(text.Tend >= made.text.Tend && text.Tend <= text.Tlen);
  const KnownBytes known = {bytes, base};
  const LineCheck check = {format, options, lineLen, text.Tbuf};
  if (direction == FILL_FORWARD) {
    FUZZ_CHECK(cursor.Ccur >= made.from && cursor.Ccur < made.count);
    const LineEntry& sentinel = made.entries[static_cast<std::size_t>(cursor.Ccur)];
    FUZZ_CHECK(Same(sentinel, SentinelAt(sentinel.Lpos)));
    FUZZ_CHECK(cursor.Cend >= pos && cursor.Cend <= sentinel.Lpos);
    FUZZ_CHECK(sentinel.Lpos <= std::max(pos, known.End()));
    FUZZ_CHECK(format == 0 || cursor.Cend == sentinel.Lpos);
    const bool none = cursor.Ccur == made.from;
    FUZZ_CHECK(none ? cursor.Cend == pos : made.entries[static_cast<std::size_t>(made.from)].Lpos == pos);
    CheckUntouched(made, made.from, cursor.Ccur + 1);
    CheckLines(made, text, check, known, made.from, cursor.Ccur, direction, cursor.Cend);
  } else {
    FUZZ_CHECK(cursor.Ccur >= 0 && cursor.Ccur <= made.from);
    CheckUntouched(made, cursor.Ccur - 1, made.from);  // the entry above may hold a line that was given up
    if (cursor.Ccur < made.from) FUZZ_CHECK(made.entries[static_cast<std::size_t>(made.from - 1)].Lpos < pos);
    CheckLines(made, text, check, known, cursor.Ccur, made.from, direction, std::min(pos, known.End()));
  }
}

#ifdef QUORL_LIBFUZZER
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzFormat(data, size);
  return 0;
}
#endif
