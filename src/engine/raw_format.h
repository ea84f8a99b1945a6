// The format "Raw Text": every byte is one character, and a line is the next lineLen bytes. Lines align to
// the position that a load started from.
#pragma once

#include "engine/view_records.h"

// A FormatProc that never fails. A lineLen below 1 counts as 1.
ViewStatus FormatRaw(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                     std::int32_t direction, ViewOptions options, std::int32_t lineLen);
