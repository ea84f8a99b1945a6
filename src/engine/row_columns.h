// In which columns of a row the bytes of the file stand. Each format tells it in its own way: text by
// formatting what stands in front, hex and raw by counting. Knows no window.
#pragma once

#include <vector>

#include "engine/slice_lines.h"

// A row of the view, as far as columns go.
struct RowPlace {
  FilePos start;             // of its first byte
  FilePos end;               // of the first byte of the next row
  std::int32_t length = 0;   // characters
  std::int32_t address = 0;  // digits of the address, in a hex row
};
[[nodiscard]] RowPlace PlaceOfRow(const LineEntry& line, const LineEntry& next, const TextBuffer& text);

struct ColumnSpan {
  std::int32_t first;
  std::int32_t end;  // exclusive
  bool operator==(const ColumnSpan&) const = default;
};

// Where the bytes `from` to `to` - 1 stand, as far as they are in the row: one span, or in a hex row one for
// each group of digits and one for the characters. `style` is that of the row. None where the bytes have no
// column, as a line break, and after a failure of the source.
[[nodiscard]] std::vector<ColumnSpan> ColumnsOf(ByteSource& source, const RowPlace& row, FilePos from,
                                                FilePos to, const LineStyle& style);
