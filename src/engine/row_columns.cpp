#include "engine/row_columns.h"

#include <algorithm>
#include <bit>
#include <memory>

#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "engine/text_format.h"

namespace {

// The columns of a text row that the bytes in front of `at` take. Tabs, marks and the code's own rules are
// those of the format, since it is the format that makes them.
std::int32_t TextColumn(const ByteView& bytes, FilePos at, const LineStyle& style) {
  const auto count = static_cast<std::int32_t>(std::min<ByteCount>(at - bytes.from, bytes.count));
  if (count <= 0) return 0;
  constexpr std::int32_t kSize = kLongestLine + 1;
  const auto cells = std::make_unique_for_overwrite<Cell[]>(kSize);
  const auto clusters = std::make_unique_for_overwrite<CellCluster[]>(kSize);
  LineEntry entries[3];
  LineCursor cursor{entries, 3};
  TextBuffer text{cells.get(), kSize, 0, clusters.get(), 0};
  const LineStyle row = {style.format, style.options, std::clamp(style.lineLen, 1, kLongestLine)};
  const ViewStatus status = row.format({bytes.bytes, count, 0, true}, cursor, text, bytes.from, FILL_FORWARD,
                                       row.options, row.lineLen);
  return (status & VS_FAILED) == 0 && cursor.Ccur > 0 ? std::max(entries[0].Llen, 0) : 0;
}

std::vector<ColumnSpan> TextColumns(ByteSource& source, const RowPlace& row, FilePos from, FilePos to,
                                    const LineStyle& style) {
  const ByteView bytes = source.View(row.start, std::min(to, row.start + kLargestView));
  if (source.Failure() != 0) return {};
  const ColumnSpan span = {std::min(TextColumn(bytes, from, style), row.length),
                           std::min(TextColumn(bytes, to, style), row.length)};
  if (span.first >= span.end) return {};
  return {span};
}

// A hex row as its own length and address tell it. `skipped`: bytes that the row would have in front of the
// file.
struct HexRow {
  std::int32_t groupColumn = 0;
  std::int32_t characterColumn = 0;
  std::int32_t skipped = 0;
};

HexRow ShapeOf(const RowPlace& row) {
  const auto count = static_cast<std::int32_t>(row.end - row.start);
  HexRow shape;
  shape.groupColumn = std::max(kHexAddressColumns, row.address + 1);
  const std::int32_t behind = row.length - shape.groupColumn - 1;  // columns of groups and characters
  const std::int32_t groups = (behind - count) / kHexGroupColumns;
  if ((behind - count) % kHexGroupColumns == 0 && std::has_single_bit(static_cast<std::uint32_t>(groups))) {
    shape.characterColumn = row.length - count;
  } else {
    const std::int32_t full = behind / (kHexGroupColumns + kHexGroupBytes) * kHexGroupBytes;
    shape.characterColumn = row.length - full;
    shape.skipped = full - count;
  }
  return shape;
}

std::vector<ColumnSpan> HexColumns(const RowPlace& row, FilePos from, FilePos to) {
  const HexRow shape = ShapeOf(row);
  const auto first = static_cast<std::int32_t>(from - row.start) + shape.skipped;
  const auto end = static_cast<std::int32_t>(to - row.start) + shape.skipped;
  std::vector<ColumnSpan> spans;
  for (std::int32_t i = first; i < end;) {
    const std::int32_t groupEnd = std::min(end, (i / kHexGroupBytes + 1) * kHexGroupBytes);
    const std::int32_t column =
        shape.groupColumn + i / kHexGroupBytes * kHexGroupColumns + i % kHexGroupBytes * 2;
    spans.push_back({column, column + (groupEnd - i) * 2});
    i = groupEnd;
  }
  spans.push_back({shape.characterColumn + first, shape.characterColumn + end});
  return spans;
}

}  // namespace

RowPlace PlaceOfRow(const LineEntry& line, const LineEntry& next, const TextBuffer& text) {
  RowPlace row{line.Lpos, next.Lpos, std::max(line.Llen, 0), 0};
  for (const Cell cell : LineCells(line, text)) {
    if (cell == U' ') break;
    ++row.address;
  }
  return row;
}

std::vector<ColumnSpan> ColumnsOf(ByteSource& source, const RowPlace& row, FilePos from, FilePos to,
                                  const LineStyle& style) {
  from = std::max(from, row.start);
  to = std::min(to, row.end);
  if (from >= to) return {};
  if (style.format == FormatHex) return HexColumns(row, from, to);
  if (style.format != FormatRaw) return TextColumns(source, row, from, to, style);
  const auto blanks = row.length - static_cast<std::int32_t>(row.end - row.start);
  return {{static_cast<std::int32_t>(from - row.start) + blanks,
           static_cast<std::int32_t>(to - row.start) + blanks}};
}
