// A run of the view with its storage. Two of them take turns: one is on the screen, the other is being made,
// so that a load that fails, or that is given up, leaves the screen as it was.
#pragma once

#include <memory>

#include "engine/slice_lines.h"
#include "engine/view_records.h"

struct ViewRun {
  LineArray Lines;
  TextBuffer Text;
  std::unique_ptr<LineEntry[]> entries;
  std::unique_ptr<Cell[]> cells;
  std::unique_ptr<CellCluster[]> clusters;
};

// How large a run must be.
struct RunSize {
  std::int16_t entries = kViewLines;
  std::int32_t text = kViewText;
  bool operator==(const RunSize&) const = default;
};

// The most characters that the text of a run may have. A screen of rows that are longer than that allows is
// filled with shorter rows (see UsableLineLen).
inline constexpr std::int32_t kMostText = 4800 * 1024;

// The size for a screen of `rows` rows of at most `lineLen` characters: four screens of entries and three
// screens of full rows, but never less than kViewLines and kViewText.
[[nodiscard]] RunSize RunSizeFor(std::int32_t rows, std::int32_t lineLen);

// Gets storage for an empty run. Null when memory is lacking.
[[nodiscard]] std::shared_ptr<ViewRun> MakeRun(const RunSize& size);
