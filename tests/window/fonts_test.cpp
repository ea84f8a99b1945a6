#include "window/fonts.h"

#include "resources/command_ids.h"
#include "tests/window/viewer.h"

namespace {

TEST(FontHeight, RoundsAndZoomsInStepsOfAFifth) {
  EXPECT_EQ(FontHeight(10, 96), -13);
  EXPECT_EQ(FontHeight(12, 96), -16);
  struct Case {
    int height, level, expected;
  };
  for (const auto& [height, level, expected] :
       {Case{-13, 1, -15}, Case{-13, 2, -17}, Case{-13, -1, -11}, Case{-13, -7, -1}, Case{-4, 5, -4},
        Case{20, 1, 24}, Case{-13, 2000000000, -INT16_MAX}})
    EXPECT_EQ(ZoomedHeight(height, level), expected) << height << " at " << level;
}

TEST(Fonts, TheDialogsFontIsTakenAndTheZoomStays) {
  const ScratchFile file(NumberedLines(100));
  Viewer viewer({"-W", file.Path()});
  const int height = MainState.CharHeight;
  viewer.Command(IDM_FONT);
  EXPECT_EQ(MainState.CharHeight, height) << "cancelled";
  viewer.Command(IDM_ZOOM_IN);
  platform_testing::AnswerNextFontDialog(platform_testing::FontAnswer{"Liberation Mono", 20, 700, true});
  viewer.Command(IDM_FONT);
  EXPECT_EQ(MainState.FontPoints, 20);
  EXPECT_EQ(MainState.ViewLogFont.lfWeight, 700);
  EXPECT_NE(MainState.ViewLogFont.lfItalic, 0);
  EXPECT_EQ(MainState.ViewLogFont.lfHeight, FontHeight(20, 96)) << "the zoom never enters the description";
  EXPECT_EQ(MainState.ZoomLevel, 1);
  EXPECT_GT(MainState.CharHeight, height + height / 2);
  EXPECT_EQ(MainState.FormatWidth, MainState.ClientWidth / MainState.CharWidth) << "laid out anew";
}

}  // namespace
