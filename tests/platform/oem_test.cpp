#include "platform/posix/oem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/cells.h"

namespace {

TEST(Oem, ThePageFollowsTheLocale) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "CP437"},      {"C.UTF-8", "CP437"}, {"en_US.UTF-8", "CP437"},  {"en_GB", "CP850"},
      {"en", "CP437"},    {"pl", "CP852"},      {"ru_RU.KOI8-R", "CP866"}, {"de_AT.UTF-8@euro", "CP850"},
      {"ja_JP", "CP437"}, {"deutsch", "CP437"}, {"el_GR", "CP737"}};
  for (const auto& [locale, page] : cases)
    EXPECT_STREQ(OemCodePageOf(locale), page) << locale;
}

TEST(Oem, CharactersStayWhatTheyAreOrLookAlike) {
  struct Case {
    const char* page;
    std::uint8_t oem, ansi;
  };
  // In the second half stand-ins: corners and lines, shades, Greek and Cyrillic letters, mathematics, letters
  // with accents.
  const Case cases[] = {
      {"CP437", 'A', 'A'},   {"CP437", 0x82, 0xE9}, {"CP437", 0x9F, 0x83}, {"CP437", 0xFF, 0xA0},
      {"CP437", 0x0A, 0x0A}, {"CP850", 0xD0, 0xF0}, {"CP852", 0xE7, 0x9A}, {"CP857", 0xD5, '?'},
      {"CP437", 0xC4, '-'},  {"CP437", 0xDA, '+'},  {"CP437", 0xDB, '#'},  {"CP437", 0xE0, 'a'},
      {"CP437", 0xF3, '<'},  {"CP866", 0x80, 'A'},  {"CP852", 0x88, 'l'},  {"CP737", 0x97, 'O'}};
  std::uint8_t table[256];
  for (const Case& test : cases) {
    FillOemTable(test.page, table);
    EXPECT_EQ(table[test.oem], test.ansi) << test.page << ' ' << static_cast<int>(test.oem);
  }
  FillOemTable("no such page", table);
  EXPECT_EQ(table[0x84], 0x84);
}

TEST(Oem, EveryByteOfEveryPageHasOneByteEachWay) {
  for (const std::string page :
       {"CP437", "CP737", "CP775", "CP850", "CP852", "CP855", "CP857", "CP862", "CP864", "CP866"}) {
    std::uint8_t toAnsi[256];
    std::uint8_t toOem[256];
    FillOemTable(page.c_str(), toAnsi);
    FillAnsiTable(page.c_str(), toOem);
    int lost = 0;
    for (int byte = 0; byte < 256; ++byte) {
      EXPECT_GE(toAnsi[byte], std::min(byte, 32)) << page << ' ' << byte;
      lost += toAnsi[byte] == '?' && byte != '?' ? 1 : 0;
      EXPECT_TRUE(byte < 128 ? toOem[byte] == byte : toOem[byte] != 0) << page << ' ' << byte;
      EXPECT_TRUE(toOem[byte] < 128 || toAnsi[toOem[byte]] == byte) << page << ' ' << byte;
    }
    // Hebrew and Arabic letters have nothing that looks like them; a page has up to three open places.
    EXPECT_LE(lost, page == "CP862" || page == "CP864" ? 140 : 3) << page;
  }
  // With what looks alike where a character is missing.
  EXPECT_EQ(OemCellCodes()[0x84], 0xE4);
  const std::pair<int, int> back[] = {{0xE4, 0x84}, {0xDF, 0xE1}, {0xC0, 'A'}, {0xA9, 'c'}, {0x8D, '?'}};
  for (const auto& [cell, byte] : back)
    EXPECT_EQ(OemBytes()[cell], byte) << cell;
}

}  // namespace
