// Moves of the view on a file in memory that changes between them, from any place, in any direction: the run
// is one that the rest of the program can walk, its lines are neighbours, show the file's bytes, and fill the
// screen.
#include <algorithm>

#include "engine/view_moves.h"
#include "tests/fuzz/fuzz_inputs.h"
#include "tests/memory_origin.h"

namespace {

constexpr std::int32_t kMostBytes = 200000;  // some blocks, and lines longer than one

// Runs are kept from one input to the next: what they hold then is rubbish.
struct Runs {
  std::shared_ptr<ViewRun> shown = MakeRun({INT16_MAX, kMostText}), spare = MakeRun({INT16_MAX, kMostText});
  void Size(const RunSize& size) {
    for (const std::shared_ptr<ViewRun>& run : {shown, spare}) {
      run->Lines = {run->entries.get(), size.entries, 0, 0, 0};
      run->Text = {run->cells.get(), size.text, 0, run->clusters.get(), 0};
    }
    shown->Lines.Aline[0] = LineEntry{};
  }
};

// The file and the source that reads it; its blocks are kept from one input to the next.
struct Disk {
  MemoryFile file;
  ByteSource source{std::make_unique<MemoryOrigin>(file)};
};

struct View {
  MemoryFile& file;
  ByteSource& source;
  ViewFile shown;
  MoveRequest request;
  int format = 0;
};

void CheckRun(const View& view, const ViewRun& run, const Shown& shown) {
  const LineArray& lines = run.Lines;
  const FilePos length = shown.End();
  FUZZ_CHECK(view.shown.Flen == length);
  FUZZ_CHECK(lines.Aline == run.entries.get());
  FUZZ_CHECK(0 <= lines.Afirst && lines.Afirst <= lines.Acur && lines.Acur <= lines.Alast);
  FUZZ_CHECK(lines.Alast < lines.Acnt);
  FUZZ_CHECK(0 <= run.Text.Tend && run.Text.Tend <= run.Text.Tlen);
  const LineEntry& sentinel = lines.Aline[lines.Alast];
  FUZZ_CHECK(sentinel.Llen == kSentinelLength && sentinel.Ltext == 0);
  FUZZ_CHECK(sentinel.Lpage == 0 && sentinel.Lflags == 0);
  FUZZ_CHECK(0 <= sentinel.Lpos && sentinel.Lpos <= length);
  FUZZ_CHECK(lines.Acur < lines.Alast || length == 0);
  for (std::int32_t i = lines.Afirst; i < lines.Alast; ++i) {
    const LineEntry& line = lines.Aline[i];
    const FilePos next = lines.Aline[i + 1].Lpos;
    FUZZ_CHECK(line.Lpos < next && next <= length);
    FUZZ_CHECK(line.Ltext >= 0 && line.Ltext + line.Llen <= run.Text.Tend && line.Lpage == 0);
    FUZZ_CHECK((line.Lflags & (LF_MESSAGE | LF_TAGMASK)) == 0);
    const bool exact = CheckLine(shown, line, next, LineEnd::exact, i == lines.Afirst);
    FUZZ_CHECK(exact);
    FUZZ_CHECK((line.Lflags & LF_INCOMPLETE) == 0 || next == length);
  }
  FUZZ_CHECK(sentinel.Lpos == length || lines.Acur + view.request.rows <= lines.Alast);
}

void DecideMove(FuzzInput& input, View& view, FilePos length) {
  const MoveKind kinds[] = {MoveKind::move, MoveKind::move, MoveKind::load, MoveKind::goTo};
  view.request.kind = input.OneOf(kinds);
  view.request.position = kNoPosition;
  view.request.delta = 0;
  if (input.Chance(2)) {
    const std::int32_t rows = view.request.rows;
    const std::int32_t steps[] = {1, -1, rows, -rows, 3 * rows, -3 * rows, 0, 5};
    view.request.delta = input.OneOf(steps);
    return;
  }
  const ByteCount bytes = length.Offset();
  const FilePos places[] = {0,          1,        FilePos::At(bytes / 2), length - 1, length,
                            length + 1, kFileEnd, FilePos::At(bytes / 3)};
  view.request.position = input.Chance(2) ? std::max<FilePos>(input.OneOf(places), 0)
                                          : FilePos::At(input.Between(0, static_cast<std::int32_t>(bytes)));
}

void ChangeFile(FuzzInput& input, View& view, bool isNew) {
  std::string& bytes = view.file.bytes;
  ++view.file.changed;
  if (isNew || input.Chance(3)) {
    const std::vector<std::uint8_t> made = input.FileBytes(kMostBytes);
    bytes.assign(made.begin(), made.end());
    ++view.file.number;
  } else {
    const std::int32_t most = input.Chance(32)
                                  ? kMostBytes
                                  : std::min(static_cast<std::int32_t>(2 * bytes.size() + 100), kMostBytes);
    bytes.resize(static_cast<std::size_t>(input.Between(0, most)), static_cast<char>(input.Byte()));
  }
}

// The lines at hand are of the present file and style. False when the format has no room.
bool MakeMove(View& view, Runs& runs, bool mustLoad) {
  const AtHandAnswer atHand = MoveAtHand(view.request, view.shown, runs.shown->Lines);
  if (atHand.answer == AtHand::serve && !mustLoad) {
    runs.shown->Lines.Acur = atHand.top;
    return true;
  }
  FUZZ_CHECK(view.source.Open("") == 0);
  const bool ask = atHand.answer == AtHand::serveToEnd && !mustLoad;
  const MoveResult result =
      MoveWithLoads(view.request, ask, LinesOf(runs.shown->Lines), view.source, view.shown, *runs.spare);
  view.source.Close();
  if ((result.status & VS_FAILED) != 0) {
    // Nothing but a row that is too narrow may fail on a file that can be read.
    FUZZ_CHECK(result.status == (VS_FAILED | VS_NARROW) && view.format == 1);
    return false;
  }
  if (result.unchanged) {
    runs.shown->Lines.Acur = atHand.top;
  } else {
    std::swap(runs.shown, runs.spare);
  }
  return true;
}

}  // namespace

void FuzzLoad(const std::uint8_t* data, std::size_t size) {
  static Runs runs;
  static Disk disk;
  FuzzInput input(data, size);
  View view{disk.file, disk.source};
  ChangeFile(input, view, true);
  input.SetTabs();
  std::vector<std::uint8_t> bytes;
  const int moves = 1 + input.Byte() % 4;
  for (int i = 0; i < moves; ++i) {
    bool mustLoad = i == 0;
    if (i > 0 && input.Chance(4)) ChangeFile(input, view, false), mustLoad = true;
    if (i == 0 || input.Chance(6)) {
      const std::int32_t rowCounts[] = {1, 2, 2, 3, 3, 5, 5, 8};
      const std::int32_t largeCounts[] = {25, 70, 270, 1081};
      view.request.rows = input.Chance(50) ? input.OneOf(largeCounts) : input.OneOf(rowCounts);
      view.format = input.Byte() % 3;
      const ViewOptions options = input.Options();
      view.request.style = {kFuzzRoutines[view.format], options, std::max(input.LineLen(), 1)};
      mustLoad = true;
    }
    // Fewer entries than in the program, so that their ends are met more often.
    RunSize wanted = RunSizeFor(view.request.rows, view.request.style.lineLen);
    wanted.entries = static_cast<std::int16_t>(4 * view.request.rows + 4);
    if (mustLoad) runs.Size(wanted);
    const auto length = FilePos::At(view.file.bytes.size());
    DecideMove(input, view, length);
    if (mustLoad) view.request.kind = MoveKind::goTo, view.request.delta = 0;
    if (mustLoad && view.request.position < 0) view.request.position = 0;
    if (!MakeMove(view, runs, mustLoad)) return;
    const std::int32_t used =
        UsableLineLen(view.request.style.lineLen, view.request.rows, runs.shown->Text.Tlen);
    if (mustLoad) bytes.assign(view.file.bytes.begin(), view.file.bytes.end());
    CheckRun(view, *runs.shown,
             {bytes, 0, view.format, view.request.style.options, used, runs.shown->Text.Tbuf,
              runs.shown->Text.Tclusters});
    // In the text format, the row that holds the place is on top.
    const FilePos position = view.request.position;
    const LineArray& lines = runs.shown->Lines;
    if (position >= 0 && position < length && view.request.kind != MoveKind::load)
      FUZZ_CHECK(lines.Aline[lines.Acur].Lpos <= position && position < lines.Aline[lines.Acur + 1].Lpos);
  }
}
