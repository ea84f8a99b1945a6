#include "print/print_batch.h"

#include <new>

#include "engine/hex_format.h"
#include "engine/line_probe.h"
#include "engine/text_format.h"

namespace {

// The longest line must fit with room left over.
constexpr std::int32_t kBatchText = 2 * kLongestLine;

}  // namespace

std::shared_ptr<PrintBatch> MakePrintBatch() {
  std::shared_ptr<PrintBatch> batch(new (std::nothrow) PrintBatch);
  if (batch == nullptr) return nullptr;
  batch->entries.reset(new (std::nothrow) LineEntry[kViewLines]());
  batch->cells.reset(new (std::nothrow) Cell[kBatchText]());
  batch->clusters.reset(new (std::nothrow) CellCluster[kBatchText]);
  const bool complete = batch->entries != nullptr && batch->cells != nullptr && batch->clusters != nullptr;
  return complete ? batch : nullptr;
}

FilePos FirstPrintedRow(FilePos from, ByteSource& source, const LineStyle& style) {
  if (style.format != FormatText || from <= 0 || from >= source.Length()) return from;
  bool isLong = false;
  const FilePos row = FindRow(source, from, style.options, style.lineLen, isLong);
  return isLong ? row : CharacterAt(source, from, style);
}

void FillPrintBatch(PrintBatch& batch, FilePos from, FilePos end, const ByteIdentity& first,
                    ByteSource& source, const LineStyle& wanted) {
  batch.count = 0;
  batch.entries[0] = SentinelAt(from);
  batch.identity = source.Identity();
  const FilePos length = source.Length();
  if (!IsSameFile(batch.identity, first)) {
    batch.outcome = BatchOutcome::readFailed;
    return;
  }
  if (from >= length) {
    batch.outcome = BatchOutcome::end;
    return;
  }
  LineStyle style = wanted;
  style.lineLen = std::clamp(style.lineLen, 1, kLongestLine);
  style.options = (style.options & ~VO_HEXDIGITS) | HexAddressOptions(end - 1, length);
  LineCursor cursor{batch.entries.get(), kViewLines};
  TextBuffer text{batch.cells.get(), kBatchText, 0, batch.clusters.get(), 0};
  bool cut = false;
  const ViewStatus status = FormatSlice(source, from, BlockEnd(from), cursor, text, style, cut);
  batch.count = cursor.Ccur;
  if ((status & VS_FAILED) != 0) {
    batch.outcome = (status & VS_NARROW) != 0 ? BatchOutcome::formatFailed : BatchOutcome::readFailed;
  } else if (batch.count > 0) {
    batch.outcome = BatchOutcome::lines;
  } else {
    // The file has become shorter while it was read; else a line was there to be made.
    batch.outcome = from >= source.Length() ? BatchOutcome::end : BatchOutcome::readFailed;
  }
}
