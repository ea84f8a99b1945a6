// A batch of lines on their way to the printed page: what one piece of the file gives, in buffers of the
// job's own. The batches of a job are neighbours, wherever a piece ends, and each has a line at least.
// Made on the reader's thread, then looked at by the window's.
#pragma once

#include <memory>

#include "engine/slice_lines.h"

enum class BatchOutcome : std::uint8_t {
  lines,         // there is one at least
  end,           // the file ends in front of the place asked for
  readFailed,    // it cannot be read, or it is not the file any more that the job began with
  formatFailed,  // no line of the format is as short as the lines that were asked for
  stopped,       // the user gave the job up
};

struct PrintBatch {
  std::unique_ptr<LineEntry[]> entries;  // entry `count` is the sentinel
  std::unique_ptr<Cell[]> cells;
  std::unique_ptr<CellCluster[]> clusters;
  std::int32_t count = 0;
  ByteIdentity identity;  // of the file that the batch was read from
  BatchOutcome outcome = BatchOutcome::end;
};

// An empty batch; null when there is no memory for it.
[[nodiscard]] std::shared_ptr<PrintBatch> MakePrintBatch();

// The start of the first row of a job that begins at `from`: that byte, unless it lies within a row of a long
// line, whose rows stand where the view would show them. After a failure of the source the answer means
// nothing.
[[nodiscard]] FilePos FirstPrintedRow(FilePos from, ByteSource& source, const LineStyle& style);

// Fills the batch with the lines from `from` on, which begins a row, of the file that `source` has open.
// `first` is what the file was when the job began; `end` is the place at which the job will end, for the
// width of addresses.
void FillPrintBatch(PrintBatch& batch, FilePos from, FilePos end, const ByteIdentity& first,
                    ByteSource& source, const LineStyle& style);
