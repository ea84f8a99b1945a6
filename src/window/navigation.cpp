#include "window/navigation.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>

#include "engine/error_page.h"
#include "engine/page_padding.h"
#include "engine/view_loader.h"
#include "window/main_window_state.h"
#include "window/private_messages.h"

namespace {

// A move of more loads than this stays where it has got to.
constexpr int kMostLoads = 500;
// A line that does not wrap may be this many screens wide.
constexpr std::int32_t kScreensWide = 3;

const LineEntry& Line(int index) {
  return MainState.Lines.Aline[index];
}

FilePos FirstPosition() {
  return Line(MainState.Lines.Afirst).Lpos;
}

FilePos LastPosition() {
  return Line(MainState.Lines.Alast).Lpos;
}

bool RunReachesEnd() {
  return MainState.File.Flen == LastPosition();
}

bool ErrorPageShown() {
  const LineArray& lines = MainState.Lines;
  return lines.Acur < lines.Alast && (Line(lines.Acur).Lflags & LF_MESSAGE) != 0;
}

// Rows of a screen as the loader is told: the run must have lines left for both sides of it.
std::int32_t ScreenRows() {
  return std::clamp<std::int32_t>(MainState.LinesPerScreen, 1, kViewLines / 2);
}

// The move stops at the top and the bottom of the file.
std::int64_t StopAtEnds(std::int64_t line) {
  const LineArray& lines = MainState.Lines;
  if (line < lines.Afirst && FirstPosition() == 0) line = lines.Afirst;
  if (line >= lines.Alast && RunReachesEnd()) line = std::max<int>(lines.Alast - 1, lines.Afirst);
  return line;
}

// Whether the run fills the screen below `line`.
bool FillsScreen(std::int64_t line) {
  return line >= MainState.Lines.Afirst && (line + ScreenRows() < MainState.Lines.Alast || RunReachesEnd());
}

bool InRun(std::int64_t line) {
  return line >= MainState.Lines.Afirst && line < MainState.Lines.Alast;
}

// The last line that begins at or before `position`; the sentinel counts. Afirst if there is none.
int LineOf(FilePos position) {
  int line = MainState.Lines.Alast;
  while (line > MainState.Lines.Afirst && Line(line).Lpos > position)
    --line;
  return line;
}

bool TopLineHolds(FilePos position) {
  const LineArray& lines = MainState.Lines;
  if (lines.Acur >= lines.Alast) return true;  // an empty view has no other line to show
  if (position >= MainState.File.Flen) return RunReachesEnd() && lines.Acur == lines.Alast - 1;
  return Line(lines.Acur).Lpos <= position && position < Line(lines.Acur + 1).Lpos;
}

// Rows that show something, the cut one at the bottom included.
int VisibleRows() {
  const std::int32_t height = std::max(MainState.CharHeight, 1);
  return std::max((MainState.ClientHeight + height - 1) / height - TitleRows(), 0);
}

// The loads of one move: shows the wait cursor while it lives, and keeps what the screen showed before.
class Loading {
 public:
  Loading() {
    const LineArray& lines = MainState.Lines;
    rowCount_ = std::clamp<int>(VisibleRows(), 0, lines.Alast - lines.Acur);
    std::copy_n(lines.Aline + lines.Acur, rowCount_, rows_.begin());
    goBack_ = MainState.MovePosition >= 0 ? MainState.MovePosition
              : ErrorPageShown()          ? MainState.TopBeforeError
                                          : Line(lines.Acur).Lpos;
    classCursor_ = SetClassLongPtrA(MainState.MainWindow, GCLP_HCURSOR,
                                    reinterpret_cast<LONG_PTR>(MainState.WaitCursor));
    cursor_ = SetCursor(MainState.WaitCursor);
  }
  ~Loading() {
    SetClassLongPtrA(MainState.MainWindow, GCLP_HCURSOR, static_cast<LONG_PTR>(classCursor_));
    SetCursor(cursor_);
  }
  Loading(const Loading&) = delete;
  Loading& operator=(const Loading&) = delete;

  // Runs the loader with a position, or with kNoPosition and a line. False when it failed: the error page
  // is shown then.
  bool Run(FilePos position, std::int64_t line);

  // Whether a scroll of the image by `step` rows (1 or -1) would leave each row with the line it now has.
  [[nodiscard]] bool KeepsRows(int step) const;

 private:
  std::array<LineEntry, kViewLines> rows_;  // what the rows of the screen showed
  int rowCount_;
  FilePos goBack_;
  ULONG_PTR classCursor_;
  HCURSOR cursor_;
};

bool Loading::Run(FilePos position, std::int64_t line) {
  MainWindowState& state = MainState;
  state.FormatIndex = std::clamp(state.FormatIndex, 0, kFormats - 1);
  const ViewOptions options = state.FormatFlags | (state.ShowPageGap != 0 ? VO_PAGEGAP : 0);
  // Between two messages, and in a window narrower than a character, the width may be below 1.
  const std::int32_t width = std::max(state.FormatWidth, 1);
  const ViewStatus status =
      LoadView(position, static_cast<std::int32_t>(line), ScreenRows(), width, state.File, state.Lines,
               state.Text, state.Tags, state.FormatRoutines[state.FormatIndex], options);
  const LineArray& lines = state.Lines;
  if ((status & VS_FAILED) != 0 || lines.Acur < lines.Afirst || lines.Acur > lines.Alast) {
    ShowErrorPage(status, state.File, state.Lines, state.Text);
    state.TopBeforeError = goBack_;
    return false;
  }
  if (state.PadPageLength > 0) {
    UpdateLinesPerScreen();
    PadPages(state.Lines, state.Text, state.File.Flen, state.PadPageLength);
    RepaintWindow();
  }
  return true;
}

bool Loading::KeepsRows(int step) const {
  const LineArray& lines = MainState.Lines;
  const int end = VisibleRows() - std::max(0, step);
  for (int row = std::max(0, -step); row < end; ++row) {
    const bool had = row + step < rowCount_;
    const bool has = lines.Acur + row < lines.Alast;
    if (had != has) return false;
    if (!has) return true;
    const LineEntry& before = *(rows_.begin() + row + step);
    const LineEntry& now = Line(lines.Acur + row);
    if (before.Lpos != now.Lpos || before.Llen != now.Llen || before.Lflags != now.Lflags) return false;
  }
  return true;
}

// Where a move stands on its way to a target line.
struct Walk {
  std::int64_t target = 0;  // index in the present run, which it may lie outside of
  bool stuck = false;       // the last load led no nearer to it
  bool done = false;        // the top line is as near as can be
};

// One step of a walk: a load from the line of the run that is nearest to the target. False when it failed.
bool LoadTowards(Walk& walk, Loading& loading) {
  const LineArray& lines = MainState.Lines;
  const std::int32_t rows = ScreenRows();
  if (InRun(walk.target)) {
    if (!loading.Run(kNoPosition, walk.target)) return false;
    walk.target = lines.Acur;
    walk.done = true;
    return true;
  }
  const bool up = walk.target < lines.Afirst;
  std::int64_t anchor;
  if (up) {
    // The line that will lie below the last row, so that a short step above the run takes one load; the
    // first line where that one is not in the run, or has led nowhere.
    anchor = walk.target + rows;
    if (walk.stuck || anchor < lines.Afirst || anchor > lines.Alast) anchor = lines.Afirst;
  } else {
    // The sentinel only where no line is left: the last line may look different when it is made anew.
    anchor = !walk.stuck && lines.Alast - 1 > lines.Acur ? lines.Alast - 1 : lines.Alast;
  }
  const FilePos position = Line(static_cast<int>(anchor)).Lpos;
  const std::int64_t rest = walk.target - anchor;
  const FilePos first = FirstPosition();
  const FilePos last = LastPosition();
  if (!loading.Run(kNoPosition, up ? anchor - rows : anchor)) return false;
  const bool wasStuck = walk.stuck;
  walk.stuck = up ? FirstPosition() >= first : LastPosition() <= last;
  walk.target = rest + LineOf(position);
  walk.done = walk.stuck && wasStuck;
  return true;
}

// Loads at a position. In a wrapped line the loader cuts rows from there on, and then makes the line from
// its start, so that the row that holds the position can come to lie above the top one: it is loaded then.
void LoadAt(FilePos position, Loading& loading) {
  if (!loading.Run(position, MainState.Lines.Acur) || TopLineHolds(position)) return;
  const int line = LineOf(position);
  if (InRun(line) && Line(line).Lpos <= position) loading.Run(kNoPosition, line);
}

// Moves to the target line, with as many loads as it takes. `exact`, unless kNoPosition, is the byte that
// the top line must hold. `loading` is set if anything was loaded.
void WalkTo(Walk walk, FilePos exact, bool mustLoad, std::optional<Loading>& loading) {
  LineArray& lines = MainState.Lines;
  for (int loads = 0;; ++loads) {
    walk.target = StopAtEnds(walk.target);
    if (walk.done || loads == kMostLoads || (!mustLoad && FillsScreen(walk.target))) break;
    if (!loading) loading.emplace();
    if (!LoadTowards(walk, *loading)) return;
    mustLoad = false;
  }
  const std::int64_t lastLine = std::max<int>(lines.Alast - 1, lines.Afirst);
  lines.Acur = static_cast<std::int16_t>(std::clamp<std::int64_t>(walk.target, lines.Afirst, lastLine));
  // A line that was cut when it was found may end earlier now that it was made anew.
  if (exact >= 0 && loading && !TopLineHolds(exact)) LoadAt(exact, *loading);
}

void Position(UINT message, std::optional<Loading>& loading) {
  MainWindowState& state = MainState;
  const bool errorPage = ErrorPageShown();
  const FilePos position = state.MovePosition;
  if (position >= 0) {
    const bool inside = FirstPosition() <= position && position <= LastPosition();
    if (inside && !errorPage && message != WM_VIEW_GOTO) {
      WalkTo(Walk{LineOf(position)}, position, message != WM_VIEW_MOVE, loading);
    } else {
      LoadAt(position, loading.emplace());
    }
    return;
  }
  const std::int64_t target = std::int64_t{state.Lines.Acur} + state.MoveDelta;
  if (errorPage && (message != WM_VIEW_MOVE || target < state.Lines.Afirst)) {
    // The lines of the error page have no place in the file: go back to where the view was.
    LoadAt(std::max<FilePos>(state.TopBeforeError, 0), loading.emplace());
    return;
  }
  // Wrapped rows begin elsewhere when the width has changed: what the top line held stays on it, so that
  // resizing a window back and forth does not move the view.
  const bool rebuilt = message == WM_VIEW_LOAD && state.MoveDelta == 0;
  const FilePos top = Line(state.Lines.Acur).Lpos;
  const FilePos held = !rebuilt ? kNoPosition : TopLineHolds(state.HeldPosition) ? state.HeldPosition : top;
  WalkTo(Walk{target}, held, message != WM_VIEW_MOVE, loading);
}

// By how many rows the image may be scrolled to show the view as it is after the move: 1 or -1, else 0.
int ScrollStep(int formerTop, const std::optional<Loading>& loading) {
  const MainWindowState& state = MainState;
  const LineArray& lines = state.Lines;
  if (state.PreviousTop < 0 || GetUpdateRect(state.MainWindow, nullptr, FALSE)) return 0;
  if (!loading) return std::abs(lines.Acur - formerTop) == 1 ? lines.Acur - formerTop : 0;
  int step = 0;
  if (lines.Acur < lines.Alast - 1 && Line(lines.Acur + 1).Lpos == state.PreviousTop) step = -1;
  if (lines.Acur > lines.Afirst && Line(lines.Acur - 1).Lpos == state.PreviousTop) step = 1;
  return step != 0 && loading->KeepsRows(step) ? step : 0;
}

void Redraw(int step) {
  const MainWindowState& state = MainState;
  RECT rows;
  GetClientRect(state.MainWindow, &rows);
  rows.top += TitleRows() * state.CharHeight;
  if (step == 0 || rows.top >= rows.bottom) {
    RepaintWindow();
    return;
  }
  ScrollWindow(state.MainWindow, 0, -step * state.CharHeight, &rows, &rows);
  UpdateWindow(state.MainWindow);
}

}  // namespace

std::int32_t TextRows() {
  if (MainState.CharHeight <= 0) return 0;
  return std::max(MainState.ClientHeight / MainState.CharHeight - TitleRows(), 0);
}

void UpdateLinesPerScreen() {
  MainState.LinesPerScreen = std::max(TextRows(), 1);
}

LRESULT MoveView(UINT message, WPARAM delta, LPARAM position) {
  MainWindowState& state = MainState;
  if (!FileIsOpen()) return 0;
  state.MoveDelta = static_cast<std::int32_t>(static_cast<LONG_PTR>(delta));
  state.MovePosition = position;
  const int formerTop = state.Lines.Acur;
  state.PreviousTop = message == WM_VIEW_MOVE ? Line(formerTop).Lpos : kNoPosition;
  int step = 0;
  {
    std::optional<Loading> loading;
    Position(message, loading);
    step = ScrollStep(formerTop, loading);
  }
  if (message != WM_VIEW_LOAD || position >= 0) state.HeldPosition = Line(state.Lines.Acur).Lpos;
  Redraw(step);
  state.MovePosition = kNoPosition;
  state.MoveDelta = 0;
  return 0;
}

LRESULT LayoutView(bool resized) {
  MainWindowState& state = MainState;
  UpdateLinesPerScreen();
  const std::int32_t charWidth = std::max(state.CharWidth, 1);
  const bool wrap = (state.FormatFlags & VO_WRAP) != 0;
  if (wrap) state.HorzOffset = 0;
  const std::int32_t pixels = wrap ? state.ClientWidth : (state.CharWidth + state.ClientWidth) * kScreensWide;
  const bool fixed = (state.FormatFlags & VO_FIXEDLEN) != 0;
  const std::int32_t width = fixed ? state.LineLength : pixels / charWidth;
  state.HorzStepSmall = 1;
  state.HorzStepLarge = std::max(state.ClientWidth / (3 * charWidth), 1);

  // Lines that do not wrap and are longer than needed stay as they are, until they are twice too long.
  const bool wide = state.FormatWidth >= width;
  if (resized && state.FormatWidth == width) return 0;
  if (wide && !wrap && state.FormatWidth / 2 <= width) return 0;
  state.FormatWidth = width;
  PostMessageA(state.MainWindow, WM_VIEW_LOAD, 0, kNoPosition);
  return 1;
}

void ReformatView() {
  if (SendMessageA(MainState.MainWindow, WM_VIEW_LAYOUT, 0, kNoPosition) == 0) {
    PostMessageA(MainState.MainWindow, WM_VIEW_LOAD, 0, kNoPosition);
  }
}

bool ResizeView(WPARAM kind, LPARAM size) {
  MainState.ClientWidth = LOWORD(static_cast<ULONG_PTR>(size));
  MainState.ClientHeight = HIWORD(static_cast<ULONG_PTR>(size));
  if (kind == SIZE_MINIMIZED) return true;
  LayoutView(true);
  return false;
}
