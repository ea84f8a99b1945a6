#include "window/scrolling.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdlib>

#include "engine/view_moves.h"
#include "places/goto_logic.h"
#include "platform/scroll.h"
#include "resources/command_ids.h"
#include "window/main_window_state.h"
#include "window/navigation.h"
#include "window/private_messages.h"
#include "window/selection.h"
#include "window/watch.h"

namespace {

// An Esc that comes so soon behind one that ended something else is meant for that.
constexpr std::chrono::milliseconds kGrace{500};

bool EscapeIsUsed() {
  return std::chrono::steady_clock::now() - MainState.EscapeNoted < kGrace;
}

// What SPI_GETWHEELSCROLLLINES gives for a page at a notch.
constexpr UINT kPageAtANotch = UINT_MAX;

void PostMove(std::int32_t lines, FilePos position) {
  PostMessageA(MainState.MainWindow, WM_VIEW_MOVE, static_cast<WPARAM>(static_cast<LONG_PTR>(lines)),
               position.Offset());
}

// The place in the file that stands to its length as the thumb does to the bar.
FilePos ThumbPosition() {
  const std::int64_t top = ScrollBarTop(MainState.MainWindow, SB_VERT);
  if (top <= 0) return 0;
  const std::int64_t thumb = std::clamp<std::int64_t>(ScrollBarThumb(MainState.MainWindow, SB_VERT), 0, top);
  return PositionOfShare(MainState.File.Flen, thumb, top);
}

void SetOffset(std::int32_t offset) {
  MainState.HorzOffset = offset;
  RepaintWindow();
}

void ScrollColumns(std::int32_t columns) {
  const std::int32_t most = std::max(MainState.FormatWidth - 1, 0);
  SetOffset(static_cast<std::int32_t>(
      std::clamp<std::int64_t>(std::int64_t{MainState.HorzOffset} + columns, 0, most)));
}

// So far that the longest line on the screen ends at the window's right edge.
void ScrollToLineEnd() {
  const LineArray& lines = MainState.Lines;
  const int end = std::min<int>(lines.Acur + VisibleRows(), lines.Alast);
  std::int32_t longest = 0;
  for (int i = lines.Acur; i < end; ++i)
    longest = std::max(longest, lines.Aline[i].Llen);
  const std::int32_t columns = MainState.ClientWidth / std::max(MainState.CharWidth, 1);
  SetOffset(std::clamp(longest - columns, 0, std::max(MainState.FormatWidth - 1, 0)));
}

// Home and End: the line's end or, on the other of the plain key and the key with Ctrl, the file's.
void GoToEnd(bool control, UINT scrollCode) {
  if (MainState.CuaKeyboard != 0) control = !control;
  if (!control) {
    PostMessageA(MainState.MainWindow, WM_VSCROLL, scrollCode, 0);
  } else if (scrollCode == SB_TOP) {
    SetOffset(0);
  } else {
    ScrollToLineEnd();
  }
}

// Adds a turn of the wheel to what is left of the last one and takes whole lines out, `perNotch` for each
// notch. A turn of another kind, or the other way, starts anew.
std::int32_t TakeWheelLines(int delta, UINT kind, std::int64_t perNotch) {
  MainWindowState& state = MainState;
  if (state.WheelKind != kind || (state.WheelRest < 0) != (delta < 0)) state.WheelRest = 0;
  state.WheelKind = kind;
  const std::int64_t turn = state.WheelRest + delta * perNotch;
  state.WheelRest = static_cast<std::int32_t>(turn % WHEEL_DELTA);
  return static_cast<std::int32_t>(turn / WHEEL_DELTA);
}

std::int64_t WheelLines() {
  UINT lines = 3;
  SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
  return lines == kPageAtANotch ? MainState.LinesPerScreen : std::min<std::int64_t>(lines, kViewLines);
}

}  // namespace

bool VerticalScroll(UINT code) {
  switch (code) {
    case SB_LINEUP:
      PostMove(-1, kNoPosition);
      return true;
    case SB_LINEDOWN:
      PostMove(1, kNoPosition);
      return true;
    case SB_PAGEUP:
      PostMove(-MainState.LinesPerScreen, kNoPosition);
      return true;
    case SB_PAGEDOWN:
      PostMove(MainState.LinesPerScreen, kNoPosition);
      return true;
    case SB_THUMBPOSITION:
      PostMove(0, ThumbPosition());
      return true;
    case SB_TOP:
      PostMove(0, 0);
      return true;
    case SB_BOTTOM:
      PostMove(0, kFileEnd);
      return true;
    default:
      return false;
  }
}

LRESULT HorizontalScroll(UINT code) {
  switch (code) {
    case SB_LINEUP:
      ScrollColumns(-MainState.HorzStepSmall);
      break;
    case SB_LINEDOWN:
      ScrollColumns(MainState.HorzStepSmall);
      break;
    case SB_PAGEUP:
      ScrollColumns(-MainState.HorzStepLarge);
      break;
    case SB_PAGEDOWN:
      ScrollColumns(MainState.HorzStepLarge);
      break;
    case SB_THUMBPOSITION:
      SetOffset(static_cast<std::int32_t>(ScrollBarThumb(MainState.MainWindow, SB_HORZ)));
      break;
    case SB_TOP:
      SetOffset(0);
      break;
    case SB_BOTTOM:
      ScrollToLineEnd();
      break;
    default:
      break;
  }
  return 0;
}

void ShowColumns(std::int32_t first, std::int32_t end) {
  const MainWindowState& state = MainState;
  const std::int32_t frozen = std::max(state.FrozenColumns, 0);
  const std::int32_t columns = state.ClientWidth / std::max(state.CharWidth, 1) - frozen;
  first -= frozen;
  end -= frozen;
  if (columns <= 0 || end <= 0) return;
  if (first >= state.HorzOffset && end <= state.HorzOffset + columns) return;
  // A third of the screen stands in front, unless the start of the line shows them too.
  SetOffset(end <= columns ? 0 : std::max(first - columns / 3, 0));
}

void NoteEscape() {
  MainState.EscapeNoted = std::chrono::steady_clock::now();
}

bool KeyDown(WPARAM key) {
  const HWND window = MainState.MainWindow;
  const bool control = GetKeyState(VK_CONTROL) < 0;
  const std::int32_t step = control ? MainState.HorzStepLarge : MainState.HorzStepSmall;
  switch (static_cast<int>(key)) {
    case VK_ESCAPE:
      if (WatchIsOn()) {
        GiveUpWatched();
        NoteEscape();
      } else if (MainState.Selecting != 0) {
        LeftButtonUp();
      } else if (EscapeIsUsed()) {
        return true;
      } else if (MainState.EscExit != 0) {
        PostMessageA(window, WM_CLOSE, 0, 0);
      } else {
        ShowWindow(window, SW_MINIMIZE);
      }
      return true;
    case VK_PRIOR:
      PostMessageA(window, WM_VSCROLL, SB_PAGEUP, 0);
      return true;
    case VK_NEXT:
      PostMessageA(window, WM_VSCROLL, SB_PAGEDOWN, 0);
      return true;
    case VK_UP:
      PostMessageA(window, WM_VSCROLL, SB_LINEUP, 0);
      return true;
    case VK_DOWN:
      PostMessageA(window, WM_VSCROLL, SB_LINEDOWN, 0);
      return true;
    case VK_END:
      GoToEnd(control, SB_BOTTOM);
      return true;
    case VK_HOME:
      GoToEnd(control, SB_TOP);
      return true;
    case VK_LEFT:
      ScrollColumns(-step);
      return true;
    case VK_RIGHT:
      ScrollColumns(step);
      return true;
    default:
      return false;
  }
}

LRESULT TurnWheel(UINT message, WPARAM wParam) {
  const UINT keys = LOWORD(wParam) & static_cast<UINT>(MK_SHIFT | MK_CONTROL);
  const int delta = static_cast<std::int16_t>(HIWORD(wParam));
  const UINT kind = (message << 8) | keys;
  if ((keys & MK_CONTROL) != 0) {
    const std::int32_t steps = TakeWheelLines(delta, kind, 1);
    for (std::int32_t i = 0; i < std::abs(steps); ++i) {
      SendMessageA(MainState.MainWindow, WM_COMMAND, steps > 0 ? IDM_ZOOM_IN : IDM_ZOOM_OUT, 0);
    }
    return 0;
  }
  const std::int32_t steps = TakeWheelLines(delta, kind, WheelLines());
  if (steps == 0) return 0;
  // The wheel turned away from the user shows what is above; the second wheel tilted right, what is right.
  if (message == WM_MOUSEHWHEEL) {
    ScrollColumns(steps);
  } else if ((keys & MK_SHIFT) != 0) {
    ScrollColumns(-steps);
  } else {
    PostMove(-steps, kNoPosition);
  }
  return 0;
}

void UpdateScrollBars() {
  const MainWindowState& state = MainState;
  const LineArray& lines = state.Lines;
  const std::int32_t rows = TextRows();

  std::int64_t range = 0;
  std::int64_t position = 0;
  std::int64_t page = 0;
  if (FileIsOpen()) {
    const FilePos top = lines.Aline[lines.Acur].Lpos;
    const FilePos end = lines.Aline[lines.Alast].Lpos;
    // All lines of the run on one screen is the whole file only where the run ends with it.
    const bool allShown = lines.Acur == 0 && lines.Alast - lines.Acur <= rows && end >= state.File.Flen;
    if (state.VertScroll == kBarAlways || (state.VertScroll == kBarWhenNeeded && !allShown)) {
      range = state.File.Flen.Offset();
      position = std::min<std::int64_t>(top.Offset(), range);
      page = std::max<std::int64_t>(lines.Aline[std::min<int>(lines.Acur + rows, lines.Alast)].Lpos - top, 0);
    }
  }

  const std::int32_t widest = std::max(state.FormatWidth - 1, 0);
  const bool fits = std::int64_t{state.CharWidth} * state.FormatWidth <= state.ClientWidth;
  std::int32_t columns = fits && state.HorzOffset == 0 ? 0 : widest;
  if (state.HorzScroll == kBarNever) columns = 0;
  if (state.HorzScroll == kBarAlways) columns = widest;

  const std::int32_t offset = state.HorzOffset;
  SetScrollBar(state.MainWindow, SB_VERT, range, position, page);
  MainState.HorzOffset = offset;  // the bar may have resized the window, and the layout has reset it
  SetScrollBar(state.MainWindow, SB_HORZ, columns, std::min(offset, columns),
               state.CharWidth > 0 ? std::min(state.ClientWidth / state.CharWidth, columns) : 0);
}
