#include "window/fonts.h"

#include "resources/command_ids.h"
#include "tests/window/viewer.h"

namespace {

TEST(FontHeight, RoundsToTheNearestPixel) {
  EXPECT_EQ(FontHeight(10, 96), -13);
  EXPECT_EQ(FontHeight(12, 96), -16);
  EXPECT_EQ(FontHeight(8, 96), -11);
  EXPECT_EQ(FontHeight(1, 96), -1);
  EXPECT_EQ(FontHeight(10, 192), -27);
}

TEST(ZoomedHeight, GoesInEqualStepsOfAFifth) {
  struct Case {
    int height, level, expected;
  };
  for (const auto& [height, level, expected] :
       {Case{-13, 0, -13}, Case{-13, 1, -15}, Case{-13, 2, -17}, Case{-13, -1, -11}, Case{-13, -6, -1},
        Case{-13, -7, -1}, Case{-4, 5, -4}, Case{20, 1, 24}, Case{-13, 2000000000, -INT16_MAX}}) {
    EXPECT_EQ(ZoomedHeight(height, level), expected) << height << " at " << level;
  }
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

TEST(Fonts, AFontThatCannotBeMadeIsReplaced) {
  const ScratchFile file("text\n");
  Viewer viewer({file.Path()});
  std::snprintf(MainState.ViewLogFont.lfFaceName, LF_FACESIZE, "%s", "No Such Face Anywhere");
  viewer.Send(WM_VIEW_FONT);
  EXPECT_NE(MainState.ViewFont, nullptr);
  EXPECT_GT(MainState.CharHeight, 0);
  EXPECT_GT(MainState.CharWidth, 0);
}

}  // namespace
