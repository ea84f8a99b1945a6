// Where the profile file is, and the keys that are read from it before anything else.
#pragma once

#include <cstddef>
#include <string>

#include "engine/profile_place.h"
#include "settings/advanced_keys.h"

inline constexpr const char* kProfileName = "QUORL.INI";

// Settles the path of the profile in `path` (of `size` bytes), which names a file beside the program on
// entry. That file is taken if it says MasterProfile=1; else the one in the user's settings folder, if there
// is one; else the one beside the program after all. Where no profile exists, the bare name stands in `path`,
// and the first save creates the file in the user's settings folder. The current directory is not searched.
// Result: 0 when the profile may be written, else -1.
[[nodiscard]] int LocateProfile(char* path, std::size_t size);

// The full path of the profile, for the user to read.
[[nodiscard]] std::string ProfileFullPath(const ProfilePlace& place);

// Reads the section "Quorl Setup" of the profile into `keys`, and bounds what it holds. An absent key leaves
// its field alone.
void ReadAdvancedKeys(const char* profile, AdvancedKeys& keys);
