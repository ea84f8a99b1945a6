// Moves of the view as logic: which line becomes the top line, and which run of lines shows it. A move is
// counted in lines, but its target line may lie outside the run at hand; then the walk goes in steps, each
// from the line of the run that is nearest to the target, until the target line is at hand. Works on records
// that it is given; knows no window and no thread.
#pragma once

#include <vector>

#include "engine/view_loader.h"
#include "engine/view_run.h"

enum class MoveKind : std::uint8_t {
  load,  // make the lines anew in any case
  move,  // make lines only if those at hand do not serve
  goTo,  // make the lines anew, from the very byte
};

// A position that means the end of the file, wherever it then is.
inline constexpr FilePos kFileEnd = kBehindEveryPosition;

struct MoveRequest {
  MoveKind kind = MoveKind::move;
  std::int64_t delta = 0;          // lines to go down, where there is no position
  FilePos position = kNoPosition;  // 0 or more: the line that holds it becomes the top line
  FilePos held = kNoPosition;      // byte of the top line that stays on it when lines are made anew
  FilePos backFromError =
      kNoPosition;                 // 0 or more: the error page is shown, and this is the place to go back to
  std::int32_t rows = 1;           // of the screen, one that is cut at the bottom included
  std::int32_t padPageLength = 0;  // rows to which pages are filled up; 0: they are not
  LineStyle style;
};

// What the lines at hand can do for a move.
enum class AtHand : std::uint8_t {
  serve,       // `top` is the new Acur
  serveToEnd,  // as long as the file has not changed, for the screen reaches its end
  fail,        // a load is needed
};
struct AtHandAnswer {
  AtHand answer = AtHand::fail;
  std::int16_t top = 0;
};

// Looks for the target of a move in the lines at hand, without a look at the file.
[[nodiscard]] AtHandAnswer MoveAtHand(const MoveRequest& request, const ViewFile& file,
                                      const LineArray& lines);

// What a run looked like when a move began: its lines and the sentinel, by their indices from `first` on.
struct RunLines {
  std::vector<LineEntry> lines;
  std::int32_t first = 0;
  std::int32_t top = 0;  // Acur
};
[[nodiscard]] RunLines LinesOf(const LineArray& lines);

struct MoveResult {
  ViewStatus status = 0;   // VS_FAILED and further bits: no run was made
  FileError error = 0;     // why the file could not be read
  bool unchanged = false;  // the file is what it was, and the lines at hand serve: no run was made
};

// Makes the move with as many loads as it takes, from the lines that were at hand into `run`. `file` is
// updated. With `onlyIfChanged`, nothing is loaded where the file is still what `file` says. `source` must
// have the file open.
[[nodiscard]] MoveResult MoveWithLoads(const MoveRequest& request, bool onlyIfChanged, const RunLines& atHand,
                                       ByteSource& source, ViewFile& file, ViewRun& run);

// The last line of the run that begins at or before `position`; the sentinel counts. Afirst if there is none.
[[nodiscard]] std::int32_t LineOf(const LineArray& lines, FilePos position);
