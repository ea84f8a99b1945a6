// A save of many keys that is made as one: the profile is read anew, takes all writes, and is replaced once,
// with all of them or none. An operation of this layer's own; each system's folder implements it. Where the
// system keeps profiles by other means, the writes may go there one by one.
#pragma once

#include <functional>

#include "platform/file.h"

// Runs `writes`, which calls WritePrivateProfileStringA for the profile `file` and may read from it: it sees
// the file as it is at that moment, and no other viewer saves meanwhile. `writes` may run twice. Saves of one
// file may be nested, and the outermost counts; another file may be read meanwhile, but not saved. 0, or why
// nothing was saved; the old file stands then. A key or value that no profile can hold is such a reason.
[[nodiscard]] FileError SaveProfile(const char* file, const std::function<void()>& writes);
