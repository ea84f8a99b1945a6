// Standard input as a file: it is copied into a temporary one while it comes, which is read like any other
// and vanishes with the process. An operation of this layer's own.
#pragma once

#include <cstddef>

#include "platform/file.h"

// Begins to copy, aside. 0, and the path of the file in `path`; else why not. What fails later, as on a full
// disk, is told on stderr, and the file keeps what it has.
[[nodiscard]] FileError SpoolInput(char* path, std::size_t size);

// Whether a path is that of the spooled input.
[[nodiscard]] bool IsSpooledInput(const char* path);
