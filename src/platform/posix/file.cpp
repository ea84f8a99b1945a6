#include "platform/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "platform/posix/file_counters.h"

static_assert(sizeof(off_t) == sizeof(std::int64_t), "file offsets are 64 bits wide");

namespace {

bool IsReadableKind(const struct stat& status) {
  return S_ISREG(status.st_mode) || S_ISBLK(status.st_mode);
}

template <typename Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) {
    result = call();
  }
  return result;
}

}  // namespace

FileCounters& CountersOfFiles() {
  static FileCounters counters;
  return counters;
}

FileHandle FileOpenShared(const char* path) {
  // The kind is asked before the open, since opening alone can already act: a tape rewinds, a terminal
  // becomes the controlling one. It is asked again behind it, since the name may mean something else by then.
  struct stat status {};
  if (stat(path, &status) != 0 || !IsReadableKind(status)) {
    return kNoFile;
  }
  const int file = Uninterrupted([path] { return open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); });
  if (file < 0) {
    return kNoFile;
  }
  if (fstat(file, &status) != 0 || !IsReadableKind(status)) {
    close(file);
    return kNoFile;
  }
  ++CountersOfFiles().opened;
  return file;
}

std::int64_t FileSize(FileHandle file) {
  const int descriptor = static_cast<int>(file);
  struct stat status {};
  if (fstat(descriptor, &status) != 0) {
    return -1;
  }
  if (S_ISREG(status.st_mode)) {
    return status.st_size;
  }
  // A block device tells its length only by its end.
  const off_t here = lseek(descriptor, 0, SEEK_CUR);
  const off_t end = lseek(descriptor, 0, SEEK_END);
  if (here < 0 || end < 0 || lseek(descriptor, here, SEEK_SET) < 0) {
    return -1;
  }
  return end;
}

bool FileSeek(FileHandle file, std::int64_t offset) {
  return offset >= 0 && lseek(static_cast<int>(file), offset, SEEK_SET) == offset;
}

std::int64_t FileRead(FileHandle file, void* buffer, std::size_t count) {
  constexpr auto kLongest = static_cast<std::size_t>(std::numeric_limits<ssize_t>::max());
  const std::size_t wanted = std::min(count, kLongest);
  std::size_t have = 0;
  while (have < wanted) {
    char* const place = static_cast<char*>(buffer) + have;
    const ssize_t got = Uninterrupted([&] { return read(static_cast<int>(file), place, wanted - have); });
    if (got < 0) {
      return -1;
    }
    if (got == 0) {
      break;
    }
    have += static_cast<std::size_t>(got);
  }
  CountersOfFiles().bytesRead += static_cast<std::int64_t>(have);
  return static_cast<std::int64_t>(have);
}

void FileClose(FileHandle file) {
  if (file != kNoFile) {
    close(static_cast<int>(file));
  }
}
