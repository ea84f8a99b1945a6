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

struct Shape {
  FormatProc format;
  std::int32_t lineLen;
  FilePos bytes;  // of a line
};
const Shape kShapes[] = {{FormatRaw, -7, 1},        {FormatRaw, 7, 7},    {FormatRaw, 250, 250},
                         {FormatHex, 22, 4},        {FormatHex, 34, 4},   {FormatHex, 35, 8},
                         {FormatHex, 60, 8},        {FormatHex, 61, 16},  {FormatHex, 112, 16},
                         {FormatHex, 113, 32},      {FormatHex, 216, 32}, {FormatHex, 217, 64},
                         {FormatHex, INT32_MAX, 64}};

std::string Name(const Shape& shape, FilePos at) {
  return (shape.format == FormatRaw ? "raw " : "hex ") + std::to_string(shape.lineLen) + " at " +
         std::to_string(at);
}

// The line that begins at `pos`, maybe before the file, as a pass in `direction` makes it.
PassLine ReferenceLine(const Shape& shape, const std::string& file, FilePos pos, std::int32_t direction) {
  std::string digits;
  std::string characters;
  for (FilePos i = 0; i < shape.bytes && pos + i < static_cast<FilePos>(file.size()); ++i) {
    char pair[4] = "  ";
    char shown = ' ';
    if (pos + i >= 0) {
      const auto byte = static_cast<std::uint8_t>(file[static_cast<std::size_t>(pos + i)]);
      std::snprintf(pair, sizeof pair, "%02X", byte);
      shown = static_cast<char>(GetCharMap(0)[byte]);
    }
    digits += pair;
    if (i % 4 == 3) digits += ' ';
    characters += shown;
  }
  if (shape.format == FormatRaw) return {std::max<FilePos>(pos, 0), characters};
  char address[32];
  std::snprintf(address, sizeof address, "%06X  ", static_cast<unsigned>(pos));
  std::string row = direction == FILL_FORWARD ? address : address + std::strlen(address) - 8;
  row += digits;
  row.resize(static_cast<std::size_t>(9 + shape.bytes / 4 * 9), ' ');
  return {std::max<FilePos>(pos, 0), row + characters};
}

std::vector<PassLine> Reference(const Shape& shape, const std::string& file, FilePos pos,
                                std::int32_t direction) {
  std::vector<PassLine> lines;
  if (direction == FILL_FORWARD) {
    for (; pos < static_cast<FilePos>(file.size()); pos += shape.bytes)
      lines.push_back(ReferenceLine(shape, file, pos, direction));
  } else {
    while (pos > 0)
      lines.insert(lines.begin(), ReferenceLine(shape, file, pos -= shape.bytes, direction));
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
    const auto start = random() % 2 == 0 ? 0 : static_cast<FilePos>(random() % 300);
    const std::string piece = file.substr(static_cast<std::size_t>(start), random() % 100);
    const auto off = static_cast<std::int32_t>(random() % (piece.size() + 1));
    const FilePos pos = start + off;
    SCOPED_TRACE(Name(shape, pos) + " piece from " + std::to_string(start));
    const std::string cut = file.substr(0, static_cast<std::size_t>(start) + piece.size());
    const PassResult forward = RunPass(shape.format, piece, off, pos, FILL_FORWARD, 0, shape.lineLen);
    ASSERT_EQ(forward.lines, Reference(shape, cut, pos, FILL_FORWARD));
    ASSERT_EQ(forward.sentinel, static_cast<FilePos>(cut.size()));
    ASSERT_EQ(forward.end, forward.sentinel);
    std::vector<PassLine> above = Reference(shape, file, pos, FILL_BACKWARD);
    std::erase_if(above, [&](const PassLine& line) { return start > 0 && line.pos < start; });
    ASSERT_EQ(
        RunPass(shape.format, piece, off, pos, FILL_BACKWARD, 0, shape.lineLen, {200, 200, 40000}).lines,
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
    const PassResult result = RunPass(c.format, c.bytes, c.off, c.off, direction, 0, c.lineLen, c.limits);
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

TEST(FixedRows, AddressesOfAnySize) {
  struct Case {
    FilePos pos;
    std::string forward, backward;
  };
  // A forward address of seven digits keeps one blank, one of eight runs into the digits of the bytes. Behind
  // 4 GB both have the last six digits, marked as cut short.
  const Case cases[] = {
      {0xFFFFFC, "FFFFFC  ", "FFFFFC  "},          {0x1000000, "1000000 ", "000000  "},
      {0x10000000, "10000000", "000000  "},        {0xFFFFFFFF, "FFFFFFFF", "FFFFFF  "},
      {0x100000000, "\205000000 ", "\205000000 "}, {INTPTR_MAX - 4, "\205FFFFFB ", "\205FFFFFB "}};
  for (const Case& c : cases) {
    const std::string row = "61626364  abcd";
    EXPECT_EQ(RunPass(FormatHex, "abcd", 0, c.pos, FILL_FORWARD, 0, 22).lines.at(0).text, c.forward + row);
    EXPECT_EQ(RunPass(FormatHex, "abcd", 4, c.pos + 4, FILL_BACKWARD, 0, 22, {9, 5, 99}).lines.at(0).text,
              c.backward + row);
  }
  // What the address leaves over in a short row must not show.
  EXPECT_EQ(RunPass(FormatHex, "a", 0, 0x7FFFFFF8, FILL_FORWARD, 0, 22).lines.at(0).text,
            "7FFFFFF861        a");
}

TEST(FixedRows, OnlyTheCharactersFollowTheCode) {
  const auto shown = [](FormatProc format, ViewOptions options) {
    return RunPass(format, "\xC1\xF1\r\f", 0, 0, FILL_FORWARD, options, 22).lines.at(0).text;
  };
  EXPECT_EQ(shown(FormatHex, VO_EBCDIC), "000000  C1F10D0C  A1\xB7\xB7");
  EXPECT_EQ(shown(FormatRaw, VO_KEEPFF), "\xC1\xF1\xB7\f");
}

}  // namespace
