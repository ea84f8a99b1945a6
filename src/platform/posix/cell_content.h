// What is drawn for the cells of a row, wherever it is drawn.
#pragma once

#include "platform/cells.h"

// The columns that the character at `index` takes; 0 for the second half of a wide one, whose first half is
// there.
[[nodiscard]] inline int ColumnsAt(CellView cells, std::size_t index) {
  if (cells[index] == kWideTail) return index == 0 ? 1 : 0;
  return index + 1 < cells.size() && cells[index + 1] == kWideTail ? 2 : 1;
}

// The character that is drawn in the cells of the one at `index`, with its marks: a blank for half a wide
// one, a dotted circle in front of marks that have none.
[[nodiscard]] CellCluster ContentAt(CellView cells, std::size_t index);
