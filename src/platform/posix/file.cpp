#include "platform/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <system_error>

#include "platform/posix/file_counters.h"
#include "platform/posix/uninterrupted.h"

static_assert(sizeof(off_t) == sizeof(std::int64_t), "file offsets are 64 bits wide");

namespace {

bool IsReadableKind(const struct stat& status) {
  return S_ISREG(status.st_mode) || S_ISBLK(status.st_mode);
}

FileError KindError(const struct stat& status) {
  if (S_ISDIR(status.st_mode)) return EISDIR;
  return IsReadableKind(status) ? 0 : kFileOfWrongKind;
}

}  // namespace

FileCounters& CountersOfFiles() {
  static FileCounters counters;
  return counters;
}

std::string FileErrorText(FileError error) {
  if (error == kFileOfWrongKind) return "Not a regular file or block device";
  return error == kFileNoMemory ? std::generic_category().message(ENOMEM)
                                : std::generic_category().message(error);
}

FileHandle FileOpenShared(const char* path, FileError& error) {
  // The kind is asked before the open, since opening alone can already act: a tape rewinds, a terminal
  // becomes the controlling one. It is asked again behind it, since the name may mean something else by then.
  struct stat status {};
  error = stat(path, &status) != 0 ? errno : KindError(status);
  if (error != 0) return kNoFile;
  const int file = Uninterrupted([path] { return open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); });
  if (file < 0) {
    error = errno;
    return kNoFile;
  }
  error = fstat(file, &status) != 0 ? errno : KindError(status);
  if (error != 0) {
    close(file);
    return kNoFile;
  }
  ++CountersOfFiles().opened;
  return file;
}

FileError FileAsk(FileHandle file, FileFacts& facts) {
  const int descriptor = static_cast<int>(file);
  struct stat status {};
  if (fstat(descriptor, &status) != 0) return errno;
  facts.volume = status.st_dev;
  facts.number = status.st_ino;
  facts.changed = std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
  facts.length = status.st_size;
  if (S_ISREG(status.st_mode)) return 0;
  // A block device tells its length only by its end. Which device it is, its own number tells.
  facts.volume = status.st_rdev;
  facts.changed = 0;
  facts.length = lseek(descriptor, 0, SEEK_END);
  return facts.length < 0 ? errno : 0;
}

FileError FileReadAt(FileHandle file, std::int64_t offset, void* buffer, std::size_t count,
                     std::size_t& got) {
  constexpr auto kLongest = static_cast<std::size_t>(std::numeric_limits<ssize_t>::max());
  const std::size_t wanted = std::min(count, kLongest);
  FileError error = 0;
  got = 0;
  while (got < wanted) {
    char* const place = static_cast<char*>(buffer) + got;
    const off_t from = offset + static_cast<off_t>(got);
    const ssize_t read =
        Uninterrupted([&] { return pread(static_cast<int>(file), place, wanted - got, from); });
    if (read < 0) error = errno;
    if (read <= 0) break;
    got += static_cast<std::size_t>(read);
  }
  ++CountersOfFiles().reads;
  CountersOfFiles().bytesRead += static_cast<std::int64_t>(got);
  return error;
}

void FileClose(FileHandle file) {
  if (file != kNoFile) {
    close(static_cast<int>(file));
  }
}
