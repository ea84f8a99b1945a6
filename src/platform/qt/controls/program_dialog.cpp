#include "platform/qt/controls/program_dialog.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QFontInfo>
#include <QKeyEvent>
#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstring>

#include "platform/qt/base/unknown.h"
#include "platform/qt/controls/control_messages.h"
#include "platform/qt/controls/dialog_layout.h"
#include "platform/qt/windows/keys.h"
#include "platform/qt/windows/modal.h"
#include "platform/qt/windows/queue.h"

namespace platform_qt {

namespace {

constexpr unsigned kKnownStyle = kGroupStart | kDisabled | kNoTabStop;

// The procedure behind the handle of a dialog; the program's own one is asked by it.
LRESULT CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const ProgramDialog& dialog = static_cast<DialogWindow*>(window)->dialog;
  if (message == kNotification) {
    // What the user did before a box came up over the dialog is as good as not done.
    if (dialog.Ended() || HasModalOver(window)) {
      return 0;
    }
    message = WM_COMMAND;
  }
  const INT_PTR result = dialog.Procedure()(window, message, wParam, lParam);
  if (result == FALSE && message == WM_CLOSE) {
    PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
  }
  return result;
}

// Of radio buttons that exclude each other, Tab stops at the one that is ticked.
void MoveTabStop(const QButtonGroup& group) {
  for (QAbstractButton* button : group.buttons()) {
    const bool stops = button->isChecked() || group.checkedButton() == nullptr;
    button->setFocusPolicy(stops ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

}  // namespace

DialogWindow::DialogWindow(ProgramDialog& itsDialog, WNDPROC itsProcedure)
    : HWND__(itsProcedure), dialog(itsDialog) {
  shown = true;
}

DialogWindow::~DialogWindow() {
  ForgetWindow(this);
}

void DialogWindow::SetText(const char* text) {
  caption = text;
  ShowTitle(dialog, caption);
}

void DialogWindow::Invalidate(const RECT* rect, bool erase) {
  assert(rect == nullptr && "a dialog is drawn anew as a whole");
  for (Control& control : dialog.Controls()) {
    control.Invalidate(rect, erase);
  }
}

bool DialogWindow::Destroy() {
  if (dialog.isModal()) {
    return false;
  }
  ++running;
  EndModalsOf(this);
  DestroyOwned(this);
  CallProcedure(this, WM_DESTROY, 0, 0);
  destroyed = true;
  ForgetWindow(this);
  for (Control& control : dialog.Controls()) {
    control.destroyed = true;
    ForgetWindow(&control);
  }
  const bool active = dialog.isActiveWindow();
  dialog.hide();
  if (active && dialog.parentWidget() != nullptr) {
    dialog.parentWidget()->activateWindow();  // also where no window manager hands the focus back
  }
  dialog.setParent(nullptr);  // it may have to outlive the frame of its owner
  if (--running == 0) {
    Reap();
  }
  return true;
}

void DialogWindow::Reap() {
  dialog.GoWhenAtRest();
}

ProgramDialog* ProgramDialogOf(HWND window) {
  auto* const handle = IsWindowAlive(window) ? dynamic_cast<DialogWindow*>(window) : nullptr;
  return handle != nullptr ? &handle->dialog : nullptr;
}

ProgramDialog::ProgramDialog(const DialogTemplate& description, QWidget* parent, DLGPROC procedure)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint | Qt::MSWindowsFixedSizeDialogHint),
      window_(*this, DialogProcedure),
      procedure_(procedure) {
  Attach(&window_, *this);
  window_.SetText(description.caption);
  BuildControls(description);
  BindLabels();
  LayOut(*this, controls_, description);
  for (Control& control : controls_) {
    control.SyncSize();
  }
  ShowDefault(nullptr);
}

ProgramDialog::~ProgramDialog() {
  for (const Control& control : controls_) {
    // The widgets outlive their records by a moment.
    control.widget->removeEventFilter(this);
    control.widget->disconnect();
  }
  DeleteObject(itemFont_);
}

void ProgramDialog::BuildControls(const DialogTemplate& description) {
  QButtonGroup* group = nullptr;
  for (const ControlTemplate& place : description.controls) {
    ReportUnknownBits("RunDialog", place.style, kKnownStyle);
    Control& control = controls_.emplace_back(*this, place, ControlProcedure);
    control.widget->installEventFilter(this);
    if (place.kind == ControlKind::defaultButton) {
      assert(default_ == nullptr && "one default button");
      default_ = static_cast<QPushButton*>(control.widget);
    }
    if (group == nullptr || (place.style & kGroupStart) != 0) {
      group = new QButtonGroup(this);
    }
    if (place.kind == ControlKind::radio) {
      group->addButton(control.button);
      if ((place.style & kNoTabStop) == 0) {
        connect(control.button, &QAbstractButton::toggled, this, [group] { MoveTabStop(*group); });
      }
    }
  }
}

// A label with a mnemonic names the control behind it, also to who hears the dialog instead of seeing it.
void ProgramDialog::BindLabels() {
  for (const Control& control : controls_) {
    const Control* const named = ControlBehind(control);
    if (control.kind == ControlKind::label && named != nullptr && control.label->text().contains('&')) {
      control.label->setBuddy(named->widget);
    }
  }
}

Control* ProgramDialog::Find(int id) {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [id](const Control& control) { return control.id == id; });
  return found != controls_.end() ? &*found : nullptr;
}

Control* ProgramDialog::ControlOf(const QObject* widget) {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [widget](const Control& control) { return control.widget == widget; });
  return found != controls_.end() ? &*found : nullptr;
}

Control* ProgramDialog::FirstTabStop() {
  const auto found = std::find_if(controls_.begin(), controls_.end(), [](const Control& control) {
    return control.widget->isEnabled() && (control.widget->focusPolicy() & Qt::TabFocus) != 0;
  });
  return found != controls_.end() ? &*found : nullptr;
}

HFONT ProgramDialog::ItemFont() {
  if (itemFont_ == nullptr) {
    LOGFONTA description{};
    std::strcpy(description.lfFaceName, "monospace");
    description.lfHeight =
        -static_cast<LONG>(std::lround(QFontInfo(font()).pixelSize() * devicePixelRatioF()));
    itemFont_ = CreateFontIndirectA(&description);
  }
  return itemFont_;
}

void ProgramDialog::Notify(int id, WORD code, HWND control) {
  AppendInput(&window_, kNotification, MAKEWPARAM(static_cast<UINT>(id), code),
              reinterpret_cast<LPARAM>(control), ModifiersOf(QGuiApplication::keyboardModifiers()));
}

void ProgramDialog::GoWhenAtRest() {
  const bool busy = std::any_of(controls_.begin(), controls_.end(),
                                [](const Control& control) { return control.running > 0; });
  if (window_.running == 0 && !busy) {
    deleteLater();
  }
}

void ProgramDialog::Prepare(LPARAM param) {
  Control* const first = FirstTabStop();
  const auto focus = reinterpret_cast<WPARAM>(static_cast<HWND>(first));
  if (SendMessageA(&window_, WM_INITDIALOG, focus, param) != FALSE && first != nullptr) {
    first->widget->setFocus(Qt::TabFocusReason);
    if (first->edit != nullptr) {
      first->edit->selectAll();
    }
  }
}

void ProgramDialog::End(INT_PTR result) {
  if (!ended_) {
    ended_ = true;
    answer_ = result;
    done(Accepted);
  }
}

bool ProgramDialog::eventFilter(QObject* object, QEvent* event) {
  Control* const control = ControlOf(object);
  if (control == nullptr) {
    return QDialog::eventFilter(object, event);
  }
  switch (event->type()) {
    case QEvent::Shortcut:
      if (control->label != nullptr || control->group != nullptr) {
        FocusBehind(*control);
        return true;
      }
      // The toolkit would click later, for show.
      if (control->button != nullptr && !static_cast<const QShortcutEvent&>(*event).isAmbiguous()) {
        control->button->setFocus(Qt::ShortcutFocusReason);
        control->button->click();
        return true;
      }
      break;
    case QEvent::FocusIn:
      ShowDefault(object);
      break;
    case QEvent::KeyPress: {
      const auto& key = static_cast<const QKeyEvent&>(*event);
      // Keys that move between controls are the dialog's, also where a procedure stands before the control.
      if (TakeKey(key)) {
        return true;
      }
      if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) {
        return false;
      }
      break;
    }
    default:
      break;
  }
  return control->HoldInput(*event);
}

void ProgramDialog::keyPressEvent(QKeyEvent* event) {
  event->setAccepted(TakeKey(*event));
}

bool ProgramDialog::TakeKey(const QKeyEvent& event) {
  if ((event.modifiers() & (Qt::AltModifier | Qt::ControlModifier)) != 0) {
    return false;
  }
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      PressEnter();
      return true;
    case Qt::Key_Escape:
      PressEscape();
      return true;
    case Qt::Key_F1:
      AppendInput(&window_, WM_HELP, 0, 0, 0);
      return true;
    default:
      return false;
  }
}

void ProgramDialog::PressEnter() {
  auto* const focused = qobject_cast<QPushButton*>(focusWidget());
  QPushButton* const button = focused != nullptr ? focused : default_;
  if (button != nullptr) {
    button->click();  // none where it is disabled
  }
}

void ProgramDialog::PressEscape() {
  Control* const cancel = Find(IDCANCEL);
  if (cancel == nullptr || cancel->widget->isEnabled()) {
    Notify(IDCANCEL, BN_CLICKED, cancel);
  }
}

void ProgramDialog::closeEvent(QCloseEvent* event) {
  event->ignore();
  PostMessageA(&window_, WM_CLOSE, 0, 0);
}

// A push button that has the focus is the one that Enter presses, and looks so.
void ProgramDialog::ShowDefault(QObject* focused) {
  auto* const button = qobject_cast<QPushButton*>(focused);
  QPushButton* const shown = button != nullptr ? button : default_;
  for (const Control& control : controls_) {
    if (auto* const other = qobject_cast<QPushButton*>(control.widget); other != nullptr && other != shown) {
      other->setDefault(false);
    }
  }
  if (shown != nullptr) {
    shown->setDefault(true);
  }
}

const Control* ProgramDialog::ControlBehind(const Control& label) const {
  bool passed = false;
  for (const Control& control : controls_) {
    if (passed && control.widget->focusPolicy() != Qt::NoFocus) {
      return &control;
    }
    passed = passed || &control == &label;
  }
  return nullptr;
}

void ProgramDialog::FocusBehind(const Control& label) {
  const Control* const control = ControlBehind(label);
  if (control != nullptr && control->widget->isEnabled()) {
    control->widget->setFocus(Qt::ShortcutFocusReason);
    if (control->edit != nullptr) {
      control->edit->selectAll();  // also where it had the focus already
    }
  }
}

}  // namespace platform_qt

using namespace platform_qt;

INT_PTR RunDialog(const DialogTemplate& description, HWND owner, DLGPROC procedure, LPARAM param) {
  ProgramDialog dialog(description, ParentFor(owner), procedure);
  dialog.setModal(true);
  dialog.Prepare(param);
  if (!dialog.Ended()) {
    RunModal(dialog, owner, dialog.Handle());
  }
  return dialog.Answer();
}

HWND StartDialog(const DialogTemplate& description, HWND owner, DLGPROC procedure, LPARAM param) {
  auto* const dialog = new ProgramDialog(description, ParentFor(owner), procedure);
  const HWND handle = dialog->Handle();
  handle->owner = owner;
  dialog->Prepare(param);
  if (!IsWindowAlive(handle)) {
    return nullptr;
  }
  dialog->show();
  return handle;
}

BOOL EndDialog(HWND dialog, INT_PTR result) {
  ProgramDialog* const ended = ProgramDialogOf(dialog);
  assert((ended == nullptr || ended->isModal()) && "DestroyWindow ends a dialog that is not modal");
  if (ended == nullptr) {
    return FALSE;
  }
  ended->End(result);
  return TRUE;
}
