// Looks at the file around a place to learn about the physical line that holds it: where the line begins,
// and whether it is a long line of the text format. Knows nothing of runs and rows.
#pragma once

#include "codes/decoders.h"
#include "engine/slice_lines.h"

// Bytes in front of a stretch of a long line that may tell where its first character begins, and whose line
// break it is.
inline constexpr std::int32_t kCutMargin = 2 * kLongestCharacter;

// The first byte of the character that holds byte `at`, where the format is one of characters; else `at`.
[[nodiscard]] FilePos CharacterAt(ByteSource& source, FilePos at, const LineStyle& style);

// The physical line that holds a byte of the file.
struct LineAround {
  FilePos start = 0;  // its first byte, or a place within a long line, at least LongLineStep bytes back
  bool isLong = false;
};

// Tells of the line that holds the byte at `at`, which the file has. The block that holds `at` answers for
// most lines; only a line that may be long costs up to two blocks more on each side. After a failure of the
// source the answer means nothing.
[[nodiscard]] LineAround FindLine(ByteSource& source, FilePos at, ViewOptions options);

// The start of the row of the text format that holds the byte at `at`, and in `isLong` whether it is the row
// of a long line. The row is the same whatever place of it, and by whichever road, one asks for.
[[nodiscard]] FilePos FindRow(ByteSource& source, FilePos at, ViewOptions options, std::int32_t lineLen,
                              bool& isLong);
