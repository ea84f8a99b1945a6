#include "platform/qt/desktop/open_dialog.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QStringListModel>

namespace platform_qt {

namespace {

QString NameAt(const QModelIndex& index) {
  return index.data(QFileSystemModel::FileNameRole).toString();
}

// The entry of a folder, among those that are listed; no file is looked at.
QModelIndex EntryOf(const QAbstractItemModel& model, const QModelIndex& folder, const QString& name) {
  const int rows = model.rowCount(folder);
  for (int row = 0; row < rows; ++row) {
    const QModelIndex index = model.index(row, 0, folder);
    if (NameAt(index) == name) {
      return index;
    }
  }
  return {};
}

}  // namespace

PlainIcons::PlainIcons() : folder_(icon(Folder)), file_(icon(File)) {}

QIcon PlainIcons::icon(const QFileInfo& info) const {
  return info.isDir() ? folder_ : file_;
}

QString PlainIcons::type(const QFileInfo& info) const {
  return info.isDir() ? QStringLiteral("Folder") : QStringLiteral("File");
}

OpenDialog::OpenDialog(QWidget* parent, PlainIcons& icons) : QFileDialog(parent) {
  // The toolkit's own dialog behaves the same on every desktop. It may only look: no renaming, no deleting.
  setOptions(DontUseNativeDialog | DontUseCustomDirectoryIcons | ReadOnly | HideNameFilterDetails);
  setIconProvider(&icons);
  setAcceptMode(AcceptOpen);
  setFileMode(ExistingFile);
  name_ = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  list_ = findChild<QListView*>(QStringLiteral("listView"));
  offered_ = new QStringListModel(this);
  // What the toolkit does on these signals, and to complete a name, looks at the file at each key.
  disconnect(name_, &QLineEdit::textChanged, this, static_cast<void**>(nullptr));
  disconnect(list_->selectionModel(), nullptr, this, nullptr);
  auto* const completer = new QCompleter(offered_, this);
  name_->setCompleter(completer);
  auto* const open = findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
  open->setEnabled(false);
  connect(name_, &QLineEdit::textChanged, open,
          [open](const QString& text) { open->setEnabled(!text.isEmpty()); });
  connect(name_, &QLineEdit::textEdited, this, [this] { TakeEdit(); });
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { TakeSelection(); });
}

void OpenDialog::SetName(const QString& name) {
  name_->setText(name);
  name_->selectAll();
}

void OpenDialog::accept() {
  const QString text = name_->text();
  if (text.isEmpty()) {
    return;
  }
  const QModelIndex known = Known(text);
  const QString path = PathOf(text, known.isValid());
  const bool folder =
      known.isValid() ? Listing().isDir(known) : text.endsWith(u'/') && QFileInfo(path).isDir();
  if (folder) {
    name_->completer()->popup()->hide();  // Enter leaves it up
    setDirectory(path);
    name_->clear();
    return;
  }
  chosen_ = path;
  done(Accepted);
}

const QFileSystemModel& OpenDialog::Listing() const {
  return *qobject_cast<const QFileSystemModel*>(list_->model());
}

// What the listing knows under a name, or a path that leads through folders that it knows too.
QModelIndex OpenDialog::Known(const QString& text) const {
  const QFileSystemModel& model = Listing();
  QModelIndex index = text.startsWith(u'/') ? EntryOf(model, {}, QStringLiteral("/")) : list_->rootIndex();
  for (const QString& part : text.split(u'/', Qt::SkipEmptyParts)) {
    if (!index.isValid()) {
      return {};
    }
    if (part == u"..") {
      index = index.parent();
    } else if (part != u".") {
      index = EntryOf(model, index, part);
    }
  }
  return index;
}

// A name that is not listed may stand in quotes, or begin with the sign for the user's own folder.
QString OpenDialog::PathOf(QString text, bool known) const {
  if (!known && text.size() > 2 && text.startsWith(u'"') && text.endsWith(u'"')) {
    text = text.mid(1, text.size() - 2);
  }
  if (!known && (text == u"~" || text.startsWith(u"~/"))) {
    text.replace(0, 1, QDir::homePath());
  }
  if (QDir::isAbsolutePath(text)) {
    return text;
  }
  const QString folder = directory().absolutePath();
  return folder.endsWith(u'/') ? folder + text : folder + u'/' + text;
}

void OpenDialog::TakeSelection() {
  const QModelIndexList rows = list_->selectionModel()->selectedRows();
  if (rows.size() == 1 && !name_->hasFocus() && !Listing().isDir(rows.front())) {
    name_->setText(NameAt(rows.front()));
  }
}

// What is typed stands for itself, and not for what was chosen before; the listing's names are offered.
void OpenDialog::TakeEdit() {
  list_->clearSelection();
  const QModelIndex folder = list_->rootIndex();
  const int rows = list_->model()->rowCount(folder);
  if (offeredFolder_ == folder && offered_->rowCount() == rows) {
    return;
  }
  QStringList names;
  for (int row = 0; row < rows; ++row) {
    names.append(NameAt(list_->model()->index(row, 0, folder)));
  }
  offered_->setStringList(names);
  offeredFolder_ = folder;
}

}  // namespace platform_qt
