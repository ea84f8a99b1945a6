// The text format on slices given by hand: how lines end, expand, wrap, are cut and marked, in both
// directions.
#include "engine/text_format.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr ViewOptions kPlain = 0;

struct Pass {
  std::string rows;  // "pos:text" with the flags' letters behind a slash, one row after the other; "=end"
  ViewStatus status = 0;
  FilePos keptEnd = 0;
};

std::string Describe(const LineEntry& line, const std::string& text) {
  std::string row = std::to_string(line.Lpos) + ":";
  row += text.substr(static_cast<std::size_t>(line.Ltext), static_cast<std::size_t>(line.Llen));
  std::string flags;
  if ((line.Lflags & LF_TRUNCATED) != 0) flags += 'T';
  if ((line.Lflags & LF_INCOMPLETE) != 0) flags += 'I';
  if ((line.Lflags & LF_PAGEMARK) != 0) flags += 'M';
  if ((line.Lflags & LF_PAGEGAP) != 0) flags += 'G';
  return flags.empty() ? row : row + "/" + flags;
}

struct Setting {
  ViewOptions options = kPlain;
  std::int32_t lineLen = 10;
  std::int32_t entries = 20;
  std::int32_t textSize = 200;
  FilePos slicePos = 0;  // file offset of the slice's first byte
  LongLine isLong = LongLine::unknown;
};

Pass MakePass(std::string bytes, std::int32_t direction, std::int32_t off, const Setting& setting) {
  std::vector<LineEntry> entries(static_cast<std::size_t>(setting.entries));
  std::string text(static_cast<std::size_t>(setting.textSize), '#');
  FileSlice slice{reinterpret_cast<std::uint8_t*>(bytes.data()), static_cast<std::int32_t>(bytes.size()),
                  off};
  TextBuffer buffer{text.data(), setting.textSize, 0};
  const bool forward = direction == FILL_FORWARD;
  LineCursor cursor{entries.data(), setting.entries, forward ? 0 : setting.entries, setting.isLong};
  Pass pass;
  pass.status =
      FormatText(slice, cursor, buffer, setting.slicePos + off, direction, setting.options, setting.lineLen);
  pass.keptEnd = cursor.Cend;
  for (std::int32_t i = forward ? 0 : cursor.Ccur; i < (forward ? cursor.Ccur : setting.entries); ++i) {
    pass.rows += Describe(entries[static_cast<std::size_t>(i)], text) + " ";
  }
  if (forward) {
    const LineEntry& sentinel = entries[static_cast<std::size_t>(cursor.Ccur)];
    EXPECT_EQ(sentinel.Llen, kSentinelLength);
    pass.rows += "=" + std::to_string(sentinel.Lpos);
  }
  return pass;
}

struct Case {
  const char* name;
  std::string bytes;
  Setting setting;
  const char* forward;
  const char* backward;  // from the end of the bytes; null where it is not of interest
  ViewStatus status = 0;
};

TEST(TextFormat, CutsLines) {
  const Case cases[] = {
      {"nothing", "", {}, "=0", ""},
      {"no line break at the end", "abc", {}, "0:abc/I =3", "0:abc/I ", VS_SHORT},
      {"end-of-file mark behind the last break", "abc\r\n\x1a", {}, "0:abc =6", "0:abc "},
      {"end-of-file mark elsewhere", "a\x1a\nb\n", {}, "0:a\xB7 3:b =5", "0:a\xB7 3:b "},
      {"all kinds of breaks", "a\nb\rc\r\nd\n\re\n", {}, "0:a 2:b 4:c 7:d 10:e =12", "0:a 2:b 4:c 7:d 10:e "},
      {"two breaks make an empty line", "a\r\r\nb\n", {}, "0:a 2: 4:b =6", "0:a 2: 4:b "},
      {"NUL and other controls", std::string("a\0\x01z\n", 5), {}, "0:a\xB7\xB7z =5", "0:a\xB7\xB7z "},
      {"exactly full, then a break", "0123456789\r\nx\n", {}, "0:0123456789 12:x =14", "0:0123456789 12:x "},
      {"exactly full, then a break, wrapped",
       "0123456789\r\nx\n",
       {VO_WRAP},
       "0:0123456789 12:x =14",
       "0:0123456789 12:x "},
      {"one more, cut",
       "0123456789A\nx\n",
       {},
       "0:0123456789/T 12:x =14",
       "0:0123456789/T 12:x ",
       VS_TRUNCATED},
      {"one more, wrapped",
       "0123456789A\nx\n",
       {VO_WRAP},
       "0:0123456789 10:A 12:x =14",
       "0:0123456789 10:A 12:x "},
      {"cut line without an end", "0123456789ABC", {}, "0:0123456789/T =13", "0:0123456789/T ", VS_TRUNCATED},
      {"tab at column 0", "\tx\n", {VO_EXPANDTABS, 20}, "0:        x =3", "0:        x "},
      {"tab at column 7", "1234567\tx\n", {VO_EXPANDTABS, 20}, "0:1234567 x =10", "0:1234567 x "},
      {"tab at column 8",
       "12345678\tx\n",
       {VO_EXPANDTABS, 20},
       "0:12345678        x =11",
       "0:12345678        x "},
      {"tab stop beyond the line", "12345678\t\n", {VO_EXPANDTABS}, "0:12345678   =10", "0:12345678   "},
      {"tab behind a full line vanishes",
       "0123456789\t\nx\n",
       {VO_EXPANDTABS},
       "0:0123456789 12:x =14",
       "0:0123456789 12:x "},
      {"the same, wrapped",
       "0123456789\tA\n",
       {VO_EXPANDTABS | VO_WRAP},
       "0:0123456789 11:A =13",
       "0:0123456789 11:A "},
      {"tab as a byte",
       "a\tb\n",
       {},
       "0:a\xA4"
       "b =4",
       "0:a\xA4"
       "b "},
      {"form feed at a line start", "a\n\fb\n", {VO_FORMFEED}, "0:a 2:b/M =5", "0:a 2:b/M "},
      {"form feed as a line of its own",
       "a\n\fb\n",
       {VO_FORMFEED | VO_PAGEGAP},
       "0:a 2:/G 3:b =5",
       "0:a 2:/G 3:b "},
      {"form feed inside a line",
       "a\fb\n",
       {VO_FORMFEED},
       "0:a\xF0"
       "b =4",
       "0:a\xF0"
       "b "},
      {"form feed without the option",
       "\fb\n",
       {},
       "0:\xF0"
       "b =3",
       "0:\xF0"
       "b "},
      {"form feed on a wrap",
       "0123456789\fb\n",
       {VO_FORMFEED | VO_WRAP},
       "0:0123456789 10:b/M =13",
       "0:0123456789 10:\xF0"
       "b "},
      {"wrapped in many parts",
       "0123456789ABCDEFGHIJab\n",
       {VO_WRAP},
       "0:0123456789 10:ABCDEFGHIJ 20:ab =23",
       "0:0123456789 10:ABCDEFGHIJ 20:ab "},
      {"a width below one", "ab\n", {VO_WRAP, 0}, "0:a 1:b =3", "0:a 1:b "},
      {"a slice in mid-file",
       "xx\nab\n",
       {kPlain, 10, 20, 200, 1000},
       "1000:xx 1003:ab =1006",
       "1000:xx 1003:ab "},
      {"no line break in mid-file",
       "abc",
       {kPlain, 10, 20, 200, 5000000000},
       "5000000000:abc/I =5000000003",
       "5000000000:abc/I ",
       VS_SHORT},
      {"entries run out", "a\nb\nc\n", {kPlain, 10, 3}, "0:a 2:b =4", "0:a 2:b 4:c "},
      {"entries run out in a wrapped line",
       "0123456789ABCDEFGHIJab\n",
       {VO_WRAP, 10, 2},
       "0:0123456789 =10",
       "10:ABCDEFGHIJ 20:ab "},
      {"text runs out", "abcdefgh\nijklmnop\n", {kPlain, 10, 20, 10}, "0:abcdefgh =11", "0:ab/I 9:ijklmnop "},
  };
  for (const Case& c : cases) {
    const Pass forward = MakePass(c.bytes, FILL_FORWARD, 0, c.setting);
    EXPECT_EQ(forward.rows, c.forward) << c.name;
    EXPECT_EQ(forward.status, c.status) << c.name;
    if (c.backward == nullptr) continue;
    const Pass backward =
        MakePass(c.bytes, FILL_BACKWARD, static_cast<std::int32_t>(c.bytes.size()), c.setting);
    EXPECT_EQ(backward.rows, c.backward) << c.name;
  }
}

// A line given up for want of text is not kept, though the sentinel lies inside it.
TEST(TextFormat, TellsWhereTheKeptLinesEnd) {
  EXPECT_EQ(MakePass("abcdefgh\nijklmnop\n", FILL_FORWARD, 0, {kPlain, 10, 20, 10}).keptEnd, 9);
  EXPECT_EQ(MakePass("abc\nde", FILL_FORWARD, 0, {}).keptEnd, 6);
}

TEST(TextFormat, StartsInsideALine) {
  // Forward from the place, backward the whole line that holds it.
  EXPECT_EQ(MakePass("ab\ncdef\n", FILL_FORWARD, 5, {}).rows, "5:ef =8");
  EXPECT_EQ(MakePass("ab\ncdef\n", FILL_BACKWARD, 5, {}).rows, "0:ab 3:cdef ");
  // Behind the data: the file has shrunk.
  EXPECT_EQ(MakePass("ab\n", FILL_FORWARD, 9, {}).rows, "=9");
  EXPECT_EQ(MakePass("ab\ncd\n", FILL_BACKWARD, 9, {}).rows, "0:ab 3:cd ");
}

// With the loader's knowledge, a line that the slice cuts is not taken for a whole one, and a wrapped line
// that the text cannot hold gives its last rows.
TEST(TextFormat, KeepsRowsNeighboursWhenLinesDoNotFit) {
  Setting known{kPlain, 10, 20, 200, 1000, LongLine::no};
  EXPECT_EQ(MakePass("tail\nab\n", FILL_BACKWARD, 8, known).rows, "1005:ab ");
  Setting narrow{VO_WRAP, 10, 20, 20, 0, LongLine::no};
  EXPECT_EQ(MakePass("0123456789ABCDEFGHIJab\n", FILL_BACKWARD, 23, narrow).rows, "10:ABCDEFGHIJ 20:ab ");
  Setting tight{kPlain, 10, 20, 12, 0, LongLine::no};
  EXPECT_EQ(MakePass("abcdefgh\nijklmnop\n", FILL_BACKWARD, 18, tight).rows, "9:ijklmnop ");
}

TEST(TextFormat, StepsOfLongLinesAreWholeRows) {
  for (const std::int32_t lineLen : {-5, 0, 1, 7, 80, 243, 16384, 16385, 29000}) {
    const std::int32_t step = LongLineStep(lineLen);
    EXPECT_EQ(step % std::max(lineLen, 1), 0) << lineLen;
    EXPECT_LE(step, kViewText) << lineLen;
    EXPECT_GT(step, 8192) << lineLen;
  }
}

}  // namespace
