#include "settings/format_options.h"

#include <cstdio>

#include "engine/text_format.h"
#include "tests/scratch.h"

namespace {

// The group as the lines of a section give it.
FormatOptions Loaded(const std::string& lines) {
  const ScratchFolder folder;
  FormatOptions options;
  options.FontPoints = 33;
  LoadFormat(folder.Write("p.ini", "[quorl]\n" + lines + "\n").c_str(), "Quorl", options);
  return options;
}

TEST(LoadFormat, GivesTheDefaultsOfAbsentKeys) {
  FormatOptions options;
  options.FormatIndex = 2;
  options.CharCode = kCodeEbcdic;
  options.LineLength = 9;
  options.FrozenColumns = 4;
  options.ViewLogFont.lfHeight = -13;
  options.ViewLogFont.lfItalic = 1;
  TextTabLength = 3;
  LoadFormat("/no profile", "Quorl", options);
  EXPECT_EQ(options.FormatIndex, kFormatText);
  EXPECT_EQ(options.StoredFlags[0], 0x220U);
  EXPECT_EQ(options.StoredFlags[1], 0x03U);
  EXPECT_EQ(options.StoredFlags[2], 0x01U);
  EXPECT_EQ(options.FormatFlags, 0x220U);
  EXPECT_EQ(options.LineLength, 127);
  EXPECT_EQ(TextTabLength, 8);
  EXPECT_EQ(options.HorzScroll, kBarNever);
  EXPECT_EQ(options.FrozenColumns, 0);
  EXPECT_STREQ(options.ViewLogFont.lfFaceName, "Courier New");
  EXPECT_EQ(options.ViewLogFont.lfHeight, 10) << "above 0: the height is still to be worked out";
  EXPECT_EQ(options.ViewLogFont.lfItalic, 0);
}

TEST(LoadFormat, BoundsEachNumber) {
  using Cases = std::initializer_list<std::pair<const char*, std::int32_t>>;
  using Options = const FormatOptions&;
  const auto check = [](const Cases& cases, const auto& field) {
    for (const auto& [line, value] : cases)
      EXPECT_EQ(field(Loaded(line)), value) << line;
  };
  check({{"Format=1", 1}, {"Format=3", 2}, {"Format=-1", 2}, {"Format=", 0}},
        [](Options options) { return options.FormatIndex; });
  check({{"CharCode=2", 2}, {"CharCode=3", 3}, {"CharCode=99", 3}, {"CharCode=-1", 3}},
        [](Options options) { return options.CharCode; });
  check({{"LineLength=3", 8}, {"LineLength=9", 9}, {"LineLength=100000", 100000}},
        [](Options options) { return options.LineLength; });
  check({{"TabLength=0", 1}, {"TabLength=300", 255}, {"TabLength=4", 4}},
        [](Options) { return TextTabLength; });
  check({{"VertScroll=1", 1}, {"VertScroll=258", 2}, {"VertScroll=200", 0}, {"VertScroll=3", 2}},
        [](Options options) { return options.VertScroll; });
  check({{"HorzScroll=-1", 0}, {"HorzScroll=257", 1}}, [](Options options) { return options.HorzScroll; });
  check({{"FontWeight=-1", 0}, {"FontWeight=901", 900}, {"FontWeight=700", 700}},
        [](Options options) { return options.ViewLogFont.lfWeight; });
  check({{"FontItalic=256", 0}, {"FontItalic=257", 1}},
        [](Options options) { return options.ViewLogFont.lfItalic; });
  check({{"FreezeColumns=5", 5}}, [](Options options) { return options.FrozenColumns; });
}

TEST(LoadFormat, SplitsTheFont) {
  const std::string longFace(40, 'f');
  const struct {
    std::string value, face;
    std::int32_t points;
  } cases[] = {{"Mono,12", "Mono", 12},
               {"Mono", "Mono", 33},
               {"Mono,", "Mono", 33},
               {"Mono,big", "Mono", 33},
               {"Mono, 500pt", "Mono", 240},
               {"Mono,-3", "Mono", 1},
               {"Mono,11,7", "Mono", 11},
               {"Mon\xC3\xB6,9", "Mon", 9},
               {longFace + ",14", longFace.substr(0, 31), 14},
               {"", "", 33}};
  for (const auto& c : cases) {
    const FormatOptions options = Loaded("Font=" + c.value);
    EXPECT_EQ(options.FontFace, c.face) << c.value;
    EXPECT_EQ(options.ViewLogFont.lfFaceName, c.face) << c.value;
    EXPECT_EQ(options.FontPoints, c.points) << c.value;
    EXPECT_EQ(options.ViewLogFont.lfHeight, c.points) << c.value;
  }
}

TEST(LoadFormat, TakesTheWordsAndTheCode) {
  const FormatOptions options = Loaded("Options0=\nOptions1=64\nOptions2=4294967295\nFormat=1\nCharCode=2");
  EXPECT_EQ(options.StoredFlags[0], VO_EXPANDTABS | VO_FORMFEED | VO_EBCDIC)
      << "an empty value leaves the word";
  EXPECT_EQ(options.StoredFlags[1], VO_EBCDIC);
  EXPECT_EQ(options.StoredFlags[2], 0xFFFFFFFFU & ~VO_ASCII);
  EXPECT_EQ(options.FormatFlags, VO_EBCDIC);
}

TEST(LoadWindowPos, ReadsTopLeftHeightWidth) {
  const ScratchFolder folder;
  constexpr std::int32_t kNone = CW_USEDEFAULT;
  const struct {
    const char* line;
    std::vector<std::int32_t> position;
  } cases[] = {{"WindowPos=1,2,3,4", {2, 1, 4, 3}},
               {"WindowPos= -1 , -2,3x,", {-2, -1, 0, 3}},
               {"WindowPos=7", {0, 7, 0, 0}},
               {"", {kNone, kNone, kNone, kNone}}};
  for (const auto& c : cases) {
    FormatOptions options;
    LoadWindowPos(folder.Write("p.ini", std::string("[S]\n") + c.line + "\n").c_str(), "S", options);
    EXPECT_EQ((std::vector{options.WindowX, options.WindowY, options.WindowW, options.WindowH}), c.position);
  }
}

TEST(SaveFormat, WritesTheGroupInItsOrder) {
  const ScratchFolder folder;
  ProfilePlace place;
  std::snprintf(place.ProfilePath, sizeof place.ProfilePath, "%s", folder.Path("p.ini").c_str());
  FormatOptions options;
  options.StoredFlags[2] = 0x80000001;
  options.ViewLogFont.lfWeight = 700;
  TextTabLength = 4;
  const RECT window{20, 10, 420, 310};
  place.ProfileReadOnly = 1;
  EXPECT_EQ(SaveFormat(place, "Quorl", options, &window), 0);
  EXPECT_FALSE(std::filesystem::exists(place.ProfilePath));
  place.ProfileReadOnly = 0;
  EXPECT_EQ(SaveFormat(place, "Quorl", options, &window), 1);
  std::string expected =
      "[Quorl]\nOptions0=96\nOptions1=3\nOptions2=2147483649\nFormat=0\nCharCode=0\nLineLength=256\n"
      "TabLength=4\nVertScroll=2\nHorzScroll=2\nEscExit=0\nSavePos=0\nFont=Courier New,10\nFontWeight=700\n"
      "FontItalic=0\nFreezeColumns=0\n";
  EXPECT_EQ(ContentOf(place.ProfilePath), expected);
  options.SavePos = 1;
  EXPECT_EQ(SaveFormat(place, "Quorl", options, nullptr), 1);
  expected.replace(expected.find("SavePos=0"), 9, "SavePos=1");
  EXPECT_EQ(ContentOf(place.ProfilePath), expected);
  EXPECT_EQ(SaveFormat(place, "Quorl", options, &window), 1);
  EXPECT_EQ(ContentOf(place.ProfilePath), expected + "WindowPos=10,20,300,400\n");
  FormatOptions loaded;
  loaded.StoredFlags[2] = 0;
  LoadFormat(place.ProfilePath, "Quorl", loaded);
  EXPECT_EQ(loaded.StoredFlags[2], 0x80000001);
  TextTabLength = 8;
}

}  // namespace
