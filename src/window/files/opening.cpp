#include "window/files/opening.h"

#include <cstdio>
#include <cstring>
#include <utility>

#include "engine/error_page.h"
#include "platform/spool.h"
#include "resources/command_ids.h"
#include "window/files/caption.h"
#include "window/files/first_place.h"
#include "window/main_window_state.h"
#include "window/navigation.h"
#include "window/notice.h"
#include "window/private_messages.h"
#include "window/view_loading.h"

namespace {

// The directory in front of the base name of CommandFile serves once, as the first directory of the dialog;
// from then on the dialog starts in the current directory.
std::string TakeCommandDirectory() {
  char* file = MainState.CommandFile;
  const char* base = BaseName(file);
  const std::string directory(file, static_cast<std::size_t>(base - file));
  std::memmove(file, base, std::strlen(base) + 1);
  return directory;
}

LPARAM PathParameter(const char* path) {
  return reinterpret_cast<LPARAM>(path);
}

// Whether the file can be opened, in `error`. False when the user gave the wait up.
bool TryToOpen(const char* path, FileError& error) {
  struct Answer {
    std::string path;
    FileError error = 0;
  };
  const auto answer = std::make_shared<Answer>();
  answer->path = path;
  const WatchEnd end = RunWatched([answer](ByteSource& source, LongJob& /*watch*/) {
    answer->error = source.Open(answer->path.c_str());
  });
  error = answer->error;
  return end == WatchEnd::finished;
}

void TellCannotOpen(const char* path, FileError error) {
  MessageBeep(MB_ICONEXCLAMATION);
  const std::string text = std::string("Cannot open ") + path + ":\n" + FileErrorText(error);
  MessageBoxA(MainState.MainWindow, text.c_str(), kProgramName, MB_ICONEXCLAMATION);
}

bool IsPattern(const char* name) {
  return std::strpbrk(name, "*?") != nullptr;
}

// The file becomes the one of the window, with the lines that were loaded, or with a page that tells why
// there are none.
void ShowOpened(const ViewFile& file, LoadOutcome&& outcome) {
  MainWindowState& state = MainState;
  const HWND window = state.MainWindow;
  SendMessageA(window, PG_STOP, 0, 0);
  state.HorzOffset = 0;
  SendMessageA(window, WM_VIEW_UNSELECT, 0, 0);
  if (!IsSpooledInput(file.Fname)) TouchRecentFile(state, file.Fname);
  state.Tags.count = 0;
  ShowNotice("");
  const MoveResult result = outcome.result;
  if ((result.status & VS_FAILED) == 0) {
    ShowLoaded(std::move(outcome));
    state.HeldPosition = state.Lines.Aline[state.Lines.Acur].Lpos;
  } else {
    state.File = file;
    ShowErrorPage(result.status, state.File, state.Lines, state.Text);
    state.TopBeforeError = 0;
  }

  ShowFileCaption();
  if (std::exchange(state.StartsHidden, false)) ShowWindow(window, SW_SHOWNORMAL);
  if (IsIconic(window)) ShowWindow(window, SW_RESTORE);
  RepaintWindow();
  SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  SetFocus(window);
  PostMessageA(window, PG_START, 0, 0);
}

}  // namespace

LRESULT StartWithFile(const char* name) {
  const std::string file = TakePlaceBehindName(name);
  const LRESULT opened = SendMessageA(MainState.MainWindow, WM_FILE_TRY, 1, PathParameter(file.c_str()));
  PostMessageA(MainState.MainWindow, opened == 0 ? WM_CLOSE : WM_FILE_PLACE, 0, 0);
  return opened;
}

LRESULT TryFile(const char* name, bool ask) {
  MainWindowState& state = MainState;
  FileError error = FullPath(name, state.DialogFile, sizeof state.DialogFile);
  if (error == 0 && !TryToOpen(state.DialogFile, error)) return 0;
  if (error == 0) {
    SendMessageA(state.MainWindow, WM_FILE_OPEN, 0, PathParameter(state.DialogFile));
    return 1;
  }
  if (!ask) return 0;
  // A pattern asks for the dialog; a plain name that cannot be opened has a reason.
  if (!IsPattern(name)) TellCannotOpen(state.DialogFile, error);
  return SendMessageA(state.MainWindow, WM_COMMAND, IDM_OPEN, 0);
}

LRESULT OpenFileInView(const char* name) {
  ViewFile file;
  std::snprintf(file.Fname, sizeof file.Fname, "%s", name);
  MoveRequest request = RequestOf(MoveKind::load, 0, 0);
  request.backFromError = kNoPosition;
  LoadOutcome outcome = LoadFor(request, file, false);
  // Who gives the wait up keeps the file at hand, and so does who asks for one that cannot be read.
  if (outcome.end != WatchEnd::finished) return 0;
  if (outcome.result.error != 0) {
    TellCannotOpen(file.Fname, outcome.result.error);
  } else {
    ShowOpened(file, std::move(outcome));
  }
  return 0;
}

LRESULT OpenDialogCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  const std::string directory = TakeCommandDirectory();
  const char* base = state.CommandFile;
  const std::string filters = OpenFilters(base);
  std::snprintf(state.DialogFile, sizeof state.DialogFile, "%s", base);

  OPENFILENAMEA open{};
  open.lStructSize = sizeof open;
  open.hwndOwner = state.MainWindow;
  open.lpstrFilter = filters.c_str();
  open.nFilterIndex = IsPattern(base) ? 2 : 1;
  open.lpstrFile = state.DialogFile;
  open.nMaxFile = sizeof state.DialogFile;
  open.lpstrInitialDir = directory.empty() ? nullptr : directory.c_str();
  open.Flags = OFN_HIDEREADONLY;
  if (GetOpenFileNameA(&open) == 0) return 0;
  PostMessageA(state.MainWindow, WM_FILE_OPEN, 0, PathParameter(state.DialogFile));
  return 1;
}

LRESULT OpenDropped(HDROP drop) {
  MainWindowState& state = MainState;
  const UINT length = DragQueryFileA(drop, 0, state.DialogFile, sizeof state.DialogFile);
  DragFinish(drop);
  if (length != 0) PostMessageA(state.MainWindow, WM_FILE_OPEN, 0, PathParameter(state.DialogFile));
  return 0;
}

LRESULT OpenRecentCommand(UINT id) {
  const char* path = MainState.RecentFiles[id - IDM_RECENT1];
  if (path[0] == '\0') return 0;
  std::snprintf(MainState.DialogFile, sizeof MainState.DialogFile, "%s", path);
  PostMessageA(MainState.MainWindow, WM_FILE_OPEN, 0, PathParameter(MainState.DialogFile));
  return 1;
}

LRESULT CloseFileCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  state.HorzOffset = 0;
  SendMessageA(state.MainWindow, PG_STOP, 0, 0);
  SendMessageA(state.MainWindow, WM_VIEW_UNSELECT, 0, 0);
  SetWindowTextA(state.MainWindow, kProgramName);
  std::memset(state.File.Fname, 0, sizeof state.File.Fname);
  state.Tags.count = 0;
  state.File.Flen = 0;
  InvalidateRect(state.MainWindow, nullptr, TRUE);
  return 0;
}

std::string OpenFilters(const char* base) {
  const std::string end(1, '\0');
  return "Any File (*.*)" + end + "*.*" + end + "Default (" + base + ")" + end + base + end;
}
