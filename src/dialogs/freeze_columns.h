// The Freeze Columns dialog: the number of columns is typed, or taken from a click into a line of the file or
// into a ruler below it.
#pragma once

#include <optional>
#include <string>

#include "platform/win32.h"

// What the dialog shows.
struct ColumnSample {
  std::string line;  // UTF-8, of one character a column
  LOGFONTA font{};   // of the line and the ruler
};

// Asks for the number of columns, beginning with `count`. None: the user canceled, or the dialog could not be
// shown.
std::optional<std::int32_t> RunFreezeColumns(HWND owner, std::int32_t count, const ColumnSample& sample);
