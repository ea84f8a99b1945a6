// Selecting with the mouse, the tag commands and the clipboard, in the running program.
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
  void Drag(int from, int to) {
    Mouse(WM_LBUTTONDOWN, from);
    Mouse(WM_MOUSEMOVE, to);
    Mouse(WM_LBUTTONUP, to);
  }
  // Whether the rows on the screen are inverted as a full repaint would show them.
  void ExpectPictureTrue(const char* after) {
    const platform_testing::Pixels shown = ClientPixels(viewer.Window());
    RepaintWindow();
    viewer.Pump();
    ASSERT_TRUE(shown == ClientPixels(viewer.Window())) << after;
  }
  static FilePos LineStart(int number) { return static_cast<FilePos>(NumberedLines(number).size()); }

  ScratchFile file{NumberedLines(500)};
  Viewer viewer{{file.Path()}};
};

TEST_F(SelectionTest, TakesWholeLines) {
  Drag(3, 5);
  EXPECT_EQ(MainState.SelStart, LineStart(3));
  EXPECT_EQ(MainState.SelEnd, LineStart(6));
  ExpectPictureTrue("a drag down");
  Drag(7, 2);
  EXPECT_EQ(MainState.SelStart, LineStart(2));
  EXPECT_EQ(MainState.SelEnd, LineStart(8));
  Mouse(WM_LBUTTONDOWN, 10, MK_SHIFT);  // from the anchor, line 7
  Mouse(WM_LBUTTONUP, 10);
  EXPECT_EQ(MainState.SelStart, LineStart(7));
  EXPECT_EQ(MainState.SelEnd, LineStart(11));
  ExpectPictureTrue("an extension");
  Mouse(WM_RBUTTONDOWN, 1);
  EXPECT_LT(MainState.SelStart, 0);
  ExpectPictureTrue("a right click");
}

TEST_F(SelectionTest, ExtendsAHitAndBeepsBelowTheLastLine) {
  Drag(1, 1);
  MainState.SelStart = LineStart(5) + 2;  // as a hit of a search stands
  MainState.SelEnd = LineStart(5) + 4;
  Mouse(WM_LBUTTONDOWN, 8, MK_SHIFT);
  Mouse(WM_LBUTTONUP, 8);
  EXPECT_EQ(MainState.SelStart, LineStart(5) + 2);
  EXPECT_EQ(MainState.SelEnd, LineStart(9));
  viewer.Command(IDM_UNSELECT);
  viewer.Key(VK_END);
  platform_testing::ForgetRecords();
  Drag(4, 6);
  EXPECT_EQ(platform_testing::Beeps(), std::vector<UINT>{MB_ICONEXCLAMATION});
  EXPECT_LT(MainState.SelStart, 0);
  Mouse(WM_LBUTTONDBLCLK, 4);
  EXPECT_EQ(platform_testing::Beeps().size(), 2U);
}

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

TEST_F(SelectionTest, TagsLines) {
  Mouse(WM_LBUTTONDOWN, 4);
  Mouse(WM_LBUTTONUP, 4);
  Mouse(WM_LBUTTONDBLCLK, 4);
  EXPECT_LT(MainState.SelStart, 0);
  ASSERT_EQ(MainState.Tags.count, 1);
  EXPECT_EQ(MainState.Tags.entries[0].position, LineStart(4));
  viewer.Command(IDM_HEX);
  viewer.Key(VK_F2);  // the row that holds the byte, in a format of other rows
  EXPECT_LE(Viewer::Top(), LineStart(4));
  EXPECT_GT(Viewer::Entry(1).Lpos, LineStart(4));
  EXPECT_NE(Viewer::Entry(0).Lflags & LF_TAGMASK, 0U);
  viewer.Command(IDM_TEXT);
  viewer.Command(IDM_WRAP);
  viewer.Resize(10, 12);
  viewer.Key(VK_HOME);
  viewer.Key(VK_F2);
  EXPECT_EQ(Viewer::Top(), LineStart(4));
  EXPECT_NE(Viewer::Entry(0).Lflags & LF_TAGMASK, 0U);
  viewer.Command(IDM_WRAP);
  viewer.Resize(Viewer::kColumns, Viewer::kRows);
  viewer.Key(VK_HOME);

  Drag(6, 9);
  viewer.Command(IDM_MARK_SET);
  EXPECT_EQ(MainState.Tags.count, 5);
  Drag(7, 8);
  viewer.Command(IDM_MARK_RESET);
  EXPECT_EQ(MainState.Tags.count, 3);
  viewer.Key(VK_F11);  // the top line
  EXPECT_NE(Viewer::Entry(0).Lflags & LF_TAGMASK, 0U);
  viewer.Key(VK_F2, MK_CONTROL);
  EXPECT_EQ(Viewer::Entry(0).Lflags & LF_TAGMASK, 0U);

  platform_testing::ForgetRecords();
  viewer.Key(VK_F2, 0, 3);
  EXPECT_EQ(Viewer::Top(), LineStart(9));
  EXPECT_TRUE(platform_testing::Beeps().empty());
  viewer.Key(VK_F2);  // none behind: the bottom of the file
  EXPECT_EQ(Viewer::Top(), LineStart(499));
  EXPECT_EQ(platform_testing::Beeps(), std::vector<UINT>{MB_ICONEXCLAMATION});
  viewer.Key(VK_F2, MK_CONTROL | MK_SHIFT);
  EXPECT_EQ(MainState.Tags.count, 0);
}

TEST_F(SelectionTest, Copies) {
  Drag(2, 3);
  viewer.Type('C', MK_CONTROL);
  EXPECT_EQ(platform_testing::ClipboardText(),
            "line 2" + std::string(14, '.') + "\nline 3" + std::string(21, '.') + "\n");
  viewer.Command(IDM_UNSELECT);
  platform_testing::ForgetRecords();
  viewer.Key(VK_INSERT, MK_CONTROL);
  EXPECT_EQ(platform_testing::Beeps(), std::vector<UINT>{MB_OK});

  viewer.Command(IDM_SELECT_ALL);
  file.Remove();
  viewer.Command(IDM_COPY);
  ASSERT_EQ(platform_testing::Boxes().size(), 1U);
  EXPECT_EQ(platform_testing::Boxes()[0].text, "File read error");
  EXPECT_EQ(platform_testing::Boxes()[0].caption, platform_testing::Caption(viewer.Window()));
}

}  // namespace
