#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>
#include <cassert>
#include <deque>
#include <memory>
#include <utility>

#include "platform/qt/controls/program_dialog.h"
#include "platform/qt/testing/records.h"
#include "platform/qt/windows/queue.h"
#include "platform/testing.h"

// How the toolkit's own tests deliver input: by the road of real keys, shortcuts included, and of a real
// mouse.
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text = QString(),
                                    bool repeated = false, ushort count = 1);

Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons held, Qt::MouseButton button, QEvent::Type type,
                                      Qt::KeyboardModifiers modifiers, int timestamp);

namespace platform_testing {

using namespace platform_qt;

namespace {

using Steps = std::deque<DialogStep>;

std::deque<Steps>& Scripts() {
  static std::deque<Steps> scripts;
  return scripts;
}

// A dialog that never comes to rest, or does not close, must not keep a test for ever.
constexpr int kMostRoundsOfAStep = 1000;

void RunNextStep(HWND dialog, const std::shared_ptr<Steps>& steps, int rounds) {
  ProgramDialog& widget = *ProgramDialogOf(dialog);
  QTimer::singleShot(0, &widget, [&widget, dialog, steps, rounds] {
    if (!widget.isVisible()) {
      return;
    }
    // A box or dialog over this one is answered first.
    if (QApplication::activeModalWidget() != &widget) {
      RunNextStep(dialog, steps, rounds);
      return;
    }
    if (!QueueIsIdle() && rounds > 0) {
      RunNextStep(dialog, steps, rounds - 1);
      return;
    }
    if (rounds == 0) {
      widget.reject();
      return;
    }
    if (steps->empty()) {
      widget.close();
      RunNextStep(dialog, steps, rounds - 1);
      return;
    }
    const DialogStep step = std::move(steps->front());
    steps->pop_front();
    step(dialog);
    RunNextStep(dialog, steps, kMostRoundsOfAStep);
  });
}

Control& ControlOf(HWND dialog, int id) {
  Control* const control = ProgramDialogOf(dialog)->Find(id);
  assert(control != nullptr && "a control of the dialog");
  return *control;
}

void SendKey(QWidget& window, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
  qt_handleKeyEvent(window.windowHandle(), QEvent::KeyPress, key, modifiers, text);
  qt_handleKeyEvent(window.windowHandle(), QEvent::KeyRelease, key, modifiers, text);
}

// Far enough from each other that two clicks are no double click.
constexpr int kMillisecondsApart = 10000;

void Click(QWidget& widget, const QPointF& place, int apart = kMillisecondsApart) {
  static int time = 0;
  time += apart;
  QWidget& window = *widget.window();
  const QPointF inside = widget.mapTo(&window, place);
  qt_handleMouseEvent(window.windowHandle(), inside, widget.mapToGlobal(place), Qt::LeftButton,
                      Qt::LeftButton, QEvent::MouseButtonPress, Qt::NoModifier, time);
  qt_handleMouseEvent(window.windowHandle(), inside, widget.mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                      QEvent::MouseButtonRelease, Qt::NoModifier, time);
}

// Where a click reaches it: a check box takes it on its box and its text only.
QPointF PlaceToClick(const Control& control) {
  constexpr double kOnTheBox = 8;
  const QWidget& widget = *control.widget;
  const bool box = control.kind == ControlKind::checkBox || control.kind == ControlKind::threeState ||
                   control.kind == ControlKind::radio;
  return {box ? kOnTheBox : widget.width() / 2.0, widget.height() / 2.0};
}

QPointF MiddleOfRow(const QListWidget& list, int row) {
  return list.visualItemRect(list.item(row)).center();
}

}  // namespace

void RunScript(ProgramDialog& dialog) {
  auto steps = std::make_shared<Steps>();
  if (!Scripts().empty()) {
    *steps = std::move(Scripts().front());
    Scripts().pop_front();
  }
  RunNextStep(dialog.Handle(), steps, kMostRoundsOfAStep);
}

void ForgetScripts() {
  Scripts().clear();
}

void ScriptNextDialog(std::vector<DialogStep> steps) {
  Scripts().emplace_back(std::make_move_iterator(steps.begin()), std::make_move_iterator(steps.end()));
}

void TypeText(HWND dialog, const std::string& text) {
  for (const QChar character : QString::fromStdString(text)) {
    SendKey(*ProgramDialogOf(dialog), character.toUpper().unicode(), Qt::NoModifier, QString(character));
  }
}

void PressDialogKey(HWND dialog, int virtualKey, int keys) {
  constexpr int kTab = 0x09;
  const bool back = virtualKey == kTab && (keys & MK_SHIFT) != 0;
  const int key = back ? static_cast<int>(Qt::Key_Backtab) : ToolkitKeyOf(virtualKey);
  const QString text = virtualKey == ' ' ? QStringLiteral(" ") : QString();
  SendKey(*ProgramDialogOf(dialog), key, ToolkitModifiers(keys), text);
}

void ClickControl(HWND dialog, int id) {
  const Control& control = ControlOf(dialog, id);
  Click(*control.widget, PlaceToClick(control));
}

void ClickInControl(HWND dialog, int id, int x, int y) {
  QWidget& widget = *ControlOf(dialog, id).widget;
  Click(widget, QPointF(x, y) / widget.devicePixelRatioF());
}

void ChooseRow(HWND dialog, int id, int row) {
  const Control& control = ControlOf(dialog, id);
  if (control.list != nullptr) {
    Click(*control.list->viewport(), MiddleOfRow(*control.list, row));
    return;
  }
  control.combo->showPopup();
  QAbstractItemView& view = *control.combo->view();
  view.setCurrentIndex(view.model()->index(row, 0));
  QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QCoreApplication::sendEvent(&view, &press);
}

void DoubleClickRow(HWND dialog, int id, int row) {
  QListWidget& list = *ControlOf(dialog, id).list;
  Click(*list.viewport(), MiddleOfRow(list, row));
  Click(*list.viewport(), MiddleOfRow(list, row), 1);
}

ControlState StateOfControl(HWND dialog, int id) {
  const Control& control = ControlOf(dialog, id);
  ControlState state;
  state.text = control.Text();
  state.enabled = control.widget->isEnabled();
  state.focused = ProgramDialogOf(dialog)->focusWidget() == control.widget;
  state.checked = IsDlgButtonChecked(dialog, id);
  if (control.edit != nullptr) {
    state.selected = control.edit->selectedText().toStdString();
  }
  if (control.list != nullptr) {
    const bool combo = control.kind == ControlKind::simpleCombo;
    state.row = combo ? control.row : static_cast<int>(SendDlgItemMessageA(dialog, id, LB_GETCURSEL, 0, 0));
    for (int row = 0; row < control.list->count(); ++row) {
      state.rows.push_back(control.list->item(row)->text().toStdString());
    }
  }
  if (control.combo != nullptr) {
    state.row = control.row;
    for (int row = 0; row < control.combo->count(); ++row) {
      state.rows.push_back(control.combo->itemText(row).toStdString());
    }
  }
  return state;
}

Pixels ControlPixels(HWND dialog, int id) {
  const Control& control = ControlOf(dialog, id);
  if (control.kind == ControlKind::ownerDrawn) {
    return ClientPixels(GetDlgItem(dialog, id));
  }
  return PixelsOf(control.widget->grab().toImage());
}

}  // namespace platform_testing
