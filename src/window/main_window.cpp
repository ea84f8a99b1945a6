#include "window/main_window.h"
#include "window/files/caption.h"

#include <cstdio>
#include <new>

#include "dialogs/help.h"
#include "marks/tag_list.h"
#include "resources/command_ids.h"
#include "settings/option_letters.h"
#include "settings/profile.h"
#include "window/commands.h"
#include "window/files/first_place.h"
#include "window/files/opening.h"
#include "window/fonts.h"
#include "window/main_window_state.h"
#include "window/menu.h"
#include "window/navigation.h"
#include "window/page_indexing.h"
#include "window/painting.h"
#include "window/printing/print_job.h"
#include "window/private_messages.h"
#include "window/reading/lit_hits.h"
#include "window/reading/status.h"
#include "window/scrolling.h"
#include "window/selection.h"
#include "window/titles.h"
#include "window/view_loading.h"
#include "window/watch.h"

namespace {

constexpr UINT_PTR kPageIndexTimerId = 3;

// Gets the buffers of the view's records. False when memory is lacking.
bool AllocateView() {
  MainWindowState& state = MainState;
  std::shared_ptr<ViewRun> run = MakeRun({});
  if (state.Tags.entries == nullptr) state.Tags.entries = new (std::nothrow) TagEntry[kTagSlots]();
  if (run == nullptr || state.Tags.entries == nullptr) return false;
  run->entries[0] = LineEntry{};
  TakeRun(std::move(run));
  state.Tags.capacity = kTagSlots - 1;
  state.Tags.count = 0;
  return true;
}

void FreeView() {
  MainWindowState& state = MainState;
  delete[] state.Tags.entries;
  state.Run = state.SpareRun = nullptr;
  state.File = ViewFile{};  // a program that asks over the bus finds none
  state.Lines = LineArray{};
  state.Text = TextBuffer{};
  state.Tags = TagList{};
  FreeTitles(state.Titles);
}

LRESULT CreateView(HWND window) {
  MainWindowState& state = MainState;
  state.MainWindow = window;
  LoadFirstTitles();
  TrimMenus(window);
  state.FontIsStock = 1;
  UpdateStatus();
  SendMessageA(window, WM_VIEW_FONT, 0, 0);
  if (!AllocateView()) {
    MessageBeep(MB_ICONHAND);
    MessageBoxA(nullptr, "Cannot allocate memory", kProgramName, MB_ICONHAND);
    SendMessageA(window, WM_CLOSE, 0, 0);
    return 0;
  }
  if (state.MruFiles != 0) AppendRecentSeparator(window);
  DragAcceptFiles(window, TRUE);
  if (state.SetupSection[0] != '\0') {
    SendMessageA(window, WM_COMMAND, IDM_RELOAD_SETUP, 0);
    ApplyOptionLetters(state, state, state);  // they win over what the setup holds
  }
  return 0;
}

// There is no window any more that could tell of it otherwise.
void SaveAtEnd() {
  const FileError error = SaveRecentLists(MainState);
  if (error == 0) return;
  std::fprintf(stderr, "quorl: cannot save the recent files and searches in %s: %s\n",
               ProfileFullPath(MainState).c_str(), FileErrorText(error).c_str());
}

LRESULT DestroyView() {
  MainWindowState& state = MainState;
  RunPageIndex(PG_END);
  SaveAtEnd();
  CloseHelp();
  FreeView();
  if (state.FontIsStock == 0 && state.ViewFont != nullptr) DeleteObject(state.ViewFont);
  state.ViewFont = nullptr;
  PostQuitMessage(0);
  return 0;
}

void TimerTick(UINT_PTR timer) {
  if (timer == kPageIndexTimerId) {
    PostMessageA(MainState.MainWindow, PG_CONT, 0, 0);
  } else if (timer == kLitHitsTimer) {
    LightHits();
  } else if (!WatchIsOn()) {
    AutoScroll(timer);
  }
}

bool IsInput(UINT message) {
  return message == WM_KEYDOWN || message == WM_COMMAND || message == WM_VSCROLL || message == WM_HSCROLL ||
         message == WM_MOUSEWHEEL || message == WM_MOUSEHWHEEL || message == WM_LBUTTONDOWN;
}

const char* PathOf(LPARAM lParam) {
  return reinterpret_cast<const char*>(lParam);
}

}  // namespace

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_CLOSE && PrintJobIsRunning()) {
    CloseBehindPrintJob(true);
    return 0;
  }
  if (WatchTakes(message, wParam, lParam)) return 0;
  if (IsInput(message)) NotePageIndexInput();
  switch (message) {
    case WM_CREATE:
      return CreateView(window);
    case WM_DESTROY:
      return DestroyView();
    case WM_SIZE:
      if (!ResizeView(wParam, lParam)) return 0;
      break;
    case WM_PAINT:
      PaintWindow();
      return 0;
    case WM_ERASEBKGND:
      if (FileIsOpen()) return 1;
      break;
    case WM_SYSCOLORCHANGE:
      FollowDesktopColors(ColorTable, MainState.DesktopColors);
      RepaintWindow();
      return 0;
    case WM_DPICHANGED:
      FollowScale(LOWORD(wParam));
      return 0;
    case WM_KEYDOWN:
      if (KeyDown(wParam)) return 0;
      break;
    case WM_VSCROLL:
      if (VerticalScroll(LOWORD(wParam))) return 0;
      break;
    case WM_HSCROLL:
      return HorizontalScroll(LOWORD(wParam));
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
      return TurnWheel(message, wParam);
    case WM_COMMAND:
      return RunCommand(LOWORD(wParam));
    case WM_INITMENUPOPUP:
      if (HIWORD(static_cast<ULONG_PTR>(lParam)) == 0) {
        UpdatePullDown(window, LOWORD(static_cast<ULONG_PTR>(lParam)));
      }
      break;
    case WM_EXITMENULOOP:
      NoteEscape();
      break;
    case WM_LBUTTONDOWN:
      if (LeftButtonDown(wParam, lParam)) return 0;
      break;
    case WM_MOUSEMOVE:
      if (MouseMoved(wParam, lParam)) return 0;
      break;
    case WM_LBUTTONDBLCLK:
      if (DoubleClick(lParam)) return 0;
      break;
    case WM_LBUTTONUP:
      LeftButtonUp();
      return 0;
    case WM_RBUTTONDOWN:
      RightButtonDown();
      return 0;
    case WM_DROPFILES:
      return OpenDropped(reinterpret_cast<HDROP>(wParam));
    case WM_TIMER:
      TimerTick(wParam);
      return 0;
    case WM_VIEW_LOAD:
    case WM_VIEW_MOVE:
    case WM_VIEW_GOTO:
      return MoveView(message, wParam, lParam);
    case WM_VIEW_LAYOUT:
      return LayoutView(false);
    case WM_VIEW_FONT:
      BuildViewFont();
      return 0;
    case WM_VIEW_SELECT:
      return SelectFrom(lParam);
    case WM_VIEW_EXTEND:
      return ExtendSelection(lParam);
    case WM_VIEW_CODE:
      TellCode();
      return 0;
    case WM_VIEW_UNSELECT:
      return Unselect();
    case WM_FILE_START:
      return StartWithFile(PathOf(lParam));
    case WM_FILE_TRY:
      return TryFile(PathOf(lParam), wParam != 0);
    case WM_FILE_OPEN:
      return OpenFileInView(PathOf(lParam));
    case WM_FILE_PLACE:
      ShowAskedPlace();
      return 0;
    case PG_START:
    case PG_CONT:
    case PG_STOP:
    case PG_END:
      return RunPageIndex(message);
    default:
      break;
  }
  return DefWindowProcA(window, message, wParam, lParam);
}
