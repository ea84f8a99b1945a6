// Cells as the bytes of the Windows-1252 set that a test compares them with.
#pragma once

#include <algorithm>
#include <string>

#include "platform/cells.h"

// A NUL for what the set lacks.
inline std::string BytesOf(CellView cells) {
  std::string bytes;
  for (const Cell cell : cells)
    bytes += static_cast<char>(CodeOf(cell).value_or(0));
  return bytes;
}
