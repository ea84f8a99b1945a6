// The advanced keys: settings that a person edits by hand in the section "Quorl Setup" of the profile, and
// that the program reads once and never writes. A key that is absent leaves the initial value; a number out
// of its bounds becomes the nearest one within them.
#pragma once

#include <cstdint>
#include <limits>

struct AdvancedKeys {
  std::int32_t DiagMode = 0;               // the formatting dialog shows where the profile is
  std::int32_t MruFiles = 1;               // recent files are kept
  std::int32_t MruSearch = 1;              // search histories are kept
  std::int32_t CuaKeyboard = 0;            // Home and End swap their plain and Ctrl meanings
  std::int32_t ShowMessages = 1;           // notes behind truncated and incomplete lines
  std::int32_t PrintMessages = 1;          // the same in print
  std::int32_t FastMouseDelay = 2;         // milliseconds
  std::int32_t FastMouseLines = 10;        // lines a tick
  std::int32_t SlowMouseDelay = 10;        // milliseconds
  std::int32_t SlowMouseLines = 1;         // lines a tick
  std::int32_t PageIndexingDelay = 200;    // milliseconds
  std::int32_t PageIndexingBuffer = 8192;  // bytes
  std::int32_t PadLineLength = 0;          // columns: least painted width of a line
  std::int32_t PadPageLength = 0;          // rows of every page of the view; 0: pages keep their length
  std::int32_t ShowPageGap = 0;            // a form feed stands as a line of its own
  char DebugFileName[257] = {};            // held, and used by nothing
};

struct AdvancedKey {
  const char* key;
  std::int32_t AdvancedKeys::*field;
  std::int32_t least = std::numeric_limits<std::int32_t>::min();  // of a switch: only 0 counts
  std::int32_t most = std::numeric_limits<std::int32_t>::max();
};
inline constexpr AdvancedKey kAdvancedKeys[] = {
    {"DiagMode", &AdvancedKeys::DiagMode},
    {"MruFiles", &AdvancedKeys::MruFiles},
    {"MruSearch", &AdvancedKeys::MruSearch},
    {"CuaKeyboard", &AdvancedKeys::CuaKeyboard},
    {"ShowMessages", &AdvancedKeys::ShowMessages},
    {"PrintMessages", &AdvancedKeys::PrintMessages},
    {"FastMouseDelay", &AdvancedKeys::FastMouseDelay, 1, 60'000},
    {"FastMouseLines", &AdvancedKeys::FastMouseLines, 0, 1000},
    {"SlowMouseDelay", &AdvancedKeys::SlowMouseDelay, 1, 60'000},
    {"SlowMouseLines", &AdvancedKeys::SlowMouseLines, 0, 1000},
    {"PageIndexingDelay", &AdvancedKeys::PageIndexingDelay, 0, 60'000},
    {"PageIndexingBuffer", &AdvancedKeys::PageIndexingBuffer, 1, 1 << 20},
    {"PadLineLength", &AdvancedKeys::PadLineLength, 0, 32'767},  // as long as a line can be
    {"PadPageLength", &AdvancedKeys::PadPageLength, 0, 8191},    // a quarter of the largest run
    {"ShowPageGap", &AdvancedKeys::ShowPageGap},
};
