// What the command line asks to be shown in the first file: a place, or a text to find.
#pragma once

#include <string>

// The file that a name means: without a place behind a colon, which is noted, where there is no file of the
// whole name.
[[nodiscard]] std::string TakePlaceBehindName(const char* name);

// WM_FILE_PLACE: goes to the place, and finds the key from there on. Once only.
void ShowAskedPlace();
