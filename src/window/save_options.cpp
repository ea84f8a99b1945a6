#include "window/save_options.h"

#include "resources/dialogs/save_options_dialog.h"
#include "settings/profile.h"
#include "settings/setups.h"
#include "window/dialog_routing.h"
#include "window/help.h"
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

SaveChoice ReadBoxes(HWND dialog) {
  SaveChoice choice;
  for (const GroupBox& box : kGroupBoxes) {
    const UINT state = IsDlgButtonChecked(dialog, box.id);
    if (state == BST_CHECKED) choice.save |= box.groups;
    if (state == BST_UNCHECKED) choice.reset |= box.groups;
  }
  return choice;
}

void EnableSave(HWND dialog) {
  EnableWindow(GetDlgItem(dialog, IDOK), ReadBoxes(dialog).Any() ? TRUE : FALSE);
}

// False when there is nothing to save, or when it failed, after the user has been told.
bool Save(HWND dialog) {
  const MainWindowState& state = MainState;
  const SaveChoice choice = ReadBoxes(dialog);
  if (!choice.Any()) return false;
  RECT window{};
  GetWindowRect(state.MainWindow, &window);
  const FileError error = SaveGroups(choice, &window, state.Titles, state);
  if (error == 0) return true;
  const std::string text =
      "Cannot save the options in\n" + ProfileFullPath(state) + "\n" + FileErrorText(error) + ".";
  MessageBeep(MB_ICONHAND);
  MessageBoxA(dialog, text.c_str(), "Save Options Error", MB_ICONHAND);
  return false;
}

INT_PTR StartDialog(HWND dialog, LPARAM /*param*/) {
  for (const GroupBox& box : kGroupBoxes)
    CheckDlgButton(dialog, box.id, box.start);
  EnableSave(dialog);
  return TRUE;
}

void Act(HWND dialog, int control, UINT /*notification*/) {
  switch (control) {
    case IDOK:
      if (Save(dialog)) EndDialog(dialog, 1);
      break;
    case IDCANCEL:
      EndDialog(dialog, 0);
      break;
    case save_options_dialog::kHelp:
      ShowHelp(kHelpSaveOptions);
      break;
    default:
      EnableSave(dialog);
      break;
  }
}

INT_PTR CALLBACK SaveOptionsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  return RouteDialog({StartDialog, Act}, dialog, message, wParam, lParam);
}

}  // namespace

LRESULT SaveOptionsCommand(UINT /*id*/) {
  RunDialog(save_options_dialog::kTemplate, MainState.MainWindow, SaveOptionsDlgProc, 0);
  return 1;
}
