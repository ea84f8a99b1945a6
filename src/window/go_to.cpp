#include "window/go_to.h"

#include "dialogs/goto.h"
#include "window/main_window_state.h"
#include "window/page_indexing.h"
#include "window/private_messages.h"
#include "window/view_loading.h"

namespace {

void GoToPage(PageNumber page) {
  const HWND window = MainState.MainWindow;
  const FilePos place = FindPage(page);
  if (place == kPageStopped) return;
  if (place >= 0) {
    PostMessageA(window, WM_VIEW_MOVE, 0, place.Offset());
    return;
  }
  MessageBeep(MB_ICONEXCLAMATION);
  MessageBoxA(window, kInvalidPageText, kInvalidPageCaption, MB_ICONEXCLAMATION);
}

}  // namespace

void GoTo(const GoToAnswer& answer) {
  const HWND window = MainState.MainWindow;
  const GoToTarget target = GoToTargetOf(answer, MainState.File.Flen);
  switch (target.move) {
    case GoToMove::top:
      PostMessageA(window, WM_VSCROLL, SB_TOP, 0);
      break;
    case GoToMove::bottom:
      PostMessageA(window, WM_VSCROLL, SB_BOTTOM, 0);
      break;
    case GoToMove::load:
      SendMessageA(window, WM_VIEW_GOTO, 0, target.position.Offset());
      break;
    case GoToMove::page:
      GoToPage(target.page);
      break;
    case GoToMove::none:
      break;
  }
}

LRESULT GoToCommand(UINT /*id*/) {
  const MainWindowState& state = MainState;
  // The numbers offered are those of the file as it is now.
  if (!AskFileLength()) return 0;
  const PageIndexPages pages = PagesToGoTo();
  const auto answer = RunGoTo(state.MainWindow, {state.File.Flen, pages.count, pages.more});
  // The file may have been closed from outside while the dialog was open.
  if (answer && FileIsOpen()) GoTo(*answer);
  return answer ? 1 : 0;
}
