#include "window/color_dialog.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "resources/dialogs/color_dialog.h"
#include "settings/colors.h"
#include "window/dialog_routing.h"
#include "window/help.h"
#include "window/main_window_state.h"

namespace {

COLORREF ColorScratch[kColorSlots];

constexpr int kCustomColors = 16;
constexpr COLORREF kNoColor = 0xFFFFFFFF;
COLORREF CustomColors[kCustomColors];  // kept from one use to the next

// A part of the picture: the slots that it shows, and its text; none for a band of the background.
struct Sample {
  int id;
  ColorSlot text, background;
  const char* caption;
};

constexpr Sample kSamples[] = {
    {160, HeadingText, HeadingBgnd, "Title line"},
    {161, TagText, TagBgnd, "Tagged line"},
    {162, MessageText, MessageBgnd, "*** Error message ***"},
    {163, CommentText, CommentBgnd, " [Information]"},
    {164, WindowText, WindowBgnd, "Text line"},
    {165, WindowText, WindowBgnd, "Text line"},
    {166, WindowText, WindowBgnd, "Text line"},
    {167, WindowText, WindowBgnd, "Text line"},
    {168, WindowText, WindowBgnd, "Text line"},
    {169, WindowText, WindowBgnd, "Text line"},
    {170, Background, Background, nullptr},
    {171, Background, Background, nullptr},
};
constexpr int kOutlinedBand = 171;

constexpr bool SamplesAreSound() {
  for (const Sample& sample : kSamples) {
    const auto draws = [&sample](const ControlTemplate& control) {
      return control.kind == ControlKind::ownerDrawn && control.id == sample.id;
    };
    if (std::ranges::count_if(color_dialog::kControls, draws) != 1) return false;
  }
  return std::size(kSamples) == color_dialog::kLastSample - color_dialog::kFirstSample + 1;
}
static_assert(SamplesAreSound());

INT_PTR StartDialog(HWND dialog, LPARAM /*param*/) {
  std::copy(std::begin(ColorTable), std::end(ColorTable), ColorScratch);
  for (int slot = 0; slot < kWindowColors; ++slot) {
    SendDlgItemMessageA(dialog, color_dialog::kList, CB_ADDSTRING, 0,
                        reinterpret_cast<LPARAM>(kColorSlotInfos[slot].name));
  }
  SendDlgItemMessageA(dialog, color_dialog::kList, CB_SETCURSEL, 0, 0);
  SetFocus(GetDlgItem(dialog, color_dialog::kList));
  return FALSE;
}

int ChosenSlot(HWND dialog) {
  const LRESULT row = SendDlgItemMessageA(dialog, color_dialog::kList, CB_GETCURSEL, 0, 0);
  return static_cast<int>(std::clamp<LRESULT>(row, 0, kWindowColors - 1));
}

void DrawText(const DRAWITEMSTRUCT& item, const Sample& sample) {
  SetTextColor(item.hDC, ColorScratch[sample.text]);
  SetBkColor(item.hDC, ColorScratch[sample.background]);
  ExtTextOutA(item.hDC, item.rcItem.left, item.rcItem.top, ETO_OPAQUE, &item.rcItem, sample.caption,
              static_cast<UINT>(std::strlen(sample.caption)), nullptr);
}

// One pixel beyond the control at three sides, so that the edges of the fill do not show.
void DrawBand(const DRAWITEMSTRUCT& item) {
  const HBRUSH brush = CreateSolidBrush(ColorScratch[Background]);
  const HGDIOBJ formerBrush = SelectObject(item.hDC, brush);
  const HGDIOBJ pen = GetStockObject(NULL_PEN);
  const HGDIOBJ formerPen = item.CtlID == kOutlinedBand ? nullptr : SelectObject(item.hDC, pen);
  Rectangle(item.hDC, item.rcItem.left - 1, item.rcItem.top, item.rcItem.right + 1, item.rcItem.bottom + 1);
  if (formerPen != nullptr) SelectObject(item.hDC, formerPen);
  SelectObject(item.hDC, formerBrush);
  DeleteObject(brush);
}

void DrawSample(const DRAWITEMSTRUCT& item) {
  const auto* const sample = std::ranges::find(kSamples, static_cast<int>(item.CtlID), &Sample::id);
  if (sample == std::end(kSamples)) return;
  if (sample->caption != nullptr) {
    DrawText(item, *sample);
  } else {
    DrawBand(item);
  }
}

// A first click chooses the text color of that kind of line, a second one its background.
void ChooseSample(HWND dialog, int id) {
  const auto* const sample = std::ranges::find(kSamples, id, &Sample::id);
  const ColorSlot slot = ChosenSlot(dialog) == sample->text ? sample->background : sample->text;
  SendDlgItemMessageA(dialog, color_dialog::kList, CB_SETCURSEL, static_cast<WPARAM>(slot), 0);
  SetFocus(GetDlgItem(dialog, color_dialog::kList));
}

void ShowColors(HWND dialog) {
  InvalidateRect(dialog, nullptr, FALSE);
  SetFocus(GetDlgItem(dialog, color_dialog::kList));
}

void ChangeColor(HWND dialog) {
  static const bool customReady = [] {
    std::ranges::fill(CustomColors, kNoColor);
    return true;
  }();
  static_cast<void>(customReady);
  COLORREF& color = ColorScratch[ChosenSlot(dialog)];
  CHOOSECOLORA choose{};
  choose.lStructSize = sizeof choose;
  choose.hwndOwner = dialog;
  choose.rgbResult = color;
  choose.lpCustColors = CustomColors;
  choose.Flags = CC_RGBINIT;
  if (ChooseColorA(&choose) != 0) color = choose.rgbResult;
  ShowColors(dialog);
}

void ResetChosen(HWND dialog, int selector) {
  ResetColors(selector, ColorScratch);
  ShowColors(dialog);
}

void AcceptColors(HWND dialog) {
  std::copy(std::begin(ColorScratch), std::end(ColorScratch), ColorTable);
  EndDialog(dialog, 1);
}

void Act(HWND dialog, int control, UINT /*notification*/) {
  switch (control) {
    case IDOK:
      AcceptColors(dialog);
      break;
    case IDCANCEL:
      EndDialog(dialog, 0);
      break;
    case color_dialog::kChange:
      ChangeColor(dialog);
      break;
    case color_dialog::kReset:
      ResetChosen(dialog, ChosenSlot(dialog));
      break;
    case color_dialog::kResetAll:
      ResetChosen(dialog, COLORS_WINDOW);
      break;
    case color_dialog::kHelp:
      ShowHelp(kHelpColors);
      break;
    default:
      if (control >= color_dialog::kFirstSample && control <= color_dialog::kLastSample)
        ChooseSample(dialog, control);
      break;
  }
}

INT_PTR CALLBACK ColorDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DRAWITEM) {
    DrawSample(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    return TRUE;
  }
  return RouteDialog({StartDialog, Act}, dialog, message, wParam, lParam);
}

}  // namespace

INT_PTR RunColorDialog(HWND owner) {
  return RunDialog(color_dialog::kTemplate, owner, ColorDlgProc, 0);
}

LRESULT ColorsCommand(UINT /*id*/) {
  const INT_PTR result = RunColorDialog(MainState.MainWindow);
  RepaintWindow();
  return result;
}
