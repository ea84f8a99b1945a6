// What makes everyday reading easier, each of which a key of the section "Quorl Reading" turns off. They are
// saved with the display options.
#pragma once

#include <cstdint>

#include "platform/file.h"

struct ReadingOptions {
  std::int32_t StatusLine = 1;  // the line at the window's foot
  std::int32_t LightHits = 1;   // hits of the search are lit within their rows
};

struct ReadingKey {
  const char* key;
  std::int32_t ReadingOptions::*field;  // a switch: 0 or another number
};
inline constexpr ReadingKey kReadingKeys[] = {
    {"StatusLine", &ReadingOptions::StatusLine},
    {"LightHits", &ReadingOptions::LightHits},
};

inline constexpr const char* kReadingSection = "Quorl Reading";

// Absent keys stand for the initial values.
void LoadReading(const char* profile, ReadingOptions& options);

// Writes what differs from what the profile says. 0, or why it failed.
[[nodiscard]] FileError SaveReading(const char* profile, const ReadingOptions& options);
