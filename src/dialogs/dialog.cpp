#include "dialogs/dialog.h"

INT_PTR Dialog::Run(HWND owner) {
  return RunDialog(template_, owner, Procedure, reinterpret_cast<LPARAM>(this));
}

void Dialog::Act(int /*control*/, UINT /*notification*/) {}

bool Dialog::Handle(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) {
  return false;
}

void Dialog::End(INT_PTR result) {
  EndDialog(window_, result);
}

LRESULT Dialog::Send(int id, UINT message, WPARAM wParam, LPARAM lParam) const {
  return SendDlgItemMessageA(window_, id, message, wParam, lParam);
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    auto* const dialog = reinterpret_cast<Dialog*>(lParam);
    SetWindowLongPtrA(window, DWLP_USER, lParam);
    dialog->window_ = window;
    return dialog->Start() ? TRUE : FALSE;
  }
  auto* const dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrA(window, DWLP_USER));
  return dialog != nullptr && dialog->Route(message, wParam, lParam) ? TRUE : FALSE;
}

bool Dialog::Route(UINT message, WPARAM wParam, LPARAM lParam) {
  if (Handle(message, wParam, lParam)) return true;
  if (message == WM_CLOSE) {
    PostMessageA(window_, WM_COMMAND, IDCANCEL, 0);
  } else if (message == WM_HELP) {
    ShowHelp(help_.context);
  } else if (message == WM_COMMAND) {
    Command(LOWORD(wParam), HIWORD(wParam));
  } else {
    return false;
  }
  return true;
}

void Dialog::Command(int control, UINT notification) {
  if (control == IDOK) {
    Accept();
  } else if (control == IDCANCEL) {
    End(0);
  } else if (control == help_.button) {
    ShowHelp(help_.context);
  } else {
    Act(control, notification);
  }
}
