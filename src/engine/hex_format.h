// The format "Hex Dump": rows of an address, the bytes in groups of four, and the same bytes as characters.
// Rows align to the position that a load started from. All rows of a run have addresses of the same number
// of digits, which the option word tells: a pass sees only its own part of the run.
#pragma once

#include "engine/view_records.h"

// Columns of a row: the address, the groups of digits with a blank behind each, a blank, the characters.
// Seven digits of the address fit in front of the groups; each one more moves all behind it to the right.
inline constexpr std::int32_t kHexGroupBytes = 4;
inline constexpr std::int32_t kHexAddressColumns = 8;
inline constexpr std::int32_t kHexGroupColumns = 2 * kHexGroupBytes + 1;

// The option bits for a run whose addresses are at most `largest`, in a file of `fileLength` bytes; they take
// the place of VO_HEXDIGITS. A `largest` behind the file counts as its last byte.
[[nodiscard]] ViewOptions HexAddressOptions(FilePos largest, FilePos fileLength);

// A FormatProc. VS_FAILED and VS_NARROW when no row of four bytes fits lineLen: 22 characters, and one more
// for each digit above seven of the file's largest address. An address that needs more digits than the
// options tell shows its last ones.
ViewStatus FormatHex(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                     std::int32_t direction, ViewOptions options, std::int32_t lineLen);
