#include "engine/char_map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/win32.h"

namespace {

TEST(CharMap, ShowsEachCodeInItsMap) {
  struct Case {
    ViewOptions options;
    int byte;
    int shown;
  };
  const Case cases[] = {
      {0, 0, 183},
      {0, 9, 164},
      {0, 10, 183},
      {0, 12, 240},
      {VO_KEEPFF, 12, 12},
      {0, 12, 240},  // a print job's table must not stay with the view
      {0, 13, 183},
      {0, 31, 183},
      {0, 32, 32},
      {0, 127, 127},
      {0, 128, 128},
      {0, 200, 200},
      {0, 255, 255},
      {VO_WRAP | VO_BACKGROUND | VO_EXPANDTABS | VO_FORMFEED | VO_PAGEGAP, 200, 200},
      {VO_ASCII, 0, 183},
      {VO_ASCII, 9, 164},
      {VO_ASCII, 13, 183},
      {VO_ASCII, 'A', 'A'},
      {VO_ASCII, 12, 240},
      {VO_ASCII | VO_KEEPFF, 12, 12},
      {VO_ASCII, 12, 240},
      {VO_EBCDIC, 0x00, 183},
      {VO_EBCDIC, 0x05, 183},
      {VO_EBCDIC, 0x0C, 183},
      {VO_EBCDIC | VO_KEEPFF, 0x0C, 183},
      {VO_EBCDIC, 0x0D, 183},
      {VO_EBCDIC, 0x25, 183},
      {VO_EBCDIC, 0x40, ' '},
      {VO_EBCDIC, 0x81, 'a'},
      {VO_EBCDIC, 0xA9, 'z'},
      {VO_EBCDIC, 0xC1, 'A'},
      {VO_EBCDIC | VO_ASCII, 0xC1, 'A'},
      {VO_EBCDIC, 0xE9, 'Z'},
      {VO_EBCDIC, 0xF1, '1'},
      {VO_EBCDIC, 0xFF, 183},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(GetCharMap(c.options)[c.byte], c.shown) << "options " << c.options << " byte " << c.byte;
  }
}

TEST(CharMap, AsciiIsTheSystemsOemPage) {
  for (int byte = 32; byte < 256; ++byte) {
    const char source = static_cast<char>(byte);
    char target = 0;
    OemToCharBuffA(&source, &target, 1);
    EXPECT_EQ(GetCharMap(VO_ASCII)[byte], static_cast<std::uint8_t>(target)) << byte;
  }
}

// The whole repertoire: each character of the display set either has codes, or is one of those that lack one.
TEST(CharMap, EbcdicRepertoire) {
  std::string lacking = "\x7F\xA0\xA1\xA9\xAA\xAB\xAD\xAE\xD0\xD7\xDD\xDE\xE6\xF0\xF7\xFD\xFE";
  for (int c = 0x80; c <= 0x9F; ++c) {
    if (c != 0x92) lacking += static_cast<char>(c);
  }
  for (int c = 0xB1; c <= 0xBF; ++c) {
    if (c != 0xB7 && c != 0xB8) lacking += static_cast<char>(c);
  }
  const std::string twice = "\xE0\xE7\xE8\xE9\xEC\xF2\xF9\xFC";
  const std::uint8_t* map = GetCharMap(VO_EBCDIC);
  for (int c = 32; c < 256; ++c) {
    if (c == kControlMark) continue;
    const auto is = [c](const std::string& set) {
      return set.find(static_cast<char>(c)) != std::string::npos;
    };
    EXPECT_EQ(std::count(map, map + 256, c), is(lacking) ? 0 : is(twice) ? 2 : 1) << c;
  }
}

TEST(CharMap, EbcdicInverse) {
  const std::uint8_t* map = GetCharMap(VO_EBCDIC);
  const std::uint8_t* inverse = GetEbcdicInverse();
  for (int character = 0; character < 256; ++character) {
    int highest = 0;
    for (int code = 0; code < 256; ++code) {
      if (map[code] == character && character != kControlMark) highest = code;
    }
    EXPECT_EQ(inverse[character], highest) << character;
  }
  EXPECT_EQ(inverse['A'], 0xC1);
  EXPECT_EQ(inverse[' '], 0x40);
  EXPECT_EQ(inverse[0xE0], 0x67);  // two codes
  EXPECT_EQ(inverse[0x80], 0);
  EXPECT_EQ(GetEbcdicInverse(), inverse);
}

}  // namespace
