#include "engine/hex_format.h"

#include <gtest/gtest.h>

#include "tests/engine/format_pass.h"

namespace {

const std::string kSixteen = "0123456789ABCDEF";
const std::string kDigits16 = "30313233 34353637 38394142 43444546";

TEST(HexFormat, RowSizeFollowsTheLineLength) {
  struct Case {
    std::int32_t lineLen, bytes, characters;
  };
  const Case cases[] = {{22, 4, 22},    {34, 4, 22},     {35, 8, 35},         {60, 8, 35},
                        {61, 16, 61},   {112, 16, 61},   {113, 32, 113},      {216, 32, 113},
                        {217, 64, 217}, {1000, 64, 217}, {INT32_MAX, 64, 217}};
  const std::string bytes(200, 'x');
  for (const Case& c : cases) {
    SCOPED_TRACE(c.lineLen);
    const PassResult result = RunPass(FormatHex, bytes, 0, 0, FILL_FORWARD, 0, c.lineLen);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines.at(1).pos, c.bytes);
    EXPECT_EQ(result.lines.at(0).text.size(), static_cast<std::size_t>(c.characters));
  }
  for (const std::int32_t lineLen : {21, 8, 1, 0, -1, INT32_MIN}) {
    for (const std::int32_t direction : {FILL_FORWARD, FILL_BACKWARD}) {
      const PassResult result = RunPass(FormatHex, bytes, 9, 9, direction, 0, lineLen, {10, 5, 300, 7});
      EXPECT_EQ(result.status, VS_FAILED | VS_NARROW) << lineLen;
      EXPECT_EQ(result.index, 5);
      EXPECT_EQ(result.textUsed, 7);
    }
  }
}

struct Case {
  const char* name;
  std::string bytes;
  std::int32_t off;
  FilePos pos;
  std::int32_t direction;
  std::int32_t lineLen;
  PassLimits limits;
  std::vector<PassLine> lines;
  FilePos end;         // forward: the sentinel's Lpos
  std::int32_t index;  // Ccur afterwards
};

const PassLimits kTop = {10, 0, 1000, 0};
const PassLimits kMiddle = {10, 5, 1000, 0};

TEST(HexFormat, Passes) {
  const std::string twenty = kSixteen + "wxyz";
  const std::string lastRow = "000004  34353637 38394142 43444546 7778797A  456789ABCDEFwxyz";
  const Case cases[] = {
      {"empty slice", "", 0, 0, FILL_FORWARD, 80, kTop, {}, 0, 0},
      {"empty slice, backward", "", 0, 0, FILL_BACKWARD, 80, kMiddle, {}, 0, 5},
      {"a full row",
       kSixteen,
       0,
       0,
       FILL_FORWARD,
       61,
       kTop,
       {{0, "000000  " + kDigits16 + "  " + kSixteen}},
       16,
       1},
      {"one byte", "A", 0, 0, FILL_FORWARD, 61, kTop, {{0, "000000  41" + std::string(35, ' ') + "A"}}, 1, 1},
      {"high bytes and marks",
       std::string("\0\x9F\xFF\t", 4),
       0,
       0,
       FILL_FORWARD,
       22,
       kTop,
       {{0, "000000  009FFF09  \xB7\x9F\xFF\xA4"}},
       4,
       1},
      {"the end of 20 bytes",
       twenty,
       20,
       20,
       FILL_BACKWARD,
       61,
       kMiddle,
       {{0, "FFFFF4                             30313233              0123"}, {4, lastRow}},
       0,
       3},
      {"a row that begins 5 bytes before the file",
       "abc",
       3,
       3,
       FILL_BACKWARD,
       35,
       kMiddle,
       {{0, "FFFFFB             616263       abc"}},
       0,
       4},
      {"a row that begins above the slice is not made",
       "abcdefghij",
       10,
       110,
       FILL_BACKWARD,
       22,
       kMiddle,
       {{102, "000066  63646566  cdef"}, {106, "00006A  6768696A  ghij"}},
       0,
       3},
      {"nor with blanks for bytes that the file has", "abc", 3, 5, FILL_BACKWARD, 35, kMiddle, {}, 0, 5},
      {"array full",
       "abcdefghij",
       0,
       0,
       FILL_FORWARD,
       22,
       {2, 0, 1000, 0},
       {{0, "000000  61626364  abcd"}},
       4,
       1},
      {"array full, backward",
       "abcdefghij",
       10,
       10,
       FILL_BACKWARD,
       22,
       {2, 1, 1000, 0},
       {{6, "000006  6768696A  ghij"}},
       0,
       0},
      // Room is asked for a full row even where the row to come is short.
      {"no room for a full row",
       "abcde",
       0,
       0,
       FILL_FORWARD,
       22,
       {9, 0, 43, 0},
       {{0, "000000  61626364  abcd"}},
       4,
       1},
      {"room for exactly that",
       "abcde",
       0,
       0,
       FILL_FORWARD,
       22,
       {9, 0, 44, 0},
       {{0, "000000  61626364  abcd"}, {4, "000004  65        e"}},
       5,
       2},
      {"no room, backward",
       "abcdefgh",
       8,
       8,
       FILL_BACKWARD,
       22,
       {9, 5, 43, 0},
       {{4, "000004  65666768  efgh"}},
       0,
       4},
      {"behind the data, forward", "abc", 5, 5, FILL_FORWARD, 22, kTop, {}, 5, 0},
      {"behind the data, backward",
       "abcde",
       9,
       9,
       FILL_BACKWARD,
       22,
       kMiddle,
       {{0, "FFFFFD        61     a"}, {1, "000001  62636465  bcde"}},
       0,
       3},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const PassResult result = RunPass(FormatHex, c.bytes, c.off, c.pos, c.direction, 0, c.lineLen, c.limits);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines, c.lines);
    EXPECT_EQ(result.index, c.index);
    if (c.direction == FILL_FORWARD) {
      EXPECT_EQ(result.sentinel, c.end);
      EXPECT_EQ(result.end, c.end);
    }
  }
}

TEST(HexFormat, AddressesOfAnySize) {
  struct AddressCase {
    FilePos pos;
    const char* forward;
    const char* backward;
  };
  // A forward address of seven digits keeps one blank, one of eight runs into the digits of the bytes.
  const AddressCase cases[] = {
      {0x000004, "000004  61626364  abcd", "000004  61626364  abcd"},
      {0xFFFFFC, "FFFFFC  61626364  abcd", "FFFFFC  61626364  abcd"},
      {0x1000000, "1000000 61626364  abcd", "000000  61626364  abcd"},
      {0xFFFFFFC, "FFFFFFC 61626364  abcd", "FFFFFC  61626364  abcd"},
      {0x10000000, "1000000061626364  abcd", "000000  61626364  abcd"},
      {0x7FFFFFF8, "7FFFFFF861626364  abcd", "FFFFF8  61626364  abcd"},
      {0xFFFFFFFC, "FFFFFFFC61626364  abcd", "FFFFFC  61626364  abcd"},
      // Behind 4 GB: the last six digits, marked as cut short.
      {0x100000000,
       "\x85"
       "000000 61626364  abcd",
       "\x85"
       "000000 61626364  abcd"},
      {0x123456789AB,
       "\x85"
       "6789AB 61626364  abcd",
       "\x85"
       "6789AB 61626364  abcd"},
      {INTPTR_MAX - 4,
       "\x85"
       "FFFFFB 61626364  abcd",
       "\x85"
       "FFFFFB 61626364  abcd"},
  };
  for (const AddressCase& c : cases) {
    SCOPED_TRACE(c.pos);
    const std::vector<PassLine> forward = {{c.pos, c.forward}};
    const std::vector<PassLine> backward = {{c.pos, c.backward}};
    EXPECT_EQ(RunPass(FormatHex, "abcd", 0, c.pos, FILL_FORWARD, 0, 22).lines, forward);
    EXPECT_EQ(RunPass(FormatHex, "abcd", 4, c.pos + 4, FILL_BACKWARD, 0, 22, kMiddle).lines, backward);
  }
}

// A last row of one byte behind an address of eight digits: what the address leaves over must not show.
TEST(HexFormat, LongAddressInAShortRow) {
  const PassResult result = RunPass(FormatHex, "a", 0, 0x7FFFFFF8, FILL_FORWARD, 0, 22);
  EXPECT_EQ(result.lines, std::vector<PassLine>({{0x7FFFFFF8, "7FFFFFF861        a"}}));
}

TEST(HexFormat, OnlyTheCharactersFollowTheCode) {
  EXPECT_EQ(RunPass(FormatHex, "\xC1\xF1\r\f", 0, 0, FILL_FORWARD, VO_EBCDIC, 22).lines.at(0).text,
            "000000  C1F10D0C  A1\xB7\xB7");
  EXPECT_EQ(RunPass(FormatHex, "\xC1\xF1\r\f", 4, 4, FILL_BACKWARD, VO_KEEPFF, 22, kMiddle).lines.at(0).text,
            "000000  C1F10D0C  \xC1\xF1\xB7\f");
}

}  // namespace
