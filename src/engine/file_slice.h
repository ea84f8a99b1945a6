// Reads one piece of the viewed file. The file is opened by name and closed again for each slice, so that a
// file which grows, shrinks or is replaced is read in its present state.
#pragma once

#include "engine/view_records.h"

// Reads want.Slen bytes around file.Fcur, want.Soff of them in front of it, into want.Sbuf, and describes
// in `got` what was read. file.Flen becomes the present length. Near the file's start and end the slice is
// moved so that it covers bytes that exist. VS_SHORT when the file holds fewer bytes than wanted, VS_NODATA
// when there is no byte to read, VS_FAILED when the file cannot be opened, seeked or read.
[[nodiscard]] ViewStatus ReadFileSlice(ViewFile& file, const FileSlice& want, FileSlice& got);

// The length of the file at `path` in bytes; 0 when it cannot be opened.
[[nodiscard]] FilePos FileLength(const char* path);
