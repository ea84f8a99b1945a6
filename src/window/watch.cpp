#include "window/watch.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <vector>

#include "resources/command_ids.h"
#include "window/files/caption.h"
#include "window/main_window_state.h"
#include "window/notice.h"
#include "window/private_messages.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// The wait is not noticed before that: no message is served.
constexpr DWORD kUnnoticedMs = 30;
// A job that has not been begun by then stands behind one that hangs; one that was told to stop has as long.
constexpr milliseconds kPatience{50};
// After that the user is told what the program waits for.
constexpr milliseconds kQuiet{300};
constexpr DWORD kLookAgainMs = 50;

struct Held {
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
};

// What is waited for.
struct Watching {
  std::shared_ptr<LongJob> job;
  WatchProgress progress;
  bool stop = false;   // the user wants it to end
  bool close = false;  // and the window too
  std::vector<Held> held;
};
std::optional<Watching> watching;
std::shared_ptr<LongJob> unwatched;  // the latest one

Reader& TheReader() {
  static Reader reader;
  return reader;
}

// Set when a job has ended; never closed, since a job that was given up may still set it.
HANDLE Ended() {
  static const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  return event;
}

std::shared_ptr<LongJob> Begin(const ReadWork& work) {
  ResetEvent(Ended());
  return TheReader().Start(work, [event = Ended()] { SetEvent(event); });
}

std::string CaptionOf(HWND window) {
  char text[kPathBytes + 64];
  GetWindowTextA(window, text, static_cast<int>(sizeof text));
  return text;
}

// Shows what a wait shows: the cursor at once, caption and notice after a while. All as before at the end.
class Display {
 public:
  Display()
      : classCursor_(SetClassLongPtrA(MainState.MainWindow, GCLP_HCURSOR,
                                      reinterpret_cast<LONG_PTR>(MainState.WaitCursor))),
        cursor_(SetCursor(MainState.WaitCursor)) {}
  ~Display() {
    if (!shown_.empty()) SetWindowTextA(MainState.MainWindow, caption_.c_str());
    if (noticed_) ShowNotice("");
    SetClassLongPtrA(MainState.MainWindow, GCLP_HCURSOR, static_cast<LONG_PTR>(classCursor_));
    SetCursor(cursor_);
  }
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;

  void Update(const Watching& watch) {
    const Clock::time_point now = Clock::now();
    const WatchProgress& progress = watch.progress;
    const FilePos position = progress.position != nullptr ? *progress.position : watch.job->position;
    const FilePos end = progress.end != nullptr ? *progress.end : watch.job->end;
    if (position != position_) moved_ = now;
    position_ = position;
    if (now - moved_ >= kQuiet && !noticed_) {
      noticed_ = true;
      ShowNotice("Waiting for " + FileTitle(MainState.File.Fname) + " (Esc: give up)");
    } else if (now - moved_ < kQuiet && noticed_) {
      noticed_ = false;
      ShowNotice("");
    }
    if (end > 0 && now - begun_ >= kQuiet) ShowCaption(position, end);
  }

 private:
  void ShowCaption(FilePos position, FilePos end) {
    if (shown_.empty()) caption_ = CaptionOf(MainState.MainWindow);
    const std::string text = ProgressCaption(caption_, position, end);
    if (text == shown_) return;
    shown_ = text;
    SetWindowTextA(MainState.MainWindow, text.c_str());
  }

  ULONG_PTR classCursor_;
  HCURSOR cursor_;
  std::string caption_;  // as it was
  std::string shown_;    // empty: as it was
  bool noticed_ = false;
  FilePos position_ = 0;
  Clock::time_point begun_ = Clock::now();
  Clock::time_point moved_ = begun_;
};

// Serves the messages that are there, until the job has ended or is to end.
void ServeMessages() {
  MSG message;
  while (!watching->job->finished && !watching->stop &&
         PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (message.message == WM_QUIT) {
      watching->stop = true;
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    if (TranslateAcceleratorA(MainState.MainWindow, MainState.AccelTable, &message) != 0) continue;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

// Tells the job to stop, and leaves it to itself if it does not.
void EndJob() {
  LongJob& job = *watching->job;
  job.stop = true;
  const Clock::time_point until = Clock::now() + kPatience;
  while (!job.finished && Clock::now() < until) {
    WaitForSingleObject(Ended(), static_cast<DWORD>(kPatience.count()));
    if (!job.finished) ResetEvent(Ended());
  }
  if (!job.finished) TheReader().GiveUp();
}

// Waits in a message loop for a job that takes longer. False when it was given up.
bool WaitNoticed(const ReadWork& work) {
  Display display;
  const HANDLE ended = Ended();
  const Clock::time_point begun = Clock::now();
  bool moved = false;
  while (!watching->job->finished) {
    if (watching->stop) {
      EndJob();
      return false;
    }
    if (!moved && !watching->job->started && Clock::now() - begun >= kPatience) {
      // A job that nobody waits for hangs in front of this one.
      moved = true;
      TheReader().GiveUp();
      std::shared_ptr<LongJob> anew = Begin(work);
      if (anew == nullptr) return false;
      watching->job = std::move(anew);
    }
    display.Update(*watching);
    const DWORD woken = MsgWaitForMultipleObjects(1, &ended, FALSE, kLookAgainMs, QS_ALLINPUT);
    if (woken == WAIT_OBJECT_0) {
      if (!watching->job->finished) ResetEvent(Ended());  // one that was given up has come back
    } else if (woken == WAIT_OBJECT_0 + 1) {
      ServeMessages();
    }
  }
  return true;
}

// Posts again what was held. Who gives a wait up does not want what they asked for meanwhile.
void ReleaseHeld(const std::vector<Held>& held, bool all) {
  for (const Held& one : held) {
    const bool opens = one.message == WM_FILE_OPEN || one.message == WM_FILE_START || one.message == PG_START;
    if (all || opens) PostMessageA(MainState.MainWindow, one.message, one.wParam, one.lParam);
  }
}

bool IsHeld(UINT message, WPARAM wParam) {
  switch (message) {
    case WM_COMMAND:
      return LOWORD(wParam) != IDM_EXIT;
    case WM_DROPFILES:
    case WM_VIEW_LOAD:
    case WM_VIEW_MOVE:
    case WM_VIEW_GOTO:
    case WM_FILE_START:
    case WM_FILE_TRY:
    case WM_FILE_OPEN:
    case PG_START:
      return true;
    default:
      return false;
  }
}

void TellRefusal() {
  MessageBeep(MB_ICONEXCLAMATION);
  ShowNotice("The disk does not answer: " + std::to_string(TheReader().GivenUp()) +
             " reads are still waiting");
}

}  // namespace

WatchEnd RunWatched(const ReadWork& work, const WatchProgress& progress) {
  if (watching) return WatchEnd::refused;
  if (unwatched != nullptr) unwatched->stop = true;
  std::shared_ptr<LongJob> job = Begin(work);
  if (job == nullptr) {
    TellRefusal();
    return WatchEnd::refused;
  }
  watching.emplace();
  watching->job = std::move(job);
  watching->progress = progress;
  WaitForSingleObject(Ended(), kUnnoticedMs);
  const bool waited = watching->job->finished || WaitNoticed(work);
  const Watching over = std::move(*watching);
  watching.reset();
  ReleaseHeld(over.held, waited);
  if (over.close) PostMessageA(MainState.MainWindow, WM_CLOSE, 0, 0);
  if (!waited && !over.stop) {
    TellRefusal();
    return WatchEnd::refused;
  }
  return waited ? WatchEnd::finished : WatchEnd::givenUp;
}

std::shared_ptr<LongJob> StartUnwatched(ReadWork work) {
  unwatched = TheReader().Start(std::move(work));
  return unwatched;
}

bool WatchIsOn() {
  return watching.has_value();
}

bool WatchTakes(UINT message, WPARAM wParam, LPARAM lParam) {
  if (!watching) return false;
  if (message == WM_CLOSE) {
    watching->close = true;
    watching->stop = true;
    return true;
  }
  if (!IsHeld(message, wParam)) return false;
  watching->held.push_back({message, wParam, lParam});
  return true;
}

void GiveUpWatched() {
  if (watching) watching->stop = true;
}

std::string ProgressCaption(const std::string& caption, FilePos position, FilePos end) {
  const double share =
      end > 0 ? static_cast<double>(position.Offset()) / static_cast<double>(end.Offset()) : 0;
  const int percent = std::clamp(static_cast<int>(share * 100), 0, 99);
  return caption + " - " + std::to_string(percent) + " %";
}

void StopReader() {
  TheReader().Stop();
}
