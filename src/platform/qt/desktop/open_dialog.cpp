#include "platform/qt/desktop/open_dialog.h"

#include <dirent.h>

#include <QAbstractItemView>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPushButton>
#include <QStringListModel>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <thread>

#include "platform/cells.h"

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

// How often the dialog asks whether the names have been found, and the room for them.
constexpr int kAskMs = 100;
constexpr int kStrangeRows = 4;
constexpr std::size_t kMostStrange = 1000;

bool IsUtf8(const char* name) {
  return QString::fromUtf8(name).toUtf8() == name;
}

}  // namespace

struct OpenDialog::StrangeNames {
  std::string folder;
  std::atomic<bool> found{false};  // set last
  std::vector<std::string> names;

  // Reads the folder's entries, and nothing of them.
  void Find() {
    DIR* const entries = opendir(folder.c_str());
    if (entries != nullptr) {
      while (const dirent* const entry = readdir(entries)) {
        if (entry->d_type != DT_DIR && !IsUtf8(entry->d_name) && names.size() < kMostStrange) {
          names.emplace_back(entry->d_name);
        }
      }
      closedir(entries);
    }
    std::sort(names.begin(), names.end());
    found = true;
  }
};

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
  AddStrangeList();
}

// The toolkit's listing leaves out names that are no UTF-8, which older systems wrote. They stand in a list
// of their own, as they read in Windows-1252.
void OpenDialog::AddStrangeList() {
  auto* const grid = qobject_cast<QGridLayout*>(layout());
  if (grid == nullptr) {
    return;
  }
  strangeLabel_ = new QLabel(QStringLiteral("Names that are not &UTF-8:"), this);
  strangeList_ = new QListWidget(this);
  strangeLabel_->setBuddy(strangeList_);
  strangeList_->setMaximumHeight(kStrangeRows * strangeList_->fontMetrics().lineSpacing() +
                                 2 * strangeList_->frameWidth());
  const int row = grid->rowCount();
  grid->addWidget(strangeLabel_, row, 0, Qt::AlignTop);
  grid->addWidget(strangeList_, row, 1);
  connect(strangeList_, &QListWidget::itemActivated, this,
          [this](QListWidgetItem* item) { ChooseStrange(strangeList_->row(item)); });
  // One of them takes the place of the name in the field, and the other way round.
  auto* const open = findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
  connect(strangeList_, &QListWidget::currentRowChanged, this, [this, open](int current) {
    if (current >= 0) {
      name_->clear();
      open->setEnabled(true);
    }
  });
  connect(name_, &QLineEdit::textChanged, strangeList_, [this](const QString& text) {
    if (!text.isEmpty()) {
      strangeList_->setCurrentRow(-1);
    }
  });
  strangeLabel_->hide();
  strangeList_->hide();
  connect(this, &QFileDialog::directoryEntered, this, [this] { LookForStrange(); });
  auto* const asking = new QTimer(this);
  connect(asking, &QTimer::timeout, this, [this] { ShowStrange(); });
  asking->start(kAskMs);
}

// The folder may lie on a disk that hangs: the thread is left to itself then.
void OpenDialog::LookForStrange() {
  strangeLabel_->hide();
  strangeList_->hide();
  strange_ = std::make_shared<StrangeNames>();
  strange_->folder = QFile::encodeName(directory().absolutePath()).toStdString();
  try {
    std::thread([names = strange_] { names->Find(); }).detach();
  } catch (const std::system_error&) {
    strange_ = nullptr;
  }
}

void OpenDialog::ShowStrange() {
  if (strange_ == nullptr || !strange_->found) {
    return;
  }
  const bool isShown = strangeList_->isVisible();
  if (isShown || strange_->names.empty()) {
    return;
  }
  strangeList_->clear();
  for (const std::string& name : strange_->names) {
    strangeList_->addItem(QString::fromStdString(CellsToUtf8(CellsOfBytes(name))));
  }
  strangeLabel_->show();
  strangeList_->show();
}

void OpenDialog::ChooseStrange(int row) {
  if (row < 0 || strange_ == nullptr || row >= static_cast<int>(strange_->names.size())) {
    return;
  }
  chosen_ =
      QByteArray::fromStdString(strange_->folder + '/' + strange_->names[static_cast<std::size_t>(row)]);
  done(Accepted);
}

void OpenDialog::Enter(const QString& folder) {
  setDirectory(folder);
  if (strangeList_ != nullptr) {
    LookForStrange();
  }
}

void OpenDialog::SetName(const QString& name) {
  name_->setText(name);
  name_->selectAll();
}

void OpenDialog::accept() {
  const QString text = name_->text();
  if (text.isEmpty()) {
    if (strangeList_ != nullptr) {
      ChooseStrange(strangeList_->currentRow());
    }
    return;
  }
  const QModelIndex known = Known(text);
  const QString path = PathOf(text, known.isValid());
  const bool folder =
      known.isValid() ? Listing().isDir(known) : text.endsWith(u'/') && QFileInfo(path).isDir();
  if (folder) {
    name_->completer()->popup()->hide();  // Enter leaves it up
    Enter(path);
    name_->clear();
    return;
  }
  chosen_ = QFile::encodeName(path);
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
