// The text that a copy of a selection puts on the clipboard: the selected range of the file, formatted once
// more with buffers of its own, so that it may reach far outside the lines of the view. Knows no clipboard.
#pragma once

#include <memory>
#include <vector>

#include "engine/slice_lines.h"

// Cells of the clipboard's text at most, the NUL included.
inline constexpr std::int32_t kSelectionTextSize = 32760;

enum class CopyFailure : std::uint8_t { none, memory, read, format };

struct SelectionText {
  std::unique_ptr<Cell[]> text;  // each line with CR LF behind it, and one NUL; null: nothing to copy
  std::int32_t length = 0;       // cells in front of the NUL
  std::vector<CellCluster> clusters;
  CopyFailure failure = CopyFailure::none;  // after `read` and `format`, text holds what was there before
  [[nodiscard]] CellView Cells() const {
    return {text.get(), static_cast<std::size_t>(length), clusters.data()};
  }
};

// Formats the bytes from `from` up to `to` (below 0: the end of the file) of the file that `source` has open,
// at least one line, as the view would show them. The last line is whole. At most kSelectionTextSize cells:
// the rest is left out, and a line that does not fit is cut. Reads no further than that text takes it.
[[nodiscard]] SelectionText FormatSelection(FilePos from, FilePos to, ByteSource& source,
                                            const LineStyle& style);
