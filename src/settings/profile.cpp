#include "settings/profile.h"

#include <algorithm>
#include <cstdio>

#include "platform/paths.h"
#include "settings/profile_values.h"

namespace {

constexpr const char* kSetupSection = "Quorl Setup";

constexpr std::int32_t kNoBound = INT32_MIN;
struct AdvancedKey {
  const char* key;
  std::int32_t AdvancedKeys::*field;
  std::int32_t least;
};
constexpr AdvancedKey kAdvancedKeys[] = {
    {"DiagMode", &AdvancedKeys::DiagMode, kNoBound},
    {"MruFiles", &AdvancedKeys::MruFiles, kNoBound},
    {"MruSearch", &AdvancedKeys::MruSearch, kNoBound},
    {"CuaKeyboard", &AdvancedKeys::CuaKeyboard, kNoBound},
    {"ShowMessages", &AdvancedKeys::ShowMessages, kNoBound},
    {"PrintMessages", &AdvancedKeys::PrintMessages, kNoBound},
    {"FastMouseDelay", &AdvancedKeys::FastMouseDelay, 1},
    {"FastMouseLines", &AdvancedKeys::FastMouseLines, 0},
    {"SlowMouseDelay", &AdvancedKeys::SlowMouseDelay, 1},
    {"SlowMouseLines", &AdvancedKeys::SlowMouseLines, 0},
    {"PageIndexingDelay", &AdvancedKeys::PageIndexingDelay, kNoBound},
    {"PageIndexingBuffer", &AdvancedKeys::PageIndexingBuffer, kNoBound},
    {"PadLineLength", &AdvancedKeys::PadLineLength, kNoBound},
    {"PadPageLength", &AdvancedKeys::PadPageLength, kNoBound},
    {"ShowPageGap", &AdvancedKeys::ShowPageGap, kNoBound},
};

}  // namespace

int LocateProfile(char* path, std::size_t size) {
  if (ReadProfileInt(path, kSetupSection, "MasterProfile", 0) != 1) {
    char own[kPathBytes];
    if (SettingsPath(kProfileName, own, sizeof own) && FileExists(own)) {
      std::snprintf(path, size, "%s", own);
    } else if (!FileExists(path)) {
      std::snprintf(path, size, "%s", kProfileName);
      return 0;
    }
  }
  return FileMayBeWritten(path) ? 0 : -1;
}

std::string ProfileFullPath(const ProfilePlace& place) {
  const char* const path = place.ProfilePath;
  char own[kPathBytes];
  return BaseName(path) == path && SettingsPath(path, own, sizeof own) ? own : path;
}

void ReadAdvancedKeys(const char* profile, AdvancedKeys& keys) {
  for (const auto& [key, field, least] : kAdvancedKeys) {
    keys.*field = std::max(ReadProfileInt(profile, kSetupSection, key, keys.*field), least);
  }
  const std::string name = ReadProfileText(profile, kSetupSection, "DebugFileName", keys.DebugFileName,
                                           sizeof keys.DebugFileName - 1);
  std::snprintf(keys.DebugFileName, sizeof keys.DebugFileName, "%s", name.c_str());
}
