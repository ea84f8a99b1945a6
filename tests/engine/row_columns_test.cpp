#include "engine/row_columns.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "engine/text_format.h"
#include "tests/memory_origin.h"

namespace {

// A byte as a hex row writes it.
std::u32string Digits(std::uint8_t byte) {
  const char* const digits = "0123456789ABCDEF";
  return {static_cast<char32_t>(digits[byte >> 4]), static_cast<char32_t>(digits[byte & 15])};
}

std::u32string CellsIn(const LineEntry& line, const TextBuffer& text, const ColumnSpan& span) {
  std::u32string cells;
  for (std::int32_t i = span.first; i < span.end; ++i)
    cells += static_cast<char32_t>(text.Tbuf[line.Ltext + i]);
  return cells;
}

// Random words, tabs and line breaks: each letter must stand in the column that is told of it.
TEST(RowColumns, EachByteStandsWhereItIsSaidToStand) {
  std::mt19937 random(7);
  for (int round = 0; round < 60; ++round) {
    MemoryFile file;
    const std::string alphabet = "abcdefghijklmnopqrstuvwxyzABCXYZ0123456789    \t\n";
    for (int i = 0; i < 400; ++i)
      file.bytes += alphabet[random() % alphabet.size()];
    ByteSource source(std::make_unique<MemoryOrigin>(file));
    ASSERT_EQ(source.Open(""), 0);
    for (const FormatProc format : {FormatText, FormatHex, FormatRaw}) {
      const ViewOptions text =
          VO_EXPANDTABS | (random() % 2 != 0 ? VO_WRAP : 0) | (random() % 2 != 0 ? VO_UTF8 : 0);
      const ViewOptions options = format == FormatHex ? HexAddressOptions(400, 400) : text;
      const LineStyle style{format, options, static_cast<std::int32_t>(30 + random() % 60)};
      std::vector<LineEntry> entries(400);
      std::vector<Cell> cells(40'000);
      std::vector<CellCluster> clusters(40'000);
      LineCursor cursor{entries.data(), 400};
      TextBuffer buffer{cells.data(), 40'000, 0, clusters.data(), 0};
      bool cut = false;
      ASSERT_EQ(FormatSlice(source, 0, 400, cursor, buffer, style, cut) & VS_FAILED, 0);
      int seen = 0;
      for (std::int32_t row = 0; row < cursor.Ccur; ++row) {
        const LineEntry& line = entries[static_cast<std::size_t>(row)];
        const LineEntry& next = entries[static_cast<std::size_t>(row) + 1];
        const RowPlace place = PlaceOfRow(line, next, buffer);
        for (FilePos at = line.Lpos; at < next.Lpos; ++at) {
          const auto byte = static_cast<std::uint8_t>(file.bytes[static_cast<std::size_t>(at.Offset())]);
          const std::vector<ColumnSpan> spans = ColumnsOf(source, place, at, at + 1, style);
          if (format == FormatText && (byte <= ' ' || spans.empty())) continue;
          ++seen;
          if (format == FormatHex) ASSERT_EQ(CellsIn(line, buffer, spans.front()), Digits(byte));
          if (byte >= ' ') ASSERT_EQ(CellsIn(line, buffer, spans.back()), std::u32string(1, byte));
        }
      }
      EXPECT_GT(seen, format == FormatText
                          ? 100
                          : 399);  // of 400, some of which are blanks, or cut off without wrap
    }
  }
}

TEST(RowColumns, WideAndMarkedCharactersAndBytesAroundTheRow) {
  MemoryFile file{
      "a\xE4\xB8\xAD"
      "e\xCC\x81z\nnext"};  // a, a wide one, e with an accent, z
  ByteSource source(std::make_unique<MemoryOrigin>(file));
  ASSERT_EQ(source.Open(""), 0);
  const LineStyle style{FormatText, VO_UTF8, 80};
  const RowPlace row{0, 9, 5, 0};
  using Spans = std::vector<ColumnSpan>;
  EXPECT_EQ(ColumnsOf(source, row, 1, 4, style), (Spans{{1, 3}}));
  EXPECT_EQ(ColumnsOf(source, row, 4, 7, style), (Spans{{3, 4}}));
  EXPECT_EQ(ColumnsOf(source, row, 7, 12, style), (Spans{{4, 5}}));
  EXPECT_EQ(ColumnsOf(source, row, 8, 9, style), Spans{});
  EXPECT_EQ(ColumnsOf(source, row, 9, 12, style), Spans{});
}

// The first row of a run that does not begin at the start of a row has blanks where bytes would be missing.
TEST(RowColumns, RowsThatBeginInFrontOfTheFile) {
  MemoryFile file{std::string(64, 'x')};
  ByteSource source(std::make_unique<MemoryOrigin>(file));
  ASSERT_EQ(source.Open(""), 0);
  using Spans = std::vector<ColumnSpan>;
  EXPECT_EQ(ColumnsOf(source, {0, 5, 40, 0}, 3, 4, {FormatRaw, 0, 40}), (Spans{{38, 39}}));
  // Four groups: 8 columns, four times 9, one, and 16 characters. Byte 0 is the 12th of the row.
  EXPECT_EQ(ColumnsOf(source, {0, 5, 61, 6}, 0, 2, {FormatHex, 0, 61}),
            (Spans{{32, 34}, {35, 37}, {56, 58}}));
}

}  // namespace
