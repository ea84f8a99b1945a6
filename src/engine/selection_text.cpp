#include "engine/selection_text.h"

#include <cstring>
#include <new>

#include "engine/line_probe.h"
#include "engine/slice_lines.h"
#include "engine/text_format.h"

namespace {

template <typename T>
std::unique_ptr<T[]> Allocate(std::size_t count) {
  return std::unique_ptr<T[]>(new (std::nothrow) T[count]());
}

// The copy's own records, for the length of one call.
struct Batch {
  std::unique_ptr<LineEntry[]> entries = Allocate<LineEntry>(kViewLines);
  std::unique_ptr<char[]> chars = Allocate<char>(kViewText);
  std::unique_ptr<std::uint8_t[]> work = Allocate<std::uint8_t>(kSliceBytes);
  std::int32_t count = 0;
};

// The lines from `pos` on, as many as one slice and the buffers give.
CopyFailure FillBatch(Batch& batch, FilePos pos, ViewFile& file, FormatProc format, ViewOptions options,
                      std::int32_t lineLen) {
  LineCursor cursor{batch.entries.get(), kViewLines, 0, LongLine::no};
  if (format == FormatText) {
    LineAround line;
    if (FindLine(file, batch.work.get(), pos, options, line) != 0) return CopyFailure::read;
    if (line.isLong) cursor.Clong = LongLine::yes;
  }
  TextBuffer text{batch.chars.get(), kViewText, 0};
  bool cut = false;
  const ViewStatus status =
      FormatSlice(file, batch.work.get(), pos, false, cursor, text, format, options, lineLen, cut);
  batch.count = cursor.Ccur;
  if ((status & VS_FAILED) == 0) return CopyFailure::none;
  return (status & VS_NARROW) != 0 ? CopyFailure::format : CopyFailure::read;
}

}  // namespace

SelectionText FormatSelection(FilePos from, FilePos to, ViewFile& file, FormatProc format,
                              ViewOptions options, std::int32_t lineLen) {
  SelectionText result;
  if (from >= file.Flen) return result;
  from = std::max<FilePos>(from, 0);
  const FilePos end = std::max(from + 1, to < 0 ? file.Flen : to);
  lineLen = std::clamp(lineLen, 1, LongestLine(kViewText));
  Batch batch;
  auto output = Allocate<char>(kSelectionTextSize);
  if (!batch.entries || !batch.chars || !batch.work || !output) {
    result.failure = CopyFailure::memory;
    return result;
  }
  std::int32_t used = 0;
  std::int32_t i = 0;
  FilePos next = from;
  for (bool finished = false; !finished;) {
    if (i == batch.count) {
      if (next >= file.Flen) break;
      result.failure = FillBatch(batch, next, file, format, options, lineLen);
      i = 0;
      if (result.failure != CopyFailure::none || batch.count == 0) break;
    }
    const LineEntry& line = batch.entries[static_cast<std::size_t>(i)];
    const std::int32_t room = kSelectionTextSize - used - 3;
    const std::int32_t length = std::clamp(line.Llen, 0, room);
    std::memcpy(&output[static_cast<std::size_t>(used)], &batch.chars[static_cast<std::size_t>(line.Ltext)],
                static_cast<std::size_t>(length));
    used += length;
    std::memcpy(&output[static_cast<std::size_t>(used)], "\r\n", 3);
    used += 2;
    ++i;
    next = batch.entries[static_cast<std::size_t>(i)].Lpos;
    finished = used >= kSelectionTextSize - 3 || next >= end;
  }
  result.text = std::move(output);
  result.length = used;
  return result;
}
