#include "platform/qt/windows/modal.h"

#include <algorithm>
#include <vector>

#include "platform/qt/base/hooks.h"
#include "platform/qt/windows/queue.h"
#include "platform/qt/windows/window.h"

namespace platform_qt {

namespace {

struct Modal {
  QDialog* dialog;
  HWND owner;
  HWND self;  // null: one of the toolkit's own
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
  return window->isVisible() ? window : window->parentWidget();
}

namespace {

void Loop(QDialog& dialog) {
  bool finished = !dialog.isVisible();
  QObject::connect(&dialog, &QDialog::finished, &dialog, [&finished] { finished = true; });
  MSG message{};
  while (!finished) {
    const Taken taken = TakeMessage(message, true, &finished);
    if (taken == Taken::quit) {
      dialog.reject();
      AppendQuit(static_cast<int>(message.wParam));
      break;
    }
    if (taken == Taken::message) {
      Serve(message);
    }
  }
  // Who ended the dialog goes on in its owner, also where no window manager hands the focus back.
  if (finished && dialog.parentWidget() != nullptr && dialog.parentWidget()->isVisible()) {
    dialog.parentWidget()->activateWindow();
  }
}

}  // namespace

void RunModal(QDialog& dialog, HWND owner, HWND self) {
  Modals().push_back({&dialog, owner, self});
  dialog.setWindowModality(dialog.parentWidget() != nullptr ? Qt::WindowModal : Qt::ApplicationModal);
  dialog.show();
  if (hooks.dialogShown != nullptr) {
    hooks.dialogShown(dialog);
  }
  Loop(dialog);
  std::erase_if(Modals(), [&dialog](const Modal& modal) { return modal.dialog == &dialog; });
}

bool HasModalOver(HWND dialog) {
  const std::vector<Modal>& modals = Modals();
  auto at = std::find_if(modals.begin(), modals.end(),
                         [dialog](const Modal& modal) { return modal.self == dialog; });
  // Those that came up later stand behind it in the list.
  return std::any_of(at, modals.end(), [dialog](const Modal& modal) {
    return modal.self != dialog && modal.dialog->isVisible() &&
           (modal.owner == dialog || modal.owner == nullptr);
  });
}

void EndModalsOf(HWND owner) {
  const std::vector<Modal> modals = Modals();
  for (const Modal& modal : modals) {
    if (modal.owner == owner) {
      // What the dialog has opened goes with it.
      if (modal.self != nullptr) {
        EndModalsOf(modal.self);
      }
      // The dialog lives on the stack of its caller and must not go with its parent.
      modal.dialog->setParent(nullptr);
      modal.dialog->done(QDialog::Rejected);
    }
  }
}

}  // namespace platform_qt
