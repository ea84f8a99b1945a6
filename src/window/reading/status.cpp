#include "window/reading/status.h"

#include <algorithm>

#include "platform/popup.h"
#include "platform/status.h"
#include "resources/menu.h"
#include "window/files/caption.h"
#include "window/main_window_state.h"
#include "window/menu.h"
#include "window/navigation.h"
#include "window/notice.h"
#include "window/view_loading.h"

namespace {

constexpr const char* kShortNames[kFormats] = {"Text", "Hex", "Raw"};

// With a narrow blank that does not break between groups of three digits (ISO 80000-1).
std::string Grouped(std::int64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t end = text.size(); end > 3; end -= 3)
    text.insert(end - 3, "\xE2\x80\xAF");
  return text;
}

std::string FormatText() {
  const bool wraps = (MainState.FormatFlags & VO_WRAP) != 0;
  return std::string(kShortNames[MainState.FormatIndex]) + (wraps ? ", wrapped" : "");
}

std::string PositionText() {
  const MainWindowState& state = MainState;
  const LineArray& lines = state.Lines;
  const FilePos top = LineAt(lines.Acur).Lpos;
  const FilePos length = state.File.Flen;
  const int end = std::min<int>(lines.Acur + TextRows(), lines.Alast);
  std::string text = "Byte " + Grouped(top.Offset()) + ", ";
  if (LineAt(end).Lpos >= length) return text + "end";
  const double share = static_cast<double>(top.Offset()) / static_cast<double>(length.Offset());
  return text + std::to_string(static_cast<int>(share * 100)) + " %";
}

std::string SelectedText() {
  const MainWindowState& state = MainState;
  if (state.SelStart < 0) return {};
  const FilePos end = state.SelEnd < 0 ? state.File.Flen : state.SelEnd;
  return "Selected " + Grouped(std::max<ByteCount>(end - state.SelStart, 0));
}

StatusLine PresentLine() {
  const MainWindowState& state = MainState;
  StatusLine line;
  if (!state.Notice.empty()) {
    line.first = {state.Notice, "", 0};
  } else if (FileIsOpen()) {
    line.first = {FileTitle(state.File.Fname), "Open another file", IDM_OPEN};
  } else {
    line.first = {"No file", "Open a file", IDM_OPEN};
  }
  if (!FileIsOpen()) return line;
  const std::int32_t tags = state.Tags.count;
  const bool noLines = ErrorPageShown() || state.Lines.Acur >= state.Lines.Alast;
  line.fields = {
      {noLines ? "" : PositionText(), "Go to another place", IDM_GOTO},
      {FormatText(), "Choose the format", IDM_FORMAT_LIST},
      {kCodeNames[CodeInUse(PresentOptions())], "Choose the character code", IDM_CODE_LIST},
      {Grouped(state.File.Flen.Offset()) + " bytes", "Go to another place", IDM_GOTO},
      {SelectedText(), "Copy the selection", IDM_COPY},
      {tags == 0 ? "" : Grouped(tags) + (tags == 1 ? " tag" : " tags"), "Next tag", IDM_MARK_NEXT},
      {state.HorzOffset == 0 ? "" : "Column " + Grouped(std::int64_t{state.HorzOffset} + 1), "Freeze columns",
       IDM_FREEZE_COLUMNS},
  };
  return line;
}

void ShowList(UINT submenu) {
  ShowPopupMenu(MainState.MainWindow, BuildPopup(submenu), nullptr);
}

}  // namespace

void UpdateStatus() {
  const MainWindowState& state = MainState;
  if (state.MainWindow == nullptr) return;
  if (state.StatusLine == 0) {
    SetStatusLine(state.MainWindow, nullptr);
    return;
  }
  const StatusLine line = PresentLine();
  SetStatusLine(state.MainWindow, &line);
}

void Say(const std::string& text) {
  if (StatusLineShown()) ShowNotice(text);
}

LRESULT StatusLineCommand(UINT /*id*/) {
  MainState.StatusLine = MainState.StatusLine == 0 ? 1 : 0;
  UpdateStatus();
  RepaintWindow();
  return 0;
}

bool StatusLineShown() {
  return MainState.StatusLine != 0;
}

LRESULT FormatListCommand(UINT /*id*/) {
  ShowList(kFormatsSubMenu);
  return 0;
}

LRESULT CodeListCommand(UINT /*id*/) {
  ShowList(kCodesSubMenu);
  return 0;
}
