// Looks at the file around a place to learn about the physical line that holds it: where the line begins,
// and whether it is a long line of the text format. Knows nothing of runs and rows.
#pragma once

#include "engine/view_records.h"

// The physical line that holds a byte of the file.
struct LineAround {
  FilePos start = 0;  // its first byte, or a place within it when it begins further back than was looked
  bool isLong = false;
};

// Tells of the line that holds the byte at `at`. `work` is a buffer of kSliceBytes bytes. A look at 8 KB
// answers for most lines; only a line that may be long costs up to two slices more. Result 0, or the status
// of a read that failed.
[[nodiscard]] ViewStatus FindLine(ViewFile& file, std::uint8_t* work, FilePos at, ViewOptions options,
                                  LineAround& line);
