// Frozen titles on the running program.
#include "resources/command_ids.h"
#include "tests/window/viewer.h"
#include "window/navigation.h"

namespace {

void Select(FilePos start, FilePos end) {
  MainState.SelStart = start;
  MainState.SelEnd = end;
}

std::string Title(int index) {
  const LineEntry& line = MainState.Titles.Lines.Aline[index];
  return {MainState.Titles.Text.Tbuf + line.Ltext, static_cast<std::size_t>(line.Llen)};
}

int TitleCount() {
  return MainState.Titles.Lines.Alast;
}

TEST(FrozenTitles, TakeTheSelectionAndRowsFromTheView) {
  const ScratchFile file("name\tprice\n----\t-----\n" + NumberedLines(200));
  Viewer viewer({file.Path()});
  viewer.Command(IDM_FREEZE_TITLE);
  EXPECT_EQ(platform_testing::Beeps(), std::vector<UINT>{48});
  Select(3, 4);
  viewer.Command(IDM_FREEZE_TITLE);
  EXPECT_EQ(Title(0), "name    price") << "the whole line, as it is shown";
  Select(0, 22);
  viewer.Command(IDM_FREEZE_TITLE);
  ASSERT_EQ(TitleCount(), 2) << "the new titles replace the old ones";
  EXPECT_LT(MainState.SelStart, 0);
  EXPECT_EQ(MainState.LinesPerScreen, Viewer::kRows - 2);

  viewer.MoveTo(22);
  viewer.Key(VK_NEXT);
  EXPECT_EQ(Viewer::Text().substr(0, 7), "line 22") << "a page is what stands below the titles";

  Select(22, 30);
  viewer.Command(IDM_HEX);
  EXPECT_EQ(Title(1), "----    -----") << "titles are text of their own";
  viewer.Command(IDM_CLOSE);
  EXPECT_EQ(TitleCount(), 2);
  viewer.Command(IDM_CLEAR_TITLE);
  EXPECT_EQ(TitleCount(), 2) << "without a file the command does nothing";
  viewer.Send(WM_FILE_OPEN, 0, reinterpret_cast<LPARAM>(file.Path().c_str()));
  EXPECT_EQ(TitleCount(), 2);
  const platform_testing::Pixels frozen = platform_testing::ClientPixels(viewer.Window());
  viewer.Command(IDM_CLEAR_TITLE);
  EXPECT_EQ(TitleCount(), 0);
  EXPECT_NE(platform_testing::ClientPixels(viewer.Window()), frozen);
  EXPECT_EQ(MainState.LinesPerScreen, Viewer::kRows);
}

TEST(FrozenTitles, ComeBackFromTheProfile) {
  const std::string profile =
      "[Titles]\nTitles=2\nTitle1=one\nTitle2=two\n"
      "[Setup: with]\nSaveOptions=2\nTitles=1\nTitle1=of the setup\n"
      "[Setup: without]\nSaveOptions=1\nTitles=1\nTitle1=not these\n"
      "[Setup: all]\nTitles=0\n";
  const struct {
    std::vector<std::string> words;
    int count;
    const char* first;
  } cases[] = {
      {{}, 2, "one"},
      {{"-V"}, 2, "one"},
      {{"-Vwith"}, 1, "of the setup"},
      {{"-vwith"}, 1, "of the setup"},
      {{"-vwithout"}, 2, "one"},
      {{"-vall"}, 0, ""},
  };
  const ScratchFile file("text\n");
  for (const auto& c : cases) {
    std::vector<std::string> words = c.words;
    words.push_back(file.Path());
    Viewer viewer(words, profile);
    const std::string what = c.words.empty() ? "" : c.words[0];
    if (what == "-V") {
      EXPECT_EQ(TitleCount(), 0) << "a setup of no name and nothing by default";
      continue;
    }
    ASSERT_EQ(TitleCount(), c.count) << what;
    if (c.count > 0) {
      EXPECT_EQ(Title(0), c.first) << what;
    }
  }
}

}  // namespace
