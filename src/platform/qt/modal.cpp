#include "platform/qt/modal.h"

#include <algorithm>
#include <vector>

#include "platform/qt/program_dialog.h"
#include "platform/qt/queue.h"
#include "platform/qt/window.h"

namespace platform_qt {

namespace {

struct Modal {
  QDialog* dialog;
  HWND owner;
};

std::vector<Modal>& Modals() {
  static std::vector<Modal> modals;
  return modals;
}

}  // namespace

QWidget* ParentFor(HWND owner) {
  if (!IsWindowAlive(owner)) {
    return nullptr;
  }
  QWidget* const window = owner->widget->window();
  // What a dialog asks before it stands on the screen belongs to the window behind it.
  if (!IsMainWindow(owner) && !window->isVisible()) {
    return window->parentWidget();
  }
  return owner->shown ? window : nullptr;
}

void StartModal(QDialog& dialog, HWND owner) {
  Modals().push_back({&dialog, owner});
  dialog.setWindowModality(dialog.parentWidget() != nullptr ? Qt::WindowModal : Qt::ApplicationModal);
  dialog.show();
}

void FinishModal(QDialog& dialog) {
  bool finished = !dialog.isVisible();
  QObject::connect(&dialog, &QDialog::finished, &dialog, [&finished] { finished = true; });
  MSG message{};
  while (!finished) {
    const Taken taken = TakeMessage(message, true, &finished);
    if (taken == Taken::quit) {
      dialog.reject();
      PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    if (taken == Taken::message) {
      TranslateMessage(&message);
      DispatchMessageA(&message);
    }
  }
  // Who ended the dialog goes on in its owner, also where no window manager hands the focus back.
  if (finished && dialog.parentWidget() != nullptr && dialog.parentWidget()->isVisible()) {
    dialog.parentWidget()->activateWindow();
  }
  std::erase_if(Modals(), [&dialog](const Modal& modal) { return modal.dialog == &dialog; });
}

bool HasModalOver(HWND dialog) {
  const std::vector<Modal>& modals = Modals();
  auto at = std::find_if(modals.begin(), modals.end(),
                         [dialog](const Modal& modal) { return modal.dialog == dialog->dialog; });
  // Those that came up later stand behind it in the list.
  return std::any_of(at, modals.end(), [dialog](const Modal& modal) {
    return modal.dialog != dialog->dialog && modal.dialog->isVisible() &&
           (modal.owner == dialog || modal.owner == nullptr);
  });
}

namespace {

// What a dialog of the program has opened goes with it.
void EndThoseOver(QDialog& dialog) {
  if (auto* const program = dynamic_cast<ProgramDialog*>(&dialog)) {
    EndModalsOf(program->Handle());
  }
}

}  // namespace

void EndModalsOf(HWND owner) {
  const std::vector<Modal> modals = Modals();
  for (const Modal& modal : modals) {
    if (modal.owner == owner) {
      EndThoseOver(*modal.dialog);
      // The dialog lives on the stack of its caller and must not go with its parent.
      modal.dialog->setParent(nullptr);
      modal.dialog->done(QDialog::Rejected);
    }
  }
}

}  // namespace platform_qt
