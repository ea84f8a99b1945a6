#include "window/columns.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "platform/ansi_text.h"
#include "resources/dialogs/freeze_columns_dialog.h"
#include "window/dialog_routing.h"
#include "window/field_boxes.h"
#include "window/fonts.h"
#include "window/help.h"
#include "window/main_window_state.h"

namespace {

// Posted by the two lines when the user acts on one of them; wParam is the control. It is handled when the
// control has moved its caret.
constexpr UINT WM_SCALE_CLICK = 1759;

constexpr int kMostFrozen = 255;
constexpr std::size_t kLongestSample = 515;
constexpr int kScalePoints = 8;
constexpr const char* kRuler =
    "....+....1....+....2....+....3....+....4....+....5....+....6....+....7....+....8";
constexpr int kScales[] = {freeze_columns_dialog::kSample, freeze_columns_dialog::kRuler};

// Of the one dialog that is open.
HFONT ScaleFont = nullptr;
WNDPROC FormerScaleProc = nullptr;  // one for both: they are of one kind

LRESULT CALLBACK ScaleEditProc(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_LBUTTONDOWN || message == WM_KEYDOWN) {
    PostMessageA(GetParent(control), WM_SCALE_CLICK, reinterpret_cast<WPARAM>(control), 0);
  }
  return CallWindowProcA(FormerScaleProc, control, message, wParam, lParam);
}

// The view's face at one size, whatever the zoom.
HFONT MakeScaleFont() {
  LOGFONTA font = MainState.ViewLogFont;
  font.lfHeight = FontHeight(kScalePoints, MainState.PixelsPerInch);
  return CreateFontIndirectA(&font);
}

INT_PTR StartDialog(HWND dialog, LPARAM sample) {
  SetDlgItemInt(dialog, freeze_columns_dialog::kCount, static_cast<UINT>(MainState.FrozenColumns), FALSE);
  SetDlgItemTextA(dialog, freeze_columns_dialog::kSample, reinterpret_cast<const char*>(sample));
  SetDlgItemTextA(dialog, freeze_columns_dialog::kRuler, kRuler);
  ScaleFont = MakeScaleFont();
  for (const int scale : kScales) {
    const HWND control = GetDlgItem(dialog, scale);
    if (ScaleFont != nullptr) SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(ScaleFont), FALSE);
    FormerScaleProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ScaleEditProc)));
  }
  return TRUE;
}

void ShowCaretColumn(HWND dialog, HWND control) {
  const LRESULT selection = SendMessageA(control, EM_GETSEL, 0, 0);
  SetDlgItemInt(dialog, freeze_columns_dialog::kCount, LOWORD(static_cast<ULONG_PTR>(selection)), FALSE);
}

void CloseDialog(HWND dialog, INT_PTR result) {
  for (const int scale : kScales) {
    SetWindowLongPtrA(GetDlgItem(dialog, scale), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(FormerScaleProc));
  }
  EndDialog(dialog, result);
}

void AcceptColumns(HWND dialog) {
  const std::string text = FieldText(dialog, freeze_columns_dialog::kCount);
  if (!CheckField(dialog, freeze_columns_dialog::kCount,
                  ValidateIntField(text, 0, kMostFrozen, "Number of columns to lock"))) {
    MessageBeep(MB_ICONASTERISK);
    return;
  }
  MainState.FrozenColumns = std::atoi(text.c_str());
  CloseDialog(dialog, 1);
}

void Act(HWND dialog, int control, UINT /*notification*/) {
  switch (control) {
    case IDOK:
      AcceptColumns(dialog);
      break;
    case IDCANCEL:
      CloseDialog(dialog, 0);
      break;
    case freeze_columns_dialog::kHelp:
      ShowHelp(kHelpFreezeColumns);
      break;
    default:
      break;
  }
}

INT_PTR CALLBACK FreezeColumnsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_SCALE_CLICK) {
    ShowCaretColumn(dialog, reinterpret_cast<HWND>(wParam));
    return TRUE;
  }
  return RouteDialog({StartDialog, Act}, dialog, message, wParam, lParam);
}

// The top line as an edit field can show it: a control character takes one column here as it does in the
// view.
std::string SampleLine() {
  const LineArray& lines = MainState.Lines;
  if (lines.Acur >= lines.Alast) return {};
  const LineEntry& line = lines.Aline[lines.Acur];
  const std::size_t length = std::min(static_cast<std::size_t>(std::max(line.Llen, 0)), kLongestSample);
  std::string sample(MainState.Text.Tbuf + line.Ltext, length);
  std::ranges::replace_if(
      sample, [](char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == '\x7F'; }, ' ');
  return AnsiToUtf8(sample);
}

}  // namespace

LRESULT FreezeColumnsCommand(UINT /*id*/) {
  const std::string sample = SampleLine();
  const INT_PTR result = RunDialog(freeze_columns_dialog::kTemplate, MainState.MainWindow,
                                   FreezeColumnsDlgProc, reinterpret_cast<LPARAM>(sample.c_str()));
  if (ScaleFont != nullptr) DeleteObject(ScaleFont);
  ScaleFont = nullptr;
  if (result == 1) RepaintWindow();
  return result;
}

LRESULT ClearColumnsCommand(UINT /*id*/) {
  MainState.FrozenColumns = 0;
  RepaintWindow();
  return 0;
}
