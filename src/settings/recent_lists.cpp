#include "settings/recent_lists.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "platform/profile_batch.h"
#include "platform/win32.h"
#include "settings/profile_values.h"

namespace {

constexpr const char* kFilesSection = "MRU Files";
constexpr const char* kSearchSection = "MRU Search";

std::string NumberedKey(const char* stem, int number) {
  return stem + std::to_string(number);
}

template <std::size_t kWidth>
void SaveStrings(const char* profile, const char* stem, const char (&list)[kRecentStrings][kWidth],
                 int count) {
  if (count < 0) return;
  WriteProfileInt(profile, kSearchSection, (std::string(stem) + 's').c_str(), count);
  for (int number = 1; number <= count; ++number) {
    WriteProfileText(profile, kSearchSection, NumberedKey(stem, number).c_str(), list[number - 1]);
  }
}

}  // namespace

std::size_t TouchRecentList(char* list, int capacity, std::size_t width, int index, char* text) {
  const auto slot = [list, width](int number) { return list + static_cast<std::size_t>(number) * width; };
  if (index >= 0) {
    std::memcpy(text, slot(index), width);
  } else {
    text[std::min(std::strlen(text), width - 1)] = '\0';
    for (index = 0; index < capacity - 1 && std::strcmp(slot(index), text) != 0; ++index) {
    }
  }
  std::memmove(slot(1), slot(0), static_cast<std::size_t>(index) * width);
  const std::size_t length = std::strlen(text);
  std::memset(slot(0), 0, width);
  std::memcpy(slot(0), text, length);
  return length;
}

void TouchRecentFile(RecentFileList& recent, const char* path) {
  static char text[kPathBytes];
  std::snprintf(text, sizeof text, "%s", path);
  TouchRecentList(recent.RecentFiles[0], kRecentFiles, kPathBytes, -1, text);
  recent.RecentFileCount = 0;
  while (recent.RecentFileCount < kRecentFiles && recent.RecentFiles[recent.RecentFileCount][0] != '\0') {
    ++recent.RecentFileCount;
  }
}

void LoadRecentFiles(const char* profile, std::int32_t enabled, RecentFileList& recent) {
  recent.RecentFileCount = 0;
  if (enabled == 0) return;
  for (int number = 1; number <= kRecentFiles; ++number) {
    char* const slot = recent.RecentFiles[recent.RecentFileCount];
    GetPrivateProfileStringA(kFilesSection, NumberedKey("File", number).c_str(), "", slot, kPathBytes,
                             profile);
    if (slot[0] != '\0') ++recent.RecentFileCount;
  }
}

int LoadRecentStrings(const char* profile, const char* section, const char* stem, char* list, int capacity,
                      std::size_t width) {
  const std::string countKey = std::string(stem) + 's';
  const int count = std::clamp(ReadProfileInt(profile, section, countKey.c_str(), 0), 0, capacity);
  for (int number = 1; number <= count; ++number) {
    char* const slot = list + static_cast<std::size_t>(number - 1) * width;
    GetPrivateProfileStringA(section, NumberedKey(stem, number).c_str(), "", slot, static_cast<DWORD>(width),
                             profile);
  }
  return count;
}

int SaveRecentSearches(const ProfilePlace& place, std::int32_t enabled, const RecentSearchLists& recent) {
  if (place.ProfileReadOnly != 0 || enabled == 0) return 0;
  const ProfileBatch batch(place.ProfilePath);
  SaveStrings(place.ProfilePath, "Text", recent.RecentTexts, recent.RecentTextCount);
  SaveStrings(place.ProfilePath, "Hex", recent.RecentHex, recent.RecentHexCount);
  return 1;
}

int SaveRecentFiles(const ProfilePlace& place, std::int32_t enabled, const RecentFileList& recent) {
  if (place.ProfileReadOnly != 0 || enabled == 0) return 0;
  const ProfileBatch batch(place.ProfilePath);
  int number = 0;
  for (int slot = 0; slot < recent.RecentFileCount; ++slot) {
    const char* const path = recent.RecentFiles[slot];
    if (std::strchr(path, '\n') != nullptr) continue;
    WriteProfileText(place.ProfilePath, kFilesSection, NumberedKey("File", ++number).c_str(), path);
  }
  return 1;
}
