// What the session bus offers of a running viewer beside command strings (which are DDEML's, see ddeml.h),
// and how one program speaks to the viewers there. Operations of this layer's own: a system without such a
// bus offers nothing, and finds nobody.
//
// On the bus a viewer owns org.quorl.Quorl, if no other one does, and org.quorl.Quorl.Instance<its process
// number>. Its object /org/quorl/Quorl has the interfaces org.quorl.Viewer and org.freedesktop.Application,
// whose introspection data tells their members (freedesktop.org, "D-Bus Activation" of desktop entries).
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// What others may know of the viewer.
struct BusState {
  std::string file;           // the path; empty: none is open
  std::int64_t length = 0;    // bytes
  std::int64_t position = 0;  // of the first byte on the screen
  std::string format;         // "Text", "Hex Dump", "Raw Text"
  bool busy = false;          // a dialog or a job is up
  bool operator==(const BusState&) const = default;
};

// What came of a request: an answer, or why there is none.
struct BusResult {
  const char* error = nullptr;  // the last part of its name on the bus: "NotFound"; null: there is an answer
  std::string why;              // in words
  std::int64_t position = 0;    // bytes
  std::vector<std::string> texts;
};

struct BusHost {
  std::function<BusState()> state;
  std::function<void()> activate;                       // brings the window in front
  std::function<void(const std::string& path)> open;    // not called while the state is busy
  std::function<bool(const std::string& name)> action;  // false: there is none of that name
  // These are not called while the state is busy, and return when all is done.
  std::function<BusResult(const std::string& key, const std::vector<std::string>& options)> find;
  std::function<BusResult(const std::string& place)> goTo;
  std::function<BusResult()> rows;  // those on the screen
  std::function<BusResult()> copy;  // the selection, in one text
  std::function<void()> cancel;     // a search or a load that goes on; called at any time
};

// What the service offers from DdeNameService on; the window's thread only.
void OfferOnBus(BusHost host);
// The state may have changed: who listens is told, if it has.
void PublishBusState();

// The client's side. It needs no window and no display.
struct BusViewer {
  std::int64_t process = 0;
  std::int64_t started = 0;  // milliseconds since 1970
  std::string file;
};
// The viewers that serve, the one that was started last in front. Nothing when there is no bus.
[[nodiscard]] std::optional<std::vector<BusViewer>> ViewersOnBus();

enum class BusAnswer : std::uint8_t { accepted, refused, nobody };
// Sends a command string to the viewer of that process, and waits for the answer; `why` gets the words of a
// refusal.
[[nodiscard]] BusAnswer SendOverBus(std::int64_t process, const std::string& commands, std::string& why);
