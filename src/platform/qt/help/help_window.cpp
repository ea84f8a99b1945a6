#include "platform/qt/help/help_window.h"

#include <QAction>
#include <QGuiApplication>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QHelpSearchQueryWidget>
#include <QHelpSearchResultWidget>
#include <QLineEdit>
#include <QScreen>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>

namespace platform_qt {

namespace {

// Of the program's pages the contents come first.
constexpr const char* kFirstPage = "context-16";

// Shows what lies in the book, and nothing else.
class BookBrowser : public QTextBrowser {
 public:
  explicit BookBrowser(const QHelpEngine& engine) : engine_(engine) { setOpenLinks(true); }

 protected:
  QVariant loadResource(int /*type*/, const QUrl& name) override {
    return engine_.fileData(name.isRelative() ? source().resolved(name) : name);
  }

 private:
  const QHelpEngine& engine_;
};

}  // namespace

std::unique_ptr<HelpWindow> HelpWindow::Open(const QString& book, QString& why) {
  std::unique_ptr<HelpWindow> window(new HelpWindow);
  window->engine_ = std::make_unique<QHelpEngine>(window->folder_.filePath(QStringLiteral("book.qhc")));
  QHelpEngine& engine = *window->engine_;
  if (!window->folder_.isValid()) {
    why = window->folder_.errorString();
    return nullptr;
  }
  engine.setReadOnly(false);
  if (!engine.setupData() || !engine.registerDocumentation(book) || !engine.setupData()) {
    why = engine.error();
    return nullptr;
  }
  window->Build();
  return window;
}

HelpWindow::~HelpWindow() {
  // The widgets ask the engine until they are gone.
  delete takeCentralWidget();
}

void HelpWindow::Build() {
  browser_ = new BookBrowser(*engine_);
  auto* const side = new QTabWidget;
  side->addTab(engine_->contentWidget(), QStringLiteral("&Contents"));
  connect(engine_->contentWidget(), &QHelpContentWidget::linkActivated, browser_,
          [this](const QUrl& link) { browser_->setSource(link); });

  auto* const index = new QWidget;
  auto* const column = new QVBoxLayout(index);
  auto* const word = new QLineEdit;
  word->setPlaceholderText(QStringLiteral("Word of the index"));
  word->setClearButtonEnabled(true);
  column->addWidget(word);
  column->addWidget(engine_->indexWidget());
  connect(word, &QLineEdit::textChanged, engine_->indexWidget(),
          [this](const QString& text) { engine_->indexWidget()->filterIndices(text); });
  connect(word, &QLineEdit::returnPressed, engine_->indexWidget(),
          [this] { engine_->indexWidget()->activateCurrentItem(); });
  connect(engine_->indexWidget(), &QHelpIndexWidget::documentActivated, browser_,
          [this](const QHelpLink& link) { browser_->setSource(link.url); });
  connect(engine_->indexWidget(), &QHelpIndexWidget::documentsActivated, browser_,
          [this](const QList<QHelpLink>& links) { browser_->setSource(links.front().url); });
  side->addTab(index, QStringLiteral("&Index"));
  AddSearch(*side);
  fields_ = {engine_->contentWidget(), word, engine_->searchEngine()->queryWidget()};
  side_ = side;
  side->tabBar()->installEventFilter(this);

  auto* const halves = new QSplitter;
  halves->addWidget(side);
  halves->addWidget(browser_);
  halves->setStretchFactor(1, 1);
  halves->setSizes({280, 720});
  setCentralWidget(halves);
  AddActions();
  connect(browser_, &QTextBrowser::sourceChanged, this,
          [this] { setWindowTitle(browser_->documentTitle() + QStringLiteral(" - Quorl Help")); });
  const QSize room = screen()->availableSize();
  resize(QSize(1000, 700).boundedTo(room * 9 / 10));
}

void HelpWindow::AddSearch(QTabWidget& side) {
  QHelpSearchEngine* const search = engine_->searchEngine();
  auto* const page = new QWidget;
  auto* const column = new QVBoxLayout(page);
  column->addWidget(search->queryWidget());
  column->addWidget(search->resultWidget(), 1);
  connect(search->queryWidget(), &QHelpSearchQueryWidget::search, search,
          [search] { search->search(search->queryWidget()->searchInput()); });
  connect(search->resultWidget(), &QHelpSearchResultWidget::requestShowLink, browser_,
          [this](const QUrl& link) { browser_->setSource(link); });
  side.addTab(page, QStringLiteral("&Search"));
  search->reindexDocumentation();
}

void HelpWindow::AddActions() {
  QToolBar* const bar = addToolBar(QStringLiteral("Pages"));
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  const auto add = [this, bar](const char* text, const QList<QKeySequence>& keys, auto act) {
    auto* const action = new QAction(QString::fromUtf8(text), this);
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, browser_, act);
    addAction(action);
    if (action->text().isEmpty()) {
      return action;
    }
    bar->addAction(action);
    return action;
  };
  QAction* const back = add("&Back", {QKeySequence(QKeySequence::Back)}, [this] { browser_->backward(); });
  QAction* const forward =
      add("&Forward", {QKeySequence(QKeySequence::Forward)}, [this] { browser_->forward(); });
  add("C&ontents", {QKeySequence(Qt::ALT | Qt::Key_Home)},
      [this] { ShowPage(QString::fromUtf8(kFirstPage)); });
  add("", {QKeySequence(QKeySequence::ZoomIn), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
      [this] { browser_->zoomIn(); });
  add("", {QKeySequence(QKeySequence::ZoomOut)}, [this] { browser_->zoomOut(); });
  add("", {QKeySequence(Qt::Key_Escape)}, [this] { close(); });
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
}

// The key of a tab leads to the tab's field, also where the tab is in front already.
bool HelpWindow::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::Shortcut || event->type() == QEvent::MouseButtonRelease) {
    QMetaObject::invokeMethod(
        this,
        [this] {
          fields_[static_cast<std::size_t>(side_->currentIndex())]->setFocus(Qt::ShortcutFocusReason);
        },
        Qt::QueuedConnection);
  }
  return QMainWindow::eventFilter(object, event);
}

bool HelpWindow::ShowPage(const QString& id) {
  const QList<QHelpLink> links = engine_->documentsForIdentifier(id);
  if (links.isEmpty()) {
    return false;
  }
  browser_->setSource(links.front().url);
  showNormal();
  raise();
  activateWindow();
  browser_->setFocus();
  return true;
}

QUrl HelpWindow::Page() const {
  return browser_->source();
}

}  // namespace platform_qt
