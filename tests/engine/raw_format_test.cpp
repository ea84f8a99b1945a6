#include "engine/raw_format.h"

#include <gtest/gtest.h>

#include "engine/char_map.h"
#include "tests/engine/format_pass.h"

namespace {

struct Case {
  const char* name;
  std::string bytes;
  std::int32_t off;
  FilePos pos;
  std::int32_t direction;
  std::int32_t lineLen;
  PassLimits limits;
  std::vector<PassLine> lines;
  std::int32_t index;     // Ccur afterwards
  std::int32_t textUsed;  // Tend afterwards
};

const PassLimits kTop = {10, 0, 100, 0};
const PassLimits kMiddle = {10, 5, 100, 0};

TEST(RawFormat, Passes) {
  const Case cases[] = {
      {"empty slice", "", 0, 0, FILL_FORWARD, 4, kTop, {}, 0, 0},
      {"empty slice, backward", "", 0, 0, FILL_BACKWARD, 4, kMiddle, {}, 5, 0},
      {"from the top",
       "0123456789",
       0,
       0,
       FILL_FORWARD,
       4,
       kTop,
       {{0, "0123"}, {4, "4567"}, {8, "89"}},
       3,
       10},
      {"from the end",
       "0123456789",
       10,
       10,
       FILL_BACKWARD,
       4,
       kMiddle,
       {{0, "  01"}, {2, "2345"}, {6, "6789"}},
       2,
       12},
      {"breaks and tabs are marks",
       "a\r\n\tb\f",
       0,
       0,
       FILL_FORWARD,
       4,
       kTop,
       {{0, "a\xB7\xB7\xA4"}, {4, "b\xF0"}},
       2,
       6},
      {"the slice is a piece of a huge file",
       "abcdef",
       2,
       0x123456789A,
       FILL_FORWARD,
       3,
       kTop,
       {{0x123456789A, "cde"}, {0x123456789D, "f"}},
       2,
       4},
      {"a line that begins above the slice is not made",
       "abcdef",
       5,
       105,
       FILL_BACKWARD,
       2,
       kMiddle,
       {{101, "bc"}, {103, "de"}},
       3,
       4},
      {"nor with blanks for bytes that the file has", "abcdef", 2, 3, FILL_BACKWARD, 5, kMiddle, {}, 5, 0},
      {"line length 0 counts as 1", "ab", 0, 0, FILL_FORWARD, 0, kTop, {{0, "a"}, {1, "b"}}, 2, 2},
      {"negative line length counts as 1",
       "ab",
       2,
       2,
       FILL_BACKWARD,
       -7,
       kMiddle,
       {{0, "a"}, {1, "b"}},
       3,
       2},
      {"array full", "abcdef", 0, 0, FILL_FORWARD, 1, {4, 1, 100, 0}, {{0, "a"}, {1, "b"}}, 3, 2},
      {"no entry but the sentinel's", "abcdef", 0, 9, FILL_FORWARD, 1, {4, 3, 100, 0}, {}, 3, 0},
      {"array full, backward",
       "abcdef",
       6,
       6,
       FILL_BACKWARD,
       2,
       {4, 2, 100, 0},
       {{2, "cd"}, {4, "ef"}},
       0,
       4},
      {"text full in a line", "abcdef", 0, 0, FILL_FORWARD, 3, {9, 0, 5, 0}, {{0, "abc"}, {3, "de"}}, 2, 5},
      {"text full behind a line",
       "abcdef",
       0,
       0,
       FILL_FORWARD,
       2,
       {9, 0, 4, 0},
       {{0, "ab"}, {2, "cd"}},
       2,
       4},
      {"text full before", "abcdef", 0, 0, FILL_FORWARD, 2, {9, 0, 4, 4}, {}, 0, 4},
      {"text full in a line, backward", "abcdef", 6, 6, FILL_BACKWARD, 2, {9, 5, 3, 0}, {{4, "ef"}}, 4, 3},
      {"text full behind a line, backward",
       "abcdef",
       6,
       6,
       FILL_BACKWARD,
       2,
       {9, 5, 4, 0},
       {{4, "ef"}},
       4,
       4},
      {"text full before, backward", "abcdef", 6, 6, FILL_BACKWARD, 2, {9, 5, 4, 4}, {}, 5, 4},
      {"the longest line length", "abcdef", 0, 0, FILL_FORWARD, INT32_MAX, kTop, {{0, "abcdef"}}, 1, 6},
      {"behind the data, forward", "abc", 5, 5, FILL_FORWARD, 2, kTop, {}, 0, 0},
      {"behind the data, backward", "abc", 5, 5, FILL_BACKWARD, 2, kMiddle, {{0, " a"}, {1, "bc"}}, 3, 4},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const PassResult result =
        RunPass(FormatRaw, c.bytes, c.off, c.pos, c.direction, VO_WRAP, c.lineLen, c.limits);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines, c.lines);
    EXPECT_EQ(result.index, c.index);
    EXPECT_EQ(result.textUsed, c.textUsed);
    if (c.direction == FILL_FORWARD) {
      const FilePos end = c.lines.empty() ? c.pos : c.lines.back().pos + FilePos(c.lines.back().text.size());
      EXPECT_EQ(result.sentinel, end);
      EXPECT_EQ(result.end, end);
    }
  }
}

TEST(RawFormat, UsesTheMapOfTheOptions) {
  const auto shown = [](ViewOptions options) {
    return RunPass(FormatRaw, "\xC1\f", 0, 0, FILL_FORWARD, options, 80).lines.at(0).text;
  };
  EXPECT_EQ(shown(0), "\xC1\xF0");
  EXPECT_EQ(shown(VO_KEEPFF), "\xC1\f");
  EXPECT_EQ(shown(VO_EBCDIC), "A\xB7");
}

}  // namespace
