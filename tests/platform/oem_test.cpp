#include "platform/posix/oem.h"

#include <gtest/gtest.h>

#include <cstring>

#include "platform/posix/windows_1252.h"
#include "platform/win32.h"

namespace {

TEST(Oem, ThePageFollowsTheLocale) {
  const std::pair<const char*, const char*> cases[] = {{"", "CP437"},
                                                       {"C", "CP437"},
                                                       {"C.UTF-8", "CP437"},
                                                       {"POSIX", "CP437"},
                                                       {"en_US.UTF-8", "CP437"},
                                                       {"en_GB", "CP850"},
                                                       {"en", "CP437"},
                                                       {"de_AT.UTF-8@euro", "CP850"},
                                                       {"ru_RU.KOI8-R", "CP866"},
                                                       {"ja_JP", "CP437"},
                                                       {"deutsch", "CP437"},
                                                       {"pl", "CP852"},
                                                       {"fr_CA", "CP850"},
                                                       {"el_GR", "CP737"}};
  for (const auto& [locale, page] : cases) {
    EXPECT_STREQ(OemCodePageOf(locale), page) << locale;
  }
}

TEST(Oem, CharactersStayWhatTheyAreWhereWindows1252HasThem) {
  struct Case {
    const char* page;
    std::uint8_t oem, ansi;
  };
  // The second half are stand-ins: corners and lines, shades, Greek and
  // Cyrillic letters, mathematics, letters with accents.
  const Case cases[] = {
      {"CP437", 'A', 'A'},   {"CP437", 0x7F, 0x7F}, {"CP437", 0x82, 0xE9}, {"CP437", 0x84, 0xE4},
      {"CP437", 0x9B, 0xA2}, {"CP437", 0xE1, 0xDF}, {"CP437", 0xFF, 0xA0}, {"CP437", 0x9F, 0x83},
      {"CP437", 0x0A, 0x0A}, {"CP437", 0xFA, 0xB7}, {"CP850", 0xB8, 0xA9}, {"CP850", 0xD0, 0xF0},
      {"CP852", 0xE7, 0x9A}, {"CP857", 0xD5, '?'},  {"CP437", 0xC4, '-'},  {"CP437", 0xB3, '|'},
      {"CP437", 0xDA, '+'},  {"CP437", 0xCD, '='},  {"CP437", 0xDB, '#'},  {"CP437", 0xE0, 'a'},
      {"CP437", 0xE4, 'S'},  {"CP437", 0xF3, '<'},  {"CP437", 0xE6, 0xB5}, {"CP866", 0x80, 'A'},
      {"CP866", 0xEF, 'a'},  {"CP866", 0xA0, 'a'},  {"CP852", 0x9F, 'c'},  {"CP852", 0x88, 'l'},
      {"CP737", 0x80, 'A'},  {"CP737", 0x97, 'O'},  {"CP862", 0x80, '?'}};
  for (const Case& test : cases) {
    std::uint8_t table[256];
    FillOemTable(test.page, table);
    EXPECT_EQ(table[test.oem], test.ansi) << test.page << ' ' << static_cast<int>(test.oem);
  }
}

TEST(Oem, EveryByteOfEveryPageHasOneByte) {
  for (const char* page :
       {"CP437", "CP737", "CP775", "CP850", "CP852", "CP855", "CP857", "CP862", "CP864", "CP866"}) {
    std::uint8_t table[256];
    FillOemTable(page, table);
    int lost = 0;
    for (int byte = 32; byte < 256; ++byte) {
      EXPECT_GE(table[byte], 32) << page << ' ' << byte;
      lost += table[byte] == '?' && byte != '?' ? 1 : 0;
    }
    // Hebrew and Arabic letters have nothing that looks like them; a page has
    // up to three open places.
    const bool foreign = std::strcmp(page, "CP862") == 0 || std::strcmp(page, "CP864") == 0;
    EXPECT_LE(lost, foreign ? 140 : 3) << page;
  }
}

TEST(Oem, TheOtherWayRoundIsTheInverseOrLooksAlike) {
  for (const char* page : {"CP437", "CP850", "CP852", "CP866"}) {
    std::uint8_t toAnsi[256];
    std::uint8_t toOem[256];
    FillOemTable(page, toAnsi);
    FillAnsiTable(page, toOem);
    for (int byte = 0; byte < 128; ++byte)
      EXPECT_EQ(toOem[byte], byte);
    for (int byte = 128; byte < 256; ++byte) {
      EXPECT_NE(toOem[byte], 0) << page << ' ' << byte;
      EXPECT_TRUE(toOem[byte] < 128 || toAnsi[toOem[byte]] == byte) << page << ' ' << byte;
    }
  }
  std::uint8_t toOem[256];
  FillAnsiTable("CP437", toOem);
  const std::pair<std::uint8_t, std::uint8_t> cases[] = {{0xE4, 0x84}, {0xDF, 0xE1}, {0xB7, 0xFA},
                                                         {0xC0, 'A'},  {0xA9, 'c'},  {0x80, 'E'},
                                                         {0xA7, 0x15}, {0x8D, '?'}};
  for (const auto& [ansi, oem] : cases) {
    EXPECT_EQ(toOem[ansi], oem) << static_cast<int>(ansi);
  }
}

TEST(Oem, ConvertsInPlaceAndLeavesAnUnknownPageAlone) {
  char text[] = "abc\x84|";
  EXPECT_TRUE(OemToCharBuffA(text, text, 5));
  EXPECT_EQ(std::memcmp(text, "abc\xE4|", 5), 0);
  EXPECT_TRUE(CharToOemBuffA(text, text, 5));
  EXPECT_EQ(std::memcmp(text, "abc\x84|", 5), 0);
  std::uint8_t table[256];
  FillOemTable("no such page", table);
  EXPECT_EQ(table[0x84], 0x84);
}

}  // namespace
