// The checks of dialog fields: what is accepted, what is refused, and the messages that say so.
#include "settings/field_checks.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

namespace {

constexpr std::int64_t kMost = INTPTR_MAX;

TEST(FixedPoint, ParsesAndFormats) {
  struct Parse {
    const char* text;
    std::int32_t value, result;
  };
  const Parse parses[] = {{".5", 50, 0},   {"  2.5 ", 250, 0}, {"1.239", 123, 0},  {"1x", 100, 2},
                          {"1 2", 100, 3}, {"1.5.", 150, 4},   {"1.239x", 123, 6}, {"", 0, 1},
                          {"  ", 0, 3},    {"-", 0, 2}};
  std::int32_t value = 0;
  for (const Parse& c : parses) {
    EXPECT_EQ(ParseFixedPoint(c.text, '.', 2, value), c.result) << '"' << c.text << '"';
    EXPECT_EQ(value, c.value) << '"' << c.text << '"';
  }
  // What a text gives is what it was made from.
  char text[kFixedPointBytes];
  for (std::int32_t decimals = 0; decimals <= 9; ++decimals) {
    for (const std::int32_t number : {INT32_MIN, -100001, -770, -1, 0, 77, 1000, INT32_MAX}) {
      FormatFixedPoint(text, ',', decimals, number);
      ASSERT_EQ(ParseFixedPoint(text, ',', decimals, value), 0) << text;
      ASSERT_EQ(value, number) << text;
    }
  }
  EXPECT_EQ(FormatFixedPoint(text, ',', 3, -500), 4);
  EXPECT_STREQ(text, "-0,5");
}

// A check's message, or "good".
std::string Outcome(const FieldCheck& check) {
  EXPECT_EQ(check.accepted, check.message.empty());
  return check.accepted ? "good" : check.message;
}

using Texts = std::vector<std::string>;

TEST(FieldChecks, Fixed) {
  const auto outcome = [](const std::string& text) {
    return Outcome(ValidateFixedField(text, 0, 300, 2, '.', "Top"));
  };
  EXPECT_EQ(outcome("2.999"), "good");
  for (const std::string& text : Texts{"3.01", "-0.01", ""})
    EXPECT_EQ(outcome(text), "Top must be a number between 0 and 3!") << text;
  // Where a digit is missing, the last character is shown.
  for (const auto& [text, character] : {std::pair{"1,5", ","}, {"1 x", "x"}, {"-", "-"}})
    EXPECT_EQ(outcome(text), std::string("Invalid character \"") + character + "\" in Top.") << text;
  EXPECT_EQ(Outcome(ValidateFixedField("9", 0, 75, 1, ',', nullptr)),
            "Value must be a number between 0 and 7,5!");
}

TEST(FieldChecks, Int) {
  const auto outcome = [](const std::string& text) {
    return Outcome(ValidateIntField(text, 1, 255, "Tab length"));
  };
  // A field holds 39 characters; what is behind them is not there.
  for (const std::string& text : Texts{"255", " 8", std::string(38, '0') + "78"})
    EXPECT_EQ(outcome(text), "good") << text;
  for (const std::string& text : Texts{"", "0", "256", "8 ", "8.", "0x8", "-", "4294967304"})
    EXPECT_EQ(outcome(text), "Tab length must be a number between 1 and 255!") << text;
  EXPECT_EQ(Outcome(ValidateIntField("2147483648", INT32_MIN, INT32_MAX, nullptr)),
            "Value must be a number between -2147483648 and 2147483647!");
}

TEST(FieldChecks, Long) {
  const auto outcome = [](const std::string& text, std::int64_t high) {
    return Outcome(ValidateLongField(text, 0, high, "File Offset"));
  };
  for (const std::string& text : Texts{"16", "0X10", "020", "  7"})
    EXPECT_EQ(outcome(text, 16), "good") << text;
  for (const std::string& text : Texts{"17", "0x11", "-1", ""})
    EXPECT_EQ(outcome(text, 16), "File Offset must be a number between 0 and 16!") << text;
  for (const auto& [text, character] : {std::pair{"7 ", " "}, {"N/A", "N"}, {"0xg", "x"}, {"08", "8"}})
    EXPECT_EQ(outcome(text, 16), std::string("Invalid character \"") + character + "\" in File Offset.");
  for (const std::string& text : Texts{"0x7FFFFFFFFFFFFFFF", "0777777777777777777777"})
    EXPECT_EQ(outcome(text, kMost), "good") << text;
  for (const std::string& text : Texts{"0x8000000000000000", "18446744073709551617"})
    EXPECT_EQ(outcome(text, kMost), "File Offset must be a number between 0 and 9223372036854775807!");
  EXPECT_EQ(Outcome(ValidateLongField("0", 1, 2, nullptr)), "Value must be a number between 1 and 2!");
}

TEST(FieldChecks, GetLongField) {
  bool good = false;
  EXPECT_EQ(GetLongField("-010", good, true), -8);
  EXPECT_TRUE(good);
  EXPECT_EQ(GetLongField("0xFFFFFFFFFFFFFFFF", good, false), -1);
  EXPECT_EQ(GetLongField("99999999999999999999", good, true), kMost);
  EXPECT_EQ(GetLongField("12ab", good, true), 12);
  EXPECT_FALSE(good);
}

}  // namespace
