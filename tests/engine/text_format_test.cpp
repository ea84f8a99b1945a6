// The text format on slices given by hand: how lines end, expand, wrap, are cut and marked, in both
// directions.
#include "engine/text_format.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/engine/format_pass.h"

namespace {

constexpr ViewOptions kPlain = 0;

struct Setting {
  ViewOptions options = kPlain;
  std::int32_t lineLen = 10;
  std::int32_t entries = 20;
  std::int32_t textSize = 200;
  FilePos slicePos = 0;  // file offset of the slice's first byte
  LongLine isLong = LongLine::unknown;
};

PassResult MakePass(const std::string& bytes, std::int32_t direction, std::size_t off,
                    const Setting& setting) {
  const auto at = static_cast<std::int32_t>(off);
  return RunPass(FormatText, bytes, at, setting.slicePos + at, direction, setting.options, setting.lineLen,
                 {setting.entries, direction == FILL_FORWARD ? 0 : setting.entries, setting.textSize, 0,
                  setting.isLong});
}

TEST(TextFormat, CutsLines) {
  struct Case {
    std::string bytes;
    Setting setting;
    std::string forward;
    const char* backward = nullptr;  // from the end of the bytes; null: the same lines
    ViewStatus status = 0;
  };
  const Setting kTabs = {VO_EXPANDTABS, 20};
  const Case cases[] = {
      // Ends of lines and of the file, with the end-of-file mark.
      {"", {}, "=0"},
      {"abc", {}, "0:abc/I =3", nullptr, VS_SHORT},
      {"abc\r\n\x1a", {}, "0:abc =6"},
      {"a\x1a\nb\n", {}, "0:a\xB7 3:b =5"},
      {"a\nb\rc\r\nd\n\re\n", {}, "0:a 2:b 4:c 7:d 10:e =12"},
      {"a\n\r\nb\r\r\n\n", {}, "0:a 3: 4:b 6: 8: =9"},
      {std::string("a\0\x01z\n", 5), {}, "0:a\xB7\xB7z =5"},
      // Full lines.
      {"0123456789\r\nx\n", {}, "0:0123456789 12:x =14"},
      {"0123456789A\nx\n", {}, "0:0123456789/T 12:x =14", nullptr, VS_TRUNCATED},
      {"0123456789A\nx\n", {VO_WRAP}, "0:0123456789 10:A 12:x =14"},
      {"0123456789ABC", {}, "0:0123456789/T =13", nullptr, VS_TRUNCATED},
      {"ab\n", {VO_WRAP, 0}, "0:a 1:b =3"},
      // Tabs: expanded, cut by the line, vanished behind a full one, as a byte.
      {"\tx\n", kTabs, "0:        x =3"},
      {"12345678\tx\n", kTabs, "0:12345678        x =11"},
      {"0123456789\t\nx\n", {VO_EXPANDTABS}, "0:0123456789 12:x =14"},
      {"0123456789\tA\n", {VO_EXPANDTABS | VO_WRAP}, "0:0123456789 11:A =13"},
      {"a\t_\n", {}, "0:a\xA4_ =4"},
      // Form feeds: at a line's start, as a line of their own, inside, without the option, on a wrap.
      {"a\n\fb\n", {VO_FORMFEED}, "0:a 2:b/M =5"},
      {"a\n\fb\n", {VO_FORMFEED | VO_PAGEGAP}, "0:a 2:/G 3:b =5"},
      {"a\f_\n", {VO_FORMFEED}, "0:a\xF0_ =4"},
      {"0123456789\f_\n", {VO_FORMFEED | VO_WRAP}, "0:0123456789 10:_/M =13"},
      // Slices in mid-file, and too little room.
      {"abc", {kPlain, 10, 20, 200, 5000000000}, "5000000000:abc/I =5000000003", nullptr, VS_SHORT},
      {"a\nb\nc\n", {kPlain, 10, 3}, "0:a 2:b =4", "0:a 2:b 4:c "},
      {"0123456789ABCDEFGHIJab\n", {VO_WRAP, 10, 2}, "0:0123456789 =10", "10:ABCDEFGHIJ 20:ab "},
      {"abcdefgh\nijklmnop\n", {kPlain, 10, 20, 10}, "0:abcdefgh =11", "0:ab/I 9:ijklmnop "},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.bytes) + " options " + std::to_string(c.setting.options));
    const PassResult forward = MakePass(c.bytes, FILL_FORWARD, 0, c.setting);
    EXPECT_EQ(forward.Shown(), c.forward);
    EXPECT_EQ(forward.status, c.status);
    EXPECT_EQ(MakePass(c.bytes, FILL_BACKWARD, c.bytes.size(), c.setting).Shown(),
              c.backward != nullptr ? c.backward : c.forward.substr(0, c.forward.find('=')));
  }
}

TEST(TextFormat, StartsAnywhereAndKeepsRowsNeighbours) {
  struct Case {
    std::string bytes;
    std::int32_t direction;
    std::size_t off;
    Setting setting;
    const char* rows;
  };
  const Case cases[] = {
      // Forward from the place, backward the whole line that holds it.
      {"ab\ncdef\n", FILL_FORWARD, 5, {}, "5:ef =8"},
      {"ab\ncdef\n", FILL_BACKWARD, 5, {}, "0:ab 3:cdef "},
      // Behind the data: the file has shrunk.
      {"ab\n", FILL_FORWARD, 9, {}, "=9"},
      {"ab\ncd\n", FILL_BACKWARD, 9, {}, "0:ab 3:cd "},
      // With the loader's knowledge, a line that the slice cuts is not taken for a whole one, and a wrapped
      // line that the text cannot hold gives its last rows.
      {"tail\nab\n", FILL_BACKWARD, 8, {kPlain, 10, 20, 200, 1000, LongLine::no}, "1005:ab "},
      {"0123456789AB\n", FILL_BACKWARD, 13, {VO_WRAP, 10, 20, 8, 0, LongLine::no}, "10:AB "},
      {"abcdefgh\nijklmnop\n", FILL_BACKWARD, 18, {kPlain, 10, 20, 12, 0, LongLine::no}, "9:ijklmnop "},
  };
  for (const Case& c : cases)
    EXPECT_EQ(MakePass(c.bytes, c.direction, c.off, c.setting).Shown(), c.rows) << c.bytes;
  // A line given up for want of text is not kept, though the sentinel lies inside it.
  EXPECT_EQ(MakePass("abcdefgh\nijklmnop\n", FILL_FORWARD, 0, {kPlain, 10, 20, 10}).end, FilePos::At(9));
  EXPECT_EQ(MakePass("abc\nde", FILL_FORWARD, 0, {}).end, FilePos::At(6));
}

}  // namespace
