#include "settings/profile.h"

#include <algorithm>
#include <cstdio>

#include "platform/paths.h"
#include "settings/profile_values.h"

namespace {

constexpr const char* kSetupSection = "Quorl Setup";

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
  for (const auto& [key, field, least, most] : kAdvancedKeys)
    keys.*field = std::clamp(ReadProfileInt(profile, kSetupSection, key, keys.*field), least, most);
  const std::string name = ReadProfileText(profile, kSetupSection, "DebugFileName", keys.DebugFileName,
                                           sizeof keys.DebugFileName - 1);
  std::snprintf(keys.DebugFileName, sizeof keys.DebugFileName, "%s", name.c_str());
}
