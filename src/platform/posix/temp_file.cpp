#include "platform/temp_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "platform/posix/size_limit.h"
#include "platform/posix/uninterrupted.h"

const char* TempFolder() {
  const char* const folder = std::getenv("TMPDIR");
  return folder != nullptr && folder[0] == '/' ? folder : "/tmp";
}

FileHandle TempFileOpen(FileError& error) {
  IgnoreSizeLimitSignal();
  const std::string folder = TempFolder();
#ifdef O_TMPFILE
  const int nameless = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
  error = 0;
  if (nameless >= 0) return nameless;
#endif
  // Not every file system has files without a name. This one has its name for a moment only.
  std::string name = folder + "/quorl-XXXXXX";
  const int named = mkostemp(name.data(), O_CLOEXEC);
  error = named >= 0 && unlink(name.c_str()) == 0 ? 0 : errno;
  if (error == 0) return named;
  if (named >= 0) close(named);
  return kNoFile;
}

FileError TempFileWriteAt(FileHandle file, std::int64_t offset, const void* buffer, std::size_t count) {
  const char* place = static_cast<const char*>(buffer);
  while (count > 0) {
    const ssize_t written =
        Uninterrupted([&] { return pwrite(static_cast<int>(file), place, count, offset); });
    if (written <= 0) return written < 0 ? errno : EIO;
    place += written;
    offset += written;
    count -= static_cast<std::size_t>(written);
  }
  return 0;
}

FileError TempFileEmpty(FileHandle file) {
  return ftruncate(static_cast<int>(file), 0) == 0 ? 0 : errno;
}
