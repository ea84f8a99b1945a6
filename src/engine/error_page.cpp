#include "engine/error_page.h"

#include <array>
#include <cinttypes>
#include <cstdarg>
#include <cstdio>

namespace {

// Behind the file's first byte, so that going to position 0 leaves the page and loads the file anew.
constexpr FilePos kPagePosition = 1;

constexpr std::int32_t kLongestErrorLine = 256;  // bytes, with the terminator

constexpr char kRule[] = "*****************************************";

// No fault of the program: words that a narrow window has room for.
void AddTooNarrow(LineArray& lines, TextBuffer& text) {
  for (const char* line :
       {"Too narrow for", "a hex dump: widen", "the window, zoom", "out, or choose", "Text."})
    AddErrorLine(lines, text, "%s", line);
}

ViewStatus EndPage(const ViewFile& file, LineArray& lines) {
  ++lines.Acnt;
  lines.Aline[lines.Acur] = SentinelAt(file.Flen);
  for (std::int16_t i = 0; i <= lines.Alast; ++i) {
    lines.Aline[i].Lflags = LF_MESSAGE;
  }
  lines.Acur = 0;
  return 0;
}

}  // namespace

ViewStatus AddErrorLine(LineArray& lines, TextBuffer& text, const char* format, ...) {
  if (lines.Aline == nullptr || lines.Acur < 0 || lines.Acur >= lines.Acnt) return VS_FAILED;
  if (text.Tbuf == nullptr || text.Tend < 0 || text.Tend >= text.Tlen) return VS_FAILED;

  std::array<char, kLongestErrorLine> written{};
  std::va_list values;
  va_start(values, format);
  const int wanted = std::vsnprintf(written.data(), written.size(), format, values);
  va_end(values);
  // A place is left, so that there is text for a further line, if only an empty one.
  const std::int32_t room = std::min(text.Tlen - text.Tend, kLongestErrorLine);
  const std::int32_t length = std::clamp(wanted, 0, room - 1);
  const CellText cells = AsciiCells({written.data(), static_cast<std::size_t>(length)});
  std::copy(cells.begin(), cells.end(), text.Tbuf + text.Tend);

  lines.Aline[lines.Acur] = {kPagePosition, text.Tend, length, 0, 0};
  text.Tend += length;
  lines.Afirst = std::min(lines.Afirst, lines.Acur);
  ++lines.Acur;
  lines.Alast = std::max(lines.Alast, lines.Acur);
  return 0;
}

ViewStatus ShowErrorPage(ViewStatus status, const ViewFile& file, LineArray& lines, TextBuffer& text) {
  const LineArray oldLines = lines;
  const TextBuffer oldText = text;
  text.Tend = 0;
  lines.Acur = lines.Afirst = lines.Alast = 0;
  if (lines.Aline == nullptr || lines.Acnt < 1) return 0;

  --lines.Acnt;  // the last entry is the sentinel's: what a short array cannot hold is left out
  if ((status & VS_NARROW) != 0) {
    AddTooNarrow(lines, text);
    return EndPage(file, lines);
  }
  AddErrorLine(lines, text, "%s", kRule);
  AddErrorLine(lines, text, "* PROGRAM ERROR OCCURRED");
  AddErrorLine(lines, text, "* Please note the following information:");
  AddErrorLine(lines, text, "* Status=%X", unsigned{status});
  AddErrorLine(lines, text, "* Acnt=%d, Afirst=%d, Alast=%d, Acur=%d", oldLines.Acnt, oldLines.Afirst,
               oldLines.Alast, oldLines.Acur);
  AddErrorLine(lines, text, "* Fcur=%" PRIdPTR ", Flen=%" PRIdPTR, file.Fcur.Offset(), file.Flen.Offset());
  AddErrorLine(lines, text, "* Tlen=%" PRId32 ", Tend=%" PRId32, oldText.Tlen, oldText.Tend);
  AddErrorLine(lines, text, "* Press [Home] to get back to Quorl");
  AddErrorLine(lines, text, "%s", kRule);
  AddErrorLine(lines, text, " ");
  return EndPage(file, lines);
}
