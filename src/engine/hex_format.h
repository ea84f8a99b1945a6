// The format "Hex Dump": rows of an address, the bytes in groups of four, and the same bytes as characters.
// Rows align to the position that a load started from.
#pragma once

#include "engine/view_records.h"

// A FormatProc. VS_FAILED and VS_NARROW when lineLen is below 22, the length of a row of four bytes.
ViewStatus FormatHex(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                     std::int32_t direction, ViewOptions options, std::int32_t lineLen);
