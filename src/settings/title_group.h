// The frozen titles as a group of options in the profile: the key "Titles" with their number, and "Title1"
// and on with their texts. Knows no window.
#pragma once

#include "marks/titles.h"
#include "platform/file.h"

// Reads the titles of a section, which replace those in the set. The set must be locked. Result 1; 0 when the
// section has no name or the set no storage.
int LoadTitles(const char* profile, const char* section, TitleSet& titles);

// Writes the titles, each cut to 512 bytes, and deletes keys of former ones beyond their number. Null, or a
// set without storage, stands for no titles. A profile holds lines of text, so that a line break or a NUL in
// a title is written as a blank. 0, or why it failed.
[[nodiscard]] FileError SaveTitles(const char* profile, const char* section, const TitleSet* titles);
