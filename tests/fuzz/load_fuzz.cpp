// LoadView on a real file that changes between the loads, from any place, in any direction: the run is one
// that the rest of the program can walk, its lines are neighbours, and they show the file's bytes.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "engine/slice_lines.h"
#include "engine/view_loader.h"
#include "tests/fuzz/fuzz_inputs.h"

namespace {

constexpr std::int32_t kMostBytes = 200000;  // some slices, and lines longer than one

struct View {
  // Shows nothing yet; its entries and characters are rubbish.
  explicit View(int handle) : entries(kViewLines, {-9, -9, -9, -9, 0x7FFFFFF0}), characters(kViewText, '#') {
    std::snprintf(file.Fname, sizeof file.Fname, "/proc/self/fd/%d", handle);
    entries[0] = LineEntry{};
    lines.Aline = entries.data();
    lines.Acnt = kViewLines;
    text.Tbuf = characters.data();
    text.Tlen = kViewText;
    tags.entries = tagEntries;
    tags.capacity = 4;
  }
  std::vector<LineEntry> entries;
  std::vector<char> characters;
  ViewFile file;
  TagEntry tagEntries[5] = {};
  LineArray lines;
  TextBuffer text;
  TagList tags;
};

void SetFile(int handle, const std::vector<std::uint8_t>& bytes) {
  const auto size = static_cast<off_t>(bytes.size());
  FUZZ_CHECK(ftruncate(handle, size) == 0 && pwrite(handle, bytes.data(), bytes.size(), 0) == size);
}

struct Load {
  FilePos pos = kNoPosition;
  std::int32_t cur = 0;
  FilePos oldLength = 0;  // as the last load saw it
};

std::uint32_t TagsBetween(const View& view, FilePos from, FilePos behind) {
  std::uint32_t flags = 0;
  for (const TagEntry* tag = view.tagEntries; tag < view.tagEntries + view.tags.count; ++tag)
    if (tag->position >= from && tag->position < behind) flags |= tag->flags & LF_TAGMASK;
  return flags;
}

void CheckRun(const View& view, const Load& load, const Shown& shown) {
  const LineArray& lines = view.lines;
  const FilePos length = shown.End();
  FUZZ_CHECK(view.file.Flen == length);
  FUZZ_CHECK(lines.Acnt == kViewLines && lines.Aline == view.entries.data());
  FUZZ_CHECK(0 <= lines.Afirst && lines.Afirst <= lines.Acur && lines.Acur <= lines.Alast);
  FUZZ_CHECK(lines.Alast < lines.Acnt);
  FUZZ_CHECK(view.text.Tlen == kViewText && 0 <= view.text.Tend && view.text.Tend <= kViewText);
  const LineEntry& sentinel = lines.Aline[lines.Alast];
  FUZZ_CHECK(sentinel.Llen == kSentinelLength && sentinel.Ltext == 0);
  FUZZ_CHECK(sentinel.Lpage == 0 && sentinel.Lflags == 0);
  FUZZ_CHECK(0 <= sentinel.Lpos && sentinel.Lpos <= length);
  if (lines.Afirst == lines.Alast) {  // a file that shows nothing is empty, or holds but an end-of-file mark
    FUZZ_CHECK(length == 0 || (shown.format == 0 && shown.bytes.back() == 26));
    return;
  }
  FUZZ_CHECK(lines.Acur < lines.Alast);

  const bool wraps = shown.format == 0 && (shown.options & VO_WRAP) != 0;
  const bool maySeam = wraps || (shown.format == 0 && (shown.options & VO_PAGEGAP) != 0);
  int seams = 0;
  for (std::int32_t i = lines.Afirst; i < lines.Alast; ++i) {
    const LineEntry& line = lines.Aline[i];
    const FilePos next = lines.Aline[i + 1].Lpos;
    FUZZ_CHECK(line.Lpos < next && next <= length);
    FUZZ_CHECK(line.Ltext >= 0 && line.Ltext + line.Llen <= view.text.Tend && line.Lpage == 0);
    FUZZ_CHECK((line.Lflags & LF_MESSAGE) == 0);
    FUZZ_CHECK((line.Lflags & LF_TAGMASK) == TagsBetween(view, line.Lpos, next));
    const bool exact =
        CheckLine(shown, line, next, maySeam ? LineEnd::overlap : LineEnd::exact, i == lines.Afirst);
    // A load from inside a wrapped line, or from a form feed within a line, cuts the rest of it from there,
    // and the lines above from the line's start: the two grids meet at one line. It overlaps the next, or is
    // cut short by the slice's end.
    const bool cutShort = (line.Lflags & LF_INCOMPLETE) != 0 && next < length;
    if (cutShort || (maySeam && !exact)) ++seams;
  }
  FUZZ_CHECK(seams <= (maySeam ? 1 : 0));
  // What was the file's end at the load before stands for the end.
  if (load.pos >= 0 && load.pos < length && load.pos != load.oldLength && !wraps)
    FUZZ_CHECK(lines.Aline[lines.Acur].Lpos <= load.pos && load.pos < lines.Aline[lines.Acur + 1].Lpos);
}

Load DecideLoad(FuzzInput& input, const View& view, std::int32_t rows, FilePos length, bool runIsSound) {
  Load load;
  load.oldLength = view.file.Flen;
  if (input.Chance(2) && runIsSound) {
    load.cur = input.Chance(3) ? input.Between(view.lines.Afirst - std::max(rows, 1), view.lines.Alast)
                               : view.lines.Acur + input.Between(-3, 3);
    return load;
  }
  const FilePos places[] = {0, 1, length / 2, length - 1, length, length + 1, length + 100000, INTPTR_MAX};
  load.pos = input.Chance(2) ? std::max<FilePos>(input.OneOf(places), 0)
                             : input.Between(0, static_cast<std::int32_t>(length));
  return load;
}

void SetTags(FuzzInput& input, View& view, FilePos length) {
  FilePos position = 0;
  view.tags.count = static_cast<std::int16_t>(input.Byte() % view.tags.capacity);
  for (TagEntry* tag = view.tagEntries; tag < view.tagEntries + view.tags.count; ++tag) {
    position += 1 + input.Between(0, static_cast<std::int32_t>(length / 2));
    *tag = {position, 1U + input.Byte() % 3U};
  }
}

}  // namespace

void FuzzLoad(const std::uint8_t* data, std::size_t size) {
  static const int handle = memfd_create("quorl-fuzz", MFD_CLOEXEC);
  FuzzInput input(data, size);
  View view(handle);
  std::vector<std::uint8_t> bytes = input.FileBytes(kMostBytes);
  view.file.Flen = static_cast<FilePos>(bytes.size());
  input.SetTabs();
  int format = 0;
  ViewOptions options = 0;
  std::int32_t lineLen = 0;
  bool runIsSound = false;
  const int loads = 1 + input.Byte() % 8;
  for (int i = 0; i < loads; ++i) {
    if (i > 0 && input.Chance(4)) {  // the file shrinks, grows, or is replaced
      if (input.Chance(3)) {
        bytes = input.FileBytes(kMostBytes);
      } else {
        bytes.resize(static_cast<std::size_t>(input.Between(0, kMostBytes)), input.Byte());
      }
    }
    SetFile(handle, bytes);
    if (i == 0 || input.Chance(6)) lineLen = input.LineLen();
    if (i == 0 || input.Chance(6)) options = input.Options();
    if (i == 0 || input.Chance(6)) format = input.Byte() % 3;
    const auto length = static_cast<FilePos>(bytes.size());
    SetTags(input, view, length);
    const std::int32_t rowCounts[] = {1, 2, 25, 60, 200, 0, -5, 998, 1000, 3000};
    const std::int32_t rows = input.OneOf(rowCounts);
    const Load load = DecideLoad(input, view, rows, length, runIsSound);
    const ViewStatus status = LoadView(load.pos, load.cur, rows, lineLen, view.file, view.lines, view.text,
                                       view.tags, kFuzzRoutines[format], options);
    runIsSound = (status & VS_FAILED) == 0;
    // Nothing but a row that is too narrow may fail on a file that can be read.
    FUZZ_CHECK(runIsSound || (format == 1 && lineLen < 22 && status == (VS_FAILED | VS_NARROW)));
    if (!runIsSound) continue;
    const std::int32_t shownLen = std::clamp(lineLen, 1, LongestLine(kViewText));
    CheckRun(view, load, {bytes, 0, format, options, shownLen, view.text.Tbuf});
  }
}
