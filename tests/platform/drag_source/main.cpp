// A program to drag files from, for the end-to-end tests: a small window that offers the files named on its
// command line to whatever they are dropped on, as a file manager does.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

namespace {

class Source : public QWidget {
 protected:
  void mousePressEvent(QMouseEvent*) override {
    QList<QUrl> urls;
    const QStringList words = QApplication::arguments();
    for (qsizetype i = 1; i < words.size(); ++i) {
      const bool isUri = words[i].startsWith(QStringLiteral("file:"));
      urls.append(isUri ? QUrl::fromEncoded(words[i].toLatin1()) : QUrl::fromLocalFile(words[i]));
    }
    auto* const files = new QMimeData;
    files->setUrls(urls);
    auto* const drag = new QDrag(this);
    drag->setMimeData(files);
    drag->exec(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction, Qt::MoveAction);
  }
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  Source source;
  source.setWindowTitle(QStringLiteral("drag source"));
  source.resize(120, 60);
  source.show();
  return QApplication::exec();
}
