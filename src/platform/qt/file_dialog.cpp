#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <cstring>

#include "platform/paths.h"
#include "platform/qt/hooks.h"
#include "platform/qt/modal.h"
#include "platform/qt/unknown.h"

namespace platform_qt {

namespace {

bool IsPattern(const char* name) {
  return std::strpbrk(name, "*?") != nullptr;
}

// One name filter of the toolkit, "Name (pattern pattern)". Win32 parts patterns by semicolons, means every
// name by "*.*", and its names often show the pattern themselves. A blank or a parenthesis in a pattern
// would end it for the toolkit; any one character stands for it.
QString NameFilter(const char* name, const char* patterns) {
  QString label = QString::fromUtf8(name);
  label.truncate(label.lastIndexOf(u" (") >= 0 ? label.lastIndexOf(u" (") : label.size());
  label.remove(u'(').remove(u')');
  QStringList parts = QString::fromUtf8(patterns).split(u';', Qt::SkipEmptyParts);
  for (QString& part : parts) {
    if (part == u"*.*") {
      part = QStringLiteral("*");
    }
    part.replace(u' ', u'?').replace(u'(', u'?').replace(u')', u'?');
  }
  return QStringLiteral("%1 (%2)").arg(label, parts.join(u' '));
}

QStringList NameFilters(const char* filter) {
  QStringList filters;
  while (filter != nullptr && *filter != '\0') {
    const char* const patterns = filter + std::strlen(filter) + 1;
    filters.append(NameFilter(filter, patterns));
    filter = patterns + std::strlen(patterns) + 1;
  }
  return filters;
}

void SetUp(QFileDialog& dialog, const OPENFILENAMEA& open) {
  // The toolkit's own dialog behaves the same on every desktop. It may only look: no renaming, no deleting.
  dialog.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontUseCustomDirectoryIcons |
                    QFileDialog::ReadOnly);
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode((open.Flags & OFN_FILEMUSTEXIST) != 0 ? QFileDialog::ExistingFile
                                                           : QFileDialog::AnyFile);
  const QStringList filters = NameFilters(open.lpstrFilter);
  dialog.setNameFilters(filters);
  if (open.nFilterIndex >= 1 && open.nFilterIndex <= static_cast<DWORD>(filters.size())) {
    dialog.selectNameFilter(filters[static_cast<qsizetype>(open.nFilterIndex) - 1]);
  }
  if (open.lpstrTitle != nullptr) {
    dialog.setWindowTitle(QString::fromUtf8(open.lpstrTitle));
  }
  const bool given = open.lpstrInitialDir != nullptr && *open.lpstrInitialDir != '\0';
  dialog.setDirectory(given ? QFile::decodeName(open.lpstrInitialDir) : QDir::currentPath());
  if (open.lpstrFile != nullptr && *open.lpstrFile != '\0' && !IsPattern(open.lpstrFile)) {
    if (auto* const name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
      name->setText(QFile::decodeName(open.lpstrFile));
      name->selectAll();
    }
  }
}

// Writes the path chosen into the caller's record. False when it does not fit.
bool StoreChoice(const QFileDialog& dialog, OPENFILENAMEA& open) {
  const QStringList files = dialog.selectedFiles();
  if (files.size() != 1) {
    return false;
  }
  const QByteArray path = QFile::encodeName(files.front());
  if (static_cast<std::size_t>(path.size()) >= open.nMaxFile) {
    return false;
  }
  std::memcpy(open.lpstrFile, path.constData(), static_cast<std::size_t>(path.size()) + 1);
  const char* const base = BaseName(open.lpstrFile);
  const char* const dot = std::strrchr(base, '.');
  open.nFileOffset = static_cast<WORD>(base - open.lpstrFile);
  open.nFileExtension = dot != nullptr ? static_cast<WORD>(dot + 1 - open.lpstrFile) : WORD{0};
  open.nFilterIndex = static_cast<DWORD>(dialog.nameFilters().indexOf(dialog.selectedNameFilter()) + 1);
  return true;
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

BOOL GetOpenFileNameA(OPENFILENAMEA* open) {
  ReportUnknownBits("GetOpenFileNameA", open->Flags, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST);
  QFileDialog dialog(ParentFor(open->hwndOwner));
  SetUp(dialog, *open);
  RunModal(dialog, open->hwndOwner, [&] {
    if (hooks.fileDialogShown != nullptr) {
      hooks.fileDialogShown(dialog, *open);
    }
  });
  return dialog.result() == QDialog::Accepted && StoreChoice(dialog, *open) ? TRUE : FALSE;
}
