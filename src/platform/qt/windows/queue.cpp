#include "platform/qt/windows/queue.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEvent>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <deque>
#include <optional>
#include <vector>

#include "platform/qt/base/hooks.h"
#include "platform/qt/windows/window.h"

namespace platform_qt {

namespace {

using Clock = std::chrono::steady_clock;

// A program that posts without end must not starve the toolkit: after this long it gets a turn.
constexpr auto kLongestWithoutToolkit = std::chrono::milliseconds(20);

struct InputMessage {
  MSG message;
  int modifiers;
};

struct Timer {
  HWND window;
  UINT_PTR id;
  std::chrono::milliseconds interval;
  Clock::time_point due;
};

// Serves the queue when the toolkit runs a loop of its own, in which TakeMessage does not come by.
class Doorbell : public QObject {
 public:
  Doorbell() {
    alarm_.setSingleShot(true);
    alarm_.setTimerType(Qt::PreciseTimer);
    connect(&alarm_, &QTimer::timeout, this, [this] { ServeAll(); });
  }

  void Ring() {
    if (!rung_) {
      rung_ = true;
      QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }
  }
  void SetAlarm(std::chrono::milliseconds delay) { alarm_.start(delay); }
  void StopAlarm() { alarm_.stop(); }

 protected:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::User) {
      return QObject::event(event);
    }
    rung_ = false;
    ServeAll();
    return true;
  }

 private:
  static void ServeAll();

  bool rung_ = false;
  QTimer alarm_;
};

struct Queue {
  std::deque<MSG> posted;
  std::deque<InputMessage> input;
  std::vector<Timer> timers;
  std::optional<int> quit;
  int modifiers = 0;
  int pumping = 0;  // calls of the toolkit's event processing under way
  Clock::time_point lastPump;
  std::optional<Doorbell> doorbell;
};

// Never destroyed: the toolkit's objects in it must not outlive the toolkit at the end of the process.
Queue& queue = *new Queue;

MSG MessageOf(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto now = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now().time_since_epoch());
  return {window, message, wParam, lParam, static_cast<DWORD>(now.count()), {0, 0}};
}

Doorbell& Bell() {
  if (!queue.doorbell) {
    queue.doorbell.emplace();
  }
  return *queue.doorbell;
}

void ArmAlarm() {
  if (queue.timers.empty() || hooks.timersStandStill) {
    if (queue.doorbell) {
      queue.doorbell->StopAlarm();
    }
    return;
  }
  const auto first = std::min_element(queue.timers.begin(), queue.timers.end(),
                                      [](const Timer& a, const Timer& b) { return a.due < b.due; });
  const auto delay = std::chrono::ceil<std::chrono::milliseconds>(first->due - Clock::now());
  Bell().SetAlarm(std::max(delay, std::chrono::milliseconds(0)));
}

void PumpToolkit(bool wait) {
  ++queue.pumping;
  if (wait) {
    ArmAlarm();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  } else {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
  }
  --queue.pumping;
  queue.lastPump = Clock::now();
}

void SyncSizes() {
  const std::vector<HWND> windows(AllWindows());  // a window may go while it is told
  for (HWND window : windows) {
    if (IsWindowAlive(window)) {
      window->SyncSize();
    }
  }
}

bool TakePosted(MSG& message) {
  if (queue.posted.empty()) {
    return false;
  }
  message = queue.posted.front();
  queue.posted.pop_front();
  return true;
}

bool TakeQuit(MSG& message) {
  if (!queue.quit || !queue.posted.empty()) {
    return false;
  }
  message = MessageOf(nullptr, WM_QUIT, static_cast<WPARAM>(*queue.quit), 0);
  queue.quit.reset();
  return true;
}

bool TakeInput(MSG& message) {
  if (queue.input.empty()) {
    return false;
  }
  message = queue.input.front().message;
  queue.modifiers = queue.input.front().modifiers;
  queue.input.pop_front();
  if (IsWindowAlive(message.hwnd)) {
    message.hwnd->NoteInput(message);
  }
  return true;
}

HWND WindowToPaint() {
  const std::vector<HWND>& windows = AllWindows();
  const auto found = std::find_if(windows.begin(), windows.end(), PaintPending);
  return found != windows.end() ? *found : nullptr;
}

bool TakePaint(MSG& message) {
  const HWND window = WindowToPaint();
  if (window != nullptr) {
    message = MessageOf(window, WM_PAINT, 0, 0);
  }
  return window != nullptr;
}

bool TimerIsDue() {
  const auto now = Clock::now();
  return !hooks.timersStandStill && std::any_of(queue.timers.begin(), queue.timers.end(),
                                                [now](const Timer& timer) { return timer.due <= now; });
}

bool TakeTimer(MSG& message) {
  if (queue.timers.empty() || hooks.timersStandStill) {
    return false;
  }
  const auto first = std::min_element(queue.timers.begin(), queue.timers.end(),
                                      [](const Timer& a, const Timer& b) { return a.due < b.due; });
  const auto now = Clock::now();
  if (first->due > now) {
    return false;
  }
  first->due = now + first->interval;
  message = MessageOf(first->window, WM_TIMER, first->id, 0);
  return true;
}

// Serves what is there, without the toolkit: for the loops that the toolkit runs by itself. A quit closes
// the toolkit's dialog; the message loop behind it then meets the quit.
void Doorbell::ServeAll() {
  if (QThread::currentThread()->loopLevel() == 0) {
    return;
  }
  SyncSizes();
  MSG message{};
  while (TakePosted(message) ||
         (!queue.quit && (TakeInput(message) || TakePaint(message) || TakeTimer(message)))) {
    Serve(message);
  }
  if (queue.quit) {
    if (QWidget* const dialog = QApplication::activeModalWidget()) {
      dialog->close();
    }
  }
  ArmAlarm();
}

}  // namespace

bool PostCharacterOf(const MSG& message) {
  if (message.message != WM_KEYDOWN) {
    return false;
  }
  const bool control = (MessageModifiers() & kControlDown) != 0;
  const bool alt = (MessageModifiers() & kAltDown) != 0;
  const WPARAM key = message.wParam;
  WPARAM character = 0;
  switch (key) {
    case VK_BACK:
      character = control ? 0x7F : 0x08;
      break;
    case 0x09:
      character = 0x09;
      break;
    case 0x0D:
      character = control ? 0x0A : 0x0D;
      break;
    case VK_ESCAPE:
      character = 0x1B;
      break;
    default:
      if (control && key >= 'A' && key <= 'Z') {
        character = key - 'A' + 1;
      }
      break;
  }
  if (character == 0 || alt) {
    return false;
  }
  return AppendPosted(message.hwnd, WM_CHAR, character, message.lParam);
}

LRESULT Deliver(const MSG& message) {
  if (message.message != kHeldInput) {
    return CallProcedure(message.hwnd, message.message, message.wParam, message.lParam);
  }
  return IsWindowAlive(message.hwnd) ? message.hwnd->DeliverHeld(message.lParam) : 0;
}

void Serve(const MSG& message) {
  PostCharacterOf(message);
  Deliver(message);
}

Taken TakeMessage(MSG& message, bool wait, const bool* stop) {
  bool pumped = Clock::now() - queue.lastPump > kLongestWithoutToolkit;
  if (pumped) {
    PumpToolkit(false);
  }
  for (;;) {
    if (stop != nullptr && *stop) {
      return Taken::nothing;
    }
    SyncSizes();
    if (TakePosted(message)) {
      return Taken::message;
    }
    if (TakeQuit(message)) {
      return Taken::quit;
    }
    // Input that the toolkit has not handed over yet still comes before a paint.
    if (queue.input.empty() && !pumped) {
      PumpToolkit(false);
      pumped = true;
      continue;
    }
    if (TakeInput(message) || TakePaint(message) || TakeTimer(message)) {
      return Taken::message;
    }
    if (!wait) {
      return Taken::nothing;
    }
    PumpToolkit(true);
    pumped = true;
  }
}

bool AppendPosted(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (!IsWindowAlive(window)) {
    return false;
  }
  queue.posted.push_back(MessageOf(window, message, wParam, lParam));
  if (queue.pumping > 0) {
    Bell().Ring();
  }
  return true;
}

void AppendQuit(int exitCode) {
  queue.quit = exitCode;
}

void AppendInput(HWND window, UINT message, WPARAM wParam, LPARAM lParam, int modifiers) {
  const InputMessage entry{MessageOf(window, message, wParam, lParam), modifiers};
  if (!queue.input.empty()) {
    const MSG& last = queue.input.back().message;
    const bool moves =
        message == WM_MOUSEMOVE || ((message == WM_VSCROLL || message == WM_HSCROLL) &&
                                    LOWORD(wParam) == SB_THUMBTRACK && LOWORD(last.wParam) == SB_THUMBTRACK);
    if (moves && last.message == message && last.hwnd == window) {
      queue.input.back() = entry;
      return;
    }
  }
  queue.input.push_back(entry);
  if (queue.pumping > 0) {
    Bell().Ring();
  }
}

int MessageModifiers() {
  return queue.modifiers;
}

bool WaitForMessage(std::chrono::milliseconds longest, const std::atomic<bool>& stop) {
  const Clock::time_point until = Clock::now() + longest;
  PumpToolkit(false);
  for (;;) {
    SyncSizes();
    if (stop || !QueueIsIdle() || TimerIsDue()) return !stop;
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now());
    if (rest.count() <= 0) return false;
    // An alarm of the toolkit's own wakes it in time, and so does who sets `stop`.
    QTimer alarm;
    alarm.setTimerType(Qt::PreciseTimer);
    alarm.start(rest);
    PumpToolkit(true);
  }
}

void WakeFromAnyThread() {
  if (QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance(qApp->thread())) {
    dispatcher->wakeUp();
  }
}

void ForgetWindow(HWND window) {
  std::erase_if(queue.posted, [window](const MSG& message) { return message.hwnd == window; });
  std::erase_if(queue.input, [window](const InputMessage& entry) { return entry.message.hwnd == window; });
  std::erase_if(queue.timers, [window](const Timer& timer) { return timer.window == window; });
}

bool QueueIsIdle() {
  return queue.posted.empty() && queue.input.empty() && !queue.quit && WindowToPaint() == nullptr;
}

void StartTimer(HWND window, UINT_PTR id, std::chrono::milliseconds interval) {
  StopTimer(window, id);
  queue.timers.push_back({window, id, interval, Clock::now() + interval});
  if (queue.pumping > 0) {
    ArmAlarm();
  }
}

bool StopTimer(HWND window, UINT_PTR id) {
  return std::erase_if(queue.timers,
                       [&](const Timer& timer) { return timer.window == window && timer.id == id; }) != 0;
}

bool HasTimer(HWND window, UINT_PTR id) {
  return std::any_of(queue.timers.begin(), queue.timers.end(),
                     [&](const Timer& timer) { return timer.window == window && timer.id == id; });
}

void ClearQueue() {
  queue.posted.clear();
  queue.input.clear();
  queue.timers.clear();
  queue.quit.reset();
  queue.doorbell.reset();
}

}  // namespace platform_qt
