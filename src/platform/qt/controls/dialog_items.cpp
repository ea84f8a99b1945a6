// The program's operations on the controls of a dialog, by their ids.
#include <QButtonGroup>
#include <QCheckBox>
#include <cassert>
#include <string>

#include "platform/qt/base/unknown.h"
#include "platform/qt/controls/program_dialog.h"

namespace platform_qt {

namespace {

Control* ControlIn(HWND dialog, int id) {
  ProgramDialog* const owner = ProgramDialogOf(dialog);
  return owner != nullptr ? owner->Find(id) : nullptr;
}

QAbstractButton* ButtonIn(HWND dialog, int id) {
  Control* const control = ControlIn(dialog, id);
  return control != nullptr ? control->button : nullptr;
}

Qt::CheckState StateOf(UINT state) {
  switch (state) {
    case BST_UNCHECKED:
      return Qt::Unchecked;
    case BST_CHECKED:
      return Qt::Checked;
    case BST_INDETERMINATE:
      return Qt::PartiallyChecked;
    default:
      ReportUnknown("CheckDlgButton", state);
      return Qt::Unchecked;
  }
}

// Ticking a radio button clears the others of its group; a group may also have none.
void CheckRadio(QAbstractButton& button, bool checked) {
  QButtonGroup* const group = button.group();
  if (group != nullptr && button.isChecked() && !checked) {
    group->setExclusive(false);
    button.setChecked(false);
    group->setExclusive(true);
  } else {
    button.setChecked(checked);
  }
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

HWND GetDlgItem(HWND dialog, int id) {
  return ControlIn(dialog, id);
}

HWND GetParent(HWND window) {
  const auto* const control = IsWindowAlive(window) ? dynamic_cast<const Control*>(window) : nullptr;
  return control != nullptr ? control->host.Handle() : nullptr;
}

BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text) {
  return SetWindowTextA(GetDlgItem(dialog, id), text);
}

UINT GetDlgItemTextA(HWND dialog, int id, LPSTR text, int size) {
  if (size > 0) {
    text[0] = '\0';
  }
  return static_cast<UINT>(GetWindowTextA(GetDlgItem(dialog, id), text, size));
}

BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned) {
  const std::string text =
      isSigned != FALSE ? std::to_string(static_cast<int>(value)) : std::to_string(value);
  return SetDlgItemTextA(dialog, id, text.c_str());
}

LRESULT SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam) {
  return SendMessageA(GetDlgItem(dialog, id), message, wParam, lParam);
}

BOOL CheckDlgButton(HWND dialog, int id, UINT state) {
  QAbstractButton* const button = ButtonIn(dialog, id);
  if (button == nullptr) {
    return FALSE;
  }
  if (auto* const box = qobject_cast<QCheckBox*>(button)) {
    assert((state != BST_INDETERMINATE || box->isTristate()) && "a box of two states");
    box->setCheckState(StateOf(state));
  } else {
    CheckRadio(*button, state == BST_CHECKED);
  }
  return TRUE;
}

UINT IsDlgButtonChecked(HWND dialog, int id) {
  const QAbstractButton* const button = ButtonIn(dialog, id);
  if (button == nullptr) {
    return BST_UNCHECKED;
  }
  const auto* const box = qobject_cast<const QCheckBox*>(button);
  if (box != nullptr && box->checkState() == Qt::PartiallyChecked) {
    return BST_INDETERMINATE;
  }
  return button->isChecked() ? BST_CHECKED : BST_UNCHECKED;
}

BOOL CheckRadioButton(HWND dialog, int first, int last, int checked) {
  CheckDlgButton(dialog, checked, BST_CHECKED);
  for (int id = first; id <= last; ++id) {
    if (id != checked) {
      CheckDlgButton(dialog, id, BST_UNCHECKED);
    }
  }
  return TRUE;
}
