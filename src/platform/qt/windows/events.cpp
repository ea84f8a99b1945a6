// Events: how another thread wakes the window's.
#include <atomic>
#include <cassert>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include "platform/qt/windows/queue.h"
#include "platform/win32.h"

namespace {

struct Event {
  std::atomic<bool> set{false};
  std::mutex guard;
  std::condition_variable changed;
};

Event& EventOf(HANDLE handle) {
  return *static_cast<Event*>(handle);
}

}  // namespace

HANDLE CreateEventA(SECURITY_ATTRIBUTES* security, BOOL manualReset, BOOL set, LPCSTR name) {
  assert(security == nullptr && manualReset != FALSE && name == nullptr);
  static_cast<void>(security);
  static_cast<void>(manualReset);
  static_cast<void>(name);
  auto* const event = new Event;
  event->set = set != FALSE;
  return event;
}

BOOL SetEvent(HANDLE handle) {
  Event& event = EventOf(handle);
  {
    const std::scoped_lock lock(event.guard);
    event.set = true;
  }
  event.changed.notify_all();
  platform_qt::WakeFromAnyThread();
  return TRUE;
}

BOOL ResetEvent(HANDLE handle) {
  EventOf(handle).set = false;
  return TRUE;
}

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
  Event& event = EventOf(handle);
  std::unique_lock lock(event.guard);
  const bool set = event.changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                                          [&event] { return event.set.load(); });
  return set ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}

DWORD MsgWaitForMultipleObjects(DWORD count, const HANDLE* events, BOOL all, DWORD milliseconds,
                                DWORD kinds) {
  assert(count <= 1 && all == FALSE && kinds == QS_ALLINPUT);
  static_cast<void>(all);
  static_cast<void>(kinds);
  static const Event kNever{};
  const Event& event = count == 1 ? EventOf(events[0]) : kNever;
  if (event.set) return WAIT_OBJECT_0;
  const bool message = platform_qt::WaitForMessage(std::chrono::milliseconds(milliseconds), event.set);
  if (event.set) return WAIT_OBJECT_0;
  return message ? WAIT_OBJECT_0 + count : WAIT_TIMEOUT;
}
