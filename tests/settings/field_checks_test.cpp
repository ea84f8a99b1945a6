// The checks of dialog fields: what is accepted, what is refused, and the messages that say so.
#include "settings/field_checks.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>

namespace {

constexpr FilePos kMost = INTPTR_MAX;

TEST(FixedPoint, ParsesAndFormats) {
  struct Parse {
    const char* text;
    char separator;
    std::int32_t decimals, value, result;
  };
  const Parse parses[] = {{".5", '.', 2, 50, 0},      {"1.", '.', 2, 100, 0},
                          {"1.239", '.', 2, 123, 0},  {"  2.5 ", '.', 2, 250, 0},
                          {"1x", '.', 2, 100, 2},     {"1 2", '.', 2, 100, 3},
                          {"- 5", '.', 2, 0, 3},      {"1.5.", '.', 2, 150, 4},
                          {"1.239x", '.', 2, 123, 6}, {"1.5", ',', 1, 10, 2},
                          {"12.9", '.', 0, 12, 0},    {"", '.', 2, 0, 1},
                          {"  ", '.', 2, 0, 3},       {"-", '.', 2, 0, 2},
                          {" -", '.', 2, 0, 3},       {"-2147483648", '.', 0, INT32_MIN, 0}};
  for (const Parse& c : parses) {
    std::int32_t value = 77;
    EXPECT_EQ(ParseFixedPoint(c.text, c.separator, c.decimals, value), c.result) << '"' << c.text << '"';
    EXPECT_EQ(value, c.value) << '"' << c.text << '"';
  }
  struct Format {
    std::int32_t value, decimals;
    char separator;
    const char* text;
  };
  const Format formats[] = {{105, 2, '.', "1.05"}, {100, 2, '.', "1"},  {0, 2, '.', "0"},
                            {-50, 2, '.', "-0.5"}, {75, 1, ',', "7,5"}, {INT32_MIN, 9, '.', "-2.147483648"}};
  char text[kFixedPointBytes];
  for (const Format& c : formats) {
    EXPECT_EQ(FormatFixedPoint(text, c.separator, c.decimals, c.value), static_cast<int>(strlen(c.text)));
    EXPECT_STREQ(text, c.text);
  }
  // What a text gives is what it was made from.
  for (std::int32_t decimals = 0; decimals <= 9; ++decimals) {
    for (std::int32_t value = -100000; value <= 100000; value += 77) {
      FormatFixedPoint(text, ',', decimals, value);
      std::int32_t back = 0;
      ASSERT_EQ(ParseFixedPoint(text, ',', decimals, back), 0) << text;
      ASSERT_EQ(back, value) << text;
    }
  }
}

// A check's message, or "good".
std::string Outcome(const FieldCheck& check) {
  EXPECT_EQ(check.accepted, check.message.empty());
  return check.accepted ? "good" : check.message;
}

std::string Invalid(char character, const char* field) {
  return std::string("Invalid character \"") + character + "\" in " + field + ".";
}

TEST(ValidateFixedField, Outcomes) {
  const std::string range = "Top must be a number between 0 and 3!";
  const std::pair<const char*, std::string> cases[] = {
      {"0", "good"},
      {"3", "good"},
      {"2.999", "good"},
      {"3.01", range},
      {"-0.01", range},
      {"", range},
      {"1,5", Invalid(',', "Top")},
      {"1 x", Invalid('x', "Top")},
      // Nothing stands where a digit is missing: the last character is shown.
      {"-", Invalid('-', "Top")},
      {"   ", Invalid(' ', "Top")}};
  for (const auto& [text, outcome] : cases)
    EXPECT_EQ(Outcome(ValidateFixedField(text, 0, 300, 2, '.', "Top")), outcome) << '"' << text << '"';
  EXPECT_EQ(Outcome(ValidateFixedField("9", 0, 75, 1, ',', nullptr)),
            "Value must be a number between 0 and 7,5!");
}

TEST(ValidateIntField, Outcomes) {
  const std::string refused = "Tab length must be a number between 1 and 255!";
  // A field holds 39 characters; what is behind them is not there.
  for (const std::string& text :
       {std::string("1"), std::string("255"), std::string(" 8"), std::string(38, '0') + "78"})
    EXPECT_EQ(Outcome(ValidateIntField(text, 1, 255, "Tab length")), "good") << text;
  for (const char* const text :
       {"", "0", "256", "-1", "8 ", "8.", "x", "0x8", "-", " ", "4294967304", "99999999999999999999999"})
    EXPECT_EQ(Outcome(ValidateIntField(text, 1, 255, "Tab length")), refused) << '"' << text << '"';
  EXPECT_EQ(Outcome(ValidateIntField("-2147483648", INT32_MIN, 0, nullptr)), "good");
  EXPECT_EQ(Outcome(ValidateIntField("2147483648", INT32_MIN, INT32_MAX, nullptr)),
            "Value must be a number between -2147483648 and 2147483647!");
}

TEST(ValidateLongField, Outcomes) {
  const auto invalid = [](char character) { return Invalid(character, "File Offset"); };
  const std::string low = "File Offset must be a number between 0 and 16!";
  const std::string high = "File Offset must be a number between 0 and 9223372036854775807!";
  struct Case {
    const char* text;
    FilePos high;
    std::string outcome;
  };
  const Case cases[] = {{"16", 16, "good"},
                        {"0x10", 16, "good"},
                        {"0X10", 16, "good"},
                        {"020", 16, "good"},
                        {"0", 16, "good"},
                        {"  7", 16, "good"},
                        {"17", 16, low},
                        {"0x11", 16, low},
                        {"-1", 16, low},
                        {"", 16, low},
                        {"7 ", 16, invalid(' ')},
                        {"N/A", 16, invalid('N')},
                        {"0x", 16, invalid('x')},
                        {"0xg", 16, invalid('x')},
                        {"08", 16, invalid('8')},
                        {"1f", 16, invalid('f')},
                        {"0b1", 16, invalid('b')},
                        {"0x10", 16, "good"},
                        {"020", 16, "good"},
                        {"  7", 16, "good"},
                        {"17", 16, low},
                        {"-1", 16, low},
                        {"", 16, low},
                        {"7 ", 16, invalid(' ')},
                        {"N/A", 16, invalid('N')},
                        {"0x", 16, invalid('x')},
                        {"08", 16, invalid('8')},
                        {"0b1", 16, invalid('b')},
                        {"5000000000", kMost, "good"},
                        {"0x7FFFFFFFFFFFFFFF", kMost, "good"},
                        {"0777777777777777777777", kMost, "good"},
                        {"0x8000000000000000", kMost, high},
                        {"18446744073709551617", kMost, high},
                        {"-18446744073709551615", kMost, high}};
  for (const Case& c : cases)
    EXPECT_EQ(Outcome(ValidateLongField(c.text, 0, c.high, "File Offset")), c.outcome) << c.text;
  EXPECT_EQ(Outcome(ValidateLongField("0", 1, 2, nullptr)), "Value must be a number between 1 and 2!");
}

TEST(GetLongField, ValuesAndSuccess) {
  struct Case {
    const char* text;
    bool isSigned;
    FilePos value;
    bool good;
  };
  const Case cases[] = {{"0x10", true, 16, true},
                        {"010", true, 8, true},
                        {"-5", true, -5, true},
                        {"12ab", true, 12, false},
                        {"", true, 0, false},
                        {" ", true, 0, false},
                        {"99999999999999999999", true, kMost, true},
                        {"0xFFFFFFFFFFFFFFFF", false, -1, true},
                        {"-99999999999999999999", true, INTPTR_MIN, true}};
  for (const Case& c : cases) {
    bool good = !c.good;
    EXPECT_EQ(GetLongField(c.text, good, c.isSigned), c.value) << '"' << c.text << '"';
    EXPECT_EQ(good, c.good) << '"' << c.text << '"';
  }
}

TEST(ValidateChoice, Outcomes) {
  EXPECT_EQ(Outcome(ValidateChoice(0, "format")), "good");
  EXPECT_EQ(Outcome(ValidateChoice(-1, "format")), "You must choose a format !");
  EXPECT_EQ(Outcome(ValidateChoice(-1, nullptr)), "You must choose a value !");
}

}  // namespace
