#include "engine/view_run.h"

#include <limits>
#include <new>

RunSize RunSizeFor(std::int32_t rows, std::int32_t lineLen) {
  constexpr std::int64_t kMostEntries = std::numeric_limits<std::int16_t>::max();
  const std::int64_t count = std::max(rows, 1);
  const std::int64_t length = std::clamp(lineLen, 1, kLongestLine);
  RunSize size;
  size.entries = static_cast<std::int16_t>(std::clamp<std::int64_t>(4 * count, kViewLines, kMostEntries));
  size.text = static_cast<std::int32_t>(
      std::clamp<std::int64_t>(3 * (count + kSpareRows) * length, kViewText, kMostText));
  return size;
}

std::shared_ptr<ViewRun> MakeRun(const RunSize& size) {
  std::shared_ptr<ViewRun> run(new (std::nothrow) ViewRun);
  if (run == nullptr) return nullptr;
  run->entries.reset(new (std::nothrow) LineEntry[static_cast<std::size_t>(size.entries)]);
  // What nothing is written to takes no memory.
  run->cells.reset(new (std::nothrow) Cell[static_cast<std::size_t>(size.text)]);
  run->clusters.reset(new (std::nothrow) CellCluster[static_cast<std::size_t>(size.text)]);
  if (run->entries == nullptr || run->cells == nullptr || run->clusters == nullptr) return nullptr;
  run->Lines = {run->entries.get(), size.entries, 0, 0, 0};
  run->Text = {run->cells.get(), size.text, 0, run->clusters.get(), 0};
  return run;
}
