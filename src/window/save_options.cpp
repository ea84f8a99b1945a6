#include "window/save_options.h"

#include "dialogs/dialog.h"
#include "resources/dialogs/save_options_dialog.h"
#include "settings/setups.h"
#include "window/main_window_state.h"

namespace {

struct GroupBox {
  int id;
  std::int32_t groups;
  UINT start;
};
constexpr GroupBox kGroupBoxes[] = {
    {save_options_dialog::kFormat, GROUP_FORMAT, BST_CHECKED},
    {save_options_dialog::kTitles, GROUP_TITLES, BST_CHECKED},
    {save_options_dialog::kColors, GROUP_COLORS | GROUP_SHADES, BST_CHECKED},
    {save_options_dialog::kPage, GROUP_PAGE, BST_INDETERMINATE},
    {save_options_dialog::kPrinter, GROUP_PRINTER, BST_INDETERMINATE},
};

class SaveOptionsDialog : public Dialog {
 public:
  SaveOptionsDialog()
      : Dialog(save_options_dialog::kTemplate, {save_options_dialog::kHelp, kHelpSaveOptions}) {}
  [[nodiscard]] const SaveChoice& Choice() const { return choice_; }

 protected:
  bool Start() override {
    for (const GroupBox& box : kGroupBoxes)
      CheckDlgButton(Window(), box.id, box.start);
    EnableSave();
    return true;
  }
  void Accept() override {
    choice_ = ReadBoxes();
    if (choice_.Any()) End(1);
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

  SaveChoice choice_;
};

}  // namespace

LRESULT SaveOptionsCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  SaveOptionsDialog dialog;
  if (dialog.Run(state.MainWindow) != 1) return 1;
  RECT window{};
  GetWindowRect(state.MainWindow, &window);
  SaveGroups(dialog.Choice(), &window, state.Titles, state);
  return 1;
}
