// A profile file as a whole: read at once, replaced in one step. Knows nothing of sections and keys. The new
// text is written aside in the same folder, brought to the disk and renamed over the old one, so that a
// crash, a kill or a full disk leaves the old file or the new one, never a piece.
#pragma once

#include <sys/stat.h>

#include <functional>
#include <string>

#include "platform/file.h"

// A longer file is not a profile: it is not read, and not written either. Every key is looked for line by
// line, so that this is what bounds the time of a start.
inline constexpr std::size_t kLongestProfile = std::size_t{1} << 20;

enum class ProfileKind {
  Absent,    // no file there, so a first save may create it
  Loaded,    // `text` holds all of it
  Unusable,  // no regular file, not readable, too long, or UTF-16: reads as empty, never overwritten
};

struct ProfileText {
  ProfileKind kind = ProfileKind::Absent;
  FileError reason = 0;  // of Unusable
  std::string text;
  struct stat status {};  // of the moment before it was read; of Loaded only
};

// The path that `file` means: a bare name lies in the folder of the user's settings, and any other name
// means what it says. Empty when that folder cannot be told.
[[nodiscard]] std::string ProfilePathOf(const char* file);

// Reads the file at `path`; links are followed. Never blocks.
[[nodiscard]] ProfileText LoadProfileText(const std::string& path);

// Lets `edit` change the text of the file (empty when there is none) and puts the result in its place. Where
// the path ends in a link, the link's target is replaced and the link stays. The folder is locked from the
// read to the replacement, so that two running viewers do not lose each other's changes; a lock that is held
// for too long fails the call. `makeFolder` creates a missing folder, for the user only. `edit` gives true
// when it changed the text; without a change nothing is written. Where the folder is missing it is tried on
// an empty text first. 0, or why the change could not be made; the old file stands then.
[[nodiscard]] FileError ReplaceProfileText(const std::string& path, bool makeFolder,
                                           const std::function<bool(std::string& text)>& edit);

// Whether a file of that status may be written, as its mode and the rights of this process tell. A file
// without any write bit may not, whoever asks.
[[nodiscard]] bool ProfileModeAllowsWrite(const std::string& path, const struct stat& status);

// The path with the links at its end followed, up to a file or to a name that does not exist. Empty when
// the links go in a circle.
[[nodiscard]] std::string FollowLinks(const std::string& path);
