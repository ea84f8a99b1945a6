#include "dialogs/save_setup.h"

#include <vector>

#include "dialogs/dialog.h"
#include "dialogs/fields.h"
#include "dialogs/group_boxes.h"
#include "dialogs/save_error.h"
#include "resources/dialogs/save_setup_dialog.h"
#include "settings/profile.h"
#include "setups/setup_list.h"

namespace {

namespace ids = save_setup_dialog;

using SaveSetup = std::function<FileError(const std::string& section, std::int32_t groups)>;

class SaveSetupDialog : public Dialog {
 public:
  SaveSetupDialog(const ProfilePlace& place, const char* section, std::int32_t groups, const SaveSetup& save)
      : Dialog(ids::kTemplate),
        place_(place),
        section_(section),
        groups_(groups != 0 ? groups : GROUP_FORMAT | GROUP_TITLES),
        save_(save) {}

 protected:
  bool Start() override {
    const std::vector<std::string> names = SortedSetupNames(place_.ProfilePath);
    for (const std::string& name : names)
      Send(ids::kName, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    Send(ids::kName, CB_SETCURSEL, static_cast<WPARAM>(FindSetup(names, section_)));
    Send(ids::kName, CB_LIMITTEXT, kFieldChars);
    for (const GroupBox& box : kGroupBoxes)
      CheckDlgButton(Window(), box.id, (groups_ & box.groups) != 0 ? BST_CHECKED : BST_UNCHECKED);
    EnableSave();
    return true;
  }

  void Accept() override {
    const std::string name = FieldText(Window(), ids::kName);
    const FieldCheck check = CheckSetupName(name);
    if (!check.accepted) {
      MessageBeep(MB_ICONHAND);
      MessageBoxA(Window(), check.message.c_str(), "Quorl", MB_ICONHAND);
      SetFocus(Control(ids::kName));
      return;
    }
    const std::int32_t groups = ReadBoxes();
    if (groups == 0) return;
    const FileError error = save_(SetupSectionOf(name), groups);
    if (CheckSave(Window(), "setup", "Save Setup Error", ProfileFullPath(place_), error)) End(1);
  }

  void Act(int /*control*/, UINT /*notification*/) override { EnableSave(); }

 private:
  std::int32_t ReadBoxes() {
    std::int32_t groups = 0;
    for (const GroupBox& box : kGroupBoxes) {
      if (IsDlgButtonChecked(Window(), box.id) == BST_CHECKED) groups |= box.groups;
    }
    return groups;
  }

  void EnableSave() { EnableWindow(Control(IDOK), ReadBoxes() != 0 ? TRUE : FALSE); }

  const ProfilePlace& place_;
  const char* section_;
  std::int32_t groups_;
  const SaveSetup& save_;
};

}  // namespace

INT_PTR RunSaveSetup(HWND owner, const ProfilePlace& place, const char* section, std::int32_t groups,
                     const SaveSetup& save) {
  return SaveSetupDialog(place, section, groups, save).Run(owner);
}
