#include "window/clipboard.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "window/main_window_state.h"
#include "window/private_messages.h"
#include "window/view_loading.h"

namespace {

void TellFailure(HWND owner, CopyFailure failure) {
  static constexpr const char* kTexts[] = {nullptr, "Cannot allocate buffers!", "File read error",
                                           "Program error"};
  char caption[kPathBytes] = {};
  GetWindowTextA(owner, caption, sizeof caption);
  MessageBeep(MB_ICONHAND);
  MessageBoxA(owner, kTexts[static_cast<int>(failure)], caption, MB_ICONHAND);
}

// Hands the text over to the clipboard. False when there is no memory for it.
bool SetClipboardText(HWND owner, const SelectionText& text) {
  const std::u16string utf16 = CellsToUtf16(text.Cells());
  const std::size_t size = (utf16.size() + 1) * sizeof utf16[0];
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
  if (block == nullptr) return false;
  std::memcpy(GlobalLock(block), utf16.c_str(), size);
  GlobalUnlock(block);
  if (!OpenClipboard(owner)) {
    GlobalFree(block);
    return true;
  }
  EmptyClipboard();
  SetClipboardData(CF_UNICODETEXT, block);
  CloseClipboard();
  return true;
}

// The selection as text, made on the reader's thread.
struct CopyJob {
  std::string path;
  FilePos from, to;
  LineStyle style;
  SelectionText text;
};

void RunCopy(CopyJob& job, ByteSource& source) {
  if (source.Open(job.path.c_str()) != 0) {
    job.text.failure = CopyFailure::read;
  } else {
    job.text = FormatSelection(job.from, job.to, source, job.style);
  }
}

}  // namespace

std::optional<SelectionText> TextOfSelection() {
  const MainWindowState& state = MainState;
  const auto job = std::make_shared<CopyJob>();
  job->path = state.File.Fname;
  job->from = state.SelStart;
  job->to = state.SelEnd;
  job->style = PresentStyle();
  job->style.options = PresentOptions();
  if ((state.FormatFlags & VO_FIXEDLEN) != 0) job->style.lineLen = state.LineLength;
  if (RunWatched([job](ByteSource& source, LongJob& /*watch*/) { RunCopy(*job, source); }) !=
      WatchEnd::finished) {
    return std::nullopt;
  }
  return std::move(job->text);
}

LRESULT CopyCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  if (state.SelStart < 0) {
    MessageBeep(MB_OK);
    return 0;
  }
  const auto made = TextOfSelection();
  if (!made) return 0;
  const SelectionText& text = *made;
  if (text.failure != CopyFailure::none) TellFailure(state.MainWindow, text.failure);
  if (!text.text) return 0;
  if (SetClipboardText(state.MainWindow, text)) return 1;
  TellFailure(state.MainWindow, CopyFailure::memory);
  return 0;
}

LRESULT SelectAllCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  state.SelStart = 0;
  state.SelEnd = state.File.Flen;
  state.SelAnchorStart = 0;
  state.SelAnchorEnd = std::min<FilePos>(state.File.Flen, 1);
  RepaintWindow();
  return 0;
}

LRESULT UnselectCommand(UINT /*id*/) {
  SendMessageA(MainState.MainWindow, WM_VIEW_UNSELECT, 0, 0);
  RepaintWindow();
  return 0;
}
