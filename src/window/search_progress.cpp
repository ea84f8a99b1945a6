#include "window/search_progress.h"

#include <algorithm>

#include "window/main_window_state.h"

namespace {

std::string CaptionOf(HWND window) {
  char text[kPathBytes + 64];
  GetWindowTextA(window, text, static_cast<int>(sizeof text));
  return text;
}

void Paint() {
  MSG message;
  if (PeekMessageA(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE)) DispatchMessageA(&message);
}

bool EscWasPressed() {
  MSG message;
  bool pressed = false;
  while (PeekMessageA(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE)) {
    if (message.hwnd == MainState.MainWindow && message.wParam == VK_ESCAPE) pressed = true;
  }
  return pressed;
}

bool CloseWaits() {
  MSG message;
  return PeekMessageA(&message, nullptr, WM_CLOSE, WM_CLOSE, PM_NOREMOVE) != FALSE;
}

}  // namespace

std::string SearchCaption(const std::string& caption, FilePos position, FilePos end) {
  const double share = end > 0 ? static_cast<double>(position) / static_cast<double>(end) : 0;
  const int percent = std::clamp(static_cast<int>(share * 100), 0, 99);
  return caption + " - " + std::to_string(percent) + " %";
}

SearchWatch::SearchWatch(std::chrono::milliseconds quiet)
    : showFrom_(std::chrono::steady_clock::now() + quiet),
      caption_(CaptionOf(MainState.MainWindow)),
      classCursor_(SetClassLongPtrA(MainState.MainWindow, GCLP_HCURSOR,
                                    reinterpret_cast<LONG_PTR>(MainState.WaitCursor))),
      cursor_(SetCursor(MainState.WaitCursor)) {}

SearchWatch::~SearchWatch() {
  if (!shown_.empty()) SetWindowTextA(MainState.MainWindow, caption_.c_str());
  SetClassLongPtrA(MainState.MainWindow, GCLP_HCURSOR, static_cast<LONG_PTR>(classCursor_));
  SetCursor(cursor_);
}

SearchProgress SearchWatch::Progress() {
  const auto report = [](void* watch, FilePos position, FilePos end) {
    return static_cast<SearchWatch*>(watch)->Report(position, end);
  };
  return {report, this};
}

bool SearchWatch::Report(FilePos position, FilePos end) {
  Paint();
  if (EscWasPressed() || CloseWaits()) return false;
  if (std::chrono::steady_clock::now() >= showFrom_) ShowCaption(SearchCaption(caption_, position, end));
  return true;
}

void SearchWatch::ShowCaption(const std::string& text) {
  if (text == shown_) return;
  shown_ = text;
  SetWindowTextA(MainState.MainWindow, text.c_str());
}
