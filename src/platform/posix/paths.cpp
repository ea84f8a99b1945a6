#include "platform/paths.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/posix/profile_store.h"
#include "platform/win32.h"

FileError FullPath(const char* name, char* full, std::size_t size) {
  if (*name == '\0') return ENOENT;
  std::string path;
  if (*name != '/') {
    char current[kPathBytes];
    // A current directory that was removed, or that lies outside the root, has no absolute path.
    if (getcwd(current, sizeof current) == nullptr || current[0] != '/') return ENOENT;
    path = current;
    if (path.back() != '/') {
      path += '/';
    }
  }
  path += name;
  if (path.size() >= size) return ENAMETOOLONG;
  std::memcpy(full, path.c_str(), path.size() + 1);
  return 0;
}

const char* BaseName(const char* path) {
  const char* const slash = std::strrchr(path, '/');
  return slash != nullptr ? slash + 1 : path;
}

DWORD GetModuleFileNameA(HMODULE module, LPSTR path, DWORD size) {
  if (module != nullptr || size == 0) {
    return 0;
  }
  const ssize_t length = readlink("/proc/self/exe", path, size);
  if (length < 0) {
    path[0] = '\0';
    return 0;
  }
  // A path that fills the field is cut, as the operation says, and the result is then the size itself.
  const auto used = static_cast<DWORD>(length);
  if (used == size) {
    path[size - 1] = '\0';
    return size;
  }
  path[used] = '\0';
  return used;
}

bool SettingsPath(const char* name, char* full, std::size_t size) {
  std::string path;
  // A relative path there is not valid and counts as none.
  const char* const settings = std::getenv("XDG_CONFIG_HOME");
  if (settings != nullptr && *settings == '/') {
    path = settings;
  } else {
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home != '/') {
      const passwd* const user = getpwuid(getuid());
      home = user != nullptr ? user->pw_dir : nullptr;
    }
    if (home == nullptr || *home != '/') {
      return false;
    }
    path = std::string(home) + "/.config";
  }
  path += "/quorl/";
  path += name;
  if (path.size() >= size) {
    return false;
  }
  std::memcpy(full, path.c_str(), path.size() + 1);
  return true;
}

bool FileExists(const char* path) {
  struct stat status {};
  return stat(path, &status) == 0 && !S_ISDIR(status.st_mode);
}

bool FileMayBeWritten(const char* path) {
  const std::string target = FollowLinks(path);
  struct stat status {};
  if (target.empty() || stat(target.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return false;
  }
  // The file is replaced, not written over, so its folder must be open to us too.
  const std::string folder = target.substr(0, target.size() - std::strlen(BaseName(target.c_str()))) + ".";
  return ProfileModeAllowsWrite(target, status) &&
         faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}
