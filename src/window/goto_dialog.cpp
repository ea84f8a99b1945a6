#include "window/goto_dialog.h"

#include "resources/dialogs/goto_dialog.h"
#include "search/goto_logic.h"
#include "window/dialog_routing.h"
#include "window/field_boxes.h"
#include "window/main_window_state.h"
#include "window/page_indexing.h"
#include "window/private_messages.h"
#include "window/view_loading.h"

namespace {

// The one dialog that is open, or was last.
struct {
  GoToLimits limits;
  GoToAnswer answer;
} current;

GoToChoice ChoiceOf(int radio) {
  return static_cast<GoToChoice>(radio - goto_dialog::kTop + 1);
}

GoToChoice ChosenRadio(HWND dialog) {
  for (int radio = goto_dialog::kTop; radio <= goto_dialog::kPageNumber; ++radio) {
    if (IsDlgButtonChecked(dialog, radio) == BST_CHECKED) return ChoiceOf(radio);
  }
  return GoToChoice::none;
}

// Shows what goes with a choice. An enabled field is where the user goes on.
void ShowField(HWND dialog, GoToChoice choice) {
  const GoToField field = GoToFieldOf(choice, current.limits);
  const HWND edit = GetDlgItem(dialog, goto_dialog::kNumber);
  SetDlgItemTextA(dialog, goto_dialog::kRange, field.range.c_str());
  SetDlgItemTextA(dialog, goto_dialog::kNumber, field.text.c_str());
  EnableWindow(edit, field.enabled ? TRUE : FALSE);
  if (!field.enabled) return;
  SetFocus(edit);
  SendDlgItemMessageA(dialog, goto_dialog::kNumber, EM_SETSEL, 0, -1);
}

INT_PTR StartGoTo(HWND dialog, LPARAM param) {
  current.limits = *reinterpret_cast<const GoToLimits*>(param);
  CheckRadioButton(dialog, goto_dialog::kTop, goto_dialog::kPageNumber, goto_dialog::kTop);
  SendDlgItemMessageA(dialog, goto_dialog::kNumber, EM_LIMITTEXT, kGoToFieldChars, 0);
  ShowField(dialog, GoToChoice::top);
  SetFocus(GetDlgItem(dialog, goto_dialog::kTop));
  if (!GoToOffersPages(current.limits)) {
    EnableWindow(GetDlgItem(dialog, goto_dialog::kPageNumber), FALSE);
  }
  return FALSE;
}

void FinishGoTo(HWND dialog) {
  const GoToChoice choice = ChosenRadio(dialog);
  const std::string text = FieldText(dialog, goto_dialog::kNumber);
  if (!CheckField(dialog, goto_dialog::kNumber, GoToValidate(choice, text, current.limits))) {
    MessageBeep(MB_ICONASTERISK);
    return;
  }
  current.answer = GoToRead(choice, text);
  EndDialog(dialog, 1);
}

void Act(HWND dialog, int control, UINT /*notification*/) {
  switch (control) {
    case goto_dialog::kTop:
    case goto_dialog::kBottom:
    case goto_dialog::kBytePosition:
    case goto_dialog::kPageNumber:
      ShowField(dialog, ChoiceOf(control));
      break;
    case IDOK:
      FinishGoTo(dialog);
      break;
    case IDCANCEL:
      EndDialog(dialog, 0);
      break;
    default:
      break;
  }
}

void GoToPage(FilePos page) {
  const HWND window = MainState.MainWindow;
  const FilePos place = FindPage(page);
  if (place == kPageStopped) return;
  if (place >= 0) {
    PostMessageA(window, WM_VIEW_MOVE, 0, place);
    return;
  }
  MessageBeep(MB_ICONEXCLAMATION);
  MessageBoxA(window, kInvalidPageText, kInvalidPageCaption, MB_ICONEXCLAMATION);
}

void GoTo(const GoToTarget& target) {
  const HWND window = MainState.MainWindow;
  switch (target.move) {
    case GoToMove::top:
      PostMessageA(window, WM_VSCROLL, SB_TOP, 0);
      break;
    case GoToMove::bottom:
      PostMessageA(window, WM_VSCROLL, SB_BOTTOM, 0);
      break;
    case GoToMove::load:
      SendMessageA(window, WM_VIEW_GOTO, 0, target.position);
      break;
    case GoToMove::page:
      GoToPage(target.page);
      break;
    case GoToMove::none:
      break;
  }
}

INT_PTR CALLBACK GoToDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  return RouteDialog({StartGoTo, Act}, dialog, message, wParam, lParam);
}

}  // namespace

LRESULT GoToCommand(UINT /*id*/) {
  const MainWindowState& state = MainState;
  // The numbers offered are those of the file as it is now.
  if (!AskFileLength()) return 0;
  const PageIndexPages pages = PagesToGoTo();
  const GoToLimits limits{state.File.Flen, pages.count, pages.more};
  const INT_PTR result =
      RunDialog(goto_dialog::kTemplate, state.MainWindow, GoToDlgProc, reinterpret_cast<LPARAM>(&limits));
  // The file may have been closed from outside while the dialog was open.
  if (result != 1 || !FileIsOpen()) return result;
  GoTo(GoToTargetOf(current.answer, state.File.Flen));
  return result;
}
