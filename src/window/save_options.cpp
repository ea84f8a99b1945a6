#include "window/save_options.h"

#include "platform/dialog.h"
#include "resources/dialogs/save_options_dialog.h"
#include "settings/setups.h"
#include "window/help.h"
#include "window/main_window_state.h"

namespace {

struct GroupBox {
  int id;
  std::int32_t groups;
  UINT start;
};
constexpr GroupBox kGroupBoxes[] = {
    {kSaveFormatBox, GROUP_FORMAT, BST_CHECKED},
    {kSaveTitlesBox, GROUP_TITLES, BST_CHECKED},
    {kSaveColorsBox, GROUP_COLORS | GROUP_SHADES, BST_CHECKED},
    {kSavePageBox, GROUP_PAGE, BST_INDETERMINATE},
    {kSavePrinterBox, GROUP_PRINTER, BST_INDETERMINATE},
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

void StartDialog(HWND dialog) {
  for (const GroupBox& box : kGroupBoxes)
    CheckDlgButton(dialog, box.id, box.start);
  EnableSave(dialog);
}

void PressControl(HWND dialog, int id) {
  switch (id) {
    case IDOK:
      if (ReadBoxes(dialog).Any()) {
        Chosen = ReadBoxes(dialog);
        EndDialog(dialog, 1);
      }
      break;
    case IDCANCEL:
      EndDialog(dialog, 0);
      break;
    case kSaveHelp:
      ShowHelp(kHelpSaveOptions);
      break;
    default:
      EnableSave(dialog);
      break;
  }
}

INT_PTR CALLBACK SaveOptionsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM /*lParam*/) {
  switch (message) {
    case WM_INITDIALOG:
      StartDialog(dialog);
      return TRUE;
    case WM_CLOSE:
      PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
      return TRUE;
    case WM_COMMAND:
      PressControl(dialog, LOWORD(wParam));
      return TRUE;
    default:
      return FALSE;
  }
}

}  // namespace

LRESULT SaveOptionsCommand(UINT /*id*/) {
  MainWindowState& state = MainState;
  if (RunDialog(kSaveOptionsDialog, state.MainWindow, SaveOptionsDlgProc, 0) != 1) return 1;
  RECT window{};
  GetWindowRect(state.MainWindow, &window);
  SaveGroups(Chosen, &window, state.Titles, state);
  return 1;
}
