#include "dialogs/load_setup.h"

#include <vector>

#include "dialogs/dialog.h"
#include "dialogs/save_error.h"
#include "resources/dialogs/load_setup_dialog.h"
#include "settings/command_line.h"
#include "settings/profile.h"
#include "settings/profile_values.h"
#include "setups/setup_list.h"

namespace {

namespace ids = load_setup_dialog;

class LoadSetupDialog : public Dialog {
 public:
  LoadSetupDialog(const ProfilePlace& place, std::string& section)
      : Dialog(ids::kTemplate),
        place_(place),
        section_(section),
        names_(SortedSetupNames(place.ProfilePath)) {}
  [[nodiscard]] const std::string& Chosen() const { return chosen_; }

 protected:
  bool Start() override {
    for (const std::string& name : names_)
      Send(ids::kNames, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    Send(ids::kNames, LB_SETCURSEL, static_cast<WPARAM>(FindSetup(names_, section_)));
    EnableRemove();
    return true;
  }

  void Accept() override {
    const std::string* const name = Name();
    if (name == nullptr) {
      MessageBeep(MB_ICONASTERISK);
      return;
    }
    chosen_ = SetupSectionOf(*name);
    if (chosen_.size() >= kSetupSectionBytes) {
      MessageBeep(MB_ICONHAND);
      MessageBoxA(Window(), "Selected name too long.", "Quorl", MB_ICONHAND);
      MessageBeep(MB_ICONASTERISK);
    } else if (SetupExists(place_.ProfilePath, chosen_.c_str()) || LoadsNothing(*name)) {
      End(1);
    }
  }

  void Act(int control, UINT notification) override {
    if (control == ids::kRemove) Remove();
    if (control == ids::kNames && notification == LBN_DBLCLK) Accept();
    EnableRemove();
  }

 private:
  [[nodiscard]] const std::string* Name() const {
    const LRESULT row = Send(ids::kNames, LB_GETCURSEL);
    return row == LB_ERR ? nullptr : &names_[static_cast<std::size_t>(row)];
  }

  bool Ask(const std::string& question) {
    return MessageBoxA(Window(), question.c_str(), "Quorl",
                       MB_OKCANCEL | MB_ICONEXCLAMATION | MB_DEFBUTTON2) == IDOK;
  }

  // A hand may have taken the setup's section out of the profile.
  bool LoadsNothing(const std::string& name) {
    return Ask("The profile holds no options for the setup \"" + name +
               "\".\nLoading it sets nearly all options to their defaults.");
  }

  void Remove() {
    const std::string* const name = Name();
    if (name == nullptr || !Ask("Remove the setup \"" + *name + "\" from the profile?")) return;
    const FileError error = RemoveSetup(place_.ProfilePath, *name);
    if (!CheckSave(Window(), "list of setups", "Load Setup Error", ProfileFullPath(place_), error)) return;
    if (SameProfileName(SetupSectionOf(*name), section_)) section_.clear();
    const LRESULT row = Send(ids::kNames, LB_GETCURSEL);
    names_.erase(names_.begin() + row);
    Send(ids::kNames, LB_DELETESTRING, static_cast<WPARAM>(row));
    SetFocus(Control(ids::kNames));
  }

  void EnableRemove() {
    const bool can = place_.ProfileReadOnly == 0 && Name() != nullptr;
    EnableWindow(Control(ids::kRemove), can ? TRUE : FALSE);
  }

  const ProfilePlace& place_;
  std::string& section_;
  std::vector<std::string> names_;
  std::string chosen_;
};

}  // namespace

std::optional<std::string> RunLoadSetup(HWND owner, const ProfilePlace& place, std::string& section) {
  LoadSetupDialog dialog(place, section);
  if (dialog.Run(owner) != 1) return std::nullopt;
  return dialog.Chosen();
}
