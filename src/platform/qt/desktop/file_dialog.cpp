#include <QComboBox>
#include <QDir>
#include <QRegularExpression>
#include <cstring>

#include "platform/paths.h"
#include "platform/qt/base/unknown.h"
#include "platform/qt/desktop/open_dialog.h"
#include "platform/qt/windows/modal.h"

namespace platform_qt {

namespace {

bool IsPattern(const char* name) {
  return std::strpbrk(name, "*?") != nullptr;
}

// One name filter of the toolkit, "Name (pattern pattern)", of which only the name is shown. Win32 parts
// patterns by semicolons, and means every name by "*.*". What the toolkit would not take for part of a
// pattern becomes its sign for any one character.
QString NameFilter(const char* name, const char* patterns) {
  static const QRegularExpression kStrange(QStringLiteral("[^a-zA-Z0-9_.,*?+#@{}!$%&=^~-]"));
  QStringList parts = QString::fromUtf8(patterns).split(u';', Qt::SkipEmptyParts);
  for (QString& part : parts) {
    if (part == u"*.*") {
      part = QStringLiteral("*");
    }
    part.replace(kStrange, QStringLiteral("?"));
  }
  return QStringLiteral("%1 (%2)").arg(QString::fromUtf8(name), parts.join(u' '));
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

void SetUp(OpenDialog& dialog, const OPENFILENAMEA& open) {
  const QStringList filters = NameFilters(open.lpstrFilter);
  dialog.setNameFilters(filters);
  if (open.nFilterIndex >= 1 && open.nFilterIndex <= static_cast<DWORD>(filters.size())) {
    dialog.selectNameFilter(filters[static_cast<qsizetype>(open.nFilterIndex) - 1]);
  }
  if (open.lpstrTitle != nullptr) {
    dialog.setWindowTitle(QString::fromUtf8(open.lpstrTitle));
  }
  const bool given = open.lpstrInitialDir != nullptr && *open.lpstrInitialDir != '\0';
  dialog.Enter(given ? QFile::decodeName(open.lpstrInitialDir) : QDir::currentPath());
  if (open.lpstrFile != nullptr && *open.lpstrFile != '\0' && !IsPattern(open.lpstrFile)) {
    dialog.SetName(QFile::decodeName(open.lpstrFile));
  }
}

// Writes the path chosen into the caller's record. False when it does not fit.
bool StoreChoice(const OpenDialog& dialog, OPENFILENAMEA& open) {
  const QByteArray& path = dialog.Chosen();
  if (static_cast<std::size_t>(path.size()) >= open.nMaxFile) {
    return false;
  }
  std::memcpy(open.lpstrFile, path.constData(), static_cast<std::size_t>(path.size()) + 1);
  const char* const base = BaseName(open.lpstrFile);
  const char* const dot = std::strrchr(base, '.');
  open.nFileOffset = static_cast<WORD>(base - open.lpstrFile);
  open.nFileExtension = dot != nullptr ? static_cast<WORD>(dot + 1 - open.lpstrFile) : WORD{0};
  const auto* const filters = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
  open.nFilterIndex = static_cast<DWORD>(filters->currentIndex() + 1);
  return true;
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

BOOL GetOpenFileNameA(OPENFILENAMEA* open) {
  ReportUnknownBits("GetOpenFileNameA", open->Flags, OFN_HIDEREADONLY);
  PlainIcons icons;
  OpenDialog dialog(ParentFor(open->hwndOwner), icons);
  SetUp(dialog, *open);
  RunModal(dialog, open->hwndOwner);
  return dialog.result() == QDialog::Accepted && StoreChoice(dialog, *open) ? TRUE : FALSE;
}
