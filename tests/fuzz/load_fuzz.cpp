// LoadView on a real file that changes between the loads, from any place, in any direction: the run is one
// that the rest of the program can walk, its lines are neighbours, and they show the file's bytes.
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <memory>

#include "engine/slice_lines.h"
#include "engine/text_format.h"
#include "engine/view_loader.h"
#include "tests/fuzz/fuzz_inputs.h"

namespace {

constexpr std::int32_t kMostBytes = 200000;  // some slices, and lines longer than one

// A file in memory that can be opened by a path.
class MemoryFile {
 public:
  MemoryFile() : handle_(memfd_create("quorl-fuzz", MFD_CLOEXEC)) { FUZZ_CHECK(handle_ >= 0); }
  ~MemoryFile() { close(handle_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  void Set(const std::vector<std::uint8_t>& bytes) const {
    const auto size = static_cast<off_t>(bytes.size());
    FUZZ_CHECK(ftruncate(handle_, size) == 0);
    FUZZ_CHECK(pwrite(handle_, bytes.data(), bytes.size(), 0) == size);
  }
  void Path(char* path, std::size_t size) const { std::snprintf(path, size, "/proc/self/fd/%d", handle_); }

 private:
  int handle_;
};

struct View {
  View() : entries(kViewLines), characters(kViewText), file(std::make_unique<ViewFile>()) {
    lines.Aline = entries.data();
    lines.Acnt = kViewLines;
    text.Tbuf = characters.data();
    text.Tlen = kViewText;
    tags.entries = tagEntries.data();
    tags.capacity = static_cast<std::int16_t>(tagEntries.size() - 1);
  }
  std::vector<LineEntry> entries;
  std::vector<char> characters;
  std::unique_ptr<ViewFile> file;
  std::array<TagEntry, 5> tagEntries{};
  LineArray lines;
  TextBuffer text;
  TagList tags;
};

struct Load {
  FilePos pos = 0;
  std::int32_t cur = 0;
  std::int32_t rows = 1;
  std::int32_t lineLen = 80;
  int format = 0;
  ViewOptions options = 0;
  FilePos oldLength = 0;  // as the last load saw it
};

void CheckTags(const View& view, const LineEntry& line, FilePos next) {
  std::uint32_t flags = 0;
  for (std::int16_t i = 0; i < view.tags.count; ++i) {
    const TagEntry& tag = view.tagEntries[static_cast<std::size_t>(i)];
    if (tag.position >= line.Lpos && tag.position < next) flags |= tag.flags & LF_TAGMASK;
  }
  FUZZ_CHECK((line.Lflags & LF_TAGMASK) == flags);
}

void CheckRun(const View& view, const Load& load, const std::vector<std::uint8_t>& bytes) {
  const LineArray& lines = view.lines;
  const auto length = static_cast<FilePos>(bytes.size());
  FUZZ_CHECK(view.file->Flen == length);
  FUZZ_CHECK(lines.Acnt == kViewLines && lines.Aline == view.entries.data());
  FUZZ_CHECK(0 <= lines.Afirst && lines.Afirst <= lines.Acur && lines.Acur <= lines.Alast);
  FUZZ_CHECK(lines.Alast <= lines.Acnt - 1);
  FUZZ_CHECK(view.text.Tlen == kViewText && 0 <= view.text.Tend && view.text.Tend <= kViewText);

  const LineEntry& sentinel = lines.Aline[lines.Alast];
  FUZZ_CHECK(sentinel.Llen == kSentinelLength && sentinel.Ltext == 0 && sentinel.Lpage == 0 &&
             sentinel.Lflags == 0);
  FUZZ_CHECK(0 <= sentinel.Lpos && sentinel.Lpos <= length);
  if (lines.Afirst == lines.Alast) {  // a file that shows nothing is empty, or holds but an end-of-file mark
    FUZZ_CHECK(length == 0 || (load.format == 0 && bytes.back() == 26));
    return;
  }
  FUZZ_CHECK(lines.Acur < lines.Alast);

  const std::int32_t lineLen = std::clamp(load.lineLen, 1, LongestLine(kViewText));
  const LineCheck check = {load.format, load.options, lineLen, view.text.Tbuf};
  const KnownBytes known = {bytes, 0};
  const bool wraps = load.format == 0 && (load.options & VO_WRAP) != 0;
  const bool maySeam = wraps || (load.format == 0 && (load.options & VO_PAGEGAP) != 0);
  int seams = 0;
  for (std::int32_t i = lines.Afirst; i < lines.Alast; ++i) {
    const LineEntry& line = lines.Aline[i];
    const FilePos next = lines.Aline[i + 1].Lpos;
    FUZZ_CHECK(line.Lpos < next && next <= length);
    FUZZ_CHECK(line.Ltext >= 0 && line.Ltext + line.Llen <= view.text.Tend && line.Lpage == 0);
    FUZZ_CHECK((line.Lflags & LF_MESSAGE) == 0);
    CheckTags(view, line, next);
    CheckLine(check, known, line, next, maySeam ? LineEnd::overlap : LineEnd::exact, i == lines.Afirst);
    // A load from inside a wrapped line, or from a form feed within a line, cuts the rest of it from there,
    // and the lines above from the line's start: the two grids meet at one line. It overlaps the next, or is
    // cut short by the slice's end.
    const bool cutShort = (line.Lflags & LF_INCOMPLETE) != 0 && next < length;
    if (cutShort || (maySeam && !EndsAt(check, known, line, next))) ++seams;
  }
  FUZZ_CHECK(seams <= (maySeam ? 1 : 0));
  const LineEntry& top = lines.Aline[lines.Acur];
  // What was the file's end at the load before stands for the end.
  if (load.pos >= 0 && load.pos < length && load.pos != load.oldLength && !wraps) {
    FUZZ_CHECK(top.Lpos <= load.pos && load.pos < lines.Aline[lines.Acur + 1].Lpos);
  }
}

Load DecideLoad(FuzzInput& input, const View& view, FilePos length, bool runIsSound) {
  Load load;
  const std::int32_t rows[] = {1, 2, 25, 60, 200, 0, -5, 998, 1000, 3000};
  load.rows = input.OneOf(rows);
  load.pos = kNoPosition;
  if (input.Chance(2) && runIsSound) {
    load.cur = view.lines.Acur + input.Between(-3, 3);
    if (input.Chance(3))
      load.cur = input.Between(view.lines.Afirst - std::max(load.rows, 1), view.lines.Alast);
    return load;
  }
  const FilePos places[] = {0, 1, length / 2, length - 1, length, length + 1, length + 100000, INTPTR_MAX};
  load.pos = input.Chance(2) ? std::max<FilePos>(input.OneOf(places), 0)
                             : input.Between(0, static_cast<std::int32_t>(length));
  return load;
}

void SetTags(FuzzInput& input, View& view, FilePos length) {
  FilePos position = 0;
  view.tags.count = 0;
  const int count = input.Byte() % view.tags.capacity;
  for (int i = 0; i < count; ++i) {
    position += 1 + input.Between(0, static_cast<std::int32_t>(length / 2));
    view.tagEntries[static_cast<std::size_t>(i)] = {position, 1U + input.Byte() % 3U};
    ++view.tags.count;
  }
}

}  // namespace

void FuzzLoad(const std::uint8_t* data, std::size_t size) {
  static const MemoryFile file;
  static View view;
  FuzzInput input(data, size);
  file.Path(view.file->Fname, sizeof view.file->Fname);
  view.lines.Acur = view.lines.Afirst = view.lines.Alast = 0;
  std::fill(view.entries.begin(), view.entries.end(), LineEntry{-9, -9, -9, -9, 0x7FFFFFF0});
  std::fill(view.characters.begin(), view.characters.end(), '#');
  view.entries[0] = LineEntry{};
  view.text.Tend = 0;
  const std::int32_t tabs[] = {8, 1, 4, 255};
  TextTabLength = input.OneOf(tabs);

  std::vector<std::uint8_t> bytes = FuzzBytes(input, kMostBytes);
  file.Set(bytes);
  view.file->Fcur = 0;
  view.file->Flen = static_cast<FilePos>(bytes.size());
  int format = input.Byte() % 3;
  ViewOptions options = FuzzOptions(input);
  std::int32_t lineLen = FuzzLineLen(input);
  bool runIsSound = false;
  const int loads = 1 + input.Byte() % 8;
  for (int i = 0; i < loads; ++i) {
    if (i > 0 && input.Chance(4)) {  // the file shrinks, grows, or is replaced
      if (input.Chance(3)) {
        bytes = FuzzBytes(input, kMostBytes);
      } else {
        bytes.resize(static_cast<std::size_t>(input.Between(0, kMostBytes)), input.Byte());
      }
      file.Set(bytes);
    }
    if (i > 0 && input.Chance(6)) lineLen = FuzzLineLen(input);
    if (i > 0 && input.Chance(6)) options = FuzzOptions(input);
    if (i > 0 && input.Chance(6)) format = input.Byte() % 3;
    const auto length = static_cast<FilePos>(bytes.size());
    SetTags(input, view, length);

    Load load = DecideLoad(input, view, length, runIsSound);
    load.format = format;
    load.options = options;
    load.lineLen = lineLen;
    load.oldLength = view.file->Flen;
    const ViewStatus status = LoadView(load.pos, load.cur, load.rows, lineLen, *view.file, view.lines,
                                       view.text, view.tags, FuzzRoutine(format), options);
    runIsSound = (status & VS_FAILED) == 0;
    // Nothing but a row that is too narrow may fail on a file that can be read.
    FUZZ_CHECK(runIsSound || (format == 1 && lineLen < 22 && status == (VS_FAILED | VS_NARROW)));
    if (runIsSound) CheckRun(view, load, bytes);
  }
}

#ifdef QUORL_LIBFUZZER
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzLoad(data, size);
  return 0;
}
#endif
