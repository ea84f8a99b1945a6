#include "platform/printing/document_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>

#include "platform/posix/size_limit.h"

namespace platform_printing {

namespace {

constexpr mode_t kOrdinaryRights = 0666;  // less what the user's mask takes away
constexpr mode_t kRightsBits = 07777;
constexpr int kTriesForName = 100;
constexpr char kOpenFiles[] = "/proc/self/fd";  // by way of which a nameless file can be linked

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

// The file behind all links; the path itself where there is none yet.
std::string EndOfLinks(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr), &std::free);
  return resolved != nullptr ? resolved.get() : path;
}

std::string NameAside(const std::string& target) {
  char name[32];
  std::random_device random;
  std::snprintf(name, sizeof name, ".quorl-%08x", static_cast<unsigned>(random()));
  return FolderOf(target) + (FolderOf(target).back() == '/' ? "" : "/") + name;
}

// A link that leads nowhere cannot be replaced without losing it.
FileError CheckTarget(const std::string& target) {
  struct stat status {};
  if (stat(target.c_str(), &status) != 0) {
    if (errno != ENOENT) return errno;
    return lstat(target.c_str(), &status) == 0 ? ENOENT : 0;
  }
  if (!S_ISREG(status.st_mode)) return kFileOfWrongKind;
  return access(target.c_str(), W_OK) == 0 ? 0 : errno;
}

// Gives the file aside the rights of the one that it will replace, if there is one. What has them already is
// left alone: not every file system can change them.
FileError TakeRights(const std::string& target, int file) {
  struct stat former {};
  struct stat present {};
  if (stat(target.c_str(), &former) != 0) return 0;
  if (fstat(file, &present) != 0) return errno;
  const mode_t rights = former.st_mode & kRightsBits;
  return rights == (present.st_mode & kRightsBits) || fchmod(file, rights) == 0 ? 0 : errno;
}

}  // namespace

FileError DocumentFile::Begin(const std::string& path) {
  Abort();
  IgnoreSizeLimitSignal();
  target_ = EndOfLinks(path);
  FileError error = CheckTarget(target_);
  if (error == 0) error = OpenAside();
  if (error == 0) error = TakeRights(target_, file_);
  if (error != 0) Abort();
  return error;
}

FileError DocumentFile::OpenAside() {
#ifdef O_TMPFILE
  if (access(kOpenFiles, X_OK) == 0) {
    file_ = open(FolderOf(target_).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, kOrdinaryRights);
    if (file_ >= 0) return 0;
    if (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL) return errno;
  }
#endif
  for (int i = 0; i < kTriesForName; ++i) {
    aside_ = NameAside(target_);
    file_ = open(aside_.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kOrdinaryRights);
    if (file_ >= 0) return 0;
    if (errno != EEXIST) break;
  }
  aside_.clear();
  return errno;
}

FileError DocumentFile::Write(const void* bytes, std::size_t count) {
  const char* place = static_cast<const char*>(bytes);
  while (count > 0) {
    const ssize_t written = write(file_, place, count);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    if (written == 0) return ENOSPC;
    place += written;
    count -= static_cast<std::size_t>(written);
  }
  return 0;
}

// Links the nameless file into the folder, from where it can be moved onto the target.
FileError DocumentFile::GiveName() {
  if (!aside_.empty()) return 0;
  const std::string self = std::string(kOpenFiles) + "/" + std::to_string(file_);
  for (int i = 0; i < kTriesForName; ++i) {
    const std::string name = NameAside(target_);
    if (linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
      aside_ = name;
      return 0;
    }
    if (errno != EEXIST) break;
  }
  return errno;
}

FileError DocumentFile::Finish() {
  FileError error = fsync(file_) == 0 ? 0 : errno;
  if (error == 0) error = GiveName();
  if (error == 0 && std::rename(aside_.c_str(), target_.c_str()) != 0) error = errno;
  if (error == 0) aside_.clear();
  Abort();
  return error;
}

void DocumentFile::Abort() {
  if (file_ >= 0) close(file_);
  file_ = -1;
  if (!aside_.empty()) unlink(aside_.c_str());
  aside_.clear();
}

}  // namespace platform_printing
