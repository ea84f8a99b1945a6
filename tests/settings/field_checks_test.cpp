// The checks of dialog fields: what is accepted, what is refused, and the messages that say so.
#include "settings/field_checks.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>

namespace {

constexpr FilePos kMost = INTPTR_MAX;

TEST(ParseFixedPoint, ValuesAndPlaces) {
  struct Case {
    const char* text;
    char separator;
    std::int32_t decimals;
    std::int32_t value;
    std::int32_t result;
  };
  const Case cases[] = {
      {"1.5", '.', 2, 150, 0},  {".5", '.', 2, 50, 0},     {"1", '.', 2, 100, 0},
      {"1.", '.', 2, 100, 0},   {"1.239", '.', 2, 123, 0}, {"  2.5 ", '.', 2, 250, 0},
      {"-0.5", '.', 2, -50, 0}, {"1x", '.', 2, 100, 2},    {"1 2", '.', 2, 100, 3},
      {"- 5", '.', 2, 0, 3},    {"1.5.", '.', 2, 150, 4},  {"1.239x", '.', 2, 123, 6},
      {"1,5", ',', 1, 15, 0},   {"1.5", ',', 1, 10, 2},    {"12", '.', 0, 12, 0},
      {"12.9", '.', 0, 12, 0},  {"", '.', 2, 0, 1},        {"  ", '.', 2, 0, 3},
      {"-", '.', 2, 0, 2},      {" -", '.', 2, 0, 3},      {"-2147483648", '.', 0, INT32_MIN, 0},
  };
  for (const Case& c : cases) {
    std::int32_t value = 77;
    EXPECT_EQ(ParseFixedPoint(c.text, c.separator, c.decimals, value), c.result) << '"' << c.text << '"';
    EXPECT_EQ(value, c.value) << '"' << c.text << '"';
  }
}

TEST(FormatFixedPoint, Texts) {
  struct Case {
    std::int32_t value;
    std::int32_t decimals;
    char separator;
    const char* text;
  };
  const Case cases[] = {
      {150, 2, '.', "1.5"},
      {105, 2, '.', "1.05"},
      {100, 2, '.', "1"},
      {50, 2, '.', "0.5"},
      {0, 2, '.', "0"},
      {-50, 2, '.', "-0.5"},
      {75, 1, '.', "7.5"},
      {120, 1, '.', "12"},
      {75, 1, ',', "7,5"},
      {5, 2, '.', "0.05"},
      {-7, 0, '.', "-7"},
      {1000, 0, '.', "1000"},
      {INT32_MIN, 9, '.', "-2.147483648"},
  };
  for (const Case& c : cases) {
    char text[kFixedPointBytes];
    EXPECT_EQ(FormatFixedPoint(text, c.separator, c.decimals, c.value), static_cast<int>(strlen(c.text)));
    EXPECT_STREQ(text, c.text);
  }
}

// What a text gives is what it was made from.
TEST(FormatFixedPoint, IsReadBack) {
  for (std::int32_t decimals = 0; decimals <= 9; ++decimals) {
    for (std::int32_t value = -100000; value <= 100000; value += 77) {
      char text[kFixedPointBytes];
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

TEST(ValidateFixedField, Outcomes) {
  struct Case {
    const char* text;
    const char* outcome;
  };
  const Case cases[] = {
      {"0", "good"},
      {"3", "good"},
      {"2.999", "good"},
      {"3.01", "Top must be a number between 0 and 3!"},
      {"-0.01", "Top must be a number between 0 and 3!"},
      {"", "Top must be a number between 0 and 3!"},
      {"1,5", "Invalid character \",\" in Top."},
      {"1 x", "Invalid character \"x\" in Top."},
      // Nothing stands where a digit is missing: the last character is shown.
      {"-", "Invalid character \"-\" in Top."},
      {"   ", "Invalid character \" \" in Top."},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Outcome(ValidateFixedField(c.text, 0, 300, 2, '.', "Top")), c.outcome) << '"' << c.text << '"';
  }
  EXPECT_EQ(Outcome(ValidateFixedField("9", 0, 75, 1, ',', nullptr)),
            "Value must be a number between 0 and 7,5!");
}

TEST(ValidateIntField, Outcomes) {
  const std::string refused = "Tab length must be a number between 1 and 255!";
  for (const char* const text : {"1", "255", " 8", "0008"}) {
    EXPECT_EQ(Outcome(ValidateIntField(text, 1, 255, "Tab length")), "good") << text;
  }
  for (const char* const text :
       {"", "0", "256", "-1", "8 ", "8.", "x", "0x8", "-", " ", "4294967304", "99999999999999999999999"}) {
    EXPECT_EQ(Outcome(ValidateIntField(text, 1, 255, "Tab length")), refused) << '"' << text << '"';
  }
  EXPECT_EQ(Outcome(ValidateIntField("-2147483648", INT32_MIN, 0, nullptr)), "good");
  EXPECT_EQ(Outcome(ValidateIntField("2147483648", INT32_MIN, INT32_MAX, nullptr)),
            "Value must be a number between -2147483648 and 2147483647!");
  // A field holds 39 characters; what is behind them is not there.
  EXPECT_EQ(Outcome(ValidateIntField(std::string(38, '0') + "78", 1, 255, "Tab length")), "good");
}

TEST(ValidateLongField, Outcomes) {
  struct Case {
    const char* text;
    FilePos high;
    const char* outcome;
  };
  const Case cases[] = {
      {"16", 16, "good"},
      {"0x10", 16, "good"},
      {"0X10", 16, "good"},
      {"020", 16, "good"},
      {"0", 16, "good"},
      {"  7", 16, "good"},
      {"17", 16, "File Offset must be a number between 0 and 16!"},
      {"0x11", 16, "File Offset must be a number between 0 and 16!"},
      {"-1", 16, "File Offset must be a number between 0 and 16!"},
      {"", 16, "File Offset must be a number between 0 and 16!"},
      {"7 ", 16, "Invalid character \" \" in File Offset."},
      {"N/A", 16, "Invalid character \"N\" in File Offset."},
      {"0x", 16, "Invalid character \"x\" in File Offset."},
      {"0xg", 16, "Invalid character \"x\" in File Offset."},
      {"08", 16, "Invalid character \"8\" in File Offset."},
      {"1f", 16, "Invalid character \"f\" in File Offset."},
      {"0b1", 16, "Invalid character \"b\" in File Offset."},
      {"5000000000", kMost, "good"},
      {"0x7FFFFFFFFFFFFFFF", kMost, "good"},
      {"0777777777777777777777", kMost, "good"},
      {"0x8000000000000000", kMost, "File Offset must be a number between 0 and 9223372036854775807!"},
      {"18446744073709551617", kMost, "File Offset must be a number between 0 and 9223372036854775807!"},
      {"-18446744073709551615", kMost, "File Offset must be a number between 0 and 9223372036854775807!"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Outcome(ValidateLongField(c.text, 0, c.high, "File Offset")), c.outcome)
        << '"' << c.text << '"';
  }
  EXPECT_EQ(Outcome(ValidateLongField("0", 1, 2, nullptr)), "Value must be a number between 1 and 2!");
}

TEST(GetLongField, ValuesAndSuccess) {
  struct Case {
    const char* text;
    bool isSigned;
    FilePos value;
    bool good;
  };
  const Case cases[] = {
      {"0x10", true, 16, true},
      {"010", true, 8, true},
      {"-5", true, -5, true},
      {"12ab", true, 12, false},
      {"", true, 0, false},
      {" ", true, 0, false},
      {"99999999999999999999", true, kMost, true},
      {"0xFFFFFFFFFFFFFFFF", false, -1, true},
      {"-99999999999999999999", true, INTPTR_MIN, true},
  };
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
