// How a printed page looks: what its heading holds, its margins, what ends a page and what is shaded; and the
// units in which a person reads and types a margin. One record, which the main window's state includes.
#pragma once

#include <cstdint>

#include "platform/file.h"

// Bits of PrintOptions.
inline constexpr std::uint32_t PO_DATE_TIME = 0x0001;    // the heading holds the date and time
inline constexpr std::uint32_t PO_PAGE_NUMBER = 0x0002;  // the heading holds the page number
inline constexpr std::uint32_t PO_FILE_NAME = 0x0004;    // the heading holds the file's name
inline constexpr std::uint32_t PO_FULL_PATH = 0x0008;    // the same with its folder; wins
inline constexpr std::uint32_t PO_EJECT_ON_FF = 0x0100;  // a form feed ends the page
inline constexpr std::uint32_t PO_PAGE_TITLES = 0x0200;  // frozen titles stand on every page
inline constexpr std::uint32_t PO_SHADE_TAGS = 0x0400;   // tagged lines, titles and notes have their shades
inline constexpr std::uint32_t PO_SHADE_SELECTION = 0x0800;  // the selection is printed inverted

// Bits of the profile's number that count. Those above are of a single job.
inline constexpr std::uint32_t kStoredPrintOptions = 0x0FFF;

inline constexpr std::int32_t kMostMargin = 10'000;  // hundredths of an inch, more than any paper has

struct PageSetup {
  std::uint32_t PrintOptions = 0x06FF;
  std::int32_t MarginTop = 0;  // hundredths of an inch
  std::int32_t MarginLeft = 50;
  std::int32_t MarginRight = 0;
  std::int32_t MarginBottom = 0;
};

// A unit of margins, which are shown and typed as fixed-point numbers.
struct MarginUnit {
  const char* caption;  // of the group of fields
  std::int32_t decimals;
  std::int32_t MarginLimit;  // the largest margin that may be typed, as such a number
  std::int32_t shownTimes, shownBy;
  std::int32_t storedTimes, storedBy;

  // The number that shows a margin of hundredths of an inch, and back. Both drop a remainder. What is typed
  // in centimetres is shown again unchanged; a margin in hundredths of an inch may change by a few of them.
  [[nodiscard]] constexpr std::int32_t Shown(std::int32_t margin) const {
    return margin * shownTimes / shownBy;
  }
  [[nodiscard]] constexpr std::int32_t Stored(std::int32_t shown) const {
    return shown * storedTimes / storedBy;
  }
};
inline constexpr MarginUnit kInches = {"Margins (in)", 2, 300, 1, 1, 1, 1};
inline constexpr MarginUnit kCentimetres = {"Margins (cm)", 1, 75, 2540, 10027, 1018, 254};

// Reads the group from a section of the profile. An absent key leaves its fields alone; a margin is bounded
// to 0 and kMostMargin. Result 1.
int LoadPageSetup(const char* profile, const char* section, PageSetup& setup);

// Writes the group. 0, or why it failed.
[[nodiscard]] FileError SavePageSetup(const char* profile, const char* section, const PageSetup& setup);
