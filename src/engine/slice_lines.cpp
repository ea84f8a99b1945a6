#include "engine/slice_lines.h"

#include "engine/file_slice.h"

ViewStatus FormatSlice(ViewFile& file, std::uint8_t* work, FilePos pos, bool hasLines, LineCursor& lines,
                       TextBuffer& text, FormatProc format, ViewOptions options, std::int32_t lineLen,
                       bool& cut) {
  const std::int32_t first = lines.Ccur;
  lines.Cline[first] = SentinelAt(pos);
  file.Fcur = pos;
  FileSlice slice;
  ViewStatus status = ReadFileSlice(file, FileSlice{work, kSliceBytes, 0}, slice);
  if ((status & VS_FAILED) != 0) return status;
  status = format(slice, lines, text, pos, FILL_FORWARD, options, lineLen);
  if ((status & VS_FAILED) != 0) return status;
  if (lines.Cend == kNoPosition) lines.Cend = lines.Cline[lines.Ccur].Lpos;
  const FilePos sliceEnd = pos - slice.Soff + slice.Slen;
  cut = lines.Cend >= sliceEnd && sliceEnd < file.Flen;
  if (cut && lines.Ccur > first && (hasLines || lines.Ccur > first + 1)) {
    --lines.Ccur;
    lines.Cend = lines.Cline[lines.Ccur].Lpos;
  }
  lines.Cline[lines.Ccur] = SentinelAt(lines.Cend);
  return status;
}
