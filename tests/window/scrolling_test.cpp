// Keys, bars and the wheel.
#include "window/scrolling.h"

#include "tests/window/viewer.h"
#include "window/navigation.h"

namespace {

constexpr int kLines = 400;

TEST(Bars, TheHorizontalBarScrollsColumns) {
  struct Case {
    UINT code;
    int from, to;
  };
  constexpr int kEnd = 120 - 80;  // of the longest line on the screen
  const Case cases[] = {{SB_LINEUP, 0, 0}, {SB_LINEDOWN, 242, 242}, {SB_PAGEDOWN, 230, 242},
                        {SB_TOP, 50, 0},   {SB_PAGEUP, 30, 4},      {SB_BOTTOM, 0, kEnd}};
  const ScratchFile file("short\n" + std::string(120, 'x') + '\n' + NumberedLines(kLines));
  Viewer viewer({file.Path()});
  ASSERT_EQ(MainState.FormatWidth, 243);
  for (const auto& [code, from, to] : cases) {
    MainState.HorzOffset = from;
    viewer.Send(WM_HSCROLL, static_cast<std::intptr_t>(code));
    EXPECT_EQ(MainState.HorzOffset, to) << code;
  }
  MainState.HorzScroll = kBarAlways;
  RepaintWindow();
  viewer.Pump();
  platform_testing::DragThumb(viewer.Window(), SB_HORZ, 77);
  viewer.Pump();
  EXPECT_EQ(MainState.HorzOffset, 77);
}

TEST(Wheel, ScrollsLinesColumnsAndZoom) {
  const ScratchFile file(NumberedLines(kLines));
  Viewer viewer({file.Path()});
  UINT notch = 0;
  SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &notch, 0);
  const int lines = static_cast<int>(notch);
  ASSERT_GT(lines, 0);
  const int part = WHEEL_DELTA / lines;
  struct Turn {
    int delta;
    bool horizontal;
    int keys, times, top, column, zoom;
  };
  // Parts of a notch add up, and are forgotten when the wheel turns back.
  const Turn turns[] = {{-2 * WHEEL_DELTA, false, 0, 1, 2 * lines, 0, 0},
                        {WHEEL_DELTA, false, 0, 1, lines, 0, 0},
                        {-part / 2, false, 0, 2 * lines, 2 * lines, 0, 0},
                        {1 - part, false, 0, 1, 2 * lines, 0, 0},
                        {part - 1, false, 0, 1, 2 * lines, 0, 0},
                        {1 - part, false, 0, 1, 2 * lines, 0, 0},
                        {-WHEEL_DELTA, false, MK_SHIFT, 1, 2 * lines, lines, 0},
                        {WHEEL_DELTA, true, 0, 1, 2 * lines, 2 * lines, 0},
                        {3 * WHEEL_DELTA, false, MK_SHIFT, 1, 2 * lines, 0, 0},
                        {2 * WHEEL_DELTA, false, MK_CONTROL, 1, 2 * lines, 0, 2}};
  for (const Turn& turn : turns) {
    for (int i = 0; i < turn.times; ++i)
      platform_testing::Wheel(viewer.Window(), turn.delta, turn.horizontal, turn.keys);
    viewer.Pump();
    EXPECT_EQ(MainState.ZoomLevel, turn.zoom);
    EXPECT_EQ(MainState.HorzOffset, turn.column);
    EXPECT_EQ(std::stoi(Viewer::Text().substr(5)), turn.top);
  }
}

}  // namespace
