// The recent lists: fixed lists of strings, the newest first, the one rule by which an entry moves to the
// front, and the merge with what another viewer has saved meanwhile. Knows no window and no menu.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/file.h"
#include "platform/paths.h"

inline constexpr int kRecentFiles = 4;

struct RecentFileList {
  char RecentFiles[kRecentFiles][kPathBytes] = {};
  std::int32_t RecentFileCount = 0;     // entries in use, from the front
  std::int32_t RecentFilesTouched = 0;  // those of them that this viewer has moved to the front
};

inline constexpr int kRecentStrings = 10;

// Bytes of the longest key of a search. As hex text a byte takes two digits, and a blank behind them.
inline constexpr std::int32_t kSearchKeyBytes = 4096;
inline constexpr std::size_t kRecentTextBytes = kSearchKeyBytes + 1;
inline constexpr std::size_t kRecentHexBytes = 3 * kSearchKeyBytes + 1;

// The search histories. A count of -1: the list has not been read from the profile yet, and is not written.
struct RecentSearchLists {
  char RecentTexts[kRecentStrings][kRecentTextBytes] = {};
  char RecentHex[kRecentStrings][kRecentHexBytes] = {};
  std::int32_t RecentTextCount = -1;
  std::int32_t RecentHexCount = -1;
  std::int32_t RecentTextsTouched = 0;  // entries, from the front, that this viewer has moved there
  std::int32_t RecentHexTouched = 0;
};

// Moves an entry to the front of `list`, a block of `capacity` slots of `width` bytes. With `index` 0 or
// more it is that entry, and it is copied to `text`. With a negative index it is the first slot that equals
// `text` (case counts; slots behind the count are looked at too), or, with no such slot, a new entry that
// pushes the last one out. `text` is a buffer of at least `width` bytes, and is cut to width - 1 characters.
// `touched`, the number of entries in front that were moved there, is kept up to date. Result: the length of
// the string that now stands in front.
std::size_t TouchRecentList(char* list, int capacity, std::size_t width, int index, char* text,
                            std::int32_t& touched);

// Moves `path` to the front of the recent files and counts them anew.
void TouchRecentFile(RecentFileList& recent, const char* path);

// Reads the recent files. Gaps between the keys close up, and what stands twice counts once. With `enabled` 0
// the list is empty.
void LoadRecentFiles(const char* profile, std::int32_t enabled, RecentFileList& recent);

// Reads a search history, `capacity` slots of `width` bytes: the count stands in the key "<stem>s", the
// entries in "<stem>1" and on. Result: the count, 0 to `capacity`.
int LoadRecentStrings(const char* profile, const char* section, const char* stem, char* list, int capacity,
                      std::size_t width);

// Write the lists that were touched, merged with what the profile holds by now: what was touched here comes
// first, in its order, and then the entries of the profile. Keys above the count stay in the file. A string
// with a line feed, which no profile can hold, is left out. 0, or why it failed.
[[nodiscard]] FileError SaveRecentSearches(const char* profile, const RecentSearchLists& recent);
[[nodiscard]] FileError SaveRecentFiles(const char* profile, const RecentFileList& recent);
