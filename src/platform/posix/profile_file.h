// What a test may ask of the profile operations, which win32.h and profile_batch.h declare.
#pragma once

#include <cstdint>

// How often a profile was read from the disk to answer the read operations. A profile that has not changed
// since is not read again.
[[nodiscard]] std::int64_t ProfileReadsFromDisk();
