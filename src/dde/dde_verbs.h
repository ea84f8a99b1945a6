// What the verbs of command strings do. The verbs are one table; what they act on is told by who runs them.
#pragma once

#include <string_view>

#include "dde/dde_command.h"
#include "platform/win32.h"
#include "search/search_engine.h"

// What a string was answered with.
enum class DdeAnswer : std::uint8_t {
  accepted,      // all of it was a command, and has run or will
  notProcessed,  // a command could not be understood; those in front of it have run
  busy,          // the viewer cannot do what it asks at this moment: nothing has run
};

// What commands act on.
class DdeHost {
 public:
  virtual ~DdeHost() = default;
  // Whether a dialog is up, or work goes on that a command could disturb.
  [[nodiscard]] virtual bool IsBusy() const = 0;
  virtual void Open(const char* path) = 0;
  virtual void Close() = 0;  // the window, once the string is done
  // Runs a command, by its name: at once, or once the string is done. Some are told that another program
  // asks.
  virtual void Send(std::string_view command) = 0;
  virtual void Post(std::string_view command, bool forOthers) = 0;
  virtual void Show(int how) = 0;  // an SW_ number
  virtual SearchState& Search() = 0;
  // The code that the file is read in, where that is of VO_UNICODE; else 0.
  [[nodiscard]] virtual ViewOptions FileCode() const = 0;
  // The setup of that section becomes the current one. False: the name is too long.
  virtual bool SetSetup(std::string_view section) = 0;
};

// Runs the commands of a string. Verbs and words are found without regard to ASCII case.
[[nodiscard]] DdeAnswer RunDdeString(std::string_view text, DdeHost& host);
