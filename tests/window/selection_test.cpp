// Selecting with the mouse while the view scrolls.
#include "window/selection.h"

#include <random>

#include "resources/command_ids.h"
#include "tests/window/viewer.h"

namespace {

using platform_testing::ClientPixels;

class SelectionTest : public testing::Test {
 protected:
  static int RowY(int row) { return row * MainState.CharHeight + MainState.CharHeight / 2; }
  void Mouse(UINT message, int row, int keys = 0) { MouseAt(message, RowY(row), keys); }
  void MouseAt(UINT message, int y, int keys = 0) {
    platform_testing::Mouse(viewer.Window(), message, 20, y, keys);
    viewer.Pump();
  }
  // Whether the rows on the screen are inverted as a full repaint would show them.
  void ExpectPictureTrue(const char* after) {
    const platform_testing::Pixels shown = ClientPixels(viewer.Window());
    RepaintWindow();
    viewer.Pump();
    ASSERT_TRUE(shown == ClientPixels(viewer.Window())) << after;
  }
  ScratchFile file{NumberedLines(500)};
  Viewer viewer{{file.Path()}};
};

TEST_F(SelectionTest, ScrollsByItselfAtTheEdges) {
  struct Zone {
    const char* name;
    int y;
    UINT_PTR timer;
    int lines;
  };
  viewer.MoveLines(100);
  const int height = MainState.ClientHeight;
  const Zone zones[] = {
      {"above", -40 * MainState.CharHeight, kScrollUpTimer, -10},
      {"first row", RowY(0), kScrollUpTimer, -1},
      {"middle", RowY(5), 0, 0},
      {"last row", height - 5, kScrollDownTimer, 1},
      {"a row below", height + MainState.CharHeight, kScrollDownTimer, 2},
      {"far below", height + 50 * MainState.CharHeight, kScrollDownTimer, 10},
  };
  Mouse(WM_LBUTTONDOWN, 5);
  for (const Zone& zone : zones) {
    MouseAt(WM_MOUSEMOVE, zone.y);
    EXPECT_EQ(MainState.AutoScrollTimer, zone.timer) << zone.name;
    if (zone.timer == 0) continue;
    const FilePos top = Viewer::Top();
    const int index = MainState.Lines.Acur;
    viewer.Send(WM_TIMER, static_cast<std::intptr_t>(zone.timer));
    EXPECT_EQ(MainState.Lines.Acur, index + zone.lines) << zone.name;
    EXPECT_NE(Viewer::Top(), top) << zone.name;
    ExpectPictureTrue(zone.name);
  }
  Mouse(WM_LBUTTONUP, 5);
  EXPECT_FALSE(platform_testing::TimerIsSet(viewer.Window(), kScrollDownTimer));
}

// The law of the picture: whatever was pressed, dragged, scrolled and switched, the rows that are inverted
// are those that a full repaint inverts.
TEST_F(SelectionTest, ShowsWhatARepaintShows) {
  std::mt19937 random(31);
  const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  viewer.Resize(12, Viewer::kRows);  // less to compare
  for (int step = 0; step < 250; ++step) {
    SCOPED_TRACE(step);
    switch (below(9)) {
      case 0:
        Mouse(WM_LBUTTONDOWN, below(26) - 1, below(2) == 0 ? MK_SHIFT : 0);
        break;
      case 1:
      case 2:
        MouseAt(WM_MOUSEMOVE, below(MainState.ClientHeight + 200) - 100);
        break;
      case 3:
        viewer.Send(WM_TIMER, below(2) == 0 ? kScrollUpTimer : kScrollDownTimer);
        break;
      case 4:
        Mouse(WM_LBUTTONUP, below(24));
        break;
      case 5:
        viewer.MoveLines(below(7) - 3);
        break;
      case 6:
        viewer.Key(below(2) == 0 ? VK_NEXT : VK_PRIOR);
        break;
      case 7:
        if (below(4) == 0) viewer.Command(static_cast<UINT>(IDM_TEXT + below(4)));
        break;
      default:
        Mouse(below(3) == 0 ? WM_LBUTTONDBLCLK : WM_RBUTTONDOWN, below(24));
    }
    ASSERT_NO_FATAL_FAILURE(ExpectPictureTrue("a step"));
  }
}

}  // namespace
