#include "platform/qt/controls/control_messages.h"

#include <QCoreApplication>
#include <algorithm>
#include <string>
#include <utility>

#include "platform/qt/base/unknown.h"
#include "platform/qt/controls/controls.h"
#include "platform/qt/controls/owner_drawn.h"
#include "platform/qt/drawing/gdi_objects.h"
#include "platform/qt/windows/cursor.h"

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
  if (control.list != nullptr) {
    control.list->addItem(QString::fromUtf8(text));
    return control.list->count() - 1;
  }
  QComboBox& combo = *control.combo;
  const int row = control.row;
  const std::string typed = control.Text();
  combo.addItem(QString::fromUtf8(text));
  // The toolkit chooses the first row that it gets.
  if (row < 0) {
    combo.setCurrentIndex(-1);
    if (control.edit != nullptr) {
      control.SetText(typed.c_str());
    }
  }
  return combo.count() - 1;
}

LRESULT ChosenRow(const QListWidget& list) {
  const QModelIndexList chosen = list.selectionModel()->selectedRows();
  return chosen.isEmpty() ? LB_ERR : chosen.front().row();
}

LRESULT ChooseRow(QListWidget& list, int row) {
  list.clearSelection();
  if (row < 0 || row >= list.count()) {
    return LB_ERR;
  }
  list.setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
  return row;
}

LRESULT ChooseRow(Control& control, LPARAM row) {
  if (control.list != nullptr) {
    const QSignalBlocker quiet(control.list);
    const LRESULT chosen = ChooseRow(*control.list, static_cast<int>(row));
    const QListWidgetItem* const item = control.list->item(static_cast<int>(chosen));
    control.SetText(item != nullptr ? item->text().toUtf8().constData() : "");
    control.row = static_cast<int>(chosen);
    return chosen;
  }
  const bool exists = row >= 0 && row < control.combo->count();
  const int chosen = exists ? static_cast<int>(row) : -1;
  control.combo->setCurrentIndex(chosen);
  if (control.edit != nullptr) {
    control.SetText(exists ? control.combo->itemText(chosen).toUtf8().constData() : "");
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

LRESULT DeleteRow(QListWidget& list, int row) {
  if (row < 0 || row >= list.count()) {
    return LB_ERR;
  }
  const LRESULT chosen = ChosenRow(list);
  delete list.takeItem(row);
  // The toolkit goes on to a neighbour of a chosen row that is taken away.
  if (chosen == row) {
    list.clearSelection();
  }
  return list.count();
}

LRESULT ListMessage(QListWidget& list, UINT message, WPARAM wParam, LPARAM lParam) {
  const QSignalBlocker quiet(list);
  switch (message) {
    case LB_ADDSTRING:
      list.addItem(QString::fromUtf8(reinterpret_cast<const char*>(lParam)));
      return list.count() - 1;
    case LB_DELETESTRING:
      return DeleteRow(list, static_cast<int>(wParam));
    case LB_GETCURSEL:
      return ChosenRow(list);
    default:  // LB_SETCURSEL; the number is a 32-bit one
      return ChooseRow(list, static_cast<int>(wParam));
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
  Control& control = *static_cast<Control*>(window);
  switch (message) {
    case WM_PAINT:
      DrawItem(&control, control.id, control.host.Handle(), control.host.ItemFont());
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
      if (control.IsCombo()) {
        return ComboMessage(control, message, wParam, lParam);
      }
      break;
    case LB_ADDSTRING:
    case LB_DELETESTRING:
    case LB_SETCURSEL:
    case LB_GETCURSEL:
      if (control.kind == ControlKind::listBox) {
        return ListMessage(*control.list, message, wParam, lParam);
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

}  // namespace platform_qt
