// Which code a text is found to be in, and how its characters stand in columns.
#include <gtest/gtest.h>

#include "codes/detection.h"
#include "platform/cells.h"
#include "platform/unicode.h"

namespace {

std::string Utf16(const std::u16string& text, bool bigEndian) {
  std::string bytes;
  for (const char16_t unit : text) {
    const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
    bytes += bigEndian ? std::string{high, low} : std::string{low, high};
  }
  return bytes;
}

TEST(Detection, TellsTheCodeByTheFirstBytes) {
  const std::u16string letter = u"Dear all,\r\n\tthe sum is 5\u00A0\u20AC.\r\n";
  const struct {
    const char* what;
    std::string bytes;
    FoundCode code;
    FoundCode cut;  // where the text goes on
  } cases[] = {
      {"nothing", "", FoundCode::none, FoundCode::none},
      {"ASCII", "plain text\n", FoundCode::none, FoundCode::none},
      {"a letter beyond it", "caf\xC3\xA9\n", FoundCode::utf8, FoundCode::utf8},
      {"ANSI", "caf\xE9\n", FoundCode::none, FoundCode::none},
      {"one bad byte", "caf\xC3\xA9 \xE9 x\n", FoundCode::none, FoundCode::none},
      {"a character that is cut", "\xC3\xA9 \xE2\x82", FoundCode::none, FoundCode::utf8},
      {"a mark of UTF-8", "\xEF\xBB\xBFplain", FoundCode::utf8, FoundCode::utf8},
      {"a mark of UTF-16LE", "\xFF\xFE\x16\x4E", FoundCode::utf16le, FoundCode::utf16le},
      {"a mark of UTF-16BE", "\xFE\xFF\x4E\x16", FoundCode::utf16be, FoundCode::utf16be},
      {"UTF-16LE", Utf16(letter, false), FoundCode::utf16le, FoundCode::utf16le},
      {"UTF-16BE", Utf16(letter, true), FoundCode::utf16be, FoundCode::utf16be},
      {"an odd length", Utf16(letter, false) + 'x', FoundCode::none, FoundCode::utf16le},
      {"numbers of four bytes", std::string("A\0\0\0B\0\0\0C\0\0\0", 12), FoundCode::none, FoundCode::none},
      {"small numbers of two", std::string("\1\0\2\0\3\0\4\0", 8), FoundCode::none, FoundCode::none},
      {"half a pair", Utf16(u"text \xD800 text", false), FoundCode::none, FoundCode::none},
      {"no Latin", Utf16(u"\u0416\u0417\u0418\u0419\u041A\u041B\u041C\u041Da", false), FoundCode::none,
       FoundCode::none},
  };
  for (const auto& c : cases) {
    const auto found = [&](bool whole) {
      return DetectCode({reinterpret_cast<const std::uint8_t*>(c.bytes.data()), c.bytes.size()}, whole);
    };
    EXPECT_EQ(found(true), c.code) << c.what;
    EXPECT_EQ(found(false), c.cut) << c.what << ", cut";
  }
}

TEST(Characters, StandInColumnsByTheirKind) {
  const std::pair<CharacterKind, std::u32string> kinds[] = {
      {CharacterKind::narrow, U"aé\u00ADЖ\u2500\uFFFD\uE000\u0E33"},
      {CharacterKind::wide, U"漢\u3042\uAC00\uFF21\U0001F600\U00020000"},
      {CharacterKind::mark, U"\u0301\u20DD\u093F\u0E31\uFE0F"},
      {CharacterKind::control, std::u32string(U"\0\t\n\x1B\x7F\x85", 6)},
      {CharacterKind::format, U"\u200B\u202E\u2028\u2029\u2066\uFEFF\uFFFE\U000E0041"},
  };
  for (const auto& [kind, characters] : kinds)
    for (const char32_t one : characters)
      EXPECT_EQ(KindOfCharacter(one), kind) << std::hex << static_cast<unsigned>(one);
  EXPECT_EQ(SimpleFold(U'\u03A3'), U'\u03C3');
  EXPECT_EQ(SimpleFold(U'\u1E9E'), U'\u00DF');
  EXPECT_EQ(SimpleFold(U'\u0130'), U'\u0130') << "folds in Turkish only";
}

}  // namespace
