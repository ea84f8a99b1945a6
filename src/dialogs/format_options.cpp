#include "dialogs/format_options.h"

#include <algorithm>

#include "dialogs/colors.h"
#include "dialogs/dialog.h"
#include "dialogs/fields.h"
#include "dialogs/save_error.h"
#include "engine/text_format.h"
#include "platform/profile_batch.h"
#include "resources/dialogs/format_options_dialog.h"
#include "settings/colors.h"
#include "settings/format_edit.h"
#include "settings/label_text.h"
#include "settings/profile.h"
#include "settings/profile_values.h"

namespace {

namespace ids = format_options_dialog;

struct OptionBox {
  int id;
  ViewOptions option;
};
constexpr OptionBox kOptionBoxes[] = {{ids::kWrap, VO_WRAP},
                                      {ids::kBackground, VO_BACKGROUND},
                                      {ids::kExpandTabs, VO_EXPANDTABS},
                                      {ids::kFixedLength, VO_FIXEDLEN}};

constexpr std::size_t kProfileChars = 70;

// The states of a box for a bar are numbered as those of the bar.
static_assert(kBarNever == BST_UNCHECKED && kBarAlways == BST_CHECKED && kBarWhenNeeded == BST_INDETERMINATE);

class FormatOptionsDialog : public Dialog {
 public:
  FormatOptionsDialog(FormatOptions& options, const ProfilePlace& place, bool showProfile,
                      const FormatActions& actions)
      : Dialog(ids::kTemplate, {ids::kHelp, kHelpFormatOptions}),
        options_(options),
        edit_(options),
        place_(place),
        showProfile_(showProfile),
        actions_(actions) {}

 protected:
  bool Start() override {
    options_.FormatFlags = options_.StoredFlags[options_.FormatIndex];
    Fill(ids::kFormat, kFormatNames, options_.FormatIndex);
    const auto* const code = std::ranges::find(kCodeOrder, options_.CharCode);
    const char* names[kCodes];
    std::ranges::transform(kCodeOrder, names, [](std::int32_t one) { return kCodeNames[one]; });
    Fill(ids::kCode, names, static_cast<std::int32_t>(code - kCodeOrder));
    ShowWord();
    SetDlgItemInt(Window(), ids::kLineLength, static_cast<UINT>(options_.LineLength), TRUE);
    SetDlgItemInt(Window(), ids::kTabLength, static_cast<UINT>(TextTabLength), TRUE);
    CheckDlgButton(Window(), ids::kVertical, static_cast<UINT>(options_.VertScroll));
    CheckDlgButton(Window(), ids::kHorizontal, static_cast<UINT>(options_.HorzScroll));
    CheckDlgButton(Window(), ids::kSavePos, options_.SavePos != 0 ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(Window(), ids::kEscExit, options_.EscExit != 0 ? BST_CHECKED : BST_UNCHECKED);
    if (place_.ProfileReadOnly != 0) EnableWindow(Control(ids::kSave), FALSE);
    ShowFont();
    if (showProfile_) {
      const std::string path = ShortenInMiddle(ProfileFullPath(place_), kProfileChars);
      SetDlgItemTextA(Window(), ids::kProfile, LiteralLabel(path).c_str());
    }
    return true;
  }

  void Accept() override {
    if (!FieldsAreGood()) return;
    Read(options_);
    End(1);
  }

  void Act(int control, UINT notification) override {
    switch (control) {
      case ids::kFormat:
        if (notification == CBN_SELCHANGE) TurnToFormat();
        break;
      case ids::kSave:
        Save();
        break;
      case ids::kFont:
        if (actions_.chooseFont(Window()) == 0) MessageBeep(MB_ICONASTERISK);
        ShowFont();
        break;
      case ids::kColors:
        RunColorDialog(Window());
        break;
      default:
        break;
    }
  }

 private:
  template <std::size_t Count>
  void Fill(int list, const char* const (&names)[Count], std::int32_t chosen) {
    for (const char* name : names)
      Send(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
    Send(list, CB_SETCURSEL, static_cast<WPARAM>(chosen));
  }

  void ShowWord() {
    for (const OptionBox& box : kOptionBoxes) {
      const bool ticked = (edit_.Shown() & box.option) != 0;
      CheckDlgButton(Window(), box.id, ticked ? BST_CHECKED : BST_UNCHECKED);
    }
  }

  void ShowFont() {
    SetDlgItemTextA(Window(), ids::kFontInUse, LiteralLabel("Font: " + actions_.fontInUse()).c_str());
  }

  ViewOptions Ticked() {
    ViewOptions word = 0;
    for (const OptionBox& box : kOptionBoxes) {
      if (IsDlgButtonChecked(Window(), box.id) == BST_CHECKED) word |= box.option;
    }
    return word;
  }

  [[nodiscard]] std::int32_t Chosen(int list) const {
    return static_cast<std::int32_t>(Send(list, CB_GETCURSEL));
  }

  void TurnToFormat() {
    edit_.TurnTo(Chosen(ids::kFormat), Ticked());
    ShowWord();
  }

  bool FieldsAreGood() {
    const auto isNumber = [this](int field, std::int32_t low, std::int32_t high, const char* name) {
      return CheckField(Window(), field, ValidateIntField(FieldText(Window(), field), low, high, name));
    };
    const auto isChosen = [this](int list, const char* name) {
      return CheckField(Window(), list, ValidateChoice(Chosen(list), name));
    };
    return isNumber(ids::kLineLength, 4, 32767, "Line length") &&
           isNumber(ids::kTabLength, 1, 255, "Tab length") && isChosen(ids::kFormat, "format") &&
           isChosen(ids::kCode, "code");
  }

  [[nodiscard]] std::int32_t Number(int field) const { return LeadingNumber(FieldText(Window(), field)); }

  void Read(FormatOptions& options) {
    options.LineLength = Number(ids::kLineLength);
    TextTabLength = Number(ids::kTabLength);
    options.VertScroll = static_cast<std::int8_t>(IsDlgButtonChecked(Window(), ids::kVertical));
    options.HorzScroll = static_cast<std::int8_t>(IsDlgButtonChecked(Window(), ids::kHorizontal));
    options.EscExit = IsDlgButtonChecked(Window(), ids::kEscExit) == BST_CHECKED ? 1 : 0;
    options.SavePos = IsDlgButtonChecked(Window(), ids::kSavePos) == BST_CHECKED ? 1 : 0;
    edit_.Apply(Ticked(), kCodeOrder[Chosen(ids::kCode)], options);
  }

  void Save() {
    if (!FieldsAreGood()) return;
    const std::int32_t formerTabLength = TextTabLength;
    FormatOptions read = options_;
    Read(read);
    const RECT window = actions_.window();
    const char* const profile = place_.ProfilePath;
    const FileError error = SaveProfile(profile, [&] {
      // A save within a save has no result of its own.
      static_cast<void>(SaveFormat(profile, "Quorl", read, &window));
      static_cast<void>(SaveWindowColors(profile, "Quorl Colors"));
    });
    if (CheckSave(Window(), "options", "Display Formatting Error", ProfileFullPath(place_), error)) {
      options_ = read;
      End(1);
    } else {
      TextTabLength = formerTabLength;
    }
  }

  FormatOptions& options_;
  FormatEdit edit_;
  const ProfilePlace& place_;
  bool showProfile_;
  const FormatActions& actions_;
};

}  // namespace

INT_PTR RunFormatOptions(HWND owner, FormatOptions& options, const ProfilePlace& place, bool showProfile,
                         const FormatActions& actions) {
  return FormatOptionsDialog(options, place, showProfile, actions).Run(owner);
}
