#include "platform/qt/controls.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>

#include "platform/qt/input.h"
#include "platform/qt/program_dialog.h"
#include "platform/qt/queue.h"
#include "platform/qt/window.h"

namespace platform_qt {

namespace {

// Labels this high, in dialog units, hold more than one row.
constexpr int kTwoRows = 16;
constexpr int kVisibleRows = 12;

// Clear, ticked, gray, and clear again.
class ThreeState : public QCheckBox {
 public:
  using QCheckBox::QCheckBox;

 protected:
  void nextCheckState() override {
    setCheckState(checkState() == Qt::Unchecked ? Qt::Checked
                  : checkState() == Qt::Checked ? Qt::PartiallyChecked
                                                : Qt::Unchecked);
  }
};

// The user can move the caret in it, and so must see it.
class ReadOnlyEdit : public QLineEdit {
 public:
  explicit ReadOnlyEdit(QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    QPalette muted = palette();
    muted.setColor(QPalette::Base, muted.color(QPalette::Window));
    setPalette(muted);
    connect(this, &QLineEdit::cursorPositionChanged, this, [this] { update(); });
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QLineEdit::paintEvent(event);
    if (hasFocus()) {
      const QRect caret = cursorRect();
      QPainter(this).fillRect(caret.center().x(), caret.top() + 1, 1, caret.height() - 2,
                              palette().color(QPalette::Text));
    }
  }
};

class ListCombo : public QComboBox {
 public:
  ListCombo(QWidget* parent, Control& control) : QComboBox(parent), control_(control) {}

  void hidePopup() override {
    const bool open = view()->isVisible();
    QComboBox::hidePopup();
    if (open) {
      // The toolkit closes the list before it says which row was chosen.
      QMetaObject::invokeMethod(
          this, [this] { control_.dialog->Notify(control_.id, CBN_CLOSEUP, control_.handle); },
          Qt::QueuedConnection);
    }
  }

 private:
  Control& control_;
};

void TakeRow(Control& control, int row) {
  control.row = row;
  if (control.edit != nullptr) {
    SetTextOf(control, control.combo->itemText(row).toUtf8().constData());
    control.row = row;
    control.edit->selectAll();
  }
  control.dialog->Notify(control.id, CBN_SELCHANGE, control.handle);
}

// The toolkit's list must not go on from a row that is no longer chosen, when the user turns to the arrow
// keys. Taking its row away empties the field, so the text is put back.
void DropToolkitRow(Control& control) {
  if (control.combo == nullptr || control.combo->currentIndex() < 0) return;
  const QString text = control.edit->text();
  const int cursor = control.edit->cursorPosition();
  const QSignalBlocker comboBlocked(control.combo);
  const QSignalBlocker editBlocked(control.edit);
  control.combo->setCurrentIndex(-1);
  control.edit->setText(text);
  control.edit->setCursorPosition(cursor);
}

void TakeTyping(Control& control) {
  control.row = -1;
  DropToolkitRow(control);
  if (control.limit > 0) {
    control.edit->setMaxLength(std::max(control.limit, static_cast<int>(control.edit->text().size())));
  }
  control.dialog->Notify(control.id, control.combo != nullptr ? CBN_EDITCHANGE : EN_CHANGE, control.handle);
}

void BuildLabel(Control& control, const ControlTemplate& description) {
  auto* const label = new QLabel(control.dialog);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(description.height >= kTwoRows);
  // A row is as high as its place in larger units; its text stands level with the field beside it.
  label->setAlignment(Qt::AlignLeft | (label->wordWrap() ? Qt::AlignTop : Qt::AlignVCenter));
  // A label marks its mnemonic only when it has somebody to lead to; who that is, the dialog decides.
  label->setBuddy(control.dialog);
  label->setText(QString::fromUtf8(description.text));
  control.label = label;
  control.widget = label;
}

void BuildButton(Control& control, QAbstractButton* button, const ControlTemplate& description) {
  button->setText(QString::fromUtf8(description.text));
  QObject::connect(button, &QAbstractButton::clicked, button,
                   [&control] { control.dialog->Notify(control.id, BN_CLICKED, control.handle); });
  control.button = button;
  control.widget = button;
}

void BuildEdit(Control& control, const ControlTemplate& description) {
  control.edit = control.kind == ControlKind::readOnlyEdit ? new ReadOnlyEdit(control.dialog)
                                                           : new QLineEdit(control.dialog);
  control.widget = control.edit;
  SetTextOf(control, description.text);
}

void BuildCombo(Control& control) {
  auto* const combo = new ListCombo(control.dialog, control);
  combo->setMaxVisibleItems(kVisibleRows);
  control.combo = combo;
  control.widget = combo;
  if (control.kind == ControlKind::comboBox) {
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setCompleter(nullptr);
    control.edit = combo->lineEdit();
    // The toolkit would take typed text that is like a row for a choice of that row.
    QObject::disconnect(control.edit, &QLineEdit::editingFinished, combo, nullptr);
  }
  QObject::connect(combo, &QComboBox::activated, combo, [&control](int row) { TakeRow(control, row); });
}

bool IsHeldKind(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return true;
    default:
      return false;
  }
}

}  // namespace

void BuildWidget(Control& control, const ControlTemplate& description) {
  ProgramDialog* const dialog = control.dialog;
  switch (control.kind) {
    case ControlKind::label:
    case ControlKind::icon:
      BuildLabel(control, description);
      if (control.kind == ControlKind::icon) {
        control.label->clear();
      }
      break;
    case ControlKind::edit:
    case ControlKind::readOnlyEdit:
      BuildEdit(control, description);
      break;
    case ControlKind::button:
    case ControlKind::defaultButton: {
      auto* const button = new QPushButton(dialog);
      button->setAutoDefault(false);  // the dialog says which one Enter presses
      BuildButton(control, button, description);
      break;
    }
    case ControlKind::checkBox:
      BuildButton(control, new QCheckBox(dialog), description);
      break;
    case ControlKind::threeState: {
      auto* const box = new ThreeState(dialog);
      box->setTristate(true);
      BuildButton(control, box, description);
      break;
    }
    case ControlKind::radio:
      BuildButton(control, new QRadioButton(dialog), description);
      break;
    case ControlKind::comboBox:
    case ControlKind::dropDownList:
      BuildCombo(control);
      break;
    case ControlKind::ownerDrawn:
      BuildButton(control, MakeOwnerDrawn(dialog, control.handle), description);
      break;
  }
  // What the user types changes the text in a way that no call of the program does.
  if (control.edit != nullptr) {
    QObject::connect(control.edit, &QLineEdit::textEdited, control.edit, [&control] { TakeTyping(control); });
  }
  if ((description.style & kNoTabStop) != 0) {
    control.widget->setFocusPolicy(Qt::ClickFocus);
  }
  control.widget->setEnabled((description.style & kDisabled) == 0);
  control.handle->widget = control.widget;
}

std::string TextOf(const Control& control) {
  if (control.edit != nullptr) {
    return control.edit->text().toStdString();
  }
  if (control.combo != nullptr) {
    return control.combo->currentText().toStdString();
  }
  if (control.button != nullptr) {
    return control.button->text().toStdString();
  }
  return control.label->text().toStdString();
}

void SetTextOf(Control& control, const char* text) {
  const QString shown = QString::fromUtf8(text);
  if (control.edit != nullptr) {
    // The limit is one of typing.
    if (control.limit > 0) {
      control.edit->setMaxLength(std::max(control.limit, static_cast<int>(shown.size())));
    }
    control.edit->setText(shown);
    control.edit->home(false);
    control.row = -1;
  } else if (control.button != nullptr) {
    control.button->setText(shown);
  } else if (control.label != nullptr) {
    control.label->setText(shown);
  }
}

bool HoldInput(Control& control, const QEvent& event) {
  const bool subclassed = control.handle->windowClass.procedure != ControlProcedure;
  if (!IsHeldKind(event.type()) || control.current == &event || (!subclassed && control.held.empty())) {
    return false;
  }
  const auto& input = static_cast<const QInputEvent&>(event);
  const LPARAM number = ++control.lastHeld;
  control.held.emplace(number, event.clone());
  AppendInput(control.handle, kHeldInput, 0, number, ModifiersOf(input.modifiers()));
  return true;
}

LRESULT DeliverHeld(HWND window, LPARAM number) {
  Control& control = *window->control;
  auto entry = control.held.extract(number);
  if (entry.empty()) {
    return 0;
  }
  QEvent& event = *entry.mapped();
  control.current = &event;
  LRESULT result = 0;
  if (event.type() == QEvent::MouseButtonPress &&
      static_cast<const QMouseEvent&>(event).button() == Qt::LeftButton) {
    const QPointF place = static_cast<const QMouseEvent&>(event).position();
    const QPoint pixel = (place * window->widget->devicePixelRatioF()).toPoint();
    result = SendMessageA(window, WM_LBUTTONDOWN, 0x0001,
                          MAKELPARAM(static_cast<UINT>(pixel.x()), static_cast<UINT>(pixel.y())));
  } else if (event.type() == QEvent::KeyPress) {
    const int key = VirtualKeyOf(static_cast<const QKeyEvent&>(event));
    result = SendMessageA(window, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
  } else {
    QCoreApplication::sendEvent(control.widget, &event);
  }
  control.current = nullptr;
  return result;
}

}  // namespace platform_qt
