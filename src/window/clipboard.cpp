#include "window/clipboard.h"

#include <algorithm>
#include <cstring>

#include "engine/selection_text.h"
#include "window/main_window_state.h"
#include "window/private_messages.h"

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
  const std::size_t size = static_cast<std::size_t>(text.length) + 1;
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
  if (block == nullptr) return false;
  std::memcpy(GlobalLock(block), text.text.get(), size);
  GlobalUnlock(block);
  if (!OpenClipboard(owner)) {
    GlobalFree(block);
    return true;
  }
  EmptyClipboard();
  SetClipboardData(CF_TEXT, block);
  CloseClipboard();
  return true;
}

// Puts the bytes from `from` to `to`, formatted as the view shows them, on the clipboard. 1 when the
// clipboard was set, else 0.
LRESULT CopySelection(HWND owner, FilePos from, FilePos to, ViewFile& file, FormatProc format,
                      ViewOptions options, std::int32_t lineLen) {
  if ((options & VO_FIXEDLEN) != 0) lineLen = MainState.LineLength;
  const SelectionText text = FormatSelection(from, to, file, format, options, lineLen);
  if (text.failure != CopyFailure::none) TellFailure(owner, text.failure);
  if (!text.text) return 0;
  if (SetClipboardText(owner, text)) return 1;
  TellFailure(owner, CopyFailure::memory);
  return 0;
}

}  // namespace

LRESULT CopyCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  if (state.SelStart < 0) {
    MessageBeep(MB_OK);
    return 0;
  }
  state.FormatIndex = std::clamp(state.FormatIndex, 0, kFormats - 1);
  return CopySelection(state.MainWindow, state.SelStart, state.SelEnd, state.File,
                       state.FormatRoutines[state.FormatIndex], state.FormatFlags, state.FormatWidth);
}

LRESULT SelectAllCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  state.SelStart = 0;
  state.SelEnd = state.File.Flen - 1;
  state.SelAnchorStart = 0;
  state.SelAnchorEnd = std::min<FilePos>(state.File.Flen - 1, 1);
  RepaintWindow();
  return 0;
}

LRESULT UnselectCommand(UINT /*id*/) {
  SendMessageA(MainState.MainWindow, WM_VIEW_UNSELECT, 0, 0);
  RepaintWindow();
  return 0;
}
