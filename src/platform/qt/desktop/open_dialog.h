// The toolkit's dialog for a file to open, kept from looking at files in the thread of the windows: a file
// may lie where an answer takes minutes. What is typed or chosen is handed back as an absolute path unseen,
// and only what the listing at hand knows as a folder is entered. It knows nothing of the program's records.
#pragma once

#include <QFileDialog>
#include <QFileIconProvider>
#include <QPersistentModelIndex>
#include <memory>
#include <string>
#include <vector>

class QFileSystemModel;
class QLabel;
class QLineEdit;
class QListView;
class QListWidget;
class QStringListModel;

namespace platform_qt {

// Two pictures, for folders and for all else; the toolkit's own would read a file to tell what it is.
class PlainIcons : public QFileIconProvider {
 public:
  PlainIcons();
  using QFileIconProvider::icon;
  [[nodiscard]] QIcon icon(const QFileInfo& info) const override;
  [[nodiscard]] QString type(const QFileInfo& info) const override;

 private:
  QIcon folder_;
  QIcon file_;
};

class OpenDialog : public QFileDialog {
 public:
  // The icons are used by a thread of the dialog, and must outlive it.
  OpenDialog(QWidget* parent, PlainIcons& icons);

  void Enter(const QString& folder);
  void SetName(const QString& name);
  // The path chosen, once the dialog was accepted, in the bytes that the system has for it.
  [[nodiscard]] const QByteArray& Chosen() const { return chosen_; }

 protected:
  void accept() override;

 private:
  [[nodiscard]] const QFileSystemModel& Listing() const;
  [[nodiscard]] QModelIndex Known(const QString& text) const;
  [[nodiscard]] QString PathOf(QString text, bool known) const;
  void TakeSelection();
  void TakeEdit();
  void AddStrangeList();
  void LookForStrange();
  void ShowStrange();
  void ChooseStrange(int row);

  // Names of a folder that the toolkit cannot hold, as a thread finds them.
  struct StrangeNames;

  QLineEdit* name_;
  QListView* list_;
  QStringListModel* offered_;            // names that the field completes
  QPersistentModelIndex offeredFolder_;  // where they lie
  QByteArray chosen_;
  QLabel* strangeLabel_ = nullptr;  // both are hidden where there are no such names
  QListWidget* strangeList_ = nullptr;
  std::shared_ptr<StrangeNames> strange_;
};

}  // namespace platform_qt
