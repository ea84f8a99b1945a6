#include "dialogs/page_setup.h"

#include "dialogs/dialog.h"
#include "dialogs/fields.h"
#include "dialogs/print_shades.h"
#include "dialogs/save_error.h"
#include "resources/dialogs/page_setup_dialog.h"
#include "settings/locale_settings.h"
#include "settings/profile.h"

namespace {

namespace ids = page_setup_dialog;

struct OptionBox {
  int id;
  std::uint32_t option;
};
constexpr OptionBox kOptionBoxes[] = {
    {ids::kFileName, PO_FILE_NAME},           {ids::kFullPath, PO_FULL_PATH},
    {ids::kDateTime, PO_DATE_TIME},           {ids::kPageNumber, PO_PAGE_NUMBER},
    {ids::kEjectOnFormFeeds, PO_EJECT_ON_FF}, {ids::kPageTitles, PO_PAGE_TITLES},
    {ids::kShadeTags, PO_SHADE_TAGS},         {ids::kShadeSelection, PO_SHADE_SELECTION},
};

struct MarginField {
  int id;
  std::int32_t PageSetup::*margin;
  const char* name;
};
constexpr MarginField kMarginFields[] = {
    {ids::kTop, &PageSetup::MarginTop, "Page top margin"},
    {ids::kLeft, &PageSetup::MarginLeft, "Page left margin"},
    {ids::kRight, &PageSetup::MarginRight, "Page right margin"},
    {ids::kBottom, &PageSetup::MarginBottom, "Page bottom margin"},
};

class PageSetupDialog : public Dialog {
 public:
  PageSetupDialog(const PageSetup& setup, const ProfilePlace& place)
      : Dialog(ids::kTemplate, {ids::kHelp, kHelpPageSetup}),
        setup_(setup),
        place_(place),
        locale_(ReadLocaleSettings()),
        unit_(locale_.MeasureInches != 0 ? kInches : kCentimetres) {}
  [[nodiscard]] const PageSetup& Setup() const { return setup_; }

 protected:
  bool Start() override {
    SetDlgItemTextA(Window(), ids::kMargins, unit_.caption);
    for (const OptionBox& box : kOptionBoxes) {
      const bool ticked = (setup_.PrintOptions & box.option) != 0;
      CheckDlgButton(Window(), box.id, ticked ? BST_CHECKED : BST_UNCHECKED);
    }
    for (const MarginField& field : kMarginFields) {
      char text[kFixedPointBytes];
      FormatFixedPoint(text, locale_.DecimalSeparator, unit_.decimals, unit_.Shown(setup_.*field.margin));
      SetDlgItemTextA(Window(), field.id, text);
    }
    if (place_.ProfileReadOnly != 0) EnableWindow(Control(ids::kSave), FALSE);
    return true;
  }

  void Accept() override {
    if (Read()) End(1);
  }

  void Act(int control, UINT /*notification*/) override {
    if (control == ids::kShades) RunPrintShades(Window(), place_);
    if (control == ids::kSave && Read() && Save()) End(1);
  }

 private:
  // True when all fields are good; then the setup is what the controls say.
  bool Read() {
    PageSetup read;
    for (const MarginField& field : kMarginFields) {
      const std::string text = FieldText(Window(), field.id).substr(0, kFieldBytes - 1);
      if (!CheckField(Window(), field.id,
                      ValidateFixedField(text, 0, unit_.MarginLimit, unit_.decimals, locale_.DecimalSeparator,
                                         field.name))) {
        return false;
      }
      std::int32_t shown = 0;
      static_cast<void>(ParseFixedPoint(text, locale_.DecimalSeparator, unit_.decimals, shown));
      read.*field.margin = unit_.Stored(shown);
    }
    read.PrintOptions = 0;
    for (const OptionBox& box : kOptionBoxes) {
      if (IsDlgButtonChecked(Window(), box.id) == BST_CHECKED) read.PrintOptions |= box.option;
    }
    setup_ = read;
    return true;
  }

  bool Save() {
    return CheckSave(Window(), "page setup", "Page Setup Error", ProfileFullPath(place_),
                     SavePageSetup(place_.ProfilePath, "Page Setup", setup_));
  }

  PageSetup setup_;
  const ProfilePlace& place_;
  const LocaleSettings locale_;
  const MarginUnit& unit_;
};

}  // namespace

std::optional<PageSetup> RunPageSetup(HWND owner, const PageSetup& setup, const ProfilePlace& place) {
  PageSetupDialog dialog(setup, place);
  if (dialog.Run(owner) != 1) return std::nullopt;
  return dialog.Setup();
}
