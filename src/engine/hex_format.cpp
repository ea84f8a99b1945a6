#include "engine/hex_format.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>

#include "engine/byte_columns.h"

namespace {

constexpr char kDigits[] = "0123456789ABCDEF";
constexpr std::int32_t kMostGroups = 16;

constexpr std::int32_t kFewestDigits = 6;

constexpr std::int32_t kRunDigitsBit = 16;
constexpr std::int32_t kFileDigitsBit = 20;
static_assert(VO_RUNDIGITS == ViewOptions{15} << kRunDigitsBit);
static_assert(VO_FILEDIGITS == ViewOptions{15} << kFileDigitsBit);

// The two digits of each byte value.
using DigitPair = std::array<Cell, 2>;
constexpr auto kDigitPairs = [] {
  std::array<DigitPair, 256> pairs{};
  for (std::size_t value = 0; value < 256; ++value)
    pairs[value] = {static_cast<Cell>(kDigits[value >> 4]), static_cast<Cell>(kDigits[value & 15])};
  return pairs;
}();

struct RowShape {
  std::int32_t digits = 0;  // of the address
  std::int32_t groups = 0;
  std::int32_t bytes = 0;            // bytes of a full row
  std::int32_t groupColumn = 0;      // where the digits of the first byte stand
  std::int32_t characterColumn = 0;  // where the character of the first byte stands
  std::int32_t full = 0;             // characters of a full row
};

constexpr std::int32_t GroupColumn(std::int32_t digits) {
  return std::max(kHexAddressColumns, digits + 1);
}

// The shape with the most groups, a power of two, that fits lineLen; groups is 0 when none does. It must fit
// with the file's largest address, so that rows have the same groups all over the file.
constexpr RowShape WidestRow(std::int32_t lineLen, ViewOptions options) {
  const auto digits = kFewestDigits + static_cast<std::int32_t>((options & VO_RUNDIGITS) >> kRunDigitsBit);
  const auto most = kFewestDigits + static_cast<std::int32_t>((options & VO_FILEDIGITS) >> kFileDigitsBit);
  const std::int32_t groupColumn = GroupColumn(digits);
  const std::int32_t spare = std::max(GroupColumn(most) - groupColumn, 0);
  RowShape widest;
  for (std::int32_t groups = 1; groups <= kMostGroups; groups *= 2) {
    const std::int32_t bytes = groups * kHexGroupBytes;
    const std::int32_t characterColumn = groupColumn + groups * kHexGroupColumns + 1;
    const std::int32_t full = characterColumn + bytes;
    if (full + spare <= lineLen) widest = {digits, groups, bytes, groupColumn, characterColumn, full};
  }
  return widest;
}
static_assert(WidestRow(21, 0).groups == 0 && WidestRow(22, 0).groups == 1 && WidestRow(217, 0).groups == 16);

constexpr ViewOptions DigitsAboveFewest(FilePos last) {
  ViewOptions digits = 0;
  for (ByteCount address = last.Offset() >> 4 * kFewestDigits; address > 0; address >>= 4)
    ++digits;
  return digits;
}

// The last digits of the address; those of a row that begins in front of the file count down from 0.
void WriteAddress(Cell* row, std::int32_t digits, FilePos pos) {
  auto value = static_cast<std::uint64_t>(pos.Offset());
  for (std::int32_t i = digits - 1; i >= 0; --i) {
    row[i] = static_cast<Cell>(kDigits[value & 15]);
    value >>= 4;
  }
}

// Writes the digits and characters of the row's bytes `first` to `end` - 1, of which the one at `first` is at
// index `off` of the slice. The row is blank where there are none, and in front.
template <typename Columns>
void WriteBytes(Cell* row, const RowShape& shape, std::int32_t first, std::int32_t end,
                const FileSlice& slice, std::int32_t off, const Columns& columns) {
  const std::uint8_t* const bytes = slice.Sbuf + off;
  const bool whole = first == 0 && end == shape.bytes;
  std::fill_n(row + shape.digits, (whole ? shape.groupColumn : shape.full) - shape.digits, U' ');
  const auto put = [&](std::int32_t i) {
    const std::int32_t column =
        shape.groupColumn + i / kHexGroupBytes * kHexGroupColumns + i % kHexGroupBytes * 2;
    std::memcpy(row + column, &kDigitPairs[bytes[i - first]], sizeof(DigitPair));
  };
  if (whole) {
    for (std::int32_t i = 0; i < end; i += kHexGroupBytes) {
      Cell* const group = row + shape.groupColumn + i / kHexGroupBytes * kHexGroupColumns;
      for (std::int32_t k = 0; k < kHexGroupBytes; ++k)
        std::memcpy(group + k * 2, &kDigitPairs[bytes[i + k]], sizeof(DigitPair));
      group[kHexGroupColumns - 1] = U' ';
    }
    row[shape.characterColumn - 1] = U' ';
  } else {
    for (std::int32_t i = first; i < end; ++i)
      put(i);
  }
  columns.Write(row + shape.characterColumn + first, off, end - first);
}

// One test of room for each row serves for all writes to it.
bool HasRoom(const TextBuffer& text, const RowShape& shape) {
  return text.Tlen - text.Tend >= shape.full;
}

template <typename Columns>
void FillForward(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                 const Columns& columns, const RowShape& shape) {
  std::int32_t off = slice.Soff;
  while (lines.Ccur < lines.Ccnt - 1 && off < slice.Slen && HasRoom(text, shape)) {
    const std::int32_t count = std::min(shape.bytes, slice.Slen - off);
    if (!columns.Knows(off, off + count)) break;
    Cell* row = text.Tbuf + text.Tend;
    WriteAddress(row, shape.digits, pos);
    WriteBytes(row, shape, 0, count, slice, off, columns);

    const std::int32_t length = shape.characterColumn + count;
    lines.Cline[lines.Ccur++] = {pos, text.Tend, length, 0, 0};
    off += count;
    pos += count;
    text.Tend += length;
  }
  lines.Cline[lines.Ccur] = SentinelAt(pos);
  lines.Cend = pos;
}

template <typename Columns>
void FillBackward(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                  const Columns& columns, const RowShape& shape) {
  ByteCount off = slice.Soff;
  if (off > slice.Slen) {  // the file ends before pos: start from where it ends
    pos -= off - slice.Slen;
    off = slice.Slen;
  }
  while (lines.Ccur > 0 && off > 0 && HasRoom(text, shape)) {
    off -= shape.bytes;
    pos -= shape.bytes;
    if (off < 0 && pos - off > 0) return;  // the row begins above the slice, but not above the file
    if (!columns.Knows(off, off + shape.bytes)) return;

    Cell* row = text.Tbuf + text.Tend;
    WriteAddress(row, shape.digits, pos);
    const auto first = static_cast<std::int32_t>(std::max<ByteCount>(-off, 0));
    const auto from = static_cast<std::int32_t>(std::max<ByteCount>(off, 0));
    WriteBytes(row, shape, first, shape.bytes, slice, from, columns);

    lines.Cline[--lines.Ccur] = {std::max<FilePos>(pos, 0), text.Tend, shape.full, 0, 0};
    text.Tend += shape.full;
  }
}

}  // namespace

ViewOptions HexAddressOptions(FilePos largest, FilePos fileLength) {
  const FilePos last = std::max<FilePos>(fileLength - 1, 0);
  const FilePos ofRun = std::clamp<FilePos>(largest, 0, last);
  return DigitsAboveFewest(ofRun) << kRunDigitsBit | DigitsAboveFewest(last) << kFileDigitsBit;
}

ViewStatus FormatHex(const FileSlice& slice, LineCursor& lines, TextBuffer& text, FilePos pos,
                     std::int32_t direction, ViewOptions options, std::int32_t lineLen) {
  assert(slice.Slen >= 0 && slice.Soff >= 0);
  const RowShape shape = WidestRow(lineLen, options);
  if (shape.groups == 0) return VS_FAILED | VS_NARROW;
  WithByteColumns(slice, pos, options, [&](const auto& columns) {
    if (direction == FILL_FORWARD) {
      FillForward(slice, lines, text, pos, columns, shape);
    } else {
      FillBackward(slice, lines, text, pos, columns, shape);
    }
  });
  return 0;
}
