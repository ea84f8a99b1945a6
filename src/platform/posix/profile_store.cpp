#include "platform/posix/profile_store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <utility>

#include "platform/paths.h"
#include "platform/posix/uninterrupted.h"

namespace {

// A save waits this long for another viewer's save, which takes some milliseconds, and fails after that.
constexpr int kLockTries = 500;
constexpr std::int64_t kLockPauseNs = 2'000'000;
constexpr int kMostLinks = 40;
constexpr mode_t kFolderMode = 0700;
constexpr mode_t kNewFileMode = 0644;

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  [[nodiscard]] int Number() const { return number_; }
  [[nodiscard]] bool IsOpen() const { return number_ >= 0; }
  // Closes it and tells whether that went well: on some file systems a full disk shows only here.
  [[nodiscard]] bool Close() { return close(std::exchange(number_, -1)) == 0; }

 private:
  int number_;
};

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// Creates the folder and those above it that are missing. One that is there may be one that nothing can be
// created beside, so that only what it looks like afterwards counts.
FileError MakeFolders(const std::string& folder) {
  for (std::size_t slash = folder.find('/', 1);; slash = folder.find('/', slash + 1)) {
    const std::string part = folder.substr(0, slash);
    const FileError error = mkdir(part.c_str(), kFolderMode) == 0 ? 0 : errno;
    struct stat status {};
    if (error != 0 && (stat(part.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))) return error;
    if (slash == std::string::npos) return 0;
  }
}

enum class Lock { Held, Unsupported, Busy };

std::int64_t NowNs() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * std::int64_t{1'000'000'000} + now.tv_nsec;
}

void Pause(std::int64_t ns) {
  const timespec pause{0, static_cast<long>(ns)};
  nanosleep(&pause, nullptr);
}

// When this process last gave the lock back. Many saves in a row leave gaps in which another viewer, which
// looks from time to time, finds the lock free.
std::int64_t theLastSaveNs = 0;

void LeaveAGap() {
  if (theLastSaveNs != 0 && NowNs() - theLastSaveNs < kLockPauseNs) Pause(2 * kLockPauseNs);
}

// The folder carries the lock, not the file, since the file is another one after each save. It goes with the
// descriptor, so that a killed viewer leaves none behind. Some network file systems lock no folders; a save
// there is still in one step, but two at the same moment may lose a key.
Lock LockFolder(int folder) {
  for (int tries = 0; tries < kLockTries; ++tries) {
    if (Uninterrupted([folder] { return flock(folder, LOCK_EX | LOCK_NB); }) == 0) return Lock::Held;
    if (errno != EWOULDBLOCK) return Lock::Unsupported;
    Pause(kLockPauseNs);
  }
  return Lock::Busy;
}

FileError WriteAll(int file, const std::string& text) {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t wrote = Uninterrupted([&] { return write(file, text.data() + done, text.size() - done); });
    if (wrote <= 0) return wrote < 0 ? errno : EIO;
    done += static_cast<std::size_t>(wrote);
  }
  return 0;
}

// Writes a new file of that name with the text and the owner and mode of the `old` one.
FileError WriteAside(int folder, const std::string& name, const std::string& text, const struct stat* old) {
  unlinkat(folder, name.c_str(), 0);
  constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  const mode_t mode = old == nullptr ? kNewFileMode : 0600;
  Descriptor file(Uninterrupted([&] { return openat(folder, name.c_str(), kFlags, mode); }));
  if (!file.IsOpen()) return errno;
  if (old != nullptr) {
    // The owner can be kept by root only. Who may write a file of somebody else becomes its owner, and keeps
    // its group if he can.
    if (fchown(file.Number(), old->st_uid, old->st_gid) != 0) {
      static_cast<void>(fchown(file.Number(), static_cast<uid_t>(-1), old->st_gid) == 0);
    }
    if (fchmod(file.Number(), old->st_mode & 0777) != 0) return errno;
  }
  if (const FileError error = WriteAll(file.Number(), text); error != 0) return error;
  return fsync(file.Number()) == 0 && file.Close() ? 0 : errno;
}

FileError ReplaceFile(int folder, Lock lock, const std::string& name, const std::string& text,
                      const struct stat* old) {
  // Under the lock the name aside is ours, and what a killed save left there is removed by the next one.
  std::string aside = '.' + name + ".new";
  if (lock != Lock::Held) aside += std::to_string(getpid());
  FileError error = WriteAside(folder, aside, text, old);
  if (error == 0 && renameat(folder, aside.c_str(), folder, name.c_str()) != 0) error = errno;
  if (error != 0) {
    unlinkat(folder, aside.c_str(), 0);
    return error;
  }
  // A power failure before this is done brings the old file back, and never a piece.
  static_cast<void>(fsync(folder));
  return 0;
}

bool IsUtf16(const std::string& text) {
  return text.compare(0, 2, "\xFF\xFE") == 0 || text.compare(0, 2, "\xFE\xFF") == 0;
}

// The text of an open profile; the reason where it is none.
FileError ReadProfile(int file, ProfileText& profile) {
  if (fstat(file, &profile.status) != 0) return errno;
  if (!S_ISREG(profile.status.st_mode)) return kFileOfWrongKind;
  if (profile.status.st_size > static_cast<off_t>(kLongestProfile)) return EFBIG;
  // One byte more than the length, so that the read tells whether the file has grown meanwhile.
  std::string text(static_cast<std::size_t>(profile.status.st_size) + 1, '\0');
  std::size_t have = 0;
  for (;;) {
    const ssize_t got = Uninterrupted([&] { return read(file, text.data() + have, text.size() - have); });
    if (got < 0) return errno;
    if (got == 0) break;
    have += static_cast<std::size_t>(got);
    if (have > kLongestProfile) return EFBIG;
    if (have == text.size()) text.resize(text.size() * 2);
  }
  text.resize(have);
  if (IsUtf16(text)) return EILSEQ;
  profile.text = std::move(text);
  return 0;
}

}  // namespace

std::string FollowLinks(const std::string& path) {
  std::string here = path;
  for (int links = 0; links < kMostLinks; ++links) {
    char target[kPathBytes];
    const ssize_t length = readlink(here.c_str(), target, sizeof target);
    if (length < 0) return here;
    if (length == static_cast<ssize_t>(sizeof target)) return {};
    const std::string next(target, static_cast<std::size_t>(length));
    here = next.front() == '/' ? next : FolderOf(here) + '/' + next;
  }
  return {};
}

std::string ProfilePathOf(const char* file) {
  if (BaseName(file) != file) return file;
  char path[kPathBytes];
  return SettingsPath(file, path, sizeof path) ? path : "";
}

bool ProfileModeAllowsWrite(const std::string& path, const struct stat& status) {
  return (status.st_mode & 0222) != 0 && faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

ProfileText LoadProfileText(const std::string& path) {
  ProfileText profile;
  const Descriptor file(
      Uninterrupted([&path] { return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
  profile.reason = file.IsOpen() ? ReadProfile(file.Number(), profile) : errno;
  const bool absent = !file.IsOpen() && (profile.reason == ENOENT || profile.reason == ENOTDIR);
  profile.kind = absent                ? ProfileKind::Absent
                 : profile.reason == 0 ? ProfileKind::Loaded
                                       : ProfileKind::Unusable;
  return profile;
}

FileError ReplaceProfileText(const std::string& path, bool makeFolder,
                             const std::function<bool(std::string& text)>& edit) {
  const std::string target = FollowLinks(path);
  if (target.empty()) return ELOOP;
  const std::string folderPath = FolderOf(target);
  constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
  const auto openFolder = [&folderPath] { return open(folderPath.c_str(), kFlags); };
  int number = Uninterrupted(openFolder);
  if (number < 0 && errno == ENOENT) {
    std::string nothing;
    if (!edit(nothing)) return 0;
    if (!makeFolder) return ENOENT;
    if (const FileError error = MakeFolders(folderPath); error != 0) return error;
    number = Uninterrupted(openFolder);
  }
  const Descriptor folder(number);
  if (!folder.IsOpen()) return errno;
  LeaveAGap();
  const Lock lock = LockFolder(folder.Number());
  if (lock == Lock::Busy) return EBUSY;

  ProfileText profile = LoadProfileText(target);
  if (profile.kind == ProfileKind::Unusable) return profile.reason;
  if (!edit(profile.text)) return 0;
  const bool exists = profile.kind == ProfileKind::Loaded;
  if (exists && !ProfileModeAllowsWrite(target, profile.status)) return EACCES;
  if (profile.text.size() > kLongestProfile) return EFBIG;
  const FileError error = ReplaceFile(folder.Number(), lock, BaseName(target.c_str()), profile.text,
                                      exists ? &profile.status : nullptr);
  theLastSaveNs = NowNs();
  return error;
}
