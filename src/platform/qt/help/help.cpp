#include "platform/qt/help/help.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>
#include <memory>

#include "platform/qt/base/unknown.h"
#include "platform/qt/help/help_window.h"
#include "platform/win32.h"

namespace platform_qt {

namespace {

std::unique_ptr<HelpWindow> window;

// A book lies beside the program, or where an installation puts it. Empty: there is none.
QString PathOfBook(const char* file) {
  const QString name = QFileInfo(QString::fromUtf8(file)).completeBaseName().toLower();
  const QString own = QCoreApplication::applicationDirPath();
  for (const QString& folder : {own + "/help/", own + "/../share/" + name + "/help/"}) {
    const QFileInfo book(folder + name + ".qch");
    if (book.isFile()) {
      return book.canonicalFilePath();
    }
  }
  return {};
}

bool OpenWindow(const char* file) {
  QString why = QStringLiteral("there is none");
  const QString book = PathOfBook(file);
  if (!book.isEmpty()) {
    window = HelpWindow::Open(book, why);
  }
  if (window == nullptr) {
    std::fprintf(stderr, "quorl: cannot open the help book: %s\n", why.toUtf8().constData());
  }
  return window != nullptr;
}

}  // namespace

QUrl HelpPage() {
  return window != nullptr && window->isVisible() ? window->Page() : QUrl();
}

}  // namespace platform_qt

using namespace platform_qt;

BOOL WinHelpA(HWND /*owner*/, LPCSTR file, UINT command, ULONG_PTR data) {
  QString page;
  switch (command) {
    case HELP_CONTEXT:
      page = QStringLiteral("context-%1").arg(data);
      break;
    case HELP_HELPONHELP:
      page = QStringLiteral("page-help_on_help");
      break;
    case HELP_QUIT:
      window.reset();
      return TRUE;
    default:
      ReportUnknown("WinHelpA", command);
      return FALSE;
  }
  return (window != nullptr || OpenWindow(file)) && window->ShowPage(page) ? TRUE : FALSE;
}
