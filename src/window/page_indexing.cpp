#include "window/page_indexing.h"

#include "window/main_window_state.h"

void ShowPageIndexFault(PageIndexFault fault, UINT message, HWND owner, const char* path) {
  const PageIndexBox& box = PageIndexBoxOf(fault);
  const bool beeps = box.beep != kNoBeep;
  if (beeps && !box.beepBehind) MessageBeep(box.beep);
  MessageBoxA(box.owned ? owner : nullptr, PageIndexFaultText(fault, message, path).c_str(), box.caption,
              box.icon);
  if (beeps && box.beepBehind) MessageBeep(box.beep);
}

PageIndexPhase PageIndexDispatch(UINT message, HWND owner, PageIndexState& state, const char* path) {
  const PageIndexFault fault = PageIndexRun(message, state, path, MainState.PageIndexingBuffer);
  if (fault != PageIndexFault::none) ShowPageIndexFault(fault, message, owner, path);
  return state.phase;
}
