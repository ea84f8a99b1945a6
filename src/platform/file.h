// Files with 64-bit offsets, opened for reading without denying anybody anything. Operations of this
// layer's own; each system's folder implements them. Every operation may be called on any thread, and may
// take as long as the disk does: the program calls them on its reader thread (engine/reader.h). A handle
// belongs to one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

using FileHandle = std::intptr_t;
inline constexpr FileHandle kNoFile = -1;

// Why an operation failed: the system's own number. 0: it has not failed.
using FileError = std::int32_t;
inline constexpr FileError kFileOfWrongKind = -1;  // neither a regular file nor a block device
inline constexpr FileError kFileNoMemory = -2;

// The system's words for an error, without a full stop: "Permission denied".
[[nodiscard]] std::string FileErrorText(FileError error);

// Opens `path` for reading, shared with everybody. Never waits for another program; follows links; takes
// regular files and block devices only. kNoFile, and the reason in `error`, when it is of another kind
// (directory, pipe, socket, character device), does not exist, or may not be read. The caller closes the
// handle.
[[nodiscard]] FileHandle FileOpenShared(const char* path, FileError& error);

// What tells one file, and one state of it, from another.
struct FileFacts {
  std::uint64_t volume = 0;  // the file is the same as long as volume and number are
  std::uint64_t number = 0;
  std::int64_t length = 0;   // bytes
  std::int64_t changed = 0;  // time of the last change of the content, in the system's own finest unit
};

// The facts of an open file at this moment.
[[nodiscard]] FileError FileAsk(FileHandle file, FileFacts& facts);

// Reads up to `count` bytes from `offset` (0 or more) on. Interrupted and short reads are continued, so
// `got` below `count` means that the file ends there. After an error, `got` bytes have been read all the
// same.
[[nodiscard]] FileError FileReadAt(FileHandle file, std::int64_t offset, void* buffer, std::size_t count,
                                   std::size_t& got);

void FileClose(FileHandle file);
