#include "platform/qt/desktop/toolkit.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QSocketNotifier>
#include <QStyleFactory>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include "platform/posix/command_words.h"
#include "platform/posix/system_colors.h"
#include "platform/program.h"
#include "platform/qt/drawing/fonts.h"
#include "platform/qt/windows/main_window.h"
#include "platform/qt/windows/queue.h"

namespace platform_qt {

namespace {

constexpr int kNoDisplay = -2;

struct Toolkit {
  std::string name;
  int argumentCount = 1;
  char* arguments[2] = {};
  std::unique_ptr<QApplication> application;
};

Toolkit* toolkit = nullptr;
bool comesUp = false;

// The toolkit talks about what concerns its developers. Who asks for that by the toolkit's own variables
// gets it; a user of the program does not.
void TakeToolkitMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
  static const bool wanted =
      qEnvironmentVariableIsSet("QT_LOGGING_RULES") || qEnvironmentVariableIsSet("QT_DEBUG_PLUGINS");
  if (type == QtFatalMsg && comesUp) {
    std::fputs("quorl: no display: the window system cannot be reached\n", stderr);
    std::_Exit(kNoDisplay & 0xFF);
  }
  if (wanted || type == QtFatalMsg) {
    std::fprintf(stderr, "quorl: %s\n", qPrintable(text));
  }
}

// A theme plugin can bring a second toolkit with it, which costs more than the whole program. Where the
// desktop would ask for one, the toolkit's own built-in theme serves.
void AvoidThemePlugins() {
  const QByteArray desktop = qgetenv("XDG_CURRENT_DESKTOP").toUpper();
  const bool builtIn = desktop.contains("KDE") || desktop.contains("LXQT");
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORMTHEME") && !builtIn) {
    qputenv("QT_QPA_PLATFORMTHEME", desktop.isEmpty() ? "generic" : "gnome");
  }
}

void TakeDesktopColors() {
  const QPalette palette = QApplication::palette();
  const auto take = [&palette](int index, QPalette::ColorRole role) {
    SetSystemColor(index, ColorOf(palette.color(QPalette::Active, role).rgb()));
  };
  take(COLOR_BACKGROUND, QPalette::Mid);
  take(COLOR_APPWORKSPACE, QPalette::Mid);
  take(COLOR_MENU, QPalette::Window);
  take(COLOR_MENUTEXT, QPalette::WindowText);
  take(COLOR_WINDOW, QPalette::Base);
  take(COLOR_WINDOWTEXT, QPalette::Text);
  take(COLOR_HIGHLIGHT, QPalette::Highlight);
  take(COLOR_HIGHLIGHTTEXT, QPalette::HighlightedText);
}

// Tells windows whose resolution is another one than before: the desktop has changed its scale, or they
// have come to another screen.
void TellScale() {
  for (MainWindow* window : MainWindows()) {
    const int dots = window->target.DotsPerInch();
    if (std::exchange(window->toldDotsPerInch, dots) == dots) {
      continue;
    }
    // The toolkit counts in other pixels now, but leaves the window as it is until its size changes.
    if (!window->frame->isMaximized()) window->frame->resize(window->frame->size() + QSize(1, 1));
    window->SyncSize();
    PostMessageA(window, WM_DPICHANGED, MAKEWPARAM(static_cast<WORD>(dots), static_cast<WORD>(dots)), 0);
  }
}

void WatchScreen(QScreen* screen) {
  QObject::connect(screen, &QScreen::logicalDotsPerInchChanged, screen, &TellScale, Qt::QueuedConnection);
}

void WatchScreens(QObject* parent) {
  for (QScreen* const screen : QGuiApplication::screens()) {
    WatchScreen(screen);
  }
  QObject::connect(qApp, &QGuiApplication::screenAdded, parent, &WatchScreen);
}

// The desktop has changed its colors, as from day to night; or a window has come to another screen.
class DesktopWatch : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* object, QEvent* event) override {
    if (object == QCoreApplication::instance() && event->type() == QEvent::ApplicationPaletteChange) {
      TakeDesktopColors();
      for (MainWindow* window : MainWindows()) {
        PostMessageA(window, WM_SYSCOLORCHANGE, 0, 0);
      }
    }
    if (event->type() == QEvent::ScreenChangeInternal) {
      QMetaObject::invokeMethod(this, &TellScale, Qt::QueuedConnection);
    }
    return false;
  }
};

// Signals that end a process close the windows instead, so that everything goes its orderly way. They are
// blocked in all threads and read from a descriptor: one that were delivered to a thread whose read hangs
// would wait as long as the read.
void CloseAllWindows(int descriptor) {
  signalfd_siginfo one;
  while (read(descriptor, &one, sizeof one) > 0) {
  }
  for (MainWindow* window : MainWindows()) {
    PostMessageA(window, WM_CLOSE, 0, 0);
  }
}

// To be called before any thread is started, for a thread inherits what is blocked. The descriptor; below 0:
// they are not caught.
int BlockEndingSignals() {
  sigset_t ending;
  sigemptyset(&ending);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction former {};
    // What was ignored on purpose (nohup) stays so.
    if (sigaction(signal, nullptr, &former) == 0 && former.sa_handler != SIG_IGN) {
      sigaddset(&ending, signal);
    }
  }
  const int descriptor = signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
  return descriptor >= 0 && pthread_sigmask(SIG_BLOCK, &ending, nullptr) == 0 ? descriptor : -1;
}

void CloseWindowsAt(int descriptor, QObject* parent) {
  if (descriptor < 0) {
    return;
  }
  auto* const notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, parent);
  QObject::connect(notifier, &QSocketNotifier::activated, parent,
                   [descriptor] { CloseAllWindows(descriptor); });
}

}  // namespace

void StartToolkit(const char* programName) {
  qInstallMessageHandler(TakeToolkitMessage);
  AvoidThemePlugins();
  toolkit = new Toolkit;
  toolkit->name = programName;
  // The words of the command line are the program's; the toolkit sees none of them.
  toolkit->arguments[0] = toolkit->name.data();
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setQuitOnLastWindowClosed(false);
  comesUp = true;
  toolkit->application = std::make_unique<QApplication>(toolkit->argumentCount, toolkit->arguments);
  comesUp = false;
  QApplication::setApplicationName(QStringLiteral("quorl"));
  QGuiApplication::setDesktopFileName(QStringLiteral("org.quorl.Quorl"));
  QApplication::setQuitOnLastWindowClosed(false);
  TakeDesktopColors();
  WatchScreens(toolkit->application.get());
  toolkit->application->installEventFilter(new DesktopWatch(toolkit->application.get()));
}

void StopToolkit() {
  const std::vector<HWND> windows(AllWindows());
  for (HWND window : windows) {
    DestroyWindow(window);
  }
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  ClearQueue();
  ForgetStockFont();
  delete toolkit;
  toolkit = nullptr;
}

}  // namespace platform_qt

using namespace platform_qt;

int RunWithoutDisplay(int argc, char** argv, const std::function<int()>& run) {
  const QCoreApplication application(argc, argv);
  return run();
}

int RunProgram(int argc, char** argv, ProgramEntry entry) {
  StoreCommandWords(argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>());
  const int descriptor = BlockEndingSignals();
  StartToolkit(argc > 0 ? argv[0] : "quorl");
  CloseWindowsAt(descriptor, toolkit->application.get());
  char nothing[1] = "";
  const int exitCode = entry(nullptr, nullptr, nothing, SW_SHOWNORMAL);
  StopToolkit();
  return exitCode;
}
