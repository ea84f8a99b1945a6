#include "dialogs/print_shades.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "dialogs/dialog.h"
#include "dialogs/fields.h"
#include "dialogs/save_error.h"
#include "print/shades.h"
#include "resources/dialogs/print_shades_dialog.h"
#include "settings/colors.h"
#include "settings/profile.h"

namespace {

namespace ids = print_shades_dialog;

// The shade of the paper has no field: nothing prints it.
struct ShadeField {
  int id;
  ColorSlot slot;
  const char* name;
};
constexpr ShadeField kShadeFields[] = {
    {ids::kNormalText, PrintText, "Normal line text shade"},
    {ids::kNormalBgnd, PrintTextB, "Normal line background shade"},
    {ids::kTagText, PrintTag, "Tagged line text shade"},
    {ids::kTagBgnd, PrintTagB, "Tagged line background shade"},
    {ids::kHeadText, PrintHead, "Heading text shade"},
    {ids::kHeadBgnd, PrintHeadB, "Heading background shade"},
    {ids::kCommentText, PrintCmnt, "Comment text shade"},
    {ids::kCommentBgnd, PrintCmntB, "Comment Background shade"},
};

class PrintShadesDialog : public Dialog {
 public:
  explicit PrintShadesDialog(const ProfilePlace& place)
      : Dialog(ids::kTemplate, {ids::kHelp, kHelpPageSetup}), place_(place) {
    std::copy(std::begin(ColorTable), std::end(ColorTable), colors_);
  }

 protected:
  bool Start() override {
    ShowNumbers();
    return true;
  }

  void Accept() override {
    if (Take()) End(1);
  }

  void Act(int control, UINT /*notification*/) override {
    if (control == ids::kResetAll) {
      ResetColors(COLORS_PRINT, colors_);
      ShowNumbers();
    }
    if (control == ids::kSave && Take() && Save()) End(1);
  }

 private:
  void ShowNumbers() {
    for (const ShadeField& field : kShadeFields)
      SetDlgItemInt(Window(), field.id, static_cast<UINT>(ShadeOf(colors_[field.slot])), FALSE);
  }

  // True when all fields are good; then the colors are what they say.
  bool Take() {
    COLORREF read[std::size(kShadeFields)];
    for (std::size_t i = 0; i < std::size(kShadeFields); ++i) {
      const ShadeField& field = kShadeFields[i];
      const std::string text = FieldText(Window(), field.id);
      if (!CheckField(Window(), field.id, ValidateIntField(text, 0, kMostShade, field.name))) return false;
      read[i] = ColorOfShade(std::atoi(text.c_str()));
    }
    for (std::size_t i = 0; i < std::size(kShadeFields); ++i)
      colors_[kShadeFields[i].slot] = read[i];
    // The window colors may have followed the desktop's meanwhile.
    std::copy(colors_ + kWindowColors, std::end(colors_), ColorTable + kWindowColors);
    return true;
  }

  bool Save() {
    return CheckSave(Window(), "print shades", "Print Shades Error", ProfileFullPath(place_),
                     SavePrintShades(place_.ProfilePath, "Quorl Colors"));
  }

  const ProfilePlace& place_;
  COLORREF colors_[kColorSlots];
};

}  // namespace

INT_PTR RunPrintShades(HWND owner, const ProfilePlace& place) {
  return PrintShadesDialog(place).Run(owner);
}
