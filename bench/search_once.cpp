// One search through one file, or one bare read of it, as a process: what tools/measure_search times beside
// other programs.
//
//     search_once exact|folded KEY FILE    prints the offset of the first hit, or -1
//     search_once read FILE                reads FILE in slices of 32760 bytes, prints how many bytes
#include <array>
#include <cstdio>
#include <cstring>
#include <string>

#include "platform/file.h"
#include "search/search_engine.h"

namespace {

std::int64_t BareRead(const char* path) {
  static std::array<std::uint8_t, 32760> slice;
  FileError error = 0;
  const FileHandle file = FileOpenShared(path, error);
  std::int64_t bytes = 0;
  for (std::size_t read = 1; error == 0 && read > 0; bytes += static_cast<std::int64_t>(read))
    error = FileReadAt(file, bytes, slice.data(), slice.size(), read);
  FileClose(file);
  return bytes;
}

FilePos Search(const char* path, const char* key, bool exact) {
  ByteSource source;
  LongJob job;
  if (source.Open(path) != 0) return kSearchReadFailed;
  return SearchFile(source, 0, static_cast<std::int32_t>(std::strlen(key)),
                    reinterpret_cast<const std::uint8_t*>(key), exact ? SEARCH_CASE : SEARCH_TEXT, job);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  if (what == "read" && argc == 3) {
    std::printf("%lld\n", static_cast<long long>(BareRead(argv[2])));
  } else if ((what == "exact" || what == "folded") && argc == 4) {
    std::printf("%lld\n", static_cast<long long>(Search(argv[3], argv[2], what == "exact").Offset()));
  } else {
    std::fputs("usage: search_once exact|folded KEY FILE | search_once read FILE\n", stderr);
    return 2;
  }
  return 0;
}
