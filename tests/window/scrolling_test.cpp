// Keys, bars and the wheel.
#include "window/scrolling.h"

#include <filesystem>

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
  const Case cases[] = {
      {"down", 0, VK_DOWN, 0, "line 101", 5},
      {"up", 0, VK_UP, 0, "line 99", 5},
      {"page down", 0, VK_NEXT, 0, "line 124", 5},
      {"page up", 0, VK_PRIOR, 0, "line 76", 5},
      {"top", 0, VK_HOME, 0, "line 0", 5},
      {"bottom", 0, VK_END, 0, "line 399", 5},
      {"line start", 0, VK_HOME, MK_CONTROL, "line 100", 0},
      {"line end", 0, VK_END, MK_CONTROL, "line 100", 243 - 80},
      {"left", 0, VK_LEFT, 0, "line 100", 4},
      {"right", 0, VK_RIGHT, 0, "line 100", 6},
      {"far left", 0, VK_LEFT, MK_CONTROL, "line 100", 0},
      {"far right", 0, VK_RIGHT, MK_CONTROL, "line 100", 31},
      {"line start", 1, VK_HOME, 0, "line 100", 0},
      {"line end", 1, VK_END, 0, "line 100", 243 - 80},
      {"top", 1, VK_HOME, MK_CONTROL, "line 0", 5},
      {"bottom", 1, VK_END, MK_CONTROL, "line 399", 5},
      {"no key of ours", 0, VK_INSERT, 0, "line 100", 5},
  };
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

TEST(Bars, ADragReachesAnyPlaceOfAHugeFile) {
  const ScratchFile file("start\n");
  constexpr std::uintmax_t kHuge = 64ULL << 30;
  std::filesystem::resize_file(file.Path(), kHuge);
  Viewer viewer({"-H", file.Path()});
  for (const FilePos target : {FilePos{1} << 35, (FilePos{1} << 36) - 1000, FilePos{12345678901}}) {
    platform_testing::DragThumb(viewer.Window(), SB_VERT, target);
    viewer.Pump();
    EXPECT_LE(Viewer::Top(), target);
    EXPECT_GT(Viewer::Entry(1).Lpos, target);
    const platform_testing::Bar bar = platform_testing::ScrollBarOf(viewer.Window(), SB_VERT);
    EXPECT_TRUE(bar.visible);
    EXPECT_EQ(bar.top, MainState.File.Flen);
    EXPECT_EQ(bar.position, Viewer::Top());
  }
  viewer.Key(VK_END);
  EXPECT_GE(Viewer::Top() + 64, static_cast<FilePos>(kHuge));
  viewer.Key(VK_PRIOR);
  viewer.Key(VK_NEXT);
  EXPECT_FALSE(Viewer::ErrorPage());
}

TEST(Bars, AppearAsTheSettingsSay) {
  struct Case {
    const char* what;
    std::int8_t vertical, horizontal;
    int lines;
    bool showsVertical, showsHorizontal;
  };
  const Case cases[] = {
      {"when needed, and it fits", 2, 2, 3, false, true},  // lines may be three screens wide
      {"when needed", 2, 2, 200, true, true},
      {"never", 0, 0, 200, false, false},
      {"always", 1, 1, 3, true, true},
  };
  for (const Case& c : cases) {
    const ScratchFile file(NumberedLines(c.lines));
    Viewer viewer({file.Path()});
    MainState.VertScroll = c.vertical;
    MainState.HorzScroll = c.horizontal;
    RepaintWindow();
    viewer.Pump();
    EXPECT_EQ(platform_testing::ScrollBarOf(viewer.Window(), SB_VERT).visible, c.showsVertical) << c.what;
    EXPECT_EQ(platform_testing::ScrollBarOf(viewer.Window(), SB_HORZ).visible, c.showsHorizontal) << c.what;
  }
  // Three lines fill the text buffer, so all lines of the run fit the screen; the file goes on.
  std::string text;
  for (int i = 0; i < 20; ++i)
    text += std::string(12000, static_cast<char>('a' + i)) + "\n";
  const ScratchFile file(text);
  Viewer viewer({"-L", file.Path()});
  MainState.LineLength = 13000;
  ReformatView();
  viewer.Pump();
  ASSERT_LT(MainState.Lines.Alast, Viewer::kRows);
  EXPECT_TRUE(platform_testing::ScrollBarOf(viewer.Window(), SB_VERT).visible);
}

TEST(Bars, TheHorizontalBarScrollsColumns) {
  struct Case {
    UINT code;
    int from, to;
  };
  constexpr int kEnd = 243 - 80;
  const Case cases[] = {{SB_LINEUP, 0, 0},    {SB_LINEDOWN, 0, 1},     {SB_PAGEDOWN, 1, 27},
                        {SB_PAGEUP, 30, 4},   {SB_LINEDOWN, 242, 242}, {SB_PAGEDOWN, 230, 242},
                        {SB_TOP, 50, 0},      {SB_BOTTOM, 0, kEnd},    {SB_ENDSCROLL, 7, 7},
                        {SB_THUMBTRACK, 7, 7}};
  const ScratchFile file(NumberedLines(kLines));
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
  const auto turn = [&viewer](int delta, bool horizontal, int keys) {
    platform_testing::Wheel(viewer.Window(), delta, horizontal, keys);
    viewer.Pump();
  };
  const auto topLine = [] { return std::stoi(Viewer::Text().substr(5)); };
  turn(-2 * WHEEL_DELTA, false, 0);
  EXPECT_EQ(topLine(), 2 * lines);
  turn(WHEEL_DELTA, false, 0);
  EXPECT_EQ(topLine(), lines);
  // Parts of a notch add up, and are forgotten when the wheel turns back.
  for (int i = 0; i < lines; ++i)
    turn(-WHEEL_DELTA / lines / 2, false, 0);
  for (int i = 0; i < lines; ++i)
    turn(-WHEEL_DELTA / lines / 2, false, 0);
  EXPECT_EQ(topLine(), 2 * lines);
  turn(-WHEEL_DELTA / lines + 1, false, 0);
  turn(WHEEL_DELTA / lines - 1, false, 0);
  turn(-WHEEL_DELTA / lines + 1, false, 0);
  EXPECT_EQ(topLine(), 2 * lines);

  turn(-WHEEL_DELTA, false, MK_SHIFT);
  EXPECT_EQ(MainState.HorzOffset, lines);
  turn(WHEEL_DELTA, true, 0);
  EXPECT_EQ(MainState.HorzOffset, 2 * lines);
  turn(3 * WHEEL_DELTA, false, MK_SHIFT);
  EXPECT_EQ(MainState.HorzOffset, 0);
  EXPECT_EQ(topLine(), 2 * lines);

  turn(2 * WHEEL_DELTA, false, MK_CONTROL);
  EXPECT_EQ(MainState.ZoomLevel, 2);
  turn(-3 * WHEEL_DELTA, false, MK_CONTROL);
  EXPECT_EQ(MainState.ZoomLevel, -1);
}

}  // namespace
