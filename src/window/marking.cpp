#include "window/marking.h"

#include <algorithm>

#include "marks/tag_list.h"
#include "window/main_window_state.h"
#include "window/navigation.h"
#include "window/private_messages.h"
#include "window/reading/status.h"

namespace {

bool HasLines() {
  return MainState.Lines.Acur < MainState.Lines.Alast;
}

struct Range {
  FilePos start, end;  // end exclusive
};

// The selection or, without one, the top line.
Range SelectionOrTopLine() {
  const MainWindowState& state = MainState;
  if (state.SelStart >= 0) return {state.SelStart, state.SelEnd};
  return {LineAt(state.Lines.Acur).Lpos, LineAt(state.Lines.Acur + 1).Lpos};
}

// A tag command spends the selection and shows the tags.
void ShowTags() {
  TellFullTags();
  SendMessageA(MainState.MainWindow, WM_VIEW_UNSELECT, 0, 0);
  RepaintWindow();
}

}  // namespace

void TellFullTags() {
  const TagList& tags = MainState.Tags;
  if (tags.count >= tags.capacity) Say(std::to_string(tags.count) + " tags: the list is full");
}

LRESULT MarkToggleCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  LineArray& lines = state.Lines;
  if (!HasLines()) return 0;
  UpdateLinesPerScreen();
  // The first line of the screen in the selection; the top line if there is none.
  const int end = std::min<int>(lines.Acur + state.LinesPerScreen, lines.Alast);
  int index = lines.Acur;
  while (index < end && LineAt(index).Lpos < state.SelStart)
    ++index;
  if (index == end) index = lines.Acur;
  LineEntry& line = lines.Aline[index];
  if ((line.Lflags & LF_TAGMASK) != 0) {
    line.Lflags &= ~LF_TAGMASK;
    TagRemoveRange(state.Tags, line.Lpos, LineAt(index + 1).Lpos - 1);
  } else {
    line.Lflags |= kTagByUser;
    TagInsert(state.Tags, line.Lpos, kTagByUser);
  }
  ShowTags();
  return 0;
}

LRESULT MarkNextCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  const FilePos belowTop = HasLines() ? LineAt(state.Lines.Acur + 1).Lpos - 1 : 0;
  const FilePos next = TagNext(state.Tags, std::max(belowTop, state.SelStart + 1));
  if (next >= 0) {
    PostMessageA(state.MainWindow, WM_VIEW_MOVE, 0, next.Offset());
  } else {
    PostMessageA(state.MainWindow, WM_VSCROLL, SB_BOTTOM, 0);
    MessageBeep(MB_ICONEXCLAMATION);
  }
  RepaintWindow();
  return 0;
}

LRESULT UnmarkAllCommand(UINT /*id*/) {
  MainState.Tags.count = 0;
  MarkLines(MainState.Lines, MainState.Tags);
  ShowTags();
  return 0;
}

LRESULT MarkSetCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  if (!HasLines()) return 0;
  const Range range = SelectionOrTopLine();
  const int end = std::min<int>(state.Lines.Acur + TextRows() + 1, state.Lines.Alast);
  for (int i = state.Lines.Acur; i < end; ++i) {
    const FilePos start = LineAt(i).Lpos;
    if (start >= range.start && start < range.end) TagInsert(state.Tags, start, kTagByUser);
  }
  MarkLines(state.Lines, state.Tags);
  ShowTags();
  return 0;
}

LRESULT MarkResetCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  if (!HasLines()) return 0;
  const Range range = SelectionOrTopLine();
  TagRemoveRange(state.Tags, range.start, std::max(range.end - 1, range.start));
  MarkLines(state.Lines, state.Tags);
  ShowTags();
  return 0;
}
