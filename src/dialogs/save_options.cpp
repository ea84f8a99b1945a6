#include "dialogs/save_options.h"

#include "dialogs/dialog.h"
#include "dialogs/group_boxes.h"
#include "dialogs/save_error.h"
#include "resources/dialogs/save_options_dialog.h"

namespace {

namespace ids = save_options_dialog;

// What concerns pages and printers stays as it is, unless the user says otherwise.
constexpr std::int32_t kKeptAtFirst = GROUP_PAGE | GROUP_PRINTER;

class SaveOptionsDialog : public Dialog {
 public:
  SaveOptionsDialog(const std::string& profile, const std::function<FileError(const SaveChoice&)>& save)
      : Dialog(ids::kTemplate, {ids::kHelp, kHelpSaveOptions}), profile_(profile), save_(save) {}

 protected:
  bool Start() override {
    for (const GroupBox& box : kGroupBoxes)
      CheckDlgButton(Window(), box.id, (box.groups & kKeptAtFirst) != 0 ? BST_INDETERMINATE : BST_CHECKED);
    EnableSave();
    return true;
  }

  void Accept() override {
    const SaveChoice choice = ReadBoxes();
    if (!choice.Any()) return;
    if (CheckSave(Window(), "options", "Save Options Error", profile_, save_(choice))) End(1);
  }

  void Act(int /*control*/, UINT /*notification*/) override { EnableSave(); }

 private:
  SaveChoice ReadBoxes() {
    SaveChoice choice;
    for (const GroupBox& box : kGroupBoxes) {
      const UINT state = IsDlgButtonChecked(Window(), box.id);
      if (state == BST_CHECKED) choice.save |= box.groups;
      if (state == BST_UNCHECKED) choice.reset |= box.groups;
    }
    return choice;
  }

  void EnableSave() { EnableWindow(Control(IDOK), ReadBoxes().Any() ? TRUE : FALSE); }

  const std::string& profile_;
  const std::function<FileError(const SaveChoice&)>& save_;
};

}  // namespace

INT_PTR RunSaveOptions(HWND owner, const std::string& profile,
                       const std::function<FileError(const SaveChoice&)>& save) {
  return SaveOptionsDialog(profile, save).Run(owner);
}
