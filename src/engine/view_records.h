// The records of the view: the short run of formatted lines that stands for a file, the slice of bytes
// it is made from, and the rules that a format routine keeps. The logic that fills them is in the units
// beside this one: `file_slice` reads, the three formats cut lines, `view_loader` makes the run. The hard
// idea: the entry behind the last line (the sentinel) is data, for everyone who asks where line i ends
// reads `Lpos` of entry i + 1. Knows no window and no system.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "engine/byte_source.h"
#include "engine/text_lines.h"
#include "platform/cells.h"
#include "platform/paths.h"

// Sizes of the view. They are fixed whatever the file: every routine stops at its limit.
inline constexpr std::int16_t kViewLines = 1000;     // entries of the view's LineArray, at least
inline constexpr std::int32_t kViewText = 32760;     // characters of the view's TextBuffer, at least
inline constexpr std::int32_t kLongestLine = 32767;  // characters of a line, whatever is asked for
inline constexpr std::int32_t kSliceBytes = 65535;   // bytes of the largest line that is made in one go

// 16-bit result of the engine's routines. Only VS_FAILED is ever tested.
using ViewStatus = std::uint16_t;
inline constexpr ViewStatus VS_SHORT = 0x0002;      // fewer bytes than wanted; a line got LF_INCOMPLETE
inline constexpr ViewStatus VS_TRUNCATED = 0x0004;  // a line got LF_TRUNCATED
inline constexpr ViewStatus VS_NODATA = 0x0008;     // no byte to read; not a failure
inline constexpr ViewStatus VS_NARROW = 0x0010;     // the line length is too short for one hex row
inline constexpr ViewStatus VS_FAILED = 0x0100;     // the operation failed

// Option word of a display format.
using ViewOptions = std::uint32_t;
inline constexpr ViewOptions VO_WRAP = 0x0001;        // a longer line goes on in the next line
inline constexpr ViewOptions VO_BACKGROUND = 0x0008;  // painting: the row behind the text is background
inline constexpr ViewOptions VO_FIXEDLEN = 0x0010;    // the line length is a setting, not the window's
inline constexpr ViewOptions VO_EXPANDTABS = 0x0020;  // tabs become blanks
inline constexpr ViewOptions VO_ASCII = 0x0040;       // bytes are of the OEM code page
inline constexpr ViewOptions VO_EBCDIC = 0x0080;      // bytes are EBCDIC; wins over VO_ASCII
inline constexpr ViewOptions VO_KEEPFF = 0x0100;      // the page character stays itself in the text
inline constexpr ViewOptions VO_FORMFEED = 0x0200;    // a form feed at a line start is a page mark
inline constexpr ViewOptions VO_PAGEGAP = 0x0800;     // a form feed becomes a line of its own
// The code of the bytes where it is none of one byte a character: at most one of these, which wins over the
// two above. No setting: they follow from the setting and the file.
inline constexpr ViewOptions VO_UTF8 = 0x1000;
inline constexpr ViewOptions VO_UTF16LE = 0x2000;
inline constexpr ViewOptions VO_UTF16BE = 0x4000;
inline constexpr ViewOptions VO_UNICODE = VO_UTF8 | VO_UTF16LE | VO_UTF16BE;
inline constexpr ViewOptions VO_AUTOCODE = 0x8000;  // to be found out from the file; reads as ANSI
// Digits that hex addresses have above six, as HexAddressOptions gives them anew for each run. No setting.
inline constexpr ViewOptions VO_RUNDIGITS = 0x000F0000;   // the addresses of this run
inline constexpr ViewOptions VO_FILEDIGITS = 0x00F00000;  // the largest address of the file
inline constexpr ViewOptions VO_HEXDIGITS = VO_RUNDIGITS | VO_FILEDIGITS;

// Bits of LineEntry::Lflags.
inline constexpr std::uint32_t LF_TAGMASK = 0x000F;     // the OR of the flags of the tags on the line
inline constexpr std::uint32_t LF_MESSAGE = 0x0010;     // a line of the error page
inline constexpr std::uint32_t LF_PAGEMARK = 0x0040;    // begins with a form feed, which is not in its text
inline constexpr std::uint32_t LF_TRUNCATED = 0x0100;   // bytes of the line were skipped
inline constexpr std::uint32_t LF_INCOMPLETE = 0x0200;  // data or text ended before the line did
inline constexpr std::uint32_t LF_PAGEGAP = 0x1000;     // an empty line that stands for a page break
inline constexpr std::uint32_t LF_PADDING = 0x2000;     // an empty row of page padding; spans no byte

// The open file. It is opened by name for each action of the user and closed again.
struct ViewFile {
  FilePos Fcur = 0;  // the offset that was read around last
  FilePos Flen = 0;  // length in bytes, as the last action that read has found it
  ByteIdentity Fid;  // what the file was when its lines were made
  // The code that was found out: of VO_UNICODE, 0 where it is none of these, VO_AUTOCODE as long as nobody
  // asked.
  ViewOptions Fcode = VO_AUTOCODE;
  char Fname[kPathBytes] = {};  // path, zero-terminated; an empty name means that no file is open
};

// One formatted line.
struct LineEntry {
  FilePos Lpos = 0;          // file offset of the first byte; never decreases within a run
  std::int32_t Ltext = 0;    // index of the first character in Tbuf
  std::int32_t Llen = 0;     // characters; -1 marks the sentinel
  std::int32_t Lpage = 0;    // row within the page, 0 unless page padding ran
  std::uint32_t Lflags = 0;  // LF_ bits
};

inline constexpr std::int32_t kSentinelLength = -1;

// The entry behind the last line of a run that ends at file offset `end`.
constexpr LineEntry SentinelAt(FilePos end) {
  return {end, 0, kSentinelLength, 0, 0};
}

// A run of lines: entries Afirst to Alast - 1 are lines, entry Alast is the sentinel, Acur is the top line
// of the view. 0 <= Afirst <= Acur <= Alast <= Acnt - 1, and Acur < Alast unless there is no line.
struct LineArray {
  LineEntry* Aline = nullptr;
  std::int16_t Acnt = 0;
  std::int16_t Acur = 0;
  std::int16_t Afirst = 0;
  std::int16_t Alast = 0;
};

// The cells of a run, mapped for display, in the order in which lines were formatted; and the clusters that
// they name, of which there is room for as many as for cells. Text in a code of one byte a character has
// none.
struct TextBuffer {
  Cell* Tbuf = nullptr;
  std::int32_t Tlen = 0;  // capacity in cells
  std::int32_t Tend = 0;  // cells in use
  CellCluster* Tcluster = nullptr;
  std::int32_t Tclusters = 0;  // clusters in use
};

// The cells of a line.
[[nodiscard]] inline CellView LineCells(const LineEntry& line, const TextBuffer& text) {
  return {text.Tbuf + line.Ltext, static_cast<std::size_t>(std::max(line.Llen, 0)), text.Tcluster};
}

// Gives the text of a line back, which is the last one that was made.
inline void DropText(const LineEntry& line, TextBuffer& text) {
  for (const Cell cell : LineCells(line, text)) {
    if ((cell & kCellKinds) != kClusterCell) continue;
    text.Tclusters = static_cast<std::int32_t>(cell & ~kCellKinds);
    break;
  }
  text.Tend = line.Ltext;
}

// A piece of the file in memory: Slen bytes, and Soff is the index in Sbuf of the byte at Fcur (it may be
// Slen, and above Slen when the file has shrunk below Fcur).
struct FileSlice {
  const std::uint8_t* Sbuf = nullptr;
  std::int32_t Slen = 0;
  std::int32_t Soff = 0;
  bool Slast = true;  // the file ends with the slice
  // Bytes at hand behind the slice, which are not to be formatted but tell whether its last bytes are a
  // character: as many as that may take, or all that the file has.
  std::int32_t Sahead = 0;
};

// What a format routine sees of a line array.
struct LineCursor {
  LineEntry* Cline = nullptr;
  std::int32_t Ccnt = 0;  // entries
  std::int32_t Ccur = 0;  // running index: see FormatProc
  // In: forward, whether the byte at pos lies in a long line; backward, whether the byte before pos does.
  // The loader knows; other callers leave it unknown.
  LongLine Clong = LongLine::unknown;
  // Out, forward: the file offset behind the last line kept. The sentinel's Lpos may lie further on, inside
  // a line that was given up because the text was full.
  FilePos Cend = kNoPosition;
};

// Directions of a pass.
inline constexpr std::int32_t FILL_FORWARD = 1;
inline constexpr std::int32_t FILL_BACKWARD = 2;

// A format routine: turns the bytes of a slice into lines.
//
// slice.Sbuf[slice.Soff] is the byte at file offset pos. Forward: lines.Ccur is the first entry to fill;
// entries are filled upward until the data ends, the text is full, or Ccur reaches Ccnt - 1; then the
// sentinel is written at Ccur, also when no line was made. Backward: the first entry written is Ccur - 1;
// entries are filled downward until the data ends, the text is full or Ccur reaches 0; no sentinel, and
// Ccur is the index of the topmost line made. Text goes on at text.Tend and never reaches text.Tlen, which
// may lie below the buffer's real size; the new Tend is stored. Entries are zeroed before they are set.
// No file access, no allocation; running out of data, lines or text is no failure. VS_FAILED means only
// that the format cannot work at this lineLen (characters).
using FormatProc = ViewStatus (*)(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                                  std::int32_t direction, ViewOptions options, std::int32_t lineLen);
