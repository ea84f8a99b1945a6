// From what a Find dialog holds to the bytes of a key, and the history of keys.
#include "search/search_key.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(SearchKey, HexText) {
  struct Case {
    std::string text;
    std::int32_t result;
    Bytes bytes;
  };
  const Case cases[] = {
      {"", 0, {}},
      {"   ", 0, {}},
      {"4142", 2, {0x41, 0x42}},
      {"41 42", 2, {0x41, 0x42}},
      {"4 1 4 2", 4, {0x40, 0x10, 0x40, 0x20}},
      {"41 4", 2, {0x41, 0x40}},
      {"A", 1, {0xA0}},
      {"aBcDeF09", 4, {0xAB, 0xCD, 0xEF, 0x09}},
      {"41 4G", -5, {}},
      {"4\t1", -2, {}},
      {"41\xC3\xA4", -3, {}},
      {std::string(64, 'f'), 32, Bytes(32, 0xFF)},
  };
  for (const Case& c : cases) {
    std::uint8_t bytes[kSearchKeyBytes] = {};
    const std::int32_t result = ParseHexText(bytes, c.text.data(), static_cast<std::int32_t>(c.text.size()));
    EXPECT_EQ(result, c.result) << c.text;
    EXPECT_EQ(Bytes(bytes, bytes + std::max(result, 0)), c.bytes) << c.text;
  }
}

TEST(SearchKey, WhatIsWrongWithHexText) {
  const std::string range = "Number of hex digits must be between ";
  EXPECT_EQ(ReadHexKey("", 1).length.message, range + "1 and 64!");
  EXPECT_TRUE(ReadHexKey("", 0).IsGood());
  EXPECT_EQ(ReadHexKey(std::string(65, '0'), 0).length.message, range + "1 and 64!");
  EXPECT_EQ(ReadHexKey("41 4G", 1).error, "Invalid hex digit \"G\"!");
  EXPECT_EQ(ReadHexKey("1\xE2\x82\xAC", 1).error, "Invalid hex digit \"\xE2\x82\xAC\"!");
  EXPECT_EQ(ReadHexKey("41", 1).error, " ");
}

TEST(SearchKey, TextsThatCanBeKeys) {
  const std::string length = "Search text length must be a number between 1 and 32!";
  const std::pair<std::string, std::string> cases[] = {
      {"", length},
      {"a", ""},
      {std::string(32, 'x'), ""},
      {std::string(33, 'x'), length},
      {"\xE2\x82\xAC\xC3\xA4", ""},
      {"na\xCA\x95t", "Invalid character \"\xCA\x95\" in Search text."},
      {"\xF0\x9F\x98\x80", "Invalid character \"\xF0\x9F\x98\x80\" in Search text."}};
  for (const auto& [text, message] : cases) {
    EXPECT_EQ(CheckTextKey(text).message, message) << text;
    EXPECT_EQ(CheckTextKey(text).accepted, message.empty()) << text;
  }
  std::string umlauts;
  for (int i = 0; i < 32; ++i)
    umlauts += "\xC3\xBC";
  EXPECT_TRUE(CheckTextKey(umlauts).accepted) << "characters count, not bytes";
}

TEST(SearchKey, GoesIntoTheCodeOfTheFileAndBack) {
  struct Case {
    ViewOptions code;
    const char* text;
    std::string key;
  };
  const Case cases[] = {
      {0, "Gr\xC3\xBC\xC3\x9F\x65 \xE2\x82\xAC", "Gr\xFC\xDF\x65 \x80"},
      {VO_ASCII, "Gr\xC3\xBC\xC3\x9F\x65", "Gr\x81\xE1\x65"},
      {VO_EBCDIC, "Ab 9", "\xC1\x82\x40\xF9"},
      {VO_EBCDIC | VO_ASCII, "A", "A"},  // ASCII comes first here
  };
  for (const Case& c : cases) {
    const std::string key = TextKeyOf(c.text, c.code);
    EXPECT_EQ(key, c.key) << c.text;
    if (c.code == (VO_EBCDIC | VO_ASCII)) continue;
    EXPECT_EQ(KeyDisplayText(key.data(), static_cast<std::int32_t>(key.size()), c.code), c.text);
  }
  EXPECT_EQ(TextKeyOf("AB\xC2\xB7\x43", VO_EBCDIC), "\xC1\xC2") << "a character without a code ends the key";
}

}  // namespace
