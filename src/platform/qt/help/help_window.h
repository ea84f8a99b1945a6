// The window of the help book: its pages, with their contents, an index and a search beside them. It stands
// for itself, so that it neither holds up the program nor is held up by a dialog.
#pragma once

#include <QMainWindow>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>
#include <array>
#include <memory>

class QHelpEngine;
class QTabWidget;
class QTextBrowser;

namespace platform_qt {

class HelpWindow : public QMainWindow {
 public:
  // Opens a book. Null when it is not there or cannot be read; then `why` is in words.
  [[nodiscard]] static std::unique_ptr<HelpWindow> Open(const QString& book, QString& why);
  ~HelpWindow() override;
  HelpWindow(const HelpWindow&) = delete;
  HelpWindow& operator=(const HelpWindow&) = delete;

  // Shows the page that the book has for `id`, and brings the window in front. False: there is no such page.
  bool ShowPage(const QString& id);
  // The page that is shown.
  [[nodiscard]] QUrl Page() const;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  HelpWindow() = default;
  void Build();
  void AddSearch(QTabWidget& side);
  void AddActions();

  QTemporaryDir folder_;  // the toolkit keeps what it makes of the book in files
  std::unique_ptr<QHelpEngine> engine_;
  QTextBrowser* browser_ = nullptr;
  QTabWidget* side_ = nullptr;
  std::array<QWidget*, 3> fields_{};  // in which what is looked for is typed or chosen, one for each tab
};

}  // namespace platform_qt
