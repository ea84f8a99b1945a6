// Keys, bars and the wheel.
#include "window/scrolling.h"

#include "tests/window/viewer.h"
#include "window/navigation.h"

namespace {

constexpr int kLines = 400;

TEST(Keys, MoveTheView) {
  struct Case {
    const char* what;
    int cua, key, keys;
    const char* top;  // from line 100, at column 5
    int offset;
  };
  const Case cases[] = {{"down", 0, VK_DOWN, 0, "line 101", 5},
                        {"up", 0, VK_UP, 0, "line 99", 5},
                        {"page down", 0, VK_NEXT, 0, "line 124", 5},
                        {"page up", 0, VK_PRIOR, 0, "line 76", 5},
                        {"top", 0, VK_HOME, 0, "line 0", 5},
                        {"bottom", 0, VK_END, 0, "line 399", 5},
                        {"line start", 0, VK_HOME, MK_CONTROL, "line 100", 0},
                        {"line end", 0, VK_END, MK_CONTROL, "line 100", 0},
                        {"right", 0, VK_RIGHT, 0, "line 100", 6},
                        {"far left", 0, VK_LEFT, MK_CONTROL, "line 100", 0},
                        {"far right", 0, VK_RIGHT, MK_CONTROL, "line 100", 31},
                        {"line start", 1, VK_HOME, 0, "line 100", 0},
                        {"top", 1, VK_HOME, MK_CONTROL, "line 0", 5}};
  const ScratchFile file(NumberedLines(kLines));
  Viewer viewer({file.Path()});
  for (const Case& c : cases) {
    MainState.CuaKeyboard = 0;
    viewer.Send(WM_VIEW_MOVE, 0, 0);
    viewer.MoveLines(100);
    MainState.HorzOffset = 5;
    MainState.CuaKeyboard = c.cua;
    viewer.Key(c.key, c.keys);
    EXPECT_EQ(Viewer::Text().substr(0, Viewer::Text().find('.')), c.top) << c.what << c.cua;
    EXPECT_EQ(MainState.HorzOffset, c.offset) << c.what << c.cua;
  }
}

TEST(Bars, AppearAsTheSettingsSay) {
  struct Case {
    std::int8_t setting;
    int lines;
    bool vertical, horizontal;
  };
  for (const auto& [setting, lines, vertical, horizontal] :
       {Case{2, 3, false, true}, Case{2, 200, true, true}, Case{0, 200, false, false},
        Case{1, 3, true, true}}) {
    const ScratchFile file(NumberedLines(lines));
    Viewer viewer({file.Path()});
    MainState.VertScroll = MainState.HorzScroll = setting;
    RepaintWindow();
    viewer.Pump();
    EXPECT_EQ(platform_testing::ScrollBarOf(viewer.Window(), SB_VERT).visible, vertical) << lines;
    EXPECT_EQ(platform_testing::ScrollBarOf(viewer.Window(), SB_HORZ).visible, horizontal) << lines;
  }
}

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
