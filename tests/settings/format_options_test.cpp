#include "settings/format_options.h"

#include <cstdio>

#include "engine/text_format.h"
#include "tests/scratch.h"

namespace {

// The group as the lines of a section give it, over other values.
FormatOptions Loaded(const std::string& lines) {
  const ScratchFolder folder;
  FormatOptions options;
  options.FormatIndex = 2;
  options.LineLength = 9;
  options.FrozenColumns = 4;
  options.FontPoints = 33;
  options.ViewLogFont.lfItalic = 1;
  TextTabLength = 3;
  LoadFormat(folder.Write("p.ini", "[quorl]\n" + lines + "\n").c_str(), "Quorl", options);
  return options;
}

TEST(LoadFormat, BoundsEachNumber) {
  const std::pair<const char*, std::vector<std::int64_t>> cases[] = {
      {"", {0, 3, 127, 8, 2, 0, 0, 0, 0}},
      {"Format=1\nCharCode=6\nLineLength=9\nTabLength=4\nVertScroll=1\nHorzScroll=2\nFontWeight=700\n"
       "FontItalic=1\nFreezeColumns=5",
       {1, 6, 9, 4, 1, 2, 700, 1, 5}},
      {"Format=3\nCharCode=99\nLineLength=100000\nTabLength=300\nVertScroll=3\nHorzScroll=258\n"
       "FontWeight=901\nFontItalic=256\nFreezeColumns=256",
       {2, 3, 32767, 255, 2, 2, 900, 0, 255}},
      {"Format=-1\nCharCode=-1\nLineLength=3\nTabLength=0\nVertScroll=-1\nHorzScroll=200\nFontWeight=-1\n"
       "FontItalic=257",
       {2, 3, 8, 1, 0, 0, 0, 1, 0}}};
  for (const auto& [lines, numbers] : cases) {
    const FormatOptions options = Loaded(lines);
    EXPECT_EQ(
        (std::vector<std::int64_t>{options.FormatIndex, options.CharCode, options.LineLength, TextTabLength,
                                   options.VertScroll, options.HorzScroll, options.ViewLogFont.lfWeight,
                                   options.ViewLogFont.lfItalic, options.FrozenColumns}),
        numbers)
        << lines;
  }
}

TEST(LoadFormat, SplitsTheFont) {
  const std::string longFace(40, 'f');
  const struct {
    std::string value, face;
    std::int32_t points;
  } cases[] = {{"Mono,12", "Mono", 12},
               {"", "", 33},
               {"Mono", "Mono", 33},
               {"Mono,big", "Mono", 33},
               {"Mono, 500pt", "Mono", 240},
               {"Mono,-3", "Mono", 1},
               {"Mono,11,7", "Mono", 11},
               {"M\xC3\xB6n\xC3\xB6,9", "M\xC3\xB6n\xC3\xB6", 9},
               {longFace + ",14", longFace.substr(0, 31), 14},
               {longFace.substr(0, 29) + "\xE2\x82\xAC,14", longFace.substr(0, 29), 14}};
  for (const auto& c : cases) {
    const FormatOptions options = Loaded("Font=" + c.value);
    EXPECT_EQ(options.FontFace, c.face) << c.value;
    EXPECT_EQ(options.ViewLogFont.lfFaceName, c.face) << c.value;
    EXPECT_EQ(options.FontPoints, c.points) << c.value;
    EXPECT_EQ(options.ViewLogFont.lfHeight, c.points) << c.value;
    const ScratchFolder folder;
    const std::string saved = folder.Path("p.ini");
    EXPECT_EQ(SaveFormat(saved.c_str(), "S", options, nullptr), 0);
    EXPECT_NE(ContentOf(saved).find("Font=" + c.face + ',' + std::to_string(c.points) + '\n'),
              std::string::npos);
  }
}

TEST(LoadFormat, TakesTheWordsAndTheCode) {
  const FormatOptions absent = Loaded("");
  EXPECT_EQ(std::vector(absent.StoredFlags, absent.StoredFlags + 3),
            (std::vector<ViewOptions>{0x220, 0x03, 0x01}));
  const FormatOptions options = Loaded("Options0=\nOptions1=64\nOptions2=4294967295\nFormat=1\nCharCode=2");
  EXPECT_EQ(std::vector(options.StoredFlags, options.StoredFlags + 3),
            (std::vector<ViewOptions>{VO_EXPANDTABS | VO_FORMFEED | VO_EBCDIC, VO_EBCDIC, ~VO_ASCII}))
      << "an empty value leaves the word";
  EXPECT_EQ(options.FormatFlags, VO_EBCDIC);
}

TEST(WindowPos, IsReadAndFittedToTheScreen) {
  const ScratchFolder folder;
  constexpr std::int32_t kNone = CW_USEDEFAULT;
  const std::pair<const char*, std::vector<std::int32_t>> cases[] = {
      {"[S]\nWindowPos= 1 , 12,300x,+400,9\n", {12, 1, 400, 300}},
      {"[S]\nWindowPos=-1,-2,3,2000000000000\n", {-10, 0, 1000, 64}},
      {"[S]\nWindowPos=2147483647,2147483647,500,500\n", {490, 100, 500, 500}},
      {"[S]\nWindowPos=7\n", {kNone, kNone, kNone, kNone}},
      {"[S]\nWindowPos=0,0,0,0\n", {kNone, kNone, kNone, kNone}},
      {"[S]\nWindowPos=\n", {kNone, kNone, kNone, kNone}},
      {"[S]\nWindowPos=here\n", {kNone, kNone, kNone, kNone}},
      {"", {kNone, kNone, kNone, kNone}}};
  for (const auto& [content, position] : cases) {
    FormatOptions options;
    LoadWindowPos(folder.Write("p.ini", content).c_str(), "S", options);
    FitWindowTo({-10, 0, 990, 600}, options);
    EXPECT_EQ((std::vector{options.WindowX, options.WindowY, options.WindowW, options.WindowH}), position);
  }
}

}  // namespace
