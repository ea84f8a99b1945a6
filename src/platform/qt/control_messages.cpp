#include <QButtonGroup>
#include <QCheckBox>
#include <QCoreApplication>
#include <algorithm>
#include <cassert>
#include <cstring>
#include <string>
#include <utility>

#include "platform/qt/cursor.h"
#include "platform/qt/program_dialog.h"
#include "platform/qt/unknown.h"
#include "platform/qt/window.h"

namespace platform_qt {

namespace {

constexpr int kAnyLength = 32767;  // what the toolkit and Win32 allow without a limit

// The program counts device pixels, a widget the toolkit's.
void TakeFont(Control& control, HFONT font) {
  constexpr double kPointsPerInch = 72;
  QFont description = font->description;
  const double pixels = description.pixelSize() / control.widget->devicePixelRatioF();
  description.setPointSizeF(pixels * kPointsPerInch / control.widget->logicalDpiY());
  control.widget->setFont(description);
}

LRESULT Selection(const QLineEdit& edit) {
  const int start = edit.hasSelectedText() ? edit.selectionStart() : edit.cursorPosition();
  const int end = edit.hasSelectedText() ? edit.selectionEnd() : start;
  return MAKELPARAM(static_cast<UINT>(start), static_cast<UINT>(end));
}

// `end` beyond the text, or -1: up to its end.
void Select(QLineEdit& edit, int start, int end) {
  const auto length = static_cast<int>(edit.text().size());
  const int last = end < 0 ? length : std::min(end, length);
  const int first = std::clamp(start, 0, last);
  if (first == last) {
    edit.setCursorPosition(first);
    edit.deselect();
  } else {
    edit.setSelection(first, last - first);
  }
}

void LimitText(Control& control, int limit) {
  control.limit = limit > 0 ? limit : 0;
  const auto present = static_cast<int>(control.edit->text().size());
  control.edit->setMaxLength(limit > 0 ? std::max(limit, present) : kAnyLength);
}

LRESULT AddRow(Control& control, const char* text) {
  QComboBox& combo = *control.combo;
  const int row = control.row;
  const std::string typed = TextOf(control);
  combo.addItem(QString::fromUtf8(text));
  // The toolkit chooses the first row that it gets.
  if (row < 0) {
    combo.setCurrentIndex(-1);
    if (control.edit != nullptr) {
      SetTextOf(control, typed.c_str());
    }
  }
  return combo.count() - 1;
}

LRESULT ChooseRow(Control& control, LPARAM row) {
  const bool exists = row >= 0 && row < control.combo->count();
  const int chosen = exists ? static_cast<int>(row) : -1;
  control.combo->setCurrentIndex(chosen);
  if (control.edit != nullptr) {
    SetTextOf(control, exists ? control.combo->itemText(chosen).toUtf8().constData() : "");
  }
  control.row = chosen;
  return exists ? row : CB_ERR;
}

LRESULT ShowIcon(Control& control, HICON icon) {
  const HICON former = std::exchange(control.icon, icon);
  if (icon == nullptr) {
    control.label->clear();
  } else {
    control.label->setAlignment(Qt::AlignCenter);
    control.label->setPixmap(icon->icon.pixmap(control.label->size(), control.label->devicePixelRatioF()));
  }
  return reinterpret_cast<LRESULT>(former);
}

LRESULT EditMessage(Control& control, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case EM_GETSEL:
      return Selection(*control.edit);
    case EM_SETSEL:
      Select(*control.edit, static_cast<int>(wParam), static_cast<int>(lParam));
      return 1;
    case CB_SETEDITSEL: {
      const auto end = static_cast<std::int16_t>(HIWORD(static_cast<ULONG_PTR>(lParam)));
      Select(*control.edit, LOWORD(static_cast<ULONG_PTR>(lParam)), end);
      return 1;
    }
    default:  // EM_LIMITTEXT, CB_LIMITTEXT
      LimitText(control, static_cast<int>(wParam));
      return 1;
  }
}

LRESULT ComboMessage(Control& control, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case CB_ADDSTRING:
      return AddRow(control, reinterpret_cast<const char*>(lParam));
    case CB_GETCURSEL:
      return control.row;
    default:  // CB_SETCURSEL; the number is a 32-bit one
      return ChooseRow(control, static_cast<int>(wParam));
  }
}

// The control acts on the input event that is being handed over.
void ActOnInput(Control& control) {
  if (control.current != nullptr) {
    QCoreApplication::sendEvent(control.widget, control.current);
  }
}

}  // namespace

LRESULT CALLBACK ControlProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  Control& control = *window->control;
  switch (message) {
    case WM_PAINT:
      DrawItem(control);
      return 0;
    case WM_SETFONT:
      TakeFont(control, reinterpret_cast<HFONT>(wParam));
      return 0;
    case WM_LBUTTONDOWN:
    case WM_KEYDOWN:
      ActOnInput(control);
      return 0;
    case EM_GETSEL:
    case EM_SETSEL:
    case EM_LIMITTEXT:
    case CB_LIMITTEXT:
    case CB_SETEDITSEL:
      if (control.edit != nullptr) {
        return EditMessage(control, message, wParam, lParam);
      }
      break;
    case CB_ADDSTRING:
    case CB_GETCURSEL:
    case CB_SETCURSEL:
      if (control.combo != nullptr) {
        return ComboMessage(control, message, wParam, lParam);
      }
      break;
    case STM_SETICON:
      if (control.kind == ControlKind::icon) {
        return ShowIcon(control, reinterpret_cast<HICON>(wParam));
      }
      break;
    default:
      break;
  }
  ReportUnknown("control message", message);
  return 0;
}

namespace {

Control* ControlIn(HWND dialog, int id) {
  return IsWindowAlive(dialog) && dialog->dialog != nullptr ? dialog->dialog->Find(id) : nullptr;
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
  Control* const control = ControlIn(dialog, id);
  return control != nullptr ? control->handle : nullptr;
}

HWND GetParent(HWND window) {
  return IsWindowAlive(window) && window->control != nullptr ? window->control->dialog->Handle() : nullptr;
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

BOOL EnableWindow(HWND window, BOOL enable) {
  if (!IsWindowAlive(window)) {
    return FALSE;
  }
  QWidget* const widget = IsMainWindow(window) ? window->frame : window->widget;
  const bool wasEnabled = widget->isEnabledTo(widget->parentWidget());
  widget->setEnabled(enable != FALSE);
  return wasEnabled ? FALSE : TRUE;
}

LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value) {
  if (index != GWLP_WNDPROC && index != DWLP_USER) {
    ReportUnknown("SetWindowLongPtrA", static_cast<std::uint64_t>(index));
    return 0;
  }
  if (!IsWindowAlive(window)) {
    return 0;
  }
  if (index == DWLP_USER) {
    return std::exchange(window->userData, value);
  }
  const WNDPROC former = std::exchange(window->windowClass.procedure, reinterpret_cast<WNDPROC>(value));
  return reinterpret_cast<LONG_PTR>(former);
}

LONG_PTR GetWindowLongPtrA(HWND window, int index) {
  if (index != DWLP_USER) {
    ReportUnknown("GetWindowLongPtrA", static_cast<std::uint64_t>(index));
    return 0;
  }
  return IsWindowAlive(window) ? window->userData : 0;
}

LRESULT CallWindowProcA(WNDPROC former, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return former(window, message, wParam, lParam);
}
