#include "engine/char_map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/win32.h"

namespace {

TEST(CharMap, ShowsEachCodeInItsMap) {
  struct Case {
    ViewOptions options;
    int byte, shown;
  };
  constexpr ViewOptions kOthers =
      VO_WRAP | VO_BACKGROUND | VO_EXPANDTABS | VO_FORMFEED | VO_PAGEGAP | VO_FIXEDLEN;
  // The table for printing, which keeps form feeds, must not stay with the view.
  const Case cases[] = {{0, 9, 164},
                        {0, 12, 240},
                        {VO_KEEPFF, 12, 12},
                        {0, 12, 240},
                        {0, 31, 183},
                        {0, 32, 32},
                        {0, 255, 255},
                        {kOthers, 200, 200},
                        {VO_ASCII, 9, 164},
                        {VO_ASCII | VO_KEEPFF, 12, 12},
                        {VO_ASCII, 12, 240},
                        {VO_EBCDIC, 5, 183},
                        {VO_EBCDIC | VO_KEEPFF, 12, 183},
                        {VO_EBCDIC, 0x40, ' '},
                        {VO_EBCDIC, 0x81, 'a'},
                        {VO_EBCDIC | VO_ASCII, 0xC1, 'A'},
                        {VO_EBCDIC, 0xF1, '1'},
                        {VO_EBCDIC, 0xFF, 183}};
  for (const Case& c : cases)
    EXPECT_EQ(GetCharMap(c.options)[c.byte], c.shown) << "options " << c.options << " byte " << c.byte;
  for (int byte = 32; byte < 256; ++byte) {
    const char source = static_cast<char>(byte);
    char target = 0;
    OemToCharBuffA(&source, &target, 1);
    EXPECT_EQ(GetCharMap(VO_ASCII)[byte], static_cast<std::uint8_t>(target)) << byte;
  }
}

// The whole repertoire: each character of the display set either has codes, or is one of those that lack one.
TEST(CharMap, EbcdicRepertoireAndInverse) {
  std::string lacking = "\x7F\xA0\xA1\xA9\xAA\xAB\xAD\xAE\xD0\xD7\xDD\xDE\xE6\xF0\xF7\xFD\xFE";
  for (int c = 0x80; c <= 0xBF; ++c)
    if ((c <= 0x9F && c != 0x92) || (c >= 0xB1 && c != 0xB7 && c != 0xB8)) lacking += static_cast<char>(c);
  const std::string twice = "\xE0\xE7\xE8\xE9\xEC\xF2\xF9\xFC";
  const std::uint8_t* map = GetCharMap(VO_EBCDIC);
  for (int c = 0; c < 256; ++c) {
    int highest = 0;
    for (int code = 0; code < 256; ++code)
      if (map[code] == c && c != kControlMark) highest = code;
    EXPECT_EQ(GetEbcdicInverse()[c], highest) << c;
    if (c < 32 || c == kControlMark) continue;
    const auto is = [c](const std::string& set) {
      return set.find(static_cast<char>(c)) != std::string::npos;
    };
    EXPECT_EQ(std::count(map, map + 256, c), is(lacking) ? 0 : is(twice) ? 2 : 1) << c;
  }
}

}  // namespace
