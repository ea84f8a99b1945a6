// A temporary file that only this process sees and that vanishes with it, however it ends. Operations of
// this layer's own; each system's folder implements them. FileClose of platform/file.h closes it, and
// FileReadAt reads it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/file.h"

// The folder in which temporary files are made, as the system's settings have it now. Valid until the next
// call.
[[nodiscard]] const char* TempFolder();

// Makes an empty file in TempFolder(), open for reading and writing, with rights for the user alone. It has
// no name, or loses it before this returns. kNoFile, and the reason in `error`, when the folder or the system
// does not permit it.
[[nodiscard]] FileHandle TempFileOpen(FileError& error);

// Writes all `count` bytes from `offset` on. On an error, a full disk and the user's limit on the size of
// files among them, a part may have been written.
[[nodiscard]] FileError TempFileWriteAt(FileHandle file, std::int64_t offset, const void* buffer,
                                        std::size_t count);

// Makes the file empty again.
[[nodiscard]] FileError TempFileEmpty(FileHandle file);
