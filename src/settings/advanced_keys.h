// The advanced keys: settings that a person edits by hand in the section "Quorl Setup" of the profile, and
// that the program reads once and never writes. A key that is absent leaves the initial value.
#pragma once

#include <cstdint>

struct AdvancedKeys {
  std::int32_t DiagMode = 0;               // the formatting dialog shows where the profile is
  std::int32_t MruFiles = 1;               // recent files are kept
  std::int32_t MruSearch = 1;              // search histories are kept
  std::int32_t CuaKeyboard = 0;            // Home and End swap their plain and Ctrl meanings
  std::int32_t ShowMessages = 1;           // notes behind truncated and incomplete lines
  std::int32_t PrintMessages = 1;          // the same in print
  std::int32_t FastMouseDelay = 2;         // milliseconds, at least 1
  std::int32_t FastMouseLines = 10;        // lines a tick, at least 0
  std::int32_t SlowMouseDelay = 10;        // milliseconds, at least 1
  std::int32_t SlowMouseLines = 1;         // lines a tick, at least 0
  std::int32_t PageIndexingDelay = 200;    // milliseconds
  std::int32_t PageIndexingBuffer = 8192;  // bytes
  std::int32_t PadLineLength = 0;          // columns: least painted width of a line
  std::int32_t PadPageLength = 0;          // rows of every page of the view; 0: pages keep their length
  std::int32_t ShowPageGap = 0;            // a form feed stands as a line of its own
  char DebugFileName[257] = {};            // held, and used by nothing
};
