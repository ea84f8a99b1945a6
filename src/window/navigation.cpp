#include "window/navigation.h"

#include <algorithm>
#include <cstdlib>

#include "engine/error_page.h"
#include "engine/view_loader.h"
#include "engine/view_moves.h"
#include "marks/tag_list.h"
#include "window/files/caption.h"
#include "window/main_window_state.h"
#include "window/notice.h"
#include "window/page_indexing.h"
#include "window/private_messages.h"
#include "window/view_loading.h"

namespace {

// A line that does not wrap may be this many screens wide.
constexpr std::int32_t kScreensWide = 3;

MoveKind KindOf(UINT message) {
  if (message == WM_VIEW_LOAD) return MoveKind::load;
  return message == WM_VIEW_GOTO ? MoveKind::goTo : MoveKind::move;
}

// What the screen showed before a move.
struct Before {
  LineArray lines = MainState.Lines;
  std::shared_ptr<ViewRun> run = MainState.Run;  // keeps the entries
  FilePos top = LineAt(MainState.Lines.Acur).Lpos;
};

// Whether a scroll of the image by `step` rows (1 or -1) would leave each row with the line it now has.
bool KeepsRows(const Before& before, int step) {
  const LineArray& lines = MainState.Lines;
  const int end = VisibleRows() - std::max(0, step);
  for (int row = std::max(0, -step); row < end; ++row) {
    const bool had = before.lines.Acur + row + step < before.lines.Alast;
    const bool has = lines.Acur + row < lines.Alast;
    if (had != has) return false;
    if (!has) return true;
    const LineEntry& former = before.lines.Aline[before.lines.Acur + row + step];
    const LineEntry& now = LineAt(lines.Acur + row);
    if (former.Lpos != now.Lpos || former.Llen != now.Llen || former.Lflags != now.Lflags) return false;
  }
  return true;
}

// By how many rows the image may be scrolled to show the view as it is after a move: 1 or -1, else 0.
int ScrollStep(const Before& before) {
  const MainWindowState& state = MainState;
  const LineArray& lines = state.Lines;
  if (GetUpdateRect(state.MainWindow, nullptr, FALSE) != FALSE) return 0;
  if (state.Run == before.run) {
    return std::abs(lines.Acur - before.lines.Acur) == 1 ? lines.Acur - before.lines.Acur : 0;
  }
  int step = 0;
  if (lines.Acur < lines.Alast - 1 && LineAt(lines.Acur + 1).Lpos == before.top) step = -1;
  if (lines.Acur > lines.Afirst && LineAt(lines.Acur - 1).Lpos == before.top) step = 1;
  return step != 0 && KeepsRows(before, step) ? step : 0;
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

// A move that could not be made: the lines on the screen stay, and the user is told why. The error page is
// for what is no fault of the file.
void TellFailure(const LoadOutcome& outcome, FilePos wanted) {
  MainWindowState& state = MainState;
  if (outcome.result.error != 0) {
    TellReadError(state.File.Fname, outcome.result.error);
    return;
  }
  const FilePos goBack = wanted >= 0        ? wanted
                         : ErrorPageShown() ? state.TopBeforeError
                                            : LineAt(state.Lines.Acur).Lpos;
  ShowErrorPage(outcome.result.status, state.File, state.Lines, state.Text);
  state.TopBeforeError = goBack;
}

// A move that the lines at hand do not serve, or not for sure. False when the view stays as it is.
bool MoveByLoading(const MoveRequest& request, const AtHandAnswer& atHand) {
  MainWindowState& state = MainState;
  LoadOutcome outcome = LoadFor(request, state.File, atHand.answer == AtHand::serveToEnd);
  if (outcome.end != WatchEnd::finished) return false;
  ShowNotice("");
  if ((outcome.result.status & VS_FAILED) != 0) {
    TellFailure(outcome, request.position);
    return true;
  }
  if (outcome.result.unchanged) {
    state.Lines.Acur = atHand.top;
    return true;
  }
  ShowLoaded(std::move(outcome));
  return true;
}

}  // namespace

std::int32_t TextRows() {
  if (MainState.CharHeight <= 0) return 0;
  return std::max(MainState.ClientHeight / MainState.CharHeight - TitleRows(), 0);
}

void UpdateLinesPerScreen() {
  MainState.LinesPerScreen = std::max(TextRows(), 1);
}

std::int32_t VisibleRows() {
  const std::int32_t height = std::max(MainState.CharHeight, 1);
  return std::max((MainState.ClientHeight + height - 1) / height - TitleRows(), 0);
}

void ShowLoaded(LoadOutcome&& outcome) {
  MainWindowState& state = MainState;
  state.File = outcome.file;
  UpdateFileCaption();
  MatchPageIndex();
  TakeRun(std::move(outcome.run));
  if (state.Tags.count > 0) MarkLines(state.Lines, state.Tags);
  if (state.PadPageLength > 0) {
    UpdateLinesPerScreen();
    RepaintWindow();
  }
}

LRESULT MoveView(UINT message, WPARAM delta, LPARAM position) {
  MainWindowState& state = MainState;
  if (!FileIsOpen()) return 0;
  const MoveRequest request = RequestOf(
      KindOf(message), static_cast<std::int32_t>(static_cast<LONG_PTR>(delta)), FilePos::At(position));
  const Before before;
  const AtHandAnswer atHand = MoveAtHand(request, state.File, state.Lines);
  if (atHand.answer == AtHand::serve) {
    ShowNotice("");
    state.Lines.Acur = atHand.top;
  } else if (!MoveByLoading(request, atHand)) {
    return 0;
  }
  const int step = message == WM_VIEW_MOVE ? ScrollStep(before) : 0;
  if (message != WM_VIEW_LOAD || position >= 0) state.HeldPosition = LineAt(state.Lines.Acur).Lpos;
  Redraw(step);
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
  PostMessageA(state.MainWindow, WM_VIEW_LOAD, 0, kNoPosition.Offset());
  return 1;
}

void ReformatView() {
  if (SendMessageA(MainState.MainWindow, WM_VIEW_LAYOUT, 0, 0) == 0) {
    PostMessageA(MainState.MainWindow, WM_VIEW_LOAD, 0, kNoPosition.Offset());
  }
}

bool ResizeView(WPARAM kind, LPARAM size) {
  MainState.ClientWidth = LOWORD(static_cast<ULONG_PTR>(size));
  MainState.ClientHeight = HIWORD(static_cast<ULONG_PTR>(size));
  if (kind == SIZE_MINIMIZED) return true;
  LayoutView(true);
  return false;
}
