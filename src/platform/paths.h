// Paths of the system: how long they are, how they are written, and how a name that a user typed becomes
// the full path of a file. Operations of this layer's own; each system's folder implements them.
#pragma once

#include <cstddef>

#include "platform/file.h"

// Bytes of a path field, the terminating NUL included: as long as the system's longest path, so that a
// path is never cut short.
#ifdef _WIN32
inline constexpr std::size_t kPathBytes = 32768;
#else
inline constexpr std::size_t kPathBytes = 4096;
#endif

// Whether a slash may begin an option word of the command line. Not where it begins a path.
#ifdef _WIN32
inline constexpr bool kSlashBeginsOption = true;
#else
inline constexpr bool kSlashBeginsOption = false;
#endif

// The absolute path of the file that `name` means, which need not exist: nothing on the disk is looked at. A
// name without a directory means one in the current directory only; links are kept as they are written. 0,
// and the path in `full` (zero-terminated, at most `size` bytes with the NUL). Otherwise the reason, with
// `full` untouched: the name is empty, there is no current directory any more, or the path does not fit.
[[nodiscard]] FileError FullPath(const char* name, char* full, std::size_t size);

// The part of `path` behind the last separator of directories (on Windows a backslash, else a colon), or
// `path` itself. A pointer into the argument.
[[nodiscard]] const char* BaseName(const char* path);

// The path of the file `name` in the folder that holds the program's settings of this user, which need not
// exist yet ($XDG_CONFIG_HOME/quorl/, by default ~/.config/quorl/). The profile operations of win32.h mean
// this file by a name without a directory, and create the folder when they save. False, with `full`
// untouched, when the user has no such folder or the path does not fit.
[[nodiscard]] bool SettingsPath(const char* name, char* full, std::size_t size);

// Whether there is a file at `path`, of any kind but a directory, readable or not.
[[nodiscard]] bool FileExists(const char* path);

// Whether the file at `path` exists and may be changed by this user, as far as its attributes and those of
// its folder tell, without trying. A file without any write bit may not, whoever asks.
[[nodiscard]] bool FileMayBeWritten(const char* path);
