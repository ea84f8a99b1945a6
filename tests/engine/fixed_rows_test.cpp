// The two formats whose lines are a fixed number of bytes: their laws, held against a reference that is too
// simple to be wrong, and what happens where room or data end.
#include <gtest/gtest.h>

#include <cstdio>
#include <random>

#include "engine/char_map.h"
#include "engine/hex_format.h"
#include "engine/raw_format.h"
#include "tests/engine/format_pass.h"

namespace {

// The option bits for addresses of so many digits.
constexpr ViewOptions Digits(std::uint32_t run, std::uint32_t file) {
  return (run - 6) << 16 | (file - 6) << 20;
}

struct Shape {
  FormatProc format;
  std::int32_t lineLen;
  std::int32_t bytes;  // of a line
  int digits = 6;
  ViewOptions options = 0;
};
const Shape kShapes[] = {{FormatRaw, -7, 1},
                         {FormatRaw, 7, 7},
                         {FormatRaw, 250, 250},
                         {FormatHex, 22, 4},
                         {FormatHex, 34, 4},
                         {FormatHex, 35, 8},
                         {FormatHex, 60, 8},
                         {FormatHex, 61, 16},
                         {FormatHex, 112, 16},
                         {FormatHex, 113, 32},
                         {FormatHex, 216, 32},
                         {FormatHex, 217, 64},
                         {FormatHex, INT32_MAX, 64},
                         // The digits of the file's largest address decide how many bytes fit.
                         {FormatHex, 35, 8, 7, Digits(7, 7)},
                         {FormatHex, 35, 4, 6, Digits(6, 8)},
                         {FormatHex, 36, 8, 6, Digits(6, 8)},
                         {FormatHex, 36, 8, 8, Digits(8, 8)},
                         {FormatHex, 121, 16, 7, Digits(7, 16)},
                         {FormatHex, 122, 32, 10, Digits(10, 16)},
                         {FormatHex, 226, 64, 16, Digits(16, 16)},
                         {FormatHex, 225, 32, 16, Digits(16, 6)}};

std::string Name(const Shape& shape, FilePos at) {
  return (shape.format == FormatRaw ? "raw " : "hex ") + std::to_string(shape.lineLen) + " at " +
         std::to_string(at.Offset());
}

// The line that begins at `pos`, maybe before the file.
PassLine ReferenceLine(const Shape& shape, const std::string& file, FilePos pos) {
  std::string digits;
  std::string characters;
  for (std::int32_t i = 0; i < shape.bytes && pos + i < FilePos::At(file.size()); ++i) {
    char pair[4] = "  ";
    char shown = ' ';
    if (pos + i >= 0) {
      const auto byte = static_cast<std::uint8_t>(file[static_cast<std::size_t>((pos + i).Offset())]);
      std::snprintf(pair, sizeof pair, "%02X", byte);
      shown = static_cast<char>(GetCharMap(0)[byte]);
    }
    digits += pair;
    if (i % 4 == 3) digits += ' ';
    characters += shown;
  }
  if (shape.format == FormatRaw) return {std::max<FilePos>(pos, 0), characters};
  char address[32];
  std::snprintf(address, sizeof address, "%016llX", static_cast<unsigned long long>(pos.Offset()));
  std::string row = address + 16 - shape.digits;
  row.resize(shape.digits < 8 ? 8 : row.size() + 1, ' ');
  const std::size_t digitsEnd = row.size() + static_cast<std::size_t>(shape.bytes / 4 * 9 + 1);
  row += digits;
  row.resize(digitsEnd, ' ');
  return {std::max<FilePos>(pos, 0), row + characters};
}

std::vector<PassLine> Reference(const Shape& shape, const std::string& file, FilePos pos,
                                std::int32_t direction) {
  std::vector<PassLine> lines;
  if (direction == FILL_FORWARD) {
    for (; pos < FilePos::At(file.size()); pos += shape.bytes)
      lines.push_back(ReferenceLine(shape, file, pos));
  } else {
    while (pos > 0)
      lines.insert(lines.begin(), ReferenceLine(shape, file, pos -= shape.bytes));
  }
  return lines;
}

// Whatever piece of the file is in memory, the lines made are those of the whole file, and only whole ones
// at the upper end.
TEST(FixedRows, APieceOfTheFileGivesLinesOfTheFile) {
  std::mt19937 random(5);
  std::string file(400, '\0');
  for (char& byte : file)
    byte = static_cast<char>(random());
  for (int round = 0; round < 6000; ++round) {
    const Shape& shape = kShapes[random() % std::size(kShapes)];
    const std::size_t start = random() % 2 == 0 ? 0 : random() % 300;
    const std::string piece = file.substr(start, random() % 100);
    const auto off = static_cast<std::int32_t>(random() % (piece.size() + 1));
    const FilePos pos = FilePos::At(start) + off;
    SCOPED_TRACE(Name(shape, pos) + " piece from " + std::to_string(start));
    const std::string cut = file.substr(0, start + piece.size());
    const PassResult forward =
        RunPass(shape.format, piece, off, pos, FILL_FORWARD, shape.options, shape.lineLen);
    ASSERT_EQ(forward.lines, Reference(shape, cut, pos, FILL_FORWARD));
    ASSERT_EQ(forward.sentinel, FilePos::At(cut.size()));
    ASSERT_EQ(forward.end, forward.sentinel);
    std::vector<PassLine> above = Reference(shape, file, pos, FILL_BACKWARD);
    std::erase_if(above, [&](const PassLine& line) { return start > 0 && line.pos < FilePos::At(start); });
    const PassLimits limits = {200, 200, 40000};
    ASSERT_EQ(
        RunPass(shape.format, piece, off, pos, FILL_BACKWARD, shape.options, shape.lineLen, limits).lines,
        above);
  }
}

TEST(FixedRows, WhereRoomOrDataEnd) {
  struct Case {
    FormatProc format;
    const char* bytes;
    std::int32_t off, lineLen;
    PassLimits limits;  // backward where firstEntry is 5
    const char* rows;
  };
  const PassLimits kMiddle = {10, 5, 100};
  const Case cases[] = {
      {FormatRaw, "abcdef", 0, 1, {4, 1, 100}, "0:a 1:b =2"},
      {FormatRaw, "abcdef", 0, 3, {9, 0, 5}, "0:abc 3:de =5"},
      {FormatRaw, "abcdef", 0, 2, {9, 0, 4, 4}, "=0"},
      {FormatRaw, "abcdef", 6, 2, {9, 5, 3}, "4:ef "},
      {FormatRaw, "abc", 5, 2, kMiddle, "0: a 1:bc "},
      // Room is asked for a full row even where the row to come is short.
      {FormatHex, "abcde", 0, 22, {9, 0, 43}, "0:000000  61626364  abcd =4"},
      {FormatHex, "abcde", 0, 22, {9, 0, 44}, "0:000000  61626364  abcd 4:000004  65        e =5"},
      {FormatHex, "abcdefgh", 8, 22, {9, 5, 43}, "4:000004  65666768  efgh "},
      {FormatHex, "abcde", 9, 22, kMiddle, "0:FFFFFD        61     a 1:000001  62636465  bcde "},
  };
  for (const Case& c : cases) {
    const std::int32_t direction = c.limits.firstEntry == 5 ? FILL_BACKWARD : FILL_FORWARD;
    const PassResult result =
        RunPass(c.format, c.bytes, c.off, FilePos::At(c.off), direction, 0, c.lineLen, c.limits);
    EXPECT_EQ(result.Shown(), c.rows);
    EXPECT_EQ(result.status, 0) << c.rows;
  }
  for (const std::int32_t direction : {FILL_FORWARD, FILL_BACKWARD}) {
    const PassResult narrow = RunPass(FormatHex, "abcde", 3, 3, direction, 0, 21, {10, 5, 300, 7});
    EXPECT_EQ(narrow.status, VS_FAILED | VS_NARROW);
    EXPECT_EQ(narrow.index, 5);
    EXPECT_EQ(narrow.textUsed, 7);
  }
}

// Both directions show all digits, as many in each row of the run as its largest address needs.
TEST(FixedRows, AddressesOfAnySize) {
  constexpr ByteCount k16Mb = 0x1000000;
  constexpr ByteCount k4Gb = 0x100000000;
  struct Case {
    FilePos largest, fileLength, pos;
    std::string address;
  };
  const Case cases[] = {{k16Mb - 1, INTPTR_MAX, 0xFFFFFC, "FFFFFC  "},
                        {k16Mb, INTPTR_MAX, 0xFFFFFC, "0FFFFFC "},
                        {16 * k16Mb - 1, INTPTR_MAX, k16Mb, "1000000 "},
                        {16 * k16Mb, INTPTR_MAX, k16Mb, "01000000 "},
                        {k4Gb - 1, INTPTR_MAX, 0x89ABCDEC, "89ABCDEC "},
                        {k4Gb, INTPTR_MAX, k4Gb, "100000000 "},
                        {INTPTR_MAX, INTPTR_MAX, INTPTR_MAX - 5, "7FFFFFFFFFFFFFFA "},
                        {INTPTR_MAX, k16Mb + 1, 4, "0000004 "},
                        {INTPTR_MAX, k16Mb, 4, "000004  "},
                        {4, 0, 4, "000004  "},
                        {-4, INTPTR_MAX, 4, "000004  "}};
  for (const Case& c : cases) {
    const std::string row = c.address + "61626364  abcd";
    const ViewOptions options = HexAddressOptions(c.largest, c.fileLength);
    EXPECT_EQ(RunPass(FormatHex, "abcd", 0, c.pos, FILL_FORWARD, options, 31).lines.at(0).text, row);
    EXPECT_EQ(
        RunPass(FormatHex, "abcd", 4, c.pos + 4, FILL_BACKWARD, options, 31, {9, 5, 99}).lines.at(0).text,
        row);
  }
  // A file of 8 digits needs a column more than there is, also where its addresses are short.
  const ViewOptions longFile = HexAddressOptions(9, 16 * k16Mb + 1);
  EXPECT_EQ(RunPass(FormatHex, "abcd", 0, 0, FILL_FORWARD, longFile, 22).status, VS_FAILED | VS_NARROW);
  EXPECT_EQ(RunPass(FormatHex, "abcd", 0, 0, FILL_FORWARD, HexAddressOptions(9, 16 * k16Mb), 22).status, 0);
}

}  // namespace
