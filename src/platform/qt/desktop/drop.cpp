// Files dropped on a window. A drop is taken as a copy, whatever the other program proposes: nothing happens
// to the files.
#include <QDragEnterEvent>
#include <QMimeData>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/qt/windows/window.h"

struct HDROP__ {
  std::vector<std::string> paths;
};

namespace platform_qt {

namespace {

// The names as bytes: the toolkit's own reading of the list loses those that are not UTF-8. One URI a line
// (RFC 2483), of this machine when its host is empty or localhost (RFC 8089).
std::vector<std::string> LocalPaths(const QMimeData* data) {
  std::vector<std::string> paths;
  for (const QByteArray& line : data->data(QStringLiteral("text/uri-list")).split('\n')) {
    const QByteArray uri = line.trimmed();
    for (const char* const prefix : {"file://localhost/", "file:///", "file:/"}) {
      if (!uri.startsWith(prefix)) {
        continue;
      }
      const auto length = static_cast<qsizetype>(std::strlen(prefix));
      paths.push_back('/' + QByteArray::fromPercentEncoding(uri.mid(length)).toStdString());
      break;
    }
  }
  return paths;
}

constexpr QLatin1StringView kFilterName("drop filter");

// Stands in front of a widget that takes files, and lives as long as that.
class DropFilter : public QObject {
 public:
  DropFilter(QWidget* widget, HWND owner) : QObject(widget), owner_(owner) {
    setObjectName(kFilterName);
    widget->installEventFilter(this);
  }

  bool eventFilter(QObject* /*object*/, QEvent* event) override {
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop) {
      return false;
    }
    auto& drop = static_cast<QDropEvent&>(*event);
    std::vector<std::string> paths = LocalPaths(drop.mimeData());
    if (!paths.empty()) {
      drop.setDropAction(Qt::CopyAction);
      drop.accept();
      if (event->type() == QEvent::Drop) {
        Post(std::move(paths));
      }
    }
    return true;
  }

 private:
  void Post(std::vector<std::string> paths) {
    auto drop = std::make_unique<HDROP__>(HDROP__{std::move(paths)});
    if (PostMessageA(owner_, WM_DROPFILES, reinterpret_cast<WPARAM>(drop.get()), 0) != FALSE) {
      static_cast<void>(drop.release());  // DragFinish deletes it
    }
  }

  HWND owner_;
};

}  // namespace

}  // namespace platform_qt

void DragAcceptFiles(HWND window, BOOL accept) {
  if (!platform_qt::IsWindowAlive(window)) {
    return;
  }
  QWidget& widget = *window->widget;
  widget.setAcceptDrops(accept != FALSE);
  if (widget.findChild<QObject*>(platform_qt::kFilterName, Qt::FindDirectChildrenOnly) == nullptr) {
    new platform_qt::DropFilter(&widget, window);
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
