#include "window/find_commands.h"

#include "engine/view_loader.h"
#include "resources/command_ids.h"
#include "search/search_engine.h"
#include "window/find_dialogs.h"
#include "window/main_window_state.h"
#include "window/navigation.h"
#include "window/private_messages.h"
#include "window/search_progress.h"

namespace {

// Whether there is a search to run; beeps when there is none.
bool SearchMayRun() {
  if (SearchIsDefined(MainState.Search)) return true;
  MessageBeep(MB_ICONEXCLAMATION);
  return false;
}

void ShowFailure(FilePos result) {
  const char* text = SearchFailureText(result);
  if (text == nullptr) return;
  MessageBeep(MB_ICONHAND);
  MessageBoxA(nullptr, text, kSearchFailureCaption, MB_ICONHAND);
}

}  // namespace

LRESULT FindDialogCommand(UINT id) {
  SearchState& search = MainState.Search;
  const HWND window = MainState.MainWindow;
  const INT_PTR result = id == IDM_FIND_TEXT ? RunFindText(window) : RunFindHex(window);
  if (result != 1) return result;
  if ((search.SearchFlags & SEARCH_FROM_TOP) != 0) search.SearchNext = 0;
  const bool markAll = (search.SearchFlags & SEARCH_MARK_ALL) != 0;
  PostMessageA(window, WM_COMMAND, markAll ? IDM_FIND_MARK_ALL : IDM_FIND_NEXT, 0);
  return result;
}

LRESULT FindNextCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  if (!SearchMayRun()) return 0;
  FilePos hit = kSearchNoHit;
  {
    SearchWatch watch;
    hit =
        FindNext(state.File, state.Search, state.PaintedTop, state.SelStart, state.SelEnd, watch.Progress());
  }
  if (hit == kSearchCanceled) return 0;
  ShowFailure(hit);
  // Also in front of a move, so that it does not scroll an image with the former selection.
  RepaintWindow();
  if (hit < 0) {
    MessageBeep(MB_ICONEXCLAMATION);
    return 0;
  }
  UpdateLinesPerScreen();
  if (!HitIsOnScreen(state.Lines, state.LinesPerScreen, hit)) {
    SendMessageA(state.MainWindow, WM_VIEW_MOVE, 0, hit);
  }
  return 0;
}

LRESULT FindMarkAllCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  if (!SearchMayRun()) return 0;
  FilePos first = kSearchNoHit;
  {
    SearchWatch watch;
    first = MarkAll(state.File, state.Search, state.Tags, watch.Progress());
  }
  if (first == kSearchCanceled) return 0;
  ShowFailure(first);
  if (first < 0) {
    PostMessageA(state.MainWindow, WM_VSCROLL, SB_BOTTOM, 0);
    MessageBeep(MB_ICONEXCLAMATION);
    return 0;
  }
  MarkLines(state.Lines, state.Tags);
  RepaintWindow();
  SendMessageA(state.MainWindow, WM_VIEW_MOVE, 0, first);
  return 0;
}
