#include "platform/spool.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <thread>
#include <vector>

#include "platform/posix/uninterrupted.h"
#include "platform/temp_file.h"

namespace {

constexpr std::size_t kPieceBytes = 1 << 16;
char spooled[64] = "";

void Copy(FileHandle file) {
  std::vector<char> piece(kPieceBytes);
  std::int64_t at = 0;
  for (;;) {
    const ssize_t got = Uninterrupted([&] { return read(STDIN_FILENO, piece.data(), piece.size()); });
    const FileError error =
        got < 0 ? errno : TempFileWriteAt(file, at, piece.data(), static_cast<std::size_t>(got));
    if (error != 0) std::fprintf(stderr, "quorl: standard input: %s\n", FileErrorText(error).c_str());
    if (error != 0 || got == 0) return;
    at += got;
  }
}

}  // namespace

FileError SpoolInput(char* path, std::size_t size) {
  FileError error = 0;
  const FileHandle file = TempFileOpen(error);
  if (file == kNoFile) return error;
  std::snprintf(spooled, sizeof spooled, "/proc/self/fd/%d", static_cast<int>(file));
  std::snprintf(path, size, "%s", spooled);
  std::thread(Copy, file).detach();
  return 0;
}

bool IsSpooledInput(const char* path) {
  return spooled[0] != '\0' && std::strcmp(path, spooled) == 0;
}
