#include "window/fonts.h"

#include "resources/command_ids.h"
#include "tests/window/viewer.h"

namespace {

TEST(FontHeight, RoundsAndZoomsInStepsOfAFifth) {
  struct Case {
    int value, by, expected;
  };
  for (const auto& [points, dpi, height] :
       {Case{10, 96, -13}, Case{12, 96, -16}, Case{8, 96, -11}, Case{1, 96, -1}, Case{10, 192, -27}})
    EXPECT_EQ(FontHeight(points, dpi), height);
  for (const auto& [height, level, expected] :
       {Case{-13, 0, -13}, Case{-13, 1, -15}, Case{-13, 2, -17}, Case{-13, -1, -11}, Case{-13, -6, -1},
        Case{-13, -7, -1}, Case{-4, 5, -4}, Case{20, 1, 24}, Case{-13, 2000000000, -INT16_MAX}})
    EXPECT_EQ(ZoomedHeight(height, level), expected) << height << " at " << level;
}

TEST(Zoom, ReturnsToTheFirstFont) {
  const ScratchFile file(NumberedLines(100));
  Viewer viewer({file.Path()});
  const int height = MainState.CharHeight;
  const int width = MainState.CharWidth;
  viewer.Type('Z', MK_CONTROL | MK_SHIFT);
  viewer.Type('Z', MK_CONTROL | MK_SHIFT);
  EXPECT_EQ(MainState.ZoomLevel, 2);
  EXPECT_GT(MainState.CharHeight, height);
  viewer.Type('Z', MK_CONTROL);
  viewer.Type('Z', MK_CONTROL);
  EXPECT_EQ(MainState.CharHeight, height);
  EXPECT_EQ(MainState.CharWidth, width);
  for (int i = 0; i < 12; ++i)
    viewer.Command(IDM_ZOOM_OUT);
  EXPECT_GT(MainState.CharHeight, 0);
  EXPECT_GT(MainState.CharWidth, 0);
  EXPECT_EQ(MainState.ViewLogFont.lfHeight, -13) << "the zoom never enters the description";
  viewer.Key(VK_NEXT);
  EXPECT_FALSE(Viewer::ErrorPage());
  viewer.Type('Z', MK_CONTROL | platform_testing::kAlt);
  EXPECT_EQ(MainState.ZoomLevel, 0);
  EXPECT_EQ(MainState.CharHeight, height);
}

TEST(FontDialog, AFontIsTakenOrLeft) {
  const ScratchFile file(NumberedLines(100));
  Viewer viewer({"-W", file.Path()});
  const int height = MainState.CharHeight;
  viewer.Command(IDM_FONT);
  EXPECT_EQ(MainState.CharHeight, height) << "cancelled";
  EXPECT_EQ(MainState.FontPoints, 10);

  viewer.Command(IDM_ZOOM_IN);
  platform_testing::AnswerNextFontDialog(platform_testing::FontAnswer{"Liberation Mono", 20, 700, true});
  viewer.Command(IDM_FONT);
  EXPECT_EQ(MainState.FontPoints, 20);
  EXPECT_EQ(MainState.ViewLogFont.lfWeight, 700);
  EXPECT_NE(MainState.ViewLogFont.lfItalic, 0);
  EXPECT_LT(MainState.ViewLogFont.lfHeight, 0);
  EXPECT_EQ(MainState.ZoomLevel, 1) << "the zoom stays";
  EXPECT_GT(MainState.CharHeight, height + height / 2);
  EXPECT_EQ(MainState.FormatWidth, MainState.ClientWidth / MainState.CharWidth) << "laid out anew";
}

}  // namespace
