#include "platform/qt/modal.h"

#include <algorithm>
#include <vector>

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
  return IsWindowAlive(owner) && owner->shown ? owner->frame : nullptr;
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

void EndModalsOf(HWND owner) {
  const std::vector<Modal> modals = Modals();
  for (const Modal& modal : modals) {
    if (modal.owner == owner) {
      // The dialog lives on the stack of its caller and must not go with its parent.
      modal.dialog->setParent(nullptr);
      modal.dialog->done(QDialog::Rejected);
    }
  }
}

}  // namespace platform_qt
