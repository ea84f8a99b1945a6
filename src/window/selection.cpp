#include "window/selection.h"

#include <algorithm>

#include "resources/command_ids.h"
#include "window/main_window_state.h"
#include "window/navigation.h"
#include "window/private_messages.h"
#include "window/reading/lit_hits.h"
#include "window/reading/status.h"

namespace {

struct Range {
  FilePos start, end;
};

// Faster than thirty ticks a second nobody can follow.
constexpr std::int32_t kLeastScrollDelayMs = 33;

// Whether painting would invert the row of a line.
bool IsInverted(const LineEntry& line, const LineEntry& next, const Range& range) {
  return next.Lpos > range.start && line.Lpos < range.end;
}

int YOf(LPARAM point) {
  return static_cast<std::int16_t>(HIWORD(static_cast<ULONG_PTR>(point)));
}

int TitleBottom() {
  return TitleRows() * MainState.CharHeight;
}

bool OverTitles(LPARAM point) {
  return YOf(point) < TitleBottom();
}

// The index of the line under a point; it may lie behind the last line.
int LineUnder(LPARAM point) {
  const int row = MainState.CharHeight > 0 ? YOf(point) / MainState.CharHeight - TitleRows() : 0;
  return MainState.Lines.Acur + std::max(row, 0);
}

FilePos LineStart(int index) {
  return MainState.Lines.Aline[index].Lpos;
}

// Inverts on the screen exactly the rows whose state differs between the two ranges.
void InvertSelectionChange(HDC dc, const LineArray& lines, const Range& before, const Range& now) {
  const int height = std::max(MainState.CharHeight, 1);
  int y = TitleBottom();
  for (int i = lines.Acur; i < lines.Alast && y < MainState.ClientHeight; ++i, y += height) {
    const LineEntry& line = lines.Aline[i];
    const LineEntry& next = lines.Aline[i + 1];
    if (IsInverted(line, next, before) == IsInverted(line, next, now)) continue;
    const RECT row{0, y, MainState.ClientWidth + 1, y + height};
    if (LitIn(line.Lpos).empty()) {
      InvertRect(dc, &row);
    } else {
      InvalidateRect(MainState.MainWindow, &row, FALSE);  // lit columns do not turn with their row
    }
  }
}

void SetSelection(const Range& range) {
  MainWindowState& state = MainState;
  const Range before{state.SelStart, state.SelEnd};
  state.SelStart = range.start;
  state.SelEnd = range.end;
  const HDC dc = GetDC(state.MainWindow);
  InvertSelectionChange(dc, state.Lines, before, range);
  ReleaseDC(state.MainWindow, dc);
  UpdateStatus();
}

// A selection that was not made with the mouse (a hit of a search, the whole file) is what a drag with the
// Shift key pivots around.
void AnchorAtSelection() {
  MainWindowState& state = MainState;
  if (state.SelAnchorStart >= state.SelStart && state.SelAnchorEnd <= state.SelEnd) return;
  state.SelAnchorStart = state.SelStart;
  state.SelAnchorEnd = state.SelEnd;
}

void StopAutoScroll() {
  if (MainState.AutoScrollTimer != 0) KillTimer(MainState.MainWindow, MainState.AutoScrollTimer);
  MainState.AutoScrollTimer = 0;
}

// A timer that runs goes on, or a mouse that trembles would stop the view.
void StartAutoScroll(UINT_PTR timer, std::int32_t delay, std::int32_t lines) {
  MainState.AutoScrollLines = lines;
  const auto wait = static_cast<UINT>(std::max(delay, kLeastScrollDelayMs));
  if (MainState.AutoScrollTimer == timer && MainState.AutoScrollDelay == wait) return;
  StopAutoScroll();
  MainState.AutoScrollDelay = wait;
  MainState.AutoScrollTimer = SetTimer(MainState.MainWindow, timer, wait, nullptr);
}

// Lines of a tick when the pointer is `pixels` beyond the edge: one for each row, and as many as the profile
// allows at most.
std::int32_t FastLines(int pixels) {
  return std::min(MainState.FastMouseLines, 1 + pixels / std::max(MainState.CharHeight, 1));
}

// Scrolls by itself while the pointer is at the upper or lower edge of the text: slowly in the first and the
// last row, fast beyond them.
void AutoScrollFor(int y) {
  const MainWindowState& state = MainState;
  const int firstBottom = TitleBottom() + state.CharHeight;
  if (firstBottom < y && y < state.ClientHeight - state.CharHeight) {
    StopAutoScroll();
  } else if (y <= TitleBottom()) {
    StartAutoScroll(kScrollUpTimer, state.FastMouseDelay, -FastLines(TitleBottom() - y));
  } else if (y <= firstBottom) {
    StartAutoScroll(kScrollUpTimer, state.SlowMouseDelay, -state.SlowMouseLines);
  } else if (y < state.ClientHeight - 1) {
    StartAutoScroll(kScrollDownTimer, state.SlowMouseDelay, state.SlowMouseLines);
  } else {
    StartAutoScroll(kScrollDownTimer, state.FastMouseDelay, FastLines(y - state.ClientHeight + 1));
  }
}

}  // namespace

LRESULT SelectFrom(LPARAM point) {
  if (OverTitles(point)) return 0;
  const int line = LineUnder(point);
  if (line >= MainState.Lines.Alast) {
    MessageBeep(MB_ICONEXCLAMATION);
    return 0;
  }
  const Range range{LineStart(line), LineStart(line + 1)};
  MainState.SelAnchorStart = range.start;
  MainState.SelAnchorEnd = range.end;
  SetSelection(range);
  return 0;
}

LRESULT ExtendSelection(LPARAM point) {
  const MainWindowState& state = MainState;
  const LineArray& lines = state.Lines;
  if (lines.Acur >= lines.Alast) return 0;
  const int line = std::clamp<int>(LineUnder(point), lines.Acur, lines.Alast - 1);
  const FilePos start = LineStart(line);
  SetSelection(start > state.SelAnchorStart ? Range{state.SelAnchorStart, LineStart(line + 1)}
                                            : Range{start, state.SelAnchorEnd});
  return 0;
}

LRESULT Unselect() {
  MainState.SelStart = MainState.SelEnd = kNoPosition;
  MainState.SelAnchorStart = MainState.SelAnchorEnd = kNoPosition;
  return 0;
}

bool LeftButtonDown(WPARAM keys, LPARAM point) {
  MainWindowState& state = MainState;
  if (!FileIsOpen() || state.Selecting != 0 || OverTitles(point)) return false;
  if ((keys & MK_SHIFT) != 0 && state.SelStart >= 0) {
    AnchorAtSelection();
    SendMessageA(state.MainWindow, WM_VIEW_EXTEND, keys, point);
  } else if (LineUnder(point) >= state.Lines.Alast) {
    MessageBeep(MB_ICONEXCLAMATION);
    return true;
  } else {
    SendMessageA(state.MainWindow, WM_VIEW_SELECT, keys, point);
  }
  SetCapture(state.MainWindow);
  state.Selecting = 1;
  return true;
}

bool MouseMoved(WPARAM keys, LPARAM point) {
  MainWindowState& state = MainState;
  if (state.Selecting == 0) return false;
  UpdateLinesPerScreen();
  state.LastMouseKeys = keys;
  state.LastMousePoint = point;
  SendMessageA(state.MainWindow, WM_VIEW_EXTEND, keys, point);
  AutoScrollFor(YOf(point));
  return true;
}

bool DoubleClick(LPARAM point) {
  if (!FileIsOpen() || OverTitles(point)) return false;
  if (LineUnder(point) >= MainState.Lines.Alast) {
    MessageBeep(MB_ICONEXCLAMATION);
  } else {
    SendMessageA(MainState.MainWindow, WM_COMMAND, IDM_MARK_TOGGLE, 0);
  }
  return true;
}

void LeftButtonUp() {
  StopAutoScroll();
  if (MainState.Selecting == 0) return;
  ReleaseCapture();
  MainState.Selecting = 0;
}

void RightButtonDown() {
  if (MainState.SelStart < 0) return;
  SendMessageA(MainState.MainWindow, WM_VIEW_UNSELECT, 0, 0);
  RepaintWindow();
}

void AutoScroll(UINT_PTR timer) {
  const MainWindowState& state = MainState;
  const LineArray& lines = state.Lines;
  const bool endShown = timer == kScrollDownTimer && lines.Acur + state.LinesPerScreen > lines.Alast;
  const bool topShown = timer == kScrollUpTimer && lines.Acur == lines.Afirst && LineStart(lines.Afirst) == 0;
  if (state.Selecting == 0 || endShown || topShown) {
    KillTimer(state.MainWindow, timer);
    MainState.AutoScrollTimer = 0;
    return;
  }
  SendMessageA(state.MainWindow, WM_VIEW_MOVE,
               static_cast<WPARAM>(static_cast<LONG_PTR>(state.AutoScrollLines)), kNoPosition.Offset());
  SendMessageA(state.MainWindow, WM_VIEW_EXTEND, state.LastMouseKeys, state.LastMousePoint);
}
