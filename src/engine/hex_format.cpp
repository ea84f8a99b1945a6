#include "engine/hex_format.h"

#include <array>
#include <cassert>
#include <cstring>

#include "engine/char_map.h"

namespace {

constexpr char kDigits[] = "0123456789ABCDEF";
constexpr std::int32_t kMostGroups = 16;
constexpr std::int32_t kGroupBytes = 4;

// Columns of a row: the address, the groups of digits with a blank behind each, a blank, the characters.
constexpr std::int32_t kAddressColumns = 8;
constexpr std::int32_t kAddressDigits = 6;
constexpr std::int32_t kGroupColumns = 2 * kGroupBytes + 1;

// The horizontal ellipsis of the Windows-1252 set.
constexpr char kEllipsis = '\x85';

// The two digits of each byte value, one behind the other.
constexpr auto kDigitPairs = [] {
  std::array<char, 512> pairs{};
  for (std::size_t value = 0; value < 256; ++value) {
    pairs[2 * value] = kDigits[value >> 4];
    pairs[2 * value + 1] = kDigits[value & 15];
  }
  return pairs;
}();

struct RowShape {
  std::int32_t groups = 0;
  std::int32_t bytes = 0;            // bytes of a full row
  std::int32_t characterColumn = 0;  // where the character of the first byte stands
  std::int32_t full = 0;             // characters of a full row
};

// The shape with the most groups, a power of two, that fits lineLen; groups is 0 when none does.
constexpr RowShape WidestRow(std::int32_t lineLen) {
  RowShape widest;
  for (std::int32_t groups = 1; groups <= kMostGroups; groups *= 2) {
    const std::int32_t bytes = groups * kGroupBytes;
    const std::int32_t characterColumn = kAddressColumns + groups * kGroupColumns + 1;
    const RowShape row = {groups, bytes, characterColumn, characterColumn + bytes};
    if (row.full <= lineLen) widest = row;
  }
  return widest;
}
static_assert(WidestRow(21).groups == 0 && WidestRow(22).groups == 1 && WidestRow(217).groups == 16);

void WriteDigits(char* to, std::int32_t digits, std::uint32_t value) {
  for (std::int32_t i = digits - 1; i >= 0; --i) {
    to[i] = kDigits[value & 15];
    value >>= 4;
  }
}

// Writes the address into columns that are blank. A row of a backward pass keeps to six digits and two
// blanks, whatever is lost on the left. A row of a forward pass takes as many columns as it needs, up to
// the first digit pair. Behind 4 GB that would lose digits on the right, so that rows far apart looked like
// neighbours: from there on both directions show the last digits, marked as cut short.
void WriteAddress(char* row, FilePos pos, std::int32_t direction) {
  const auto low = static_cast<std::uint32_t>(pos & 0xFFFFFFFF);
  if (std::int64_t{pos} > 0xFFFFFFFF) {
    row[0] = kEllipsis;
    WriteDigits(row + 1, kAddressDigits, low);
    return;
  }
  std::int32_t digits = kAddressDigits;
  if (direction == FILL_FORWARD) digits += (low > 0xFFFFFF ? 1 : 0) + (low > 0xFFFFFFF ? 1 : 0);
  WriteDigits(row, digits, low);
}

// Writes the digits and characters of the row's bytes `first` to `end` - 1; *bytes is the one at `first`.
void WriteBytes(char* row, const RowShape& shape, std::int32_t first, std::int32_t end,
                const std::uint8_t* bytes, const std::uint8_t* map) {
  char* characters = row + shape.characterColumn;
  for (std::int32_t i = first; i < end; ++i) {
    const std::int32_t column = kAddressColumns + i / kGroupBytes * kGroupColumns + i % kGroupBytes * 2;
    std::memcpy(row + column, &kDigitPairs[std::size_t{2} * *bytes], 2);
    characters[i] = static_cast<char>(map[*bytes++]);
  }
}

// One test of room for each row serves for all writes to it.
bool HasRoom(const TextBuffer& text, const RowShape& shape) {
  return text.Tlen - text.Tend >= shape.full;
}

void FillForward(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                 const std::uint8_t* map, const RowShape& shape) {
  std::int32_t off = slice.Soff;
  while (lines.Ccur < lines.Ccnt - 1 && off < slice.Slen && HasRoom(text, shape)) {
    const std::int32_t count = std::min(shape.bytes, slice.Slen - off);
    char* row = text.Tbuf + text.Tend;
    std::memset(row, ' ', static_cast<std::size_t>(shape.full));
    WriteAddress(row, pos, FILL_FORWARD);
    WriteBytes(row, shape, 0, count, slice.Sbuf + off, map);

    const std::int32_t length = shape.characterColumn + count;
    lines.Cline[lines.Ccur++] = {pos, text.Tend, length, 0, 0};
    off += count;
    pos += count;
    text.Tend += length;
  }
  lines.Cline[lines.Ccur] = SentinelAt(pos);
  lines.Cend = pos;
}

void FillBackward(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                  const std::uint8_t* map, const RowShape& shape) {
  FilePos off = slice.Soff;
  if (off > slice.Slen) {  // the file ends before pos: start from where it ends
    pos -= off - slice.Slen;
    off = slice.Slen;
  }
  while (lines.Ccur > 0 && off > 0 && HasRoom(text, shape)) {
    off -= shape.bytes;
    pos -= shape.bytes;
    if (off < 0 && pos > off) return;  // the row begins above the slice, but not above the file

    char* row = text.Tbuf + text.Tend;
    std::memset(row, ' ', static_cast<std::size_t>(shape.full));
    WriteAddress(row, pos, FILL_BACKWARD);
    const auto first = static_cast<std::int32_t>(std::max<FilePos>(-off, 0));
    WriteBytes(row, shape, first, shape.bytes, slice.Sbuf + std::max<FilePos>(off, 0), map);

    lines.Cline[--lines.Ccur] = {std::max<FilePos>(pos, 0), text.Tend, shape.full, 0, 0};
    text.Tend += shape.full;
  }
}

}  // namespace

ViewStatus FormatHex(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                     std::int32_t direction, ViewOptions options, std::int32_t lineLen) {
  assert(slice.Slen >= 0 && slice.Soff >= 0);
  const RowShape shape = WidestRow(lineLen);
  if (shape.groups == 0) return VS_FAILED | VS_NARROW;
  const std::uint8_t* map = GetCharMap(options);
  if (direction == FILL_FORWARD) {
    FillForward(slice, lines, text, pos, map, shape);
  } else {
    FillBackward(slice, lines, text, pos, map, shape);
  }
  return 0;
}
