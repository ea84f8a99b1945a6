// Files with 64-bit offsets, opened for reading without denying anybody anything. Operations of this
// layer's own; each system's folder implements them. The program opens a file for each piece that it reads
// and closes it again, so that a file which grows, shrinks or is replaced is read in its present state.
#pragma once

#include <cstddef>
#include <cstdint>

using FileHandle = std::intptr_t;
inline constexpr FileHandle kNoFile = -1;

// Opens `path` for reading, shared with everybody. Never blocks; follows links; takes regular files and
// block devices only. kNoFile when it is of another kind (directory, pipe, socket, character device), does
// not exist, or may not be read. The caller closes the handle.
[[nodiscard]] FileHandle FileOpenShared(const char* path);

// Length in bytes at this moment; -1 when it cannot be told.
[[nodiscard]] std::int64_t FileSize(FileHandle file);

// Moves the read position to `offset` bytes from the start. False when the system refuses.
[[nodiscard]] bool FileSeek(FileHandle file, std::int64_t offset);

// Reads up to `count` bytes at the read position. Interrupted and short reads are continued, so fewer bytes
// than `count` mean that the file ends there. -1 on an error.
[[nodiscard]] std::int64_t FileRead(FileHandle file, void* buffer, std::size_t count);

void FileClose(FileHandle file);
