#include "window/save_options.h"

#include "resources/dialogs/save_options_dialog.h"
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

SaveChoice Chosen;  // of the dialog that has just ended

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

INT_PTR StartDialog(HWND dialog, LPARAM /*param*/) {
  for (const GroupBox& box : kGroupBoxes)
    CheckDlgButton(dialog, box.id, box.start);
  EnableSave(dialog);
  return TRUE;
}

void Act(HWND dialog, int control, UINT /*notification*/) {
  switch (control) {
    case IDOK:
      Chosen = ReadBoxes(dialog);
      if (Chosen.Any()) EndDialog(dialog, 1);
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
  MainWindowState& state = MainState;
  if (RunDialog(save_options_dialog::kTemplate, state.MainWindow, SaveOptionsDlgProc, 0) != 1) return 1;
  RECT window{};
  GetWindowRect(state.MainWindow, &window);
  SaveGroups(Chosen, &window, state.Titles, state);
  return 1;
}
