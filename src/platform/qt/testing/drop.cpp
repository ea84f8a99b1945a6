#include <QApplication>
#include <QDragEnterEvent>
#include <QFile>
#include <QMimeData>
#include <QUrl>

#include "platform/qt/windows/window.h"
#include "platform/testing.h"

namespace platform_testing {

bool DropFiles(HWND window, const std::vector<std::string>& paths) {
  QMimeData data;
  QList<QUrl> urls;
  for (const std::string& path : paths) {
    urls.append(QUrl::fromLocalFile(QFile::decodeName(path.c_str())));
  }
  data.setUrls(urls);
  QWidget* const client = window->widget;
  if (!client->acceptDrops()) {
    return false;
  }
  const QPoint place(1, 1);
  QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QApplication::sendEvent(client, &enter);
  if (!enter.isAccepted()) {
    return false;
  }
  QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(client, &drop);
  return drop.isAccepted();
}

}  // namespace platform_testing
