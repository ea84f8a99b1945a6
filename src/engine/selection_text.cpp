#include "engine/selection_text.h"

#include <algorithm>
#include <new>

#include "engine/hex_format.h"
#include "engine/line_probe.h"

namespace {

constexpr Cell kLineEnd[] = {U'\r', U'\n', U'\0'};

// The longest line must fit with room left over.
constexpr std::int32_t kBatchText = 2 * kLongestLine;

template <typename T>
std::unique_ptr<T[]> Allocate(std::size_t count) {
  return std::unique_ptr<T[]>(new (std::nothrow) T[count]());
}

// The copy's own records, for the length of one call.
struct Batch {
  std::unique_ptr<LineEntry[]> entries = Allocate<LineEntry>(kViewLines);
  std::unique_ptr<Cell[]> cells = Allocate<Cell>(kBatchText);
  std::unique_ptr<CellCluster[]> clusters{new (std::nothrow) CellCluster[kBatchText]};
  std::int32_t count = 0;
};

// The lines from `pos` on, as many as one piece of the file and the buffers give.
CopyFailure FillBatch(Batch& batch, FilePos pos, ByteSource& source, const LineStyle& style) {
  LineCursor cursor{batch.entries.get(), kViewLines};
  TextBuffer text{batch.cells.get(), kBatchText, 0, batch.clusters.get(), 0};
  bool cut = false;
  const ViewStatus status = FormatSlice(source, pos, BlockEnd(pos), cursor, text, style, cut);
  batch.count = cursor.Ccur;
  if ((status & VS_FAILED) == 0) return CopyFailure::none;
  return (status & VS_NARROW) != 0 ? CopyFailure::format : CopyFailure::read;
}

}  // namespace

SelectionText FormatSelection(FilePos from, FilePos to, ByteSource& source, const LineStyle& wanted) {
  SelectionText result;
  const FilePos fileEnd = source.Length();
  if (from >= fileEnd) return result;
  from = CharacterAt(source, std::max<FilePos>(from, 0), wanted);
  const FilePos end = std::max(from + 1, to < 0 ? fileEnd : to);
  LineStyle style = wanted;
  style.lineLen = std::clamp(style.lineLen, 1, kLongestLine);
  style.options = (style.options & ~VO_HEXDIGITS) | HexAddressOptions(end - 1, fileEnd);
  Batch batch;
  auto output = Allocate<Cell>(kSelectionTextSize);
  if (!batch.entries || !batch.cells || !batch.clusters || !output) {
    result.failure = CopyFailure::memory;
    return result;
  }
  std::int32_t used = 0;
  std::int32_t i = 0;
  FilePos next = from;
  for (bool finished = false; !finished;) {
    if (i == batch.count) {
      if (next >= source.Length()) break;
      result.failure = FillBatch(batch, next, source, style);
      i = 0;
      if (result.failure != CopyFailure::none || batch.count == 0) break;
    }
    const LineEntry& line = batch.entries[static_cast<std::size_t>(i)];
    const std::int32_t room = kSelectionTextSize - used - 3;
    const std::int32_t length = std::clamp(line.Llen, 0, room);
    const CellView cells(&batch.cells[line.Ltext], static_cast<std::size_t>(length), batch.clusters.get());
    CopyCells(cells, &output[used], result.clusters);
    used += length;
    std::ranges::copy(kLineEnd, &output[used]);
    used += 2;
    ++i;
    next = batch.entries[static_cast<std::size_t>(i)].Lpos;
    finished = used >= kSelectionTextSize - 3 || next >= end;
  }
  result.text = std::move(output);
  result.length = used;
  return result;
}
