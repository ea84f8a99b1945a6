// The groups of options as they move between memory and the profile: the defaults at start-up, and named
// setups, which are copies of chosen groups in a section of their own. A group that is loaded is read in
// full: keys that the section lacks go to their defaults, or leave the field alone where its unit says so.
// The units of the groups lie in several rooms, and this is the room above them.
#pragma once

#include "marks/titles.h"
#include "print/page_setup.h"
#include "print/printer_settings.h"
#include "settings/advanced_keys.h"
#include "settings/format_options.h"
#include "settings/profile_place.h"
#include "settings/reading_options.h"
#include "settings/recent_lists.h"

// Bits of a mask of groups.
inline constexpr std::int32_t GROUP_FORMAT = 0x0001;
inline constexpr std::int32_t GROUP_TITLES = 0x0002;
inline constexpr std::int32_t GROUP_PAGE = 0x0004;
inline constexpr std::int32_t GROUP_PRINTER = 0x0008;
inline constexpr std::int32_t GROUP_RECENT_FILES = 0x0010;  // load only
inline constexpr std::int32_t GROUP_WINDOW_POS = 0x0020;    // load only
inline constexpr std::int32_t GROUP_COLORS = 0x0100;
inline constexpr std::int32_t GROUP_SHADES = 0x0200;
inline constexpr std::int32_t GROUP_ALL = -1;

// All settings of the program but the colors, which stand in ColorTable, and the tab length, which stands in
// TextTabLength.
struct Settings : ProfilePlace,
                  AdvancedKeys,
                  FormatOptions,
                  ReadingOptions,
                  PageSetup,
                  ChosenPrinter,
                  RecentFileList,
                  RecentSearchLists {
  std::int32_t SaveWhat = 0;  // mask of the setup last saved or loaded
};

// Reads the default sections. Result 1.
int LoadDefaults(Settings& settings);

// The mask of groups that the setup of `section` holds. One without a mask of its own, and so also one that
// does not exist, stands for every group.
[[nodiscard]] std::int32_t SetupGroups(const char* profile, const char* section);

// Reads the setup of `section`; SaveWhat takes its mask. `titles` may be null: then the titles stay.
// Result 1.
int LoadSetup(const char* section, TitleSet* titles, Settings& settings);

// Reads the groups of `mask` from `section`; the recent files always come from their own. Result 1.
int LoadGroups(const char* section, TitleSet* titles, std::int32_t mask, Settings& settings);

// The part of it that is neither colors nor titles.
void LoadOptions(const char* section, std::int32_t mask, Settings& settings);

// What becomes of each group in its default section: it is saved, or its section is deleted, so that the next
// start takes the defaults; a group of neither mask stays as the profile holds it.
struct SaveChoice {
  std::int32_t save = 0;
  std::int32_t reset = 0;
  [[nodiscard]] bool Any() const { return (save | reset) != 0; }
};

// Resets, then saves the groups, in one replacement of the profile. `window` is the present rectangle of the
// window. What is in memory stays as it is. 0, or why nothing was saved.
[[nodiscard]] FileError SaveGroups(const SaveChoice& choice, const RECT* window, const TitleSet& titles,
                                   const Settings& settings);

// Writes the setup of `section`, with the groups of SaveWhat and nothing else, and enters it in the list, in
// one replacement of the profile. `window` is the present rectangle of the window. 0, or why nothing was
// saved.
[[nodiscard]] FileError WriteSetup(const RECT* window, const char* section, const TitleSet& titles,
                                   const Settings& settings);

// Saves the recent files and searches, as far as they are kept, in one replacement of the profile. One that
// could not be written at start-up is left alone. 0, or why it failed.
[[nodiscard]] FileError SaveRecentLists(const Settings& settings);
