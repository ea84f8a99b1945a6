#include "window/fonts.h"

#include "resources/command_ids.h"
#include "resources/dialogs/color_dialog.h"
#include "resources/dialogs/format_options_dialog.h"
#include "tests/window/dialog_steps.h"
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
  const int large = MainState.CharHeight;
  // The same from Display Formatting, where it stays when that is cancelled. So do colors.
  platform_testing::AnswerNextFontDialog(platform_testing::FontAnswer{"Liberation Mono", 12, 400, false});
  platform_testing::AnswerNextColorDialog(RGB(1, 2, 3));
  namespace ids = format_options_dialog;
  using namespace dialog_steps;
  platform_testing::ScriptNextDialog(
      {Click(ids::kFont), Click(ids::kWrap), Click(ids::kColors), Click(IDCANCEL)});
  platform_testing::ScriptNextDialog({Click(color_dialog::kChange), Click(IDOK)});
  EXPECT_EQ(SendMessageA(viewer.Window(), WM_COMMAND, IDM_OPTIONS, 0), 0);
  viewer.Pump();
  EXPECT_EQ(MainState.FontPoints, 12);
  EXPECT_LT(MainState.CharHeight, large);
  EXPECT_EQ(ColorTable[WindowText], RGB(1, 2, 3));
  EXPECT_EQ(MainState.FormatFlags & VO_WRAP, 0U) << "the tick is dropped, and what the letter -W had set";
}

}  // namespace
