#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <algorithm>

#include "platform/qt/desktop/open_dialog.h"
#include "platform/qt/printing/printers.h"
#include "platform/qt/windows/modal.h"
#include "platform/qt/windows/window.h"

namespace platform_qt {

namespace {

QString& LastFolder() {
  static QString folder = QDir::currentPath();
  return folder;
}

// The window that the user can reach.
HWND FrontWindow() {
  const std::vector<HWND>& windows = AllWindows();
  const auto front = std::find_if(windows.rbegin(), windows.rend(), [](HWND window) {
    const QWidget& whole = window->Whole();
    return whole.isWindow() && whole.isVisible() && whole.isEnabled();
  });
  return front != windows.rend() ? *front : nullptr;
}

}  // namespace

std::string AskForFile(const std::string& document) {
  const HWND owner = FrontWindow();
  PlainIcons icons;
  QFileDialog dialog(ParentFor(owner), QStringLiteral("Print to PDF File"), LastFolder());
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setOption(QFileDialog::DontResolveSymlinks);
  dialog.setIconProvider(&icons);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setNameFilter(QStringLiteral("PDF files (*.pdf)"));
  dialog.setDefaultSuffix(QStringLiteral("pdf"));
  dialog.selectFile(QFile::decodeName(document.c_str()) + QStringLiteral(".pdf"));
  RunModal(dialog, owner);
  if (dialog.result() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
    return {};
  }
  LastFolder() = dialog.directory().absolutePath();
  return QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
}

}  // namespace platform_qt
