#include "dialogs/colors.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "dialogs/dialog.h"
#include "resources/dialogs/color_dialog.h"
#include "settings/colors.h"

namespace {

constexpr int kCustomColors = 16;
constexpr COLORREF kNoColor = 0xFFFFFFFF;

// The custom colors of the system's dialog, which are kept from one use to the next.
COLORREF* CustomColors() {
  static COLORREF* const colors = [] {
    static COLORREF first[kCustomColors];
    std::ranges::fill(first, kNoColor);
    return first;
  }();
  return colors;
}

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

class ColorDialog : public Dialog {
 public:
  ColorDialog() : Dialog(color_dialog::kTemplate, {color_dialog::kHelp, kHelpColors}) {
    std::copy(std::begin(ColorTable), std::end(ColorTable), colors_);
  }

 protected:
  bool Start() override {
    for (int slot = 0; slot < kWindowColors; ++slot) {
      Send(color_dialog::kList, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(kColorSlotInfos[slot].name));
    }
    Send(color_dialog::kList, CB_SETCURSEL, 0);
    SetFocus(Control(color_dialog::kList));
    return false;
  }

  void Accept() override {
    std::copy(std::begin(colors_), std::end(colors_), ColorTable);
    End(1);
  }

  void Act(int control, UINT /*notification*/) override {
    switch (control) {
      case color_dialog::kChange:
        ChangeColor();
        break;
      case color_dialog::kReset:
        Reset(ChosenSlot());
        break;
      case color_dialog::kResetAll:
        Reset(COLORS_WINDOW);
        break;
      default:
        if (control >= color_dialog::kFirstSample && control <= color_dialog::kLastSample)
          ChooseSample(control);
        break;
    }
  }

  bool Handle(UINT message, WPARAM /*wParam*/, LPARAM lParam) override {
    if (message != WM_DRAWITEM) return false;
    DrawSample(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    return true;
  }

 private:
  int ChosenSlot() {
    return static_cast<int>(
        std::clamp<LRESULT>(Send(color_dialog::kList, CB_GETCURSEL), 0, kWindowColors - 1));
  }

  void DrawText(const DRAWITEMSTRUCT& item, const Sample& sample) {
    SetTextColor(item.hDC, colors_[sample.text]);
    SetBkColor(item.hDC, colors_[sample.background]);
    ExtTextOutA(item.hDC, item.rcItem.left, item.rcItem.top, ETO_OPAQUE, &item.rcItem, sample.caption,
                static_cast<UINT>(std::strlen(sample.caption)), nullptr);
  }

  // One pixel beyond the control at three sides, so that the edges of the fill do not show.
  void DrawBand(const DRAWITEMSTRUCT& item) {
    const HBRUSH brush = CreateSolidBrush(colors_[Background]);
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
  void ChooseSample(int id) {
    const auto* const sample = std::ranges::find(kSamples, id, &Sample::id);
    const ColorSlot slot = ChosenSlot() == sample->text ? sample->background : sample->text;
    Send(color_dialog::kList, CB_SETCURSEL, static_cast<WPARAM>(slot));
    SetFocus(Control(color_dialog::kList));
  }

  void ShowColors() {
    InvalidateRect(Window(), nullptr, FALSE);
    SetFocus(Control(color_dialog::kList));
  }

  void ChangeColor() {
    COLORREF& color = colors_[ChosenSlot()];
    CHOOSECOLORA choose{};
    choose.lStructSize = sizeof choose;
    choose.hwndOwner = Window();
    choose.rgbResult = color;
    choose.lpCustColors = CustomColors();
    choose.Flags = CC_RGBINIT;
    if (ChooseColorA(&choose) != 0) color = choose.rgbResult;
    ShowColors();
  }

  void Reset(int selector) {
    ResetColors(selector, colors_);
    ShowColors();
  }

  COLORREF colors_[kColorSlots];
};

}  // namespace

INT_PTR RunColorDialog(HWND owner) {
  return ColorDialog().Run(owner);
}
