#include "print/page_setup.h"

#include "print/shades.h"
#include "tests/scratch.h"

namespace {

TEST(Margins, WhatIsTypedInCentimetresIsShownAgain) {
  for (std::int32_t shown = 0; shown <= kCentimetres.MarginLimit; ++shown)
    EXPECT_EQ(kCentimetres.Shown(kCentimetres.Stored(shown)), shown);
  EXPECT_EQ(kCentimetres.Stored(kCentimetres.MarginLimit), kInches.MarginLimit);
  EXPECT_EQ(kCentimetres.Shown(50), 12);
  EXPECT_EQ(kCentimetres.Stored(12), 48);
  EXPECT_EQ(kCentimetres.Shown(kMostMargin), 2533);
}

TEST(Shades, AreGraysOfNineLevels) {
  const COLORREF grays[] = {0xFFFFFF, 0xE0E0E0, 0xC0C0C0, 0xA0A0A0, 0x808080,
                            0x606060, 0x404040, 0x202020, 0};
  for (int number = 0; number <= kMostShade; ++number) {
    EXPECT_EQ(ColorOfShade(number), grays[number]);
    EXPECT_EQ(ShadeOf(grays[number]), number);
  }
  EXPECT_EQ(ShadeOf(RGB(200, 0, 255)), 1) << "red alone counts";
}

TEST(PageSetup, ReadsWhatTheProfileHolds) {
  using Result = std::vector<std::int64_t>;
  const Result initial = {0x6FF, 0, 50, 0, 0};
  const struct {
    const char* keys;
    Result result;  // options, top, left, right, bottom
  } cases[] = {{"", initial},
               {"PrintOptions=\nPageMargins=\n", initial},
               {"PrintOptions=0\n", {0, 0, 50, 0, 0}},
               {"PrintOptions=4294967295\n", {0xFFF, 0, 50, 0, 0}},
               {"PrintOptions=69633\n", {1, 0, 50, 0, 0}},
               {"PageMargins=1,2,3,4\n", {0x6FF, 1, 2, 3, 4}},
               {"PageMargins=7,,9x\n", {0x6FF, 7, 0, 9, 0}},
               {"PageMargins=-1,10000,10001,99999999999\n", {0x6FF, 0, 10000, 10000, 10000}}};
  const ScratchFolder folder;
  for (const auto& c : cases) {
    const std::string file = folder.Write("p.ini", "[P]\n" + std::string(c.keys));
    PageSetup setup;
    EXPECT_EQ(LoadPageSetup(file.c_str(), "P", setup), 1);
    EXPECT_EQ((Result{setup.PrintOptions, setup.MarginTop, setup.MarginLeft, setup.MarginRight,
                      setup.MarginBottom}),
              c.result)
        << c.keys;
  }
  const std::string file = folder.Write("p.ini", "; mine\n");
  EXPECT_EQ(SavePageSetup(file.c_str(), "P", {0x805, 1, 2, 3, 4}), 0);
  EXPECT_EQ(ContentOf(file), "; mine\n\n[P]\nPrintOptions=2053\nPageMargins=1,2,3,4\n");
}

}  // namespace
