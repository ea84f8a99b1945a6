#include "platform/qt/controls/controls.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>

#include "platform/qt/controls/owner_drawn.h"
#include "platform/qt/windows/keys.h"
#include "platform/qt/windows/queue.h"

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
          this, [this] { control_.host.Notify(control_.id, CBN_CLOSEUP, &control_); }, Qt::QueuedConnection);
    }
  }

 private:
  Control& control_;
};

void TakeRow(Control& control, int row) {
  control.row = row;
  if (control.edit != nullptr) {
    const QString text =
        control.list != nullptr ? control.list->item(row)->text() : control.combo->itemText(row);
    control.SetText(text.toUtf8().constData());
    control.row = row;
    control.edit->selectAll();
  }
  control.host.Notify(control.id, CBN_SELCHANGE, &control);
}

// The toolkit's list must not go on from a row that is no longer chosen, when the user turns to the arrow
// keys. Taking its row away empties the field, so the text is put back.
void DropToolkitRow(Control& control) {
  if (control.list != nullptr) {
    const QSignalBlocker blocked(control.list);
    control.list->setCurrentRow(-1);
    control.list->clearSelection();
  }
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
  control.host.Notify(control.id, control.IsCombo() ? CBN_EDITCHANGE : EN_CHANGE, &control);
}

void BuildLabel(Control& control, const ControlTemplate& description) {
  auto* const label = new QLabel(control.host.Widget());
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(description.height >= kTwoRows);
  // A row is as high as its place in larger units; its text stands level with the field beside it.
  label->setAlignment(Qt::AlignLeft | (label->wordWrap() ? Qt::AlignTop : Qt::AlignVCenter));
  // A label marks its mnemonic only when it has somebody to lead to; who that is, the dialog decides.
  label->setBuddy(control.host.Widget());
  label->setText(QString::fromUtf8(description.text));
  control.label = label;
  control.widget = label;
}

void BuildButton(Control& control, QAbstractButton* button, const ControlTemplate& description) {
  button->setText(QString::fromUtf8(description.text));
  QObject::connect(button, &QAbstractButton::clicked, button,
                   [&control] { control.host.Notify(control.id, BN_CLICKED, &control); });
  control.button = button;
  control.widget = button;
}

void BuildEdit(Control& control, const ControlTemplate& description) {
  control.edit = control.kind == ControlKind::readOnlyEdit ? new ReadOnlyEdit(control.host.Widget())
                                                           : new QLineEdit(control.host.Widget());
  control.widget = control.edit;
  control.SetText(description.text);
}

void BuildCombo(Control& control) {
  auto* const combo = new ListCombo(control.host.Widget(), control);
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

// One row is chosen until another one is; where none is, the arrow keys begin with the first.
class ListBox : public QListWidget {
 public:
  using QListWidget::QListWidget;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool arrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (arrow && selectedItems().isEmpty() && count() > 0) {
      setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
    } else {
      QListWidget::keyPressEvent(event);
    }
  }
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override {
    const QItemSelectionModel::SelectionFlags flags = QListWidget::selectionCommand(index, event);
    return flags.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate : flags;
  }
};

// The arrow keys go through the list below it.
class ListedEdit : public QLineEdit {
 public:
  ListedEdit(QWidget* parent, QListWidget& list) : QLineEdit(parent), list_(list) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const int key = event->key();
    if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
      QCoreApplication::sendEvent(&list_, event);
    } else {
      QLineEdit::keyPressEvent(event);
    }
  }

 private:
  QListWidget& list_;
};

void BuildSimpleCombo(Control& control) {
  auto* const list = new ListBox(control.host.Widget());
  auto* const edit = new ListedEdit(control.host.Widget(), *list);
  list->setFocusProxy(edit);
  list->setTextElideMode(Qt::ElideNone);
  QObject::connect(list, &QListWidget::itemSelectionChanged, list, [&control, list] {
    if (!list->selectedItems().isEmpty()) {
      TakeRow(control, list->row(list->selectedItems().front()));
    }
  });
  control.list = list;
  control.edit = edit;
  control.widget = edit;
}

void BuildList(Control& control) {
  auto* const list = new ListBox(control.host.Widget());
  list->setTextElideMode(Qt::ElideNone);
  QObject::connect(list, &QListWidget::itemSelectionChanged, list,
                   [&control] { control.host.Notify(control.id, LBN_SELCHANGE, &control); });
  QObject::connect(list, &QListWidget::itemDoubleClicked, list,
                   [&control] { control.host.Notify(control.id, LBN_DBLCLK, &control); });
  control.list = list;
  control.widget = list;
}

void BuildGroup(Control& control, const ControlTemplate& description) {
  control.group = new QGroupBox(QString::fromUtf8(description.text), control.host.Widget());
  control.group->lower();  // what it frames stands before it
  control.widget = control.group;
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

void BuildWidget(Control& control, const ControlTemplate& description) {
  QWidget* const dialog = control.host.Widget();
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
    case ControlKind::simpleCombo:
      BuildSimpleCombo(control);
      break;
    case ControlKind::listBox:
      BuildList(control);
      break;
    case ControlKind::group:
      BuildGroup(control, description);
      break;
    case ControlKind::ownerDrawn:
      BuildButton(control, MakeOwnerDrawn(dialog, &control), description);
      break;
  }
}

}  // namespace

Control::Control(ControlHost& itsHost, const ControlTemplate& description, WNDPROC itsProcedure)
    : HWND__(itsProcedure), kind(description.kind), id(description.id), host(itsHost), own(itsProcedure) {
  background = reinterpret_cast<HBRUSH>(static_cast<ULONG_PTR>(COLOR_MENU + 1));
  shown = true;
  BuildWidget(*this, description);
  Attach(this, *widget);
  // What the user types changes the text in a way that no call of the program does.
  if (edit != nullptr) {
    QObject::connect(edit, &QLineEdit::textEdited, edit, [this] { TakeTyping(*this); });
  }
  if ((description.style & kNoTabStop) != 0) {
    widget->setFocusPolicy(Qt::ClickFocus);
  }
  widget->setEnabled((description.style & kDisabled) == 0);
}

Control::~Control() {
  ForgetWindow(this);
}

std::string Control::Text() const {
  if (edit != nullptr) {
    return edit->text().toStdString();
  }
  if (combo != nullptr) {
    return combo->currentText().toStdString();
  }
  if (button != nullptr) {
    return button->text().toStdString();
  }
  if (group != nullptr) {
    return group->title().toStdString();
  }
  return label != nullptr ? label->text().toStdString() : std::string();
}

void Control::SetText(const char* text) {
  const QString whole = QString::fromUtf8(text);
  if (edit != nullptr) {
    // The limit is one of typing.
    if (limit > 0) {
      edit->setMaxLength(std::max(limit, static_cast<int>(whole.size())));
    }
    edit->setText(whole);
    edit->home(false);
    row = -1;
  } else if (button != nullptr) {
    button->setText(whole);
  } else if (group != nullptr) {
    group->setTitle(whole);
  } else if (label != nullptr) {
    label->setText(whole);
  }
}

void Control::SyncSize() {
  if (kind == ControlKind::ownerDrawn && ResizePicture(this)) {
    update = target.Picture().Bounds();
  }
}

bool Control::HoldInput(const QEvent& event) {
  const bool subclassed = procedure != own;
  if (!IsHeldKind(event.type()) || current == &event || (!subclassed && held.empty())) {
    return false;
  }
  const auto& input = static_cast<const QInputEvent&>(event);
  const LPARAM number = ++lastHeld;
  held.emplace(number, event.clone());
  AppendInput(this, kHeldInput, 0, number, ModifiersOf(input.modifiers()));
  return true;
}

LRESULT Control::DeliverHeld(LPARAM number) {
  auto entry = held.extract(number);
  if (entry.empty()) {
    return 0;
  }
  QEvent& event = *entry.mapped();
  current = &event;
  LRESULT result = 0;
  if (event.type() == QEvent::MouseButtonPress &&
      static_cast<const QMouseEvent&>(event).button() == Qt::LeftButton) {
    const QPointF place = static_cast<const QMouseEvent&>(event).position();
    const QPoint pixel = (place * widget->devicePixelRatioF()).toPoint();
    result = SendMessageA(this, WM_LBUTTONDOWN, 0x0001,
                          MAKELPARAM(static_cast<UINT>(pixel.x()), static_cast<UINT>(pixel.y())));
  } else if (event.type() == QEvent::KeyPress) {
    const int key = VirtualKeyOf(static_cast<const QKeyEvent&>(event));
    result = SendMessageA(this, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
  } else {
    QCoreApplication::sendEvent(widget, &event);
  }
  current = nullptr;
  return result;
}

}  // namespace platform_qt
