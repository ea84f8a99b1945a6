#include "window/notice.h"

#include "settings/colors.h"
#include "window/main_window_state.h"
#include "window/reading/status.h"

namespace {

RECT NoticeRect() {
  const MainWindowState& state = MainState;
  return {0, state.ClientHeight - state.CharHeight, state.ClientWidth, state.ClientHeight};
}

}  // namespace

void ShowNotice(const std::string& text) {
  if (MainState.Notice == text) return;
  MainState.Notice = text;
  UpdateStatus();
  if (StatusLineShown()) return;
  const RECT rect = NoticeRect();
  InvalidateRect(MainState.MainWindow, &rect, FALSE);
}

void DrawNotice(HDC dc) {
  if (MainState.Notice.empty() || StatusLineShown()) return;
  const std::string text = " " + MainState.Notice + " ";
  const RECT rect = NoticeRect();
  const COLORREF formerText = SetTextColor(dc, ColorTable[CommentText]);
  const COLORREF formerBackground = SetBkColor(dc, ColorTable[CommentBgnd]);
  ExtTextOutA(dc, rect.left, rect.top, ETO_OPAQUE | ETO_CLIPPED, &rect, text.data(),
              static_cast<UINT>(text.size()), nullptr);
  SetBkColor(dc, formerBackground);
  SetTextColor(dc, formerText);
}
