#include "settings/recent_lists.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "platform/profile_batch.h"
#include "platform/win32.h"
#include "settings/profile_values.h"

namespace {

constexpr const char* kFilesSection = "MRU Files";
constexpr const char* kFileStem = "File";
constexpr const char* kSearchSection = "MRU Search";

std::string NumberedKey(const char* stem, int number) {
  return stem + std::to_string(number);
}

using Strings = std::vector<std::string>;

// The entries of a list, `width` bytes each.
struct Slots {
  const char* first;
  std::size_t width;
  [[nodiscard]] const char* At(int slot) const { return first + static_cast<std::size_t>(slot) * width; }
};

void AddOnce(Strings& strings, const std::string& text) {
  if (!text.empty() && std::ranges::find(strings, text) == strings.end()) strings.push_back(text);
}

// What the profile holds in keys 1 to `count`.
Strings StoredStrings(const char* profile, const char* section, const char* stem, int count,
                      std::size_t width) {
  Strings strings;
  for (int number = 1; number <= count; ++number)
    AddOnce(strings, ReadProfileText(profile, section, NumberedKey(stem, number).c_str(), "", width - 1));
  return strings;
}

// Writes the merged list. Result: the number of its entries.
int WriteMerged(const char* profile, const char* section, const char* stem, Slots own, int touched,
                const Strings& stored, int capacity) {
  Strings merged;
  for (int slot = 0; slot < touched; ++slot) {
    if (std::strchr(own.At(slot), '\n') == nullptr) AddOnce(merged, own.At(slot));
  }
  for (const std::string& text : stored)
    AddOnce(merged, text);
  merged.resize(std::min(merged.size(), static_cast<std::size_t>(capacity)));
  for (std::size_t i = 0; i < merged.size(); ++i)
    WriteProfileText(profile, section, NumberedKey(stem, static_cast<int>(i) + 1).c_str(), merged[i]);
  return static_cast<int>(merged.size());
}

int StoredCount(const char* profile, const char* section, const char* stem, int capacity) {
  return std::clamp(ReadProfileInt(profile, section, (std::string(stem) + 's').c_str(), 0), 0, capacity);
}

void WriteSearches(const char* profile, const char* stem, Slots own, int touched) {
  if (touched == 0) return;
  const int known = StoredCount(profile, kSearchSection, stem, kRecentStrings);
  const Strings stored = StoredStrings(profile, kSearchSection, stem, known, own.width);
  const int count = WriteMerged(profile, kSearchSection, stem, own, touched, stored, kRecentStrings);
  WriteProfileInt(profile, kSearchSection, (std::string(stem) + 's').c_str(), count);
}

}  // namespace

std::size_t TouchRecentList(char* list, int capacity, std::size_t width, int index, char* text,
                            std::int32_t& touched) {
  const auto slot = [list, width](int number) { return list + static_cast<std::size_t>(number) * width; };
  if (index >= 0) {
    std::memcpy(text, slot(index), width);
  } else {
    text[std::min(std::strlen(text), width - 1)] = '\0';
    for (index = 0; index < capacity - 1 && std::strcmp(slot(index), text) != 0; ++index) {
    }
  }
  if (index >= touched) ++touched;
  std::memmove(slot(1), slot(0), static_cast<std::size_t>(index) * width);
  const std::size_t length = std::strlen(text);
  std::memset(slot(0), 0, width);
  std::memcpy(slot(0), text, length);
  return length;
}

void TouchRecentFile(RecentFileList& recent, const char* path) {
  static char text[kPathBytes];
  std::snprintf(text, sizeof text, "%s", path);
  TouchRecentList(recent.RecentFiles[0], kRecentFiles, kPathBytes, -1, text, recent.RecentFilesTouched);
  recent.RecentFileCount = 0;
  while (recent.RecentFileCount < kRecentFiles && recent.RecentFiles[recent.RecentFileCount][0] != '\0') {
    ++recent.RecentFileCount;
  }
}

void LoadRecentFiles(const char* profile, std::int32_t enabled, RecentFileList& recent) {
  recent = RecentFileList{};
  if (enabled == 0) return;
  for (const std::string& path : StoredStrings(profile, kFilesSection, kFileStem, kRecentFiles, kPathBytes))
    path.copy(recent.RecentFiles[recent.RecentFileCount++], kPathBytes - 1);
}

int LoadRecentStrings(const char* profile, const char* section, const char* stem, char* list, int capacity,
                      std::size_t width) {
  const int count = StoredCount(profile, section, stem, capacity);
  for (int number = 1; number <= count; ++number) {
    char* const slot = list + static_cast<std::size_t>(number - 1) * width;
    GetPrivateProfileStringA(section, NumberedKey(stem, number).c_str(), "", slot, static_cast<DWORD>(width),
                             profile);
  }
  return count;
}

FileError SaveRecentSearches(const char* profile, const RecentSearchLists& recent) {
  if (recent.RecentTextsTouched == 0 && recent.RecentHexTouched == 0) return 0;
  return SaveProfile(profile, [profile, &recent] {
    WriteSearches(profile, "Text", {recent.RecentTexts[0], kRecentTextBytes}, recent.RecentTextsTouched);
    WriteSearches(profile, "Hex", {recent.RecentHex[0], kRecentHexBytes}, recent.RecentHexTouched);
  });
}

FileError SaveRecentFiles(const char* profile, const RecentFileList& recent) {
  if (recent.RecentFilesTouched == 0) return 0;
  return SaveProfile(profile, [profile, &recent] {
    const Strings stored = StoredStrings(profile, kFilesSection, kFileStem, kRecentFiles, kPathBytes);
    WriteMerged(profile, kFilesSection, kFileStem, {recent.RecentFiles[0], kPathBytes},
                recent.RecentFilesTouched, stored, kRecentFiles);
  });
}
