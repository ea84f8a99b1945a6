// From what a Find dialog holds to the bytes of a key, and the history of keys.
#include "search/search_key.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

TEST(SearchKey, HexText) {
  const std::pair<std::string, std::string> cases[] = {{"", ""},
                                                       {"41 42", "AB"},
                                                       {"4 1 4 2", "@\x10@ "},
                                                       {"41 4", "A@"},
                                                       {"aBcDeF09", "\xAB\xCD\xEF\x09"},
                                                       {std::string(64, 'f'), std::string(32, '\xFF')}};
  std::uint8_t bytes[kSearchKeyBytes] = {};
  for (const auto& [text, key] : cases) {
    const std::int32_t length = ParseHexText(bytes, text.data(), static_cast<std::int32_t>(text.size()));
    EXPECT_EQ(std::string(bytes, bytes + std::max(length, 0)), key) << text;
  }
  EXPECT_EQ(ParseHexText(bytes, "4\t1", 3), -2);
  EXPECT_EQ(ParseHexText(bytes, "41\xC3\xA4", 4), -3);
}

TEST(SearchKey, WhatIsWrongWithHexText) {
  const std::string range = "Number of hex digits must be between 1 and 12288!";
  EXPECT_EQ(ReadHexKey("", 1).length.message, range);
  EXPECT_TRUE(ReadHexKey("", 0).IsGood());
  EXPECT_EQ(ReadHexKey(std::string(12289, '0'), 0).length.message, range);
  EXPECT_EQ(ReadHexKey("1\xE2\x82\xAC", 1).error, "Invalid hex digit \"\xE2\x82\xAC\"!");
  EXPECT_EQ(ReadHexKey("41", 1).error, " ");
  EXPECT_EQ(ReadHexKey(std::string(8192, '4'), 1).bytes.size(), 4096U);
  EXPECT_EQ(ReadHexKey(std::string(8194, '4'), 1).length.message,
            "Number of bytes must be between 1 and 4096!");
}

TEST(SearchKey, TextsThatCanBeKeys) {
  const std::string length = "Search text length must be a number between 1 and 4096!";
  std::string umlauts;
  for (int i = 0; i < 4096; ++i)
    umlauts += "\xC3\xBC";  // characters count, not bytes
  const std::pair<std::string, std::string> cases[] = {
      {"", length},
      {umlauts, ""},
      {umlauts + "x", length},
      {"na\xCA\x95t", "Invalid character \"\xCA\x95\" in Search text."},
      {"\xF0\x9F\x98\x80", "Invalid character \"\xF0\x9F\x98\x80\" in Search text."}};
  for (const auto& [text, message] : cases) {
    EXPECT_EQ(CheckTextKey(text, 0).message, message) << text;
    EXPECT_EQ(CheckTextKey(text, 0).accepted, message.empty()) << text;
  }
  EXPECT_EQ(CheckTextKey("AB\xC2\xB7\x43", VO_EBCDIC).message,
            "Invalid character \"\xC2\xB7\" in Search text.");
}

TEST(SearchKey, GoesIntoTheCodeOfTheFileAndBack) {
  struct Case {
    ViewOptions code;
    const char* text;
    std::string key;
  };
  const Case cases[] = {{0, "Gr\xC3\xBC\xC3\x9F\x65 \xE2\x82\xAC", "Gr\xFC\xDF\x65 \x80"},
                        {VO_ASCII, "Gr\xC3\xBC\xC3\x9F\x65", "Gr\x81\xE1\x65"},
                        {VO_EBCDIC, "Ab 9", "\xC1\x82\x40\xF9"}};
  for (const Case& c : cases) {
    const std::string key = TextKeyOf(c.text, c.code);
    EXPECT_EQ(key, c.key) << c.text;
    EXPECT_EQ(KeyDisplayText(key.data(), static_cast<std::int32_t>(key.size()), c.code), c.text);
  }
  EXPECT_EQ(TextKeyOf("A", VO_EBCDIC | VO_ASCII), "A") << "ASCII comes first here";
}

}  // namespace
