#include "engine/page_padding.h"

#include <algorithm>

namespace {

constexpr bool IsWhite(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsBlank(const LineEntry& line, const TextBuffer& text) {
  const char* begin = text.Tbuf + line.Ltext;
  return std::all_of(begin, begin + std::max(line.Llen, 0), IsWhite);
}

constexpr bool BeginsPage(const LineEntry& line) {
  return (line.Lflags & (LF_PAGEMARK | LF_PAGEGAP)) != 0;
}

// Opens a place in front of entry `at` by moving the entries before it one place toward the start; the
// first entry of the array drops out. False where no line would be left in front of the new place.
bool OpenBefore(LineArray& lines, std::int32_t at) {
  if (at < 2) return false;
  std::copy(lines.Aline + 1, lines.Aline + at, lines.Aline);
  if (lines.Afirst > 0) --lines.Afirst;
  return true;
}

// The end of the file: blank lines give way to one line that stands for the page break.
void TrimEnd(LineArray& lines, const TextBuffer& text, FilePos fileLength) {
  if (lines.Afirst >= lines.Alast || lines.Aline[lines.Alast].Lpos < fileLength) return;
  std::int32_t kept = lines.Alast - 1;
  while (kept > lines.Afirst && IsBlank(lines.Aline[kept], text))
    --kept;
  if (kept + 2 >= lines.Acnt) {
    // The run ends at the last slot of the array, as after every jump to the bottom.
    if (!OpenBefore(lines, kept + 1)) return;
    lines.Acur = std::max<std::int16_t>(static_cast<std::int16_t>(lines.Acur - 1), lines.Afirst);
    --kept;
  }
  lines.Aline[kept + 1] = {fileLength - 1, 0, 0, 0, LF_PAGEGAP};
  lines.Aline[kept + 2] = SentinelAt(fileLength);
  lines.Alast = static_cast<std::int16_t>(kept + 2);
  lines.Acur = std::min<std::int16_t>(lines.Acur, static_cast<std::int16_t>(kept + 1));
}

// Fills the page that ends in front of line `at` up from `count` to `pageLength` rows; `at` stays the index
// of that line. False when the array has no room behind it.
bool FillPage(LineArray& lines, std::int32_t& at, std::int32_t count, std::int32_t pageLength) {
  for (; count < pageLength; ++count) {
    if (at <= lines.Acur) {
      if (!OpenBefore(lines, at)) return true;
    } else {
      if (at >= lines.Acnt - 1) return false;
      const std::int32_t end = std::min<std::int32_t>(lines.Alast + 1, lines.Acnt - 1);
      std::copy_backward(lines.Aline + at, lines.Aline + end, lines.Aline + end + 1);
      lines.Alast = static_cast<std::int16_t>(std::min<std::int32_t>(lines.Alast + 1, lines.Acnt));
      ++at;
    }
    lines.Aline[at - 1] = {lines.Aline[at - 2].Lpos + 1, 0, 0, count, 0};
  }
  return true;
}

}  // namespace

void PadPages(LineArray& lines, const TextBuffer& text, FilePos fileLength, std::int32_t pageLength) {
  TrimEnd(lines, text, fileLength);
  constexpr std::int32_t kUnknownRow = -1;  // until the first page begins
  std::int32_t count = kUnknownRow;
  for (std::int32_t i = lines.Afirst; i < lines.Alast && i < lines.Acnt; ++i) {
    if (BeginsPage(lines.Aline[i]) && count > 0 && !FillPage(lines, i, count, pageLength)) break;
    LineEntry& line = lines.Aline[i];
    if (count != kUnknownRow) ++count;
    if ((line.Lflags & LF_PAGEGAP) != 0) count = 0;
    if ((line.Lflags & LF_PAGEMARK) != 0 || line.Lpos == 0) count = 1;
    line.Lpage = count;
  }
  if (lines.Alast >= lines.Acnt) {
    lines.Alast = static_cast<std::int16_t>(lines.Acnt - 1);
    lines.Aline[lines.Alast] = SentinelAt(lines.Aline[lines.Alast].Lpos);
  }
}
