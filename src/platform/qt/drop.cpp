// Files dropped on a window. A drop is taken as a copy, whatever the other program proposes: nothing happens
// to the files.
#include <QDragEnterEvent>
#include <QFile>
#include <QMimeData>
#include <QUrl>
#include <algorithm>
#include <string>
#include <vector>

#include "platform/qt/window.h"

struct HDROP__ {
  std::vector<std::string> paths;
};

namespace platform_qt {

namespace {

std::vector<std::string> LocalPaths(const QMimeData* data) {
  std::vector<std::string> paths;
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile()) {
      paths.push_back(QFile::encodeName(url.toLocalFile()).toStdString());
    }
  }
  return paths;
}

}  // namespace

void ClientArea::dragEnterEvent(QDragEnterEvent* event) {
  if (!LocalPaths(event->mimeData()).empty()) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
  }
}

void ClientArea::dropEvent(QDropEvent* event) {
  std::vector<std::string> paths = LocalPaths(event->mimeData());
  if (owner_ == nullptr || paths.empty()) {
    return;
  }
  event->setDropAction(Qt::CopyAction);
  event->accept();
  HDROP drop = new HDROP__{std::move(paths)};
  PostMessageA(owner_, WM_DROPFILES, reinterpret_cast<WPARAM>(drop), 0);
}

}  // namespace platform_qt

void DragAcceptFiles(HWND window, BOOL accept) {
  if (platform_qt::IsWindowAlive(window)) {
    window->client->setAcceptDrops(accept != FALSE);
  }
}

UINT DragQueryFileA(HDROP drop, UINT index, LPSTR path, UINT size) {
  if (index >= drop->paths.size() || size == 0) {
    return 0;
  }
  const std::size_t length = drop->paths[index].copy(path, size - 1);
  path[length] = '\0';
  return static_cast<UINT>(length);
}

void DragFinish(HDROP drop) {
  delete drop;
}
